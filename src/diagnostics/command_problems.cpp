// Why a command line did nothing, or not what it says. Entry: checkCommandLine.
#include "diagnostics/script_problems.h"

#include <algorithm>
#include <array>

#include "diagnostics/suggestions.h"
#include "generation/command_names.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

// clang-format off
// What a command needs that is not always there.
struct ConditionRow {
    std::u16string_view command;
    std::u16string_view lacking;
};
constexpr std::array<ConditionRow, 14> kConditions{{
    {u"hide picture",       u"no sub picture is on screen"},
    {u"hide bg picture",    u"no background picture is on screen"},
    {u"hide right picture", u"no right picture is on screen"},
    {u"hide left picture",  u"no left picture is on screen"},
    {u"back to studio",     u"no main picture is on screen"},
    {u"left super off",     u"no left super is on screen"},
    {u"right super off",    u"no right super is on screen"},
    {u"upshot",             u"only a programme of one character has it; name the character"},
    {u"trackshot",          u"only a programme of one character has it; name the character"},
    {u"twoshot",            u"only a programme of two characters has it; name the two"},
    {u"twoshot of ",        u"the programme has one character"},
    {u"look at fellow",     u"only a programme of two characters has it; name the other one"},
    {u"look at ",           u"the programme has one character"},
    {u"look at picture",    u"no sub picture was shown, so the character just waits"},
}};

// Commands that are followed by a number and its unit.
struct CountRow {
    std::u16string_view command;
    std::u16string_view unit;
};
constexpr std::array<CountRow, 3> kCounts{{
    {u"walk ", u"step"}, {u"turn ", u"degree"}, {u"wait ", u"second"},
}};

// Shots that are recognised but that no command carries out.
constexpr std::array<std::u16string_view, 3> kUntakenShots{
    u"bustshot of ", u"waistshot of ", u"fullshot of "};
// clang-format on

// The rows whose names stand alone in no command line: voices have a command in
// front of them.
constexpr bool isVoiceRow(std::size_t row) {
    return row >= 82 && row < 109;
}
static_assert(kCommandRows[82].canonical == u"man_ja");
static_assert(kCommandRows[108].canonical == u"littlekid");

bool holds(std::span<const std::u16string_view> names, std::u16string_view canonical) {
    return std::find(names.begin(), names.end(), canonical) != names.end();
}

const std::vector<std::u16string_view>& studioNames() {
    static const std::vector<std::u16string_view> kNames = stagingCommandNames();
    return kNames;
}

const std::vector<std::u16string_view>& characterNames() {
    static const std::vector<std::u16string_view> kNames = characterCommandNames();
    return kNames;
}

bool isStudioName(std::u16string_view canonical) {
    return holds(studioNames(), canonical);
}

bool isCharacterName(std::u16string_view canonical) {
    return holds(characterNames(), canonical);
}

// The longest English name that begins `phrase`, or nothing.
std::u16string_view nameStarting(std::u16string_view phrase) {
    std::u16string_view longest;
    for (const auto* names : {&studioNames(), &characterNames()}) {
        for (const std::u16string_view name : *names) {
            if (phrase.starts_with(name) && name.size() > longest.size()) {
                longest = name;
            }
        }
    }
    return longest;
}

// A command's words: what stands before its first separator or colon.
std::u16string_view headOf(std::u16string_view inner, const KeywordTable& words) {
    const Word& colonWord = words[u"colon"];
    const std::size_t end =
        std::min({findSeparator(inner, words), inner.find(u':'), colonWord.findUnitsIn(inner)});
    return trimScriptText(inner.substr(0, end), words);
}

std::optional<LinePart> partIn(const LineFacts& facts, std::u16string_view part) {
    return LinePart{static_cast<std::size_t>(part.data() - facts.line.data()), part.size()};
}

// Whether the head is the whole word of its row, so that nobody could have
// meant anything else.
bool isWholeWord(const Recognition& recognition, std::u16string_view head,
                 const KeywordTable& words) {
    const Word& word = words[recognition.word->key];
    switch (recognition.row->match) {
    case Match::equals:
        return true;
    case Match::starts:
        return head.size() == word.size();
    case Match::letter:
        return head.size() == word.size() + 1;
    case Match::twoLetters:
        return head.size() == word.size() + 2;
    case Match::number:
        return head.ends_with(word.textOrEmpty());
    }
    return false;
}

