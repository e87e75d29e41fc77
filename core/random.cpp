// Randomness reseeded from the time of day on every draw, and the host hooks.
#include "core/random.h"

#include <chrono>
#include <utility>

namespace tallyon {
namespace {

ClockSource g_clock;
std::function<void()> g_pendingEvents;
std::function<void(const std::string&)> g_trace;

// The time of day in nanoseconds: system_clock reads CLOCK_REALTIME through clock_gettime.
std::uint64_t TimeOfDayNanoseconds()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
}

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
