// What a run tells to those who listen: the programme, each line with what became
// of it, and the pieces of the output as they grow and change. The exported
// function listens to nothing, and no output depends on a listener.
#ifndef TVML_RUN_EVENTS_H
#define TVML_RUN_EVENTS_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "reading/line_reader.h"
#include "staging/staging_description.h"

namespace tvml {

// The words and the description, before the first line. All of it lives as long
// as the run.
struct Programme {
    const LineReader& reader;
    const StagingDescription& staging;
    const TemplateDb& templates;
    char16_t lastCharacter;
    const DiagnosticLog& log;
};

// A template that a line used: the element, and its number in the description, 0
// for a built-in text.
struct TemplateUse {
    std::u16string_view element;
    std::size_t number;
};

// A piece of talk: what is said, without its caption, and the talk speed as TVML
// has it.
struct SpokenPiece {
    char16_t letter;
    std::u16string_view speech;
    std::u16string_view speed;
};

// What a line of the markers "title" and "subtitle" does with a card.
enum class CardStep : std::uint8_t { none, starts, completes };

// What became of a line, besides what its reading says already. Texts live until
// the next line.
struct LineOutcome {
    std::int32_t number = 0; // of the line, from 1
    std::vector<TemplateUse> templates;
    std::vector<SpokenPiece> spoken;
    std::vector<LineProblem> problems; // found while writing
    CardStep card = CardStep::none;

    void clear(std::int32_t lineNumber) {
        number = lineNumber;
        templates.clear();
        spoken.clear();
        problems.clear();
        card = CardStep::none;
    }
};

// ---- the output; positions and sizes count units

// A text went into the body, at its end: of this line, or for the player, which
// was asked to start or to end there.
struct BodyGrew {
    std::size_t units;
    std::int32_t line;
    bool isPlayMark = false;
};

// A text of the line took the place of a placeholder that an earlier line left in
// the body; `fromEnd` is where the placeholder began, counted from the end of the
// body as it was.
struct BodyFilled {
    std::size_t fromEnd;
    std::size_t removed;
    std::size_t inserted;
    std::int32_t line;
};

// Where a text comes from that no line of the body wrote.
struct TextOrigin {
    std::u16string_view element = {}; // of the description; empty for none
    std::size_t number = 0;           // of that element, 0 for its built-in text
    std::int32_t line = 0;            // the script line that asked for it, 0 for none
};

// A change of the set-up, the opening or the ending behind the last line. Without
// an origin the new units have that of the first removed one.
struct PartChanged {
    PlainElement part;
    std::size_t at;
    std::size_t removed;
    std::size_t inserted;
    std::optional<TextOrigin> origin;
};

// The output stands, after a header of so many units: set-up, opening, body and,
// when there is one, ending. Units can still be cut out of it.
struct Assembled {
    std::size_t headerUnits;
    bool hasEnding;
};
struct UnitsCut {
    std::size_t at;
    std::size_t units;
};

using OutputEvent = std::variant<BodyGrew, BodyFilled, PartChanged, Assembled, UnitsCut>;

class TvmlScript;

class RunListener {
public:
    virtual ~RunListener() = default;
    virtual void programmeRead(const Programme&) {}
    virtual void lineConverted(const ScriptLine&, const LineOutcome&) {}
    virtual void outputChanged(const OutputEvent&) {}
    virtual void finished(const TvmlScript&) {}
};

// All who listen to one run, in the order in which they are told. They must
// outlive it.
class Listeners {
public:
    Listeners() = default;
    Listeners(std::initializer_list<RunListener*> listeners) : all_(listeners) {}
    void add(RunListener& listener) { all_.push_back(&listener); }

    void tell(const Programme& programme) const {
        for (RunListener* one : all_) {
            one->programmeRead(programme);
        }
    }
    void tell(const ScriptLine& line, const LineOutcome& outcome) const {
        for (RunListener* one : all_) {
            one->lineConverted(line, outcome);
        }
    }
    void tell(const OutputEvent& event) const {
        for (RunListener* one : all_) {
            one->outputChanged(event);
        }
    }
    void tell(const TvmlScript& script) const {
        for (RunListener* one : all_) {
            one->finished(script);
        }
    }

private:
    std::vector<RunListener*> all_;
};

} // namespace tvml

#endif
