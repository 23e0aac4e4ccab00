// A programme as a sequence of beats: what happens, who does it, for how long,
// from which line.
#ifndef TVML_LISTENING_BEATS_H
#define TVML_LISTENING_BEATS_H

#include <cstdint>
#include <string>
#include <vector>

#include "run/events.h"

namespace tvml {

enum class BeatKind : std::uint8_t {
    speech,
    recording, // a sound file as a character's speech
    action,    // of a character
    setting,   // how a character speaks and behaves from now on
    shot,      // of the camera
    studio,    // pictures off, sets, lights
    wait,
    title,
    super,
    picture,
    sound,
    tag,      // of the description
    embedded, // TVML of the script
};

struct Beat {
    std::int32_t line = 0;
    BeatKind kind = BeatKind::speech;
    char16_t who = 0;    // 0 for nobody
    std::u16string name; // of the command, the marker or the tag; empty for speech
    std::u16string text; // what is said or shown, or which file
    double seconds = 0;
    bool isEstimate = true; // of the seconds
    bool blocks = true;     // the next beat waits for its end
    bool isOffline = false; // the player skips it
};

// Give it to the run as a listener, convert, and take the beats. Lines that write
// nothing have none; a speech has one, however many pieces it is spoken in.
class BeatRecorder final : public RunListener {
public:
    std::vector<Beat> take() { return std::move(beats_); }

    void lineConverted(const ScriptLine& line, const LineOutcome& outcome) override;

private:
    void addTag(const ScriptLine& line, Beat beat);
    void addCommand(const ScriptLine& line, Beat beat);
    void addSpeech(const ScriptLine& line, const LineOutcome& outcome, Beat beat);

    std::vector<Beat> beats_;
    bool isOffline_ = false;
};

} // namespace tvml

#endif
