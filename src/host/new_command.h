// A new project: a folder with all that a programme needs.
#ifndef TVML_HOST_NEW_COMMAND_H
#define TVML_HOST_NEW_COMMAND_H

#include "host/command_line.h"

namespace tvml::host {

int runNew(const Options& options);

} // namespace tvml::host

#endif
