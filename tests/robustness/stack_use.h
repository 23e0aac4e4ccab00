// How much of its thread's stack a step takes.
#ifndef TVML_TESTS_ROBUSTNESS_STACK_USE_H
#define TVML_TESTS_ROBUSTNESS_STACK_USE_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <pthread.h>

namespace tvml {

// Runs the step in a thread whose stack is painted. Sanitizers use stacks in ways
// of their own.
template <typename Step> std::size_t stackUsedBy(Step step) {
    constexpr std::size_t kStack = std::size_t{1} << 20;
    constexpr unsigned char kPaint = 0xA5;
    struct Thread {
        Step& step;
        const unsigned char* start;
        static void* run(void* self) {
            auto& thread = *static_cast<Thread*>(self);
            const unsigned char here = 0;
            thread.start = &here;
            thread.step();
            return nullptr;
        }
    };
    std::vector<unsigned char> stack(kStack, kPaint);
    Thread thread{step, nullptr};
    pthread_attr_t attributes;
    pthread_t id;
    if (pthread_attr_init(&attributes) != 0 ||
        pthread_attr_setstack(&attributes, stack.data(), stack.size()) != 0 ||
        pthread_create(&id, &attributes, Thread::run, &thread) != 0 ||
        pthread_join(id, nullptr) != 0) {
        return SIZE_MAX;
    }
    pthread_attr_destroy(&attributes);
    const auto deepest =
        std::find_if(stack.begin(), stack.end(), [](unsigned char byte) { return byte != kPaint; });
    return static_cast<std::size_t>(thread.start - &*deepest);
}

} // namespace tvml

#endif
