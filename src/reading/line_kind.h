// What kind of line a script line is.
#ifndef TVML_READING_LINE_KIND_H
#define TVML_READING_LINE_KIND_H

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

// Names of which a line may begin with any, in ascending order.
class LeadingNames {
public:
    using Entry = TextMap::value_type;

    LeadingNames() = default;
    LeadingNames(std::initializer_list<Entry> names) {
        for (const Entry& name : names) {
            try_emplace(name.first, name.second);
        }
    }
    LeadingNames(LeadingNames&&) = default;
    LeadingNames& operator=(LeadingNames&&) = default;

    const TextMap& all() const { return names_; }
    bool empty() const { return names_.empty(); }
    TextMap::const_iterator find(std::u16string_view name) const { return names_.find(name); }
    std::pair<TextMap::iterator, bool> try_emplace(std::u16string name, std::u16string_view text) {
        sorted_.clear();
        firstUnits_.set(name.empty() ? kNoUnit : bitOf(name.front()));
        return names_.try_emplace(std::move(name), text);
    }
    void erase(TextMap::const_iterator name) {
        sorted_.clear();
        names_.erase(name);
    }

    // Calls `visit(entry)` for each name that starts `text`, in ascending order,
    // until it returns true. Takes a step a unit of the text at most, however many
    // names there are and however they begin.
    template <typename Visit> bool visitStarting(std::u16string_view text, Visit visit) const;

private:
    using Sorted = std::vector<const Entry*>;
    static constexpr std::size_t kNoUnit = 256;
    static std::size_t bitOf(char16_t unit) { return unit % kNoUnit; }
    bool mayStart(std::u16string_view text) const {
        return firstUnits_[kNoUnit] || (!text.empty() && firstUnits_[bitOf(text.front())]);
    }
    static bool hasUnit(const Entry& entry, std::size_t at, char16_t unit) {
        return at < entry.first.size() && entry.first[at] == unit;
    }
    const Sorted& sorted() const;

    TextMap names_;
    std::bitset<kNoUnit + 1> firstUnits_; // of names, some of them alike; the last for an empty one
    mutable Sorted sorted_;               // made when it is asked for
};

template <typename Visit>
bool LeadingNames::visitStarting(std::u16string_view text, Visit visit) const {
    if (!mayStart(text)) { // as nearly every line
        return false;
    }
    // The names from `first` up to `last` begin with the first `shared` units.
    auto first = sorted().begin();
    auto last = sorted().end();
    for (std::size_t shared = 0; first != last; ++shared) {
        if ((*first)->first.size() == shared) {
            if (visit(**first)) {
                return true;
            }
            ++first;
        }
        if (shared == text.size()) {
            return false;
        }
        const char16_t unit = text[shared];
        if (first != last &&
            !(hasUnit(**first, shared, unit) && hasUnit(**(last - 1), shared, unit))) {
            first = std::partition_point(
                first, last, [&](const Entry* entry) { return entry->first[shared] < unit; });
            last = std::partition_point(
                first, last, [&](const Entry* entry) { return entry->first[shared] == unit; });
        }
    }
    return false;
}

// The tags that the filter description declares.
struct DeclaredTags {
    LeadingNames tagNames; // Japanese name -> English name
    LeadingNames tagTexts; // English name -> TVML text
};

// Whether a colon comes behind the first units of a trimmed line, blanks aside.
// Asked for more and more units, it looks at each blank once.
class ColonBehind {
public:
    ColonBehind(std::u16string_view line, const KeywordTable& words) : line_(line), words_(words) {}

    bool operator()(std::size_t units);

    // The line from that colon on, after it was found.
    std::u16string_view colon() const { return line_.substr(at_); }

private:
    const std::u16string_view line_;
    const KeywordTable& words_;
    std::size_t at_ = 0; // behind the blanks
};

// Trims `line` in place and tells its kind. `markers` must be of these words.
LineKind classifyLine(std::u16string_view& line, const DeclaredTags& tags,
                      const KeywordTable& words, const MarkerIndex& markers);

} // namespace tvml

#endif
