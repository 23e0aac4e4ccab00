// Long speech cut into pieces that a character can say in one breath.
#ifndef TVML_READING_TALK_SPLITTER_H
#define TVML_READING_TALK_SPLITTER_H

#include <string_view>

#include "vocabulary/keyword_table.h"

namespace tvml {

// Receives the pieces of one speech in order. `lastOfSpeech` is true for a
// piece after which nothing of the speech is left. `cutInWord` is true when the
// piece ends because it had to, not at a sentence end, a comma or a blank.
class PieceSink {
public:
    virtual ~PieceSink() = default;
    virtual void piece(std::u16string_view text, bool lastOfSpeech, bool cutInWord) = 0;
};

// Both cut at sentence ends, then gather the clauses of a longer sentence. The
// pieces are parts of `speech`. An empty speech has no pieces.
//
// Japanese: sentences end at `kuten`, clauses at `touten2`; pieces of at most
// 58 units.
void splitJapaneseTalk(std::u16string_view speech, const KeywordTable& words, PieceSink& sink);

// English: sentences end at a period, clauses at a comma, each before a blank
// or before a quote and a blank; pieces of at most 120 units.
void splitEnglishTalk(std::u16string_view speech, const KeywordTable& words, PieceSink& sink);

} // namespace tvml

#endif
