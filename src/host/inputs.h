// What a command over one script reads before it does anything.
#ifndef TVML_HOST_INPUTS_H
#define TVML_HOST_INPUTS_H

#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostics.h"
#include "host/command_line.h"
#include "host/text_files.h"

namespace tvml::host {

struct Inputs {
    std::u16string script;
    std::u16string description;
    LineEnds lineEnds = LineEnds::feeds; // of the script's file
    InputEncoding encoding = InputEncoding::utf8;
    std::string scriptName; // of the files, as messages call them
    std::string descriptionName;

    // What the options ask for; it refers to the texts.
    ConversionRequest request(const Options& options) const {
        return {script, options.playFrom, options.playTo, description};
    }

    // The texts as messages show them.
    Sources sources(SourceText vocabulary = {}) const {
        return {{scriptName, script}, {descriptionName, description}, std::move(vocabulary)};
    }
};

// The description that the options name, or the one that comes with the program.
std::u16string descriptionOf(const Options& options);

// All files that a conversion with these options reads but its scripts, whether
// they are there or not: the description, the vocabulary and the settings, and the
// program or the library that converts.
std::vector<std::string> sharedInputs(const Options& options);

// Whether `file` is one of them, or one of the scripts.
bool isInput(const Options& options, const std::string& file);

// Reads the script alone.
Inputs readScriptInput(const Options& options);

// Reads the script and the description that the options name. Throws a
// HostError when one cannot be read, or when both are to come from one stream.
Inputs readInputs(const Options& options);

// The path of a file that comes with the program, such as "keyword.ini".
std::string fileOfProgram(std::u16string_view name);

// The path of the program.
std::string programFile();

} // namespace tvml::host

#endif
