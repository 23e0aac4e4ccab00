// Commands that change the studio. Entry: generateStagingCommand.
#include <array>
#include <span>

#include "generation/character_actions.h"
#include "generation/commands.h"
#include "generation/template_elements.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

// A command of the studio on its way into the output.
struct StudioAction {
    Run& run;
    const CommandSpec& row;
    const RecognizedCommand& command;
    std::u16string& out;

    PlainElement element() const { return *elementOf(row).plain; }
    bool hasText(PlainElement text) const { return !run.staging.plain(text).empty(); }
    std::u16string_view speed() const { return orDefault(command.adverbs.speed, u"1.0"); }
    std::u16string_view blocking() const { return orDefault(command.adverbs.blocking, u"yes"); }
};

// ---- pieces of output

constexpr std::u16string_view kSwitchToCam = u"camera: switch( name=Cam )\n";
constexpr std::u16string_view kSwitchToOther = u"camera: switch( name=CamOTHER )\n";
constexpr std::u16string_view kAutoSwitchingOff = u"camera: autoswitching(switch=off)\n";
constexpr std::u16string_view kAutoSwitchingOn = u"camera: autoswitching(switch=on)\n";

void appendFilled(const Variant* variant, std::span<const Filling> fillings, std::u16string& out) {
    if (variant != nullptr) {
        variant->text.fill(fillings, out);
    }
}

// A text of the description, which no line changes.
void appendFilled(const StudioAction& action, PlainElement element,
                  std::span<const Filling> fillings) {
    action.run.textTemplates.of(action.run.use(element)).fill(fillings, action.out);
}

void appendGiven(std::u16string_view name, std::u16string_view value, std::u16string& out) {
    if (!value.empty()) {
        out.append(name).append(value);
    }
}

// ---- pictures, sets and lighting

void hidePlate(const StudioAction& action) {
    const RunState& state = action.run.state;
    const bool isBackground = action.row.condition == Condition::bgImageShown;
    const std::u16string number =
        decimalText(isBackground ? state.bgImageCount : state.subImageCount);
    const std::array<Filling, 1> fillings{{{u"$1", number}}};
    appendFilled(action, action.element(), fillings);
}

// A separator right behind "wait " leaves no place for a number; it is written
// without one.
void wait(const StudioAction& action) {
    action.out.append(u"wait( time=").append(action.command.number).append(u" )\n");
}

// Before the first talk the set-up shows the set.
void changeSet(const StudioAction& action) {
    Run& run = action.run;
    const std::u16string_view name = action.command.english;
    if (!run.state.talkStarted) {
        run.initialSetName = name;
        run.initialSetLine = run.state.lineNumber;
        action.out.append(u"// Initial set is set to \"").append(name).append(u".\"\n");
        return;
    }
    const std::u16string& file = run.staging.setEnglishFiles.find(name)->second;
    action.out.append(u"set: openmodel( name=").append(name).append(u", filename=\"");
    action.out.append(file).append(u"\" )\n");
    action.out.append(u"set: change( name=").append(name).append(u" )\n");
}

constexpr InitialLighting lightingOf(PlainElement element) {
    static_assert(indexOf(PlainElement::lightoff) - indexOf(PlainElement::daylight) ==
                  static_cast<std::size_t>(InitialLighting::lightOff));
    return static_cast<InitialLighting>(indexOf(element) - indexOf(PlainElement::daylight));
}

void light(const StudioAction& action) {
    RunState& state = action.run.state;
    const PlainElement element = action.element();
    if (!state.talkStarted) {
        state.initialLighting = lightingOf(element);
        state.initialLightingLine = state.lineNumber;
        action.out.append(u"// Initial lighting is set to \"").append(action.row.name);
        action.out.append(u".\"\n");
    } else if (action.hasText(element)) {
        action.out += action.run.use(element);
    } else {
        action.out.append(u"// ").append(action.row.element);
        action.out.append(u"_tvml cannot be retrieved.\n");
    }
}

// ---- shots

// A shot that names no character is one of "A".
char16_t targetOf(const StudioAction& action) {
    const char16_t letter = action.command.letters[0];
    return letter != 0 ? letter : u'A';
}

