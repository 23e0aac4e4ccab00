// Commands: who takes a phrase, and with which arguments. Entry:
// CommandReader::read.
#include "reading/command_reader.h"

#include <algorithm>
#include <array>
#include <span>

#include "reading/script_text.h"

namespace tvml {
namespace {

// ---- rows by their names

// The rows that can take a phrase: by the first letter of their names, the
// longest name first.
struct RowsByName {
    std::array<std::uint8_t, kCommands.size()> rows{};
    std::array<std::uint8_t, 27> starts{}; // of each letter, and the end

    std::span<const std::uint8_t> startingWith(char16_t unit) const {
        if (unit < u'a' || unit > u'z') {
            return {};
        }
        const auto letter = static_cast<std::size_t>(unit - u'a');
        return std::span(rows).subspan(starts[letter],
                                       std::size_t{starts[letter + 1]} - starts[letter]);
    }
};

constexpr bool standsBefore(const CommandSpec& a, const CommandSpec& b) {
    return a.name.front() != b.name.front() ? a.name.front() < b.name.front()
                                            : a.name.size() > b.name.size();
}

constexpr RowsByName rowsByName() {
    RowsByName sorted;
    static_assert(kCommands.size() < 256);
    for (std::size_t i = 0; i < kCommands.size(); ++i) {
        std::size_t at = i;
        for (; at > 0 && standsBefore(kCommands[i], kCommands[sorted.rows[at - 1]]); --at) {
            sorted.rows[at] = sorted.rows[at - 1];
        }
        sorted.rows[at] = static_cast<std::uint8_t>(i);
    }
    for (const CommandSpec& row : kCommands) {
        for (auto next = static_cast<std::size_t>(row.name.front() - u'a' + 1);
             next < sorted.starts.size(); ++next) {
            ++sorted.starts[next];
        }
    }
    return sorted;
}

constexpr RowsByName kRowsByName = rowsByName();

// ---- words

// Whether `unit` is a Latin letter, ASCII or full-width.
bool isShotLetter(char16_t unit) {
    const auto within = [unit](char16_t first, char16_t last) {
        return unit >= first && unit <= last;
    };
    return within(u'a', u'z') || within(u'A', u'Z') || within(0xFF41, 0xFF5A) ||
           within(0xFF21, 0xFF3A);
}

const CommandSpec* voiceNamed(std::u16string_view name) {
    const auto found =
        std::find_if(kCommands.begin(), kCommands.end(), [name](const CommandSpec& row) {
            return row.taker == Taker::voice && row.name == name;
        });
    return found == kCommands.end() ? nullptr : &*found;
}

// Whether a text holds a word, looked up once for all texts that end at the
// same place.
class LastOccurrence {
public:
    LastOccurrence(std::u16string_view text, const Word& word)
        : position_(word.loaded() ? text.rfind(word.textOrEmpty()) : kNone) {}
    LastOccurrence(std::u16string_view text, std::u16string_view word)
        : position_(text.rfind(word)) {}
    bool atOrAfter(std::size_t start) const { return position_ != kNone && position_ >= start; }

private:
    std::size_t position_;
};

} // namespace

// The front of a rewritten phrase is its command word but for the letters or the
// number, which keep their units and stand in front of the word in the source.
std::u16string_view RecognizedCommand::sourceOf(std::u16string_view part) const {
    const auto start = static_cast<std::size_t>(part.data() - phrase.data());
    if (start >= recognition.inserted) {
        const std::size_t at = start - recognition.inserted + recognition.replaced;
        return inner.substr(std::min(at, inner.size()), part.size());
    }
    const std::size_t argument = recognition.row != nullptr ? recognition.row->name.size() : start;
    const std::size_t before = recognition.position;
    return start >= argument && start - argument < before
               ? inner.substr(start - argument, std::min(part.size(), before))
               : inner.substr(0, recognition.replaced);
}

// ---- who takes it

void CommandReader::read() {
    line_.part_ = ScriptLine::Part::command;
    std::u16string_view inner = line_.content;
    inner.remove_prefix(inner.empty() ? 0 : 1);
    inner.remove_suffix(inner.empty() ? 0 : 1);
    command_.inner = trimScriptText(inner, words_);
    command_.phrase.assign(command_.inner);
    command_.recognition = recognizeCommand(command_.phrase, words_, names_.poseNames, index_);
    command_.spec = nullptr;
    command_.pose = {};
    command_.taken = false;
    forgetArguments();
    command_.taken = (line_.speaker == 0 && offerTo(true)) || offerToCharacter();
}

void CommandReader::forgetArguments() {
    command_.adverbs = {};
    command_.items.clear();
    command_.letters = {};
    command_.number.clear();
    command_.name = {};
    command_.english = {};
    command_.caption = {};
}

// Poses come before every named command, and so do their adverbs: what follows
// the first separator must be a list of them, whatever the command.
bool CommandReader::offerToCharacter() {
    const std::u16string_view phrase = command_.phrase;
    forgetArguments();
    std::u16string_view pose = phrase;
    const std::size_t separator = findSeparator(phrase, words_);
    if (separator != kNone) {
        if (!readAdverbs(dropAndTrim(phrase, separator + 1, words_))) {
            return false;
        }
        pose = trimScriptText(phrase.substr(0, separator), words_);
    }
    if (!names_.hasPose(pose, line_.actor())) {
        return offerTo(false);
    }
    command_.pose = pose;
    return true;
}

// To the studio or to the character: the row with the longest name decides whose
// condition holds.
bool CommandReader::offerTo(bool studio) {
    const std::u16string_view phrase = command_.phrase;
    for (const std::uint8_t row : kRowsByName.startingWith(phrase.empty() ? u'\0' : phrase[0])) {
        const CommandSpec& spec = kCommands[row];
        const bool isAsked =
            studio ? spec.taker == Taker::staging : detail::isOfCharacters(spec.taker);
        if (!isAsked || !phrase.starts_with(spec.name)) {
            continue;
        }
        if (!context_.conditions.holds(spec.condition)) {
            line_.problem(ScriptProblem::conditionNotMet, phrase.substr(0, spec.name.size()),
                          spec.name, &spec);
            continue;
        }
        forgetArguments();
        command_.spec = readArguments(spec) ? &spec : nullptr;
        return command_.spec != nullptr;
    }
    return false;
}

bool CommandReader::readArguments(const CommandSpec& spec) {
    const std::u16string_view rest = std::u16string_view(command_.phrase).substr(spec.name.size());
    switch (spec.arguments) {
    case Arguments::adverbs:
        return (spec.action != Action::sit || wearsModel()) && readTail(rest);
    case Arguments::alone:
        if (!rest.empty()) {
            line_.problem(ScriptProblem::argumentsRefused, rest);
        }
        return rest.empty();
    case Arguments::oneLetter:
    case Arguments::otherLetter:
        return readLetter(trimScriptText(rest, words_), spec.arguments == Arguments::otherLetter);
    case Arguments::letterPair:
        return readLetterPair(trimScriptText(rest, words_));
    case Arguments::steps:
    case Arguments::degrees:
    case Arguments::seconds:
        return readCount(spec, trimScriptText(rest, words_));
    case Arguments::setName:
    case Arguments::fileName:
    case Arguments::voiceName:
    case Arguments::modelName:
        return readBehindColon(spec, trimScriptText(rest, words_));
    }
    return false;
}

// ---- adverbs

// `rest` is all that follows the command: nothing, or a separator and a list.
bool CommandReader::readTail(std::u16string_view rest) {
    if (rest.empty()) {
        return true;
    }
    rest = trimScriptText(rest, words_);
    if (!startsWithSeparator(rest, words_)) {
        line_.problem(ScriptProblem::separatorMissing, rest);
        return false;
    }
    return readAdverbs(dropAndTrim(rest, 1, words_));
}

bool CommandReader::readAdverbs(std::u16string_view list) {
    std::u16string_view rejected;
    command_.items.clear();
    if (parseAdverbs(list, words_, command_.adverbs, &rejected, &command_.items)) {
        return true;
    }
    command_.adverbs = {};
    command_.items.clear();
    const bool missing = rejected.empty();
    line_.problem(missing ? ScriptProblem::adverbMissing : ScriptProblem::adverbUnknown,
                  missing ? list : rejected);
    return false;
}

// ---- letters

// The letter of the programme that `unit` names: "A" when it names none or one
// after the last character.
char16_t CommandReader::programmeLetter(std::u16string_view unit) {
    const char16_t letter = words_.letterOf(unit.front());
    if (letter == 0 || letter > context_.lastCharacter) {
        line_.problem(ScriptProblem::letterReplaced, unit);
        return u'A';
    }
    return letter;
}

bool CommandReader::readLetter(std::u16string_view rest, bool other) {
    if (rest.empty() || !isShotLetter(rest.front())) {
        line_.problem(ScriptProblem::letterInvalid, rest.substr(0, 1));
        return false;
    }
    const char16_t letter = programmeLetter(rest.substr(0, 1));
    if (!readTail(rest.substr(1))) {
        return false;
    }
    if (other && letter == line_.actor()) {
        line_.problem(ScriptProblem::looksAtItself, rest.substr(0, 1));
        return false;
    }
    command_.letters[0] = letter;
    return true;
}

bool CommandReader::readLetterPair(std::u16string_view rest) {
    if (rest.size() < 2 || !isShotLetter(rest[0]) || !isShotLetter(rest[1])) {
        line_.problem(ScriptProblem::letterInvalid, rest.substr(0, 2));
        return false;
    }
    std::array<char16_t, 2> pair{programmeLetter(rest.substr(0, 1)),
                                 programmeLetter(rest.substr(1, 1))};
    if (pair[0] == pair[1]) {
        line_.problem(ScriptProblem::pairReplaced, rest.substr(0, 2));
        pair = {u'A', u'B'};
    }
    command_.letters = pair;
    return readTail(rest.substr(2));
}

bool CommandReader::wearsModel() {
    const bool wears = names_.wearsModel(line_.actor());
    if (!wears) {
        line_.problem(ScriptProblem::modelMissing, {}, letterText(line_.actor()));
    }
    return wears;
}

// ---- numbers

// "walk , fast" and "walk 3 steps, fast".
bool CommandReader::readCount(const CommandSpec& spec, std::u16string_view rest) {
    const bool isWait = spec.arguments == Arguments::seconds;
    if (startsWithSeparator(rest, words_)) {
        if (isWait) {
            line_.problem(ScriptProblem::numberMissing, rest.substr(0, 1));
        }
        return readTail(rest);
    }
    const auto behind = readUnit(rest, unitOf(spec.arguments), !isWait);
    return behind.has_value() && readTail(*behind);
}

// A number and the word of its unit, with or without its "s"; what follows them.
std::optional<std::u16string_view>
CommandReader::readUnit(std::u16string_view text, std::u16string_view unit, bool negativeAllowed) {
    const std::size_t blank = text.find(u' ');
    std::u16string number;
    if (blank != kNone) {
        number = parseNumber(text.substr(0, blank), words_);
    }
    if (number.empty() || (!negativeAllowed && number.front() == u'-')) {
        line_.problem(ScriptProblem::numberInvalid, text.substr(0, blank), unit);
        return std::nullopt;
    }
    std::u16string_view rest = dropAndTrim(text, blank, words_);
    if (!rest.starts_with(unit)) {
        line_.problem(ScriptProblem::unitMissing, rest, unit);
        return std::nullopt;
    }
    command_.number = std::move(number);
    rest = rest.substr(unit.size());
    return rest.substr(rest.starts_with(u's') ? 1 : 0);
}

// ---- names

bool CommandReader::readBehindColon(const CommandSpec& spec, std::u16string_view rest) {
    if (!startsWithColon(rest, words_)) {
        line_.problem(ScriptProblem::colonMissing, rest);
        return false;
    }
    const std::u16string_view text = dropAndTrim(rest, 1, words_);
    switch (spec.arguments) {
    case Arguments::setName:
        return readSet(text);
    case Arguments::fileName:
        readFile(text);
        return true;
    case Arguments::voiceName:
        return readVoice(text);
    default:
        return readModel(text);
    }
}

bool CommandReader::readSet(std::u16string_view text) {
    const Word& separators = words_[u"touten3"];
    const auto separator = std::find_if(text.begin(), text.end(),
                                        [&](char16_t unit) { return separators.holds(unit); });
    const auto at = static_cast<std::size_t>(separator - text.begin());
    command_.name = separator == text.end() ? text : trimScriptText(text.substr(0, at), words_);
    if (separator != text.end() && !readAdverbs(dropAndTrim(text, at + 1, words_))) {
        return false;
    }
    command_.english = names_.setNamed(command_.name);
    if (command_.english.empty()) {
        line_.problem(ScriptProblem::setUnknown, command_.name);
    }
    return !command_.english.empty();
}

bool CommandReader::readVoice(std::u16string_view text) {
    const std::size_t separator = findSeparator(text, words_);
    command_.name = separator == kNone ? text : trimScriptText(text.substr(0, separator), words_);
    std::u16string voice(command_.name);
    recognizeCommand(voice, words_, names_.poseNames, index_);
    const CommandSpec* spec = voiceNamed(voice);
    if (spec == nullptr) {
        line_.problem(ScriptProblem::voiceUnknown, command_.name);
        return false;
    }
    command_.english = spec->name;
    return separator == kNone || readAdverbs(dropAndTrim(text, separator + 1, words_));
}

bool CommandReader::readModel(std::u16string_view text) {
    command_.name = text;
    const bool known = names_.hasModel(text, line_.actor());
    if (!known) {
        line_.problem(ScriptProblem::modelUnknown, text);
    }
    return known;
}

// ---- sound files

void CommandReader::readFile(std::u16string_view text) {
    takeTrailingAdverbs(text);
    command_.name = text;
    takeCaption();
}

// Takes the adverbs off the end of `text`: behind the first `touten3` character
// whose rest reads as adverbs. Most rests fail at their first item, so that is
// read first; where the rest begins and where its first separator stands is
// looked up once, not once per character.
void CommandReader::takeTrailingAdverbs(std::u16string_view& text) {
    // A pose's adverbs were read from the same phrase, but are not these.
    command_.adverbs = {};
    command_.items.clear();
    const Word& marks = words_[u"touten3"];
    std::size_t start = 0;
    std::size_t separator = 0;
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (!marks.holds(text[at])) {
            continue;
        }
        start = std::max(start, at + 1);
        while (start < text.size() && words_.isBlank(text[start])) {
            ++start;
        }
        if (separator != kNone && separator <= start) {
            const std::size_t found = findSeparator(text.substr(start), words_);
            separator = found == kNone ? kNone : found + start;
        }
        const std::u16string_view item = text.substr(start, separator - start);
        AdverbValues values;
        if (findAdverb(trimScriptText(item, words_), words_) != nullptr &&
            parseAdverbs(text.substr(start), words_, values, nullptr, &command_.items)) {
            command_.adverbs = values;
            text = trimScriptText(text.substr(0, at), words_);
            return;
        }
        command_.items.clear();
    }
}

