// Filling of templates. Entries: Template::fill, fillText.
//
// The rule is sequential replacement. Nearly always that equals one pass that
// looks at each "$" of the template once: when no value brings in a "$" that a
// later placeholder could see, and every "$" of the template begins one of the
// placeholders. Everything else goes the long way.
#include "staging/template.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

constexpr char16_t kMark = u'$';
constexpr std::uint32_t kNoFilling = 0xFFFFFFFFu;

bool holdsMark(std::u16string_view value) {
    return findUnit(value, kMark) != std::u16string_view::npos;
}

bool valuesHoldNoMark(std::span<const Filling> fillings) {
    // The value that goes in last is never searched.
    const auto searched = fillings.first(fillings.empty() ? 0 : fillings.size() - 1);
    return std::none_of(searched.begin(), searched.end(), [](const Filling& filling) {
        return filling.firstOnly || holdsMark(filling.value);
    });
}

// The first placeholder, in the order of filling, that stands at the start of
// `text`.
std::uint32_t placeholderAt(std::u16string_view text, std::span<const Filling> fillings) {
    for (std::uint32_t i = 0; i < fillings.size(); ++i) {
        if (text.starts_with(std::u16string_view(fillings[i].placeholder))) {
            return i;
        }
    }
    return kNoFilling;
}

std::size_t countOf(std::u16string_view text, std::u16string_view pattern) {
    std::size_t count = 0;
    for (std::size_t found = findText(text, pattern); found != std::u16string_view::npos;
         found = findText(text, pattern, found + pattern.size())) {
        ++count;
    }
    return count;
}

void replaceOne(std::u16string& text, const Filling& filling) {
    const std::u16string_view placeholder = filling.placeholder;
    const std::size_t occurrences = countOf(text, placeholder);
    const std::size_t count =
        filling.firstOnly ? std::min<std::size_t>(1, occurrences) : occurrences;
    if (count == 0) {
        return;
    }
    if (filling.value.size() > kFilledLimit / count ||
        text.size() + count * filling.value.size() > kFilledLimit) {
        throw std::length_error("a filled template is too long");
    }
    std::u16string result;
    result.reserve(text.size() - count * placeholder.size() + count * filling.value.size());
    std::size_t copied = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t found = findText(text, placeholder, copied);
        result.append(text, copied, found - copied).append(filling.value);
        copied = found + placeholder.size();
    }
    result.append(text, copied);
    text = std::move(result);
}

std::u16string_view valueOf(const Filling& filling) {
    return filling.value;
}
std::u16string_view valueOf(std::u16string_view value) {
    return value;
}

std::size_t sizeOf(const Filling& filling) {
    return filling.value.size();
}
std::size_t sizeOf(std::size_t size) {
    return size;
}

char16_t* copyUnits(std::u16string_view units, char16_t* to) {
    std::memcpy(to, units.data(), units.size() * sizeof(char16_t));
    return to + units.size();
}

// A call costs more than most values, which are a few units long.
char16_t* copyValue(std::u16string_view value, char16_t* to) {
    constexpr std::size_t kFew = 8;
    if (value.size() > kFew) {
        return copyUnits(value, to);
    }
    for (std::size_t i = 0; i < value.size(); ++i) {
        to[i] = value[i];
    }
    return to + value.size();
}

} // namespace

bool Template::isCompiledFor(std::span<const Filling> fillings) const {
    return !pieces_.empty() &&
           std::equal(compiledFor_.begin(), compiledFor_.end(), fillings.begin(), fillings.end(),
                      [](const CompiledFilling& compiled, const Filling& filling) {
                          return compiled.placeholder == filling.placeholder.address() &&
                                 compiled.firstOnly == filling.firstOnly;
                      });
}

void Template::compile(std::span<const Filling> fillings) const {
    pieces_.clear();
    compiledFor_.clear();
    literalUnits_ = text_.size();
    inOnePass_ = true;
    leavesMarks_ = false;
    for (const Filling& filling : fillings) {
        compiledFor_.push_back({filling.placeholder.address(), filling.firstOnly, 0});
    }
    std::uint32_t copied = 0;
    bool firstDone = false;
    for (std::size_t mark = findUnit(text_, kMark); mark != std::u16string::npos;
         mark = findUnit(text_, kMark, mark + 1)) {
        const std::uint32_t filling =
            placeholderAt(std::u16string_view(text_).substr(mark), fillings);
        if (filling == kNoFilling) {
            inOnePass_ = false;
            break;
        }
        if (fillings[filling].firstOnly && std::exchange(firstDone, true)) {
            leavesMarks_ = true;
            continue; // a further one stays as it is
        }
        pieces_.push_back({copied, static_cast<std::uint32_t>(mark), filling});
        ++compiledFor_[filling].times;
        literalUnits_ -= fillings[filling].placeholder.size();
        copied = static_cast<std::uint32_t>(mark + fillings[filling].placeholder.size());
    }
    pieces_.push_back({copied, static_cast<std::uint32_t>(text_.size()), kNoFilling});
}

template <typename Value> std::size_t Template::sizeWith(std::span<const Value> values) const {
    std::uint64_t size = literalUnits_;
    for (std::size_t i = 0; i < values.size(); ++i) {
        size += std::uint64_t{compiledFor_[i].times} * sizeOf(values[i]);
    }
    if (size > kFilledLimit) {
        throw std::length_error("a filled template is too long");
    }
    return static_cast<std::size_t>(size);
}

template <typename Value>
char16_t* Template::writeWith(std::span<const Value> values, char16_t* to) const {
    for (const Piece& piece : pieces_) {
        to = copyUnits({text_.data() + piece.literalStart, piece.literalEnd - piece.literalStart},
                       to);
        if (piece.filling != kNoFilling) {
            to = copyValue(valueOf(values[piece.filling]), to);
        }
    }
    return to;
}

std::size_t Template::filledSize(std::span<const std::size_t> valueSizes) const {
    return sizeWith(valueSizes);
}

char16_t* Template::write(Values values, char16_t* to) const {
    return writeWith(values, to);
}

bool Template::leavesNoMarks(std::span<const Filling> fillings) const {
    if (!isCompiledFor(fillings)) {
        compile(fillings);
    }
    return inOnePass_ && !leavesMarks_;
}

void Template::fill(std::span<const Filling> fillings, std::u16string& out) const {
    if (!isCompiledFor(fillings)) {
        compile(fillings);
    }
    if (inOnePass_ && valuesHoldNoMark(fillings)) {
        const std::size_t start = out.size();
        out.resize(start + sizeWith(fillings));
        writeWith(fillings, out.data() + start);
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
