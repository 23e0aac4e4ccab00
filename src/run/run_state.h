// The counters and flags of one conversion run. Every run starts with a new one.
#ifndef TVML_RUN_RUN_STATE_H
#define TVML_RUN_RUN_STATE_H

#include <array>
#include <cstdint>

#include "reading/command_spec.h"

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

    // What commands can count on now.
    ConditionSet conditions() const {
        ConditionSet now;
        for (const Shown& shown : kShown) {
            now.set(shown.condition, this->*shown.flag);
        }
        now.set(Condition::oneCharacter, lastCharacter == u'A');
        now.set(Condition::twoCharacters, lastCharacter == u'B');
        now.set(Condition::severalCharacters, lastCharacter >= u'B');
        now.set(Condition::subImageBefore, subImageCount > 0);
        return now;
    }

    // A command that needed something on screen has removed it.
    void remove(Condition needed) {
        for (const Shown& shown : kShown) {
            this->*shown.flag = this->*shown.flag && shown.condition != needed;
        }
    }

private:
    struct Shown {
        Condition condition;
        bool RunState::*flag;
    };
    static const std::array<Shown, 7> kShown;
};

inline constexpr std::array<RunState::Shown, 7> RunState::kShown{{
    {Condition::subImageShown, &RunState::subImageShown},
    {Condition::bgImageShown, &RunState::bgImageShown},
    {Condition::rightImageShown, &RunState::rightImageShown},
    {Condition::leftImageShown, &RunState::leftImageShown},
    {Condition::mainImageShown, &RunState::mainImageShown},
    {Condition::leftSuperShown, &RunState::leftSuperShown},
    {Condition::rightSuperShown, &RunState::rightSuperShown},
}};

} // namespace tvml

#endif
