// What a writer may have meant: the names that are closest to a given text.
#ifndef TVML_DIAGNOSTICS_SUGGESTIONS_H
#define TVML_DIAGNOSTICS_SUGGESTIONS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tvml {

// The insertions, deletions, replacements and exchanges of neighbours that make
// `b` of `a`, or `limit` + 1 when it takes more than `limit`.
std::size_t editDistance(std::u16string_view a, std::u16string_view b, std::size_t limit);

// The text as names are compared: letters small, full-width and half-width forms
// as the usual ones, kana with their marks in one, hiragana as katakana.
std::u16string foldedText(std::u16string_view text);

// Whether the text is written in ASCII, so that its writer uses English names.
bool looksEnglish(std::u16string_view text);

// Collects the names closest to one text. Texts beyond kLongestGiven units have
// no close names, so that a line costs a bounded time.
class ClosestNames {
public:
    static constexpr std::size_t kLongestGiven = 48;

    explicit ClosestNames(std::u16string_view given);

    // Offers `name`; `shown` is what stands for it in the result.
    void offer(std::u16string_view name, std::u16string_view shown);
    void offer(std::u16string_view name) { offer(name, name); }

    // At most three, the closest first, in the order of offering among equals.
    std::vector<std::u16string> take();

    // How far the closest name is from the text; a large number without one.
    std::size_t distance() const;

private:
    struct Close {
        std::size_t distance;
        std::u16string shown;
    };
    std::u16string given_;
    std::vector<Close> names_;
};

// The changes that still make two names close: one in a short name, about a
// third of a long one.
std::size_t closeLimit(std::size_t units);

} // namespace tvml

#endif
