// One word of the vocabulary.
//
// A word is in one of three states, and the queries keep them apart so that a
// reader of the script cannot mistake one for another:
//  - never loaded: it equals nothing, starts nothing, occurs nowhere, has no
//    characters and no first unit;
//  - empty: it equals only the empty text and occurs at position 0 of every
//    text, but has no characters and no first unit;
//  - a text.
#ifndef TVML_VOCABULARY_WORD_H
#define TVML_VOCABULARY_WORD_H

#include <cstddef>
#include <string>
#include <string_view>

namespace tvml {

inline constexpr std::size_t kNone = std::u16string_view::npos;

class Word {
public:
    bool loaded() const { return loaded_; }

    // False for words in which a search could not advance.
    bool hasUnits() const { return !text_.empty(); }

    std::size_t size() const { return text_.size(); }

    // The text to write or to show; empty for a word that was never loaded.
    std::u16string_view textOrEmpty() const { return text_; }

    bool equals(std::u16string_view text) const { return loaded_ && text == text_; }

    // `text` starts with the word.
    bool starts(std::u16string_view text) const {
        // Nearly every word fails at its first unit.
        return text_.empty()
                   ? loaded_
                   : !text.empty() && text.front() == text_.front() && text.starts_with(text_);
    }

    // Position of the first occurrence at or after `from`, or kNone.
    std::size_t findIn(std::u16string_view text, std::size_t from = 0) const {
        return loaded_ ? text.find(text_, from) : kNone;
    }

    // As findIn, but an empty word occurs nowhere: for loops that search on
    // after each occurrence.
    std::size_t findUnitsIn(std::u16string_view text, std::size_t from = 0) const {
        return hasUnits() ? text.find(text_, from) : kNone;
    }

    // The word as a set of characters: whether it holds `unit`, and where the
    // last such character stands in `text`.
    bool holds(char16_t unit) const { return text_.find(unit) != kNone; }
    std::size_t findLastOfIn(std::u16string_view text) const {
        return hasUnits() ? text.find_last_of(text_) : kNone;
    }

    bool firstUnitIs(char16_t unit) const { return hasUnits() && text_.front() == unit; }

    void load(std::u16string_view text) {
        text_.assign(text);
        loaded_ = true;
    }

private:
    std::u16string text_;
    bool loaded_ = false;
};

} // namespace tvml

#endif
