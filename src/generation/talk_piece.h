// A piece of talk whose TVML is written when it is wanted: most of an output is
// talk, and a piece takes a fraction of the memory of its text.
#ifndef TVML_GENERATION_TALK_PIECE_H
#define TVML_GENERATION_TALK_PIECE_H

#include <array>
#include <string_view>

#include "staging/template.h"
#include "vocabulary/unit_search.h"

namespace tvml {

// The template and the texts must outlive the piece.
struct TalkPiece {
    const Template* text; // with everything else filled in
    std::u16string_view speech;
    std::u16string_view caption;
    bool wait;      // the next command waits for the end of this one
    bool captioned; // the speech is filled in once only

    std::array<Filling, 3> fillings() const {
        return {{
            {u"$9", wait ? u"yes" : u"no"},
            {u"$4", caption},
            {u"$2", speech, captioned},
        }};
    }

    // Nothing of the TVML can be looked for as a placeholder later. `mayHoldMarks`
    // is false when speech and caption are known to hold no "$".
    bool canWait(bool mayHoldMarks) const {
        return text->leavesNoMarks(fillings()) &&
               (!mayHoldMarks || (findUnit(speech, u'$') == std::u16string_view::npos &&
                                  findUnit(caption, u'$') == std::u16string_view::npos));
    }

    // Only when it can wait.
    std::size_t size() const { return text->filledSize(fillings()); }
    char16_t* write(char16_t* to) const { return text->write(fillings(), to); }
};

} // namespace tvml

#endif
