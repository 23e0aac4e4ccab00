// The counters and flags of one conversion run. Every run starts with a new one.
#ifndef TVML_FILTER_RUN_STATE_H
#define TVML_FILTER_RUN_STATE_H

#include <cstdint>

namespace tvml {

// Which lighting the script chose before its first talk.
enum class InitialLighting : std::int32_t {
    none = -1,
    daylight = 0,
    night = 1,
    candlelight = 2,
    lightOff = 3
};

struct RunState {
    std::int32_t lineNumber = 0;    // of the line being handled, from 1
    std::int32_t titleLine = 0;     // last title line whose card waits for a subtitle
    std::int32_t subtitleLine = 0;  // last subtitle line whose card waits for a title
    std::int32_t titleCount = 0;    // title cards written
    std::int32_t subImageCount = 0; // sub pictures shown so far
    std::int32_t bgImageCount = 0;  // background pictures shown so far
    bool mainImageShown = false;
    bool subImageShown = false;
    bool bgImageShown = false;
    bool rightImageShown = false;
    bool leftImageShown = false;
    bool rightSuperShown = false;
    bool leftSuperShown = false;
    bool cameraAutoSwitching = false;
    char16_t lastCharacter = 0; // highest letter of the programme; 0 until it is known
    bool talkStarted = false;   // a talk line or character command came before
    bool openingOn = true;
    bool endingOn = true;
    InitialLighting initialLighting = InitialLighting::none;
    std::int32_t initialLightingLine = 0; // of the script, 0 while there is none
};

} // namespace tvml

#endif
