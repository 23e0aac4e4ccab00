// Commands that change the studio. Entry: generateStagingCommand.
#include <array>

#include "generation/command_arguments.h"
#include "generation/command_names.h"
#include "generation/commands.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

// One command on its way through its row.
struct Call {
    Run& run;
    const struct StagingRow& row;
    std::u16string_view rest; // what follows the canonical name, untrimmed
    std::u16string& out;

    RunState& state() const { return run.state; }
    const std::u16string& text(PlainElement element) const { return run.use(element); }
    bool hasText(PlainElement element) const { return !run.staging.plain(element).empty(); }
};

// Whether a row takes its command now.
using Condition = bool (*)(const RunState& state);

// Writes the command; false when its arguments do not fit.
using Handler = bool (*)(const Call& call);

// The canonical name, when it applies, how it is written, and what the common
// handlers need of it: a text of the description or a fixed line.
struct StagingRow {
    std::u16string_view name;
    Condition condition;
    Handler handler;
    PlainElement text = PlainElement::setting;
    std::u16string_view line = {};
    InitialLighting lighting = InitialLighting::none;
    bool RunState::*flag = nullptr; // cleared when the command is done
};

// ---- pieces of output

constexpr std::u16string_view kSwitchToCam = u"camera: switch( name=Cam )\n";
constexpr std::u16string_view kSwitchToOther = u"camera: switch( name=CamOTHER )\n";
constexpr std::u16string_view kAutoSwitchingOff = u"camera: autoswitching(switch=off)\n";
constexpr std::u16string_view kAutoSwitchingOn = u"camera: autoswitching(switch=on)\n";

void clearFlag(const Call& call) {
    if (call.row.flag != nullptr) {
        call.state().*call.row.flag = false;
    }
}

void appendFilled(const Variant* variant, std::span<const Filling> fillings, std::u16string& out) {
    if (variant != nullptr) {
        variant->text.fill(fillings, out);
    }
}

void appendFilled(std::u16string text, std::span<const Filling> fillings, std::u16string& out) {
    fillText(text, fillings);
    out += text;
}

void appendGiven(std::u16string_view name, std::u16string_view value, std::u16string& out) {
    if (!value.empty()) {
        out.append(name).append(value);
    }
}

// While the camera switches by itself, a shot switches that off and on again.
template <typename Write> bool writeShot(const Call& call, Write write) {
    const bool automatic = call.state().cameraAutoSwitching;
    if (automatic) {
        call.out += kAutoSwitchingOff;
    }
    write(call.out);
    if (automatic) {
        call.out += kAutoSwitchingOn;
    }
    return true;
}

// ---- common handlers

bool writeLine(const Call& call) {
    if (!readTail(call.run, call.rest).has_value()) {
        return false;
    }
    call.out += call.row.line;
    clearFlag(call);
    return true;
}

bool writeText(const Call& call) {
    if (!readTail(call.run, call.rest).has_value()) {
        return false;
    }
    call.out += call.text(call.row.text);
    clearFlag(call);
    return true;
}

bool writeLineWhenAlone(const Call& call) {
    if (!call.rest.empty()) {
        call.run.tell(ScriptProblem::commandRejected, call.rest);
        return false;
    }
    call.out += call.row.line;
    clearFlag(call);
    return true;
}

bool hidePlate(const Call& call, std::int32_t count) {
    if (!readTail(call.run, call.rest).has_value()) {
        return false;
    }
    const std::u16string number = decimalText(count);
    const std::array<Filling, 1> fillings{{{u"$1", number}}};
    appendFilled(call.text(call.row.text), fillings, call.out);
    clearFlag(call);
    return true;
}

bool hidePicture(const Call& call) {
    return hidePlate(call, call.state().subImageCount);
}
bool hideBgPicture(const Call& call) {
    return hidePlate(call, call.state().bgImageCount);
}

bool setAutoSwitching(const Call& call) {
    if (!writeLine(call)) {
        return false;
    }
    call.state().cameraAutoSwitching = call.row.line == kAutoSwitchingOn;
    return true;
}

// ---- waits

bool waitSeconds(const Call& call) {
    const std::u16string_view rest = trimScriptText(call.rest, call.run.words);
    std::u16string number;
    std::u16string_view tail = rest;
    if (!startsWithSeparator(rest, call.run.words)) {
        auto count = readCount(call.run, rest, u"second", false);
        if (!count.has_value()) {
            return false;
        }
        number = std::move(count->number);
        tail = count->rest;
    } else {
        call.run.tell(ScriptProblem::numberInvalid, rest.substr(0, 1), u"second");
    }
    if (!readTail(call.run, tail).has_value()) {
        return false;
    }
    call.out.append(u"wait( time=").append(number).append(u" )\n");
    return true;
}

