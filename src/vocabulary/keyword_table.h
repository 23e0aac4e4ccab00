// The vocabulary: the 284 words by which a script names things, read from
// "keyword.ini" in the folder of the host program.
#ifndef TVML_VOCABULARY_KEYWORD_TABLE_H
#define TVML_VOCABULARY_KEYWORD_TABLE_H

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/platform.h"
#include "vocabulary/keys.h"
#include "vocabulary/word.h"

namespace tvml {

// Why a load ended before the last key.
enum class LoadProblem { none, missing, tooLong };

class KeywordTable {
public:
    // Reads all keys in load order. Returns false at the first key that is
    // missing or too long; that word and all later ones keep what they held. A
    // file that holds what it held at the last load is not read again.
    bool load(const platform::Platform& platform);

    // As load, from an ini file that is open already.
    bool loadFrom(const platform::IniFile& file);

    const Word& operator[](Key key) const { return words_[key.index()]; }

    // Replaces one word, for tools and tests that have no ini file.
    void set(Key key, std::u16string_view text);

    // Where and why the last load stopped; `none` when it read every key.
    LoadProblem problem() const { return problem_; }
    std::size_t problemKey() const { return problemKey_; }

    // Grows with every load that changed a word, so that a reader which keeps
    // something made from the words knows when to make it anew.
    std::uint64_t version() const { return version_; }

    // Script blanks: the ASCII blank, the tab, the characters of `space`.
    bool isBlank(char16_t unit) const {
        return unit < asciiBlanks_.size() ? asciiBlanks_[unit] : (*this)[u"space"].holds(unit);
    }

    // The letter "A" to "Z" that `unit` is a form of, or 0.
    char16_t letterOf(char16_t unit) const;

    // Whether `unit` lies in one of the four letter ranges: ASCII, `a1` to
    // `z1`, `A2` to `Z2`. A unit inside a range may still be no letter's form.
    bool isLetter(char16_t unit) const;

private:
    static constexpr std::array<bool, 128> blanksWithoutWords() {
        std::array<bool, 128> blanks{};
        blanks[u' '] = true;
        blanks[u'\t'] = true;
        return blanks;
    }
    bool readWords(const platform::IniFile& file);
    void indexWords();
    void indexBlanks();
    void indexLetters();

    std::array<Word, kKeyCount> words_;
    std::array<bool, 128> asciiBlanks_ = blanksWithoutWords();
    std::array<char16_t, 128> asciiLetters_{};
    std::vector<std::pair<char16_t, char16_t>> otherLetters_; // sorted: form, letter
    LoadProblem problem_ = LoadProblem::missing;
    std::size_t problemKey_ = 0;
    std::uint64_t version_ = 0;
    bool indexed_ = false;

    // What the words were loaded from, null when they changed since.
    std::shared_ptr<const platform::IniFile> file_;
    std::u16string path_;
};

// The path of the ini file `name` in the folder of the host program; empty when
// the folder is unknown or the path has more than 260 units.
std::u16string hostIniPath(const platform::Platform& platform, std::u16string_view name);

} // namespace tvml

#endif
