// Turns of calls on Windows. Entry: CallTurn.
#include "platform/call_turn.h"

#include <atomic>

#include "platform/windows_api.h"

namespace tvml::platform {
namespace {

// Of the kind that takes no handle and no memory, so that the library leaves
// nothing behind. It knows no owner.
SRWLOCK turn = SRWLOCK_INIT;
std::atomic<DWORD> owner{0};

bool takeTurn() {
    if (owner.load(std::memory_order_relaxed) == GetCurrentThreadId()) {
        return false;
    }
    AcquireSRWLockExclusive(&turn);
    owner.store(GetCurrentThreadId(), std::memory_order_relaxed);
    return true;
}

} // namespace

CallTurn::CallTurn() noexcept : isOurs_(takeTurn()) {}

CallTurn::~CallTurn() {
    if (isOurs_) {
        owner.store(0, std::memory_order_relaxed);
        ReleaseSRWLockExclusive(&turn);
    }
}

} // namespace tvml::platform
