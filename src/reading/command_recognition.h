// Recognition of command phrases: words of the vocabulary become canonical
// English names, adverbs become values, numbers become ASCII.
#ifndef TVML_READING_COMMAND_RECOGNITION_H
#define TVML_READING_COMMAND_RECOGNITION_H

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "reading/command_spec.h"
#include "reading/line_kind.h"
#include "vocabulary/keyword_table.h"

namespace tvml {

// What recognizeCommand did.
struct Recognition {
    enum class Outcome : std::uint8_t {
        unchanged, // no row and no pose; the phrase may be English already
        row,       // rewritten by `row`
        pose,      // rewritten by a pose name
        noLetter,  // `row` matched, but what stands before its word is no letter
        noNumber,  // `row` matched, but what stands before its word is no number
    };
    Outcome outcome = Outcome::unchanged;
    const CommandSpec* row = nullptr;
    const RowWord* word = nullptr;
    std::size_t position = 0; // of the word in the phrase as it was
    std::size_t replaced = 0; // units at the start of the phrase, by
    std::size_t inserted = 0; // so many
};

// Some rows of the table, in its order.
class RowSet {
public:
    static constexpr std::size_t kRows = kCommands.size();

    constexpr void insert(std::size_t row) {
        bits_[row / kBits] |= std::uint64_t{1} << row % kBits;
    }
    constexpr RowSet& operator|=(const RowSet& other) {
        for (std::size_t i = 0; i < bits_.size(); ++i) {
            bits_[i] |= other.bits_[i];
        }
        return *this;
    }

    // The first row at or after `from`, or kRows.
    constexpr std::size_t next(std::size_t from) const {
        for (std::size_t i = from / kBits; i < bits_.size(); ++i, from = 0) {
            const std::uint64_t left = bits_[i] >> from % kBits;
            if (left != 0) {
                return i * kBits + from % kBits + static_cast<std::size_t>(std::countr_zero(left));
            }
        }
        return kRows;
    }

private:
    static constexpr std::size_t kBits = 64;
    std::array<std::uint64_t, (kRows + kBits - 1) / kBits> bits_{};
};

// The rows that a head can match, by the units that it begins with. The table of
// rows stays the one truth: this only leaves out rows that cannot match. Made
// anew when the words change.
class CommandIndex {
public:
    explicit CommandIndex(const KeywordTable& words);

    RowSet candidates(std::u16string_view head) const;

private:
    static std::size_t bucketOf(char16_t unit) { return (unit ^ (unit >> 6)) & 0x3Fu; }
    using Buckets = std::array<RowSet, 64>;

    std::array<Buckets, 3> byUnitAt_{}; // of words that stand at position 0, 1 or 2
    RowSet anyHead_;                    // rows that must look at every head
};

// Rewrites the command word at the start of `phrase`, which has no leading
// blanks, into its canonical name. `poseNames`: Japanese -> English names.
Recognition recognizeCommand(std::u16string& phrase, const KeywordTable& words,
                             const TextMap& poseNames, const CommandIndex& index);

// An adverb and the item of a list that says it.
struct ReadAdverb {
    const AdverbRow* row;
    std::u16string_view item;
};

// Reads a list of adverbs. False when the list is empty (`values` stays as it
// was) or when an item is no adverb (`values` holds what came before it;
// `rejected`, when given, receives the item as a part of `list`). `items`, when
// given, receives the adverbs.
bool parseAdverbs(std::u16string_view list, const KeywordTable& words, AdverbValues& values,
                  std::u16string_view* rejected = nullptr,
                  std::vector<ReadAdverb>* items = nullptr);

// The adverb that `item` is, in vocabulary or English form, or null.
const AdverbRow* findAdverb(std::u16string_view item, const KeywordTable& words);

// Rewrites an adverb from its vocabulary word to its English form.
void translateAdverb(std::u16string& item, const KeywordTable& words);

// The number in ASCII ("-", digits, at most one "."), or empty.
std::u16string parseNumber(std::u16string_view text, const KeywordTable& words);

} // namespace tvml

#endif
