// Entries: ScriptBody::append, completeCard, holdsMainImageBase.
#include "filter/script_body.h"

#include "filter/tvml_patterns.h"

namespace tvml {
namespace {

// Small enough to search and change at a constant cost, large enough that few
// are needed.
constexpr std::size_t kSegmentUnits = 8192;

constexpr std::u16string_view kFontName = u"font name";
constexpr std::u16string_view kSize = u"size";

// The last title-text command of a kind in a text.
std::size_t findLastTitleText(std::u16string_view text, TitleKind kind, const KeywordTable& words) {
    std::size_t last = kNone;
    for (std::size_t at = findTitleText(text, kind, 0, words); at != kNone;
         at = findTitleText(text, kind, at + 7, words)) {
        last = at;
    }
    return last;
}

} // namespace

void fillQuotedArgument(std::u16string& text, std::size_t from, std::u16string_view argument,
                        std::u16string_view placeholder, std::u16string_view value,
                        const KeywordTable& words) {
    const std::size_t at = text.find(argument, from);
    if (at == kNone) {
        return;
    }
    PatternMatch match(text, at, words, PatternBlanks::drawing);
    match.then(argument).then(u"=").thenLast(u"'").thenLast(placeholder);
    const std::size_t end = match.position();
    if (match.thenLast(u"'")) {
        text.replace(end - placeholder.size(), placeholder.size(), value);
    }
}

void ScriptBody::append(std::u16string_view text) {
    if (text.empty()) {
        return;
    }
    if (segments_.empty() || segments_.back().size() + text.size() > segments_.back().capacity()) {
        segments_.emplace_back().reserve(std::max(kSegmentUnits, text.size()));
    }
    segments_.back() += text;
}

bool ScriptBody::holdsMainImageBase() {
    while (!mainImageBase_ && baseSegments_ < segments_.size()) {
        const std::u16string& segment = segments_[baseSegments_];
        mainImageBase_ = segment.find(kMainImageBase, baseUnits_) != kNone;
        baseUnits_ = segment.size();
        if (baseSegments_ + 1 == segments_.size()) {
            break; // the last segment may still grow
        }
        ++baseSegments_;
        baseUnits_ = 0;
    }
    return mainImageBase_;
}

void ScriptBody::indexSegment(std::size_t number, std::u16string_view text) {
    if (findTitleText(text, TitleKind::title, 0, words_) != kNone) {
        waitingTitles_.insert(number);
    }
    if (findTitleText(text, TitleKind::subtitle, 0, words_) != kNone) {
        waitingSubtitles_.insert(number);
    }
    if (text.find(kFontName) != kNone) {
        fontNames_.insert(number);
    }
    if (text.find(kSize) != kNone) {
        sizes_.insert(number);
    }
}

void ScriptBody::indexNewText() {
    while (indexedSegments_ < segments_.size()) {
        const std::u16string_view segment = segments_[indexedSegments_];
        indexSegment(indexedSegments_, segment.substr(indexedUnits_));
        indexedUnits_ = segment.size();
        if (indexedSegments_ + 1 == segments_.size()) {
            return;
        }
        ++indexedSegments_;
        indexedUnits_ = 0;
    }
}

// After a change of a segment that was indexed before.
void ScriptBody::indexAgain(std::size_t number) {
    for (Numbers* holders : {&waitingTitles_, &waitingSubtitles_, &fontNames_, &sizes_}) {
        holders->erase(number);
    }
    indexSegment(number, segments_[number]);
    if (number == indexedSegments_) {
        indexedUnits_ = segments_[number].size();
    }
    mainImageBase_ = mainImageBase_ || segments_[number].find(kMainImageBase) != kNone;
    if (number == baseSegments_) {
        baseUnits_ = segments_[number].size();
    }
}

// Fills an argument behind a place in the text, in whichever segment the
// argument comes first.
void ScriptBody::fillArgument(std::size_t segment, std::size_t from, std::u16string_view argument,
                              const Numbers& holders, std::u16string_view placeholder,
                              std::u16string_view value) {
    if (segments_[segment].find(argument, from) == kNone) {
        const auto next = holders.upper_bound(segment);
        if (next == holders.end()) {
            return;
        }
        segment = *next;
        from = 0;
    }
    fillQuotedArgument(segments_[segment], from, argument, placeholder, value, words_);
    indexAgain(segment);
}

bool ScriptBody::completeCard(const CardText& card) {
    indexNewText();
    const Numbers& waiting = card.kind == TitleKind::title ? waitingTitles_ : waitingSubtitles_;
    if (waiting.empty()) {
        return false;
    }
    const std::size_t number = *waiting.rbegin();
    const std::size_t at = findLastTitleText(segments_[number], card.kind, words_);
    fillArgument(number, at, kFontName, fontNames_, card.fontPlaceholder, card.font);
    fillArgument(number, at, kSize, sizes_, card.sizePlaceholder, card.size);
    const std::u16string_view placeholder = placeholderOf(card.kind);
    std::u16string& segment = segments_[number];
    const std::size_t found = segment.find(placeholder, at);
    if (found != kNone) {
        segment.replace(found, placeholder.size(), card.text);
    }
    indexAgain(number);
    return true;
}

} // namespace tvml
