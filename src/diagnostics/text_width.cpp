// Entries: columnsOf, columnsOfCharacter, harmlessText, harmlessBytes.
#include "diagnostics/text_width.h"

#include "reading/script_text.h"

#include <algorithm>
#include <array>

namespace tvml {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// clang-format off
// Blocks of wide characters, and the few single ones of other blocks. Kept here
// because not every platform has a service that knows them.
constexpr std::array<Range, 32> kWide{{
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},   {0x23E9, 0x23EC},
    {0x25FD, 0x25FE},   {0x2614, 0x2615},   {0x2648, 0x2653},   {0x26BD, 0x26BE},
    {0x26C4, 0x26C5},   {0x26F2, 0x26F3},   {0x2753, 0x2755},   {0x2795, 0x2797},
    {0x2B1B, 0x2B1C},   {0x2E80, 0x303E},   {0x3041, 0x3247},   {0x3250, 0x4DBF},
    {0x4E00, 0xA4C6},   {0xA960, 0xA97C},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},
    {0xFE10, 0xFE19},   {0xFE30, 0xFE6B},   {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},
    {0x16FE0, 0x18D08}, {0x1AFF0, 0x1B2FB}, {0x1F191, 0x1F19A}, {0x1F200, 0x1F320},
    {0x1F32D, 0x1F64F}, {0x1F680, 0x1F6FC}, {0x1F90C, 0x1FAF8}, {0x20000, 0x3FFFD},
}};

constexpr std::array<Range, 7> kCombining{{
    {0x0300, 0x036F}, {0x200B, 0x200F}, {0x20D0, 0x20F0}, {0x302A, 0x302D},
    {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
}};
// clang-format on

constexpr std::array<Range, 4> kWorking{{
    {0x00, 0x1F},
    {0x7F, 0x9F},
    {0x202A, 0x202E},
    {0x2066, 0x2069},
}};

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD

struct Utf8Character {
    char32_t character = 0; // a byte that is part of none stands for itself
    std::size_t bytes = 1;
};

// Overlong forms and surrogates, which UTF-8 does not allow, are decoded like the
// rest: what they stand for is then tested like any other character.
Utf8Character firstOf(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t length = byte(0) < 0xC0 ? 1 : byte(0) < 0xE0 ? 2 : byte(0) < 0xF0 ? 3 : 4;
    if (length == 1 || length > text.size()) {
        return {byte(0), 1};
    }
    char32_t character = byte(0) & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80) {
            return {byte(0), 1};
        }
        character = (character << 6) | (byte(i) & 0x3FU);
    }
    return {character, length};
}

template <std::size_t N> bool isIn(const std::array<Range, N>& ranges, char32_t character) {
    const auto range =
        std::lower_bound(ranges.begin(), ranges.end(), character,
                         [](const Range& entry, char32_t value) { return entry.last < value; });
    return range != ranges.end() && range->first <= character;
}

bool worksOnTerminals(char32_t character) {
    return isIn(kWorking, character);
}

} // namespace

std::size_t columnsOfCharacter(char32_t character) {
    return isIn(kCombining, character) ? 0 : isIn(kWide, character) ? 2 : 1;
}

std::size_t columnsOf(std::u16string_view text) {
    std::size_t columns = 0;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t units = unitsOfCharacter(text, i);
        const char32_t character =
            units == 1 ? text[i]
                       : 0x10000 + ((char32_t{text[i]} - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
        columns += columnsOfCharacter(character);
        i += units;
    }
    return columns;
}

std::u16string harmlessText(std::u16string_view text) {
    std::u16string result(text);
    std::replace_if(
        result.begin(), result.end(),
        [](char16_t unit) { return unit != u'\t' && worksOnTerminals(unit); }, u'\xFFFD');
    return result;
}

std::string harmlessBytes(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const Utf8Character next = firstOf(text);
        result.append(worksOnTerminals(next.character) ? kReplacement : text.substr(0, next.bytes));
        text.remove_prefix(next.bytes);
    }
    return result;
}

} // namespace tvml
