// The subcommand `check`.
#ifndef TVML_HOST_CHECK_COMMAND_H
#define TVML_HOST_CHECK_COMMAND_H

#include <string>

#include "host/command_line.h"

namespace tvml::host {

int runCheck(const Options& options);

// What `check --explain CODE` prints. Throws a HostError for wrong usage when
// there is no such code.
std::string explanationText(const std::string& code);

} // namespace tvml::host

#endif
