// Entries: StoryboardRecorder, arrangeInTime.
#include "listening/storyboard.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tvml {
namespace {

using enum ScreenPart;

// What a command changes. A value that ends with a blank has the command's
// letters behind it; "*" stands for the command's name, "=" for what is named
// behind its colon.
struct CommandEffect {
    std::u16string_view name;
    ScreenPart part;
    std::u16string_view value;
};

// clang-format off
constexpr CommandEffect kEffects[] = {
    {u"happy",                   expression, u"*"},
    {u"angry",                   expression, u"*"},
    {u"sad",                     expression, u"*"},
    {u"surprise",                expression, u"*"},
    {u"komatta",                 expression, u"*"},
    {u"hatena",                  expression, u"*"},
    {u"fear",                    expression, u"*"},
    {u"disgust",                 expression, u"*"},
    {u"neutral",                 expression, u"*"},
    {u"bow",                     movement,   u"*"},
    {u"nodnod",                  movement,   u"*"},
    {u"nod",                     movement,   u"*"},
    {u"nono",                    movement,   u"*"},
    {u"no",                      movement,   u"*"},
    {u"well",                    movement,   u"*"},
    {u"bye",                     movement,   u"*"},
    {u"look forward",            gaze,       u"forward"},
    {u"look at fellow",          gaze,       u"fellow"},
    {u"look at camera",          gaze,       u"camera"},
    {u"look at picture",         gaze,       u"picture"},
    {u"look aside",              gaze,       u"aside"},
    {u"look right",              gaze,       u"right"},
    {u"look left",               gaze,       u"left"},
    {u"look up",                 gaze,       u"up"},
    {u"look down",               gaze,       u"down"},
    {u"look behind",             gaze,       u"behind"},
    {u"look at ",                gaze,       u"at "},
    {u"shake",                   trembling,  u"on"},
    {u"stop shaking",            trembling,  u"off"},
    {u"open mouth",              mouth,      u"open"},
    {u"close mouth",             mouth,      u"closed"},
    {u"stand",                   posture,    u"stand"},
    {u"sit",                     posture,    u"sit"},
    {u"walk ",                   movement,   u"walk"},
    {u"walk",                    movement,   u"walk"},
    {u"turn ",                   movement,   u"turn"},
    {u"turn",                    movement,   u"turn"},
    {u"fall",                    posture,    u"fall"},
    {u"fall backward",           posture,    u"fall backward"},
    {u"get up",                  posture,    u"stand"},
    {u"jump",                    movement,   u"*"},
    {u"invisible",               presence,   u"*"},
    {u"visible",                 presence,   u"*"},
    {u"upshot of ",              camera,     u"up "},
    {u"upshot",                  camera,     u"up "},
    {u"twoshot of ",             camera,     u"two "},
    {u"twoshot",                 camera,     u"two "},
    {u"trackshot on ",           camera,     u"track "},
    {u"trackshot",               camera,     u"track "},
    {u"longshot",                camera,     u"long"},
    {u"auto camera switching",   camera,     u"auto"},
    {u"manual camera switching", camera,     u"manual"},
    {u"hide picture",            subImage,   u""},
    {u"hide bg picture",         bgImage,    u""},
    {u"hide right picture",      rightImage, u""},
    {u"hide left picture",       leftImage,  u""},
    {u"back to studio",          mainImage,  u""},
    {u"right super off",         rightSuper, u""},
    {u"left super off",          leftSuper,  u""},
    {u"super off",               super,      u""},
    {u"caption on",              captions,   u"on"},
    {u"caption off",             captions,   u"off"},
    {u"daylight",                light,      u"*"},
    {u"night",                   light,      u"*"},
    {u"candlelight",             light,      u"*"},
    {u"light off",               light,      u"*"},
    {u"opening off",             opening,    u"off"},
    {u"ending off",              ending,     u"off"},
    {u"offline",                 offline,    u"on"},
    {u"online",                  offline,    u"off"},
    {u"set",                     set,        u"="},
    {u"speak normally",          talkSpeed,  u"*"},
    {u"speak slow",              talkSpeed,  u"*"},
    {u"speak very slow",         talkSpeed,  u"*"},
    {u"speak fast",              talkSpeed,  u"*"},
    {u"speak very fast",         talkSpeed,  u"*"},
    {u"soundfile",               movement,   u"="},
    {u"voicetype",               voice,      u"="},
    {u"character",               model,      u"="},
    {u"auto gesture",            gesturing,  u"auto"},
    {u"manual gesture",          gesturing,  u"manual"},
};
// clang-format on

constexpr const CommandEffect* effectOf(std::u16string_view name) {
    for (const CommandEffect& effect : kEffects) {
        if (effect.name == name) {
            return &effect;
        }
    }
    return nullptr;
}

// Waiting is the one command that changes nothing.
constexpr bool everyCommandIsShown() {
    for (const CommandSpec& row : kCommands) {
        const bool waits = row.name == u"wait" || row.name == u"wait ";
        if (row.action != Action::ignore && !waits && effectOf(row.name) == nullptr) {
            return false;
        }
    }
    return true;
}
static_assert(everyCommandIsShown(), "a command that is carried out is seen on its panel");

// In the order of Marker; titles are cards, and embedded TVML is shown as text.
struct MarkerEffect {
    Marker marker;
    ScreenPart part;
};
constexpr std::array<MarkerEffect, 9> kMarkerEffects{{
    {Marker::rightSuper, rightSuper},
    {Marker::leftSuper, leftSuper},
    {Marker::super, super},
    {Marker::mainImage, mainImage},
    {Marker::subImage, subImage},
    {Marker::bgImage, bgImage},
    {Marker::rightImage, rightImage},
    {Marker::leftImage, leftImage},
    {Marker::music, music},
}};

bool isOfStudio(ScreenPart part) {
    return part < expression;
}

// The letters of a shot or a gaze; a shot without them is of the first ones.
std::u16string lettersOf(const RecognizedCommand& command, std::u16string_view value) {
    std::u16string letters;
    for (const char16_t letter : command.letters) {
        letters.append(letter != 0 ? 1 : 0, letter);
    }
    return !letters.empty() ? letters : value == u"two " ? u"AB" : u"A";
}

std::u16string valueOf(const CommandEffect& effect, const RecognizedCommand& command) {
    if (effect.value == u"*") {
        return std::u16string(effect.name);
    }
    if (effect.value == u"=") {
        const bool isVoice = effect.part == voice; // others are called as the writer does
        return std::u16string(isVoice ? command.english : command.name);
    }
    std::u16string value(effect.value);
    return value.ends_with(u' ') ? value.append(lettersOf(command, effect.value)) : value;
}

void addCommand(const ScriptLine& line, Panel& panel) {
    const RecognizedCommand& command = *line.command();
    if (line.takenBy() == TakenBy::pose) {
        panel.changes.push_back({movement, line.actor(), std::u16string(command.pose)});
        return;
    }
    const CommandEffect* const effect =
        command.spec == nullptr ? nullptr : effectOf(command.spec->name);
    if (effect != nullptr) {
        panel.changes.push_back({effect->part, isOfStudio(effect->part) ? u'\0' : line.actor(),
                                 valueOf(*effect, command)});
    }
}

void addTag(const ScriptLine& line, Panel& panel) {
    const TagReading& tag = *line.tag();
    panel.isSubtitle = tag.marker == Marker::subtitle;
    for (const MarkerEffect& effect : kMarkerEffects) {
        if (tag.marker == effect.marker) {
            panel.changes.push_back({effect.part, 0, std::u16string(tag.value), tag.colourSpec});
        }
    }
}

bool startsScene(const Panel& panel) {
    return panel.card == CardStep::starts ||
           std::any_of(panel.changes.begin(), panel.changes.end(),
                       [](const ScreenChange& change) { return change.part == set; });
}

std::u16string titleOf(const Panel& panel) {
    return panel.card == CardStep::starts ? panel.beat.text : panel.changes.front().value;
}

} // namespace

