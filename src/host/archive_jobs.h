// Which scripts an archive has, and what each becomes.
#ifndef TVML_HOST_ARCHIVE_JOBS_H
#define TVML_HOST_ARCHIVE_JOBS_H

#include <filesystem>
#include <string>
#include <vector>

#include "host/command_line.h"
#include "host/host_error.h"

namespace tvml::host {

// Names of files as they are written on a command line, and as paths.
std::filesystem::path pathOf(const std::string& name);
std::string nameOf(const std::filesystem::path& path);

// One script and what became of it.
struct Job {
    std::string script;
    std::string output;
    std::string messages = {};
    int exitCode = kDone;
    bool finished = false;
    bool upToDate = false; // there is nothing to do
    bool hasMessages = false;

    bool failed() const { return exitCode != kDone && exitCode != kProblemsFound; }
};

// The scripts that were named and those of the folders, or this call's share of
// them. Throws a HostError when two would become one file, or an output would
// replace an input: one that lies in the output folder under the name of a result.
std::vector<Job> jobsOf(const Options& options);

// The folders of the outputs.
void makeFolders(const std::vector<Job>& jobs, const Options& options);

} // namespace tvml::host

#endif