void closeUp(const StudioAction& action) {
    action.out += kSwitchToCam;
    const std::array<Filling, 3> fillings{{
        {u"$1", letterText(targetOf(action))},
        {u"$2", action.speed()},
        {u"$3", action.blocking()},
    }};
    appendFilled(action.run.select(*elementOf(action.row).character, targetOf(action)), fillings,
                 action.out);
}

void trackshot(const StudioAction& action) {
    const std::u16string_view target = letterText(targetOf(action));
    action.out += kSwitchToCam;
    if (action.hasText(PlainElement::trackshot)) {
        const std::array<Filling, 3> fillings{{
            {u"$1", target},
            {u"$2", action.speed()},
            {u"$3", action.blocking()},
        }};
        appendFilled(action, PlainElement::trackshot, fillings);
        return;
    }
    action.out.append(u"camera: catch( name=Cam, target=").append(target);
    appendGiven(u", speed=", action.command.adverbs.speed, action.out);
    appendGiven(u", wait=", action.command.adverbs.blocking, action.out);
    action.out += u" )\n";
}

void twoshot(const StudioAction& action) {
    const char16_t first = targetOf(action);
    const char16_t given = action.command.letters[1];
    const char16_t second = given != 0 ? given : u'B';
    action.out += kSwitchToCam;
    const std::u16string pair{std::min(first, second), std::max(first, second)};
    const std::array<Filling, 4> fillings{{
        {u"$1", letterText(first)},
        {u"$2", letterText(second)},
        {u"$3", action.speed()},
        {u"$4", action.blocking()},
    }};
    appendFilled(action.run.selectTwoshot(pair), fillings, action.out);
}

void longshot(const StudioAction& action) {
    action.out += kSwitchToOther;
    if (action.hasText(PlainElement::longshot)) {
        const std::array<Filling, 2> fillings{
            {{u"$1", action.speed()}, {u"$2", action.blocking()}}};
        appendFilled(action, PlainElement::longshot, fillings);
        return;
    }
    action.out += u"camera: move( name=CamOTHER, ry=40.00, rx=10, rz=0.00, x=2, y=2.0, z=1.60, "
                  u"vangle=37.50, transition=immediate";
    appendGiven(u", speed=", action.command.adverbs.speed, action.out);
    appendGiven(u", wait=", action.command.adverbs.blocking, action.out);
    action.out += u" )\n";
}

// While the camera switches by itself, a shot switches that off and on again.
void writeShot(const StudioAction& action, void (*shot)(const StudioAction&)) {
    const bool automatic = action.run.state.cameraAutoSwitching;
    action.out += automatic ? kAutoSwitchingOff : std::u16string_view{};
    shot(action);
    action.out += automatic ? kAutoSwitchingOn : std::u16string_view{};
}

void act(const StudioAction& action) {
    RunState& state = action.run.state;
    action.out += action.row.line;
    switch (action.row.action) {
    case Action::writeText:
        action.out += action.run.use(action.element());
        return;
    case Action::hidePlate:
        return hidePlate(action);
    case Action::openingOff:
        state.openingOn = false;
        return;
    case Action::endingOff:
        state.endingOn = false;
        return;
    case Action::wait:
        return wait(action);
    case Action::changeSet:
        return changeSet(action);
    case Action::light:
        return light(action);
    case Action::closeUp:
        return writeShot(action, closeUp);
    case Action::twoshot:
        return writeShot(action, twoshot);
    case Action::trackshot:
        return writeShot(action, trackshot);
    case Action::longshot:
        return writeShot(action, longshot);
    case Action::autoCamera:
        state.cameraAutoSwitching = true;
        return;
    case Action::manualCamera:
        state.cameraAutoSwitching = false;
        return;
    default:
        return; // its line is all, or it is a character's
    }
}

} // namespace

void generateStagingCommand(Run& run, const RecognizedCommand& command, std::u16string& out) {
    act({run, *command.spec, command, out});
    run.state.remove(command.spec->condition);
}

} // namespace tvml
