// A programme as its viewer sees it: a panel a line, with what changes on screen
// and when. What is on screen at a panel is what all panels up to it changed.
#ifndef TVML_LISTENING_STORYBOARD_H
#define TVML_LISTENING_STORYBOARD_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "listening/beats.h"

namespace tvml {

// What a panel can change. Those from `expression` on belong to a character.
enum class ScreenPart : std::uint8_t {
    set,
    light,  // "daylight", "night", "candlelight", "light off"
    camera, // "long", "two AB", "up B", "track B", "auto", "manual"
    mainImage,
    subImage,
    bgImage,
    rightImage,
    leftImage,
    super,
    leftSuper,
    rightSuper,
    captions, // "on", "off"
    music,
    opening, // "off"
    ending,  // "off"
    offline, // "on", "off"
    expression,
    gaze,      // "forward", "camera", "left", …, "at B"
    posture,   // "stand", "sit", "fall", "fall backward"
    mouth,     // "open", "closed"
    trembling, // "on", "off"
    presence,  // "visible", "invisible"
    model,     // its name
    voice,     // its English name
    talkSpeed, // the command's name
    gesturing, // "auto", "manual"
    movement,  // for the time of the panel alone: a gesture, a step or a pose
};
inline constexpr std::size_t kScreenPartCount = 27;

struct ScreenChange {
    ScreenPart part = ScreenPart::set;
    char16_t who = 0;                   // 0 for what belongs to no character
    std::u16string value;               // empty for what goes away
    const ColourSpec* colour = nullptr; // of a super
};

// Of a line that is not empty. A line that writes nothing has a panel, too; its
// beat then has neither name nor length.
struct Panel {
    Beat beat;
    bool writesNothing = false;
    std::u16string source;  // the line
    std::u16string caption; // in place of the speech
    bool captioned = false;
    CardStep card = CardStep::none;
    bool isSubtitle = false; // of a card
    double start = 0;        // seconds from the start of the programme
    std::vector<ScreenChange> changes;
};

// From a title card or a change of the set to the next.
struct Scene {
    std::size_t firstPanel = 0;
    std::u16string title; // of the card or the set; empty for what is before the first
    double start = 0;
    double seconds = 0;
};

struct CastMember {
    char16_t letter = 0;
    std::u16string model; // to begin with; empty for one who cannot act
};

struct Storyboard {
    std::vector<CastMember> cast;
    std::vector<Panel> panels;
    std::vector<Scene> scenes;
    double seconds = 0; // of the whole
};

// When each panel starts, the scenes, and how long the whole takes. A panel that
// waits delays the next one by its length; the others only start. What the player
// skips takes no time.
void arrangeInTime(Storyboard& board);

// Give it to the run as a listener, convert, and take the storyboard.
class StoryboardRecorder final : public RunListener {
public:
    Storyboard take();

    void programmeRead(const Programme& programme) override;
    void lineConverted(const ScriptLine& line, const LineOutcome& outcome) override;

private:
    Storyboard board_;
    BeatRecorder beats_;
};

} // namespace tvml

#endif
