// The converted lines of a run, in order.
#ifndef TVML_FILTER_SCRIPT_BODY_H
#define TVML_FILTER_SCRIPT_BODY_H

#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "filter/scanners.h"
#include "generation/talk_piece.h"
#include "vocabulary/keyword_table.h"
#include "vocabulary/number_set.h"

namespace tvml {

inline constexpr std::u16string_view kMainImageBase =
    u"drawing: openbase( name=MAINIMAGEBASE, color=000000, layer=99 )";

// In `text`, replaces a quoted placeholder of an argument: behind the first
// `argument` at or after `from` come "=" and the placeholder in apostrophes,
// else nothing changes and the result is kNone, not the value's place. The
// blanks are those of drawing commands.
std::size_t fillQuotedArgument(std::u16string& text, std::size_t from, std::u16string_view argument,
                               std::u16string_view placeholder, std::u16string_view value,
                               const KeywordTable& words);

// What completes a title card that waits for its second text.
struct CardText {
    TitleKind kind;
    std::u16string_view fontPlaceholder;
    std::u16string_view font;
    std::u16string_view sizePlaceholder;
    std::u16string_view size;
    std::u16string_view text;
};

// Some lines of the body: a text, or talk that is not written yet.
struct BodySegment {
    std::u16string text{};
    std::vector<TalkPiece> talk{};
    std::size_t talkUnits = 0;

    std::size_t size() const { return text.size() + talkUnits; }
    char16_t* copyTo(char16_t* to) const; // returns the end

    // Makes talk a text.
    void write();
};

// The text grows at its end. It is kept in segments of whole lines, so that
// growing copies nothing. What completing a card looks for anywhere in the text
// is indexed when the first card asks, each part of the text once; a line that
// waits for a card's text then becomes a segment of its own, so that completing
// it costs no more than its length.
class ScriptBody {
public:
    // `listeners`, when given, hear of every change.
    explicit ScriptBody(const KeywordTable& words, const Listeners* listeners = nullptr)
        : words_(words), listeners_(listeners) {}

    // Appends whole lines of TVML, which the script line wrote or the player was
    // asked for there. Throws std::length_error when the text would pass the
    // longest script that can be delivered.
    void append(std::u16string_view text, std::int32_t line, bool isPlayMark = false);

    // The same for talk; no piece holds a "$".
    void append(std::span<const TalkPiece> talk, std::int32_t line);

    // The text holds the command that opens the base of main pictures.
    bool holdsMainImageBase();

    // Completes the last title-text command that still waits for a text of the
    // card's kind; false when there is none.
    bool completeCard(const CardText& card, std::int32_t line);

    const std::deque<BodySegment>& segments() const { return segments_; }
    std::deque<BodySegment> takeSegments() { return std::move(segments_); }

private:
    void countUnits(std::size_t units);
    BodySegment& segmentForTalk();
    void indexNewText();
    void splitAtWaitingLines(const std::u16string& text);
    void addIndexed(std::u16string_view text);
    void indexSegment(std::size_t number);
    void indexAgain(std::size_t number);
    void tellFilled(std::size_t segment, std::size_t at, std::size_t removed,
                    std::size_t inserted) const;
    void fillArgument(std::size_t card, std::size_t from, std::u16string_view argument,
                      const NumberSet& holders, std::u16string_view placeholder,
                      std::u16string_view value);

    const KeywordTable& words_;
    const Listeners* listeners_;
    std::int32_t cardLine_ = 0; // of the script, that completes a card
    std::deque<BodySegment> segments_;
    std::size_t units_ = 0; // at least those of the text

    // Which of the first indexedSegments_ segments hold what.
    std::size_t indexedSegments_ = 0;
    NumberSet waitingTitles_;
    NumberSet waitingSubtitles_;
    NumberSet fontNames_;
    NumberSet sizes_;

    bool mainImageBase_ = false;
    std::size_t baseSegments_ = 0; // searched for it
    std::size_t baseUnits_ = 0;
};

} // namespace tvml

#endif
