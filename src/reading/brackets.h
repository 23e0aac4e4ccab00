// Bracket groups: "(" … ")" or the vocabulary's brackets, in talk and commands.
#ifndef TVML_READING_BRACKETS_H
#define TVML_READING_BRACKETS_H

#include <optional>
#include <string_view>

#include "vocabulary/keyword_table.h"

namespace tvml {

// Visits the opening brackets of a text from its start: each "(" and each
// occurrence of the whole `kakko` word. An empty word occurs nowhere here. Of
// blanks in a row that are brackets only the last is visited: without the blanks
// at their ends the texts on both sides are the same for all of them. The whole
// visit costs no more than a few looks at each unit.
class OpeningBrackets {
public:
    OpeningBrackets(std::u16string_view text, const KeywordTable& words)
        : text_(text), words_(words) {
        following_ = find(0);
    }

    // The position of the next one, or kNone.
    std::size_t next();

private:
    std::size_t find(std::size_t from);

    std::u16string_view text_;
    const KeywordTable& words_;
    std::size_t following_;     // the first one not visited, or kNone
    std::size_t nextAscii_ = 0; // at or after the place looked from last
    std::size_t nextWord_ = 0;
    bool started_ = false;
};

// The last opening bracket of `text`: a "(" or any character of `kakko`.
std::size_t findLastOpeningBracket(std::u16string_view text, const KeywordTable& words);

// The caption when `group`, the text behind an opening bracket, begins with a
// caption word and a colon: the trimmed text behind them.
std::optional<std::u16string_view> captionOf(std::u16string_view group, const KeywordTable& words);

// Whether a command line holds a caption group, which makes it talk.
bool isCaptionCommand(std::u16string_view line, const KeywordTable& words);

} // namespace tvml

#endif
