// The project file's part in the options of a command.
#ifndef TVML_HOST_PROJECT_OPTIONS_H
#define TVML_HOST_PROJECT_OPTIONS_H

#include <functional>

#include "host/command_line.h"

namespace tvml::host {

// Fills from the project file what the command line does not say. Throws a HostError
// for a file that is damaged.
void applyProject(Options& options, const std::function<bool(const char* name)>& isGiven);

} // namespace tvml::host

#endif
