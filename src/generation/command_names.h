// The canonical names that the command tables take, for listings and checks.
#ifndef TVML_GENERATION_COMMAND_NAMES_H
#define TVML_GENERATION_COMMAND_NAMES_H

#include <string_view>
#include <vector>

namespace tvml {

// In the order of testing.
std::vector<std::u16string_view> stagingCommandNames();
std::vector<std::u16string_view> characterCommandNames();

} // namespace tvml

#endif
