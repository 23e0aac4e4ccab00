// Bracketed commands become TVML.
#ifndef TVML_GENERATION_COMMANDS_H
#define TVML_GENERATION_COMMANDS_H

#include <string>

#include "run/run.h"

namespace tvml {

// Both append the TVML of a command that its reading says is taken: by a row of
// the staging, or by a row of the characters or a pose.
void generateStagingCommand(Run& run, const RecognizedCommand& command, std::u16string& out);
void generateCharacterCommand(Run& run, const ScriptLine& line, std::u16string& out);

} // namespace tvml

#endif
