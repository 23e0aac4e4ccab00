// Reading what was hardly written as a command. Entry: CommandMeanings::meantBy.
#include "diagnostics/meant_command.h"

#include <algorithm>
#include <array>

#include "diagnostics/everyday_words.h"
#include "diagnostics/meanings.h"
#include "diagnostics/suggestions.h"
#include "reading/command_spec.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

constexpr std::u16string_view kSigns =
    u" 　\t、，,・。．./／;；:：!！?？~～-―()（）[]「」『』“”\"*";

bool isLatin(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || unit == u'\'';
}
bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

std::size_t rowNamed(std::u16string_view name) {
    const auto row = std::find_if(kCommands.begin(), kCommands.end(),
                                  [&](const CommandSpec& each) { return each.name == name; });
    return static_cast<std::size_t>(row - kCommands.begin());
}

std::size_t adverbNamed(std::u16string_view name) {
    const auto row = std::find_if(kAdverbRows.begin(), kAdverbRows.end(),
                                  [&](const AdverbRow& each) { return each.english == name; });
    return static_cast<std::size_t>(row - kAdverbRows.begin());
}

constexpr std::u16string_view kKanjiDigits = u"〇一二三四五六七八九";

// 二十三 as 23, up to 99; empty for other texts. `units` is what it takes.
std::u16string kanjiNumber(std::u16string_view text, std::size_t& units) {
    int value = 0;
    int digit = -1;
    for (units = 0; units < text.size(); ++units) {
        const std::size_t at = kKanjiDigits.find(text[units]);
        if (at != kNone && digit < 0) {
            digit = static_cast<int>(at);
        } else if (text[units] == u'十' && value == 0) {
            value = (digit < 0 ? 1 : digit) * 10;
            digit = -1;
        } else {
            break;
        }
    }
    return units == 0 ? std::u16string() : decimalText(value + std::max(digit, 0));
}

std::u16string wideDigits(std::u16string_view digits) {
    std::u16string wide(digits);
    for (char16_t& unit : wide) {
        unit = isDigit(unit) ? static_cast<char16_t>(unit - u'0' + u'０') : u'．';
    }
    return wide;
}

// The row with an argument that belongs to one without: "walk " to "walk".
struct Sibling {
    std::u16string_view plain;
    std::u16string_view counted; // with a number, letters
};
constexpr std::array<Sibling, 7> kSiblings{{
    {u"walk", u"walk "},
    {u"turn", u"turn "},
    {u"wait", u"wait "},
    {u"upshot", u"upshot of "},
    {u"twoshot", u"twoshot of "},
    {u"trackshot", u"trackshot on "},
    {u"look at fellow", u"look at "},
}};

bool takesNumber(const CommandSpec& row) {
    return row.match == Match::number;
}
bool takesLetters(const CommandSpec& row) {
    return row.match == Match::letter || row.match == Match::twoLetters;
}

// Rows that are a word alone, and mean a command alone.
bool isPlainRow(const MeaningRow& row, Sense sense) {
    return row.sense == sense && row.word.find_first_of(u"@#") == kNone &&
           row.means.find(u',') == kNone;
}

} // namespace

struct CommandMeanings::Parsed {
    const CommandSpec* row = nullptr;
    std::u16string_view pose;
    std::vector<std::size_t> adverbs; // rows, in the order of the text
    std::u16string number;            // ASCII digits
    std::u16string_view unit;
    std::u16string letters; // as written
    bool adverbFirst = false;

    bool hasCommand() const { return row != nullptr || !pose.empty(); }
};

CommandMeanings::CommandMeanings(const KeywordTable& words, const StagingDescription& staging)
    : words_(words) {
    addCommands();
    addAdverbs();
    addPoses(staging);
    for (const EverydayWord& word : kNumberWords) {
        add(word.word, Kind::number, 0, word.meant);
    }
    for (const EverydayWord& word : kUnitWords) {
        add(word.word, Kind::unit, 0, word.meant);
    }
    for (const std::u16string_view filler : kFillers) {
        add(filler, Kind::filler);
    }
}

void CommandMeanings::add(std::u16string_view spelling, Kind kind, std::size_t row,
                          std::u16string_view text) {
    std::u16string folded = foldedText(trimScriptText(spelling, words_));
    if (folded.empty()) {
        return;
    }
    std::vector<Sense>& senses = senses_[folded.front()];
    const bool known = std::any_of(senses.begin(), senses.end(),
                                   [&](const Sense& sense) { return sense.spelling == folded; });
    if (!known) { // what is loaded comes before what people write besides
        senses.push_back({std::move(folded), kind, row, text});
    }
}

void CommandMeanings::addCommands() {
    for (std::size_t row = 0; row < kCommands.size(); ++row) {
        const CommandSpec& command = kCommands[row];
        const bool isPlain = command.taker == Taker::character || command.taker == Taker::staging ||
                             command.taker == Taker::setting;
        if (!isPlain || followsColon(command.arguments)) {
            continue; // what names something behind a colon is told by its name
        }
        add(command.name, Kind::command, row);
        for (const RowWord& word : command.words) {
            add(words_[word.key].textOrEmpty(), Kind::command, row);
        }
    }
    for (const MeaningRow& row : kMeanings) {
        if (isPlainRow(row, tvml::Sense::command) &&
            !followsColon(kCommands[rowNamed(row.means)].arguments)) {
            add(row.word, Kind::command, rowNamed(row.means));
        }
    }
}

