// Helpers shared by the core tests: a fixed clock, and the run size of the long suites.
#pragma once

#include "core/random.h"

#include <cstdint>
#include <cstdlib>
#include <functional>

namespace tallyon::testing {

// Pins the clock to a value for the lifetime of the object, then restores the real clock.
class FixedClock {
public:
    explicit FixedClock(std::uint64_t t = 0) : now_(t) { SetClockSource([this] { return now_; }); }
    ~FixedClock() { SetClockSource(nullptr); }
    FixedClock(const FixedClock&) = delete;
    FixedClock& operator=(const FixedClock&) = delete;
    void Set(std::uint64_t t) { now_ = t; }

private:
    std::uint64_t now_;
};

// The first clock value from which a draw gives the wanted value.
inline std::uint64_t ClockFor(const std::function<int()>& draw, int wanted, FixedClock& clock)
{
    for (std::uint64_t t = 1;; ++t) {
        clock.Set(t);
        if (draw() == wanted)
            return t;
    }
}

// Puzzles per grid size and start side for the property suites. The sanitizer build
// defines TALLYON_SLOW_TESTS and runs fewer.
inline int PuzzlesPerCase()
{
#ifdef TALLYON_SLOW_TESTS
    return 40;
#else
    return 200;
#endif
}

} // namespace tallyon::testing
