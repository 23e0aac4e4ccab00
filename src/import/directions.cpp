// Entry: Directions::read.
#include "import/directions.h"

#include <algorithm>
#include <array>

#include "diagnostics/suggestions.h"
#include "import/play_lines.h"
#include "reading/script_text.h"

namespace tvml::plays {
namespace {

// What ends a direction and says nothing.
std::u16string_view withoutEnd(std::u16string_view text) {
    while (!text.empty() && (isBlank(text.back()) || holds(u"。．.、，,!！…", text.back()))) {
        text.remove_suffix(1);
    }
    return trimmed(text);
}

// "She bows.": the one who speaks.
std::u16string_view withoutPronoun(std::u16string_view act) {
    constexpr std::array<std::u16string_view, 6> kPronouns{u"He ",  u"She ", u"he ",
                                                           u"she ", u"彼は", u"彼女は"};
    const auto pronoun = std::ranges::find_if(
        kPronouns, [act](std::u16string_view each) { return act.starts_with(each); });
    return pronoun == kPronouns.end() ? act : trimmed(act.substr(pronoun->size()));
}

// Who acts, without an act: a clause of "二人、去る".
bool isSubject(std::u16string_view clause) {
    constexpr std::array<std::u16string_view, 8> kPeople{u"二人", u"ふたり", u"三人", u"一同",
                                                         u"全員", u"みんな", u"both", u"all"};
    return std::ranges::find(kPeople, clause) != kPeople.end();
}

// The form in which a verb goes on to the next one, and those in which a dictionary
// may have it: "うなずいて" is "うなずく".
struct VerbEnding {
    std::u16string_view going;
    std::array<std::u16string_view, 3> plain;
};
constexpr std::array<VerbEnding, 6> kVerbEndings{{
    {u"して", {u"する", u"す", u""}}, // a noun alone is left, too
    {u"いて", {u"く", u"いる", u"いる"}},
    {u"いで", {u"ぐ", u"ぐ", u"ぐ"}},
    {u"って", {u"る", u"う", u"つ"}},
    {u"んで", {u"む", u"ぶ", u"ぬ"}},
    {u"て", {u"る", u"る", u"る"}},
}};

// What is done beside something else: "手を振りながら".
constexpr std::array<std::u16string_view, 2> kBesides{u"ながら", u"つつ"};
constexpr std::u16string_view kStemKana = u"きぎしちにびみりい";
constexpr std::u16string_view kPlainKana = u"くぐすつぬぶむるう";

// The dictionary's forms of "手を振り", and the stem itself, which is often a noun.
std::vector<std::u16string> formsOfStem(std::u16string_view stem) {
    std::vector<std::u16string> forms{std::u16string(stem), std::u16string(stem).append(u"る")};
    const std::size_t kana = stem.empty() ? kNone : kStemKana.find(stem.back());
    if (kana != kNone) {
        forms.push_back(std::u16string(stem.substr(0, stem.size() - 1)));
        forms.back() += kPlainKana[kana];
    }
    return forms;
}

// The act as it is, then what a dictionary would have.
std::vector<std::u16string> formsOf(std::u16string_view act) {
    std::vector<std::u16string> forms{std::u16string(act)};
    const auto ends = [act](std::u16string_view ending) { return act.ends_with(ending); };
    if (const auto beside = std::ranges::find_if(kBesides, ends); beside != kBesides.end()) {
        const auto more = formsOfStem(act.substr(0, act.size() - beside->size()));
        forms.insert(forms.end(), more.begin(), more.end());
        return forms;
    }
    const auto ending = std::ranges::find_if(kVerbEndings, ends, &VerbEnding::going);
    if (ending != kVerbEndings.end()) {
        const std::u16string_view stem = act.substr(0, act.size() - ending->going.size());
        for (const std::u16string_view plain : ending->plain) {
            forms.push_back(std::u16string(stem).append(plain));
        }
    }
    return forms;
}

// Longer ones tell a story.
constexpr std::size_t kLongestDirection = 200;

std::vector<std::u16string_view> clausesOf(std::u16string_view direction) {
    std::vector<std::u16string_view> clauses;
    while (!direction.empty()) {
        const std::size_t end =
            std::min(direction.find_first_of(u"。．、，.,;；"), direction.size());
        const std::u16string_view clause = trimmed(direction.substr(0, end));
        if (!clause.empty()) {
            clauses.push_back(clause);
        }
        direction.remove_prefix(std::min(end + 1, direction.size()));
    }
    return clauses;
}

} // namespace

std::vector<ReadDirection> Directions::read(std::u16string_view direction, char16_t speaker) const {
    std::vector<ReadDirection> whole{{std::u16string(direction)}};
    if (direction.size() > kLongestDirection) {
        return whole;
    }
    std::size_t units = 0;
    const CastMember* const named = cast_.actorOf(direction, units);
    const char16_t actor = named != nullptr ? named->letter : speaker;
    const std::u16string_view rest = trimmed(direction.substr(units));
    const std::u16string_view act = named == nullptr ? withoutPronoun(rest) : rest;
    if (ReadDirection one = readOne(act, actor); !one.command.empty()) {
        one.text = direction;
        return {std::move(one)};
    }
    std::vector<ReadDirection> clauses;
    for (const std::u16string_view clause : clausesOf(act)) {
        clauses.push_back(readOne(clause, actor));
    }
    const bool isSome = std::ranges::any_of(
        clauses, [](const ReadDirection& clause) { return !clause.command.empty(); });
    return isSome ? clauses : whole;
}

ReadDirection Directions::readOne(std::u16string_view direction, char16_t actor) const {
    const std::u16string_view act = withoutEnd(direction);
    if (act.size() <= CommandMeanings::kLongestMeant && !isSubject(act)) {
        for (const std::u16string& form : formsOf(act)) {
            std::u16string text = form.empty() ? form : commandIn(form, actor);
            bool isStudio = false;
            if (!text.empty() && isTaken(text, actor, isStudio)) {
                return {std::u16string(direction), std::move(text), isStudio ? u'\0' : actor};
            }
        }
    }
    return {std::u16string(direction)};
}

std::u16string Directions::commandIn(std::u16string_view direction, char16_t actor) const {
    bool isStudio = false;
    if (isTaken(direction, actor, isStudio)) {
        return std::u16string(direction);
    }
    const MeantCommand meant =
        meanings_.meantBy(direction, actor == 0 ? u'A' : actor, lastCharacter_);
    return meant.text.empty() || meant.nobodyNamed ? wordMeant(direction) : meant.text;
}

// A word of the table with an ending that does not matter: "bows". Those that take
// arguments would need a guess.
std::u16string Directions::wordMeant(std::u16string_view direction) const {
    const MeantWords::Meant meant = words_.find(Sense::command, direction);
    const std::u16string_view name = meant.targets.empty() ? u"" : meant.targets.front();
    const auto row = std::ranges::find(kCommands, name, &CommandSpec::name);
    const bool isPlain = row != kCommands.end() && row->match == Match::equals &&
                         !followsColon(row->arguments) && meant.pattern.number.empty() &&
                         meant.pattern.letters.empty();
    if (!isPlain) {
        return {};
    }
    const std::u16string_view word =
        row->words.size() > 0 ? reader_.words()[row->words.begin()->key].textOrEmpty() : u"";
    return std::u16string(looksEnglish(direction) || word.empty() ? name : word);
}

// As the conversion would read it, in the studio when nobody acts.
bool Directions::isTaken(std::u16string_view inner, char16_t actor, bool& isStudio) const {
    for (const bool withActor : {false, true}) {
        if (withActor && actor == 0) {
            continue;
        }
        std::u16string line;
        if (withActor) {
            line.push_back(std::min(actor, lastCharacter_));
            line.push_back(u':');
        }
        line.append(u"(").append(inner).append(u")");
        ScriptLine read;
        reader_.read(line, {lastCharacter_, state_.conditions()}, read);
        isStudio = !withActor;
        const TakenBy wanted = withActor ? read.takenBy() : TakenBy::staging;
        if (read.takenBy() == wanted && wanted != TakenBy::nothing && read.problems.empty()) {
            return read.command() != nullptr;
        }
    }
    return false;
}

} // namespace tvml::plays
