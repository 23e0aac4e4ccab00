// What the rows of the character commands share with their handlers.
#ifndef TVML_GENERATION_CHARACTER_CALL_H
#define TVML_GENERATION_CHARACTER_CALL_H

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "filter/run.h"

namespace tvml {

struct CharacterRow;

// One command on its way through its row.
struct CharacterCall {
    Run& run;
    const CharacterRow& row;
    char16_t name;            // the character's letter
    std::u16string_view rest; // what follows the canonical name, untrimmed
    std::u16string& out;
};

// What a placeholder of a template command is filled with.
enum class Argument : std::uint8_t {
    none,
    speed,         // or "1.0"
    degree,        // or "1.0"
    blocking,      // or "yes"
    blockingOrNo,  // or "no"
    expressionMap, // the degree maps
    bowMap,
    byeMap,
    rightMap,
    leftMap,
    upMap,
    downMap,
};

// Writes the command; false, with nothing written, when its arguments do not
// fit.
using CharacterHandler = bool (*)(CharacterCall& call);

// Whether a row takes its command now; null means always.
using CharacterCondition = bool (*)(const RunState& state);

// For rows that use no template.
inline constexpr CharacterElement kNoElement = CharacterElement::talk;

struct CharacterRow {
    std::u16string_view name;
    CharacterElement element;
    std::array<Argument, 3> arguments{}; // of "$2", "$3", "$4"
    CharacterHandler handler = nullptr;  // null fills the element's template
    CharacterCondition condition = nullptr;
};

// Appends `text`; between lines that switch the character's automatic gesture
// off and on again while it has one.
void appendBracketed(const Run& run, char16_t name, std::u16string_view text, std::u16string& out);

void appendAutoGesture(char16_t name, bool on, std::u16string& out);

// Appends the filled template of an element, bracketed.
void fillElement(CharacterCall& call, CharacterElement element, std::span<const Filling> fillings);

// As fillElement, with "$1" the character and the arguments behind it.
void fillArguments(CharacterCall& call, CharacterElement element,
                   const std::array<Argument, 3>& arguments, const AdverbValues& adverbs);

// Handlers with targets, counts and model values.
bool lookAtFellow(CharacterCall& call);
bool lookAtCharacter(CharacterCall& call);
bool lookAtPicture(CharacterCall& call);
bool sit(CharacterCall& call);
bool walkSteps(CharacterCall& call);
bool turnDegrees(CharacterCall& call);

// Handlers that change a character's settings.
bool speakNormally(CharacterCall& call);
bool speakSlow(CharacterCall& call);
bool speakVerySlow(CharacterCall& call);
bool speakFast(CharacterCall& call);
bool speakVeryFast(CharacterCall& call);
bool playSoundFile(CharacterCall& call);
bool setVoiceType(CharacterCall& call);
bool setAutoGesture(CharacterCall& call);
bool setManualGesture(CharacterCall& call);
bool setModel(CharacterCall& call);

} // namespace tvml

#endif
