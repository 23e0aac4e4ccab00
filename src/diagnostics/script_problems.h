// What the checks of script lines share: the run so far, and one line with what
// became of it.
#ifndef TVML_DIAGNOSTICS_SCRIPT_PROBLEMS_H
#define TVML_DIAGNOSTICS_SCRIPT_PROBLEMS_H

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/finding.h"
#include "diagnostics/meant_command.h"
#include "diagnostics/script_suggestions.h"
#include "run/events.h"

namespace tvml {

// A line as its reading and the run tell it.
struct CheckedLine {
    const ScriptLine& line;
    const LineOutcome& outcome;

    bool isCommand() const { return line.command() != nullptr; }
    char16_t speaker() const { return line.speaker; }
};

// One conversion while it is listened to.
struct ScriptChecks {
    ScriptChecks(const Programme& programme, Language language);

    const LineReader& reader;
    const KeywordTable& words;
    const StagingDescription& staging;
    const char16_t lastCharacter;
    const Language language;
    std::bitset<256> tagStarts;    // the low bytes of the first units of declared tags
    std::bitset<256> signs;        // the low bytes of all brackets and colons
    std::bitset<26> toldModelless; // characters whose missing model was told
    SuggestionMemory suggestions;
    std::vector<Diagnostic> found;

    // Made when the first command needs it.
    const CommandMeanings& meanings();

    // Adds a diagnostic about a part of the line, or the whole one.
    Diagnostic& add(Code code, const CheckedLine& checked, std::optional<LinePlace> place,
                    TextValues values = {});

    // What is told at its first place alone, with a count of the others at the end.
    void addOnce(Code code, const CheckedLine& checked, std::u16string_view where,
                 TextValues values);
    void tellCounts();

    // As above, about a text that was read from the line.
    Diagnostic& addAt(Code code, const CheckedLine& checked, std::u16string_view where,
                      TextValues values = {});

    // "A to C", for messages.
    std::u16string characters() const;
    // How a marker of this English name is called in the language of the messages.
    std::u16string_view markerName(std::u16string_view english) const;
    std::u16string_view text(Message message) const { return textOf(message, language); }

private:
    struct Repeated {
        Code code;
        std::size_t first; // in `found`
        std::size_t count;
    };
    std::vector<Repeated> repeated_;
    std::optional<CommandMeanings> meanings_;
};

// Each says what is wrong with a line of its kind.
void checkCommandLine(ScriptChecks& checks, const CheckedLine& checked);
void checkTalkLine(ScriptChecks& checks, const CheckedLine& checked);
void checkTagLine(ScriptChecks& checks, const CheckedLine& checked);

// A cheap look at a talk line: false when checkTalkLine cannot have anything to
// say about it but what its reading told.
bool talkNeedsCheck(const ScriptChecks& checks, const ScriptLine& line);

// Whose command a text is that stands alone, without brackets.
enum class CommandOwner : std::uint8_t { none, character, studio };
CommandOwner commandOwner(const ScriptChecks& checks, std::u16string_view text);

// The name by which a text is a tag line, a part of it; empty when it is none.
std::u16string_view tagName(const ScriptChecks& checks, std::u16string_view text);

// The one-time note that a character has no model.
void tellModelless(ScriptChecks& checks, const CheckedLine& checked, const LineProblem& told);

} // namespace tvml

#endif
