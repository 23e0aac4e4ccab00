// Commands of a character with a target, a count or model values. Entries:
// lookAt…, sit, countedMove.
#include "generation/character_actions.h"
#include "generation/template_elements.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

constexpr std::u16string_view kMissingHipValue = u"N/A";

// A template with the character, a target or a count, and the usual adverbs.
void fillWithTarget(const CharacterAction& action, char16_t who, std::u16string_view target) {
    const AdverbValues& adverbs = action.command.adverbs;
    const std::array<Filling, 4> fillings{{
        {u"$1", letterText(who)},
        {u"$2", target},
        {u"$3", orDefault(adverbs.speed, u"1.0")},
        {u"$4", orDefault(adverbs.blocking, u"yes")},
    }};
    fillElement(action, *elementOf(action.row).character, fillings);
}

// The row without a number: "walk" for "walk ".
constexpr const CommandSpec& plainRow(const CommandSpec& counted) {
    for (const CommandSpec& row : kCommands) {
        if (row.name == counted.name.substr(0, counted.name.size() - 1)) {
            return row;
        }
    }
    return counted;
}

constexpr bool countedRowsHavePlainOnes() {
    for (const CommandSpec& row : kCommands) {
        if (row.action == Action::countedMove && plainRow(row).action != Action::fillTemplate) {
            return false;
        }
    }
    return true;
}
static_assert(countedRowsHavePlainOnes());

struct HipValues {
    std::u16string_view level;
    std::u16string_view position;
};

HipValues hipValuesOf(const CharacterModel* model) {
    const auto given = [](const std::u16string& value) {
        return value == kMissingHipValue ? std::u16string_view{} : std::u16string_view(value);
    };
    return model == nullptr ? HipValues{}
                            : HipValues{given(model->hiplevel), given(model->hipposition)};
}

} // namespace

void lookAtFellow(const CharacterAction& action) {
    const bool isFirst = action.name == u'A';
    fillWithTarget(action, isFirst ? u'A' : u'B', isFirst ? u"B" : u"A");
}

void lookAtCharacter(const CharacterAction& action) {
    fillWithTarget(action, action.name, letterText(action.command.letters[0]));
}

void lookAtPicture(const CharacterAction& action) {
    const std::int32_t plate = action.run.state.subImageCount;
    if (plate > 0) {
        fillWithTarget(action, action.name, u"IMAGEPLATE" + decimalText(plate));
    } else {
        action.run.tell(ScriptProblem::conditionNotMet, {}, action.row.name, &action.row);
        action.out += u"wait( time=0.0 )\n";
    }
}

void sit(const CharacterAction& action) {
    const StagingDescription& staging = action.run.staging;
    const std::u16string_view model = staging.currentModelName(action.name);
    HipValues hip =
        hipValuesOf(StagingDescription::modelIn(staging.modelsByJapaneseName, action.name, model));
    if (hip.level.empty() && hip.position.empty()) {
        hip = hipValuesOf(
            StagingDescription::modelIn(staging.modelsByEnglishName, action.name, model));
    }
    const AdverbValues& adverbs = action.command.adverbs;
    const std::array<Filling, 5> fillings{{
        {u"$1", letterText(action.name)},
        {u"$2", orDefault(adverbs.speed, u"1.0")},
        {u"$3", orDefault(adverbs.blocking, u"yes")},
        {u"$4", orDefault(hip.level, u"*")},
        {u"$5", orDefault(hip.position, u"*")},
    }};
    fillElement(action, *elementOf(action.row).character, fillings);
}

// "walk , fast" and "walk 3 steps, fast": the plain template in the first form,
// the counting one in the second.
void countedMove(const CharacterAction& action) {
    if (!action.command.number.empty()) {
        return fillWithTarget(action, action.name, action.command.number);
    }
    const CommandSpec& plain = plainRow(action.row);
    fillValues(action, *elementOf(plain).character, plain.values);
}

} // namespace tvml
