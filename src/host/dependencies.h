// What outputs are made from, in the form that make and ninja read.
#ifndef TVML_HOST_DEPENDENCIES_H
#define TVML_HOST_DEPENDENCIES_H

#include <string>
#include <vector>

#include "host/command_line.h"

namespace tvml::host {

// An output and the script that it is made from.
struct Dependency {
    std::string output;
    std::string script;
};

// Refuses outputs that are no files and a file that has another part in the
// conversion.
void checkDependencyFile(const Options& options, const std::vector<Dependency>& made);

// Writes the file that the options name.
void writeDependencies(const Options& options, const std::vector<Dependency>& made);

} // namespace tvml::host

#endif
