// Entries: isBracketed, findLastOpeningBracket, findCaption, isCaptionCommand.
#include "reading/brackets.h"

#include "reading/script_text.h"

namespace tvml {
namespace {

// Visits the opening brackets of a text from its start. The whole visit costs no
// more than one look at each unit.
class OpeningBrackets {
public:
    OpeningBrackets(std::u16string_view text, const KeywordTable& words)
        : text_(text), word_(words[u"kakko"]) {}

    // The position of the next one, or kNone.
    std::size_t next();

private:
    std::u16string_view text_;
    const Word& word_;
    std::size_t from_ = 0;
    std::size_t nextAscii_ = 0; // at or after from_ once looked up
    std::size_t nextWord_ = 0;
    bool started_ = false;
};

std::size_t OpeningBrackets::next() {
    if (!started_ || (nextAscii_ != kNone && nextAscii_ < from_)) {
        nextAscii_ = text_.find(u'(', from_);
    }
    if (!started_ || (nextWord_ != kNone && nextWord_ < from_)) {
        nextWord_ = word_.findUnitsIn(text_, from_);
    }
    started_ = true;
    const std::size_t found = earliestPosition(nextAscii_, nextWord_);
    from_ = found == kNone ? from_ : found + 1;
    return found;
}

constexpr std::u16string_view kCaption = u"caption";
constexpr std::size_t kWordUnits = 2; // of the vocabulary's word, whatever its length

// What stands behind the colon that `rest` begins with, trimmed.
std::optional<std::u16string_view> behindColon(std::u16string_view rest,
                                               const KeywordTable& words) {
    const bool colon =
        !rest.empty() && (rest.front() == u':' || words[u"colon"].firstUnitIs(rest.front()));
    return colon ? std::optional(dropAndTrim(rest, 1, words)) : std::nullopt;
}

bool startsWithCaptionWord(std::u16string_view group, const KeywordTable& words) {
    return words[u"caption"].equals(group.substr(0, kWordUnits));
}

// The caption when `group`, a trimmed text, begins with a caption word and a
// colon: the trimmed text behind them.
std::optional<std::u16string_view> captionOf(std::u16string_view group, const KeywordTable& words) {
    if (startsWithCaptionWord(group, words)) {
        return behindColon(dropAndTrim(group, kWordUnits, words), words);
    }
    return group.starts_with(kCaption)
               ? behindColon(dropAndTrim(group, kCaption.size(), words), words)
               : std::nullopt;
}

// As captionOf, but the English word is tried where the other has no colon.
std::optional<std::u16string_view> captionOfCommand(std::u16string_view group,
                                                    const KeywordTable& words) {
    const auto caption = captionOf(group, words);
    return caption.has_value() || !group.starts_with(kCaption)
               ? caption
               : behindColon(dropAndTrim(group, kCaption.size(), words), words);
}

// The first group of which `captionOf` makes a caption.
template <typename CaptionOf>
std::optional<CaptionGroup> findGroup(std::u16string_view text, const KeywordTable& words,
                                      CaptionOf captionOf) {
    OpeningBrackets brackets(text, words);
    std::size_t failed = 0; // where the last group that is none begins
    for (std::size_t open = brackets.next(); open != kNone; open = brackets.next()) {
        if (open < failed) {
            continue; // a bracket that is a blank: the same group is behind it
        }
        const std::u16string_view group = dropAndTrim(text, open + 1, words);
        if (const auto caption = captionOf(group, words)) {
            return CaptionGroup{open, *caption};
        }
        failed = group.empty() ? text.size() : static_cast<std::size_t>(group.data() - text.data());
    }
    return std::nullopt;
}

} // namespace

std::size_t findLastOpeningBracket(std::u16string_view text, const KeywordTable& words) {
    return latestPosition(text.rfind(u'('), words[u"kakko"].findLastOfIn(text));
}

std::optional<CaptionGroup> findCaption(std::u16string_view text, const KeywordTable& words) {
    return findGroup(text, words, captionOf);
}

bool isCaptionCommand(std::u16string_view line, const KeywordTable& words) {
    return findGroup(line, words, captionOfCommand).has_value();
}

bool isBracketed(std::u16string_view text, const KeywordTable& words) {
    return (text.starts_with(u'(') || words[u"kakko"].starts(text)) &&
           endsWithClosingBracket(text, words);
}

} // namespace tvml
