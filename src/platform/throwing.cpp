// Entry: prepareToThrow.
#include <cstdlib>

#include <cxxabi.h>

#include "platform/call_turn.h"

#ifdef _LIBCPP_VERSION
// A function of the C++ ABI that this library's header does not declare.
namespace __cxxabiv1 {
struct __cxa_eh_globals;
extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept;
} // namespace __cxxabiv1
#endif

namespace tvml::platform {
namespace {

// More than the thread-local data of all libraries together is likely to take.
constexpr std::size_t kRoom = 16384;

// What only the process's first exception needs is made while the library loads.
struct FirstException {
    FirstException() {
        if (prepareToThrow()) {
            try {
                throw this;
            } catch (const FirstException*) {
            }
        }
    }
};
const FirstException firstException;

} // namespace

bool prepareToThrow() noexcept {
    void* volatile room = std::malloc(kRoom); // volatile: not to be left out
    const bool hasRoom = room != nullptr;
    std::free(room);
    return hasRoom && abi::__cxa_get_globals() != nullptr;
}

} // namespace tvml::platform
