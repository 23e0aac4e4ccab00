// Entries: wordKey, patternOf, meantNumber, MeaningIndex, MeantWords.
#include "diagnostics/meant_words.h"

#include <algorithm>

#include "diagnostics/suggestions.h"
#include "reading/marker_spec.h"

namespace tvml {
namespace {

// ---- the table is whole

constexpr bool isCommandName(std::u16string_view name) {
    for (const CommandSpec& row : kCommands) {
        if (row.name == name && row.action != Action::ignore) {
            return true;
        }
    }
    return false;
}

constexpr bool isAdverbName(std::u16string_view name) {
    for (const AdverbRow& row : kAdverbRows) {
        if (row.english == name) {
            return true;
        }
    }
    return false;
}

constexpr bool isMarkerName(std::u16string_view name) {
    for (const MarkerSpec& row : kMarkers) {
        if (row.name == name) {
            return true;
        }
    }
    return false;
}

constexpr bool isColourName(std::u16string_view name) {
    for (const ColourSpec& row : kColours) {
        if (row.word.name() == name) {
            return true;
        }
    }
    return false;
}

constexpr bool isVoiceName(std::u16string_view name) {
    for (const CommandSpec& row : kCommands) {
        if (row.taker == Taker::voice && row.name == name) {
            return true;
        }
    }
    return false;
}

constexpr std::u16string_view kComma = u", ";

constexpr bool isCommandTarget(std::u16string_view target) {
    const std::size_t comma = target.find(kComma);
    return isCommandName(target.substr(0, comma)) &&
           (comma == target.npos || isAdverbName(target.substr(comma + kComma.size())));
}

constexpr bool isTarget(Sense sense, std::u16string_view target) {
    switch (sense) {
    case Sense::command:
        return isCommandTarget(target);
    case Sense::adverb:
        return isAdverbName(target);
    case Sense::marker:
        return isMarkerName(target);
    case Sense::colour:
        return isColourName(target);
    case Sense::voice:
        return isVoiceName(target);
    case Sense::speaker:
        return target.size() == 1;
    case Sense::element: // the list of elements is made when it is wanted
        return !target.empty();
    case Sense::nothing:
        return target.starts_with(u'~');
    }
    return false;
}

// Rows that stand together and mean the same are looked up once.
constexpr bool everyTargetExists() {
    std::u16string_view last;
    Sense sense = Sense::nothing;
    for (const MeaningRow& row : kMeanings) {
        if ((row.means != last || row.sense != sense) && !isTarget(row.sense, row.means)) {
            return false;
        }
        last = row.means;
        sense = row.sense;
    }
    return true;
}
static_assert(everyTargetExists(), "a row means something that there is");

// ---- numbers

constexpr std::u16string_view kKanjiDigits = u"〇一二三四五六七八九";

struct NumberWord {
    std::u16string_view word;
    unsigned value;
};
// clang-format off
constexpr std::array<NumberWord, 31> kNumberWords{{
    {u"zero", 0}, {u"one", 1}, {u"two", 2}, {u"three", 3}, {u"four", 4}, {u"five", 5},
    {u"six", 6}, {u"seven", 7}, {u"eight", 8}, {u"nine", 9}, {u"ten", 10}, {u"eleven", 11},
    {u"twelve", 12}, {u"thirteen", 13}, {u"fourteen", 14}, {u"fifteen", 15}, {u"sixteen", 16},
    {u"seventeen", 17}, {u"eighteen", 18}, {u"nineteen", 19}, {u"twenty", 20}, {u"thirty", 30},
    {u"forty", 40}, {u"fifty", 50}, {u"sixty", 60}, {u"seventy", 70}, {u"eighty", 80},
    {u"ninety", 90}, {u"a", 1}, {u"an", 1}, {u"once", 1},
}};
// clang-format on

std::u16string digitsOf(unsigned value) {
    const std::string text = std::to_string(value);
    return {text.begin(), text.end()};
}

const NumberWord* numberWord(std::u16string_view text) {
    const auto found =
        std::ranges::find_if(kNumberWords, [&](const NumberWord& row) { return row.word == text; });
    return found == kNumberWords.end() ? nullptr : &*found;
}

// "two", "twenty-five".
std::u16string englishNumber(std::u16string_view text) {
    if (text == u"half") {
        return u"0.5";
    }
    const std::size_t hyphen = std::min(text.find_first_of(u"- "), text.size());
    const NumberWord* first = numberWord(text.substr(0, hyphen));
    if (first == nullptr || hyphen == text.size()) {
        return first == nullptr ? std::u16string() : digitsOf(first->value);
    }
    const NumberWord* second = numberWord(text.substr(hyphen + 1));
    const bool isSum = second != nullptr && first->value >= 20 && second->value - 1 < 9;
    return isSum ? digitsOf(first->value + second->value) : std::u16string();
}

// "三", "十二", "三十", "九十九", and digit by digit "二五"; empty for others.
std::u16string kanjiWhole(std::u16string_view text) {
    const std::size_t ten = text.find(u'十');
    std::u16string digits;
    if (ten == text.npos) {
        for (const char16_t unit : text) {
            const std::size_t digit = kKanjiDigits.find(unit);
            if (digit == kKanjiDigits.npos) {
                return {};
            }
            digits += static_cast<char16_t>(u'0' + digit);
        }
        return digits;
    }
    const std::u16string tens = ten == 0 ? u"1" : kanjiWhole(text.substr(0, ten));
    const std::u16string ones = ten + 1 == text.size() ? u"0" : kanjiWhole(text.substr(ten + 1));
    return tens.size() == 1 && ones.size() == 1 ? tens + ones : std::u16string();
}

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

bool isPoint(char16_t unit) {
    return unit == u'.' || unit == u'・' || unit == u'点';
}

std::u16string wholeNumber(std::u16string_view text) {
    return !text.empty() && std::ranges::all_of(text, isDigit) ? std::u16string(text)
                                                               : kanjiWhole(text);
}

// Digits without zeros in front.
std::u16string withoutZeros(const std::u16string& digits) {
    return digits.substr(std::min(digits.find_first_not_of(u'0'), digits.size() - 1));
}

// ---- patterns

bool isLatinUnit(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           (unit >= u'ａ' && unit <= u'ｚ') || (unit >= u'Ａ' && unit <= u'Ｚ');
}

bool isNumberUnit(char16_t unit) {
    return isDigit(unit) || (unit >= u'０' && unit <= u'９') || unit == u'十' ||
           kKanjiDigits.find(unit) != kKanjiDigits.npos;
}

bool isInNumber(char16_t unit) {
    return isNumberUnit(unit) || isPoint(unit) || unit == u'．';
}

std::size_t runLength(std::u16string_view text, bool (*holds)(char16_t)) {
    const auto end = std::ranges::find_if_not(text, holds);
    return static_cast<std::size_t>(end - text.begin());
}

class PatternMaker {
public:
    PatternMaker(std::u16string_view text, bool withNumbers)
        : rest_(text), withNumbers_(withNumbers) {}

