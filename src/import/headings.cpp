// Lines that part a play. Entries: isRuler, isJapaneseHeading, isEnglishHeading,
// isCastHead.
#include <algorithm>
#include <array>

#include "import/play_readers.h"

namespace tvml::plays {
namespace {

constexpr std::size_t kLongestHeading = 40;
constexpr std::size_t kLongestEnglishHeading = 80;

bool startsWithOne(std::u16string_view line, std::span<const std::u16string_view> words) {
    return std::ranges::any_of(words,
                               [line](std::u16string_view word) { return line.starts_with(word); });
}

std::u16string upperCase(std::u16string_view text) {
    std::u16string upper(text);
    for (char16_t& unit : upper) {
        unit = unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
    }
    return upper;
}

// 第一場, 第３幕.
bool isNumberedScene(std::u16string_view line) {
    const std::size_t unit = line.substr(0, 6).find_first_of(u"場幕景話回部章");
    return line.starts_with(u'第') && unit != kNowhere && unit > 1;
}

// １　教室, 12. 校庭.
bool isNumberedPlace(std::u16string_view line) {
    std::size_t digits = 0;
    while (digits < line.size() && isDigit(line[digits])) {
        ++digits;
    }
    return digits > 0 && digits < 4 && digits + 1 < line.size() &&
           holds(u"．.、　 ", line[digits]) && !isDigit(line[digits + 1]);
}

// FIRST ACT
bool isOrdinalAct(std::u16string_view line) {
    constexpr std::array<std::u16string_view, 5> kOrdinals{u"FIRST ", u"SECOND ", u"THIRD ",
                                                           u"FOURTH ", u"FIFTH "};
    return startsWithOne(line, kOrdinals) && (line.ends_with(u" ACT") || line.ends_with(u" SCENE"));
}

// A word such as SCENE with nothing, a number or a colon behind it.
bool isSceneWord(std::u16string_view line) {
    constexpr std::array<std::u16string_view, 6> kWords{u"ACT",      u"SCENE",   u"PROLOGUE",
                                                        u"EPILOGUE", u"CHAPTER", u"PART"};
    const std::u16string upper = upperCase(line.substr(0, 24));
    return std::ranges::any_of(kWords, [&](std::u16string_view word) {
        const std::u16string_view rest =
            upper.starts_with(word) ? std::u16string_view(upper).substr(word.size()) : u"x";
        if (rest.empty() || holds(u".:", rest.front())) {
            return true;
        }
        const std::u16string_view number = trimmed(rest);
        const std::size_t end = number.find_first_of(u" .:,-–—");
        const std::u16string_view first = number.substr(0, end);
        constexpr std::array<std::u16string_view, 10> kNumbers{u"ONE",  u"TWO", u"THREE", u"FOUR",
                                                               u"FIVE", u"SIX", u"SEVEN", u"EIGHT",
                                                               u"NINE", u"TEN"};
        return isBlank(rest.front()) &&
               (isDigit(number.front()) || first.find_first_not_of(u"IVXLC") == kNowhere ||
                std::ranges::find(kNumbers, first) != kNumbers.end());
    });
}

} // namespace

bool isRuler(std::u16string_view line) {
    return line.size() >= 3 &&
           line.find_first_not_of(u"-－―─—–━=＝*＊・_＿～~〜◇◆☆★ 　") == kNowhere;
}

bool isJapaneseHeading(std::u16string_view line) {
    if (line.size() < 2 || line.size() > kLongestHeading || holds(u"。」』", line.back())) {
        return false;
    }
    constexpr std::array<std::u16string_view, 6> kWords{u"シーン",     u"場面",  u"プロローグ",
                                                        u"エピローグ", u"Scene", u"SCENE"};
    const bool isMarked = holds(u"○〇◯●■□◇◆◎▼▽＃#", line.front());
    const bool isSquare = line.front() == u'【' && line.find(u'】') == line.size() - 1;
    return (isMarked || isSquare || isNumberedScene(line) || isNumberedPlace(line) ||
            startsWithOne(line, kWords)) &&
           line.find(u'「') == kNowhere;
}

bool isEnglishHeading(std::u16string_view line) {
    if (line.size() < 3 || line.size() > kLongestEnglishHeading) {
        return false;
    }
    constexpr std::array<std::u16string_view, 8> kPlaces{u"INT.", u"EXT.", u"EST.", u"INT ",
                                                         u"EXT ", u"INT/", u"EXT/", u"I/E"};
    return startsWithOne(upperCase(line.substr(0, 5)), kPlaces) || isSceneWord(line) ||
           isOrdinalAct(line);
}

bool isCastHead(std::u16string_view line) {
    constexpr std::array<std::u16string_view, 16> kHeads{u"登場人物",
                                                         u"登場人物表",
                                                         u"人物",
                                                         u"人物表",
                                                         u"配役",
                                                         u"配役表",
                                                         u"キャスト",
                                                         u"出演",
                                                         u"CAST",
                                                         u"CHARACTERS",
                                                         u"PERSONS",
                                                         u"DRAMATIS PERSONAE",
                                                         u"DRAMATIS PERSONÆ",
                                                         u"CAST OF CHARACTERS",
                                                         u"PERSONS OF THE PLAY",
                                                         u"THE PERSONS IN THE PLAY"};
    constexpr std::u16string_view kAround = u"【】［］[]（）()〈〉《》■◆○●◇□：:.*_#＃ 　";
    const std::size_t first = line.find_first_not_of(kAround);
    if (first == kNowhere || line.size() > kLongestHeading) {
        return false;
    }
    line = line.substr(first, line.find_last_not_of(kAround) - first + 1);
    return std::ranges::find(kHeads, upperCase(line)) != kHeads.end();
}

} // namespace tvml::plays
