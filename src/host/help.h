// The help of the program, made from the tables of the command line, as wide as
// the terminal.
#ifndef TVML_HOST_HELP_H
#define TVML_HOST_HELP_H

#include <string>

#include "host/option_table.h"

namespace tvml::host {

std::string programHelp();
std::string commandHelp(const CommandRow& command);
std::string helpOfAll();

} // namespace tvml::host

#endif
