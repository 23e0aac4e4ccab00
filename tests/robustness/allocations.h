// The allocations of this program and of the libraries it is linked with, which
// all go through its own operator new: counted, and failing on request.
#ifndef TVML_TESTS_ROBUSTNESS_ALLOCATIONS_H
#define TVML_TESTS_ROBUSTNESS_ALLOCATIONS_H

#include <cstddef>

namespace tvml::allocations {

// Blocks that are allocated now.
std::size_t liveBlocks();

// The largest number of bytes that were allocated at once since resetPeak(),
// beyond those at that time.
void resetPeak();
std::size_t peakBytes();

// Lets one allocation fail, the `number`-th from now, counted from 1. Returns
// whether it came to that when the guard is released.
class Failure {
public:
    explicit Failure(std::size_t number);
    ~Failure() { release(); }
    Failure(const Failure&) = delete;
    Failure& operator=(const Failure&) = delete;

    bool release();
};

} // namespace tvml::allocations

#endif
