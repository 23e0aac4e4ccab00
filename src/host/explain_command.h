// The subcommand `explain`.
#ifndef TVML_HOST_EXPLAIN_COMMAND_H
#define TVML_HOST_EXPLAIN_COMMAND_H

#include "host/command_line.h"

namespace tvml::host {

int runExplain(const Options& options);

} // namespace tvml::host

#endif