// Takes a caption in brackets off the end of the sound file's text.
void CommandReader::takeCaption() {
    constexpr std::u16string_view kCaptionWord = u"caption";
    const std::u16string_view text = command_.name;
    if (text.empty() || (text.back() != u')' && !words_[u"toji_kakko"].firstUnitIs(text.back()))) {
        return;
    }
    const LastOccurrence captionWord(text, words_[u"caption"]);
    const LastOccurrence captionEnglish(text, kCaptionWord);
    const LastOccurrence colon(text, u":");
    const LastOccurrence colonWord(text, words_[u"colon"]);
    const Word& brackets = words_[u"kakko_kakko"];
    std::size_t failed = 0; // where the last group that is none begins
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (at < failed || !brackets.holds(text[at])) {
            continue; // behind a bracket that is a blank comes the same group
        }
        std::u16string_view group = dropAndTrim(text, at + 1, words_);
        const auto startOf = [text](std::u16string_view part) {
            return static_cast<std::size_t>(part.data() - text.data());
        };
        failed = group.empty() ? text.size() : startOf(group);
        if (captionWord.atOrAfter(startOf(group))) {
            group = dropAndTrim(group, 2, words_);
        } else if (captionEnglish.atOrAfter(startOf(group))) {
            group = dropAndTrim(group, kCaptionWord.size(), words_);
        } else {
            continue;
        }
        if (colon.atOrAfter(startOf(group)) || colonWord.atOrAfter(startOf(group))) {
            group = dropUnits(group, 1);
            group.remove_suffix(group.empty() ? 0 : 1);
            command_.caption = trimScriptText(group, words_);
            command_.name = trimScriptText(text.substr(0, at), words_);
            return;
        }
    }
}

} // namespace tvml