CommandOwner ownerOf(std::u16string_view canonical) {
    return isStudioName(canonical)      ? CommandOwner::studio
           : isCharacterName(canonical) ? CommandOwner::character
                                        : CommandOwner::none;
}

// ---- suggestions

// "look at B" for a phrase about B, "walk 3 steps" for one with a 3.
std::u16string spelledOut(std::u16string_view name, std::u16string_view phrase) {
    std::u16string text(name);
    if (!name.ends_with(u' ')) {
        return text;
    }
    for (const CountRow& row : kCounts) {
        if (row.command == name) {
            const std::size_t digit = phrase.find_first_of(u"0123456789");
            const std::u16string_view rest = dropUnits(phrase, std::min(digit, phrase.size()));
            const std::u16string_view number =
                rest.substr(0, rest.find_first_not_of(u"0123456789."));
            text.append(number.empty() ? u"2" : number);
            return text.append(u" ").append(row.unit).append(u"s");
        }
    }
    const std::size_t blank = phrase.rfind(u' ');
    const std::u16string_view last = phrase.substr(blank == kNone ? 0 : blank + 1);
    const std::u16string_view letters = name == u"twoshot of " ? u"AB" : u"A";
    return text.append(last.size() == letters.size() ? last : letters);
}

void offerEnglish(const ScriptChecks& checks, std::u16string_view head, bool withStudio,
                  ClosestNames& closest) {
    for (const std::u16string_view name : characterNames()) {
        closest.offer(spelledOut(name, head));
    }
    if (withStudio) {
        for (const std::u16string_view name : studioNames()) {
            closest.offer(spelledOut(name, head));
        }
    }
    for (const auto& [japanese, english] : checks.staging->poseNames) {
        closest.offer(english);
    }
}

// A row's word with the letters or the number of the head before it.
std::u16string rowText(const CommandRow& row, std::u16string_view word, std::u16string_view head,
                       const KeywordTable& words) {
    std::size_t units = row.match == Match::letter ? 1 : row.match == Match::twoLetters ? 2 : 0;
    if (row.match == Match::number) {
        while (units < head.size() && !parseNumber(head.substr(0, units + 1), words).empty()) {
            ++units;
        }
    }
    std::u16string text(head.substr(0, std::min(units, head.size())));
    const bool areLetters =
        std::all_of(text.begin(), text.end(), [&](char16_t unit) { return words.isLetter(unit); });
    if (row.match != Match::number && !areLetters) {
        text.assign(u"ＡＢ", units);
    }
    return text.append(word);
}

void offerWords(const ScriptChecks& checks, std::u16string_view head, bool withStudio,
                ClosestNames& closest) {
    for (std::size_t i = 0; i < kCommandRows.size(); ++i) {
        const CommandRow& row = kCommandRows[i];
        if (isVoiceRow(i) || holds(kUntakenShots, row.canonical) ||
            (!withStudio && isStudioName(row.canonical))) {
            continue;
        }
        for (const RowWord& word : row.words) {
            closest.offer(rowText(row, checks.words[word.key].textOrEmpty(), head, checks.words));
        }
    }
    for (const auto& [japanese, english] : checks.staging->poseNames) {
        closest.offer(japanese);
    }
}

std::vector<std::u16string> closestCommands(ScriptChecks& checks, const LineFacts& facts,
                                            std::u16string_view head) {
    if (--checks.suggestionsLeft < 0) {
        return {};
    }
    ClosestNames closest(head);
    const bool withStudio = facts.speaker == 0;
    if (looksEnglish(head)) {
        offerEnglish(checks, head, withStudio, closest);
    } else {
        offerWords(checks, head, withStudio, closest);
    }
    return closest.take();
}

std::vector<std::u16string> closestAdverbs(const ScriptChecks& checks, std::u16string_view item) {
    ClosestNames closest(item);
    for (const AdverbRow& row : kAdverbRows) {
        closest.offer(looksEnglish(item) ? row.english : checks.words[row.key].textOrEmpty());
    }
    return closest.take();
}

template <typename Map>
std::vector<std::u16string> closestKeys(std::u16string_view given,
                                        std::initializer_list<const Map*> maps) {
    ClosestNames closest(given);
    for (const Map* map : maps) {
        for (const auto& [name, value] : *map) {
            closest.offer(name);
        }
    }
    return closest.take();
}

