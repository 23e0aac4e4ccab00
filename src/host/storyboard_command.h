#ifndef TVML_HOST_STORYBOARD_COMMAND_H
#define TVML_HOST_STORYBOARD_COMMAND_H

#include "host/command_line.h"

namespace tvml::host {

// Shows a script panel by panel, as a page or as JSON.
int runStoryboard(const Options& options);

} // namespace tvml::host

#endif
