#include "filter/delivery.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tvml {
namespace {

// A script of any length that takes no memory until it is copied.
struct ImaginaryScript {
    std::size_t units;

    std::size_t size() const { return units; }
    void copyTo(char16_t* output) const { std::fill_n(output, units, u'x'); }
};

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

TEST(Delivery, AsksForTheSizeUpToTheLargestNumber) {
    struct Row {
        std::uint64_t units;
        std::int32_t size;
    };
    constexpr auto limit = static_cast<std::uint64_t>(kLargest);
    for (const Row& row :
         {Row{1, 2}, Row{limit - 2, kLargest - 1}, Row{limit - 1, kLargest}, Row{limit, 0},
          Row{limit + 1, 0}, Row{2 * limit + 1, 0}, Row{2 * limit + 2, 0}, Row{4 * limit + 8, 0}}) {
        // No script is longer than memory can be.
        const auto units = static_cast<std::size_t>(row.units);
        if (units == row.units) {
            EXPECT_EQ(deliver(ImaginaryScript{units}, nullptr, 0), row.size) << units;
        }
    }
}

TEST(Delivery, WritesNothingOfAScriptThatIsTooLong) {
    std::u16string buffer(4, u'#');
    for (const std::int32_t size : {0, 1, 4, kLargest}) {
        EXPECT_EQ(deliver(ImaginaryScript{kLongestScript + 1}, buffer.data(), size), 0);
    }
    EXPECT_EQ(buffer, u"####");
}

TEST(Delivery, WritesNoFurtherThanTheTerminator) {
    struct Row {
        std::int32_t size;
        std::int32_t result;
        std::u16string_view buffer;
    };
    using namespace std::string_view_literals;
    for (const Row& row :
         {Row{-1, 0, u"######"}, Row{0, 0, u"######"}, Row{1, 0, u"\0#####"sv},
          Row{3, 0, u"\0#####"sv}, Row{4, 3, u"xxx\0##"sv}, Row{6, 3, u"xxx\0##"sv}}) {
        std::u16string buffer(6, u'#');
        EXPECT_EQ(deliver(ImaginaryScript{3}, buffer.data(), row.size), row.result) << row.size;
        EXPECT_EQ(buffer, row.buffer) << row.size;
    }
}

} // namespace
} // namespace tvml
