// Counting while a script is converted. Entry: ScriptStatistics.
#include "listening/script_statistics.h"

#include <algorithm>
#include <charconv>

#include "reading/script_text.h"

namespace tvml {
namespace {

constexpr double kSecondsOfMinute = 60;

bool isBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\x3000';
}

// What is read aloud; the two units of a pair are one character.
std::size_t charactersOf(std::u16string_view speech) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < speech.size(); i += unitsOfCharacter(speech, i)) {
        count += isBlank(speech[i]) ? 0 : 1;
    }
    return count;
}

std::size_t wordsOf(std::u16string_view speech) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < speech.size(); ++i) {
        count += !isBlank(speech[i]) && (i == 0 || isBlank(speech[i - 1])) ? 1 : 0;
    }
    return count;
}

// A description may write any text as a model's speed.
double speedOf(std::u16string_view text) {
    const std::string digits(text.begin(), text.end());
    double speed = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), speed);
    return speed > 0 ? speed : 1;
}

void add(Speaking& sum, const Speaking& part) {
    sum.speeches += part.speeches;
    sum.characters += part.characters;
    sum.seconds += part.seconds;
}

} // namespace

// The languages are told apart as the filter does when it splits talk.
double speakingSeconds(std::u16string_view speech, std::u16string_view speed) {
    const double minutes =
        isAsciiText(speech)
            ? static_cast<double>(wordsOf(speech)) / kEnglishWordsPerMinute
            : static_cast<double>(charactersOf(speech)) / kJapaneseCharactersPerMinute;
    return minutes * kSecondsOfMinute / speedOf(speed);
}

Speaking ScriptStatistics::total() const {
    Speaking sum;
    for (const auto& [letter, speaker] : speakers) {
        add(sum, speaker);
    }
    return sum;
}

void ScriptStatistics::lineConverted(const ScriptLine& line, const LineOutcome& outcome) {
    countLine(line);
    countTaker(line);
    countSpeech(outcome);
    noteFile(line, outcome.number);
}

void ScriptStatistics::countLine(const ScriptLine& line) {
    ++lines;
    emptyLines += line.kind == LineKind::empty ? 1 : 0;
    tagLines += line.tag() != nullptr ? 1 : 0;
    commandLines += line.command() != nullptr ? 1 : 0;
    talkLines += line.talk() != nullptr ? 1 : 0;
}

void ScriptStatistics::countTaker(const ScriptLine& line) {
    const TakenBy by = line.takenBy();
    const std::u16string_view name = line.takenName();
    if (by == TakenBy::nothing) {
        withoutEffect += line.tag() != nullptr || line.command() != nullptr ? 1 : 0;
        return;
    }
    // The names of rows that an argument follows end with a blank.
    ++commands[{by, std::u16string(name.substr(0, name.find_last_not_of(u' ') + 1))}];
    if (by == TakenBy::staging && (name == u"offline" || name == u"online")) {
        isOffline_ = name == u"offline";
    }
}

// A long speech comes in pieces.
void ScriptStatistics::countSpeech(const LineOutcome& outcome) {
    bool counted = false;
    for (const SpokenPiece& piece : outcome.spoken) {
        const std::size_t characters = charactersOf(piece.speech);
        if (characters == 0) {
            continue; // a caption alone
        }
        Speaking& speaker = isOffline_ ? offline : speakers[piece.letter];
        add(speaker, {counted ? 0U : 1U, characters, speakingSeconds(piece.speech, piece.speed)});
        counted = true;
    }
}

void ScriptStatistics::noteFile(const ScriptLine& line, std::int32_t number) {
    const ScriptLine::NamedFile file = line.file();
    if (file.use == FileUse::none) {
        return;
    }
    const auto [known, isNew] =
        fileAt_.emplace(std::pair(file.use, std::u16string(file.name)), files.size());
    if (isNew) {
        files.push_back({file.use, std::u16string(file.name), {}});
    }
    files[known->second].lines.push_back(number);
}

} // namespace tvml
