// What lets the library leave a Windows process without a trace: the few thread
// functions that the compiler's own run-time libraries call, and the release of
// what those libraries keep. Linked into the library alone.
//
// The usual implementation, linked into a DLL, takes an index of thread-local
// storage, two handles and some memory at every load and gives none of it back;
// a host that loads the library often enough is ended for want of an index. The
// library starts no threads and works for one thread at a time (call_turn.h), so
// that nothing here has to wait for anybody, and one value of a key serves all.
#include <array>
#include <cerrno>
#include <cstdlib>

#include <pthread.h>

// Frees the memory that is set aside for exceptions when all other is used up.
// Of the C++ library, which declares it in no header.
namespace __gnu_cxx {
void __freeres();
}

namespace {

struct ThreadKey {
    void (*destroy)(void*);
    void* value;
};

std::array<ThreadKey, 8> keys;
unsigned keyCount = 0;

// Made before and gone after every other object of the library: those may
// still throw, and what is thrown is counted in the value of a key.
struct LastLeaver {
    ~LastLeaver() {
        for (unsigned key = 0; key < keyCount; ++key) {
            if (keys[key].value != nullptr && keys[key].destroy != nullptr) {
                keys[key].destroy(keys[key].value);
            }
            keys[key].value = nullptr;
        }
        __gnu_cxx::__freeres();
    }
};

[[gnu::init_priority(101)]] const LastLeaver lastLeaver;

} // namespace

extern "C" {

int pthread_once(pthread_once_t* done, void (*action)()) {
    if (*done == PTHREAD_ONCE_INIT) {
        *done = !PTHREAD_ONCE_INIT;
        action();
    }
    return 0;
}

int pthread_key_create(pthread_key_t* key, void (*destroy)(void*)) {
    if (keyCount == keys.size()) {
        return EAGAIN;
    }
    keys[keyCount] = {destroy, nullptr};
    *key = keyCount++;
    return 0;
}

void* pthread_getspecific(pthread_key_t key) {
    return key < keyCount ? keys[key].value : nullptr;
}

int pthread_setspecific(pthread_key_t key, const void* value) {
    if (key >= keyCount) {
        return EINVAL;
    }
    keys[key].value = const_cast<void*>(value);
    return 0;
}

int pthread_mutex_init(pthread_mutex_t*, const pthread_mutexattr_t*) {
    return 0;
}

int pthread_mutex_destroy(pthread_mutex_t*) {
    return 0;
}

int pthread_mutex_lock(pthread_mutex_t*) {
    return 0;
}

int pthread_mutex_unlock(pthread_mutex_t*) {
    return 0;
}

int pthread_cond_broadcast(pthread_cond_t*) {
    return 0;
}

// Waiting needs a second thread that ends the wait, and there is none.
int pthread_cond_wait(pthread_cond_t*, pthread_mutex_t*) {
    std::abort();
}

} // extern "C"
