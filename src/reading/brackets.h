// Bracket groups: "(" … ")" or the vocabulary's brackets, in talk and commands.
#ifndef TVML_READING_BRACKETS_H
#define TVML_READING_BRACKETS_H

#include <optional>
#include <string_view>

#include "vocabulary/keyword_table.h"

namespace tvml {

// The text begins with an opening bracket and ends with a closing one.
bool isBracketed(std::u16string_view text, const KeywordTable& words);

// The last opening bracket of `text`: a "(" or any character of `kakko`.
std::size_t findLastOpeningBracket(std::u16string_view text, const KeywordTable& words);

// A caption and where the opening bracket in front of it stands.
struct CaptionGroup {
    std::size_t open;
    std::u16string_view caption; // trimmed
};

// The first opening bracket of `text`, a "(" or the whole `kakko` word, behind
// which come a caption word, a colon and the caption, which goes on to the end
// of the text. An empty `kakko` word occurs nowhere here.
std::optional<CaptionGroup> findCaption(std::u16string_view text, const KeywordTable& words);

// A line in brackets holds such a group, so that it is no command. In one thing
// the two differ: where the vocabulary's caption word begins the group and has no
// colon behind it, the English word is tried here, too.
bool isCaptionCommand(std::u16string_view line, const KeywordTable& words);

} // namespace tvml

#endif