    WordPattern run() {
        std::u16string made;
        while (!rest_.empty()) {
            const std::size_t latin = latinLength();
            const std::size_t digits =
                isNumberUnit(rest_.front()) ? runLength(rest_, isInNumber) : 0;
            if (latin > 0) {
                made.append(word(rest_.substr(0, latin)));
            } else if (digits > 0) {
                made.append(number(rest_.substr(0, digits)));
            } else {
                made += rest_.front();
            }
            rest_.remove_prefix(std::max<std::size_t>({latin, digits, 1}));
        }
        result_.key = wordKey(made);
        return std::move(result_);
    }

private:
    // A word, or a number of two words.
    std::size_t latinLength() const {
        const std::size_t first = runLength(rest_, isLatinUnit);
        if (first == 0 || first == rest_.size() || rest_[first] != u'-') {
            return first;
        }
        const std::size_t both = first + 1 + runLength(rest_.substr(first + 1), isLatinUnit);
        return meantNumber(rest_.substr(0, both)).empty() ? first : both;
    }

    std::u16string word(std::u16string_view latin) {
        if (latin.size() <= 2 && result_.letters.size() + latin.size() <= 2 && isName(latin)) {
            result_.letters.append(latin);
            return std::u16string(latin.size(), u'@');
        }
        // "a" is no number here: it is an article or a character.
        return latin.size() > 1 ? number(latin) : std::u16string(latin);
    }

