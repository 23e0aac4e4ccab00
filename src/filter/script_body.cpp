// Entries: ScriptBody::append, completeCard, holdsMainImageBase.
#include "filter/script_body.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include "filter/tvml_patterns.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

// Segments begin small and grow to this many units.
constexpr std::size_t kSmallestSegment = 256;
constexpr std::size_t kLargestSegment = 16384;
constexpr std::size_t kSegmentPieces = 512;

// The longest body whose length, terminator included, is a 32-bit number.
constexpr std::size_t kLongestBody = std::numeric_limits<std::int32_t>::max() - 1;

constexpr std::u16string_view kFontName = u"font name";
constexpr std::u16string_view kSize = u"size";

// Reserves room for exactly so many more units: a string that grows by itself
// would double its room.
void makeRoom(std::u16string& text, std::size_t units) {
    std::u16string roomy;
    roomy.reserve(text.size() + units);
    roomy += text;
    text = std::move(roomy);
}

// The last title-text command of a kind in a text.
std::size_t findLastTitleText(std::u16string_view text, TitleKind kind, const KeywordTable& words) {
    TitleTextFinder finder(text, kind, words);
    std::size_t last = kNone;
    for (std::size_t at = finder.next(0); at != kNone; at = finder.next(at + 1)) {
        last = at;
    }
    return last;
}

} // namespace

std::size_t fillQuotedArgument(std::u16string& text, std::size_t from, std::u16string_view argument,
                               std::u16string_view placeholder, std::u16string_view value,
                               const KeywordTable& words) {
    const std::size_t at = text.find(argument, from);
    if (at == kNone) {
        return kNone;
    }
    PatternMatch match(text, at, words, PatternBlanks::drawing);
    match.then(argument).then(u"=").thenLast(u"'").thenLast(placeholder);
    const std::size_t end = match.position();
    if (!match.thenLast(u"'")) {
        return kNone;
    }
    text.replace(end - placeholder.size(), placeholder.size(), value);
    return end - placeholder.size();
}

char16_t* BodySegment::copyTo(char16_t* to) const {
    to = std::copy(text.begin(), text.end(), to);
    for (const TalkPiece& piece : talk) {
        to = piece.write(to);
    }
    return to;
}

void BodySegment::write() {
    if (!talk.empty()) {
        std::u16string written(talkUnits, u'\0');
        copyTo(written.data());
        *this = {std::move(written)};
    }
}

void ScriptBody::countUnits(std::size_t units) {
    units_ += units;
    if (units_ > kLongestBody) {
        throw std::length_error("the script is too long");
    }
}

void ScriptBody::append(std::u16string_view text, std::int32_t line, bool isPlayMark) {
    if (text.empty()) {
        return;
    }
    if (listeners_ != nullptr) {
        listeners_->tell(BodyGrew{text.size(), line, isPlayMark});
    }
    countUnits(text.size());
    const bool open = segments_.size() > indexedSegments_ && segments_.back().talk.empty();
    if (!open || segments_.back().size() + text.size() > segments_.back().text.capacity()) {
        const std::size_t before = segments_.empty() ? 0 : segments_.back().size();
        const std::size_t units = std::clamp(2 * before, kSmallestSegment, kLargestSegment);
        segments_.emplace_back().text.reserve(std::max(units, text.size()));
    }
    segments_.back().text += text;
}

void ScriptBody::append(std::span<const TalkPiece> talk, std::int32_t line) {
    for (const TalkPiece& piece : talk) {
        const std::size_t units = piece.size();
        countUnits(units);
        if (listeners_ != nullptr) {
            listeners_->tell(BodyGrew{units, line});
        }
        BodySegment& segment = segmentForTalk();
        segment.talk.push_back(piece);
        segment.talkUnits += units;
    }
}

// The last segment, when it holds talk and has room. An indexed one holds none.
BodySegment& ScriptBody::segmentForTalk() {
    std::size_t before = 0;
    if (!segments_.empty()) {
        BodySegment& last = segments_.back();
        before = last.talk.size();
        if (before > 0 && before < kSegmentPieces) {
            return last;
        }
    }
    BodySegment& fresh = segments_.emplace_back();
    fresh.talk.reserve(before); // as many again in a long script, else a few
    return fresh;
}

bool ScriptBody::holdsMainImageBase() {
    while (!mainImageBase_ && baseSegments_ < segments_.size()) {
        segments_[baseSegments_].write();
        const std::u16string& segment = segments_[baseSegments_].text;
        mainImageBase_ = findText(segment, kMainImageBase, baseUnits_) != kNone;
        baseUnits_ = segment.size();
        if (baseSegments_ + 1 == segments_.size()) {
            break; // the last segment may still grow
        }
        ++baseSegments_;
        baseUnits_ = 0;
    }
    return mainImageBase_;
}

