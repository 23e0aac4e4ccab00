// Talk lines become talk commands.
#ifndef TVML_GENERATION_TALK_H
#define TVML_GENERATION_TALK_H

#include <string>
#include <string_view>

#include "filter/run.h"

namespace tvml {

// The talk look-up: the next talk template of the character with its name and
// its model's values filled in; null when it has no model or no template. Stays
// valid until the next look-up.
const Template* selectTalkTemplate(Run& run, char16_t letter);

// Appends the TVML of one talk line to `out`: nothing when the line or the
// speaker is empty or the speaker cannot talk.
void generateTalk(Run& run, std::u16string_view speaker, std::u16string_view line,
                  std::u16string& out);

} // namespace tvml

#endif