// ---- sets and lighting

// The name behind "set:", without its adverbs.
std::optional<std::u16string_view> readSetName(const Call& call) {
    const KeywordTable& words = call.run.words;
    std::u16string_view rest = trimScriptText(call.rest, words);
    if (!startsWithColon(rest, words)) {
        call.run.tell(ScriptProblem::colonMissing, rest);
        return std::nullopt;
    }
    rest = dropAndTrim(rest, 1, words);
    const Word& separators = words[u"touten3"];
    for (std::size_t i = 0; i < rest.size(); ++i) {
        if (separators.holds(rest[i])) {
            if (!readAdverbs(call.run, dropAndTrim(rest, i + 1, words)).has_value()) {
                return std::nullopt;
            }
            return trimScriptText(rest.substr(0, i), words);
        }
    }
    return rest;
}

bool changeSet(const Call& call) {
    const auto given = readSetName(call);
    if (!given.has_value()) {
        return false;
    }
    const StagingDescription& staging = call.run.staging;
    const auto english = staging.setEnglishNames.find(*given);
    const std::u16string name(
        english == staging.setEnglishNames.end() ? *given : std::u16string_view(english->second));
    const auto file = staging.setEnglishFiles.find(name);
    if (file == staging.setEnglishFiles.end()) {
        call.run.tell(ScriptProblem::setUnknown, *given);
        return false;
    }
    if (!call.state().talkStarted) {
        call.run.initialSetName = name;
        call.run.initialSetLine = call.state().lineNumber;
        call.out.append(u"// Initial set is set to \"").append(name).append(u".\"\n");
        return true;
    }
    call.out.append(u"set: openmodel( name=").append(name).append(u", filename=\"");
    call.out.append(file->second).append(u"\" )\n");
    call.out.append(u"set: change( name=").append(name).append(u" )\n");
    return true;
}

bool setLighting(const Call& call) {
    if (!readTail(call.run, call.rest).has_value()) {
        return false;
    }
    if (!call.state().talkStarted) {
        call.state().initialLighting = call.row.lighting;
        call.state().initialLightingLine = call.state().lineNumber;
        call.out.append(u"// Initial lighting is set to \"").append(call.row.name).append(u".\"\n");
        return true;
    }
    if (call.hasText(call.row.text)) {
        call.out += call.text(call.row.text);
    } else {
        const std::u16string_view element = kPlainElements[indexOf(call.row.text)].name;
        call.out.append(u"// ").append(element).append(u"_tvml cannot be retrieved.\n");
    }
    return true;
}

// ---- shots

struct ShotTarget {
    char16_t letter;
    AdverbValues adverbs;
};

std::optional<ShotTarget> readTarget(const Call& call) {
    const std::u16string_view rest = trimScriptText(call.rest, call.run.words);
    if (rest.empty() || !isShotLetter(rest.front())) {
        call.run.tell(ScriptProblem::letterInvalid, rest.substr(0, 1));
        return std::nullopt;
    }
    const char16_t letter = programmeLetter(call.run, rest.substr(0, 1));
    const auto adverbs = readTail(call.run, rest.substr(1));
    return adverbs.has_value() ? std::optional(ShotTarget{letter, *adverbs}) : std::nullopt;
}

bool closeUp(const Call& call, const std::optional<ShotTarget>& target) {
    return target.has_value() && writeShot(call, [&](std::u16string& out) {
               out += kSwitchToCam;
               const std::array<Filling, 3> fillings{{
                   {u"$1", letterText(target->letter)},
                   {u"$2", orDefault(target->adverbs.speed, u"1.0")},
                   {u"$3", orDefault(target->adverbs.blocking, u"yes")},
               }};
               appendFilled(call.run.select(CharacterElement::closeup, target->letter), fillings,
                            out);
           });
}