void arrangeInTime(Storyboard& board) {
    double now = 0;
    board.scenes.assign(1, {});
    for (std::size_t i = 0; i < board.panels.size(); ++i) {
        Panel& panel = board.panels[i];
        panel.start = now;
        // A set that opens with a card, or a card with its set, is one scene.
        if (startsScene(panel)) {
            if (board.scenes.back().start == now && board.scenes.back().firstPanel + 9 > i) {
                board.scenes.back().title = titleOf(panel);
            } else {
                board.scenes.back().seconds = now - board.scenes.back().start;
                board.scenes.push_back({i, titleOf(panel), now, 0});
            }
        }
        const double seconds = panel.beat.isOffline ? 0 : panel.beat.seconds;
        board.seconds = std::max(board.seconds, now + seconds);
        now += panel.beat.blocks ? seconds : 0;
    }
    board.scenes.back().seconds = board.seconds - board.scenes.back().start;
}

void StoryboardRecorder::programmeRead(const Programme& programme) {
    for (char16_t letter = u'A'; letter <= programme.lastCharacter; ++letter) {
        board_.cast.push_back({letter, std::u16string(programme.staging.currentModelName(letter))});
    }
}

void StoryboardRecorder::lineConverted(const ScriptLine& line, const LineOutcome& outcome) {
    if (line.kind == LineKind::empty) {
        return;
    }
    beats_.lineConverted(line, outcome);
    std::vector<Beat> beats = beats_.take();
    Panel panel;
    panel.source = line.text;
    panel.writesNothing = beats.empty();
    panel.card = outcome.card;
    if (beats.empty()) {
        panel.beat.line = outcome.number;
    } else {
        panel.beat = std::move(beats.front());
        if (const TalkReading* talk = line.talk()) {
            panel.captioned = talk->captioned;
            panel.caption = talk->caption;
        } else if (line.tag() != nullptr) {
            addTag(line, panel);
        } else {
            addCommand(line, panel);
        }
    }
    board_.panels.push_back(std::move(panel));
}

Storyboard StoryboardRecorder::take() {
    arrangeInTime(board_);
    return std::move(board_);
}

} // namespace tvml
