// The form of the host's messages, which editors and build tools know from
// compilers. Entry: diagnosticLine.
#include "host/host_error.h"

namespace tvml::host {

std::string diagnosticLine(std::string_view file, TextPosition position, std::string_view severity,
                           std::string_view text) {
    std::string line(file);
    for (const std::uint64_t number : {position.line, position.column}) {
        // A column without its line says nothing.
        if (number == 0) {
            break;
        }
        line.append(":").append(std::to_string(number));
    }
    return line.append(": ").append(severity).append(": ").append(text);
}

HostError inputOrOutputError(std::string_view file, TextPosition position, std::string_view text) {
    return {kInputOrOutputFailed, diagnosticLine(file, position, "error", text)};
}

std::string_view inputName(std::string_view file) {
    return file == kStandardStream ? "<standard input>" : file;
}

std::string_view outputName(std::string_view file) {
    return file == kStandardStream ? "<standard output>" : file;
}

} // namespace tvml::host
