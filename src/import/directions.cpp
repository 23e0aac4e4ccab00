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
    if (act.empty() || act.size() > CommandMeanings::kLongestMeant) {
        return {std::u16string(direction)};
    }
    std::u16string text = commandIn(act, actor);
    bool isStudio = false;
    if (text.empty() || !isTaken(text, actor, isStudio)) {
        text.clear();
    }
    return {std::u16string(direction), std::move(text), isStudio ? u'\0' : actor};
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