std::vector<std::u16string> closestModels(const ScriptChecks& checks, char16_t letter,
                                          std::u16string_view given) {
    static const ModelsByName kNoModels;
    const auto modelsIn = [letter](const ModelTable& table) {
        const auto models = table.find(letter);
        return models == table.end() ? &kNoModels : &models->second;
    };
    return closestKeys<ModelsByName>(given, {modelsIn(checks.staging->modelsByJapaneseName),
                                             modelsIn(checks.staging->modelsByEnglishName)});
}

std::vector<std::u16string> closestVoices(const ScriptChecks& checks, std::u16string_view given) {
    ClosestNames closest(given);
    for (std::size_t i = 0; i < kCommandRows.size(); ++i) {
        if (isVoiceRow(i)) {
            const CommandRow& row = kCommandRows[i];
            closest.offer(looksEnglish(given) ? row.canonical
                                              : checks.words[row.words.begin()->key].textOrEmpty());
        }
    }
    return closest.take();
}

// ---- reasons

const Told* findTold(const LineFacts& facts, ScriptProblem what) {
    const auto found = std::find_if(facts.told.begin(), facts.told.end(),
                                    [what](const Told& told) { return told.what == what; });
    return found == facts.told.end() ? nullptr : &*found;
}

void tellCondition(ScriptChecks& checks, const LineFacts& facts, const Told& told) {
    for (const ConditionRow& row : kConditions) {
        if (row.command == told.detail) {
            const std::u16string_view head = headOf(facts.inner, checks.words);
            checks.add("S112", facts, partIn(facts, head), {head, row.lacking});
        }
    }
}

