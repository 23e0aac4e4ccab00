// Why a command line did nothing, or not what it says. Entry: checkCommandLine.
#include "diagnostics/script_problems.h"

#include <algorithm>
#include <array>
#include <span>

#include "diagnostics/suggestions.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

// What a command lacks whose condition does not hold.
struct LackRow {
    Condition condition;
    Message text;
};
constexpr std::array<LackRow, kConditionCount - 1> kLacks{{
    {Condition::subImageShown, Message::lacking_subImageShown},
    {Condition::bgImageShown, Message::lacking_bgImageShown},
    {Condition::rightImageShown, Message::lacking_rightImageShown},
    {Condition::leftImageShown, Message::lacking_leftImageShown},
    {Condition::mainImageShown, Message::lacking_mainImageShown},
    {Condition::leftSuperShown, Message::lacking_leftSuperShown},
    {Condition::rightSuperShown, Message::lacking_rightSuperShown},
    {Condition::oneCharacter, Message::lacking_oneCharacter},
    {Condition::twoCharacters, Message::lacking_twoCharacters},
    {Condition::severalCharacters, Message::lacking_severalCharacters},
    {Condition::subImageBefore, Message::lacking_subImageBefore},
}};

constexpr bool everyConditionHasItsText() {
    for (std::size_t i = 0; i < kLacks.size(); ++i) {
        if (kLacks[i].condition != static_cast<Condition>(i + 1)) {
            return false;
        }
    }
    return true;
}
static_assert(everyConditionHasItsText());

bool isOfCharacter(const CommandSpec& row) {
    return row.taker == Taker::character || row.taker == Taker::setting;
}

