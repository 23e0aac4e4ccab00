// The lines of a script, one after another. Every unit is looked at once, for line
// ends and for what makes a line cost more to convert.
#ifndef TVML_READING_SCRIPT_LINES_H
#define TVML_READING_SCRIPT_LINES_H

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tvml {

class ScriptLines {
public:
    // The script ends at its first U+0000.
    explicit ScriptLines(std::u16string_view script) : script_(script) {}

    // Goes to the next line; false when there is none. Behind the last line feed is
    // a line only when it is not empty.
    bool next() {
        if (start_ >= script_.size()) {
            return false;
        }
        plain_ = blockIsPlain_;
        while (ends_ == 0) {
            lookAtNextBlock();
            plain_ = plain_ && blockIsPlain_;
        }
        const std::size_t end =
            blockEnd_ - kBlock + static_cast<std::size_t>(std::countr_zero(ends_));
        ends_ &= ends_ - 1;
        if (end >= script_.size() || script_[end] == u'\0') {
            script_ = script_.substr(0, end);
        }
        line_ = script_.substr(start_, end - start_);
        const bool isLine = start_ < script_.size();
        start_ = end + 1;
        return isLine;
    }

    // The line, without its line feed.
    std::u16string_view line() const { return line_; }

    // The line holds no double quotes and no "$", for certain; another line may yet
    // hold none of them.
    bool isPlain() const { return plain_; }

private:
    static constexpr std::size_t kBlock = 64;
    using Block = std::array<char16_t, kBlock>;

    // Behind the script come zeros, the first of which is its end.
    void lookAtNextBlock() {
        const std::size_t left = script_.size() - blockEnd_;
        const char16_t* units = script_.data() + blockEnd_;
        blockEnd_ += kBlock;
        if (left >= kBlock) {
            return lookAt(units);
        }
        Block padded{};
        std::memcpy(padded.data(), units, left * sizeof(char16_t));
        lookAt(padded.data());
    }

    // Loops without a way out in the middle, which compilers turn into vector code.
    void lookAt(const char16_t* block) {
        std::array<std::uint8_t, kBlock> isEnd;
        for (std::size_t i = 0; i < kBlock; ++i) {
            isEnd[i] = block[i] == u'\n' || block[i] == u'\0' ? 1 : 0;
        }
        std::uint16_t marks = 0;
        for (std::size_t i = 0; i < kBlock; ++i) {
            marks |= static_cast<std::uint16_t>(block[i] == u'"' || block[i] == u'$' ? 0xFFFF : 0);
        }
        blockIsPlain_ = marks == 0;
        for (std::size_t i = kBlock; i > 0; i -= 8) {
            ends_ = ends_ << 8 | bitsOf(isEnd.data() + i - 8);
        }
    }

    // The lowest bits of eight bytes, the first byte's lowest: the product brings
    // each to a place of its own in the highest byte.
    static std::uint64_t bitsOf(const std::uint8_t* bytes) {
        static_assert(std::endian::native == std::endian::little, "the first byte is the lowest");
        std::uint64_t eight;
        std::memcpy(&eight, bytes, sizeof eight);
        return (eight * 0x0102040810204080u) >> 56;
    }

    std::u16string_view script_;
    std::u16string_view line_;
    std::size_t start_ = 0;    // of the next line
    std::size_t blockEnd_ = 0; // of the units that were looked at
    std::uint64_t ends_ = 0;   // of lines, in the block, that are still to come
    bool blockIsPlain_ = true;
    bool plain_ = true;
};

} // namespace tvml

#endif
