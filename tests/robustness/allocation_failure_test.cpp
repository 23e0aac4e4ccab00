// Calls that run out of memory, at every place where that can happen.
#include <string>

#include <gtest/gtest.h>

#include "fil_process.h"
#include "robustness/allocations.h"
#include "robustness/programme.h"

namespace tvml {
namespace {

// What a call leaves in a buffer that is large enough, in front of the result.
std::u16string converted(const Programme& programme) {
    std::u16string buffer(kBufferUnits, u'#');
    const std::int32_t length = programme.convert(buffer);
    buffer.resize(static_cast<std::size_t>(length));
    return buffer;
}

class AllocationFailure : public testing::TestWithParam<Programme> {};

TEST_P(AllocationFailure, FailsTheCallAndNothingElse) {
    const Programme& programme = GetParam();
    const std::u16string expected = converted(programme);
    ASSERT_EQ(converted(programme), expected); // whatever is kept between calls, is kept now
    const std::u16string untouched(kBufferUnits, u'#');
    std::u16string buffer = untouched;
    std::size_t number = 0;
    for (bool failed = true; failed;) {
        const std::size_t blocks = allocations::liveBlocks();
        allocations::Failure failure(++number);
        const std::int32_t length = programme.convert(buffer);
        failed = failure.release();
        ASSERT_EQ(allocations::liveBlocks(), blocks) << number;
        if (failed && length == 0) {
            ASSERT_EQ(buffer, untouched) << number;
        } else { // the standard library does without some of its memory
            ASSERT_EQ(buffer.substr(0, static_cast<std::size_t>(length)), expected) << number;
            buffer = untouched;
        }
        ASSERT_EQ(converted(programme), expected) << number;
    }
    EXPECT_GT(number, 200U);
}

INSTANTIATE_TEST_SUITE_P(Programmes, AllocationFailure,
                         testing::Values(kRichProgramme, kBrokenProgramme, kEndlessProgramme,
                                         kDeclaringProgramme, kListingProgramme));

} // namespace
} // namespace tvml
