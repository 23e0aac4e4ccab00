// `convert` with a folder for what its scripts become.
#ifndef TVML_HOST_ARCHIVE_COMMAND_H
#define TVML_HOST_ARCHIVE_COMMAND_H

#include "host/command_line.h"

namespace tvml::host {

// Converts every script, several at a time. Returns kInputOrOutputFailed when one
// failed, else kProblemsFound when one reached the failure level.
int runArchive(const Options& options);

// Refuses options that only archives have.
void refuseArchiveOptions(const Options& options);

} // namespace tvml::host

#endif
