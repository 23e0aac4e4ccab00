// What the server asks of the machine: projects, files, the vocabulary. Tests put a
// machine in memory in its place.
//
// Conventions
//  1. Paths are UTF-8 in the system's own spelling; an empty one is no file.
//  2. Nothing here throws but std::bad_alloc. What cannot be read is empty.
#ifndef TVML_LSP_SURROUNDINGS_H
#define TVML_LSP_SURROUNDINGS_H

#include <optional>
#include <string>
#include <vector>

#include "diagnostics/diagnostics.h"
#include "run/ini_files.h"

namespace tvml::lsp {

// What belongs to a script besides its text.
struct Project {
    std::string file;        // that says so; empty for none
    std::string description; // the file
    std::vector<std::string> media;
    SeverityPolicy policy;
    std::vector<std::string> player; // its command line; "$FILE" stands for the output
    std::u16string problem;          // of the project file
    std::size_t problemLine = 0;     // from 1; 0 when not known
};

// A picture or a sound: as scripts name it, and where it is.
struct MediaFile {
    std::u16string name;
    std::string path;
};

class Surroundings {
public:
    virtual ~Surroundings() = default;

    virtual Project projectOf(const std::string& script) = 0;
    virtual std::u16string descriptionAt(const Project& project) = 0;
    virtual std::vector<MediaFile> mediaOf(const Project& project) = 0;

    // Another text when the file may have another content.
    virtual std::string stampOf(const std::string& file) = 0;

    virtual IniFiles& iniFiles() = 0;
    virtual const platform::Platform& platform() = 0;
    virtual std::string vocabularyFile() = 0;

    // Writes the TVML script to a file of its own and starts the player with it.
    // Returns what failed.
    virtual std::optional<std::string> play(const Project& project, std::u16string_view tvml) = 0;
};

} // namespace tvml::lsp

#endif
