// Talk lines become talk commands.
#ifndef TVML_GENERATION_TALK_H
#define TVML_GENERATION_TALK_H

#include <optional>
#include <string>
#include <string_view>

#include "filter/run.h"

namespace tvml {

// What a talk command of one character is made of.
struct TalkTemplate {
    const Variant* variant;
    std::u16string_view lipsync;
    std::u16string_view speed;
    std::u16string_view pitch;
    std::u16string_view intonation;
    std::u16string_view volume;
};

// The talk look-up; nothing when the character has no model or no template.
std::optional<TalkTemplate> selectTalkTemplate(Run& run, char16_t letter);

// Appends the TVML of one talk line to `out`: nothing when the line or the
// speaker is empty or the speaker cannot talk.
void generateTalk(Run& run, std::u16string_view speaker, std::u16string_view line,
                  std::u16string& out);

} // namespace tvml

#endif
