// Entries: those of script_suggestions.h.
#include "diagnostics/script_suggestions.h"

#include <algorithm>

#include "diagnostics/script_problems.h"
#include "diagnostics/suggestions.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

constexpr std::size_t kMost = 3;

const CommandSpec& commandNamed(std::u16string_view name) {
    return *std::ranges::find(kCommands, name, &CommandSpec::name);
}

bool isOfCharacter(const CommandSpec& row) {
    return row.taker == Taker::character || row.taker == Taker::setting;
}

// Commands that a line can give, those of the studio only without a speaker.
bool isOffered(const CommandSpec& row, bool withStudio) {
    return isOfCharacter(row) || (withStudio && row.taker == Taker::staging);
}

// The first loaded word of a row; empty without one.
std::u16string_view wordOf(const CommandSpec& row, const KeywordTable& words) {
    for (const RowWord& word : row.words) {
        if (words[word.key].hasUnits()) {
            return words[word.key].textOrEmpty();
        }
    }
    return {};
}

// A number in the digits of the vocabulary, as it is where a digit has no word.
std::u16string inOwnDigits(const KeywordTable& words, std::u16string_view number) {
    std::u16string text;
    for (const char16_t unit : number) {
        const bool isDigit = unit >= u'0' && unit <= u'9';
        const Key key = isDigit        ? Key::at(Key(u"num0").index() + unit - u'0')
                        : unit == u'.' ? Key(u"period")
                                       : Key(u"hyphen");
        const std::u16string_view own = words[key].textOrEmpty();
        text.append(own.empty() ? std::u16string_view(&unit, 1) : own);
    }
    return text;
}

void addOnce(Suggestions& texts, std::u16string text) {
    if (!text.empty() && texts.size() < kMost && std::ranges::find(texts, text) == texts.end()) {
        texts.push_back(std::move(text));
    }
}

// Writes commands as they would stand in place of the head of a line.
class CommandWriter {
public:
    CommandWriter(const ScriptChecks& checks, const CheckedLine& checked, std::u16string_view head)
        : checks_(checks), words_(checks.words), english_(looksEnglish(head)),
          withStudio_(checked.speaker() == 0), actor_(checked.line.actor()) {
        const std::u16string_view inner = checked.line.command()->inner;
        const auto end = static_cast<std::size_t>(head.data() - inner.data()) + head.size();
        hasColon_ = startsWithColon(dropAndTrim(inner, end, words_), words_);
    }

    bool isEnglish() const { return english_; }
    bool withStudio() const { return withStudio_; }

    // Empty when the command cannot stand here.
    std::u16string write(std::u16string_view target, const WordPattern& pattern) const {
        const std::size_t comma = target.find(u", ");
        const CommandSpec* row = fitting(commandNamed(target.substr(0, comma)), pattern);
        if (row == nullptr || !isOffered(*row, withStudio_)) {
            return {};
        }
        std::u16string text = english_ ? inEnglish(*row, pattern) : inWords(*row, pattern);
        if (comma != target.npos) {
            const std::u16string_view adverb = target.substr(comma + 2);
            text.append(separator()).append(this->adverb(adverb));
        }
        return text;
    }

    std::u16string_view separator() const {
        const std::u16string_view own = words_[u"touten2"].textOrEmpty();
        return english_ || own.empty() ? u", " : own;
    }

    std::u16string_view adverb(std::u16string_view english) const {
        const AdverbRow& row = *std::ranges::find(kAdverbRows, english, &AdverbRow::english);
        const std::u16string_view own = words_[row.key].textOrEmpty();
        return english_ || own.empty() ? english : own;
    }

private:
    std::size_t characters() const {
        return static_cast<std::size_t>(checks_.lastCharacter - u'A') + 1;
    }

    // The row, or another form of it that this programme has.
    const CommandSpec* fitting(const CommandSpec& row, const WordPattern& pattern) const {
        switch (row.condition) {
        case Condition::oneCharacter:
            return characters() == 1
                       ? &row
                       : &commandNamed(std::u16string(row.name) +
                                       (row.action == Action::trackshot ? u" on " : u" of "));
        case Condition::twoCharacters:
            if (characters() == 2) {
                return &row;
            }
            return characters() == 1               ? nullptr
                   : row.action == Action::twoshot ? &commandNamed(u"twoshot of ")
                                                   : &commandNamed(u"look at ");
        case Condition::severalCharacters:
            return characters() > 1 ? &row : nullptr;
        default:
            return row.match == Match::number && pattern.number.empty() ? nullptr : &row;
        }
    }