    // Pairs are capitals: "on", "at", "of" and "up" are words.
    static bool isName(std::u16string_view latin) {
        return latin.size() == 1 || std::ranges::all_of(latin, [](char16_t unit) {
                   return (unit >= u'A' && unit <= u'Z') || (unit >= u'Ａ' && unit <= u'Ｚ');
               });
    }

    std::u16string number(std::u16string_view text) {
        const std::u16string value =
            withNumbers_ && result_.number.empty() ? meantNumber(text) : std::u16string();
        if (value.empty()) {
            return std::u16string(text);
        }
        result_.number = value;
        return u"#";
    }

    std::u16string_view rest_;
    const bool withNumbers_;
    WordPattern result_;
};

// ---- what a word loses before it is looked up

// Endings of a folded text that do not change what is meant; hiragana is folded
// to katakana.
constexpr std::array<std::u16string_view, 30> kEndings{u"ヲシテクダサイ",
                                                       u"シテクダサイ",
                                                       u"テクダサイ",
                                                       u"クダサイ",
                                                       u"シナガラ",
                                                       u"ナガラ",
                                                       u"ヲシマス",
                                                       u"ヲスル",
                                                       u"ヲシテ",
                                                       u"シマス",
                                                       u"シタ",
                                                       u"サセル",
                                                       u"スル",
                                                       u"シテ",
                                                       u"ノポーズ",
                                                       u"デス",
                                                       u"ニ",
                                                       u"ト",
                                                       u"デ",
                                                       u"ヘ",
                                                       u"ヲ",
                                                       u"。",
                                                       u"！",
                                                       u".",
                                                       u"!",
                                                       u"please",
                                                       u"s",
                                                       u"ing",
                                                       u"ed",
                                                       u"？"};
constexpr std::array<std::u16string_view, 5> kBeginnings{u"please", u"the", u"to", u"then",
                                                         u"カラダヲ"};

std::size_t indexOfSense(Sense sense) {
    return static_cast<std::size_t>(sense);
}

} // namespace

std::u16string wordKey(std::u16string_view text) {
    std::u16string key = foldedText(text);
    std::erase_if(key, [](char16_t unit) { return unit == u' ' || unit == u'\t' || unit == u'-'; });
    return key;
}

WordPattern patternOf(std::u16string_view text) {
    return PatternMaker(text, true).run();
}

WordPattern letterPatternOf(std::u16string_view text) {
    return PatternMaker(text, false).run();
}

std::u16string meantNumber(std::u16string_view text) {
    constexpr std::size_t kLongest = 12;
    if (text.size() > kLongest) {
        return {};
    }
    const std::u16string folded = foldedText(text);
    std::u16string_view rest = folded;
    const bool isMinus = rest.starts_with(u'-') || rest.starts_with(u'ー');
    rest.remove_prefix(isMinus ? 1 : 0);
    std::u16string value = englishNumber(rest);
    if (value.empty()) {
        const std::size_t point =
            static_cast<std::size_t>(std::ranges::find_if(rest, isPoint) - rest.begin());
        value = wholeNumber(rest.substr(0, point));
        if (value.empty()) {
            return {};
        }
        value = withoutZeros(value);
        if (point < rest.size()) {
            const std::u16string part = wholeNumber(rest.substr(point + 1));
            if (part.empty()) {
                return {};
            }
            value.append(u".").append(part);
        }
    }
    return (isMinus ? u"-" : u"") + value;
}

const MeaningIndex& MeaningIndex::instance() {
    static const MeaningIndex kIndex;
    return kIndex;
}

MeaningIndex::MeaningIndex() {
    for (const MeaningRow& row : kMeanings) {
        const std::u16string key = wordKey(row.word);
        bySense_[indexOfSense(row.sense)][key].push_back(row.means);
        all_[key] = true;
    }
}

const MeaningIndex::Targets& MeaningIndex::find(Sense sense, const std::u16string& key) const {
    static const Targets kNone_;
    const auto& rows = bySense_[indexOfSense(sense)];
    const auto found = rows.find(key);
    return found == rows.end() ? kNone_ : found->second;
}

MeantWords::MeantWords(const KeywordTable& words) {
    addCommands(words);
    addOthers(words);
}

void MeantWords::add(Sense sense, std::u16string_view before, std::u16string_view word,
                     std::u16string_view target) {
    if (!word.empty()) {
        names_[indexOfSense(sense)].emplace(std::u16string(before) + wordKey(word), target);
    }
}

void MeantWords::addCommands(const KeywordTable& words) {
    for (const CommandSpec& row : kCommands) {
        const bool isVoice = row.taker == Taker::voice;
        if (row.action == Action::ignore && !isVoice) {
            continue;
        }
        const std::u16string_view letters =
            std::u16string_view(u"@@").substr(0, lettersBefore(row.match));
        const std::u16string_view before = row.match == Match::number ? u"#" : letters;
        const Sense sense = isVoice ? Sense::voice : Sense::command;
        for (const RowWord& word : row.words) {
            add(sense, before, words[word.key].textOrEmpty(), row.name);
        }
        const std::u16string unit(unitOf(row.arguments));
        add(sense, {},
            std::u16string(row.name) +
                (unit.empty() ? std::u16string(letters) : u"#" + unit + u"s"),
            row.name);
    }
}

void MeantWords::addOthers(const KeywordTable& words) {
    for (const AdverbRow& row : kAdverbRows) {
        add(Sense::adverb, {}, words[row.key].textOrEmpty(), row.english);
        add(Sense::adverb, {}, row.english, row.english);
    }
    for (const MarkerSpec& row : kMarkers) {
        for (const MarkerSpelling& spelling : row.spellings) {
            add(Sense::marker, {},
                spelling.english.empty() ? words[spelling.word].textOrEmpty() : spelling.english,
                row.name);
        }
    }
    for (const ColourSpec& row : kColours) {
        add(Sense::colour, {}, words[row.word].textOrEmpty(), row.word.name());
        add(Sense::colour, {}, row.word.name(), row.word.name());
    }
}

bool MeantWords::look(Sense sense, const std::u16string& key, Meant& meant) const {
    const MeaningIndex& table = MeaningIndex::instance();
    const Names& own = names_[indexOfSense(sense)];
    if (const auto found = own.find(key); found != own.end()) {
        meant.targets = {found->second};
    } else {
        meant.targets = table.find(sense, key);
    }
    meant.known = meant.known || !meant.targets.empty() || table.knows(key);
    return !meant.targets.empty();
}

bool MeantWords::lookShorter(Sense sense, const std::u16string& key, Meant& meant) const {
    const auto isLong = [&](std::u16string_view part) { return key.size() > part.size() + 1; };
    return std::ranges::any_of(kEndings,
                               [&](std::u16string_view ending) {
                                   return isLong(ending) && key.ends_with(ending) &&
                                          look(sense, key.substr(0, key.size() - ending.size()),
                                               meant);
                               }) ||
           std::ranges::any_of(kBeginnings, [&](std::u16string_view beginning) {
               return isLong(beginning) && key.starts_with(beginning) &&
                      look(sense, key.substr(beginning.size()), meant);
           });
}

MeantWords::Meant MeantWords::find(Sense sense, std::u16string_view text) const {
    Meant meant;
    if (text.size() > ClosestNames::kLongestGiven) {
        return meant;
    }
    meant.pattern = patternOf(text);
    const std::array<std::u16string, 3> keys{wordKey(text), meant.pattern.key,
                                             letterPatternOf(text).key};
    std::ranges::any_of(keys, [&](const std::u16string& key) { return look(sense, key, meant); }) ||
        std::ranges::any_of(
            keys, [&](const std::u16string& key) { return lookShorter(sense, key, meant); });
    return meant;
}

} // namespace tvml
