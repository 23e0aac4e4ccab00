// What the words of a writer mean, whatever they are spelt like: by the table of
// meanings and by the words of the language itself.
#ifndef TVML_DIAGNOSTICS_MEANT_WORDS_H
#define TVML_DIAGNOSTICS_MEANT_WORDS_H

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "diagnostics/meanings.h"
#include "reading/command_spec.h"
#include "vocabulary/keyword_table.h"

namespace tvml {

// A text in which numbers and letters of characters gave way to "#" and "@".
struct WordPattern {
    std::u16string key;
    std::u16string number;  // in ASCII; empty when there is none
    std::u16string letters; // as they were written
};

// The text as words are compared: folded, without blanks and hyphens.
std::u16string wordKey(std::u16string_view text);

WordPattern patternOf(std::u16string_view text);
// As above, with numbers as they are: "two shot AB".
WordPattern letterPatternOf(std::u16string_view text);

// The number that a text gives in whatever digits or words, in ASCII; empty when
// it gives none below a hundred thousand.
std::u16string meantNumber(std::u16string_view text);

// The rows of the table by their words.
class MeaningIndex {
public:
    using Targets = std::vector<std::u16string_view>;

    static const MeaningIndex& instance();

    // What the key means as a word of this sense, best first.
    const Targets& find(Sense sense, const std::u16string& key) const;
    // Whether the key has a row of any sense.
    bool knows(const std::u16string& key) const { return all_.contains(key); }

private:
    MeaningIndex();
    std::array<std::unordered_map<std::u16string, Targets>, 8> bySense_;
    std::unordered_map<std::u16string, bool> all_;
};

// What one programme's words mean.
class MeantWords {
public:
    explicit MeantWords(const KeywordTable& words);

    struct Meant {
        MeaningIndex::Targets targets; // best first
        bool known = false;            // the text has a meaning, be it another one
        WordPattern pattern;
    };
    Meant find(Sense sense, std::u16string_view text) const;

private:
    using Names = std::unordered_map<std::u16string, std::u16string_view>;
    void add(Sense sense, std::u16string_view before, std::u16string_view word,
             std::u16string_view target);
    void addCommands(const KeywordTable& words);
    void addOthers(const KeywordTable& words);
    bool look(Sense sense, const std::u16string& key, Meant& meant) const;
    // As above, without an ending or a beginning that does not matter.
    bool lookShorter(Sense sense, const std::u16string& key, Meant& meant) const;

    std::array<Names, 8> names_; // the language's own words, by sense
};

} // namespace tvml

#endif
