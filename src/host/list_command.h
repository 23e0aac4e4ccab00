// The subcommand `list`.
#ifndef TVML_HOST_LIST_COMMAND_H
#define TVML_HOST_LIST_COMMAND_H

#include "host/command_line.h"

namespace tvml::host {

int runList(const Options& options);

} // namespace tvml::host

#endif
