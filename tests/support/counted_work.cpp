// The calls that the compiler and the linker put into counted code.
#include "support/counted_work.h"

#include <cstddef>

namespace {
std::uint64_t work = 0;
} // namespace

extern "C" {
void __sanitizer_cov_trace_pc();
void* __real_memmove(void* to, const void* from, std::size_t size);
void* __real_memcpy(void* to, const void* from, std::size_t size);
void* __wrap_memmove(void* to, const void* from, std::size_t size);
void* __wrap_memcpy(void* to, const void* from, std::size_t size);

void __sanitizer_cov_trace_pc() {
    ++work;
}
void* __wrap_memmove(void* to, const void* from, std::size_t size) {
    work += size / 16;
    return __real_memmove(to, from, size);
}
void* __wrap_memcpy(void* to, const void* from, std::size_t size) {
    work += size / 16;
    return __real_memcpy(to, from, size);
}
}

namespace tvml {

std::uint64_t countedWork() {
    return work;
}

} // namespace tvml
