// Bracket groups: "(" … ")" or the vocabulary's brackets, in talk and commands.
#ifndef TVML_READING_BRACKETS_H
#define TVML_READING_BRACKETS_H

#include <optional>
#include <string_view>

#include "vocabulary/keyword_table.h"

namespace tvml {

// Visits the opening brackets of a text from its start: each "(" and each
// occurrence of the whole `kakko` word. An empty word occurs nowhere here. The
// whole visit costs no more than one look at each unit.
class OpeningBrackets {
public:
    OpeningBrackets(std::u16string_view text, const KeywordTable& words)
        : text_(text), word_(words[u"kakko"]) {}

    // The position of the next one, or kNone.
    std::size_t next();

private:
    std::u16string_view text_;
    const Word& word_;
    std::size_t from_ = 0;
    std::size_t nextAscii_ = 0; // at or after from_ once looked up
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