bool trackingShot(const Call& call, const std::optional<ShotTarget>& target) {
    return target.has_value() && writeShot(call, [&](std::u16string& out) {
               const AdverbValues& adverbs = target->adverbs;
               out += kSwitchToCam;
               if (call.hasText(PlainElement::trackshot)) {
                   const std::array<Filling, 3> fillings{{
                       {u"$1", letterText(target->letter)},
                       {u"$2", orDefault(adverbs.speed, u"1.0")},
                       {u"$3", orDefault(adverbs.blocking, u"yes")},
                   }};
                   appendFilled(call.text(PlainElement::trackshot), fillings, out);
                   return;
               }
               out.append(u"camera: catch( name=Cam, target=").append(letterText(target->letter));
               appendGiven(u", speed=", adverbs.speed, out);
               appendGiven(u", wait=", adverbs.blocking, out);
               out += u" )\n";
           });
}

// The shots that name no character are on "A".
std::optional<ShotTarget> onlyCharacter(const Call& call) {
    const auto adverbs = readTail(call.run, call.rest);
    return adverbs.has_value() ? std::optional(ShotTarget{u'A', *adverbs}) : std::nullopt;
}

bool upshotOf(const Call& call) {
    return closeUp(call, readTarget(call));
}
bool upshot(const Call& call) {
    return closeUp(call, onlyCharacter(call));
}
bool trackshotOn(const Call& call) {
    return trackingShot(call, readTarget(call));
}
bool trackshot(const Call& call) {
    return trackingShot(call, onlyCharacter(call));
}

bool writeTwoshot(const Call& call, char16_t first, char16_t second, const AdverbValues& adverbs) {
    return writeShot(call, [&](std::u16string& out) {
        out += kSwitchToCam;
        const std::u16string pair{std::min(first, second), std::max(first, second)};
        const std::array<Filling, 4> fillings{{
            {u"$1", letterText(first)},
            {u"$2", letterText(second)},
            {u"$3", orDefault(adverbs.speed, u"1.0")},
            {u"$4", orDefault(adverbs.blocking, u"yes")},
        }};
        appendFilled(call.run.selectTwoshot(pair), fillings, out);
    });
}

bool twoshotOf(const Call& call) {
    const std::u16string_view rest = trimScriptText(call.rest, call.run.words);
    if (rest.size() < 2 || !isShotLetter(rest[0]) || !isShotLetter(rest[1])) {
        call.run.tell(ScriptProblem::letterInvalid, rest.substr(0, 2));
        return false;
    }
    char16_t first = programmeLetter(call.run, rest.substr(0, 1));
    char16_t second = programmeLetter(call.run, rest.substr(1, 1));
    if (first == second) {
        call.run.tell(ScriptProblem::letterReplaced, rest.substr(0, 2), u"AB");
        first = u'A';
        second = u'B';
    }
    const auto adverbs = readTail(call.run, rest.substr(2));
    return adverbs.has_value() && writeTwoshot(call, first, second, *adverbs);
}

bool twoshot(const Call& call) {
    const auto adverbs = readTail(call.run, call.rest);
    return adverbs.has_value() && writeTwoshot(call, u'A', u'B', *adverbs);
}

bool longshot(const Call& call) {
    const auto adverbs = readTail(call.run, call.rest);
    return adverbs.has_value() && writeShot(call, [&](std::u16string& out) {
               out += kSwitchToOther;
               if (call.hasText(PlainElement::longshot)) {
                   const std::array<Filling, 2> fillings{{
                       {u"$1", orDefault(adverbs->speed, u"1.0")},
                       {u"$2", orDefault(adverbs->blocking, u"yes")},
                   }};
                   appendFilled(call.text(PlainElement::longshot), fillings, out);
                   return;
               }
               out += u"camera: move( name=CamOTHER, ry=40.00, rx=10, rz=0.00, x=2, y=2.0, z=1.60, "
                      u"vangle=37.50, transition=immediate";
               appendGiven(u", speed=", adverbs->speed, out);
               appendGiven(u", wait=", adverbs->blocking, out);
               out += u" )\n";
           });
}

// ---- conditions

bool always(const RunState&) {
    return true;
}
bool subImageShown(const RunState& state) {
    return state.subImageShown;
}
bool bgImageShown(const RunState& state) {
    return state.bgImageShown;
}
bool rightImageShown(const RunState& state) {
    return state.rightImageShown;
}
bool leftImageShown(const RunState& state) {
    return state.leftImageShown;
}
bool mainImageShown(const RunState& state) {
    return state.mainImageShown;
}
bool leftSuperShown(const RunState& state) {
    return state.leftSuperShown;
}
bool rightSuperShown(const RunState& state) {
    return state.rightSuperShown;
}
bool oneCharacter(const RunState& state) {
    return state.lastCharacter == u'A';
}
bool twoCharacters(const RunState& state) {
    return state.lastCharacter == u'B';
}
bool severalCharacters(const RunState& state) {
    return state.lastCharacter >= u'B';
}

