// Patterns of TVML commands: words, blanks and punctuation, matched item by item.
#ifndef TVML_FILTER_TVML_PATTERNS_H
#define TVML_FILTER_TVML_PATTERNS_H

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "reading/script_text.h"
#include "vocabulary/keyword_table.h"
#include "vocabulary/unit_search.h"

namespace tvml {

inline constexpr std::u16string_view kDrawing = u"drawing"; // begins drawing commands

// The blanks that a pattern skips between its items.
enum class PatternBlanks : std::uint8_t {
    script,  // those of trimScriptText
    drawing, // the characters of `space_tab`
};

// A match in progress. It reads as the pattern is written:
//   PatternMatch(text, at, words).then(u"skipscript").then(u"(").then(u"switch")
// An item that does not fit ends the match; later items then change nothing.
class PatternMatch {
public:
    PatternMatch(std::u16string_view text, std::size_t at, const KeywordTable& words,
                 PatternBlanks blanks = PatternBlanks::script)
        : text_(text), at_(at), words_(words), blanks_(blanks) {}

    // The text goes on with `item`. Blanks behind it are skipped.
    PatternMatch& then(std::u16string_view item) {
        thenLast(item);
        if (matched_) {
            skipBlanks();
        }
        return *this;
    }

    // As then, but the match ends right behind the item.
    PatternMatch& thenLast(std::u16string_view item) {
        matched_ = matched_ && text_.substr(at_).starts_with(item);
        at_ += matched_ ? item.size() : 0;
        return *this;
    }

    // Any one unit.
    PatternMatch& thenUnit(char16_t& unit) {
        matched_ = matched_ && at_ < text_.size();
        if (matched_) {
            unit = text_[at_++];
            skipBlanks();
        }
        return *this;
    }

    // A value up to the next ")" that is "on" or "off" without its blanks. It is
    // looked at no further than such a value reaches.
    PatternMatch& thenSwitch(bool& on) {
        const std::u16string_view start = text_.substr(endOfValueBlanks(at_));
        on = start.starts_with(u"on");
        const std::u16string_view value = on ? u"on" : u"off";
        const std::size_t close = endOfValueBlanks(text_.size() - start.size() + value.size());
        // A last letter that is a blank is none of the value's.
        matched_ = matched_ && start.starts_with(value) && !words_.isBlank(value.back()) &&
                   text_.substr(close).starts_with(u')');
        at_ = matched_ ? close : at_;
        return then(u")");
    }

    explicit operator bool() const { return matched_; }

    // Where the match ends.
    std::size_t position() const { return at_; }
    std::u16string_view rest() const { return text_.substr(at_); }

private:
    void skipBlanks() {
        while (at_ < text_.size() && isBlank(text_[at_])) {
            ++at_;
        }
    }
    // A value ends at the first ")", even where that is a blank, and has no line
    // feed in it.
    std::size_t endOfValueBlanks(std::size_t at) const {
        while (at < text_.size() && text_[at] != u')' && text_[at] != u'\n' &&
               words_.isBlank(text_[at])) {
            ++at;
        }
        return std::min(at, text_.size());
    }
    bool isBlank(char16_t unit) const {
        return blanks_ == PatternBlanks::script ? words_.isBlank(unit)
                                                : words_[u"space_tab"].holds(unit);
    }

    std::u16string_view text_;
    std::size_t at_;
    const KeywordTable& words_;
    PatternBlanks blanks_;
    bool matched_ = true;
};

// `at` is the start of a line: position 0 or right behind a line feed.
constexpr bool startsLine(std::u16string_view text, std::size_t at) {
    return at == 0 || text[at - 1] == u'\n';
}

} // namespace tvml

#endif
