#include "vocabulary/number_set.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace tvml {
namespace {

// Random changes of sparse and of crowded sets, against the library's set.
TEST(NumberSet, HoldsWhatWasPutIn) {
    std::mt19937 random(5);
    for (const std::size_t range : {1U, 70U, 5'000U, 300'000U, 20'000'000U}) {
        NumberSet numbers;
        std::set<std::size_t> expected;
        EXPECT_EQ(numbers.last(), kNone);
        EXPECT_EQ(numbers.firstFrom(0), kNone);
        for (int step = 0; step < 3000; ++step) {
            const std::size_t number = random() % range;
            if (random() % 3 != 0) {
                numbers.insert(number);
                expected.insert(number);
            } else {
                const auto known = expected.lower_bound(number);
                const std::size_t gone =
                    known == expected.end() || random() % 4 == 0 ? number : *known;
                numbers.erase(gone);
                expected.erase(gone);
            }
            const std::size_t from = random() % (range + 100);
            const auto next = expected.lower_bound(from);
            ASSERT_EQ(numbers.firstFrom(from), next == expected.end() ? kNone : *next);
            ASSERT_EQ(numbers.last(), expected.empty() ? kNone : *expected.rbegin());
        }
        while (!expected.empty()) {
            numbers.erase(*expected.begin());
            expected.erase(expected.begin());
            ASSERT_EQ(numbers.firstFrom(0), expected.empty() ? kNone : *expected.begin());
        }
        EXPECT_EQ(numbers.last(), kNone);
    }
}

} // namespace
} // namespace tvml
