// What to write in place of a part of a script line: by what its words mean,
// else by how they are spelt. Each suggestion is a whole replacement for the part,
// in the form and the language of the line.
#ifndef TVML_DIAGNOSTICS_SCRIPT_SUGGESTIONS_H
#define TVML_DIAGNOSTICS_SCRIPT_SUGGESTIONS_H

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "diagnostics/meant_words.h"

namespace tvml {

struct CheckedLine;
struct ScriptChecks;

using Suggestions = std::vector<std::u16string>;

// What a script's suggestions share. A text is looked at once; after kMostTexts
// different ones, or kMostCompared names of the description that texts were
// compared with, there are no more suggestions, so that a script of nothing but
// mistakes is checked fast.
class SuggestionMemory {
public:
    static constexpr std::size_t kMostTexts = 2000;
    static constexpr std::size_t kMostCompared = 500'000;

    explicit SuggestionMemory(const KeywordTable& words) : words_(words) {}

    const MeantWords& meant();

    // What `make` gives for the text; `kind` keeps apart what depends on more than
    // the text.
    template <typename Make>
    Suggestions once(std::u16string_view kind, std::u16string_view text, Make make) {
        if (text.size() > kLongest) {
            return {};
        }
        std::u16string key(kind);
        key.append(u":").append(text);
        const auto known = made_.find(key);
        if (known != made_.end()) {
            return known->second;
        }
        return isSpent() ? Suggestions() : made_.emplace(std::move(key), make()).first->second;
    }
    bool isSpent() const { return made_.size() >= kMostTexts || compared_ >= kMostCompared; }

    // To be told of so many names of the description.
    void compare(std::size_t names) { compared_ += names; }

private:
    static constexpr std::size_t kLongest = 200;
    const KeywordTable& words_;
    std::unique_ptr<MeantWords> meant_; // most scripts have nothing to suggest
    std::unordered_map<std::u16string, Suggestions> made_;
    std::size_t compared_ = 0;
};

// For the head of a command line: what its words mean, without guesses.
Suggestions meantCommands(ScriptChecks& checks, const CheckedLine& checked,
                          std::u16string_view head);
// As above, or what is spelt like it.
Suggestions suggestedCommands(ScriptChecks& checks, const CheckedLine& checked,
                              std::u16string_view head);

Suggestions suggestedAdverbs(ScriptChecks& checks, std::u16string_view item);
Suggestions suggestedVoices(ScriptChecks& checks, std::u16string_view given);
// What there is in place of a name that there is not, for the message: the first
// few names, in the language of the given one.
std::u16string existingSets(const ScriptChecks& checks, std::u16string_view given);
std::u16string existingModels(const ScriptChecks& checks, char16_t letter,
                              std::u16string_view given);
std::u16string existingVoices(const ScriptChecks& checks, std::u16string_view given);

Suggestions suggestedSets(ScriptChecks& checks, std::u16string_view given);
Suggestions suggestedModels(ScriptChecks& checks, char16_t letter, std::u16string_view given);
Suggestions suggestedColours(ScriptChecks& checks, std::u16string_view given);

// For a head in front of a colon: markers, tags and, for who speaks, a letter.
Suggestions suggestedTags(ScriptChecks& checks, std::u16string_view head);

// The number that was meant, in the digits of its line; empty when none was.
std::u16string suggestedNumber(const ScriptChecks& checks, std::u16string_view line,
                               std::u16string_view written);

} // namespace tvml

#endif
