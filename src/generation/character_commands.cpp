// Commands that make a character do something. Entry: generateCharacterCommand.
#include <array>
#include <optional>
#include <span>

#include "generation/character_call.h"
#include "generation/command_arguments.h"
#include "generation/command_names.h"
#include "generation/commands.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

using enum Argument;
using E = CharacterElement;

// ---- values of placeholders

struct DegreeRow {
    std::u16string_view degree;
    std::array<std::u16string_view, 7> values; // in the order of the degree maps in Argument
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

std::u16string_view mappedDegree(Argument map, std::u16string_view degree) {
    const DegreeRow* row = &kDegreeMaps[kOrdinaryDegree];
    for (const DegreeRow& candidate : kDegreeMaps) {
        if (candidate.degree == degree) {
            row = &candidate;
        }
    }
    return row->values[static_cast<std::size_t>(map) - static_cast<std::size_t>(expressionMap)];
}

std::u16string_view argumentValue(Argument argument, const AdverbValues& adverbs) {
    switch (argument) {
    case none:
        return {};
    case speed:
        return orDefault(adverbs.speed, u"1.0");
    case degree:
        return orDefault(adverbs.degree, u"1.0");
    case blocking:
        return orDefault(adverbs.blocking, u"yes");
    case blockingOrNo:
        return orDefault(adverbs.blocking, u"no");
    default:
        return mappedDegree(argument, adverbs.degree);
    }
}

constexpr std::array<Placeholder, 5> kPlaceholders{u"$1", u"$2", u"$3", u"$4", u"$5"};

// ---- conditions

bool withFellow(const RunState& state) {
    return state.lastCharacter == u'B';
}
bool withOthers(const RunState& state) {
    return state.lastCharacter >= u'B';
}

// clang-format off
// In the order of testing: a phrase goes to the first row whose name starts it
// and whose condition holds. A row without a handler fills the template of its
// element: "$1" with the character, "$2" and on with the arguments.
constexpr std::array<CharacterRow, 53> kCharacterRows{{
    {u"bow",             E::bow,           {speed, bowMap, blocking}},
    {u"happy",           E::happy,         {expressionMap, speed, blockingOrNo}},
    {u"angry",           E::angry,         {expressionMap, speed, blockingOrNo}},
    {u"sad",             E::sad,           {expressionMap, speed, blockingOrNo}},
    {u"surprise",        E::surprise,      {expressionMap, speed, blockingOrNo}},
    {u"komatta",         E::komatta,       {expressionMap, speed, blockingOrNo}},
    {u"hatena",          E::hatena,        {expressionMap, speed, blockingOrNo}},
    {u"fear",            E::fear,          {expressionMap, speed, blockingOrNo}},
    {u"disgust",         E::disgust,       {expressionMap, speed, blockingOrNo}},
    {u"neutral",         E::neutral,       {expressionMap, speed, blockingOrNo}},
    {u"nodnod",          E::nodnod,        {speed, degree, blocking}},
    {u"nod",             E::nod,           {speed, degree, blocking}},
    {u"nono",            E::nono,          {speed, degree, blocking}},
    {u"no",              E::no,            {speed, degree, blocking}},
    {u"well",            E::well,          {speed, degree, blocking}},
    {u"look forward",    E::lookforward,   {speed, blocking}},
    {u"look at fellow",  E::lookatfellow,  {},                       lookAtFellow,     withFellow},
    {u"look at camera",  E::lookatcamera,  {speed, blocking}},
    {u"look at picture", E::lookatpicture, {},                       lookAtPicture},
    {u"look aside",      E::lookaside,     {speed, blocking}},
    {u"look at ",        E::lookatn,       {},                       lookAtCharacter,  withOthers},
    {u"look right",      E::lookright,     {rightMap, speed, blocking}},
    {u"look left",       E::lookleft,      {leftMap, speed, blocking}},
    {u"look up",         E::lookup,        {upMap, speed, blocking}},
    {u"look down",       E::lookdown,      {downMap, speed, blocking}},
    {u"look behind",     E::lookbehind,    {speed, blocking}},
    {u"shake",           E::shake,         {degree}},
    {u"stop shaking",    E::stopshaking,   {degree}},
    {u"open mouth",      E::openmouth,     {degree, speed, blocking}},
    {u"close mouth",     E::closemouth,    {degree, speed, blocking}},
    {u"stand",           E::stand,         {speed, blocking}},
    {u"sit",             E::sit,           {},                       sit},
    {u"walk ",           E::walknsteps,    {},                       walkSteps},
    {u"walk",            E::walk,          {speed, blocking}},
    {u"turn ",           E::turnndegrees,  {},                       turnDegrees},
    {u"turn",            E::turn,          {speed, blocking}},
    {u"bye",             E::bye,           {speed, byeMap, blocking}},
    {u"fall backward",   E::fallbackward,  {speed, blocking}},
    {u"fall",            E::fall,          {speed, blocking}},
    {u"get up",          E::getup,         {speed, blocking}},
    {u"jump",            E::jump,          {degree, speed, blocking}},
    {u"invisible",       E::invisible,     {}},
    {u"visible",         E::visible,       {}},
    {u"speak normally",  kNoElement,       {},                       speakNormally},
    {u"speak slow",      kNoElement,       {},                       speakSlow},
    {u"speak very slow", kNoElement,       {},                       speakVerySlow},
    {u"speak fast",      kNoElement,       {},                       speakFast},
    {u"speak very fast", kNoElement,       {},                       speakVeryFast},
    {u"soundfile",       kNoElement,       {},                       playSoundFile},
    {u"voicetype",       kNoElement,       {},                       setVoiceType},
    {u"auto gesture",    kNoElement,       {},                       setAutoGesture},
    {u"manual gesture",  kNoElement,       {},                       setManualGesture},
    {u"character",       kNoElement,       {},                       setModel},
}};
// clang-format on

bool fillOwnTemplate(CharacterCall& call) {
    const auto adverbs = readTail(call.run, call.rest);
    if (!adverbs.has_value()) {
        return false;
    }
    fillArguments(call, call.row.element, call.row.arguments, *adverbs);
    return true;
}

// A pose of the description, which comes before every named command.
enum class PoseResult : std::uint8_t { noPose, written, rejected };

PoseResult writePose(Run& run, char16_t name, std::u16string_view phrase, std::u16string& out) {
    AdverbValues adverbs;
    std::u16string_view poseName = phrase;
    const std::size_t separator = findSeparator(phrase, run.words);
    if (separator != kNone) {
        const auto given = readAdverbs(run, dropAndTrim(phrase, separator + 1, run.words));
        if (!given.has_value()) {
            return PoseResult::rejected;
        }
        adverbs = *given;
        poseName = trimScriptText(phrase.substr(0, separator), run.words);
    }
    const PoseText* pose = run.staging.findPose(poseName, name);
    if (pose == nullptr || pose->text.empty()) {
        return PoseResult::noPose;
    }
    const std::array<Filling, 4> fillings{{
        {u"$1", letterText(name)},
        {u"$2", argumentValue(speed, adverbs)},
        {u"$3", argumentValue(degree, adverbs)},
        {u"$4", argumentValue(blocking, adverbs)},
    }};
    std::u16string filled = pose->text;
    fillText(filled, fillings);
    appendBracketed(run, name, filled, out);
    if (run.report != nullptr) {
        run.report->templateChosen(u"pose", pose->element);
        run.report->taken(TakenBy::pose, poseName);
    }
    return PoseResult::written;
}

bool dispatch(Run& run, char16_t name, std::u16string_view phrase, std::u16string& out) {
    for (const CharacterRow& row : kCharacterRows) {
        if (!phrase.starts_with(row.name)) {
            continue;
        }
        if (row.condition != nullptr && !row.condition(run.state)) {
            run.tell(ScriptProblem::conditionNotMet, phrase.substr(0, row.name.size()), row.name);
            continue;
        }
        CharacterCall call{run, row, name, phrase.substr(row.name.size()), out};
        const bool done = row.handler != nullptr ? row.handler(call) : fillOwnTemplate(call);
        if (done) {
            run.state.talkStarted = true;
            if (run.report != nullptr) {
                run.report->taken(TakenBy::characterCommand, row.name);
            }
        }
        return done;
    }
    return false;
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

void fillElement(CharacterCall& call, CharacterElement element, std::span<const Filling> fillings) {
    const Variant* variant = call.run.select(element, call.name);
    std::u16string filled;
    if (variant != nullptr) {
        variant->text.fill(fillings, filled);
    }
    appendBracketed(call.run, call.name, filled, call.out);
}

void fillArguments(CharacterCall& call, CharacterElement element,
                   const std::array<Argument, 3>& arguments, const AdverbValues& adverbs) {
    std::array<Filling, 4> fillings{{{kPlaceholders[0], letterText(call.name)}}};
    std::size_t count = 1;
    for (const Argument argument : arguments) {
        if (argument != none) {
            fillings[count] = {kPlaceholders[count], argumentValue(argument, adverbs)};
            ++count;
        }
    }
    fillElement(call, element, std::span(fillings).first(count));
}

std::vector<std::u16string_view> characterCommandNames() {
    std::vector<std::u16string_view> names;
    for (const CharacterRow& row : kCharacterRows) {
        names.push_back(row.name);
    }
    return names;
}

bool generateCharacterCommand(Run& run, std::u16string_view speaker, std::u16string_view phrase,
                              std::u16string& out) {
    if (speaker.empty()) {
        return false;
    }
    const char16_t name = speaker == u"NO" ? u'A' : speaker.front();
    switch (writePose(run, name, phrase, out)) {
    case PoseResult::written:
        return true;
    case PoseResult::rejected:
        return false;
    case PoseResult::noPose:
        break;
    }
    return dispatch(run, name, phrase, out);
}

} // namespace tvml
