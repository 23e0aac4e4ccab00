// Scanners that read state out of a description's TVML, and the fixes of the
// set-up text. Positions are kNone where nothing is found.
#ifndef TVML_FILTER_SCANNERS_H
#define TVML_FILTER_SCANNERS_H

#include <string>
#include <string_view>

#include "filter/run.h"

namespace tvml {

// The first line-starting "skipscript( switch=…)" with the switch "on" or "off".
std::size_t findSkipSwitch(std::u16string_view text, std::u16string_view switchWord,
                           const KeywordTable& words);

// The last line-starting "skipscript( switch=off )".
std::size_t findLastSkipLine(std::u16string_view text, const KeywordTable& words);

// The text switches skipping off before it switches it on.
bool endsSkipped(std::u16string_view text, const KeywordTable& words);

// Learn automatic gestures and automatic camera switching from a text; the last
// command counts.
void scanAutoGesture(Run& run, std::u16string_view text);
void scanCameraAutoSwitching(Run& run, std::u16string_view text);

// Gives each character the talk speed of its current model.
void applyCharacterSpeeds(Run& run);

// Puts the characters' models behind the first skip-on line of `setting`.
void insertCharacterModels(Run& run);

// Makes `setting` open and show the set that the script chose.
void applyInitialSet(Run& run);

enum class TitleKind : std::uint8_t { title, subtitle };

// "$TITLE" or "$SUBTITLE".
std::u16string_view placeholderOf(TitleKind kind);

// The first command at or after `from` that sets the text of a box named
// "TITLETEXT" and still holds the kind's placeholder on its line.
std::size_t findTitleText(std::u16string_view text, TitleKind kind, std::size_t from,
                          const KeywordTable& words);

// Whether such a command continues at `at`, right behind its "drawing".
bool isTitleTextBehind(std::u16string_view text, TitleKind kind, std::size_t at,
                       const KeywordTable& words);

} // namespace tvml

#endif
