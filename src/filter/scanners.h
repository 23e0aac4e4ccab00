// Scanners that read state out of a description's TVML, and the fixes of the
// set-up text. Positions are kNone where nothing is found.
#ifndef TVML_FILTER_SCANNERS_H
#define TVML_FILTER_SCANNERS_H

#include <string>
#include <string_view>

#include "run/run.h"

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

// Finds the commands that set the text of a box named "TITLETEXT" and still hold
// a kind's placeholder on their line. Placeholders are rare, so their lines are
// found first; the whole search costs no more than a few looks at each unit,
// however many commands one line holds.
class TitleTextFinder {
public:
    TitleTextFinder(std::u16string_view text, TitleKind kind, const KeywordTable& words)
        : text_(text), placeholder_(placeholderOf(kind)), words_(words) {}

    // The position of the first such command at or after `from`. Calls go on
    // from left to right.
    std::size_t next(std::size_t from);

    // Whether such a command continues at `at`, right behind its "drawing".
    bool continuesAt(std::size_t at);

private:
    bool toLineWithPlaceholder(std::size_t& from);
    bool standsBehind(std::size_t end);
    void findLastPlaceholder(std::size_t from);

    std::u16string_view text_;
    std::u16string_view placeholder_;
    const KeywordTable& words_;
    std::size_t lineEnd_ = 0;           // the line looked at last ends here
    std::size_t placeholderAt_ = kNone; // its last placeholder
};

} // namespace tvml

#endif
