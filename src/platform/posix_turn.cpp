// Turns of calls on POSIX platforms. Entry: CallTurn.
#include "platform/call_turn.h"

#include <cerrno>

#include <pthread.h>

namespace tvml::platform {
namespace {

constexpr pthread_mutex_t kFree = PTHREAD_ERRORCHECK_MUTEX_INITIALIZER_NP;
pthread_mutex_t turn = kFree;
bool forkedInCall = false; // belongs to who has the turn

// A fork waits for the call of another thread, so that the child finds no work
// half done by a thread that it does not have.
void beforeFork() {
    forkedInCall = pthread_mutex_lock(&turn) == EDEADLK;
}
void inParent() {
    if (!forkedInCall) {
        pthread_mutex_unlock(&turn);
    }
}
void inChild() {
    turn = kFree; // its owner had another number
    if (forkedInCall) {
        pthread_mutex_lock(&turn);
    }
}

struct ForkHandlers {
    ForkHandlers() { pthread_atfork(beforeFork, inParent, inChild); }
};
const ForkHandlers forkHandlers;

} // namespace

CallTurn::CallTurn() noexcept : isOurs_(pthread_mutex_lock(&turn) == 0) {}

CallTurn::~CallTurn() {
    if (isOurs_) {
        pthread_mutex_unlock(&turn);
    }
}

} // namespace tvml::platform
