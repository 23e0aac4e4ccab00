// Filling of templates. Entries: Template::fill, fillText.
//
// The rule is sequential replacement. Nearly always that equals one pass that
// looks at each "$" of the template once: when no value brings in a "$" that a
// later placeholder could see, and no "$" of the template could begin another
// placeholder when its neighbour is filled. Everything else goes the long way.
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

// So many placeholders right behind each other are in no template but one that
// is made to fill nothing in again and again.
constexpr std::ptrdiff_t kManyBare = 64;

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

// Whether the "$" at the start of `text`, where the placeholder `own` stands or
// none, may begin another one when the next placeholder is filled.
bool canChange(std::u16string_view text, std::uint32_t own, std::span<const Filling> fillings) {
    const std::size_t next = findUnit(text, kMark, 1);
    if (next == std::u16string_view::npos) {
        return false;
    }
    const std::size_t filled = placeholderAt(text.substr(next), fillings);
    const std::size_t last = std::min<std::size_t>(own, fillings.size());
    const auto startsLike = [&](const Filling& other) {
        return std::u16string_view(other.placeholder).starts_with(text.substr(0, next));
    };
    return filled < last &&
           std::any_of(fillings.begin() + static_cast<std::ptrdiff_t>(filled) + 1,
                       fillings.begin() + static_cast<std::ptrdiff_t>(last), startsLike);
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
        const std::u16string_view rest = std::u16string_view(text_).substr(mark);
        const std::uint32_t filling = placeholderAt(rest, fillings);
        if (canChange(rest, filling, fillings)) {
            inOnePass_ = false;
            break;
        }
        if (filling == kNoFilling) {
            leavesMarks_ = true;
            continue;
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
    indexPieces();
}

void Template::indexPieces() const {
    telling_.clear();
    const auto bare = std::count_if(pieces_.begin(), pieces_.end(), [](const Piece& piece) {
        return piece.literalStart == piece.literalEnd;
    });
    if (bare < kManyBare) {
        return;
    }
    telling_.resize(compiledFor_.size() + 1);
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        const Piece& piece = pieces_[i];
        if (piece.literalStart != piece.literalEnd) {
            telling_.back().insert(i);
        } else if (piece.filling != kNoFilling) {
            telling_[piece.filling].insert(i);
        }
    }
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
inline char16_t* Template::writePiece(const Piece& piece, std::span<const Value> values,
                                      char16_t* to) const {
    to = copyUnits({text_.data() + piece.literalStart, piece.literalEnd - piece.literalStart}, to);
    return piece.filling != kNoFilling ? copyValue(valueOf(values[piece.filling]), to) : to;
}

template <typename Value>
char16_t* Template::writeWith(std::span<const Value> values, char16_t* to) const {
    if (!telling_.empty()) {
        return writeTelling(values, to);
    }
    for (const Piece& piece : pieces_) {
        to = writePiece(piece, values, to);
    }
    return to;
}

template <typename Value>
[[gnu::noinline]] char16_t* Template::writeTelling(std::span<const Value> values,
                                                   char16_t* to) const {
    for (std::size_t at = nextTelling(values, 0); at != kNone; at = nextTelling(values, at + 1)) {
        to = writePiece(pieces_[at], values, to);
    }
    return to;
}

// The first piece at or after `from` that writes something, or kNone.
template <typename Value>
std::size_t Template::nextTelling(std::span<const Value> values, std::size_t from) const {
    std::size_t next = telling_.back().firstFrom(from);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!valueOf(values[i]).empty()) {
            next = std::min(next, telling_[i].firstFrom(from)); // kNone is the largest number
        }
    }
    return next;
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
    lostUnits_ += text_.size() - std::min(text_.size(), text.size());
    if (lostUnits_ > kMostLostUnits) {
        throw std::length_error("a template is filled with nothing too often");
    }
    out += text;
}

void fillText(std::u16string& text, std::span<const Filling> fillings) {
    for (const Filling& filling : fillings) {
        replaceOne(text, filling);
    }
}

} // namespace tvml
