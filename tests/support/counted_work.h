// Work of code that is compiled with a call in front of every basic block: what
// a test compares with it is the same on every machine, unlike time. Units that
// are moved or copied count by their bytes.
#ifndef TVML_TESTS_SUPPORT_COUNTED_WORK_H
#define TVML_TESTS_SUPPORT_COUNTED_WORK_H

#include <cstdint>

namespace tvml {

// Since the program's start.
std::uint64_t countedWork();

} // namespace tvml

#endif
