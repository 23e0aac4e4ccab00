// What a program needs that converses with another one over its standard streams.
// A native and a Windows implementation stand behind it (posix_conversing.cpp,
// windows_conversing.cpp). The conventions are those of host_services.h.
#ifndef TVML_PLATFORM_CONVERSING_H
#define TVML_PLATFORM_CONVERSING_H

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/host_services.h"

namespace tvml::platform {

enum class InputEvent : std::uint8_t { bytes, timedOut, ended };

// Appends what standard input has to `bytes`, waiting at most so long for some.
InputEvent readSomeInput(std::string& bytes, std::chrono::milliseconds time);

// Whether a process of this number runs.
bool isRunning(std::int64_t process);

// Starts a program by the words of its command line and goes on. It has nothing to
// read, and what it writes is dropped: this program's streams belong to somebody else.
Failure startProgram(const std::vector<std::string>& command);

} // namespace tvml::platform

#endif
