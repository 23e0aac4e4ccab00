// Texts on a terminal: how many columns they take, and what must not get there.
#ifndef TVML_DIAGNOSTICS_TEXT_WIDTH_H
#define TVML_DIAGNOSTICS_TEXT_WIDTH_H

#include <cstddef>
#include <string>
#include <string_view>

namespace tvml {

// The columns of one character: 2 for wide and full-width ones, 0 for marks that
// combine with the one before, else 1.
std::size_t columnsOfCharacter(char32_t character);

std::size_t columnsOf(std::u16string_view text);

// The text with U+FFFD for control characters and for those that turn the
// direction of text, which a script must not have work on the terminal that
// shows it. Tabs stay.
std::u16string harmlessText(std::u16string_view text);

// The same for UTF-8, a tab included; of what is no UTF-8, as file names can be,
// the bytes that some terminals take for control characters.
std::string harmlessBytes(std::string_view text);

} // namespace tvml

#endif
