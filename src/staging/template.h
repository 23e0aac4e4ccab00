// One TVML template and the filling of its placeholders.
#ifndef TVML_STAGING_TEMPLATE_H
#define TVML_STAGING_TEMPLATE_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tvml {

// A placeholder ("$1" to "$10", "$TITLE") and the value that takes its place.
struct Filling {
    std::u16string_view placeholder;
    std::u16string_view value;
    bool firstOnly = false; // replaces only the first occurrence
};

class Template {
public:
    Template() = default;
    explicit Template(std::u16string text) : text_(std::move(text)) {}

    const std::u16string& text() const { return text_; }
    bool empty() const { return text_.empty(); }

    // Appends the filled template to `out`. The result is that of replacing one
    // placeholder after another, everywhere, in the order of `fillings`: a value
    // is searched for the placeholders that come after its own, not for its own.
    // Throws std::length_error when the result would pass kFilledLimit units.
    void fill(std::span<const Filling> fillings, std::u16string& out) const;

private:
    const std::vector<std::uint32_t>& marks() const;

    std::u16string text_;
    mutable std::vector<std::uint32_t> marks_; // positions of "$", found at the first filling
    mutable bool marked_ = false;
};

// No filled template is longer, whatever a description's values do to each
// other.
inline constexpr std::size_t kFilledLimit = std::size_t{1} << 28;

// Fills a text that is not kept as a template.
void fillText(std::u16string& text, std::span<const Filling> fillings);

} // namespace tvml

#endif
