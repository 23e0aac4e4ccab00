// Existing texts come in: a play, a screenplay or subtitles become a script. Texts
// in, plain structs out; no files, no terminal.
//
// Conventions
//  1. Texts are UTF-16; lines count from 1.
//  2. The texts of a request are read only while importPlay runs; what it returns
//     owns what it holds.
//  3. What stands in the result was converted once: commands that have no effect in
//     the programme are left out, and a speech counts as out when the conversion
//     speaks exactly what the play says.
//  4. Throws a TvmlException as the conversion does, and else nothing but
//     std::bad_alloc.
#ifndef TVML_IMPORT_PLAY_IMPORT_H
#define TVML_IMPORT_PLAY_IMPORT_H

#include <optional>
#include <span>

#include "import/cast.h"
#include "import/script_writer.h"
#include "platform/platform.h"
#include "run/settings.h"

namespace tvml::plays {

struct ImportRequest {
    std::u16string_view text;
    std::optional<PlayFormat> format = {}; // none: the one that the text looks like
    std::span<const CastWish> wishes = {};
    bool titles = false; // headings of scenes become titles
    std::u16string_view description;
    const KeywordTable& words;
    const TvmlIniMirvol& settings;
};

struct ImportedPlay {
    PlayFormat format = PlayFormat::japanese;
    bool isJapanese = true;
    std::u16string script;
    std::size_t speechesIn = 0;  // of the play
    std::size_t speechesOut = 0; // that the script speaks as they are
    std::size_t headings = 0;
    std::vector<CastMember> cast;
    std::vector<std::u16string> unknownWishes; // names that nobody has
    std::vector<ToldDirection> directions;     // in the order of the play
    char16_t lastCharacter = u'A';             // of the programme
};

ImportedPlay importPlay(const ImportRequest& request, const platform::Platform& platform);

} // namespace tvml::plays

#endif