    bool isCharacter(char16_t unit, bool mayBeActor) const {
        const char16_t letter = words_.letterOf(unit);
        return letter != 0 && letter <= checks_.lastCharacter && (mayBeActor || letter != actor_);
    }

    std::u16string letterForm(char16_t letter) const {
        const Key key = Key::at(Key(u"A2").index() + 2 * static_cast<std::size_t>(letter - u'A'));
        const std::u16string_view own = words_[key].textOrEmpty();
        return english_ || own.empty() ? std::u16string(1, letter) : std::u16string(own);
    }

    // The letters as they were written, or those that can stand there.
    std::u16string letters(const CommandSpec& row, const WordPattern& pattern) const {
        const bool mayBeActor = row.arguments != Arguments::otherLetter;
        const bool areGood =
            pattern.letters.size() == lettersBefore(row.match) &&
            std::ranges::all_of(pattern.letters,
                                [&](char16_t unit) { return isCharacter(unit, mayBeActor); }) &&
            (pattern.letters.size() < 2 ||
             words_.letterOf(pattern.letters[0]) != words_.letterOf(pattern.letters[1]));
        if (areGood) {
            return pattern.letters;
        }
        const char16_t first = !mayBeActor && actor_ == u'A' ? u'B' : u'A';
        return letterForm(first) + (row.match == Match::twoLetters ? letterForm(u'B') : u"");
    }

    std::u16string number(const CommandSpec& row, const WordPattern& pattern) const {
        const bool isNegative = pattern.number.starts_with(u'-');
        const std::u16string_view digits(pattern.number);
        return std::u16string(
            digits.substr(isNegative && row.arguments == Arguments::seconds ? 1 : 0));
    }

    // Sets, files, voices and models stand behind a colon.
    std::u16string named(const CommandSpec& row, std::u16string_view word) const {
        std::u16string text(word);
        if (hasColon_ || !followsColon(row.arguments)) {
            return text;
        }
        const std::u16string name = someName(row.arguments);
        const std::u16string_view own = words_[u"colon"].textOrEmpty();
        return name.empty() ? name
                            : text.append(english_ || own.empty() ? u": " : own).append(name);
    }

    std::u16string someName(Arguments arguments) const {
        const StagingDescription& staging = checks_.staging;
        const auto first = [](const auto& names) {
            return names.empty() ? std::u16string() : names.begin()->first;
        };
        switch (arguments) {
        case Arguments::setName:
            return first(english_ ? staging.setEnglishFiles : staging.setFiles);
        case Arguments::voiceName:
            return std::u16string(english_ ? u"man" : wordOf(commandNamed(u"man"), words_));
        case Arguments::modelName: {
            const ModelTable& models =
                english_ ? staging.modelsByEnglishName : staging.modelsByJapaneseName;
            const auto own = models.find(actor_);
            return own == models.end() ? std::u16string() : first(own->second);
        }
        default:
            return u"Voice\\talk.wav";
        }
    }

    std::u16string inEnglish(const CommandSpec& row, const WordPattern& pattern) const {
        std::u16string text(row.name);
        if (row.match == Match::number) {
            const std::u16string_view unit = unitOf(row.arguments);
            return text.append(number(row, pattern)).append(u" ").append(unit).append(u"s");
        }
        return lettersBefore(row.match) > 0 ? text.append(letters(row, pattern)) : named(row, text);
    }

    std::u16string inWords(const CommandSpec& row, const WordPattern& pattern) const {
        const std::u16string_view word = wordOf(row, words_);
        if (word.empty()) {
            return inEnglish(row, pattern);
        }
        if (row.match == Match::number) {
            return inOwnDigits(words_, number(row, pattern)).append(word);
        }
        return lettersBefore(row.match) > 0 ? letters(row, pattern).append(word) : named(row, word);
    }

    const ScriptChecks& checks_;
    const KeywordTable& words_;
    const bool english_;
    const bool withStudio_;
    const char16_t actor_;
    bool hasColon_ = false;
};

// Finds the commands for one head.
class CommandSuggester {
public:
    CommandSuggester(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view head)
        : checks_(checks), meant_(checks.suggestions.meant()), head_(head),
          writer_(checks, checked, head) {}

    // False when the words mean nothing that is known.
    bool byMeaning() {
        const MeantWords::Meant meant = meant_.find(Sense::command, head_);
        if (meant.known) {
            for (const std::u16string_view target : meant.targets) {
                addOnce(found_, writer_.write(target, meant.pattern));
            }
            addPoses();
            return true;
        }
        return addWithAdverb() || addForName();
    }