bool isLatin(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

// The word of a line that begins with the letter at `part`: "look at screen" has
// one that nobody meant as a letter. `part` becomes that of the word.
std::u16string_view wholeWord(const LineFacts& facts, std::optional<LinePart>& part,
                              std::u16string_view letter) {
    if (!part.has_value() || letter.size() != 1 || !isLatin(letter.front())) {
        return letter;
    }
    while (part->start + part->units < facts.line.size() &&
           isLatin(facts.line[part->start + part->units])) {
        ++part->units;
    }
    return facts.line.substr(part->start, part->units);
}

void tellReplacedLetter(ScriptChecks& checks, const LineFacts& facts, const Told& told) {
    // A pair of one letter may have become one by a replacement; that is told.
    const auto alsoTold = [&](bool pair) {
        return std::any_of(facts.told.begin(), facts.told.end(), [pair](const Told& other) {
            return other.what == ScriptProblem::letterReplaced && other.detail.empty() != pair;
        });
    };
    if (told.detail.empty()) {
        std::optional<LinePart> part = told.part;
        const std::u16string_view written = wholeWord(facts, part, told.where);
        checks.add("S109", facts, part,
                   {written, checks.characters(), alsoTold(true) ? u"A and B are" : u"A is"});
    } else if (!alsoTold(false)) {
        checks.add("S131", facts, told.part, {told.where});
    }
}

void tellNumber(ScriptChecks& checks, const LineFacts& facts, const Told& told) {
    const bool isNumber = !parseNumber(told.where, checks.words).empty();
    for (const CountRow& row : kCounts) {
        // A sound number that ends the command lacks its unit.
        if (isNumber && told.part.has_value() && told.where.front() != u'-' &&
            facts.inner.ends_with(told.where) && facts.inner.starts_with(row.command)) {
            checks.add("S107", facts, told.part, {row.unit});
            return;
        }
    }
    checks.add("S106", facts, told.part, {told.where});
}

std::optional<LinePart> firstUnit(std::optional<LinePart> part) {
    if (part.has_value()) {
        part->units = std::min<std::size_t>(part->units, 1);
    }
    return part;
}

// The first empty item in a list of adverbs, with the separator that ends it.
std::optional<LinePart> emptyItem(const LineFacts& facts, std::optional<LinePart> list,
                                  const KeywordTable& words) {
    if (!list.has_value()) {
        return list;
    }
    std::u16string_view rest = facts.line.substr(list->start, list->units);
    LinePart item{list->start, 0};
    for (;;) {
        const std::size_t end = std::min(findSeparator(rest, words), rest.size());
        item.units = end < rest.size() ? 1 : 0;
        if (item.units == 0 || trimScriptText(rest.substr(0, end), words).empty()) {
            item.start += end;
            return item;
        }
        item.start += end + 1;
        rest.remove_prefix(end + 1);
    }
}

// "speak slowly" has the name of a command in front, but means another one.
bool isTailOfWord(const LineFacts& facts, const Told& told) {
    return told.part.has_value() && told.part->start > 0 && !told.where.empty() &&
           isLatin(told.where.front()) && isLatin(facts.line[told.part->start - 1]);
}

// One reason for which a command was not carried out. False for what says
// nothing by itself.
bool tellReason(ScriptChecks& checks, const LineFacts& facts, const Told& told) {
    using enum ScriptProblem;
    switch (told.what) {
    case adverbUnknown:
        checks.add("S102", facts, told.part, {told.where}).suggestions =
            closestAdverbs(checks, told.where);
        return true;
    case adverbMissing:
        checks.add("S103", facts, emptyItem(facts, told.part, checks.words));
        return true;
    case separatorMissing:
        if (isTailOfWord(facts, told)) {
            return false;
        }
        checks.add("S104", facts, told.part, {told.where}).suggestions =
            closestAdverbs(checks, told.where);
        return true;
    case colonMissing:
        checks.add("S105", facts, firstUnit(told.part));
        return true;
    case numberInvalid:
        tellNumber(checks, facts, told);
        return true;
    case unitMissing:
        checks.add("S107", facts, told.part, {told.detail});
        return true;
    case letterInvalid:
        checks.add("S108", facts, told.part, {told.where});
        return true;
    case letterReplaced:
        tellReplacedLetter(checks, facts, told);
        return true;
    case looksAtItself:
        checks.add("S111", facts, told.part);
        return true;
    case modelMissing:
        tellModelless(checks, facts, told);
        return true;
    case setUnknown:
        checks.add("S114", facts, told.part, {told.where}).suggestions = closestKeys<TextMap>(
            told.where, {&checks.staging->setFiles, &checks.staging->setEnglishFiles});
        return true;
    case modelUnknown: {
        const char16_t letter = facts.speaker != 0 ? facts.speaker : u'A';
        checks.add("S115", facts, told.part, {told.where, letterText(letter)}).suggestions =
            closestModels(checks, letter, told.where);
        return true;
    }
    case voiceUnknown:
        checks.add("S116", facts, told.part, {told.where}).suggestions =
            closestVoices(checks, told.where);
        return true;
    case commandRejected:
        checks.add("S130", facts, told.part, {told.where});
        return true;
    default:
        return false;
    }
}

bool toldBefore(const LineFacts& facts, const Told& told) {
    for (const Told& earlier : facts.told) {
        if (&earlier == &told) {
            return false;
        }
        if (earlier.what == told.what && earlier.where == told.where) {
            return true;
        }
    }
    return false;
}

bool tellReasons(ScriptChecks& checks, const LineFacts& facts) {
    // What stands where a colon is missing is no adverb, but nobody meant one.
    const bool isNamed = findTold(facts, ScriptProblem::colonMissing) != nullptr;
    bool any = false;
    for (const Told& told : facts.told) {
        const bool isAdverbs =
            told.what == ScriptProblem::adverbUnknown || told.what == ScriptProblem::adverbMissing;
        any = (!toldBefore(facts, told) && !(isNamed && isAdverbs) &&
               tellReason(checks, facts, told)) ||
              any;
    }
    return any;
}

// Shots that nobody takes, and commands of the studio behind a speaker.
bool tellUntaken(ScriptChecks& checks, const LineFacts& facts, std::u16string_view phrase) {
    const std::u16string_view head = headOf(facts.inner, checks.words);
    for (const std::u16string_view shot : kUntakenShots) {
        if (phrase.starts_with(shot)) {
            checks.add("S128", facts, partIn(facts, head), {head});
            return true;
        }
    }
    const std::u16string_view name = nameStarting(phrase);
    if (facts.speaker != 0 && !name.empty() && isStudioName(name) && !isCharacterName(name)) {
        checks.add("S129", facts, partIn(facts, head), {head});
        return true;
    }
    return false;
}

// What a row found in front of its word and cannot use.
bool tellRecognition(ScriptChecks& checks, const LineFacts& facts) {
    using Outcome = Recognition::Outcome;
    const Recognition& recognition = facts.recognition;
    if (recognition.outcome != Outcome::noLetter && recognition.outcome != Outcome::noNumber) {
        return false;
    }
    const std::u16string_view head = headOf(facts.inner, checks.words);
    const std::u16string_view before =
        head.substr(0, checks.words[recognition.word->key].findIn(head));
    const std::u16string_view shown = before.empty() ? head : before;
    checks.add(recognition.outcome == Outcome::noLetter ? Code("S108") : Code("S106"), facts,
               partIn(facts, shown), {shown});
    return true;
}

bool isAdverb(const ScriptChecks& checks, std::u16string_view text) {
    return findAdverb(text, checks.words) != nullptr;
}

// "bow" and "slow" written together, in either order.
bool tellMissingSeparator(ScriptChecks& checks, const LineFacts& facts, std::u16string_view head) {
    const KeywordTable& words = checks.words;
    for (std::size_t cut = std::min(head.size(), ClosestNames::kLongestGiven); cut-- > 1;) {
        const std::u16string_view left = trimScriptText(head.substr(0, cut), words);
        const std::u16string_view right = trimScriptText(head.substr(cut), words);
        const bool adverbLast =
            isAdverb(checks, right) && commandOwner(checks, left) != CommandOwner::none;
        const bool adverbFirst = !adverbLast && isAdverb(checks, left) &&
                                 commandOwner(checks, right) != CommandOwner::none;
        if (adverbLast || adverbFirst) {
            std::u16string meant(adverbLast ? left : right);
            meant.append(looksEnglish(head) ? u", " : words[u"touten2"].textOrEmpty());
            meant.append(adverbLast ? right : left);
            checks.add("S104", facts, partIn(facts, right), {right}).suggestions = {meant};
            return true;
        }
    }
    return false;
}

// A pose that the description has for other characters only.
bool tellForeignPose(ScriptChecks& checks, const LineFacts& facts, std::u16string_view head) {
    const StagingDescription& staging = *checks.staging;
    const auto name = staging.poseNames.find(head);
    const auto pose =
        staging.poseTemplates.find(name == staging.poseNames.end() ? head : name->second);
    const char16_t letter = facts.speaker != 0 ? facts.speaker : u'A';
    if (pose == staging.poseTemplates.end() || pose->second.contains(letter) ||
        pose->second.contains(sharedKey)) {
        return false;
    }
    std::u16string owners;
    for (const auto& [owner, text] : pose->second) {
        owners.append(owners.empty() ? u"" : u", ").append(letterText(owner));
    }
    checks.add("S139", facts, partIn(facts, head), {head, owners, letterText(letter)});
    return true;
}

// "（ＢＧＭ：x.wav）" and "（Ａ：お辞儀）": right words in the wrong place.
bool tellMisplaced(ScriptChecks& checks, const LineFacts& facts) {
    const KeywordTable& words = checks.words;
    const std::u16string_view tag = tagName(checks, facts.inner);
    if (!tag.empty()) {
        checks.add("S140", facts, partIn(facts, tag), {tag});
        return true;
    }
    std::u16string_view inner = trimScriptText(facts.inner, words);
    const std::u16string_view speaker = inner.substr(0, 1);
    const std::u16string_view rest = speaker.empty() ? speaker : dropAndTrim(inner, 1, words);
    if (characterLetterOf(speaker, words).empty() || !startsWithColon(rest, words) ||
        commandOwner(checks, dropUnits(rest, 1)) == CommandOwner::none) {
        return false;
    }
    checks.add("S141", facts, partIn(facts, speaker), {speaker});
    return true;
}

// A command with something behind it that is no list of adverbs.
bool tellSurplus(ScriptChecks& checks, const LineFacts& facts, std::u16string_view head) {
    const auto start = static_cast<std::size_t>(head.data() - facts.inner.data()) + head.size();
    const std::u16string_view rest = trimScriptText(dropUnits(facts.inner, start), checks.words);
    if (rest.empty() || commandOwner(checks, head) == CommandOwner::none) {
        return false;
    }
    checks.add("S130", facts, partIn(facts, rest), {rest});
    return true;
}

void tellUnknown(ScriptChecks& checks, const LineFacts& facts) {
    const std::u16string_view head = headOf(facts.inner, checks.words);
    if (!tellForeignPose(checks, facts, head) && !tellMisplaced(checks, facts) &&
        !tellMissingSeparator(checks, facts, head) && !tellSurplus(checks, facts, head)) {
        checks.add("S101", facts, partIn(facts, head), {head}).suggestions =
            closestCommands(checks, facts, head);
    }
}

// Whether a phrase is the command and not a longer text that begins with its
// name.
bool namesCommand(std::u16string_view phrase, std::u16string_view name) {
    const std::u16string_view rest = dropUnits(phrase, name.size());
    const auto isLetter = [](char16_t unit) { return unit >= u'a' && unit <= u'z'; };
    return name.ends_with(u' ') || rest.empty() ||
           (!isLetter(rest.front()) && (rest.size() < 2 || !isLetter(rest[1])));
}

// Whether the run had a command or a pose for the words, whatever it then found
// behind them.
bool headIsKnown(const ScriptChecks& checks, const LineFacts& facts, std::u16string_view phrase) {
    return facts.recognition.outcome != Recognition::Outcome::unchanged ||
           !nameStarting(phrase).empty() ||
           checks.staging->poseTemplates.contains(headOf(facts.inner, checks.words));
}

// What a command that was carried out did differently.
void tellDegraded(ScriptChecks& checks, const LineFacts& facts) {
    for (const Told& told : facts.told) {
        if (told.what == ScriptProblem::letterReplaced) {
            tellReplacedLetter(checks, facts, told);
        } else if (told.what == ScriptProblem::conditionNotMet && told.detail == facts.takenName) {
            tellCondition(checks, facts, told);
        } else if (told.what == ScriptProblem::numberInvalid) {
            checks.add("S132", facts, told.part);
        }
    }
}

} // namespace

