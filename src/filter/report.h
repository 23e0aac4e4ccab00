// What a run tells about itself to a caller who asks: problems of the script
// and the steps by which each line became TVML. The exported function asks for
// nothing, and its output never depends on a report.
#ifndef TVML_FILTER_REPORT_H
#define TVML_FILTER_REPORT_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "reading/command_recognition.h"
#include "reading/line_kind.h"
#include "staging/staging_description.h"

namespace tvml {

// What a script line, or a part of it, has wrong with it.
enum class ScriptProblem : std::uint8_t {
    commandUnknown,   // no row takes the command; where: the phrase
    commandRejected,  // a row took it but its arguments do not fit
    adverbUnknown,    // where: the item
    adverbMissing,    // a separator without an adverb behind it
    separatorMissing, // where: what stands in place of the separator
    colonMissing,     // a command or marker that needs one; where: the rest
    numberInvalid,    // where: the number; detail, when it is missing: its unit
    unitMissing,      // a number without its "steps", "degrees" or "seconds"
    letterInvalid,    // where: what should be a letter
    letterReplaced,   // a letter beyond the last character, read as "A"; detail,
                      // when one letter stands twice: the pair that is used
    speakerReplaced,  // the same for the speaker of a line
    looksAtItself,    // a character told to look at itself
    conditionNotMet,  // a command that has no effect now; detail: the command
    modelMissing,     // a character without a model; detail: its letter
    setUnknown,       // where: the name
    modelUnknown,
    voiceUnknown,
    tagUntaken,         // a tag line that no handler takes
    colourUnknown,      // where: the colour word
    captionWordUnknown, // a bracket group at the end of talk that is no caption
    bracketUnopened,    // talk that ends with a lone closing bracket
    captionMakesTalk,   // a command that its bracketed caption makes talk
    sentenceCutInWord,  // where: the piece
    templateMissing,    // no template for a command
};

// What a file that a script names is for.
enum class FileUse : std::uint8_t { picture, sound, speech };

// Which table took a command or tag line.
enum class TakenBy : std::uint8_t { tag, stagingCommand, characterCommand, pose };

// Where a text comes from that no line of the body wrote.
struct TextOrigin {
    std::u16string_view element = {}; // of the description; empty for none
    std::size_t number = 0;           // of that element, 0 for its built-in text
    std::int32_t line = 0;            // the script line that asked for it, 0 for none
};

// Positions and sizes in the output count units.
class ConversionReport {
public:
    virtual ~ConversionReport() = default;

    virtual void vocabularyLoaded(const KeywordTable&) {}
    virtual void descriptionRead(const StagingDescription&, const TemplateDb&,
                                 char16_t /*lastCharacter*/, const DiagnosticLog&) {}
    virtual bool wantsPositions() const { return false; }

    // `line` is the untrimmed line, a part of the script. Everything told until
    // the next lineStarted belongs to it.
    virtual void lineStarted(std::int32_t /*number*/, std::u16string_view /*line*/) {}
    virtual void lineClassified(LineKind, std::u16string_view /*speaker*/, bool /*isCommand*/) {}

    // `after` is a changed copy of `before` that ends with the same units; later
    // views may be parts of it.
    virtual void rewritten(std::u16string_view /*before*/, std::u16string_view /*after*/) {}
    virtual void recognized(const Recognition&) {}
    virtual void adverbsRead(std::u16string_view /*list*/, const AdverbValues&) {}
    virtual void taken(TakenBy, std::u16string_view /*name*/) {}

    // `number` is that of the description's element, 0 for a built-in text.
    virtual void templateChosen(std::u16string_view /*element*/, std::size_t /*number*/) {}

    // A piece of talk was written: what is said, without its caption, and the
    // talk speed as TVML has it.
    virtual void spoken(char16_t /*letter*/, std::u16string_view /*speech*/,
                        std::u16string_view /*speed*/) {}

    // A tag line or a command names a file.
    virtual void fileNamed(FileUse, std::u16string_view /*file*/) {}

    // A line of the marker "title" or "subtitle" started a card, or completed the
    // card that the line before it started.
    virtual void titleCard(std::u16string_view /*marker*/, bool /*completed*/) {}

    // `where` is a part of the line or of a rewritten text; empty when the
    // problem concerns the whole line.
    virtual void problem(ScriptProblem, std::u16string_view /*where*/,
                         std::u16string_view /*detail*/) {}

    // A text of the line went into the body, at its end.
    virtual void bodyGrew(std::size_t /*units*/) {}

    // The next text of the body is no text of the line but "playfromhere()" or
    // "end()", for this line of the request.
    virtual void playMark(std::int32_t /*line*/) {}

    // A text of the line took the place of a placeholder that an earlier line
    // left in the body; `fromEnd` is where the placeholder began, counted from
    // the end of the body as it was.
    virtual void bodyFilled(std::size_t /*fromEnd*/, std::size_t /*removed*/,
                            std::size_t /*inserted*/) {}

    // A change of the set-up, the opening or the ending behind the last line.
    // Without an origin the new units have that of the first removed one.
    virtual void partChanged(PlainElement /*part*/, std::size_t /*at*/, std::size_t /*removed*/,
                             std::size_t /*inserted*/, const std::optional<TextOrigin>&) {}

    // The output stands, after a header of so many units: set-up, opening, body
    // and, when there is one, ending. Units can still be cut out of it.
    virtual void assembled(std::size_t /*headerUnits*/, bool /*hasEnding*/) {}
    virtual void unitsCut(std::size_t /*at*/, std::size_t /*units*/) {}

    // The whole output is known.
    virtual void finished(const class TvmlScript&) {}
};

} // namespace tvml

#endif
