// Reading what follows a command's canonical name.
#ifndef TVML_GENERATION_COMMAND_ARGUMENTS_H
#define TVML_GENERATION_COMMAND_ARGUMENTS_H

#include <optional>
#include <string_view>

#include "filter/run.h"

namespace tvml {

// The adverbs behind a name. `rest` is all that follows the name, untrimmed:
// nothing, or a separator and a list. None when it is anything else.
std::optional<AdverbValues> readTail(const Run& run, std::u16string_view rest);

// As readTail, for a list whose separator is off already.
std::optional<AdverbValues> readAdverbs(const Run& run, std::u16string_view list);

// Whether `unit` is a Latin letter, ASCII or full-width.
bool isShotLetter(char16_t unit);

// The letter of the programme that `unit` names: "A" when it names none or one
// after the last character.
char16_t programmeLetter(const Run& run, std::u16string_view unit);

// A count in front of a unit word: "3 steps, fast" for the unit "step".
struct Count {
    std::u16string number;
    std::u16string_view rest; // what follows the unit word and its "s"
};
std::optional<Count> readCount(const Run& run, std::u16string_view text, std::u16string_view unit,
                               bool negativeAllowed);

constexpr std::u16string_view orDefault(std::u16string_view value, std::u16string_view fallback) {
    return value.empty() ? fallback : value;
}

} // namespace tvml

#endif
