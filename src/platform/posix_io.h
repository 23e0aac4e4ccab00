// Reading and writing by the system's calls, for the native implementations of
// host_services.h.
#ifndef TVML_PLATFORM_POSIX_IO_H
#define TVML_PLATFORM_POSIX_IO_H

#include "platform/host_services.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace tvml::platform {

// What the last call that failed said. To be asked for at once, before another
// call changes it.
inline Failure systemFailure() {
    return std::string(std::strerror(errno));
}

// A call may write less than it was given, into a pipe above all.
inline Failure writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return systemFailure();
        }
    }
    return std::nullopt;
}

// Closing can be the first to say that the disk is full.
inline Failure closeAfter(int descriptor, Failure before) {
    const bool closed = ::close(descriptor) == 0 || errno == EINTR;
    return before || closed ? before : systemFailure();
}

} // namespace tvml::platform

#endif
