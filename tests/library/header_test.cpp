// The header as a host in C++ has it.
#include "fil_process.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

static_assert(std::is_same_v<fil_char, char16_t>);
static_assert(std::is_same_v<decltype(&fil_process),
                             std::int32_t (*)(const char16_t*, std::int32_t, std::int32_t,
                                              const char16_t*, char16_t*, std::int32_t)>);

} // namespace
