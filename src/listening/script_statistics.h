// Counts of a script: heard from one conversion, without a reading of its own.
#ifndef TVML_LISTENING_SCRIPT_STATISTICS_H
#define TVML_LISTENING_SCRIPT_STATISTICS_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "run/events.h"

namespace tvml {

// What a voice of speed 1.0 says in a minute: the usual rates of newsreaders,
// their pauses included.
inline constexpr double kJapaneseCharactersPerMinute = 300;
inline constexpr double kEnglishWordsPerMinute = 150;

// What one character, or all of them, say.
struct Speaking {
    std::size_t speeches = 0;   // lines of talk with something to say
    std::size_t characters = 0; // of them that are no blanks
    double seconds = 0;         // estimated
};

struct NamedFile {
    FileUse use;
    std::u16string name;
    std::vector<std::int32_t> lines; // that name it
};

// Give it to a run as a listener, convert, and read the counts.
class ScriptStatistics final : public RunListener {
public:
    std::size_t lines = 0;
    std::size_t emptyLines = 0;
    std::size_t tagLines = 0;
    std::size_t talkLines = 0;
    std::size_t commandLines = 0;
    std::size_t withoutEffect = 0; // commands and tag lines that nothing took

    std::map<char16_t, Speaking> speakers; // by letter
    Speaking offline;                      // what the player skips; in no other count

    std::map<std::pair<TakenBy, std::u16string>, std::size_t> commands; // and tags
    std::vector<NamedFile> files; // in the order of the script

    // Of all speakers.
    Speaking total() const;

    void lineConverted(const ScriptLine& line, const LineOutcome& outcome) override;

private:
    void countLine(const ScriptLine& line);
    void countTaker(const ScriptLine& line);
    void countSpeech(const LineOutcome& outcome);
    void noteFile(const ScriptLine& line, std::int32_t number);

    bool isOffline_ = false;
    std::map<std::pair<FileUse, std::u16string>, std::size_t> fileAt_; // in `files`
};

// How long a voice of this speed takes to say a text. A speed that is no number
// above 0 is 1.
double speakingSeconds(std::u16string_view speech, std::u16string_view speed);

} // namespace tvml

#endif
