// The host process on Linux: all of host_process.h.
#include "host_process.h"

#include <fstream>
#include <iterator>

#include <dlfcn.h>
#include <malloc.h>

namespace tvml {
namespace {

constexpr std::size_t kSmallestBlock = 32;

} // namespace

LoadedLibrary::LoadedLibrary(const std::filesystem::path& file)
    : handle_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ != nullptr) {
        function_ = reinterpret_cast<decltype(function_)>(dlsym(handle_, "fil_process"));
    }
}

LoadedLibrary::~LoadedLibrary() {
    if (handle_ != nullptr) {
        dlclose(handle_);
    }
}

bool isLoaded(const std::filesystem::path& file) {
    std::ifstream maps("/proc/self/maps");
    const std::string text{std::istreambuf_iterator<char>(maps), {}};
    return text.find(file.filename().string()) != std::string::npos;
}

InUse inUse() {
    const struct mallinfo2 heap = mallinfo2();
    using Iterator = std::filesystem::directory_iterator;
    const auto files = std::distance(Iterator("/proc/self/fd"), Iterator());
    return {(heap.uordblks + heap.hblkhd) / kSmallestBlock, static_cast<std::size_t>(files)};
}

} // namespace tvml
