// What a call of the library needs of the system before its own work begins.
#ifndef TVML_PLATFORM_CALL_TURN_H
#define TVML_PLATFORM_CALL_TURN_H

namespace tvml::platform {

// One call at a time, from whatever threads a host calls: waits for the calls of
// others. There is no turn for a thread that is in a call already, which can only
// be a signal handler's. A process that is forked meanwhile has the turn free.
class CallTurn {
public:
    CallTurn() noexcept;
    ~CallTurn();
    CallTurn(const CallTurn&) = delete;
    CallTurn& operator=(const CallTurn&) = delete;

    bool isOurs() const { return isOurs_; }

private:
    bool isOurs_;
};

// Sees to it that this thread can throw when its memory is used up: the run-time
// library takes memory for a thread's first exception, and ends the process when
// there is none. False when there is none now.
bool prepareToThrow() noexcept;

} // namespace tvml::platform

#endif