void CommandMeanings::addAdverbs() {
    for (std::size_t row = 0; row < kAdverbRows.size(); ++row) {
        add(kAdverbRows[row].english, Kind::adverb, row);
        add(words_[kAdverbRows[row].key].textOrEmpty(), Kind::adverb, row);
    }
    for (const MeaningRow& row : kMeanings) {
        if (isPlainRow(row, tvml::Sense::adverb)) {
            add(row.word, Kind::adverb, adverbNamed(row.means));
        }
    }
}

void CommandMeanings::addPoses(const StagingDescription& staging) {
    for (const auto& [japanese, english] : staging.poseNames) {
        add(japanese, Kind::pose, 0, japanese);
        add(english, Kind::pose, 0, english);
    }
}

const CommandMeanings::Sense* CommandMeanings::longestAt(std::u16string_view folded,
                                                         std::size_t at) const {
    const auto senses = senses_.find(folded[at]);
    const Sense* longest = nullptr;
    if (senses == senses_.end()) {
        return longest;
    }
    for (const Sense& sense : senses->second) {
        const std::size_t end = at + sense.spelling.size();
        const bool fits = folded.substr(at).starts_with(sense.spelling) &&
                          (longest == nullptr || sense.spelling.size() > longest->spelling.size());
        // English words end where their letters end.
        const bool cut =
            fits && end < folded.size() && isLatin(folded[end - 1]) && isLatin(folded[end]);
        longest = fits && !cut ? &sense : longest;
    }
    return longest;
}

std::size_t CommandMeanings::takeNumber(std::u16string_view folded, std::size_t at,
                                        Parsed& parsed) const {
    std::size_t end = at;
    std::u16string digits;
    while (end < folded.size() &&
           (isDigit(folded[end]) || ((folded[end] == u'.' || folded[end] == u',') &&
                                     end + 1 < folded.size() && isDigit(folded[end + 1])))) {
        digits += isDigit(folded[end]) ? folded[end] : u'.';
        ++end;
    }
    if (digits.empty()) {
        std::size_t units = 0;
        digits = kanjiNumber(folded.substr(at), units);
        end = at + units;
    }
    if (digits.empty() || !parsed.number.empty()) {
        return 0;
    }
    const std::size_t first = std::min(digits.find_first_not_of(u'0'), digits.size() - 1);
    const std::u16string_view rest = std::u16string_view(digits).substr(first);
    parsed.number.assign(rest.front() == u'.' ? 1 : 0, u'0');
    parsed.number.append(rest);
    return end - at;
}

// A letter that stands alone, or two side by side; an English "a" is an article.
std::size_t CommandMeanings::takeLetter(std::u16string_view inner, std::size_t at,
                                        Parsed& parsed) const {
    const auto isLetter = [&](std::size_t i) {
        return i < inner.size() && words_.letterOf(inner[i]) != 0;
    };
    std::size_t units = 0;
    while (isLetter(at + units)) {
        ++units;
    }
    const bool isArticle = units == 1 && inner[at] == u'a';
    if (units == 0 || units > 2 || isArticle || parsed.letters.size() + units > 2) {
        return 0;
    }
    for (std::size_t i = at; i < at + units; ++i) {
        parsed.letters.push_back(inner[i]);
    }
    return units;
}

bool CommandMeanings::take(const Sense& sense, Parsed& parsed) const {
    switch (sense.kind) {
    case Kind::command:
        if (parsed.hasCommand()) {
            return false;
        }
        parsed.row = &kCommands[sense.row];
        parsed.adverbFirst = !parsed.adverbs.empty();
        return true;
    case Kind::pose:
        if (parsed.hasCommand()) {
            return false;
        }
        parsed.pose = sense.text;
        parsed.adverbFirst = !parsed.adverbs.empty();
        return true;
    case Kind::adverb: {
        const auto same = [&](std::size_t row) {
            return kAdverbRows[row].field == kAdverbRows[sense.row].field;
        };
        if (std::any_of(parsed.adverbs.begin(), parsed.adverbs.end(), same)) {
            return false; // two speeds say nothing
        }
        parsed.adverbs.push_back(sense.row);
        return true;
    }
    case Kind::number:
        if (!parsed.number.empty()) {
            return false;
        }
        parsed.number = sense.text;
        return true;
    case Kind::unit:
        parsed.unit = sense.text;
        return !parsed.number.empty();
    case Kind::letters:
    case Kind::filler:
        return true;
    }
    return false;
}

