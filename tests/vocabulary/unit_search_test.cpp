// Searches in blocks, against the same question asked unit by unit, with texts of
// every length and place in a block.
#include "vocabulary/unit_search.h"

#include <algorithm>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace tvml {
namespace {

constexpr std::size_t kMostUnits = 100;

TEST(UnitSearch, FindsTheFirstUnit) {
    for (std::size_t units = 0; units <= kMostUnits; ++units) {
        for (std::size_t at = 0; at < units; ++at) {
            std::u16string text(units, u'a');
            text[at] = u'.';
            text.back() = u'.';
            EXPECT_EQ(findUnit(text, u'.'), at);
            EXPECT_EQ(findUnit(text, u'.', at), at);
            EXPECT_EQ(findUnit(text, u'.', at + 1), text.find(u'.', at + 1));
        }
    }
}

TEST(UnitSearch, OneUnitBeyondAsciiIsSeenAnywhere) {
    for (std::size_t units = 1; units <= kMostUnits; ++units) {
        std::u16string text(units, u'\u007F');
        EXPECT_TRUE(allAscii(text)) << units;
        for (std::size_t at = 0; at < units; ++at) {
            for (const char16_t other : {u'\u0080', u'\u0100', u'\u8000'}) {
                text[at] = other;
                EXPECT_FALSE(allAscii(text)) << units << " " << at;
            }
            text[at] = u'a';
        }
    }
}

// In memory that ends with the text, wherever in a block it begins.
TEST(UnitSearch, LengthUpToTheTerminator) {
    for (std::size_t start = 0; start < 40; ++start) {
        for (std::size_t units = 0; units <= kMostUnits; ++units) {
            const auto memory = std::make_unique<char16_t[]>(start + units + 1);
            std::fill_n(memory.get(), start + units, u'\u0100');
            EXPECT_EQ(terminatedLength(memory.get() + start), units) << start;
        }
    }
}

} // namespace
} // namespace tvml
