// The subcommand `convert`.
#ifndef TVML_HOST_CONVERT_COMMAND_H
#define TVML_HOST_CONVERT_COMMAND_H

#include "host/command_line.h"

namespace tvml::host {

int runConvert(const Options& options);

} // namespace tvml::host

#endif
