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
    const Template* text = nullptr; // with everything else filled in
    std::u16string_view speech;
    std::u16string_view caption;
    bool wait = false;      // the next command waits for the end of this one
    bool captioned = false; // the speech is filled in once only

    // In the order of filling.
    std::array<std::u16string_view, 3> values() const {
        return {wait ? std::u16string_view(u"yes") : std::u16string_view(u"no"), caption, speech};
    }
    std::array<Filling, 3> fillings() const {
        const auto [waitValue, captionValue, speechValue] = values();
        return {{{u"$9", waitValue}, {u"$4", captionValue}, {u"$2", speechValue, captioned}}};
    }

    bool holdsMarks() const {
        return findUnit(speech, u'$') != std::u16string_view::npos ||
               findUnit(caption, u'$') != std::u16string_view::npos;
    }

    // Only of a piece without "$" whose template can wait.
    std::size_t size() const {
        const std::array<std::size_t, 3> sizes{wait ? 3u : 2u, caption.size(), speech.size()};
        return text->filledSize(sizes);
    }
    char16_t* write(char16_t* to) const { return text->write(values(), to); }
};

} // namespace tvml

#endif
