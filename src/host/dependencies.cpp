// Entries: checkDependencyFile, writeDependencies.
//
// The inputs stand as targets, too, so that one which is deleted or renamed makes
// its output new instead of stopping the build.
#include "host/dependencies.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "host/host_error.h"
#include "host/inputs.h"
#include "host/text_files.h"

namespace tvml::host {
namespace {

// As make reads it, and ninja after it.
std::string escaped(std::string_view name) {
    std::string text;
    for (const char letter : name) {
        if (letter == ' ' || letter == '#') {
            text += '\\';
        } else if (letter == '$') {
            text += '$';
        }
        text += letter;
    }
    return text;
}

std::vector<std::string> filesForAll(const Options& options) {
    std::vector<std::string> files = sharedInputs(options);
    // Whoever builds the program knows of it, and of what it is made.
    std::erase(files, programFile());
    return files;
}

} // namespace

void checkDependencyFile(const Options& options, const std::vector<Dependency>& made) {
    const std::string& file = options.dependencyFile;
    const auto clashes = [&file](const Dependency& each) {
        return each.output == file || areOneFile(each.output, file) ||
               areOneFile(each.script, file);
    };
    const bool isStream = std::ranges::any_of(
        made, [](const Dependency& each) { return each.output == kStandardStream; });
    if (isStream) {
        refuse(Message::usage_dependencyOutput);
    }
    if (std::ranges::any_of(made, clashes) || isInput(options, file)) {
        refuse(Message::usage_dependencyFile);
    }
}

void writeDependencies(const Options& options, const std::vector<Dependency>& made) {
    std::set<std::string> inputs;
    std::string common;
    for (const std::string& file : filesForAll(options)) {
        inputs.insert(file);
        common.append(" ").append(escaped(file));
    }
    std::string rules;
    for (const Dependency& each : made) {
        inputs.insert(each.script);
        rules.append(escaped(each.output)).append(": ").append(escaped(each.script));
        rules.append(common).append("\n");
    }
    for (const std::string& input : inputs) {
        rules.append(escaped(input)).append(":\n");
    }
    writeBytes(options.dependencyFile, rules);
}

} // namespace tvml::host
