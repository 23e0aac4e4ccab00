// The readers of the kinds of texts. Each takes the lines of a text from which the
// readings of kanji were taken out, and loses no line of it: what is no speech is
// an item of another kind.
#ifndef TVML_IMPORT_PLAY_READERS_H
#define TVML_IMPORT_PLAY_READERS_H

#include <span>

#include "import/play.h"
#include "import/play_lines.h"

namespace tvml::plays {

using Lines = std::span<const PlayLine>;

std::vector<PlayItem> readJapanesePlay(Lines lines);
std::vector<PlayItem> readEnglishPlay(Lines lines);
std::vector<PlayItem> readFountain(Lines lines);
std::vector<PlayItem> readSubtitles(Lines lines);

// Whether a line is nothing but signs, to part scenes or pages.
bool isRuler(std::u16string_view line);

// 第一場, ○教室, シーン１, 【教室】.
bool isJapaneseHeading(std::u16string_view line);
// ACT I, SCENE II, INT. KITCHEN.
bool isEnglishHeading(std::u16string_view line);

// The head of a list of the cast, with or without a colon behind it.
bool isCastHead(std::u16string_view line);

} // namespace tvml::plays

#endif
