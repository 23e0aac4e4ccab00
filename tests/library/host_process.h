// This process as a host of the library: what it has loaded and what it has in
// use. One implementation for each system stands behind it.
#ifndef TVML_TESTS_LIBRARY_HOST_PROCESS_H
#define TVML_TESTS_LIBRARY_HOST_PROCESS_H

#include "fil_process.h"

#include <cstddef>
#include <filesystem>
#include <string>

namespace tvml {

// A library file, loaded while the object lives.
class LoadedLibrary {
public:
    explicit LoadedLibrary(const std::filesystem::path& file);
    ~LoadedLibrary();
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    // The exported function; null when the library could not be loaded.
    decltype(&fil_process) function() const { return function_; }

private:
    void* handle_ = nullptr;
    decltype(&fil_process) function_ = nullptr;
};

// Whether any part of the file is still in this process.
bool isLoaded(const std::filesystem::path& file);

struct InUse {
    std::size_t heap;    // in blocks; in sizes of the smallest block where nobody counts them
    std::size_t handles; // open files or handles, and what else there are few of
};

InUse inUse();

} // namespace tvml

#endif
