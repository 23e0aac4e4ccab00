// How a command of the host ends, and the form of what it says on standard
// error: `FILE:LINE:COLUMN: error: MESSAGE`.
#ifndef TVML_HOST_HOST_ERROR_H
#define TVML_HOST_HOST_ERROR_H

#include <cstdint>
#include <string>
#include <string_view>

#include "host/language.h"

namespace tvml::host {

// The program's exit codes.
inline constexpr int kDone = 0;
inline constexpr int kInputOrOutputFailed = 1;
inline constexpr int kWrongUsage = 2;
inline constexpr int kProblemsFound = 3; // done, and a failure level was reached

// The name that stands for standard input and output.
inline constexpr std::string_view kStandardStream = "-";

// Both count from 1, a column counts characters; 0 when not known.
struct TextPosition {
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

// Ends a command; main() prints it and exits with the code.
struct HostError {
    int exitCode;
    std::string message; // the whole line, without a line feed
};

// "FILE:LINE:COLUMN: SEVERITY: TEXT"; what is not known is left out.
std::string diagnosticLine(std::string_view file, TextPosition position, Message severity,
                           std::string_view text);

// A file that could not be read, decoded or written, and what to do about it.
HostError inputOrOutputError(std::string_view file, TextPosition position, Message message,
                             Values values = {});

// Wrong usage.
[[noreturn]] void refuse(Message message, Values values = {});

// The file's name as messages show it.
std::string inputName(std::string_view file);
std::string outputName(std::string_view file);

} // namespace tvml::host

#endif
