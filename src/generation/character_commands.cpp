// Commands that make a character do something. Entry: generateCharacterCommand.
#include <algorithm>
#include <array>
#include <span>

#include "generation/character_actions.h"
#include "generation/commands.h"
#include "generation/template_elements.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

// ---- values of placeholders

struct DegreeRow {
    std::u16string_view degree;
    std::array<std::u16string_view, 7> values; // in the order of the maps in Value
};

// clang-format off
// The degree of an adverb as each kind of command measures it. The third row
// also serves for every other degree, none included.
constexpr std::array<DegreeRow, 5> kDegreeMaps{{
    //         expression bow       bye       right     left      up        down
    {u"4.0",  {u"1.5",  u"90.0",  u"75.0",  u"-90.0", u"90.0",  u"-70.0", u"70.0"}},
    {u"2.0",  {u"1.25", u"45.0",  u"50.0",  u"-70.0", u"70.0",  u"-55.0", u"55.0"}},
    {u"1.0",  {u"1.0",  u"30.0",  u"25.0",  u"-50.0", u"50.0",  u"-40.0", u"30.0"}},
    {u"0.5",  {u"0.5",  u"20.0",  u"17.5",  u"-30.0", u"30.0",  u"-25.0", u"20.0"}},
    {u"0.25", {u"0.25", u"15.0",  u"10.0",  u"-10.0", u"10.0",  u"-10.0", u"10.0"}},
}};
// clang-format on
constexpr std::size_t kOrdinaryDegree = 2;
static_assert(kDegreeMaps[kOrdinaryDegree].degree == u"1.0");

std::u16string_view mappedDegree(Value map, std::u16string_view degree) {
    const DegreeRow* row = &kDegreeMaps[kOrdinaryDegree];
    for (const DegreeRow& candidate : kDegreeMaps) {
        if (candidate.degree == degree) {
            row = &candidate;
        }
    }
    return row
        ->values[static_cast<std::size_t>(map) - static_cast<std::size_t>(Value::expressionMap)];
}

std::u16string_view textOf(Value value, const AdverbValues& adverbs) {
    switch (value) {
    case Value::unused:
        return {};
    case Value::speed:
        return orDefault(adverbs.speed, u"1.0");
    case Value::degree:
        return orDefault(adverbs.degree, u"1.0");
    case Value::blocking:
        return orDefault(adverbs.blocking, u"yes");
    case Value::blockingOrNo:
        return orDefault(adverbs.blocking, u"no");
    default:
        return mappedDegree(value, adverbs.degree);
    }
}

constexpr std::array<Placeholder, 4> kPlaceholders{u"$1", u"$2", u"$3", u"$4"};

std::array<Filling, 4> fillingsOf(char16_t name, const std::array<Value, 3>& values,
                                  const AdverbValues& adverbs) {
    std::array<Filling, 4> fillings{{{kPlaceholders[0], letterText(name)}}};
    for (std::size_t i = 0; i < values.size(); ++i) {
        fillings[i + 1] = {kPlaceholders[i + 1], textOf(values[i], adverbs)};
    }
    return fillings;
}

// ---- commands

void writePose(Run& run, char16_t name, const RecognizedCommand& command, std::u16string& out) {
    const PoseText* pose = run.staging.findPose(command.pose, name);
    std::u16string filled;
    run.textTemplates.of(pose->text)
        .fill(fillingsOf(name, {Value::speed, Value::degree, Value::blocking}, command.adverbs),
              filled);
    appendBracketed(run, name, filled, out);
    run.tellTemplate(u"pose", pose->element);
}

void act(const CharacterAction& action) {
    switch (action.row.action) {
    case Action::fillTemplate:
        return fillValues(action, *elementOf(action.row).character, action.row.values);
    case Action::lookAtFellow:
        return lookAtFellow(action);
    case Action::lookAtPicture:
        return lookAtPicture(action);
    case Action::lookAt:
        return lookAtCharacter(action);
    case Action::sit:
        return sit(action);
    case Action::countedMove:
        return countedMove(action);
    case Action::speakNormally:
        return speakNormally(action);
    case Action::speakSlow:
        return setTalkSpeed(action, TalkSpeed::slow);
    case Action::speakVerySlow:
        return setTalkSpeed(action, TalkSpeed::verySlow);
    case Action::speakFast:
        return setTalkSpeed(action, TalkSpeed::fast);
    case Action::speakVeryFast:
        return setTalkSpeed(action, TalkSpeed::veryFast);
    case Action::playSoundFile:
        return playSoundFile(action);
    case Action::setVoice:
        return setVoice(action);
    case Action::setModel:
        return setModel(action);
    case Action::autoGesture:
        return switchGesture(action, true);
    case Action::manualGesture:
        return switchGesture(action, false);
    default:
        return; // of the studio
    }
}

} // namespace

void appendBracketed(const Run& run, char16_t name, std::u16string_view text, std::u16string& out) {
    const bool automatic = run.autoGesture[Run::slot(name)];
    if (automatic) {
        appendAutoGesture(name, false, out);
    }
    out += text;
    if (automatic) {
        appendAutoGesture(name, true, out);
    }
}

void appendAutoGesture(char16_t name, bool on, std::u16string& out) {
    out.append(u"character: autogesture(name=").append(letterText(name));
    out += on ? u", switch=on)\n" : u", switch=off)\n";
}

void fillElement(const CharacterAction& action, CharacterElement element,
                 std::span<const Filling> fillings) {
    const Variant* variant = action.run.select(element, action.name);
    std::u16string filled;
    if (variant != nullptr) {
        variant->text.fill(fillings, filled);
    }
    appendBracketed(action.run, action.name, filled, action.out);
}

// A placeholder that the command does not fill stays as the template has it.
void fillValues(const CharacterAction& action, CharacterElement element,
                const std::array<Value, 3>& values) {
    const auto fillings = fillingsOf(action.name, values, action.command.adverbs);
    const auto used = static_cast<std::size_t>(
        std::find(values.begin(), values.end(), Value::unused) - values.begin());
    fillElement(action, element, std::span(fillings).first(used + 1));
}

void generateCharacterCommand(Run& run, const ScriptLine& line, std::u16string& out) {
    const RecognizedCommand& command = *line.command();
    if (command.spec == nullptr) {
        return writePose(run, line.actor(), command, out);
    }
    act({run, *command.spec, command, line.actor(), out});
    run.state.talkStarted = true;
}

} // namespace tvml