    void bySpelling() {
        ClosestNames closest(head_);
        const WordPattern pattern = patternOf(head_);
        for (const CommandSpec& row : kCommands) {
            if (isOffered(row, writer_.withStudio())) {
                offer(row, pattern, closest);
            }
        }
        checks_.suggestions.compare(checks_.staging.poseNames.size());
        for (const auto& [japanese, english] : checks_.staging.poseNames) {
            closest.offer(writer_.isEnglish() ? english : japanese);
        }
        found_ = closest.take();
    }

    Suggestions take() { return std::move(found_); }

private:
    // A row's words as they might have been meant, for the first of which that can
    // stand here.
    void offer(const CommandSpec& row, const WordPattern& pattern, ClosestNames& closest) {
        const std::u16string shown = writer_.write(row.name, pattern);
        if (shown.empty()) {
            return;
        }
        closest.offer(shown);
        if (row.words.size() < 2 || writer_.isEnglish()) {
            return;
        }
        const std::u16string_view word = wordOf(row, checks_.words);
        const std::size_t at = shown.find(word);
        for (const RowWord& other : row.words) {
            const std::u16string_view text = checks_.words[other.key].textOrEmpty();
            if (text != word && !text.empty()) {
                closest.offer(std::u16string(shown).replace(at, word.size(), text));
            }
        }
    }

    // Poses whose name means the same as the head.
    void addPoses() {
        const MeaningIndex& table = MeaningIndex::instance();
        const std::u16string key = wordKey(head_);
        checks_.suggestions.compare(2 * checks_.staging.poseNames.size());
        for (const auto& [japanese, english] : checks_.staging.poseNames) {
            for (const Sense sense : {Sense::command, Sense::nothing}) {
                const auto& ours = table.find(sense, key);
                const auto means = [&](const std::u16string& name) {
                    const auto& theirs = table.find(sense, wordKey(name));
                    return !ours.empty() && !theirs.empty() && ours.front() == theirs.front();
                };
                if (means(japanese) || means(english)) {
                    addOnce(found_, writer_.isEnglish() ? english : japanese);
                }
            }
        }
    }

    // "ゆっくり頷く": a command and an adverb in one.
    bool addWithAdverb() {
        const std::size_t size = std::min(head_.size(), ClosestNames::kLongestGiven);
        for (std::size_t cut = size; cut-- > 1;) {
            const bool inWord = writer_.isEnglish() && head_[cut] != u' ';
            if (!inWord && (addPair(head_.substr(cut), head_.substr(0, cut)) ||
                            addPair(head_.substr(0, cut), head_.substr(cut)))) {
                return true;
            }
        }
        return false;
    }

    bool addPair(std::u16string_view commandText, std::u16string_view adverbText) {
        const MeantWords::Meant adverb =
            meant_.find(Sense::adverb, trimScriptText(adverbText, checks_.words));
        if (adverb.targets.empty()) {
            return false;
        }
        const MeantWords::Meant command =
            meant_.find(Sense::command, trimScriptText(commandText, checks_.words));
        for (const std::u16string_view target : command.targets) {
            const std::u16string text = writer_.write(target, command.pattern);
            const bool mayHaveMore = target.find(u',') == target.npos &&
                                     !followsColon(commandNamed(target).arguments) &&
                                     commandNamed(target).arguments != Arguments::alone;
            if (!text.empty() && mayHaveMore) {
                std::u16string whole(text);
                addOnce(found_, whole.append(writer_.separator())
                                    .append(writer_.adverb(adverb.targets.front())));
            }
        }
        return !found_.empty();
    }

    // "田中を見る": a name where a letter stands.
    bool addForName() {
        for (const CommandSpec& row : kCommands) {
            if (row.match != Match::letter || !isOffered(row, writer_.withStudio())) {
                continue;
            }
            const bool fits = std::ranges::any_of(row.words, [&](const RowWord& word) {
                const std::u16string_view text = checks_.words[word.key].textOrEmpty();
                return !text.empty() && head_.size() > text.size() && head_.ends_with(text);
            });
            if (fits) {
                addOnce(found_, writer_.write(row.name, {}));
                return !found_.empty();
            }
        }
        return false;
    }

    ScriptChecks& checks_;
    const MeantWords& meant_;
    const std::u16string_view head_;
    const CommandWriter writer_;
    Suggestions found_;
};

