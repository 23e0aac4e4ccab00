// What the actions of characters share.
#ifndef TVML_GENERATION_CHARACTER_ACTIONS_H
#define TVML_GENERATION_CHARACTER_ACTIONS_H

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "run/run.h"

namespace tvml {

// A command of a character on its way into the output.
struct CharacterAction {
    Run& run;
    const CommandSpec& row;
    const RecognizedCommand& command;
    char16_t name; // the character's letter
    std::u16string& out;
};

// Appends `text`; between lines that switch the character's automatic gesture
// off and on again while it has one.
void appendBracketed(const Run& run, char16_t name, std::u16string_view text, std::u16string& out);

void appendAutoGesture(char16_t name, bool on, std::u16string& out);

// Appends the filled template of an element, bracketed.
void fillElement(const CharacterAction& action, CharacterElement element,
                 std::span<const Filling> fillings);

// As fillElement, with "$1" the character and the values behind it.
void fillValues(const CharacterAction& action, CharacterElement element,
                const std::array<Value, 3>& values);

// The value of an adverb, or the text that stands for none.
constexpr std::u16string_view orDefault(std::u16string_view value, std::u16string_view fallback) {
    return value.empty() ? fallback : value;
}

// With targets, counts and model values.
void lookAtFellow(const CharacterAction& action);
void lookAtCharacter(const CharacterAction& action);
void lookAtPicture(const CharacterAction& action);
void sit(const CharacterAction& action);
void countedMove(const CharacterAction& action);

// Settings of a character.
void speakNormally(const CharacterAction& action);
void setTalkSpeed(const CharacterAction& action, TalkSpeed speed);
void playSoundFile(const CharacterAction& action);
void setVoice(const CharacterAction& action);
void switchGesture(const CharacterAction& action, bool on);
void setModel(const CharacterAction& action);

} // namespace tvml

#endif
