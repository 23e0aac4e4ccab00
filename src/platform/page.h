// What a page hands to the platform before a call, in place of files and a clock.
#ifndef TVML_PLATFORM_PAGE_H
#define TVML_PLATFORM_PAGE_H

#include <cstdint>
#include <string>

namespace tvml::platform {

struct PageInputs {
    std::u16string keywordIni; // the texts of the two files; empty for a missing one
    std::u16string mirvolIni;
    std::uint32_t seconds = 0; // the time
};

// Those of the next call. Files that are open keep what they read.
PageInputs& pageInputs();

} // namespace tvml::platform

#endif
