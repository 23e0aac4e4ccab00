// The subcommand `import`.
#ifndef TVML_HOST_IMPORT_COMMAND_H
#define TVML_HOST_IMPORT_COMMAND_H

#include "host/command_line.h"

namespace tvml::host {

int runImport(const Options& options);

} // namespace tvml::host

#endif
