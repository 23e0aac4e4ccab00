// The subcommand `man`.
#ifndef TVML_HOST_MANUAL_COMMAND_H
#define TVML_HOST_MANUAL_COMMAND_H

#include "host/command_line.h"

namespace tvml::host {

int runManual(const Options& options);

} // namespace tvml::host

#endif
