// The output of a run.
#ifndef TVML_FILTER_TVML_SCRIPT_H
#define TVML_FILTER_TVML_SCRIPT_H

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

#include "filter/script_body.h"
#include "run/run.h"

namespace tvml {

// A text in pieces, so that a long body is not copied to put a head before it.
// Talk in it refers to the run and to the script that was converted.
class TvmlScript {
public:
    void append(std::u16string piece);
    void append(BodySegment piece);
    void append(std::deque<BodySegment> pieces);

    // Length in UTF-16 units, without a terminator.
    std::size_t size() const { return size_; }

    // Copies the whole text; `output` has room for size() units.
    void copyTo(char16_t* output) const;

    std::u16string text() const;

    // Makes the talk text: nothing refers to the converted script any more.
    void writeTalk();
    const std::deque<BodySegment>& pieces() const { return pieces_; }

    // Removes what title cards left without their second text. `listeners`,
    // when given, hear of every cut. What is removed does not depend on how many
    // units are looked at together.
    void removeUnfilledTitles(const KeywordTable& words, const Listeners* listeners = nullptr,
                              std::size_t unitsAtOnce = 16384);

private:
    std::deque<BodySegment> pieces_;
    std::size_t size_ = 0;
};

// Puts the set-up, the opening, the body and the ending together. Takes the
// texts out of the run and the body.
TvmlScript assembleScript(Run& run, ScriptBody& body);

} // namespace tvml

#endif