CommandOwner commandOwner(const ScriptChecks& checks, std::u16string_view text) {
    const KeywordTable& words = checks.words;
    text = trimScriptText(text, words);
    const std::u16string_view head = headOf(text, words);
    if (head.empty()) {
        return CommandOwner::none;
    }
    std::u16string phrase(head);
    const Recognition recognition =
        recognizeCommand(phrase, words, checks.staging->poseNames, checks.commands);
    if (recognition.outcome == Recognition::Outcome::pose ||
        checks.staging->poseTemplates.contains(head)) {
        return CommandOwner::character;
    }
    if (recognition.outcome == Recognition::Outcome::row) {
        return isWholeWord(recognition, head, words) ? ownerOf(recognition.row->canonical)
                                                     : CommandOwner::none;
    }
    const std::u16string_view name = nameStarting(head);
    return name.size() == head.size() || (name.ends_with(u' ') && head.size() < name.size() + 3)
               ? ownerOf(name)
               : CommandOwner::none;
}

void tellModelless(ScriptChecks& checks, const LineFacts& facts, const Told& told) {
    const std::size_t slot = static_cast<std::size_t>(told.detail.front() - u'A');
    if (!checks.toldModelless.test(slot)) {
        checks.toldModelless.set(slot);
        checks.add("S113", facts, std::nullopt, {told.detail});
    }
}

void checkCommandLine(ScriptChecks& checks, const LineFacts& facts) {
    if (const Told* replaced = findTold(facts, ScriptProblem::speakerReplaced)) {
        checks.add("S110", facts, replaced->part, {replaced->where, checks.characters()});
    }
    if (facts.taken) {
        tellDegraded(checks, facts);
        return;
    }
    const Told* const unknown = findTold(facts, ScriptProblem::commandUnknown);
    if (unknown == nullptr) {
        return;
    }
    const Told* const condition = findTold(facts, ScriptProblem::conditionNotMet);
    if (condition != nullptr && namesCommand(unknown->where, condition->detail)) {
        tellCondition(checks, facts, *condition);
        return;
    }
    if (tellUntaken(checks, facts, unknown->where) || tellRecognition(checks, facts)) {
        return;
    }
    if (!tellReasons(checks, facts) || !headIsKnown(checks, facts, unknown->where)) {
        tellUnknown(checks, facts);
    }
}

} // namespace tvml
