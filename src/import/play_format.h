// Which kind of text a play is, and reading it. Entry: readPlay.
#ifndef TVML_IMPORT_PLAY_FORMAT_H
#define TVML_IMPORT_PLAY_FORMAT_H

#include <optional>

#include "import/play.h"

namespace tvml::plays {

// "00:00:01,000 --> 00:00:02,500", of subtitles.
bool isTimeLine(std::u16string_view line);

// In the given format, or in the one that the text looks like most.
Play readPlay(std::u16string_view text, std::optional<PlayFormat> format);

} // namespace tvml::plays

#endif
