// What the readers of plays share: a walk over the lines that gathers items.
#ifndef TVML_IMPORT_LINE_WALK_H
#define TVML_IMPORT_LINE_WALK_H

#include <algorithm>
#include <iterator>
#include <utility>

#include "import/play_readers.h"
#include "import/speech_text.h"

namespace tvml::plays {

class LineWalk {
public:
    explicit LineWalk(Lines lines) : lines_(lines) {}
    virtual ~LineWalk() = default;

    std::vector<PlayItem> read() {
        for (; at_ < lines_.size(); ++at_) {
            readLine(lines_[at_]);
        }
        return std::move(items_);
    }

protected:
    // May go on to later lines; at_ is the last one that was read.
    virtual void readLine(const PlayLine& line) = 0;

    // All of a line, without brackets around it.
    void add(ItemKind kind, const PlayLine& line, std::u16string_view text) {
        items_.push_back(
            {kind, line.number, {}, {directionPart(withoutOuterBrackets(text), line.number)}});
    }

    // The directions in front of a speech and what is said.
    void addSpoken(std::int32_t line, std::u16string_view name, std::vector<PlayPart> directions,
                   std::vector<PlayPart> rest) {
        std::ranges::move(rest, std::back_inserter(directions));
        addSpeech(items_, line, name, std::move(directions));
    }

    const Lines lines_;
    std::vector<PlayItem> items_;
    std::size_t at_ = 0;
};

} // namespace tvml::plays

#endif
