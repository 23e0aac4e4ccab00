// The files that a command needs. Entries: readInputs, sharedInputs, fileOfProgram.
#include "host/inputs.h"

#include <algorithm>

#include "host/host_error.h"
#include "host/text_files.h"
#include "platform/platform.h"

namespace tvml::host {
namespace {

// Long enough for any path of any system.
constexpr std::size_t kPathUnits = 32768;

std::string descriptionFile(const Options& options) {
    return options.description.empty() ? fileOfProgram(u"default.xml") : options.description;
}

} // namespace

// Made from the ini files' folder, so that all that comes with the program is
// in one place.
std::string fileOfProgram(std::u16string_view name) {
    const platform::Platform& system = platform::system();
    const std::u16string program = system.hostProgramPath(kPathUnits);
    const std::size_t separator = program.rfind(system.pathSeparator());
    return system.toUtf8(program.substr(0, separator + 1).append(name));
}

std::string programFile() {
    const platform::Platform& system = platform::system();
    return system.toUtf8(system.hostProgramPath(kPathUnits));
}

// The description that comes with the program has its own encoding.
std::u16string descriptionOf(const Options& options) {
    const bool given = !options.description.empty();
    return readDescription(descriptionFile(options),
                           given ? options.descriptionEncoding.value_or(options.encoding)
                                 : InputEncoding::detect);
}

std::vector<std::string> sharedInputs(const Options& options) {
    std::vector<std::string> files{descriptionFile(options), fileOfProgram(u"keyword.ini"),
                                   fileOfProgram(u"Mirvol.ini"), programFile()};
    if (!options.library.empty()) {
        files.push_back(options.library);
    }
    return files;
}

bool isInput(const Options& options, const std::string& file) {
    const auto isFile = [&file](const std::string& input) { return areOneFile(file, input); };
    return isFile(options.script) || std::ranges::any_of(options.scripts, isFile) ||
           std::ranges::any_of(sharedInputs(options), isFile);
}

Inputs readScriptInput(const Options& options) {
    if (options.script == kStandardStream && options.description == kStandardStream) {
        refuse(Message::usage_oneStream);
    }
    Inputs inputs;
    inputs.scriptName = inputName(options.script);
    inputs.descriptionName = inputName(descriptionFile(options));
    ScriptText script = readScript(options.script, options.encoding);
    inputs.script = std::move(script.text);
    inputs.lineEnds = script.lineEnds;
    inputs.encoding = script.encoding;
    return inputs;
}

Inputs readInputs(const Options& options) {
    Inputs inputs = readScriptInput(options);
    inputs.description = descriptionOf(options);
    return inputs;
}

} // namespace tvml::host
