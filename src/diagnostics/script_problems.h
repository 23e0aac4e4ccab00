// What the checks of script lines share: the run so far and the facts of one
// line.
#ifndef TVML_DIAGNOSTICS_SCRIPT_PROBLEMS_H
#define TVML_DIAGNOSTICS_SCRIPT_PROBLEMS_H

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/finding.h"

namespace tvml {

// A part of a line, in units from the line's start.
struct LinePart {
    std::size_t start = 0;
    std::size_t units = 0;
};

// What the run told about a line: texts are copies, since those of the run are
// gone when the line is looked at as a whole.
struct Told {
    ScriptProblem what;
    std::optional<LinePart> part; // none for the whole line
    std::u16string where;
    std::u16string detail;
};

struct LineFacts {
    std::int32_t number = 0;
    std::u16string_view line; // untrimmed
    LineKind kind = LineKind::empty;
    char16_t speaker = 0; // 0 when the line names none
    bool isCommand = false;
    bool taken = false;
    bool spoken = false;
    std::u16string_view takenName;
    Recognition recognition;
    std::u16string_view inner; // a command between its brackets; a part of the line
    std::vector<Told> told;
};

// One conversion while it is listened to.
struct ScriptChecks {
    explicit ScriptChecks(const KeywordTable& vocabulary)
        : words(vocabulary), commands(vocabulary), markers(vocabulary) {}

    const KeywordTable& words;
    CommandIndex commands;
    MarkerIndex markers;
    std::bitset<256> tagStarts; // the low bytes of the first units of declared tags
    const StagingDescription* staging = nullptr;
    char16_t lastCharacter = 0;
    std::bitset<26> toldModelless; // characters whose missing model was told
    int suggestionsLeft = 2000;    // keeps a script of nothing but mistakes fast
    std::vector<Diagnostic> found;

    // Adds a diagnostic about a part of the line, or the whole one.
    Diagnostic& add(Code code, const LineFacts& facts, std::optional<LinePart> part,
                    std::initializer_list<std::u16string_view> values = {});

    // As above, about a view that is a part of the line.
    Diagnostic& addAt(Code code, const LineFacts& facts, std::u16string_view where,
                      std::initializer_list<std::u16string_view> values = {});

    // "A to C", for messages.
    std::u16string characters() const;
};

// Each says what is wrong with a line of its kind.
void checkCommandLine(ScriptChecks& checks, const LineFacts& facts);
void checkTalkLine(ScriptChecks& checks, const LineFacts& facts);
void checkTagLine(ScriptChecks& checks, const LineFacts& facts);

// A cheap look at a talk line: false when checkTalkLine cannot have anything to
// say about it but what the run told.
bool talkNeedsCheck(const ScriptChecks& checks, const LineFacts& facts);

// Whose command a text is that stands alone, without brackets.
enum class CommandOwner : std::uint8_t { none, character, studio };
CommandOwner commandOwner(const ScriptChecks& checks, std::u16string_view text);

// The name by which a text is a tag line, a part of it; empty when it is none.
std::u16string_view tagName(const ScriptChecks& checks, std::u16string_view text);

// The one-time note that a character has no model.
void tellModelless(ScriptChecks& checks, const LineFacts& facts, const Told& told);

} // namespace tvml

#endif
