// The parts of a line that mean something, each with its place: what an editor
// colours, selects, links and renames.
#ifndef TVML_ANALYSIS_LINE_PARTS_H
#define TVML_ANALYSIS_LINE_PARTS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/programme.h"

namespace tvml {

enum class PartKind : std::uint8_t {
    speaker,  // a letter in front of a colon
    marker,   // of a tag line
    tag,      // of the description
    command,  // the word of a command
    pose,     // of the description
    argument, // a letter or a number of a command
    adverb,
    name, // of a set, a model or a voice
    file,
    colour,
    caption,
    speech,
    text, // behind the colon of a tag line
};

struct LinePart {
    PartKind kind = PartKind::speech;
    LinePlace place;
    std::u16string english = {}; // the name that it stands for, where tables have one
};

// What a line says, in the order of its places, which do not overlap.
struct LineParts {
    std::vector<LinePart> all;
    LinePlace trimmed; // the line without blanks at its ends
    LinePlace content; // without the speaker
    LinePlace inside;  // of a command's brackets; no units without
    FileUse fileUse = FileUse::none;
    bool isCommand = false;

    // The part that `unit` stands in or behind, or null.
    const LinePart* at(std::size_t unit) const;
};

LineParts partsOf(const LoadedProgramme& programme, std::u16string_view line);

} // namespace tvml

#endif