// clang-format off
using P = PlainElement;
using L = InitialLighting;
constexpr auto kNoLighting = InitialLighting::none;

// In the order of testing: a phrase goes to the first row whose name starts it
// and whose condition holds.
constexpr std::array<StagingRow, 30> kStagingRows{{
    {u"hide picture",            subImageShown,     hidePicture,        P::hidepicture,      u"", kNoLighting, &RunState::subImageShown},
    {u"hide bg picture",         bgImageShown,      hideBgPicture,      P::hidebgpicture,    u"", kNoLighting, &RunState::bgImageShown},
    {u"hide right picture",      rightImageShown,   writeText,          P::hiderightpicture, u"", kNoLighting, &RunState::rightImageShown},
    {u"hide left picture",       leftImageShown,    writeText,          P::hideleftpicture,  u"", kNoLighting, &RunState::leftImageShown},
    {u"back to studio",          mainImageShown,    writeLine,          P::setting,
        u"drawing: display( name=MAINIMAGEBASE, switch=off )\n",                                 kNoLighting, &RunState::mainImageShown},
    {u"wait ",                   always,            waitSeconds},
    {u"wait",                    always,            writeLine,          P::setting, u"wait( time=1.0 )\n"},
    {u"caption on",              always,            writeLine,          P::setting, u"setcaption( switch=on, border=on )\n"},
    {u"caption off",             always,            writeLine,          P::setting, u"setcaption( switch=off )\n"},
    {u"left super off",          leftSuperShown,    writeText,          P::leftsuperoff,     u"", kNoLighting, &RunState::leftSuperShown},
    {u"right super off",         rightSuperShown,   writeText,          P::rightsuperoff,    u"", kNoLighting, &RunState::rightSuperShown},
    {u"super off",               always,            writeText,          P::superoff},
    {u"opening off",             always,            writeLineWhenAlone, P::setting, u"// Opening is off.\n", kNoLighting, &RunState::openingOn},
    {u"ending off",              always,            writeLineWhenAlone, P::setting, u"// Ending is off.\n",  kNoLighting, &RunState::endingOn},
    {u"offline",                 always,            writeLine,          P::setting, u"skipscript( switch=on )\n"},
    {u"online",                  always,            writeLine,          P::setting, u"skipscript( switch=off )\n"},
    {u"set",                     always,            changeSet},
    {u"daylight",                always,            setLighting,        P::daylight,         u"", L::daylight},
    {u"night",                   always,            setLighting,        P::night,            u"", L::night},
    {u"candlelight",             always,            setLighting,        P::candlelight,      u"", L::candlelight},
    {u"light off",               always,            setLighting,        P::lightoff,         u"", L::lightOff},
    {u"upshot of ",              always,            upshotOf},
    {u"upshot",                  oneCharacter,      upshot},
    {u"twoshot of ",             severalCharacters, twoshotOf},
    {u"twoshot",                 twoCharacters,     twoshot},
    {u"trackshot on ",           always,            trackshotOn},
    {u"trackshot",               oneCharacter,      trackshot},
    {u"longshot",                always,            longshot},
    {u"auto camera switching",   always,            setAutoSwitching,   P::setting, kAutoSwitchingOn},
    {u"manual camera switching", always,            setAutoSwitching,   P::setting, kAutoSwitchingOff},
}};
// clang-format on

} // namespace

std::vector<std::u16string_view> stagingCommandNames() {
    std::vector<std::u16string_view> names;
    for (const StagingRow& row : kStagingRows) {
        names.push_back(row.name);
    }
    return names;
}

bool generateStagingCommand(Run& run, std::u16string_view phrase, std::u16string& out) {
    for (const StagingRow& row : kStagingRows) {
        if (!phrase.starts_with(row.name)) {
            continue;
        }
        if (!row.condition(run.state)) {
            run.tell(ScriptProblem::conditionNotMet, phrase.substr(0, row.name.size()), row.name);
            continue;
        }
        const bool done = row.handler({run, row, phrase.substr(row.name.size()), out});
        if (done && run.report != nullptr) {
            run.report->taken(TakenBy::stagingCommand, row.name);
        }
        return done;
    }
    return false;
}

} // namespace tvml
