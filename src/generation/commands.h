// Bracketed commands become TVML.
#ifndef TVML_GENERATION_COMMANDS_H
#define TVML_GENERATION_COMMANDS_H

#include <string>
#include <string_view>

#include "filter/run.h"

namespace tvml {

// The phrase of a command line, without brackets, with its canonical name.
std::u16string commandPhrase(const Run& run, std::u16string_view line);

// Appends the TVML of a command that changes the studio to `out`. False, with
// nothing written, when the phrase is no staging command.
bool generateStagingCommand(Run& run, std::u16string_view phrase, std::u16string& out);

// Appends the TVML of a character's command to `out`. `speaker` is a letter or
// "NO" for a line that names none. False when nothing takes the phrase.
bool generateCharacterCommand(Run& run, std::u16string_view speaker, std::u16string_view phrase,
                              std::u16string& out);

} // namespace tvml

#endif
