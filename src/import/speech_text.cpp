// Entries: SpeechText, addSpeech.
#include "import/speech_text.h"

#include <algorithm>

namespace tvml::plays {
namespace {

bool isSquare(char16_t unit) {
    return holds(u"［[〔【", unit);
}

// Behind these no sentence goes on into the brackets.
bool endsClause(char16_t unit) {
    return isBlank(unit) || holds(u"。、．，.,！!？?…‥―—─-;；:：♪〜～」』", unit);
}

bool isSpoken(const PlayPart& part) {
    return part.kind != PartKind::direction;
}

} // namespace

// Walks through the text once.
class SpeechText::Parting {
public:
    explicit Parting(const SpeechText& speech)
        : text_(speech.text_), starts_(speech.starts_),
          partners_(bracketPartners(text_, kOpenings, kClosings)) {}

    std::vector<PlayPart> take() {
        for (std::size_t at = 0; at < text_.size();) {
            const std::size_t close = holds(kOpenings, text_[at]) ? partners_[at] : kNowhere;
            at = close == kNowhere ? at + 1 : group(at, close);
        }
        spoken(text_.size());
        return std::move(parts_);
    }

private:
    // What stands between brackets; returns where to go on.
    std::size_t group(std::size_t open, std::size_t close) {
        if (isReading(open, close)) {
            spoken(open);
            from_ = close + 1;
            return from_;
        }
        if (open > 0 && holds(u"「『“\"‘", text_[open - 1])) {
            return close + 1; // quoted
        }
        const bool isSure = isDirection(open, close);
        spoken(open);
        if (isSure) {
            parts_.push_back(directionPart(text_.substr(open + 1, close - open - 1), lineAt(open)));
        } else {
            parts_.push_back({PartKind::aside, std::u16string(text_.substr(open, close + 1 - open)),
                              lineAt(open)});
        }
        from_ = close + 1;
        return from_;
    }

    // Kana behind kanji within a sentence, no more than three for each: 漢字（かんじ）.
    bool isReading(std::size_t open, std::size_t close) const {
        std::size_t kanji = 0;
        while (kanji < open && kanji < kMostKanji && isKanji(text_[open - kanji - 1])) {
            ++kanji;
        }
        const std::u16string_view inner = text_.substr(open + 1, close - open - 1);
        return kanji > 0 && inner.size() >= kanji && inner.size() <= 3 * kanji + 1 &&
               close + 1 < text_.size() && std::ranges::all_of(inner, isHiragana) &&
               !endsClause(text_[close + 1]);
    }

    bool isDirection(std::size_t open, std::size_t close) const {
        const std::u16string_view before = trimmed(text_.substr(from_, open - from_));
        const std::u16string_view after = text_.substr(close + 1);
        const bool isEnd =
            after.size() <= kMostEnd && after.find_first_not_of(u"。．.、 　") == kNowhere;
        const bool isStart = parts_.empty() || parts_.back().kind == PartKind::direction;
        const bool isParted = before.empty() ? isStart : endsClause(before.back());
        return isEnd || isParted || isSquare(text_[open]);
    }

    void spoken(std::size_t to) {
        const std::u16string_view text = text_.substr(from_, to - from_);
        const bool isBehindAside = !parts_.empty() && parts_.back().kind == PartKind::aside;
        if (!trimmed(text).empty() || (isBehindAside && !text.empty())) {
            append(text, lineAt(from_));
        }
        from_ = to;
    }

    // What is left of a sentence when a reading was taken out of it stays one.
    void append(std::u16string_view text, std::int32_t line) {
        if (!parts_.empty() && parts_.back().kind == PartKind::spoken) {
            parts_.back().text.append(text);
        } else {
            parts_.push_back({PartKind::spoken, std::u16string(text), line});
        }
    }

    std::int32_t lineAt(std::size_t at) {
        while (next_ < starts_.size() && starts_[next_].at <= at) {
            ++next_;
        }
        return starts_[next_ - 1].number;
    }

    static constexpr std::size_t kMostKanji = 12;
    static constexpr std::size_t kMostEnd = 4;

    const std::u16string_view text_;
    const std::vector<LineStart>& starts_;
    const std::vector<std::size_t> partners_;
    std::vector<PlayPart> parts_;
    std::size_t from_ = 0; // of what is not taken yet
    std::size_t next_ = 1; // of starts_
};

void SpeechText::add(std::u16string_view line, std::int32_t number) {
    if (line.empty()) {
        return;
    }
    appendLine(text_, line);
    starts_.push_back({text_.size() - line.size(), number});
}

std::vector<PlayPart> SpeechText::parts() const {
    return text_.empty() ? std::vector<PlayPart>() : Parting(*this).take();
}

PlayPart directionPart(std::u16string_view text, std::int32_t line) {
    return {PartKind::direction, std::u16string(trimmed(text)), line};
}

std::u16string_view withoutOuterBrackets(std::u16string_view text) {
    const bool isWhole = text.size() > 1 && holds(kOpenings, text.front()) &&
                         bracketPartners(text, kOpenings, kClosings).front() == text.size() - 1;
    return isWhole ? trimmed(text.substr(1, text.size() - 2)) : text;
}

void addSpeech(std::vector<PlayItem>& items, std::int32_t line, std::u16string_view name,
               std::vector<PlayPart> parts) {
    if (!parts.empty()) {
        const bool isSpeech = std::ranges::any_of(parts, isSpoken);
        items.push_back({isSpeech ? ItemKind::speech : ItemKind::direction, line,
                         std::u16string(name), std::move(parts)});
    }
}

} // namespace tvml::plays
