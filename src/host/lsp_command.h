// The language server over the program's standard streams.
#ifndef TVML_HOST_LSP_COMMAND_H
#define TVML_HOST_LSP_COMMAND_H

#include "host/command_line.h"

namespace tvml::host {

int runLsp(const Options& options);

} // namespace tvml::host

#endif