// Notes what a segment holds, or holds no longer.
void ScriptBody::indexSegment(std::size_t number) {
    const std::u16string_view text = segments_[number].text;
    const auto note = [number](NumberSet& holders, bool holds) {
        if (holds) {
            holders.insert(number);
        } else {
            holders.erase(number);
        }
    };
    note(waitingTitles_, TitleTextFinder(text, TitleKind::title, words_).next(0) != kNone);
    note(waitingSubtitles_, TitleTextFinder(text, TitleKind::subtitle, words_).next(0) != kNone);
    note(fontNames_, findText(text, kFontName) != kNone);
    note(sizes_, findText(text, kSize) != kNone);
}

// After a change of a segment that was indexed before.
void ScriptBody::indexAgain(std::size_t number) {
    indexSegment(number);
    mainImageBase_ = mainImageBase_ || findText(segments_[number].text, kMainImageBase) != kNone;
}

void ScriptBody::addIndexed(std::u16string_view text) {
    if (!text.empty()) {
        segments_.emplace_back().text = text;
        indexSegment(segments_.size() - 1);
    }
}

void ScriptBody::splitAtWaitingLines(const std::u16string& text) {
    const std::u16string_view whole = text;
    TitleTextFinder titles(whole, TitleKind::title, words_);
    TitleTextFinder subtitles(whole, TitleKind::subtitle, words_);
    std::size_t title = titles.next(0);
    std::size_t subtitle = subtitles.next(0);
    std::size_t done = 0;
    while (title != kNone || subtitle != kNone) {
        const std::size_t at = std::min(title, subtitle);
        const std::size_t before = whole.rfind(u'\n', at);
        const std::size_t start = before == kNone ? 0 : before + 1;
        const std::size_t end = std::min(whole.find(u'\n', at), whole.size() - 1) + 1;
        addIndexed(whole.substr(done, start - done));
        addIndexed(whole.substr(start, end - start));
        done = end;
        title = title != kNone && title < end ? titles.next(end) : title;
        subtitle = subtitle != kNone && subtitle < end ? subtitles.next(end) : subtitle;
    }
    addIndexed(whole.substr(done));
}

void ScriptBody::indexNewText() {
    // Splitting gives segments new numbers, so the other search comes first.
    holdsMainImageBase();
    const auto first = segments_.begin() + static_cast<std::ptrdiff_t>(indexedSegments_);
    std::vector<BodySegment> fresh(std::make_move_iterator(first),
                                   std::make_move_iterator(segments_.end()));
    segments_.erase(first, segments_.end());
    for (BodySegment& segment : fresh) {
        segment.write();
        splitAtWaitingLines(segment.text);
    }
    indexedSegments_ = segments_.size();
    baseSegments_ = segments_.size();
    baseUnits_ = 0;
}

// Fills an argument behind a place in a card's segment, in whichever segment the
// argument comes first. The card's own is to be indexed when it is complete.
void ScriptBody::fillArgument(std::size_t card, std::size_t from, std::u16string_view argument,
                              const NumberSet& holders, std::u16string_view placeholder,
                              std::u16string_view value) {
    std::size_t segment = card;
    if (findText(segments_[segment].text, argument, from) == kNone) {
        segment = holders.firstFrom(segment + 1);
        if (segment == kNone) {
            return;
        }
        from = 0;
    }
    const std::size_t at =
        fillQuotedArgument(segments_[segment].text, from, argument, placeholder, value, words_);
    if (at != kNone) {
        tellFilled(segment, at, placeholder.size(), value.size());
        if (segment != card) {
            indexAgain(segment);
        }
    }
}

// To be called when `inserted` units stand in the place of `removed` ones.
void ScriptBody::tellFilled(std::size_t segment, std::size_t at, std::size_t removed,
                            std::size_t inserted) const {
    if (listeners_ == nullptr) {
        return;
    }
    std::size_t fromEnd = segments_[segment].size() - at + removed - inserted;
    while (++segment < segments_.size()) {
        fromEnd += segments_[segment].size();
    }
    listeners_->tell(BodyFilled{fromEnd, removed, inserted, cardLine_});
}

bool ScriptBody::completeCard(const CardText& card, std::int32_t line) {
    cardLine_ = line;
    indexNewText();
    const std::size_t number =
        (card.kind == TitleKind::title ? waitingTitles_ : waitingSubtitles_).last();
    if (number == kNone) {
        return false;
    }
    const std::size_t added = card.font.size() + card.size.size() + card.text.size();
    countUnits(added);
    makeRoom(segments_[number].text, added);
    const std::size_t at = findLastTitleText(segments_[number].text, card.kind, words_);
    fillArgument(number, at, kFontName, fontNames_, card.fontPlaceholder, card.font);
    fillArgument(number, at, kSize, sizes_, card.sizePlaceholder, card.size);
    const std::u16string_view placeholder = placeholderOf(card.kind);
    std::u16string& segment = segments_[number].text;
    const std::size_t found = findText(segment, placeholder, at);
    if (found != kNone) {
        segment.replace(found, placeholder.size(), card.text);
        tellFilled(number, found, placeholder.size(), card.text.size());
    }
    indexAgain(number);
    return true;
}

} // namespace tvml
