// Conversions in memory: what a vocabulary, a description and a script make.
//
// Rows write texts in a short notation: a unit with a count in braces repeats
// ("a{3}" is "aaa"), a bar is a line feed. Results are shown in UTF-8, their
// line feeds as bars.
#ifndef TVML_TESTS_SUPPORT_STUDIO_H
#define TVML_TESTS_SUPPORT_STUDIO_H

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "filter/conversion_run.h"
#include "platform/memory_platform.h"
#include "run/ini_files.h"

namespace tvml {

std::u16string utf16(std::string_view utf8);
std::u16string expand(std::u16string_view notation);
std::string shown(std::u16string_view text);

// Vocabulary words by key.
using Words = std::map<std::u16string, std::u16string, std::less<>>;

// The vocabulary that ships, with some words replaced.
Words shippedWords(const Words& replaced = {});

// The ini file of a vocabulary: a load ends at the first key that is missing. And
// a table with just these words loaded.
std::u16string iniText(const Words& words);
KeywordTable tableOf(const Words& words);

// A programme of "A" and "B", each with a model, whose talk shows the speaker,
// the speech, the caption and the wait value.
inline constexpr std::u16string_view kTwoCharacters =
    u"<numofchar>2</numofchar>"
    u"<model_for_char character='A' japanesename='太郎' englishname='Taro' default='no'"
    u" lipsync='0.9' speed='1.1' pitch='1.2' intonation='1.3' volume='1.4'>model A</model_for_char>"
    u"<model_for_char character='B' japanesename='花子' englishname='Hanako' default='no'"
    u" hiplevel='0.8'>model B</model_for_char>"
    u"<talk>talk $1 [$2] [$4] $9</talk>";

// Elements that give every other template its name and its placeholders as
// written: "<bow>bow $1 $2 $3 $4 $5</bow>". A placeholder that a command does
// not fill stays.
std::u16string tellingTemplates();

// A title template with the fonts "TJ", "TE", "SJ", "SE".
std::u16string titleElement(std::u16string_view text);

// The shipped vocabulary as a process has loaded it, and the two characters.
struct ShippedProgramme {
    ShippedProgramme();
    platform::MemoryPlatform memory;
    IniFiles files{memory};
    std::u16string description;
};

class Studio {
public:
    explicit Studio(std::u16string_view elements = kTwoCharacters, Words words = shippedWords());

    // The whole script, and what it has behind the opening. -1 is no line.
    std::string whole(std::u16string_view script, std::int32_t playFrom = -1,
                      std::int32_t playTo = -1, RunListener* listener = nullptr);
    std::string body(std::u16string_view script, std::int32_t playFrom = -1,
                     std::int32_t playTo = -1, RunListener* listener = nullptr);

    platform::MemoryPlatform platform;

private:
    IniFiles files_{platform};
    std::u16string description_;
};

} // namespace tvml

#endif
