// Randomness reseeded from the time of day on every draw, and the host hooks.
#include "core/board/random.h"

#include <chrono>
#include <utility>

#if defined(__x86_64__)
#include <x86intrin.h>
#endif

namespace tallyon {
namespace {

ClockSource g_clock;
std::function<void()> g_pendingEvents;
std::function<void(const std::string&)> g_trace;

// The time of day in nanoseconds as the system keeps it: CLOCK_REALTIME, through clock_gettime.
std::uint64_t SystemTimeOfDay()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
}

#if defined(__x86_64__)
// The time of day in nanoseconds, read from the system about every 50 ms and carried forward
// in between by the processor's time-stamp counter, the counter the system's own clock reads.
// A draw then costs a third of a system read: the generator draws tens of thousands of times
// for a large puzzle. Until two readings a while apart give the counter's rate, and whenever
// the system clock steps back, every call reads the system clock.
class CarriedClock {
public:
    // Never the same nanosecond twice: two reads of the counter can lie less than a
    // nanosecond apart, where two system reads never did, and equal seeds give equal draws.
    std::uint64_t Now()
    {
        const std::uint64_t now = Read();
        last_ = now > last_ || last_ - now > kStepBack ? now : last_ + 1;
        return last_;
    }

private:
    std::uint64_t Read()
    {
        const std::uint64_t ticks = __rdtsc();
        const std::uint64_t since = ticks - anchorTicks_;
        if (nsPerTick32_ != 0 && since < kCarryTicks)
            return anchorNs_ + ((since * nsPerTick32_) >> 32);
        const std::uint64_t ns = SystemTimeOfDay();
        if (anchorTicks_ == 0 || ns <= anchorNs_ || since == 0) {
            Anchor(ticks, ns, 0);
        } else if (since >= kCarryTicks) {
            Anchor(ticks, ns, ((ns - anchorNs_) << 32) / since);
        }
        return ns;
    }

    // A system clock set back by more than this is followed at once; less, and the time
    // returned creeps on by a nanosecond a read until the clock catches up.
    static constexpr std::uint64_t kStepBack = 1'000'000'000;
    // About 50 ms at 2 GHz; short enough that the carried time stays within microseconds of
    // the system's, and that the product below stays within 64 bits at any likely rate.
    static constexpr std::uint64_t kCarryTicks = 100'000'000;

    void Anchor(std::uint64_t ticks, std::uint64_t ns, std::uint64_t nsPerTick32)
    {
        anchorTicks_ = ticks;
        anchorNs_ = ns;
        // Counters run at a few hundred MHz to a few GHz. A rate outside 0.05 to 16 ns a tick
        // means the counter jumped (a move to another processor) or would overflow the product
        // above; the system clock is read until the next anchor then.
        const bool plausible = nsPerTick32 >= (std::uint64_t{1} << 32) / 20 && nsPerTick32 < (std::uint64_t{16} << 32);
        nsPerTick32_ = plausible ? nsPerTick32 : 0;
    }

    std::uint64_t anchorTicks_ = 0, anchorNs_ = 0, last_ = 0;
    std::uint64_t nsPerTick32_ = 0; // nanoseconds a tick, in 32.32 fixed point; 0 while unknown
};

CarriedClock g_carried;
#endif

// The splitmix64 step: a strong mix of a 64-bit seed, so that seeds a few
// nanoseconds apart give unrelated outputs.
std::uint64_t Mix(std::uint64_t z)
{
    z += 0x9e3779b97f4a7c15ull;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
    return z ^ (z >> 31);
}

} // namespace

#if defined(__x86_64__)
std::uint64_t TimeOfDayNanoseconds() { return g_carried.Now(); }
#else
std::uint64_t TimeOfDayNanoseconds()
{
    static std::uint64_t last = 0;
    const std::uint64_t now = SystemTimeOfDay();
    last = now > last ? now : last + 1;
    return last;
}
#endif

void SetClockSource(ClockSource clock) { g_clock = std::move(clock); }

std::uint64_t RandomBits() { return Mix(g_clock ? g_clock() : TimeOfDayNanoseconds()); }

double RandomUnit()
{
    const std::uint64_t bits = RandomBits() >> 11; // 53 bits
    return static_cast<double>(bits) * (1.0 / 9007199254740992.0);
}

int RandomInt(int n, int k)
{
    const double x = RandomUnit() * n + k;
    int whole = static_cast<int>(x);
    if (whole > x)
        --whole; // the integer part rounds down, also below 0
    return whole;
}

void SetPendingEventsHandler(std::function<void()> handler) { g_pendingEvents = std::move(handler); }

void LetPendingEventsRun()
{
    if (g_pendingEvents)
        g_pendingEvents();
}

void SetTraceHandler(std::function<void(const std::string&)> handler) { g_trace = std::move(handler); }

void ShowTrace(const std::string& text)
{
    if (g_trace)
        g_trace(text);
}

} // namespace tallyon
