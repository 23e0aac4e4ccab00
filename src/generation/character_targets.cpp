// Character commands with a target, a count or model values. Entries: lookAt…,
// sit, walkSteps, turnDegrees.
#include "generation/character_call.h"
#include "generation/command_arguments.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

constexpr std::u16string_view kMissingHipValue = u"N/A";

// The four placeholders of a look at something.
void fillLook(CharacterCall& call, char16_t who, std::u16string_view target,
              const AdverbValues& adverbs) {
    const std::array<Filling, 4> fillings{{
        {u"$1", letterText(who)},
        {u"$2", target},
        {u"$3", orDefault(adverbs.speed, u"1.0")},
        {u"$4", orDefault(adverbs.blocking, u"yes")},
    }};
    fillElement(call, call.row.element, fillings);
}

// "walk , fast" and "walk 3 steps, fast": the plain template in the first form,
// the counting one in the second.
bool countedMove(CharacterCall& call, CharacterElement plain, std::u16string_view unit) {
    const KeywordTable& words = call.run.words;
    const std::u16string_view rest = trimScriptText(call.rest, words);
    if (startsWithSeparator(rest, words)) {
        const auto adverbs = readTail(call.run, rest);
        if (!adverbs.has_value()) {
            return false;
        }
        fillArguments(call, plain, {Argument::speed, Argument::blocking}, *adverbs);
        return true;
    }
    const auto count = readCount(call.run, rest, unit, true);
    if (!count.has_value()) {
        return false;
    }
    const auto adverbs = readTail(call.run, count->rest);
    if (!adverbs.has_value()) {
        return false;
    }
    fillLook(call, call.name, count->number, *adverbs);
    return true;
}

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

bool lookAtFellow(CharacterCall& call) {
    const auto adverbs = readTail(call.run, call.rest);
    if (!adverbs.has_value()) {
        return false;
    }
    const bool isFirst = call.name == u'A';
    fillLook(call, isFirst ? u'A' : u'B', isFirst ? u"B" : u"A", *adverbs);
    return true;
}

bool lookAtCharacter(CharacterCall& call) {
    const std::u16string_view rest = trimScriptText(call.rest, call.run.words);
    if (rest.empty() || !isShotLetter(rest.front())) {
        call.run.tell(ScriptProblem::letterInvalid, rest.substr(0, 1));
        return false;
    }
    const char16_t target = programmeLetter(call.run, rest.substr(0, 1));
    const auto adverbs = readTail(call.run, rest.substr(1));
    if (!adverbs.has_value()) {
        return false;
    }
    if (target == call.name) {
        call.run.tell(ScriptProblem::looksAtItself, rest.substr(0, 1));
        return false;
    }
    fillLook(call, call.name, letterText(target), *adverbs);
    return true;
}

bool lookAtPicture(CharacterCall& call) {
    const auto adverbs = readTail(call.run, call.rest);
    if (!adverbs.has_value()) {
        return false;
    }
    const std::int32_t plate = call.run.state.subImageCount;
    if (plate > 0) {
        fillLook(call, call.name, u"IMAGEPLATE" + decimalText(plate), *adverbs);
    } else {
        call.run.tell(ScriptProblem::conditionNotMet, {}, call.row.name);
        call.out += u"wait( time=0.0 )\n";
    }
    return true;
}

bool sit(CharacterCall& call) {
    const StagingDescription& staging = call.run.staging;
    if (!staging.currentModel.contains(call.name)) {
        call.run.tell(ScriptProblem::modelMissing, {}, letterText(call.name));
        return false;
    }
    const std::u16string_view model = staging.currentModelName(call.name);
    HipValues hip =
        hipValuesOf(StagingDescription::modelIn(staging.modelsByJapaneseName, call.name, model));
    if (hip.level.empty() && hip.position.empty()) {
        hip =
            hipValuesOf(StagingDescription::modelIn(staging.modelsByEnglishName, call.name, model));
    }
    const auto adverbs = readTail(call.run, call.rest);
    if (!adverbs.has_value()) {
        return false;
    }
    const std::array<Filling, 5> fillings{{
        {u"$1", letterText(call.name)},
        {u"$2", orDefault(adverbs->speed, u"1.0")},
        {u"$3", orDefault(adverbs->blocking, u"yes")},
        {u"$4", orDefault(hip.level, u"*")},
        {u"$5", orDefault(hip.position, u"*")},
    }};
    fillElement(call, call.row.element, fillings);
    return true;
}

bool walkSteps(CharacterCall& call) {
    return countedMove(call, CharacterElement::walk, u"step");
}

bool turnDegrees(CharacterCall& call) {
    return countedMove(call, CharacterElement::turn, u"degree");
}

} // namespace tvml
