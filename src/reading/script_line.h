// What one line of a script says: read once, for the conversion and for everyone
// who tells people about it.
//
// Conventions
//  1. Texts are UTF-16 and refer to the script, to the vocabulary, to the names of
//     the description or to the ScriptLine itself; they stay valid until the next
//     line is read into the same object.
//  2. Only the part that belongs to the line's kind is there: tag(), command() or
//     talk(); the others are null.
//  3. placeOf() turns any text that was read from the line into its place in the
//     line as the writer wrote it, also where the line was rewritten on the way.
#ifndef TVML_READING_SCRIPT_LINE_H
#define TVML_READING_SCRIPT_LINE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reading/command_recognition.h"
#include "reading/line_kind.h"
#include "reading/marker_spec.h"

namespace tvml {

// What a script line, or a part of it, has wrong with it.
enum class ScriptProblem : std::uint8_t {
    // found by reading the line
    speakerReplaced,    // a letter beyond the last character; A takes the line
    tagUntaken,         // a tag line that nothing writes
    colourUnknown,      // where: the colour word
    captionWordUnknown, // a bracket group at the end of talk that is no caption
    captionMakesTalk,   // a command that its bracketed caption makes talk
    bracketUnopened,    // talk that ends with a lone closing bracket
    conditionNotMet,    // a command that has no effect now; command: its row
    argumentsRefused,   // a command that stands alone; where: what follows it
    adverbUnknown,      // where: the item
    adverbMissing,      // a separator without an adverb behind it
    separatorMissing,   // where: what stands in place of the separator
    colonMissing,       // where: the rest
    numberInvalid,      // where: the number
    numberMissing,      // where: the separator that stands in its place
    unitMissing,        // a number without its "steps"; where: what stands there
    letterInvalid,      // where: what should be a letter
    letterReplaced,     // a letter beyond the last character, read as "A"
    pairReplaced,       // one letter twice; the pair "AB" is used
    looksAtItself,      // a character told to look at itself
    modelMissing,       // a character without a model; detail: its letter
    setUnknown,         // where: the name
    modelUnknown,
    voiceUnknown,
    // found by writing it
    sentenceCutInWord, // where: the piece
    templateMissing,   // no template for a command; detail: its element
};

struct LineProblem {
    ScriptProblem what;
    std::u16string_view where = {}; // a text that was read from the line; empty for all of it
    std::u16string_view detail = {};
    const CommandSpec* command = nullptr; // whose row was asked
};

// Which table took a tag line or a command.
enum class TakenBy : std::uint8_t { nothing, tag, staging, character, pose };

// A part of a line, in units from the line's start.
struct LinePlace {
    std::size_t start = 0;
    std::size_t units = 0;
};

// A tag line: a marker or a tag of the description, a colon and a text.
struct TagReading {
    std::u16string_view name; // as it is written
    std::u16string_view
        english; // the marker's or the tag's name; empty when nothing takes the line
    std::optional<Marker> marker;
    std::u16string_view value;  // behind the colon; of a super without its colour
    std::u16string_view colour; // the word in a super's brackets, whether it is one or not
    const ColourSpec* colourSpec = nullptr;
};

// A line in brackets. `phrase` is what stands between them with its command word
// rewritten; names and items are parts of it.
struct RecognizedCommand {
    std::u16string_view inner; // as the line has it, trimmed
    std::u16string phrase;
    Recognition recognition;

    // Who takes it: a row, a pose of the description, or nobody.
    const CommandSpec* spec = nullptr;
    std::u16string_view pose; // its name; empty when it is none
    bool taken = false;

    AdverbValues adverbs; // all are empty when none are given
    std::vector<ReadAdverb> items;
    std::array<char16_t, 2> letters{}; // of the programme, 0 for none
    std::u16string number;             // in ASCII, empty for none
    std::u16string_view name;          // behind the colon, of a set, a file, a voice or a model
    std::u16string_view english;       // of a set or a voice
    std::u16string_view caption;       // of a sound file

    // The part of `inner` that a part of `phrase` comes from.
    std::u16string_view sourceOf(std::u16string_view part) const;
};

// A line that is spoken.
struct TalkReading {
    std::u16string_view speech;
    std::u16string_view caption;
    bool captioned = false; // spoken in one piece, with the caption, even an empty one
    bool blocking = true;
};

class ScriptLine {
public:
    std::u16string_view text;    // as the script has it
    std::u16string_view trimmed; // without blanks at its ends
    LineKind kind = LineKind::empty;

    // The mark in front of the colon, and the character that it names, "A" when
    // the programme does not have it; 0 for a line that names nobody.
    std::u16string_view speakerMark;
    char16_t speaker = 0;
    std::u16string_view content; // what is said or done, without the speaker

    std::vector<LineProblem> problems;

    const TagReading* tag() const { return part_ == Part::tag ? &tag_ : nullptr; }
    const RecognizedCommand* command() const {
        return part_ == Part::command ? &command_ : nullptr;
    }
    const TalkReading* talk() const { return part_ == Part::talk ? &talk_ : nullptr; }

    // The character that acts or speaks; A where the line names nobody.
    char16_t actor() const { return speaker != 0 ? speaker : u'A'; }

    // Who takes a tag line or a command, and the name of what takes it: of the row,
    // the pose, the marker or the declared tag.
    TakenBy takenBy() const;
    std::u16string_view takenName() const;

    bool hasProblem(ScriptProblem what) const { return findProblem(what) != nullptr; }
    const LineProblem* findProblem(ScriptProblem what) const;

    // The file that the line names; `use` is none when it names none.
    struct NamedFile {
        FileUse use = FileUse::none;
        std::u16string_view name{};
    };
    NamedFile file() const;

    // None for a text that was not read from this line.
    std::optional<LinePlace> placeOf(std::u16string_view part) const;

    // Talk that refers to this object ends with it; other talk to the script.
    bool talkIsCopied() const { return !copy_.empty(); }

private:
    friend class LineReader;
    friend class CommandReader;
    friend class TalkReader;

    enum class Part : std::uint8_t { none, tag, command, talk };

    void problem(ScriptProblem what, std::u16string_view where = {},
                 std::u16string_view detail = {}, const CommandSpec* command = nullptr) {
        problems.push_back({what, where, detail, command});
    }

    Part part_ = Part::none;
    TagReading tag_;
    RecognizedCommand command_;
    TalkReading talk_;

    // A changed text in place of a part of the line; its units are those of the
    // line from `copied_` on.
    std::u16string copy_;
    std::u16string_view copied_;
};

} // namespace tvml

#endif
