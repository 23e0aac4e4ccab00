// Entries: OpeningBrackets, captionOf, isCaptionCommand.
#include "reading/brackets.h"

#include "reading/script_text.h"

namespace tvml {

// To be called from left to right.
std::size_t OpeningBrackets::find(std::size_t from) {
    if (!started_ || (nextAscii_ != kNone && nextAscii_ < from)) {
        nextAscii_ = text_.find(u'(', from);
    }
    if (!started_ || (nextWord_ != kNone && nextWord_ < from)) {
        nextWord_ = words_[u"kakko"].findUnitsIn(text_, from);
    }
    started_ = true;
    return earliestPosition(nextAscii_, nextWord_);
}

std::size_t OpeningBrackets::next() {
    std::size_t found = following_;
    if (found == kNone) {
        return kNone;
    }
    following_ = find(found + 1);
    while (following_ == found + 1 && words_.isBlank(text_[found]) &&
           words_.isBlank(text_[following_])) {
        found = following_;
        following_ = find(found + 1);
    }
    return found;
}

std::size_t findLastOpeningBracket(std::u16string_view text, const KeywordTable& words) {
    return latestPosition(text.rfind(u'('), words[u"kakko"].findLastOfIn(text));
}

std::optional<std::u16string_view> captionOf(std::u16string_view group, const KeywordTable& words) {
    constexpr std::u16string_view kCaption = u"caption";
    constexpr std::size_t kWordUnits = 2;
    group = trimScriptText(group, words);
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

bool isCaptionCommand(std::u16string_view line, const KeywordTable& words) {
    OpeningBrackets brackets(line, words);
    for (std::size_t open = brackets.next(); open != kNone; open = brackets.next()) {
        if (captionOf(line.substr(open + 1), words).has_value()) {
            return true;
        }
    }
    return false;
}

} // namespace tvml
