// What a writer meant by a command that is none: its words in another order, with
// other signs between them, with numbers in words or with words too many.
#ifndef TVML_DIAGNOSTICS_MEANT_COMMAND_H
#define TVML_DIAGNOSTICS_MEANT_COMMAND_H

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "staging/staging_description.h"
#include "vocabulary/keyword_table.h"

namespace tvml {

struct MeantCommand {
    std::u16string text;      // as a line can have it between the brackets; empty for none
    bool adverbFirst = false; // an adverb stood in front of the command
    bool nobodyNamed = false; // the letters of the text are a guess
};

// Knows all words of commands and adverbs that a run has loaded, and what people
// write besides them.
class CommandMeanings {
public:
    CommandMeanings(const KeywordTable& words, const StagingDescription& staging);

    // What `inner`, the text between the brackets, means when each of its words has
    // a meaning and they make one command; none for a text that is right or beyond
    // kLongestMeant units. `actor` is whose line it is.
    MeantCommand meantBy(std::u16string_view inner, char16_t actor, char16_t lastCharacter) const;

    // What an item of a list of adverbs means, several parted as in a line; empty
    // when it is none, or is right.
    std::u16string adverbsMeantBy(std::u16string_view item) const;

    static constexpr std::size_t kLongestMeant = 64;

private:
    enum class Kind : std::uint8_t { command, adverb, pose, number, unit, letters, filler };
    struct Sense {
        std::u16string spelling; // folded
        Kind kind;
        std::size_t row = 0;        // of kCommands or kAdverbRows
        std::u16string_view text{}; // of a pose its name, of a number its digits
    };
    struct Parsed;

    void add(std::u16string_view spelling, Kind kind, std::size_t row = 0,
             std::u16string_view text = {});
    void addCommands();
    void addAdverbs();
    void addPoses(const StagingDescription& staging);
    const Sense* longestAt(std::u16string_view folded, std::size_t at) const;
    bool parse(std::u16string_view inner, Parsed& parsed) const;
    std::u16string adverbText(std::size_t row, bool english) const;
    bool take(const Sense& sense, Parsed& parsed) const;
    std::size_t takeNumber(std::u16string_view folded, std::size_t at, Parsed& parsed) const;
    std::size_t takeLetter(std::u16string_view inner, std::size_t at, Parsed& parsed) const;
    std::u16string commandText(const Parsed& parsed, bool english) const;
    void addMissingLetters(Parsed& parsed, char16_t actor, char16_t lastCharacter) const;

    const KeywordTable& words_;
    std::unordered_map<char16_t, std::vector<Sense>> senses_; // by first unit
};

} // namespace tvml

#endif
