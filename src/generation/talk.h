// Talk lines become talk commands.
#ifndef TVML_GENERATION_TALK_H
#define TVML_GENERATION_TALK_H

#include <string>
#include <string_view>
#include <vector>

#include "generation/talk_piece.h"
#include "run/run.h"

namespace tvml {

// What a talk line becomes: the text or, where that can be written later, its
// pieces; never both.
struct TalkOutput {
    std::u16string& text;
    std::vector<TalkPiece>& pieces;
};

// Adds the TVML of a talk line: nothing when it is empty or the speaker cannot
// talk. Pieces refer to the script and to the run. `mayHoldMarks` is false when
// the line is known to hold no "$".
void generateTalk(Run& run, const ScriptLine& line, bool mayHoldMarks, TalkOutput out);

} // namespace tvml

#endif
