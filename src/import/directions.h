// What the directions of a play are in the language of scripts.
#ifndef TVML_IMPORT_DIRECTIONS_H
#define TVML_IMPORT_DIRECTIONS_H

#include "diagnostics/meant_command.h"
#include "diagnostics/meant_words.h"
#include "import/cast.h"
#include "reading/line_reader.h"
#include "run/run_state.h"

namespace tvml::plays {

// A direction or a clause of one.
struct ReadDirection {
    std::u16string text;
    std::u16string command{}; // that stands between the brackets; empty for none
    char16_t actor = 0;       // 0 for the studio
};

// Knows the words of one programme; they must outlive it.
class Directions {
public:
    Directions(const LineReader& reader, const StagingDescription& staging, char16_t lastCharacter,
               const Cast& cast)
        : reader_(reader), lastCharacter_(lastCharacter), cast_(cast),
          meanings_(reader.words(), staging), words_(reader.words()) {
        state_.lastCharacter = lastCharacter;
    }

    // The command that a direction means, or the commands of its clauses, of the one
    // that it names or else of `speaker`; 0 for nobody. One without a command where
    // there is none.
    std::vector<ReadDirection> read(std::u16string_view direction, char16_t speaker) const;

private:
    ReadDirection readOne(std::u16string_view direction, char16_t actor) const;
    std::u16string commandIn(std::u16string_view direction, char16_t actor) const;
    std::u16string wordMeant(std::u16string_view direction) const;
    bool isTaken(std::u16string_view inner, char16_t actor, bool& isStudio) const;

    const LineReader& reader_;
    const char16_t lastCharacter_;
    RunState state_; // at the start of a programme
    const Cast& cast_;
    const CommandMeanings meanings_;
    const MeantWords words_;
};

} // namespace tvml::plays

#endif
