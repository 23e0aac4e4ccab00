// Small text services that all readers of a script share. Texts are UTF-16;
// positions are indices into a text or kNone.
#ifndef TVML_READING_SCRIPT_TEXT_H
#define TVML_READING_SCRIPT_TEXT_H

#include <algorithm>
#include <string>
#include <string_view>

#include "vocabulary/keyword_table.h"

namespace tvml {

// `text` without script blanks at its ends; a part of `text`.
inline std::u16string_view trimScriptText(std::u16string_view text, const KeywordTable& words) {
    while (!text.empty() && words.isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && words.isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// The letter "A" to "Z" of which `text` is a one-unit form, else empty.
std::u16string_view characterLetterOf(std::u16string_view text, const KeywordTable& words);

// The view of one letter, for texts that name a character.
std::u16string_view letterText(char16_t letter);

constexpr std::size_t earliestPosition(std::size_t a, std::size_t b) {
    return std::min(a, b);
}
constexpr std::size_t latestPosition(std::size_t a, std::size_t b) {
    return a == kNone ? b : b == kNone ? a : std::max(a, b);
}

// Replaces every occurrence from the start; an inserted replacement is not
// searched again. An empty pattern replaces nothing.
void replaceAll(std::u16string& text, std::u16string_view pattern, std::u16string_view replacement);

// Double quotes become apostrophes, so that the text can stand in a quoted
// argument.
void replaceDoubleQuotes(std::u16string& text);

// The UTF-16 units of the character at `at`: 2 for a surrogate pair, else 1.
std::size_t unitsOfCharacter(std::u16string_view text, std::size_t at);

// Not empty and every unit below U+0080.
bool isAsciiText(std::u16string_view text);

// `text` without its first `count` units, or empty when it has no more.
constexpr std::u16string_view dropUnits(std::u16string_view text, std::size_t count) {
    return text.substr(std::min(count, text.size()));
}

// As dropUnits, trimmed.
inline std::u16string_view dropAndTrim(std::u16string_view text, std::size_t count,
                                       const KeywordTable& words) {
    return trimScriptText(dropUnits(text, count), words);
}

// `text` starts with ":" or the `colon` word.
bool startsWithColon(std::u16string_view text, const KeywordTable& words);

// The last unit of `text` closes a bracket group: ")" or one of `toji_kakko`.
bool endsWithClosingBracket(std::u16string_view text, const KeywordTable& words);

// The separators of commands: ",", `kanma`, `touten1`, `touten2`.
std::size_t findSeparator(std::u16string_view text, const KeywordTable& words);
bool startsWithSeparator(std::u16string_view text, const KeywordTable& words);

// The decimal text of `number`.
std::u16string decimalText(std::int32_t number);

} // namespace tvml

#endif
