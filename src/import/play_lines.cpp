// Entries: linesOf, appendLine, withoutRubies, bracketPartners.
#include "import/play_lines.h"

#include <algorithm>

namespace tvml::plays {
namespace {

bool isWide(char16_t unit) {
    return unit >= 0x1100 && !(unit >= 0x2000 && unit <= 0x206F) &&
           !(unit >= 0xFF61 && unit <= 0xFFDC);
}

std::size_t widthOf(std::u16string_view text) {
    const auto wide = static_cast<std::size_t>(std::ranges::count_if(text, isWide));
    return text.size() + wide;
}

PlayLine lineOf(std::u16string_view whole, std::int32_t number) {
    const std::u16string_view text = trimmed(whole);
    const auto indent = text.empty() ? 0 : static_cast<std::size_t>(text.data() - whole.data());
    return {text, indent, widthOf(whole.substr(0, indent)) + widthOf(text), number};
}

// Where the reading that opens at `open` closes; kNowhere when nothing but kana
// does not stand between.
std::size_t endOfReading(std::u16string_view text, std::size_t open) {
    std::size_t at = open + 1;
    while (at < text.size() && (isKana(text[at]) || text[at] == u'・' || text[at] == u'　')) {
        ++at;
    }
    return at > open + 1 && at < text.size() && text[at] == u'》' ? at : kNowhere;
}

// The end of ［＃…］ on its line.
std::size_t endOfNote(std::u16string_view text, std::size_t open) {
    if (!text.substr(open).starts_with(u"［＃")) {
        return kNowhere;
    }
    constexpr std::size_t kLongestNote = 200; // so that many of no end cost little
    const std::size_t end = text.substr(open, kLongestNote).find_first_of(u"］\n");
    return end != kNowhere && text[open + end] == u'］' ? open + end : kNowhere;
}

} // namespace

std::vector<PlayLine> linesOf(std::u16string_view text) {
    std::vector<PlayLine> lines;
    std::int32_t number = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(u'\n'), text.size());
        lines.push_back(lineOf(text.substr(0, end), ++number));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

bool isBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'　' || unit == u'\u00A0' || unit == u'\r' ||
           unit == u'\f' || unit == u'\v';
}

bool isKanji(char16_t unit) {
    return unit == u'々' || unit == u'〆' || (unit >= 0x3400 && unit <= 0x9FFF) ||
           (unit >= 0xF900 && unit <= 0xFAFF);
}

bool isHiragana(char16_t unit) {
    return unit >= 0x3041 && unit <= 0x309F;
}

bool isKana(char16_t unit) {
    return (unit >= 0x3041 && unit <= 0x30FF && unit != u'・') ||
           (unit >= 0xFF66 && unit <= 0xFF9F);
}

bool isDigit(char16_t unit) {
    return (unit >= u'0' && unit <= u'9') || (unit >= u'０' && unit <= u'９');
}

bool isUpper(char16_t unit) {
    return (unit >= u'A' && unit <= u'Z') || (unit >= 0xC0 && unit <= 0xDE && unit != 0xD7);
}

bool isLower(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= 0xDF && unit <= 0xFF && unit != 0xF7);
}

bool holds(std::u16string_view units, char16_t unit) {
    return units.find(unit) != kNowhere;
}

bool holdsJapanese(std::u16string_view text) {
    return std::ranges::any_of(
        text, [](char16_t unit) { return isKana(unit) || isKanji(unit) || unit == u'「'; });
}

std::u16string_view trimmed(std::u16string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::u16string withoutBlanks(std::u16string_view text) {
    std::u16string result(text);
    std::erase_if(result, isBlank);
    return result;
}

bool endsSentence(std::u16string_view text) {
    constexpr std::u16string_view kBehind = u"」』）)］]”’\"'";
    constexpr std::u16string_view kEnds = u"。．.！!？?…‥♪〜～―─—";
    while (!text.empty() && holds(kBehind, text.back())) {
        text.remove_suffix(1);
    }
    return text.empty() || holds(kEnds, text.back());
}

void appendLine(std::u16string& text, std::u16string_view more) {
    if (!text.empty() && !more.empty() && !isWide(text.back()) && !isWide(more.front())) {
        text.push_back(u' ');
    }
    text.append(more);
}

std::u16string withoutRubies(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    std::size_t bar = kNowhere; // in the result, of a ｜ that a reading may follow
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at];
        const std::size_t end = unit == u'《'   ? endOfReading(text, at)
                                : unit == u'［' ? endOfNote(text, at)
                                                : kNowhere;
        if (end == kNowhere) {
            bar = unit == u'｜' ? result.size() : unit == u'\n' ? kNowhere : bar;
            result.push_back(unit);
            continue;
        }
        // What a bar begins is a word: nothing long is moved for it.
        constexpr std::size_t kLongestWord = 40;
        if (unit == u'《' && bar != kNowhere && result.size() - bar <= kLongestWord) {
            result.erase(bar, 1);
        }
        bar = kNowhere;
        at = end;
    }
    return result;
}

std::vector<std::size_t> bracketPartners(std::u16string_view text, std::u16string_view openings,
                                         std::u16string_view closings) {
    std::vector<std::size_t> partners(text.size(), kNowhere);
    std::vector<std::size_t> open;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (holds(openings, text[at])) {
            open.push_back(at);
        } else if (holds(closings, text[at]) && !open.empty()) {
            partners[open.back()] = at;
            partners[at] = open.back();
            open.pop_back();
        }
    }
    return partners;
}

} // namespace tvml::plays