// The row with the longest name that begins `phrase`, or null.
const CommandSpec* rowStarting(std::u16string_view phrase) {
    const CommandSpec* longest = nullptr;
    for (const CommandSpec& row : kCommands) {
        const bool acts = row.action != Action::ignore;
        if (acts && phrase.starts_with(row.name) &&
            (longest == nullptr || row.name.size() > longest->name.size())) {
            longest = &row;
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

CommandOwner ownerOf(const CommandSpec* row) {
    return row == nullptr                 ? CommandOwner::none
           : row->taker == Taker::staging ? CommandOwner::studio
           : isOfCharacter(*row)          ? CommandOwner::character
                                          : CommandOwner::none;
}

bool isAdverb(const ScriptChecks& checks, std::u16string_view text) {
    return findAdverb(text, checks.words) != nullptr;
}

// ---- reasons

// A finding about a part of a command. What the part may have meant goes before
// what the whole command means, as "sit down" does.
void tellPart(ScriptChecks& checks, const CheckedLine& checked, Code code,
              std::u16string_view where, TextValues values, Suggestions meant = {}) {
    const std::u16string_view head = headOf(checked.line.command()->inner, checks.words);
    Suggestions whole = meant.empty() ? meantCommands(checks, checked, head) : Suggestions();
    Diagnostic& found = checks.addAt(code, checked, whole.empty() ? where : head, values);
    found.suggestions = whole.empty() ? std::move(meant) : std::move(whole);
}

std::u16string unitText(std::u16string_view unit) {
    return std::u16string(unit).append(unit.ends_with(u's') ? u"" : u"s");
}

Suggestions oneText(std::u16string text) {
    return text.empty() ? Suggestions() : Suggestions{std::move(text)};
}

void tellCondition(ScriptChecks& checks, const CheckedLine& checked, const LineProblem& told) {
    const std::u16string_view head = headOf(checked.line.command()->inner, checks.words);
    // A command that is carried out without what it needs is "look at picture"
    // before the first picture: it only waits.
    const Condition lacking =
        checked.line.command()->taken ? Condition::subImageBefore : told.command->condition;
    // Of some commands there is another form for this number of characters.
    Suggestions other =
        lacking >= Condition::oneCharacter && lacking <= Condition::severalCharacters
            ? meantCommands(checks, checked, head)
            : Suggestions();
    checks
        .addAt("S112", checked, head,
               {head, checks.text(kLacks[static_cast<std::size_t>(lacking) - 1].text)})
        .suggestions = std::move(other);
}

bool isLatin(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

// The word of a line that begins with the letter at `place`: "look at screen" has
// one that nobody meant as a letter. `place` becomes that of the word.
std::u16string_view wholeWord(std::u16string_view line, std::optional<LinePlace>& place,
                              std::u16string_view letter) {
    if (!place.has_value() || letter.size() != 1 || !isLatin(letter.front())) {
        return letter;
    }
    while (place->start + place->units < line.size() &&
           isLatin(line[place->start + place->units])) {
        ++place->units;
    }
    return line.substr(place->start, place->units);
}

void tellReplacedLetter(ScriptChecks& checks, const CheckedLine& checked, const LineProblem& told) {
    std::optional<LinePlace> place = checked.line.placeOf(told.where);
    const std::u16string_view written = wholeWord(checked.line.text, place, told.where);
    const bool pair = checked.line.hasProblem(ScriptProblem::pairReplaced);
    const std::u16string_view head = headOf(checked.line.command()->inner, checks.words);
    const bool isWord = written.size() > 1;
    Suggestions whole = isWord ? meantCommands(checks, checked, head) : Suggestions();
    checks
        .add("S109", checked, whole.empty() ? place : checked.line.placeOf(head),
             {written, checks.characters(),
              checks.text(pair ? Message::replaced_pair : Message::replaced_one)})
        .suggestions = std::move(whole);
}

// Another character's letter, as wide as this one.
char16_t otherLetter(const ScriptChecks& checks, char16_t written) {
    const char16_t base = written >= u'Ａ' ? u'Ａ' : u'A';
    return static_cast<char16_t>(base + (checks.words.letterOf(written) == u'A' ? 1 : 0));
}

// Where a letter was replaced and so became equal to the other one, the
// replacement is reported, and not the pair.
void tellReplacedPair(ScriptChecks& checks, const CheckedLine& checked, const LineProblem& told) {
    if (!checked.line.hasProblem(ScriptProblem::letterReplaced)) {
        checks.addAt("S131", checked, told.where, {told.where}).suggestions = {
            std::u16string{told.where.front(), otherLetter(checks, told.where.front())}};
    }
}

void tellNumber(ScriptChecks& checks, const CheckedLine& checked, const LineProblem& told) {
    const std::u16string_view number = told.where;
    const std::u16string_view inner = checked.line.command()->inner;
    std::u16string meant = suggestedNumber(checks, inner, number);
    const bool isLast = inner.ends_with(number);
    // A sound number that ends the command lacks its unit.
    const bool isNumber =
        !parseNumber(number, checks.words).empty() && number.front() != u'-' && isLast;
    if (isNumber) {
        meant.assign(number);
    } else if (meant.starts_with(u'-') && unitText(told.detail) == u"seconds") {
        meant.erase(0, 1);
    }
    const std::u16string unit = unitText(told.detail);
    if (isLast && !meant.empty()) {
        meant.append(u" ").append(unit);
    } else if (!headOf(inner, checks.words).ends_with(unit)) {
        meant.clear(); // the number alone would not do
    }
    tellPart(checks, checked, isNumber ? Code("S107") : Code("S106"), number,
             {isNumber ? told.detail : number}, oneText(std::move(meant)));
}

// The colon in place of another sign or in front of the name. Of "change set" the
// whole is meant.
void tellMissingColon(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view unit) {
    const std::u16string_view head = headOf(checked.line.command()->inner, checks.words);
    if (commandOwner(checks, head) == CommandOwner::none &&
        !meantCommands(checks, checked, head).empty()) {
        return tellPart(checks, checked, "S105", unit, {});
    }
    const std::u16string_view own = checks.words[u"colon"].textOrEmpty();
    std::u16string meant(looksEnglish(head) || own.empty() ? u":" : own);
    const bool isSign = startsWithSeparator(unit, checks.words) ||
                        std::u16string_view(u";；=＝").find(unit) != kNone;
    meant.append(isSign ? std::u16string_view() : unit);
    checks.addAt("S105", checked, unit).suggestions = {meant};
}

// The first empty item in a list of adverbs, with the separator that ends it.
std::optional<LinePlace> emptyItem(const CheckedLine& checked, std::u16string_view list,
                                   const KeywordTable& words) {
    const std::optional<LinePlace> place = checked.line.placeOf(list);
    if (!place.has_value()) {
        return place;
    }
    std::u16string_view rest = checked.line.text.substr(place->start, place->units);
    LinePlace item{place->start, 0};
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
bool isTailOfWord(const ScriptLine& line, std::u16string_view where) {
    const std::optional<LinePlace> place = line.placeOf(where);
    return place.has_value() && place->start > 0 && !where.empty() && isLatin(where.front()) &&
           isLatin(line.text[place->start - 1]);
}

// The adverb that was meant, with the separator in front of it.
Suggestions separated(ScriptChecks& checks, std::u16string_view where) {
    Suggestions adverbs = suggestedAdverbs(checks, where);
    for (std::u16string& adverb : adverbs) {
        adverb.insert(0, looksEnglish(where) ? u", " : checks.words[u"touten2"].textOrEmpty());
    }
    return adverbs;
}

// What stands behind a command without a separator: an adverb that lacks one, or
// something that cannot stand there at all.
void tellSeparator(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view where) {
    Suggestions adverbs = separated(checks, where);
    const bool isOne = !adverbs.empty() || isAdverb(checks, where);
    tellPart(checks, checked, isOne ? Code("S104") : Code("S130"), where, {where},
             std::move(adverbs));
}

// "（声質、日本語男性）": a separator where a name's colon should be.
bool tellCommaForColon(ScriptChecks& checks, const CheckedLine& checked) {
    const RecognizedCommand& command = *checked.line.command();
    const CommandSpec* const row = rowStarting(command.phrase);
    const std::u16string_view head = headOf(command.inner, checks.words);
    if (row == nullptr || !followsColon(row->arguments) ||
        commandOwner(checks, head) == CommandOwner::none) {
        return false;
    }
    const auto behind = static_cast<std::size_t>(head.data() - command.inner.data()) + head.size();
    const std::u16string_view rest = trimScriptText(command.inner.substr(behind), checks.words);
    if (!startsWithSeparator(rest, checks.words)) {
        return false;
    }
    tellMissingColon(checks, checked, rest.substr(0, 1));
    return true;
}

// What stands where letters should, or one letter where a shot takes two.
void tellLetters(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view where) {
    const char16_t letter = where.size() == 1 ? checks.words.letterOf(where.front()) : u'\0';
    if (letter == 0 || letter > checks.lastCharacter) {
        return tellPart(checks, checked, "S108", where, {where});
    }
    std::u16string pair(where);
    pair.push_back(otherLetter(checks, where.front()));
    checks.addAt("S146", checked, where, {where}).suggestions = {pair};
}

// One reason for which a command was not carried out. False for what says
// nothing by itself.
bool tellReason(ScriptChecks& checks, const CheckedLine& checked, const LineProblem& told) {
    using enum ScriptProblem;
    const std::u16string_view where = told.where;
    switch (told.what) {
    case adverbUnknown:
        if (tellCommaForColon(checks, checked)) {
            return true;
        }
        checks.addAt("S102", checked, where, {where}).suggestions = suggestedAdverbs(checks, where);
        return true;
    case adverbMissing:
        checks.add("S103", checked, emptyItem(checked, where, checks.words));
        return true;
    case separatorMissing:
        if (isTailOfWord(checked.line, where)) {
            return false;
        }
        tellSeparator(checks, checked, where);
        return true;
    case colonMissing:
        tellMissingColon(checks, checked, where.substr(0, 1));
        return true;
    case numberInvalid:
        tellNumber(checks, checked, told);
        return true;
    case numberMissing:
        tellPart(checks, checked, "S106", where, {where});
        return true;
    case unitMissing:
        tellPart(checks, checked, "S107", where, {told.detail}, oneText(unitText(told.detail)));
        return true;
    case letterInvalid:
        tellLetters(checks, checked, where);
        return true;
    case letterReplaced: { // nothing is used instead: the line writes nothing
        std::optional<LinePlace> place = checked.line.placeOf(where);
        const std::u16string_view written = wholeWord(checked.line.text, place, where);
        if (written.size() == 1) {
            tellReplacedLetter(checks, checked, told);
        } else {
            tellPart(checks, checked, "S108", where, {written});
        }
        return true;
    }
    case pairReplaced:
        tellReplacedPair(checks, checked, told);
        return true;
    case looksAtItself:
        checks.addAt("S111", checked, where).suggestions = {
            std::u16string(1, otherLetter(checks, where.front()))};
        return true;
    case modelMissing:
        tellModelless(checks, checked, told);
        return true;
    case setUnknown:
        checks.addAt("S114", checked, where, {where, existingSets(checks, where)}).suggestions =
            suggestedSets(checks, where);
        return true;
    case modelUnknown:
        checks
            .addAt("S115", checked, where,
                   {where, letterText(checked.line.actor()),
                    existingModels(checks, checked.line.actor(), where)})
            .suggestions = suggestedModels(checks, checked.line.actor(), where);
        return true;
    case voiceUnknown:
        checks.addAt("S116", checked, where, {where, existingVoices(checks, where)}).suggestions =
            suggestedVoices(checks, where);
        return true;
    case argumentsRefused:
        checks.addAt("S130", checked, where, {where});
        return true;
    default:
        return false;
    }
}

// The same may be found as a command of the studio and of a character.
bool toldBefore(const ScriptLine& line, const LineProblem& told) {
    return std::any_of(line.problems.data(), &told, [&](const LineProblem& earlier) {
        return earlier.what == told.what && earlier.where == told.where;
    });
}

bool tellReasons(ScriptChecks& checks, const CheckedLine& checked) {
    // What stands where a colon is missing is no adverb, but nobody meant one.
    const bool isNamed = checked.line.hasProblem(ScriptProblem::colonMissing);
    bool any = false;
    for (const LineProblem& told : checked.line.problems) {
        const bool isAdverbs =
            told.what == ScriptProblem::adverbUnknown || told.what == ScriptProblem::adverbMissing;
        any = (!toldBefore(checked.line, told) && !(isNamed && isAdverbs) &&
               tellReason(checks, checked, told)) ||
              any;
    }
    return any;
}

// Shots that nobody takes, and commands of the studio behind a speaker.
bool tellUntaken(ScriptChecks& checks, const CheckedLine& checked) {
    const RecognizedCommand& command = *checked.line.command();
    const std::u16string_view head = headOf(command.inner, checks.words);
    const bool isNobodys = std::ranges::any_of(kCommands, [&](const CommandSpec& row) {
        return row.taker == Taker::nobody && command.phrase.starts_with(row.name);
    });
    const CommandSpec* row = rowStarting(command.phrase);
    if (isNobodys) {
        checks.addAt("S128", checked, head, {head}).suggestions =
            meantCommands(checks, checked, head);
    } else if (checked.speaker() != 0 && row != nullptr && row->taker == Taker::staging) {
        const std::u16string_view written = checked.line.trimmed;
        const std::size_t bracket = written.find_first_of(u"(（");
        Diagnostic& told = checks.addAt("S129", checked, written, {head});
        if (bracket != kNone) {
            told.suggestions = {std::u16string(written.substr(bracket))};
        }
    } else {
        return false;
    }
    return true;
}

// What a row found in front of its word and cannot use.
bool tellRecognition(ScriptChecks& checks, const CheckedLine& checked) {
    using Outcome = Recognition::Outcome;
    const RecognizedCommand& command = *checked.line.command();
    const Recognition& recognition = command.recognition;
    if (recognition.outcome != Outcome::noLetter && recognition.outcome != Outcome::noNumber) {
        return false;
    }
    const std::u16string_view head = headOf(command.inner, checks.words);
    const std::u16string_view before = head.substr(0, recognition.position);
    const std::u16string_view shown = before.empty() ? head : before;
    const bool isLetter = recognition.outcome == Outcome::noLetter;
    tellPart(checks, checked, isLetter ? Code("S108") : Code("S106"), shown, {shown},
             isLetter ? Suggestions() : oneText(suggestedNumber(checks, head, shown)));
    return true;
}

// "bow" and "slow" written together, in either order.
bool tellMissingSeparator(ScriptChecks& checks, const CheckedLine& checked,
                          std::u16string_view head) {
    const KeywordTable& words = checks.words;
    for (std::size_t cut = std::min(head.size(), ClosestNames::kLongestGiven); cut-- > 1;) {
        const std::u16string_view left = trimScriptText(head.substr(0, cut), words);
        const std::u16string_view right = trimScriptText(head.substr(cut), words);
        const bool adverbLast =
            isAdverb(checks, right) && commandOwner(checks, left) != CommandOwner::none;
        const bool adverbFirst = !adverbLast && isAdverb(checks, left) &&
                                 commandOwner(checks, right) != CommandOwner::none;
        if (adverbLast || adverbFirst) {
            std::u16string meant(looksEnglish(head) ? u", " : words[u"touten2"].textOrEmpty());
            meant.append(adverbLast ? right : left);
            if (adverbFirst) {
                meant.insert(0, right);
            }
            checks.addAt("S104", checked, adverbLast ? right : head, {right}).suggestions = {meant};
            return true;
        }
    }
    return false;
}

// A pose that the description has for other characters only.
bool tellForeignPose(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view head) {
    const StagingDescription& staging = checks.staging;
    const auto name = staging.poseNames.find(head);
    const auto pose =
        staging.poseTemplates.find(name == staging.poseNames.end() ? head : name->second);
    const char16_t letter = checked.line.actor();
    if (pose == staging.poseTemplates.end() || pose->second.contains(letter) ||
        pose->second.contains(sharedKey)) {
        return false;
    }
    std::u16string owners;
    for (const auto& [owner, text] : pose->second) {
        owners.append(owners.empty() ? u"" : u", ").append(letterText(owner));
    }
    checks.addAt("S139", checked, head, {head, owners, letterText(letter)});
    return true;
}

// "（ＢＧＭ：x.wav）" and "（Ａ：お辞儀）": right words in the wrong place.
bool tellMisplaced(ScriptChecks& checks, const CheckedLine& checked) {
    const KeywordTable& words = checks.words;
    const std::u16string_view inner = checked.line.command()->inner;
    const std::u16string_view tag = tagName(checks, inner);
    if (!tag.empty()) {
        checks.addAt("S140", checked, checked.line.trimmed, {tag}).suggestions = {
            std::u16string(inner)};
        return true;
    }
    const std::u16string_view speaker = inner.substr(0, 1);
    const std::u16string_view rest = speaker.empty() ? speaker : dropAndTrim(inner, 1, words);
    if (characterLetterOf(speaker, words).empty() || !startsWithColon(rest, words) ||
        commandOwner(checks, dropUnits(rest, 1)) == CommandOwner::none) {
        return false;
    }
    const std::u16string_view line = checked.line.trimmed;
    const std::u16string_view command = trimScriptText(dropUnits(rest, 1), words);
    checks.addAt("S141", checked, line, {speaker}).suggestions = {
        std::u16string(speaker)
            .append(rest.substr(0, 1))
            .append(line.substr(0, 1))
            .append(command)
            .append(line.substr(line.size() - 1))};
    return true;
}

// A command with something behind it that is no list of adverbs.
bool tellSurplus(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view head) {
    const std::u16string_view inner = checked.line.command()->inner;
    const auto start = static_cast<std::size_t>(head.data() - inner.data()) + head.size();
    const std::u16string_view rest = trimScriptText(dropUnits(inner, start), checks.words);
    if (rest.empty() || commandOwner(checks, head) == CommandOwner::none) {
        return false;
    }
    checks.addAt("S130", checked, rest, {rest});
    return true;
}

void tellUnknown(ScriptChecks& checks, const CheckedLine& checked) {
    const std::u16string_view head = headOf(checked.line.command()->inner, checks.words);
    if (!tellForeignPose(checks, checked, head) && !tellMisplaced(checks, checked) &&
        !tellMissingSeparator(checks, checked, head) && !tellSurplus(checks, checked, head)) {
        checks.addAt("S101", checked, head, {head}).suggestions =
            suggestedCommands(checks, checked, head);
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

// Whether there is a command or a pose for the words, whatever stands behind
// them.
bool headIsKnown(const ScriptChecks& checks, const RecognizedCommand& command) {
    return command.recognition.outcome != Recognition::Outcome::unchanged ||
           rowStarting(command.phrase) != nullptr ||
           checks.staging.poseTemplates.contains(headOf(command.inner, checks.words));
}

// What a command that was carried out did differently.
void tellDegraded(ScriptChecks& checks, const CheckedLine& checked) {
    for (const LineProblem& told : checked.line.problems) {
        if (told.what == ScriptProblem::letterReplaced) {
            tellReplacedLetter(checks, checked, told);
        } else if (told.what == ScriptProblem::pairReplaced) {
            tellReplacedPair(checks, checked, told);
        } else if (told.what == ScriptProblem::numberMissing) {
            checks.addAt("S132", checked, told.where);
        }
    }
    for (const LineProblem& told : checked.outcome.problems) {
        if (told.what == ScriptProblem::conditionNotMet) {
            tellCondition(checks, checked, told);
        }
    }
}

// "(bow)(nod)": a bracket that closes before the next one opens.
bool holdsSeveral(std::u16string_view inner) {
    const std::size_t closing = inner.find_first_of(u")）");
    return closing != kNone && inner.find_first_of(u"(（") > closing &&
           inner.find_first_of(u"(（") != kNone;
}

// Why a command was not carried out.
void tellRefused(ScriptChecks& checks, const CheckedLine& checked) {
    const RecognizedCommand& command = *checked.line.command();
    if (holdsSeveral(command.inner)) {
        checks.addAt("S144", checked, checked.line.trimmed);
        return;
    }
    const LineProblem* const condition = checked.line.findProblem(ScriptProblem::conditionNotMet);
    if (condition != nullptr && namesCommand(command.phrase, condition->detail)) {
        return tellCondition(checks, checked, *condition);
    }
    if (tellUntaken(checks, checked) || tellRecognition(checks, checked)) {
        return;
    }
    if (!tellReasons(checks, checked) || !headIsKnown(checks, command)) {
        tellUnknown(checks, checked);
    }
}

// Findings that say more than what could have been meant.
constexpr std::array kKeptCodes{Code("S105"), Code("S111"), Code("S113"), Code("S114"),
                                Code("S115"), Code("S116"), Code("S129"), Code("S139"),
                                Code("S140"), Code("S141"), Code("S144"), Code("S146")};

bool isOneOf(std::span<const Code> codes, Code code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

// One finding for the whole command, with the command that was meant, in place of
// those since `before`, where all its words are understood.
void offerMeant(ScriptChecks& checks, const CheckedLine& checked, std::size_t before) {
    const std::u16string_view inner = checked.line.command()->inner;
    const std::size_t told = checks.found.size() - before;
    const bool onlyAdverb = told == 1 && checks.found[before].code == Code("S102");
    const bool kept =
        std::any_of(checks.found.begin() + static_cast<std::ptrdiff_t>(before), checks.found.end(),
                    [](const Diagnostic& found) { return isOneOf(kKeptCodes, found.code); });
    const bool adverbIsMeant = onlyAdverb && !checks.found[before].suggestions.empty();
    if (told == 0 || adverbIsMeant || kept) {
        return;
    }
    const MeantCommand meant =
        checks.meanings().meantBy(inner, checked.line.actor(), checks.lastCharacter);
    const bool isOfStudio = commandOwner(checks, meant.text) == CommandOwner::studio;
    if (meant.text.empty() || (isOfStudio && checked.speaker() != 0)) {
        return; // the studio has no speaker
    }
    constexpr std::array kOwnText{Code("S103"), Code("S106"), Code("S107"), Code("S128")};
    constexpr std::array kOfList{Code("S102"), Code("S104")};
    const std::u16string_view head = headOf(inner, checks.words);
    const bool commandStays =
        meant.text.starts_with(head.substr(0, std::min<std::size_t>(2, head.size())));
    const bool isWhom = meant.nobodyNamed && checks.found[before].code == Code("S112");
    const bool keepsText = isWhom || onlyAdverb || isOneOf(kOwnText, checks.found[before].code) ||
                           (isOneOf(kOfList, checks.found[before].code) && commandStays);
    const Code code = meant.adverbFirst ? Code("S145") : Code("S101");
    Diagnostic first = checks.found[before];
    checks.found.resize(before, first);
    Diagnostic& whole = checks.addAt(code, checked, inner, {trimScriptText(inner, checks.words)});
    if (keepsText && !meant.adverbFirst) {
        whole.code = first.code;
        whole.message = std::move(first.message);
    }
    // What means the same besides, as a pose may, stays.
    const bool isFirst = !first.suggestions.empty() && first.suggestions.front() == meant.text;
    whole.suggestions = isFirst ? std::move(first.suggestions) : Suggestions{meant.text};
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
        recognizeCommand(phrase, words, checks.staging.poseNames, checks.reader.commands());
    if (recognition.outcome == Recognition::Outcome::pose ||
        checks.staging.poseTemplates.contains(head)) {
        return CommandOwner::character;
    }
    if (recognition.outcome == Recognition::Outcome::row) {
        return isWholeWord(recognition, head, words) ? ownerOf(recognition.row)
                                                     : CommandOwner::none;
    }
    const CommandSpec* row = rowStarting(head);
    if (row == nullptr) {
        return CommandOwner::none;
    }
    const bool isWhole = row->name.size() == head.size() ||
                         (row->name.ends_with(u' ') && head.size() < row->name.size() + 3);
    return isWhole ? ownerOf(row) : CommandOwner::none;
}

void tellModelless(ScriptChecks& checks, const CheckedLine& checked, const LineProblem& told) {
    const std::size_t slot = static_cast<std::size_t>(told.detail.front() - u'A');
    if (!checks.toldModelless.test(slot)) {
        checks.toldModelless.set(slot);
        checks.add("S113", checked, std::nullopt, {told.detail});
    }
}

void checkCommandLine(ScriptChecks& checks, const CheckedLine& checked) {
    const ScriptLine& line = checked.line;
    if (const LineProblem* replaced = line.findProblem(ScriptProblem::speakerReplaced)) {
        checks.addAt("S110", checked, replaced->where, {replaced->where, checks.characters()});
    }
    const RecognizedCommand& command = *line.command();
    if (command.taken) {
        return tellDegraded(checks, checked);
    }
    const std::size_t before = checks.found.size();
    tellRefused(checks, checked);
    offerMeant(checks, checked, before);
}

} // namespace tvml
