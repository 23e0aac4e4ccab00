// Entries: findLastOpeningBracket, findCaption.
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

// The caption when `group`, a trimmed text, begins with a caption word and a
// colon: the trimmed text behind them.
std::optional<std::u16string_view> captionOf(std::u16string_view group, const KeywordTable& words) {
    constexpr std::u16string_view kCaption = u"caption";
    constexpr std::size_t kWordUnits = 2;
    if (words[u"caption"].equals(group.substr(0, kWordUnits))) {
        group = dropAndTrim(group, kWordUnits, words);
    } else if (group.starts_with(kCaption)) {
        group = dropAndTrim(group, kCaption.size(), words);
    } else {
        return std::nullopt;
    }
    if (group.empty() || (group.front() != u':' && !words[u"colon"].firstUnitIs(group.front()))) {
        return std::nullopt;
    }
    return dropAndTrim(group, 1, words);
}

} // namespace

std::size_t findLastOpeningBracket(std::u16string_view text, const KeywordTable& words) {
    return latestPosition(text.rfind(u'('), words[u"kakko"].findLastOfIn(text));
}

std::optional<CaptionGroup> findCaption(std::u16string_view text, const KeywordTable& words) {
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

} // namespace tvml
