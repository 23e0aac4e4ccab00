// Talk lines become talk commands.
#ifndef TVML_GENERATION_TALK_H
#define TVML_GENERATION_TALK_H

#include <string>
#include <string_view>
#include <vector>

#include "filter/run.h"
#include "generation/talk_piece.h"

namespace tvml {

// What a talk line becomes: the text or, where that can be written later, its
// pieces; never both.
struct TalkOutput {
    std::u16string& text;
    std::vector<TalkPiece>& pieces;
};

// Adds the TVML of one talk line: nothing when the line or the speaker is empty
// or the speaker cannot talk. Pieces refer to `line` and to the run.
void generateTalk(Run& run, std::u16string_view speaker, std::u16string_view line, TalkOutput out);

} // namespace tvml

#endif
