// The form of the host's messages, which editors and build tools know from
// compilers. Entry: diagnosticLine.
#include "host/host_error.h"

#include "diagnostics/text_width.h"

namespace tvml::host {

std::string diagnosticLine(std::string_view file, TextPosition position, Message severity,
                           std::string_view text) {
    std::string line = harmlessBytes(file);
    for (const std::uint64_t number : {position.line, position.column}) {
        // A column without its line says nothing.
        if (number == 0) {
            break;
        }
        line.append(":").append(std::to_string(number));
    }
    return line.append(": ").append(say(severity)).append(": ").append(text);
}

HostError inputOrOutputError(std::string_view file, TextPosition position, Message message,
                             Values values) {
    return {kInputOrOutputFailed,
            diagnosticLine(file, position, Message::severity_error, say(message, values))};
}

void refuse(Message message, Values values) {
    throw HostError{kWrongUsage, errorLine(message, values)};
}

std::string inputName(std::string_view file) {
    return file == kStandardStream ? say(Message::file_standardInput) : std::string(file);
}

std::string outputName(std::string_view file) {
    return file == kStandardStream ? say(Message::file_standardOutput) : std::string(file);
}

} // namespace tvml::host
