// The TVML commands of a template, as far as their form can be told to be wrong.
#ifndef TVML_DIAGNOSTICS_TVML_COMMANDS_H
#define TVML_DIAGNOSTICS_TVML_COMMANDS_H

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tvml {

enum class TvmlFault : std::uint8_t {
    fullWidth,     // a bracket, quote, comma, colon or "=" that is no ASCII
    colonMissing,  // between the object and its command
    commaMissing,  // in front of a parameter
    equalsMissing, // behind a parameter's name
    commaSurplus,  // two in a row
    quoteEnds,     // a value's quotes end in the middle of it
    objectUnusual, // an object that is none of kTvmlObjects
};

struct TvmlProblem {
    TvmlFault fault;
    std::u16string_view where;
    std::u16string_view meant; // what to write instead, where that is known
};

struct TvmlParameter {
    std::u16string_view name;
    std::u16string_view value; // without its quotes
};

// OBJECT: COMMAND( PARAMETER=VALUE, … ); an object is missing from commands such
// as wait().
struct TvmlCommand {
    std::u16string_view object;
    std::u16string_view name;
    std::vector<TvmlParameter> parameters;
};

struct TvmlReading {
    std::vector<TvmlCommand> commands;
    std::optional<TvmlProblem> problem; // the first one; nothing is read behind it
};

// Reads all commands of a text. Views refer to it. Lines that begin with "//" and
// what is no command at all are passed over.
TvmlReading readTvml(std::u16string_view text);

// The closest usual objects to one that is none.
std::vector<std::u16string> closestObjects(std::u16string_view given);

} // namespace tvml

#endif
