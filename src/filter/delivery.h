// Handing a script to the buffer of a host.
#ifndef TVML_FILTER_DELIVERY_H
#define TVML_FILTER_DELIVERY_H

#include <cstddef>
#include <cstdint>
#include <limits>

namespace tvml {

// The longest script whose size query still has a 32-bit answer.
inline constexpr std::size_t kLongestScript = std::numeric_limits<std::int32_t>::max() - 1;

// What the exported function returns for a script, and what it writes. A Script
// tells its length with size() and copies that many units with copyTo(); one
// that is too long is asked for its length only.
template <typename Script>
std::int32_t deliver(const Script& script, char16_t* output, std::int32_t outputSize) {
    if (script.size() > kLongestScript) {
        return 0;
    }
    const auto length = static_cast<std::int32_t>(script.size());
    if (output == nullptr) {
        return length + 1;
    }
    if (outputSize <= length) {
        if (outputSize >= 1) {
            output[0] = u'\0';
        }
        return 0;
    }
    script.copyTo(output);
    output[length] = u'\0';
    return length;
}

} // namespace tvml

#endif
