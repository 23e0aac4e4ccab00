// The same for the first call of a process, which reads the vocabulary and makes
// what outlives a call. All is as new in every child process, as long as nobody
// calls the library here.
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "robustness/allocations.h"
#include "robustness/programme.h"

namespace tvml {
namespace {

enum Exit : int { recovered, notReached, wrong, notRecovered };

// Runs a step in a child process; its exit status, or -1 when it was killed.
template <typename Step> int inChild(Step step) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(step());
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(FirstCall, CanFailAndTheNextOneWorks) {
    // The right result, handed over by a child to whom nothing happens.
    constexpr std::size_t bytes = kBufferUnits * sizeof(char16_t);
    void* shared = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(shared, MAP_FAILED);
    const auto* expected = static_cast<const char16_t*>(shared);
    ASSERT_EQ(inChild([&] {
                  std::u16string buffer(kBufferUnits, u'\0');
                  const bool done = kRichProgramme.convert(buffer) > 0;
                  std::memcpy(shared, buffer.data(), bytes);
                  return done ? recovered : notRecovered;
              }),
              recovered);

    const bool everyNumber = std::getenv("TVML_ROBUSTNESS_FULL") != nullptr;
    int exit = recovered;
    for (std::size_t number = 1; exit != notReached; number += everyNumber ? 1 : 61) {
        exit = inChild([&] {
            std::u16string buffer(kBufferUnits, u'\0');
            const auto isRight = [&](std::int32_t length) {
                return length > 0 && buffer.c_str() == std::u16string_view(expected);
            };
            allocations::Failure failure(number);
            const std::int32_t length = kRichProgramme.convert(buffer);
            if (!failure.release()) {
                return notReached;
            }
            if (length != 0 && !isRight(length)) {
                return wrong;
            }
            return isRight(kRichProgramme.convert(buffer)) ? recovered : notRecovered;
        });
        ASSERT_GE(exit, 0) << "killed, allocation " << number;
        ASSERT_NE(exit, wrong) << number;
        ASSERT_NE(exit, notRecovered) << number;
    }
    munmap(shared, bytes);
}

} // namespace
} // namespace tvml
