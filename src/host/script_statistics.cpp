// Counting while a script is converted. Entry: ScriptStatistics.
#include "host/script_statistics.h"

#include <algorithm>
#include <charconv>

#include "diagnostics/text_width.h"
#include "reading/script_text.h"

namespace tvml::host {
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

void ScriptStatistics::finishLine() {
    withoutEffect += waitsForTaker_ ? 1 : 0;
    waitsForTaker_ = false;
    speaks_ = false;
}

void ScriptStatistics::lineStarted(std::int32_t number, std::u16string_view) {
    finishLine();
    number_ = number;
    ++lines;
}

void ScriptStatistics::lineClassified(LineKind kind, std::u16string_view, bool isCommand) {
    waitsForTaker_ = isCommand || kind == LineKind::tag;
    switch (kind) {
    case LineKind::empty:
        ++emptyLines;
        return;
    case LineKind::tag:
        ++tagLines;
        return;
    case LineKind::character:
    case LineKind::other:
        ++(isCommand ? commandLines : talkLines);
        return;
    }
}

void ScriptStatistics::taken(TakenBy by, std::u16string_view name) {
    waitsForTaker_ = false;
    // The names of rows that an argument follows end with a blank.
    ++commands[{by, std::u16string(name.substr(0, name.find_last_not_of(u' ') + 1))}];
    if (by == TakenBy::stagingCommand && (name == u"offline" || name == u"online")) {
        isOffline_ = name == u"offline";
    }
}

// A long speech comes in pieces.
void ScriptStatistics::spoken(char16_t letter, std::u16string_view speech,
                              std::u16string_view speed) {
    const std::size_t characters = charactersOf(speech);
    if (characters == 0) {
        return; // a caption alone
    }
    Speaking& speaker = isOffline_ ? offline : speakers[letter];
    add(speaker, {speaks_ ? 0U : 1U, characters, speakingSeconds(speech, speed)});
    speaks_ = true;
}

void ScriptStatistics::fileNamed(FileUse use, std::u16string_view file) {
    const auto known = std::ranges::find_if(
        files, [&](const NamedFile& each) { return each.use == use && each.name == file; });
    if (known != files.end()) {
        known->lines.push_back(number_);
    } else {
        files.push_back({use, std::u16string(file), {number_}});
    }
}

void ScriptStatistics::finished(const TvmlScript&) {
    finishLine();
}

} // namespace tvml::host
