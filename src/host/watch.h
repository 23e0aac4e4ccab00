// The option --watch: working again whenever an input changes.
#ifndef TVML_HOST_WATCH_H
#define TVML_HOST_WATCH_H

#include <functional>

#include "host/command_line.h"

namespace tvml::host {

// Calls `work` now and after every change of what a command with these options
// reads, until the user ends the program. A HostError of the work is shown and does
// not end the watch. Returns the exit code.
int watchInputs(const Options& options, const std::function<void()>& work);

} // namespace tvml::host

#endif
