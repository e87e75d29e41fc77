// Randomness: clock-reseeded draws must be uniform and free of correlation between
// neighbouring draws, whether the clock is real or steps by one nanosecond.
#include "core/link_rule.h"
#include "core/random.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace tallyon {
namespace {

using testing::FixedClock;

// Chi-square of digits 1..9 and of the 81 pairs of successive digits.
struct DigitStats {
    double single = 0.0;
    double pairs = 0.0;
    double lagCorrelation = 0.0;
};

DigitStats Measure(const std::vector<int>& digits)
{
    std::array<double, 10> counts{};
    std::array<double, 100> pairCounts{};
    for (std::size_t i = 0; i < digits.size(); ++i) {
        counts[static_cast<std::size_t>(digits[i])] += 1;
        if (i > 0)
            pairCounts[static_cast<std::size_t>(digits[i - 1] * 10 + digits[i])] += 1;
    }
    DigitStats s;
    const double n = static_cast<double>(digits.size());
    for (int d = 1; d <= 9; ++d)
        s.single += std::pow(counts[static_cast<std::size_t>(d)] - n / 9, 2) / (n / 9);
    for (int a = 1; a <= 9; ++a)
        for (int b = 1; b <= 9; ++b)
            s.pairs += std::pow(pairCounts[static_cast<std::size_t>(a * 10 + b)] - (n - 1) / 81, 2) / ((n - 1) / 81);
    double mean = 0, var = 0, cov = 0;
    for (int d : digits)
        mean += d / n;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        var += std::pow(digits[i] - mean, 2);
        if (i > 0)
            cov += (digits[i] - mean) * (digits[i - 1] - mean);
    }
    s.lagCorrelation = cov / var;
    return s;
}

constexpr double kChiSquare8 = 26.12;   // 8 degrees of freedom, p = 0.001
constexpr double kChiSquare80 = 124.84; // 80 degrees of freedom, p = 0.001

TEST(Randomness, BackToBackDigitsAreUniformAndUncorrelated)
{
    std::vector<int> digits(100000);
    for (int& d : digits)
        d = RandomDigit();
    const DigitStats s = Measure(digits);
    EXPECT_LT(s.single, kChiSquare8);
    EXPECT_LT(s.pairs, kChiSquare80);
    EXPECT_LT(std::abs(s.lagCorrelation), 0.015);
}

TEST(Randomness, ClockValuesOneNanosecondApartGiveUnrelatedDigits)
{
    FixedClock clock;
    std::vector<int> digits(100000);
    for (std::size_t i = 0; i < digits.size(); ++i) {
        clock.Set(1700000000000000000ull + i);
        digits[i] = RandomDigit();
    }
    const DigitStats s = Measure(digits);
    EXPECT_LT(s.single, kChiSquare8);
    EXPECT_LT(s.pairs, kChiSquare80);
    EXPECT_LT(std::abs(s.lagCorrelation), 0.015);
}

TEST(Randomness, TheClockSeamFixesEveryDraw)
{
    {
        FixedClock clock(12345);
        const double first = RandomUnit();
        EXPECT_EQ(RandomUnit(), first); // the same tick gives the same draw
        for (std::uint64_t t = 0; t < 2000; ++t) {
            clock.Set(t);
            const double u = RandomUnit();
            ASSERT_GE(u, 0.0);
            ASSERT_LT(u, 1.0);
            const int i = RandomInt(7, 4);
            ASSERT_GE(i, 4);
            ASSERT_LE(i, 10);
            ASSERT_EQ(i, static_cast<int>(std::floor(u * 7 + 4)));
        }
    }
    // Back on the real clock, draws move on.
    const double a = RandomUnit();
    double b = RandomUnit();
    for (int i = 0; i < 10 && b == a; ++i)
        b = RandomUnit();
    EXPECT_NE(a, b);
}

TEST(Randomness, HostHooksAreCalledAndDefaultToNothing)
{
    int pending = 0;
    std::string traced;
    LetPendingEventsRun();
    ShowTrace("dropped");
    SetPendingEventsHandler([&] { ++pending; });
    SetTraceHandler([&](const std::string& text) { traced += text; });
    LetPendingEventsRun();
    MakeResult(2, 3); // lets pending events run before its draw
    ShowTrace(" down dummy");
    SetPendingEventsHandler(nullptr);
    SetTraceHandler(nullptr);
    LetPendingEventsRun();
    EXPECT_EQ(pending, 2);
    EXPECT_EQ(traced, " down dummy");
}

} // namespace
} // namespace tallyon
