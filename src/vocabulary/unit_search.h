// Searches for single units, several units a step: these see every unit of a
// script and of its output.
#ifndef TVML_VOCABULARY_UNIT_SEARCH_H
#define TVML_VOCABULARY_UNIT_SEARCH_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tvml {

namespace detail {

inline constexpr std::size_t kBlock = 32;
inline constexpr std::size_t kUnitsPerStep = sizeof(std::uint64_t) / sizeof(char16_t);

inline std::uint64_t loadUnits(const char16_t* units) {
    std::uint64_t step;
    std::memcpy(&step, units, sizeof step);
    return step;
}

// Each unit of a step.
inline constexpr std::uint64_t kEach = 0x0001000100010001u;

// The top bit of every unit of `step` that is zero, of the first such unit for
// certain: bits above it may be false.
inline std::uint64_t zeroUnits(std::uint64_t step) {
    return (step - kEach) & ~step & (kEach << 15);
}

// A loop that is not left early becomes vector code. `mask` picks the bits that
// are compared.
inline bool blockHolds(const char16_t* block, char16_t unit, char16_t mask = 0xFFFF) {
    char16_t found = 0; // as wide as the units, which keeps the vectors full
    for (std::size_t i = 0; i < kBlock; ++i) {
        found |= static_cast<char16_t>((block[i] & mask) == unit ? 0xFFFF : 0);
    }
    return found != 0;
}

// All units of a block, one over another.
inline std::uint64_t unitsSeenIn(const char16_t* block) {
    std::uint64_t seen = 0;
    for (std::size_t i = 0; i < kBlock; i += kUnitsPerStep) {
        seen |= loadUnits(block + i);
    }
    return seen;
}

// Without blocks, for a unit that is near.
inline std::size_t findUnitInSteps(std::u16string_view text, char16_t unit, std::size_t from) {
    static_assert(std::endian::native == std::endian::little,
                  "the lowest bits of a step are its first unit");
    const std::uint64_t wanted = kEach * unit;
    std::size_t at = from;
    for (; at + kUnitsPerStep <= text.size(); at += kUnitsPerStep) {
        const std::uint64_t hits = zeroUnits(loadUnits(text.data() + at) ^ wanted);
        if (hits != 0) {
            return at + static_cast<std::size_t>(std::countr_zero(hits)) / 16;
        }
    }
    for (; at < text.size(); ++at) {
        if (text[at] == unit) {
            return at;
        }
    }
    return std::u16string_view::npos;
}

} // namespace detail

// The position of the first `unit` in `text` at or after `from`, or npos.
inline std::size_t findUnit(std::u16string_view text, char16_t unit, std::size_t from = 0) {
    std::size_t at = from;
    while (at + detail::kBlock <= text.size() && !detail::blockHolds(text.data() + at, unit)) {
        at += detail::kBlock;
    }
    return detail::findUnitInSteps(text, unit, at);
}

// Units at the start of `text` among which there is no surrogate; there may be more.
inline std::size_t beforeSurrogates(std::u16string_view text) {
    std::size_t at = 0;
    while (at + detail::kBlock <= text.size() &&
           !detail::blockHolds(text.data() + at, 0xD800, 0xF800)) {
        at += detail::kBlock;
    }
    return at;
}

// The number of units before the first U+0000. Several comparisons a step; no
// unit behind the terminator is looked at, since its memory may end there.
inline std::size_t terminatedLength(const char16_t* text) {
    for (const char16_t* at = text;; at += 8) {
        for (std::size_t i = 0; i < 8; ++i) {
            if (at[i] == u'\0') {
                return static_cast<std::size_t>(at - text) + i;
            }
        }
    }
}

// The position of the first `pattern`, which is not empty, in `text` at or after
// `from`, or npos.
inline std::size_t findText(std::u16string_view text, std::u16string_view pattern,
                            std::size_t from = 0) {
    std::size_t at = findUnit(text, pattern.front(), from);
    while (at != std::u16string_view::npos && !text.substr(at).starts_with(pattern)) {
        at = findUnit(text, pattern.front(), at + 1);
    }
    return at;
}

// Every unit of `text` is below U+0080.
inline bool allAscii(std::u16string_view text) {
    using namespace detail;
    std::uint64_t seen = 0;
    if (text.size() >= kBlock) {
        for (std::size_t at = 0; at + kBlock < text.size(); at += kBlock) {
            seen |= unitsSeenIn(text.data() + at);
        }
        seen |= unitsSeenIn(text.data() + text.size() - kBlock); // again some of the one before
    } else {
        for (const char16_t unit : text) {
            seen |= unit;
        }
    }
    return (seen & (kEach * 0xFF80u)) == 0;
}

} // namespace tvml

#endif