// What else than the head decides about its suggestions.
std::u16string kindOfCommand(const CheckedLine& checked, std::u16string_view head,
                             const KeywordTable& words, char16_t first) {
    const std::u16string_view inner = checked.line.command()->inner;
    const auto end = static_cast<std::size_t>(head.data() - inner.data()) + head.size();
    const bool colon = startsWithColon(dropAndTrim(inner, end, words), words);
    return {first, checked.speaker() == 0 ? u'-' : checked.line.actor(), colon ? u':' : u' '};
}

template <typename Names>
void offerKeys(ScriptChecks& checks, ClosestNames& closest, const Names& names) {
    checks.suggestions.compare(names.size());
    for (const auto& [name, value] : names) {
        closest.offer(name);
    }
}

// A language in front of or behind the word for a voice.
struct VoiceLanguage {
    std::u16string_view text;
    std::u16string_view suffix;
};
constexpr std::array<VoiceLanguage, 10> kVoiceLanguages{{{u"日本語の", u"_ja"},
                                                         {u"日本語", u"_ja"},
                                                         {u"日本人の", u"_ja"},
                                                         {u"英語の", u"_en"},
                                                         {u"英語", u"_en"},
                                                         {u"japanese", u"_ja"},
                                                         {u"english", u"_en"},
                                                         {u"_ja", u"_ja"},
                                                         {u"_en", u"_en"},
                                                         {u"日本", u"_ja"}}};

std::u16string meantVoice(const MeantWords& meant, std::u16string_view given) {
    std::u16string_view suffix;
    std::u16string rest = foldedText(given);
    for (const VoiceLanguage& language : kVoiceLanguages) {
        const std::u16string text = foldedText(language.text);
        const std::size_t at = rest.find(text);
        if (at != rest.npos && (at == 0 || at + text.size() == rest.size())) {
            rest.erase(at, text.size());
            suffix = language.suffix;
            break;
        }
    }
    const MeantWords::Meant voice = meant.find(Sense::voice, rest);
    if (voice.targets.empty()) {
        return {};
    }
    std::u16string_view name = voice.targets.front();
    if (!suffix.empty()) {
        name = name.substr(0, name.find(u'_'));
    }
    return std::u16string(name).append(suffix);
}

// A word of the vocabulary, or the English one where the line is English or there
// is no word.
std::u16string inLanguage(const ScriptChecks& checks, std::u16string_view given, Key key,
                          std::u16string_view english) {
    const std::u16string_view own = checks.words[key].textOrEmpty();
    return std::u16string(looksEnglish(given) || own.empty() ? english : own);
}

std::u16string markerText(const ScriptChecks& checks, std::u16string_view given,
                          std::u16string_view name) {
    const MarkerSpec& row = *std::ranges::find(kMarkers, name, &MarkerSpec::name);
    for (const MarkerSpelling& spelling : row.spellings) {
        if (spelling.english.empty()) {
            return inLanguage(checks, given, spelling.word, name);
        }
    }
    return std::u16string(name);
}

// How many names a message lists of those that exist.
constexpr std::size_t kNamed = 6;

// The first ones, and one more when there are more.
template <typename Map> Suggestions namesIn(const Map& map) {
    Suggestions names;
    for (const auto& [name, unused] : map) {
        if (names.size() <= kNamed) {
            names.push_back(name);
        } else {
            break;
        }
    }
    return names;
}

std::u16string existing(const ScriptChecks& checks, const Suggestions& names) {
    if (names.empty()) {
        return std::u16string(checks.text(Message::names_none));
    }
    const std::u16string_view comma = checks.text(Message::names_comma);
    std::u16string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        list.append(i == 0 ? u"" : comma);
        if (i == kNamed) {
            list += u'…';
            break;
        }
        list += names[i];
    }
    return formatted(Message::names_exist, checks.language, {list});
}

} // namespace

const MeantWords& SuggestionMemory::meant() {
    if (meant_ == nullptr) {
        meant_ = std::make_unique<MeantWords>(words_);
    }
    return *meant_;
}

Suggestions meantCommands(ScriptChecks& checks, const CheckedLine& checked,
                          std::u16string_view head) {
    return checks.suggestions.once(kindOfCommand(checked, head, checks.words, u'm'), head, [&] {
        CommandSuggester suggester(checks, checked, head);
        suggester.byMeaning();
        return suggester.take();
    });
}

Suggestions suggestedCommands(ScriptChecks& checks, const CheckedLine& checked,
                              std::u16string_view head) {
    return checks.suggestions.once(kindOfCommand(checked, head, checks.words, u'c'), head, [&] {
        CommandSuggester suggester(checks, checked, head);
        if (!suggester.byMeaning()) {
            suggester.bySpelling();
        }
        return suggester.take();
    });
}

