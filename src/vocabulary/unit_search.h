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

} // namespace detail

// The position of the first `unit` in `text` at or after `from`, or npos.
inline std::size_t findUnit(std::u16string_view text, char16_t unit, std::size_t from = 0) {
    static_assert(std::endian::native == std::endian::little,
                  "the lowest bits of a step are its first unit");
    const std::uint64_t wanted = detail::kEach * unit;
    std::size_t at = from;
    // Blocks that are not left early become vector code.
    for (; at + detail::kBlock <= text.size(); at += detail::kBlock) {
        char16_t found = 0; // as wide as the units, which keeps the vectors full
        for (std::size_t i = 0; i < detail::kBlock; ++i) {
            found |= static_cast<char16_t>(text[at + i] == unit ? 0xFFFF : 0);
        }
        if (found != 0) {
            break;
        }
    }
    for (; at + detail::kUnitsPerStep <= text.size(); at += detail::kUnitsPerStep) {
        const std::uint64_t hits = detail::zeroUnits(detail::loadUnits(text.data() + at) ^ wanted);
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
    std::uint64_t seen = 0;
    std::size_t at = 0;
    for (; at + detail::kUnitsPerStep <= text.size(); at += detail::kUnitsPerStep) {
        seen |= detail::loadUnits(text.data() + at);
    }
    for (; at < text.size(); ++at) {
        seen |= text[at];
    }
    return (seen & (detail::kEach * 0xFF80u)) == 0;
}

} // namespace tvml

#endif
