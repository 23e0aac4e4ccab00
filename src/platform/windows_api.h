// The system's interface without the parts that nobody here needs, and without
// macros that take the names of std::min and std::max.
#ifndef TVML_PLATFORM_WINDOWS_API_H
#define TVML_PLATFORM_WINDOWS_API_H

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#endif
