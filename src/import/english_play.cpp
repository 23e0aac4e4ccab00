// Plays in English. Entry: readEnglishPlay.
//
// A speech begins with a name and a full stop or a colon, on a line of its own or
// with the words behind it, and goes on to the next empty line.
#include <algorithm>
#include <map>
#include <optional>

#include "import/line_walk.h"

namespace tvml::plays {
namespace {

constexpr std::size_t kLongestName = 30;
constexpr std::size_t kLongestHead = 80; // with directions

struct Head {
    std::u16string name;
    std::vector<PlayPart> directions{};
    std::size_t content = 0;
    bool isLoud = false; // in capitals
};

bool isNobody(std::u16string_view name) {
    constexpr std::array<std::u16string_view, 22> kNobody{
        u"THE END", u"END",    u"FADE IN", u"FADE OUT", u"CUT TO", u"TIME",  u"PLACE", u"SETTING",
        u"TITLE",   u"AUTHOR", u"CURTAIN", u"BLACKOUT", u"NOTE",   u"NOTES", u"DATE",  u"SCENERY",
        u"BY",      u"SOUND",  u"MUSIC",   u"PROPS",    u"CREDIT", u"SOURCE"};
    std::u16string upper(name);
    std::ranges::transform(upper, upper.begin(), [](char16_t unit) {
        return isLower(unit) && unit < 0x80 ? static_cast<char16_t>(unit - 0x20) : unit;
    });
    return std::ranges::find(kNobody, upper) != kNobody.end() || isCastHead(name) ||
           isEnglishHeading(name);
}

bool isNameUnit(char16_t unit) {
    return isUpper(unit) || isLower(unit) || isDigit(unit) || holds(u" '’-&,/#.", unit);
}

bool isName(std::u16string_view name) {
    const bool begins = !name.empty() && isUpper(name.front());
    return begins && name.size() <= kLongestName && std::ranges::all_of(name, isNameUnit) &&
           std::ranges::count(name, u' ') < 4 && !isNobody(name);
}

// The place of the sign behind the name: a colon, or a full stop that no initial
// or title has. Brackets in front of it are passed over.
std::size_t findSign(std::u16string_view line) {
    for (std::size_t at = 0; at < std::min(line.size(), kLongestHead); ++at) {
        const bool isEnd =
            at + 1 == line.size() || isBlank(line[at + 1]) || holds(u"—-_\"“(", line[at + 1]);
        if (holds(kOpenings, line[at])) {
            at = std::min(line.substr(0, kLongestHead).find_first_of(kClosings, at), kLongestHead);
        } else if (line[at] == u':' && isEnd) {
            return at;
        } else if (line[at] == u'.' && isEnd) {
            constexpr std::array<std::u16string_view, 5> kTitles{u"MR", u"MRS", u"DR", u"ST",
                                                                 u"MS"};
            const std::u16string_view head = line.substr(0, at);
            const std::u16string_view word = head.substr(head.find_last_of(u' ') + 1);
            const bool isShort =
                at + 1 < line.size() &&
                (head.size() == 1 || std::ranges::find(kTitles, word) != kTitles.end());
            if (!isShort) {
                return at;
            }
        }
    }
    return kNowhere;
}

// All in capitals but for what joins two names.
bool isLoud(std::u16string_view name) {
    for (std::u16string_view rest = name; !rest.empty();) {
        const std::size_t end = std::min(rest.find(u' '), rest.size());
        const std::u16string_view word = rest.substr(0, end);
        if (std::ranges::any_of(word, isLower) && word != u"and" && word != u"of" &&
            word != u"the") {
            return false;
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return true;
}

std::optional<Head> headIn(const PlayLine& line) {
    const std::size_t sign = findSign(line.text);
    if (sign == kNowhere) {
        return std::nullopt;
    }
    Head found{{}, {}, sign + 1, false};
    std::u16string_view head = trimmed(line.text.substr(0, sign));
    const std::size_t open = head.find_first_of(kOpenings);
    if (open != kNowhere && holds(kClosings, head.back())) {
        found.directions.push_back(
            directionPart(head.substr(open + 1, head.size() - open - 2), line.number));
        head = trimmed(head.substr(0, open));
    }
    while (!head.empty() && holds(u"_*", head.front())) {
        head.remove_prefix(1);
    }
    if (!isName(head)) {
        return std::nullopt;
    }
    found.name = head;
    found.isLoud = isLoud(head);
    // "Well. That is it." is no speech, "Anna: That is it." one of Anna's.
    const bool isSigned = found.isLoud || line.text[sign] == u':';
    return isSigned ? std::optional(std::move(found)) : std::nullopt;
}

// "Exit.", "Enter Anna.", set apart by its place or in italics.
bool isStageMove(const PlayLine& line, std::size_t indent) {
    constexpr std::array<std::u16string_view, 6> kMoves{u"Exit",     u"Exeunt",   u"Enter",
                                                        u"Re-enter", u"Flourish", u"Alarum"};
    const bool isItalic = line.text.front() == u'_';
    const std::u16string_view text = line.text.substr(isItalic ? 1 : 0);
    const bool isApart = isItalic || line.indent > indent;
    return isApart && std::ranges::any_of(kMoves, [text](std::u16string_view move) {
               return text.starts_with(move) &&
                      (text.size() == move.size() || !isLower(text[move.size()]));
           });
}

// What is set in italics.
std::u16string withoutItalics(std::u16string_view text) {
    std::u16string plain(text);
    std::erase(plain, u'_');
    return plain;
}

class EnglishPlayReader final : public LineWalk {
public:
    explicit EnglishPlayReader(Lines lines) : LineWalk(lines) {
        for (const PlayLine& line : lines) {
            if (const auto head = headIn(line)) {
                ++names_[head->name];
                loud_ += head->isLoud ? 1 : 0;
            }
        }
    }

private:
    void readLine(const PlayLine& line) override {
        if (line.empty() || isRuler(line.text)) {
            return;
        }
        if (isCastHead(line.text)) {
            readCast();
        } else if (isEnglishHeading(line.text)) {
            add(ItemKind::heading, line, withoutItalics(line.text));
        } else if (const auto head = headOf(line)) {
            readSpeech(line, *head);
        } else if (holds(kOpenings, line.text.front())) {
            readDirection();
        } else {
            add(ItemKind::direction, line, withoutItalics(line.text));
        }
    }

    // Names that are not in capitals are trusted where they come again, or where
    // no name is in capitals.
    std::optional<Head> headOf(const PlayLine& line) const {
        std::optional<Head> head = headIn(line);
        const bool isTrusted = head && (head->isLoud || loud_ == 0 || names_.at(head->name) > 1);
        return isTrusted ? head : std::nullopt;
    }

    // Entries stand with empty lines or without; what no speech begins and no
    // heading ends is one.
    void readCast() {
        for (; at_ < lines_.size(); ++at_) {
            const PlayLine& line = lines_[at_];
            const bool isParted = at_ > 1 && lines_[at_ - 1].empty() && lines_[at_ - 2].empty();
            if (!line.empty() && (isEnglishHeading(line.text) || isParted || isFirstSpeech(line))) {
                break;
            }
            if (!line.empty()) {
                add(ItemKind::other, line, withoutItalics(line.text));
            }
        }
        --at_;
    }

    // "ANNA: a teacher" is an entry, unless an empty line stands in front of it.
    bool isFirstSpeech(const PlayLine& line) const {
        return at_ > 0 && lines_[at_ - 1].empty() && headIn(line).has_value();
    }

    // In brackets, over several lines.
    void readDirection() {
        const std::size_t first = at_;
        std::u16string text;
        std::size_t depth = 0;
        for (;; ++at_) {
            for (const char16_t unit : lines_[at_].text) {
                depth += holds(kOpenings, unit) ? 1 : 0;
                depth -= holds(kClosings, unit) && depth > 0 ? 1 : 0;
            }
            appendLine(text, lines_[at_].text);
            if (depth == 0 || at_ + 1 == lines_.size() || lines_[at_ + 1].empty() ||
                headOf(lines_[at_ + 1])) {
                break;
            }
        }
        add(ItemKind::direction, lines_[first], withoutItalics(text));
    }

    void readSpeech(const PlayLine& line, const Head& head) {
        SpeechText speech;
        const std::u16string plain = withoutItalics(line.text.substr(head.content));
        speech.add(trimmed(plain), line.number);
        while (at_ + 1 < lines_.size() && goesOn(lines_[at_ + 1], speech) &&
               (lines_[at_ + 1].empty() || !isStageMove(lines_[at_ + 1], line.indent))) {
            ++at_;
            const std::u16string more = withoutItalics(lines_[at_].text);
            speech.add(trimmed(more), lines_[at_].number);
        }
        addSpoken(line.number, head.name, head.directions, speech.parts());
    }

    // An empty line ends a speech that has ended a sentence.
    bool goesOn(const PlayLine& next, const SpeechText& speech) const {
        if (!next.empty()) {
            return isMore(next);
        }
        const std::size_t behind = at_ + 2;
        return !speech.empty() && !endsSentence(speech.text()) && behind < lines_.size() &&
               !lines_[behind].empty() && isLower(lines_[behind].text.front()) &&
               isMore(lines_[behind]);
    }

    bool isMore(const PlayLine& line) const {
        return !isRuler(line.text) && !isEnglishHeading(line.text) && !headOf(line);
    }

    std::map<std::u16string, std::size_t> names_;
    std::size_t loud_ = 0;
};

} // namespace

std::vector<PlayItem> readEnglishPlay(Lines lines) {
    return EnglishPlayReader(lines).read();
}

} // namespace tvml::plays
