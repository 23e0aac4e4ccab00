// A set of numbers, most of them close to each other.
#ifndef TVML_VOCABULARY_NUMBER_SET_H
#define TVML_VOCABULARY_NUMBER_SET_H

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "vocabulary/word.h"

namespace tvml {

// A bit for each number, and above it bits that tell which words of bits are not
// zero: a step takes a look at a few words, however many numbers lie between.
class NumberSet {
public:
    void insert(std::size_t number) {
        for (std::vector<std::uint64_t>& level : levels_) {
            const std::size_t word = number / kBits;
            if (level.size() <= word) {
                level.resize(word + 1);
            }
            const bool known = level[word] != 0;
            level[word] |= bit(number);
            if (known) {
                return;
            }
            number = word;
        }
    }

    void erase(std::size_t number) {
        for (std::vector<std::uint64_t>& level : levels_) {
            const std::size_t word = number / kBits;
            if (level.size() <= word) {
                return;
            }
            level[word] &= ~bit(number);
            if (level[word] != 0) {
                return;
            }
            number = word;
        }
    }

    // The first number at or after `from`, or kNone.
    std::size_t firstFrom(std::size_t from) const {
        for (std::size_t level = 0; level < levels_.size(); ++level) {
            const std::size_t word = from / kBits;
            if (word >= levels_[level].size()) {
                return kNone;
            }
            const std::uint64_t bits = levels_[level][word] >> from % kBits;
            if (bits != 0) {
                std::size_t found = from + static_cast<std::size_t>(std::countr_zero(bits));
                while (level > 0) {
                    const std::uint64_t below = levels_[--level][found];
                    found = found * kBits + static_cast<std::size_t>(std::countr_zero(below));
                }
                return found;
            }
            from = word + 1;
        }
        return kNone;
    }

    // The last number, or kNone.
    std::size_t last() const {
        std::size_t found = 0;
        for (std::size_t level = levels_.size(); level > 0; --level) {
            const std::vector<std::uint64_t>& words = levels_[level - 1];
            if (found >= words.size() || words[found] == 0) {
                return kNone;
            }
            found = found * kBits + kBits - 1 -
                    static_cast<std::size_t>(std::countl_zero(words[found]));
        }
        return found;
    }

private:
    static constexpr std::size_t kBits = 64;
    static constexpr std::uint64_t bit(std::size_t number) {
        return std::uint64_t{1} << number % kBits;
    }

    std::array<std::vector<std::uint64_t>, 6> levels_; // the last one of one word
};

} // namespace tvml

#endif
