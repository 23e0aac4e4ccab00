// The host process on Windows: all of host_process.h.
#include "host_process.h"

#include <array>
#include <cstring>
#include <vector>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace tvml {
namespace {

// The path in the system's own spelling.
std::wstring native(const std::filesystem::path& file) {
    return std::filesystem::absolute(file).make_preferred().wstring();
}

std::size_t usedBlocks(HANDLE heap) {
    std::size_t blocks = 0;
    PROCESS_HEAP_ENTRY entry = {};
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        blocks += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? 1 : 0;
    }
    HeapUnlock(heap);
    return blocks;
}

// Indexes of thread-local storage, of which a process has a thousand and some.
constexpr std::size_t kThreadIndexes = 1088;

std::size_t freeThreadIndexes() {
    std::vector<DWORD> indexes;
    for (DWORD index = TlsAlloc(); index != TLS_OUT_OF_INDEXES; index = TlsAlloc()) {
        indexes.push_back(index);
    }
    for (const DWORD index : indexes) {
        TlsFree(index);
    }
    return indexes.size();
}

} // namespace

LoadedLibrary::LoadedLibrary(const std::filesystem::path& file) {
    const HMODULE module = LoadLibraryW(native(file).c_str());
    handle_ = module;
    if (module != nullptr) {
        const FARPROC symbol = GetProcAddress(module, "fil_process");
        std::memcpy(&function_, &symbol, sizeof(function_));
    }
}

LoadedLibrary::~LoadedLibrary() {
    if (handle_ != nullptr) {
        FreeLibrary(static_cast<HMODULE>(handle_));
    }
}

bool isLoaded(const std::filesystem::path& file) {
    return GetModuleHandleW(native(file).c_str()) != nullptr;
}

InUse inUse() {
    std::array<HANDLE, 64> heaps;
    const DWORD count = GetProcessHeaps(heaps.size(), heaps.data());
    InUse result = {};
    for (DWORD i = 0; i < count; ++i) {
        result.heap += usedBlocks(heaps[i]);
    }
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    result.handles = handles + kThreadIndexes - freeThreadIndexes();
    return result;
}

} // namespace tvml
