// Filling of templates. Entries: Template::fill, fillText.
//
// The rule is sequential replacement. Nearly always that equals one pass that
// looks at each "$" of the template once: when no value brings in a "$" that a
// later placeholder could see, and every "$" of the template begins one of the
// placeholders. Everything else goes the long way.
#include "staging/template.h"

#include <algorithm>
#include <stdexcept>

namespace tvml {
namespace {

constexpr char16_t kMark = u'$';

bool valuesHoldNoMark(std::span<const Filling> fillings) {
    // The value that goes in last is never searched.
    const auto searched = fillings.first(fillings.empty() ? 0 : fillings.size() - 1);
    return std::none_of(searched.begin(), searched.end(), [](const Filling& filling) {
        return filling.firstOnly || filling.value.find(kMark) != std::u16string_view::npos;
    });
}

// The first placeholder, in the order of filling, that stands at the start of
// `text`.
const Filling* placeholderAt(std::u16string_view text, std::span<const Filling> fillings) {
    for (const Filling& filling : fillings) {
        if (text.starts_with(filling.placeholder)) {
            return &filling;
        }
    }
    return nullptr;
}

bool fillInOnePass(std::u16string_view text, std::span<const std::uint32_t> marks,
                   std::span<const Filling> fillings, std::u16string& out) {
    const std::size_t start = out.size();
    std::size_t copied = 0;
    bool firstDone = false;
    for (const std::uint32_t mark : marks) {
        const Filling* filling = placeholderAt(text.substr(mark), fillings);
        if (filling == nullptr) {
            out.resize(start);
            return false;
        }
        if (filling->firstOnly && firstDone) {
            continue;
        }
        firstDone = firstDone || filling->firstOnly;
        out.append(text, copied, mark - copied).append(filling->value);
        copied = mark + filling->placeholder.size();
    }
    out.append(text, copied);
    return true;
}

std::size_t countOf(std::u16string_view text, std::u16string_view pattern) {
    std::size_t count = 0;
    for (std::size_t found = text.find(pattern); found != std::u16string_view::npos;
         found = text.find(pattern, found + pattern.size())) {
        ++count;
    }
    return count;
}

void replaceOne(std::u16string& text, const Filling& filling) {
    const std::size_t count = filling.firstOnly
                                  ? std::min<std::size_t>(1, countOf(text, filling.placeholder))
                                  : countOf(text, filling.placeholder);
    if (count == 0) {
        return;
    }
    if (filling.value.size() > kFilledLimit / count ||
        text.size() + count * filling.value.size() > kFilledLimit) {
        throw std::length_error("a filled template is too long");
    }
    std::u16string result;
    result.reserve(text.size() - count * filling.placeholder.size() + count * filling.value.size());
    std::size_t copied = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t found = text.find(filling.placeholder, copied);
        result.append(text, copied, found - copied).append(filling.value);
        copied = found + filling.placeholder.size();
    }
    result.append(text, copied);
    text = std::move(result);
}

} // namespace

const std::vector<std::uint32_t>& Template::marks() const {
    if (!marked_) {
        for (std::size_t found = text_.find(kMark); found != std::u16string::npos;
             found = text_.find(kMark, found + 1)) {
            marks_.push_back(static_cast<std::uint32_t>(found));
        }
        marked_ = true;
    }
    return marks_;
}

void Template::fill(std::span<const Filling> fillings, std::u16string& out) const {
    if (valuesHoldNoMark(fillings) && fillInOnePass(text_, marks(), fillings, out)) {
        return;
    }
    std::u16string text = text_;
    fillText(text, fillings);
    out += text;
}

void fillText(std::u16string& text, std::span<const Filling> fillings) {
    for (const Filling& filling : fillings) {
        replaceOne(text, filling);
    }
}

} // namespace tvml
