// The operator new of this program. Entries: the functions of the header.
#include "robustness/allocations.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

namespace {

std::size_t blocks = 0;
std::size_t bytes = 0;
std::size_t bytesAtReset = 0;
std::size_t peak = 0;
std::size_t untilFailure = 0; // 0: none fails
bool failed = false;

// In front of every block; keeps the alignment.
struct alignas(std::max_align_t) Header {
    std::size_t size;
};

void* allocate(std::size_t size) {
    if (untilFailure != 0 && --untilFailure == 0) {
        failed = true;
        return nullptr;
    }
    auto* header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
    if (header == nullptr) {
        return nullptr;
    }
    header->size = size;
    ++blocks;
    bytes += size;
    peak = std::max(peak, bytes);
    return header + 1;
}

} // namespace

namespace tvml::allocations {

std::size_t liveBlocks() {
    return blocks;
}

void resetPeak() {
    bytesAtReset = peak = bytes;
}

std::size_t peakBytes() {
    return peak - bytesAtReset;
}

Failure::Failure(std::size_t number) {
    untilFailure = number;
    failed = false;
}

bool Failure::release() {
    untilFailure = 0;
    return std::exchange(failed, false);
}

} // namespace tvml::allocations

void* operator new(std::size_t size) {
    void* block = allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void operator delete(void* block) noexcept {
    if (block != nullptr) {
        Header* header = static_cast<Header*>(block) - 1;
        --blocks;
        bytes -= header->size;
        std::free(header);
    }
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

// The other forms call these two unless a sanitizer brings its own.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void operator delete(void* block, const std::nothrow_t&) noexcept {
    operator delete(block);
}

void operator delete[](void* block) noexcept {
    operator delete(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    operator delete(block);
}

void operator delete[](void* block, const std::nothrow_t&) noexcept {
    operator delete(block);
}
