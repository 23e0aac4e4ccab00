// The lines of a text and the characters in them, for those who read plays.
#ifndef TVML_IMPORT_PLAY_LINES_H
#define TVML_IMPORT_PLAY_LINES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvml::plays {

inline constexpr std::size_t kNowhere = std::u16string_view::npos;

struct PlayLine {
    std::u16string_view text; // without blanks at its ends
    std::size_t indent = 0;   // blanks in front
    std::size_t width = 0;    // with the indent, in places of half a kanji
    std::int32_t number = 0;  // from 1

    bool empty() const { return text.empty(); }
};

// All lines; they refer to the text.
std::vector<PlayLine> linesOf(std::u16string_view text);

bool isBlank(char16_t unit);
bool isKanji(char16_t unit);
bool isKana(char16_t unit);
bool isHiragana(char16_t unit);
bool isDigit(char16_t unit); // of either width
bool isUpper(char16_t unit); // Latin of Europe
bool isLower(char16_t unit);

bool holds(std::u16string_view units, char16_t unit);
bool holdsJapanese(std::u16string_view text);

std::u16string_view trimmed(std::u16string_view text);
std::u16string withoutBlanks(std::u16string_view text);

// Whether a sentence ends with the text, quotes and brackets behind it included.
bool endsSentence(std::u16string_view text);

// The text with `more` behind it, as two lines of a paragraph: with a blank between
// them unless Japanese stands at the seam.
void appendLine(std::u16string& text, std::u16string_view more);

// Without what is set beside kanji as their reading, ｜漢字《かんじ》, and without
// the typesetter's notes, ［＃…］. Line feeds stay.
std::u16string withoutRubies(std::u16string_view text);

// For each opening bracket of the text the place of the closing one, and the other
// way round; kNowhere for brackets without a partner and all other units.
std::vector<std::size_t> bracketPartners(std::u16string_view text, std::u16string_view openings,
                                         std::u16string_view closings);

} // namespace tvml::plays

#endif
