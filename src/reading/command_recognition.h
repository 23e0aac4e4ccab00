// Recognition of command phrases: words of the vocabulary become canonical
// English names, adverbs become values, numbers become ASCII.
#ifndef TVML_READING_COMMAND_RECOGNITION_H
#define TVML_READING_COMMAND_RECOGNITION_H

#include <array>
#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>

#include "reading/command_tables.h"
#include "reading/line_kind.h"
#include "vocabulary/keyword_table.h"

namespace tvml {

// What recognizeCommand did, for those who explain it.
struct Recognition {
    enum class Outcome : std::uint8_t {
        unchanged, // no row and no pose; the phrase may be English already
        row,       // rewritten by `row`
        pose,      // rewritten by a pose name
        noLetter,  // `row` matched, but what stands before its word is no letter
        noNumber,  // `row` matched, but what stands before its word is no number
    };
    Outcome outcome = Outcome::unchanged;
    const CommandRow* row = nullptr;
    const RowWord* word = nullptr;
};

// The rows that a head can match, by the units that it begins with. The table of
// rows stays the one truth: this only leaves out rows that cannot match. Made
// anew when the words change.
class CommandIndex {
public:
    using Rows = std::bitset<kCommandRows.size()>;

    explicit CommandIndex(const KeywordTable& words);

    Rows candidates(std::u16string_view head) const;

private:
    static std::size_t bucketOf(char16_t unit) { return (unit ^ (unit >> 6)) & 0x3Fu; }
    using Buckets = std::array<Rows, 64>;

    std::array<Buckets, 3> byUnitAt_{}; // of words that stand at position 0, 1 or 2
    Rows anyHead_;                      // rows that must look at every head
};

// Rewrites the command word at the start of `phrase`, which has no leading
// blanks, into its canonical name. `poseNames`: Japanese -> English names.
Recognition recognizeCommand(std::u16string& phrase, const KeywordTable& words,
                             const TextMap& poseNames, const CommandIndex& index);

// Reads a list of adverbs. False when the list is empty (`values` stays as it
// was) or when an item is no adverb (`values` holds what came before it;
// `rejected`, when given, receives the item as a part of `list`).
bool parseAdverbs(std::u16string_view list, const KeywordTable& words, AdverbValues& values,
                  std::u16string_view* rejected = nullptr);

// The adverb that `item` is, in vocabulary or English form, or null.
const AdverbRow* findAdverb(std::u16string_view item, const KeywordTable& words);

// Rewrites an adverb from its vocabulary word to its English form.
void translateAdverb(std::u16string& item, const KeywordTable& words);

// The number in ASCII ("-", digits, at most one "."), or empty.
std::u16string parseNumber(std::u16string_view text, const KeywordTable& words);

} // namespace tvml

#endif
