// The option --watch: converting again whenever an input changes.
#ifndef TVML_HOST_WATCH_H
#define TVML_HOST_WATCH_H

#include <functional>

#include "host/command_line.h"

namespace tvml::host {

// Calls `convert` now and after every change of what a conversion of these
// options reads, until the user ends the program. A HostError of a conversion is
// shown and does not end the watch. Returns the exit code.
int watchInputs(const Options& options, const std::function<void()>& convert);

} // namespace tvml::host

#endif
