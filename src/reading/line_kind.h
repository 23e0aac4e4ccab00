// What kind of line a script line is.
#ifndef TVML_READING_LINE_KIND_H
#define TVML_READING_LINE_KIND_H

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "reading/marker_spec.h"
#include "vocabulary/keyword_table.h"

namespace tvml {

enum class LineKind : std::uint8_t { empty, tag, character, other };

// The text of a kind: "", "tag", "character" or "other".
std::u16string_view lineKindText(LineKind kind);

// The markers that a line can start with, by its first two units: most lines start
// with none and are spared the comparisons. Made anew when the words change.
class MarkerIndex {
public:
    using Markers = std::uint16_t; // one bit a Marker

    explicit MarkerIndex(const KeywordTable& words);

    Markers candidates(std::u16string_view line) const {
        if (line.size() < 2) {
            return line.empty() ? anyLine_ : byFirstUnit_[bucketOf(line[0])];
        }
        return byFirstUnit_[bucketOf(line[0])] & bySecondUnit_[bucketOf(line[1])];
    }

private:
    static constexpr std::size_t kBuckets = 256;
    static std::size_t bucketOf(char16_t unit) { return (unit ^ (unit >> 8)) % kBuckets; }

    std::array<Markers, kBuckets> byFirstUnit_{};
    std::array<Markers, kBuckets> bySecondUnit_{};
    Markers anyLine_ = 0; // markers with an empty spelling
};

// The marker's spelling that `line` starts with, or null: the first one in their
// order.
const MarkerSpelling* markerSpelling(Marker marker, std::u16string_view line,
                                     const KeywordTable& words);

// An ordered map with text keys that can be searched with views.
using TextMap = std::map<std::u16string, std::u16string, std::less<>>;

// The tags that the filter description declares.
struct DeclaredTags {
    TextMap tagNames; // Japanese name -> English name
    TextMap tagTexts; // English name -> TVML text
};

// Calls `visit(entry)` for each entry of `names` whose key starts `text`, in
// ascending order of the keys, until it returns true. Costs a few look-ups per
// unit of the longest key that fits, however many keys there are.
template <typename Visit>
bool visitNamesStarting(const TextMap& names, std::u16string_view text, Visit visit) {
    auto entry = names.begin();
    while (entry != names.end()) {
        const std::u16string_view key = entry->first;
        if (text.starts_with(key)) {
            if (visit(*entry)) {
                return true;
            }
            ++entry;
            continue;
        }
        // Every key between this one and the part of the text that it shares,
        // made one unit longer, starts nothing either.
        std::size_t shared = 0;
        while (shared < key.size() && shared < text.size() && key[shared] == text[shared]) {
            ++shared;
        }
        if (shared == text.size() || (shared < key.size() && key[shared] > text[shared])) {
            return false;
        }
        entry = names.lower_bound(text.substr(0, shared + 1));
    }
    return false;
}

// Trims `line` in place and tells its kind. `markers` must be of these words.
LineKind classifyLine(std::u16string_view& line, const DeclaredTags& tags,
                      const KeywordTable& words, const MarkerIndex& markers);

} // namespace tvml

#endif
