// The project file, tvmlfilter.toml: what the scripts of a folder have in common.
#ifndef TVML_HOST_PROJECT_FILE_H
#define TVML_HOST_PROJECT_FILE_H

#include <optional>
#include <string>
#include <vector>

#include "diagnostics/diagnostics.h"
#include "host/host_error.h"
#include "host/text_encoding.h"
#include "texts/catalogue.h"

namespace tvml::host {

inline constexpr std::string_view kProjectName = "tvmlfilter.toml";

// Paths of a file are those of the file's folder. What it does not say is none, or
// empty.
struct ProjectFile {
    std::string file;
    std::string description;
    std::string ini; // the folder of both ini files
    std::optional<InputEncoding> encoding;
    std::optional<InputEncoding> descriptionEncoding;
    std::optional<OutputEncoding> outputEncoding;
    std::vector<std::string> media;
    std::string output; // a folder
    std::vector<Code> allowed;
    std::vector<Code> denied;
    std::optional<Severity> failureLevel;
    bool neverFails = false; // instead of a failure level
    std::optional<Language> language;
    std::vector<std::string> player;
};

// What is wrong with a project file, and where.
struct ProjectFault {
    std::string file;
    TextPosition position;
    std::string text;
    HostError error() const;
};

// The nearest project file in the folder or above it; empty for none.
std::string nearestProject(const std::string& folder);

// Throws a ProjectFault for a text that is no such file, and a HostError for a file
// that cannot be read.
ProjectFile readProject(const std::string& file);

// The folder of a file, for nearestProject().
std::string folderOf(const std::string& file);

} // namespace tvml::host

#endif
