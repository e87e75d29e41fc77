// Randomness and the hooks the core offers its host: the clock seam, pending events, traces.
//
// Every draw reseeds from the time of day at nanosecond resolution; the seed is hashed so
// that draws whose seeds differ by a few nanoseconds are uncorrelated. Tests replace the
// clock. The hooks are process-wide and default to doing nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace tallyon {

using ClockSource = std::function<std::uint64_t()>;

// Replaces the time-of-day clock (nanoseconds); an empty function restores the real one.
void SetClockSource(ClockSource clock);

// The real clock: the time of day in nanoseconds. Every read is later than the one before,
// so that no two draws share a seed, unless the system clock was set back by over a second.
std::uint64_t TimeOfDayNanoseconds();

// Reseeds from the clock and returns 64 well-mixed bits.
std::uint64_t RandomBits();

// Reseeds from the clock and returns a number in [0, 1): the top 53 bits of RandomBits().
double RandomUnit();

// Reseeds from the clock and returns the integer part of (RandomUnit() * n + k).
int RandomInt(int n, int k);

// "Let pending events run": the host plugs in its event processing; empty by default.
void SetPendingEventsHandler(std::function<void()> handler);
void LetPendingEventsRun();

// Trace output of the generator's developer traces (trace argument 1). The host shows the
// text; by default it is dropped.
void SetTraceHandler(std::function<void(const std::string&)> handler);
void ShowTrace(const std::string& text);

} // namespace tallyon
