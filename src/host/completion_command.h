// The subcommand `completion`.
#ifndef TVML_HOST_COMPLETION_COMMAND_H
#define TVML_HOST_COMPLETION_COMMAND_H

#include "host/command_line.h"

namespace tvml::host {

int runCompletion(const Options& options);

} // namespace tvml::host

#endif
