// The subcommand `stats`.
#ifndef TVML_HOST_STATS_COMMAND_H
#define TVML_HOST_STATS_COMMAND_H

#include "host/command_line.h"

namespace tvml::host {

int runStats(const Options& options);

} // namespace tvml::host

#endif
