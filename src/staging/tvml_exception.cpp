// Entry: TvmlException.
#include "staging/tvml_exception.h"

#include <cstdarg>
#include <cstdio>

namespace tvml {

TvmlException::TvmlException(const char* file, int line, const char* message)
    : locations_{{file, line}}, message_(message != nullptr ? message : "") {}

void TvmlException::clear() {
    locations_.clear();
    message_.clear();
}

void TvmlException::addLocation(const char* file, int line) {
    locations_.push_back({file, line});
}

void TvmlException::formatMessage(const char* format, ...) {
    // 128 bytes hold nearly every message; a longer one is formatted again.
    std::string buffer(128, '\0');
    for (;;) {
        va_list arguments;
        va_start(arguments, format);
        const int length = std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
        va_end(arguments);
        if (length < 0) {
            message_ = format;
            return;
        }
        if (static_cast<std::size_t>(length) < buffer.size()) {
            message_.assign(buffer.data(), static_cast<std::size_t>(length));
            return;
        }
        buffer.resize(static_cast<std::size_t>(length) + 1);
    }
}

} // namespace tvml