// Every word must have a meaning, or nothing is known of what is meant.
bool CommandMeanings::parse(std::u16string_view inner, Parsed& parsed) const {
    const std::u16string folded = foldedText(inner);
    if (folded.size() != inner.size()) { // half-width kana: places are those of the folded text
        inner = folded;
    }
    for (std::size_t at = 0; at < folded.size();) {
        const Sense* const sense = longestAt(folded, at);
        const bool isWord = sense != nullptr && sense->kind != Kind::filler;
        if (isWord) {
            if (!take(*sense, parsed)) {
                return false;
            }
            at += sense->spelling.size();
        } else if (const std::size_t digits = takeNumber(folded, at, parsed)) {
            at += digits;
        } else if (const std::size_t letters = takeLetter(inner, at, parsed)) {
            at += letters;
        } else if (sense != nullptr) {
            at += sense->spelling.size();
        } else if (kSigns.find(inner[at]) != kNone) {
            ++at;
        } else {
            return false;
        }
    }
    return true;
}

// The command with its letters or its number; empty when they do not go together.
std::u16string CommandMeanings::commandText(const Parsed& parsed, bool english) const {
    if (!parsed.pose.empty()) {
        const bool bare = parsed.number.empty() && parsed.letters.empty();
        return bare ? std::u16string(parsed.pose) : std::u16string();
    }
    const CommandSpec* row = parsed.row;
    if (!parsed.number.empty() || !parsed.letters.empty()) {
        for (const Sibling& sibling : kSiblings) {
            row = sibling.plain == row->name ? &kCommands[rowNamed(sibling.counted)] : row;
        }
    }
    const std::size_t letters = lettersBefore(row->match);
    if (takesNumber(*row) == parsed.number.empty() || parsed.letters.size() != letters ||
        (!parsed.unit.empty() && parsed.unit != unitOf(row->arguments))) {
        return {};
    }
    const std::u16string_view word =
        row->words.size() > 0 ? words_[row->words.begin()->key].textOrEmpty() : u"";
    if (!english && !word.empty()) {
        std::u16string text = takesNumber(*row) ? wideDigits(parsed.number) : parsed.letters;
        for (char16_t& unit : text) {
            unit = unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'Ａ') : unit;
        }
        return text.append(word);
    }
    std::u16string text(row->name);
    if (takesNumber(*row)) {
        return text.append(parsed.number).append(u" ").append(unitOf(row->arguments)).append(u"s");
    }
    return takesLetters(*row) ? text.append(parsed.letters) : text;
}

// "zoom in" means a shot of somebody where the programme has several.
void CommandMeanings::addMissingLetters(Parsed& parsed, char16_t actor,
                                        char16_t lastCharacter) const {
    if (parsed.row == nullptr || !parsed.letters.empty()) {
        return;
    }
    const Condition condition = parsed.row->condition;
    const bool fits = condition == Condition::oneCharacter    ? lastCharacter == u'A'
                      : condition == Condition::twoCharacters ? lastCharacter == u'B'
                                                              : !takesLetters(*parsed.row);
    if (fits || lastCharacter == u'A') {
        return;
    }
    const char16_t other = actor == u'A' ? u'B' : u'A';
    const bool isLook =
        parsed.row->action == Action::lookAtFellow || parsed.row->action == Action::lookAt;
    const bool isPair = parsed.row->action == Action::twoshot;
    parsed.letters.push_back(isLook ? other : u'A');
    parsed.letters.append(isPair ? 1 : 0, u'B');
}

MeantCommand CommandMeanings::meantBy(std::u16string_view inner, char16_t actor,
                                      char16_t lastCharacter) const {
    Parsed parsed;
    if (inner.size() > kLongestMeant || !parse(inner, parsed) || !parsed.hasCommand()) {
        return {};
    }
    const bool named = !parsed.letters.empty();
    addMissingLetters(parsed, actor, lastCharacter);
    const bool guessed = !named && !parsed.letters.empty();
    for (const char16_t unit : parsed.letters) {
        if (words_.letterOf(unit) > lastCharacter) {
            return {};
        }
    }
    const bool english = looksEnglish(inner);
    MeantCommand meant{commandText(parsed, english), parsed.adverbFirst, guessed};
    for (const std::size_t row : parsed.adverbs) {
        meant.text.append(meant.text.empty() ? std::u16string() : adverbText(row, english));
    }
    if (meant.text == inner) {
        meant.text.clear();
    }
    return meant;
}

// With the separator in front.
std::u16string CommandMeanings::adverbText(std::size_t row, bool english) const {
    const std::u16string_view word = words_[kAdverbRows[row].key].textOrEmpty();
    std::u16string text(english ? u", " : words_[u"touten2"].textOrEmpty());
    return text.append(english || word.empty() ? kAdverbRows[row].english : word);
}

std::u16string CommandMeanings::adverbsMeantBy(std::u16string_view item) const {
    Parsed parsed;
    if (item.size() > kLongestMeant || !parse(item, parsed) || parsed.hasCommand() ||
        parsed.adverbs.empty() || !parsed.number.empty() || !parsed.letters.empty()) {
        return {};
    }
    const bool english = looksEnglish(item);
    std::u16string text;
    for (const std::size_t row : parsed.adverbs) {
        text.append(adverbText(row, english));
    }
    text.erase(0, english ? 2 : words_[u"touten2"].size());
    return text == item ? std::u16string() : text;
}

} // namespace tvml
