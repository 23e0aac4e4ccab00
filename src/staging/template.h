// One TVML template and the filling of its placeholders.
#ifndef TVML_STAGING_TEMPLATE_H
#define TVML_STAGING_TEMPLATE_H

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vocabulary/number_set.h"

namespace tvml {

// The name of a placeholder ("$1" to "$10", "$TITLE"). Only literals make one, so
// that two with the same address are the same.
class Placeholder {
public:
    template <std::size_t N>
    consteval Placeholder(const char16_t (&name)[N]) // NOLINT: it reads as its name
        : name_(name, N - 1) {}
    constexpr Placeholder() = default;

    constexpr operator std::u16string_view() const { return name_; } // NOLINT
    constexpr std::size_t size() const { return name_.size(); }
    constexpr const char16_t* address() const { return name_.data(); }

private:
    std::u16string_view name_;
};

// A placeholder and the value that takes its place.
struct Filling {
    Placeholder placeholder;
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
    // Throws std::length_error when the result would pass kFilledLimit units, or
    // when this template has lost more than kMostLostUnits.
    void fill(std::span<const Filling> fillings, std::u16string& out) const;

    // Filling in two steps, for a text that is wanted later. Only a template that
    // passes on no "$" but those of the values can wait. filledSize() and write()
    // are for the fillings that it was last asked for, with values without "$".
    using Values = std::span<const std::u16string_view>;
    bool leavesNoMarks(std::span<const Filling> fillings) const;
    std::size_t filledSize(std::span<const std::size_t> valueSizes) const;
    char16_t* write(Values values, char16_t* to) const; // returns the end

private:
    // The template cut at its placeholders: text_[literalStart, literalEnd), then
    // the value of a filling. The last piece has no filling.
    struct Piece {
        std::uint32_t literalStart;
        std::uint32_t literalEnd;
        std::uint32_t filling;
    };

    // What of a filling the pieces depend on.
    struct CompiledFilling {
        const char16_t* placeholder;
        bool firstOnly;
        std::uint32_t times; // that its value goes in
    };

    // Which pieces come to something: a filling's that is not empty and, in the
    // last set, all with text of their own. Kept where there are many that may
    // come to nothing: the pieces that are written are then looked up.
    using Telling = std::vector<NumberSet>;

    bool isCompiledFor(std::span<const Filling> fillings) const;
    void compile(std::span<const Filling> fillings) const;

    // The values are fillings, texts or only the sizes of texts.
    template <typename Value> std::size_t sizeWith(std::span<const Value> values) const;
    template <typename Value>
    char16_t* writeWith(std::span<const Value> values, char16_t* to) const;
    template <typename Value>
    char16_t* writeTelling(std::span<const Value> values, char16_t* to) const;
    template <typename Value>
    char16_t* writePiece(const Piece& piece, std::span<const Value> values, char16_t* to) const;
    template <typename Value>
    std::size_t nextTelling(std::span<const Value> values, std::size_t from) const;
    void indexPieces() const;

    std::u16string text_;

    // The pieces for the fillings that were asked for last; an element's
    // templates are always filled by the same ones.
    mutable std::vector<Piece> pieces_;
    mutable std::vector<CompiledFilling> compiledFor_;
    mutable Telling telling_;
    mutable std::size_t literalUnits_ = 0;
    mutable std::size_t lostUnits_ = 0; // on the long way, by values that are shorter
    mutable bool inOnePass_ = false;    // every "$" begins one of them, or never will
    mutable bool leavesMarks_ = false;  // not every "$" is filled
};

// No filled template is longer, whatever a description's values do to each
// other.
inline constexpr std::size_t kFilledLimit = std::size_t{1} << 28;

// What is written pays for the time it takes; placeholders that come to nothing
// write nothing. One pass skips them, replacing in sequence cannot: so many units
// may get lost by it, in all fillings of one template.
inline constexpr std::size_t kMostLostUnits = std::size_t{1} << 24;

// The templates of texts that stay where they are and as they are.
class TextTemplates {
public:
    const Template& of(const std::u16string& text) {
        return kept_.try_emplace(&text, text).first->second;
    }

private:
    std::map<const std::u16string*, Template> kept_;
};

// Fills a text that is not kept as a template.
void fillText(std::u16string& text, std::span<const Filling> fillings);

} // namespace tvml

#endif