Suggestions suggestedAdverbs(ScriptChecks& checks, std::u16string_view item) {
    return checks.suggestions.once(u"adverb", item, [&] {
        Suggestions found;
        const MeantWords::Meant meant = checks.suggestions.meant().find(Sense::adverb, item);
        ClosestNames closest(item);
        for (const AdverbRow& row : kAdverbRows) {
            const std::u16string text = inLanguage(checks, item, row.key, row.english);
            closest.offer(text);
            if (std::ranges::find(meant.targets, row.english) != meant.targets.end()) {
                addOnce(found, text);
            }
        }
        return meant.known ? found : closest.take();
    });
}

Suggestions suggestedVoices(ScriptChecks& checks, std::u16string_view given) {
    return checks.suggestions.once(u"voice", given, [&] {
        const std::u16string meant = meantVoice(checks.suggestions.meant(), given);
        ClosestNames closest(given);
        for (const CommandSpec& row : kCommands) {
            if (row.taker != Taker::voice) {
                continue;
            }
            const std::u16string text = inLanguage(checks, given, row.words.begin()->key, row.name);
            if (row.name == meant) {
                return Suggestions{text};
            }
            closest.offer(text);
        }
        return closest.take();
    });
}

Suggestions suggestedSets(ScriptChecks& checks, std::u16string_view given) {
    return checks.suggestions.once(u"set", given, [&] {
        ClosestNames closest(given);
        offerKeys(checks, closest, checks.staging.setFiles);
        offerKeys(checks, closest, checks.staging.setEnglishFiles);
        return closest.take();
    });
}

Suggestions suggestedModels(ScriptChecks& checks, char16_t letter, std::u16string_view given) {
    std::u16string kind = u"model";
    kind += letter;
    return checks.suggestions.once(kind, given, [&] {
        ClosestNames closest(given);
        for (const ModelTable* table :
             {&checks.staging.modelsByJapaneseName, &checks.staging.modelsByEnglishName}) {
            if (const auto models = table->find(letter); models != table->end()) {
                offerKeys(checks, closest, models->second);
            }
        }
        return closest.take();
    });
}

std::u16string existingSets(const ScriptChecks& checks, std::u16string_view given) {
    return existing(checks, looksEnglish(given) ? namesIn(checks.staging.setEnglishFiles)
                                                : namesIn(checks.staging.setFiles));
}

std::u16string existingModels(const ScriptChecks& checks, char16_t letter,
                              std::u16string_view given) {
    const ModelTable& table = looksEnglish(given) ? checks.staging.modelsByEnglishName
                                                  : checks.staging.modelsByJapaneseName;
    const auto models = table.find(letter);
    return existing(checks, models == table.end() ? Suggestions{} : namesIn(models->second));
}

std::u16string existingVoices(const ScriptChecks& checks, std::u16string_view given) {
    Suggestions names;
    for (const CommandSpec& row : kCommands) {
        if (row.taker == Taker::voice && names.size() <= kNamed) {
            names.push_back(inLanguage(checks, given, row.words.begin()->key, row.name));
        }
    }
    return existing(checks, names);
}

Suggestions suggestedColours(ScriptChecks& checks, std::u16string_view given) {
    return checks.suggestions.once(u"colour", given, [&] {
        Suggestions found;
        const MeantWords::Meant meant = checks.suggestions.meant().find(Sense::colour, given);
        for (const std::u16string_view target : meant.targets) {
            const auto row = std::ranges::find_if(
                kColours, [&](const ColourSpec& colour) { return colour.word.name() == target; });
            addOnce(found, inLanguage(checks, given, row->word, target));
        }
        return found;
    });
}

Suggestions suggestedTags(ScriptChecks& checks, std::u16string_view head) {
    return checks.suggestions.once(u"tag", head, [&] {
        Suggestions found;
        const MeantWords& words = checks.suggestions.meant();
        for (const std::u16string_view target : words.find(Sense::marker, head).targets) {
            addOnce(found, markerText(checks, head, target));
        }
        for (const std::u16string_view letter : words.find(Sense::speaker, head).targets) {
            addOnce(found, inLanguage(checks, head, u"A2", letter));
        }
        return found;
    });
}

std::u16string suggestedNumber(const ScriptChecks& checks, std::u16string_view line,
                               std::u16string_view written) {
    const std::u16string number = meantNumber(written);
    return looksEnglish(line) ? number : inOwnDigits(checks.words, number);
}

} // namespace tvml
