// The link rule and the digit routines built on it; clock-reseeded digits must be uniform
// and uncorrelated, whether the clock is real or steps by one nanosecond.
#include "core/board/link_rule.h"
#include "core/generator/decoy_fill.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <optional>
#include <vector>

namespace tallyon {
namespace {

TEST(LinkRule, HelpTextTriplesAndEveryOperationBothWays)
{
    struct Case {
        int a, b, c;
        bool valid;
    };
    const Case cases[] = {
        {8, 2, 7, false}, {1, 3, 9, false}, {1, 2, 3, true},  {9, 3, 3, true},
        {4, 4, 1, true},  {1, 1, 1, true},  {9, 9, 9, false}, // equal digits make 1
        {2, 3, 5, true},  {5, 3, 2, true},  {3, 5, 2, true},  // sum, difference both ways
        {2, 4, 8, true},  {8, 4, 2, true},  {2, 8, 4, true},  // product, quotient both ways
        {7, 2, 3, false}, {3, 2, 7, false},
    };
    for (const Case& t : cases) {
        EXPECT_EQ(IsValidTriple(t.a, t.b, t.c), t.valid) << t.a << "," << t.b << "," << t.c;
        EXPECT_EQ(IsValidTriple(t.c, t.b, t.a), t.valid) << "reversed " << t.a << "," << t.b << "," << t.c;
    }
}

// The two readings agree on every triple of digits 0..9 but those with two zero digits
// a and b, which Verify's reading takes as 0 / 0, equal to anything.
TEST(LinkRule, VerifysReadingDiffersOnlyOnZeroOverZero)
{
    for (int a = 0; a <= 9; ++a)
        for (int b = 0; b <= 9; ++b)
            for (int c = 0; c <= 9; ++c)
                EXPECT_EQ(IsValidTripleAsVerified(a, b, c), IsValidTriple(a, b, c) || (a == 0 && b == 0))
                    << a << "," << b << "," << c;
    EXPECT_FALSE(IsValidTripleAsVerified(5, 0, 9)); // 5 / 0 is never equal
    EXPECT_TRUE(IsValidTripleAsVerified(0, 0, 7));
}

// For every pair of end digits: some link digit makes the link valid, at least three make it
// invalid, and the picker, the suggestion and MakeResult give what they promise.
TEST(LinkRule, EveryDigitPairHasDigitsOfBothKinds)
{
    for (int a = 1; a <= 9; ++a)
        for (int c = 1; c <= 9; ++c) {
            int valid = 0;
            for (int b = 1; b <= 9; ++b)
                valid += IsValidTriple(a, b, c) ? 1 : 0;
            EXPECT_TRUE(valid >= 1 && valid <= 6) << a << "," << c;
            EXPECT_TRUE(IsValidTriple(a, c, SuggestResult(a, c))) << a << "," << c;
            for (int i = 0; i < 10; ++i) {
                EXPECT_TRUE(IsValidTriple(a, PickLinkDigit(a, c, true), c));
                const int bad = PickLinkDigit(a, c, false);
                EXPECT_TRUE(bad >= 1 && !IsValidTriple(a, bad, c)) << a << "," << c << " got " << bad;
                const MadeResult r = MakeResult(a, c);
                ASSERT_TRUE(!r.failed && r.c >= 1 && r.c <= 9 && IsValidTriple(a, c, r.c)) << a << "," << c;
            }
        }
    for (const auto& [a, b] : {std::pair{0, 3}, {3, 0}})
        EXPECT_TRUE(MakeResult(a, b).failed && MakeResult(a, b).c == -1);
    // The suggestion tries equal digits, the sum, the differences, then the product: where
    // several fit, the first one wins.
    const int suggested[][3] = {{4, 4, 1}, {2, 3, 5}, {9, 1, 8}, {1, 9, 8}, {8, 2, 6}, {9, 9, 1}};
    for (const auto& [a, b, c] : suggested)
        EXPECT_EQ(SuggestResult(a, b), c) << a << "," << b;
}

TEST(LinkRule, MakeResultFollowsTheDrawnOperationOrFallsBack)
{
    // k indexes the table 1 "+", 2 "-", 3 "/", 4 "*", 5 "+", 6 "-".
    struct Case {
        int a, b, k, c;
        const char* op;
    };
    const Case cases[] = {
        {2, 7, 2, 5, "-"}, {2, 7, 6, 5, "-"}, {2, 7, 3, 9, "+"}, {2, 7, 1, 9, "+"}, {9, 3, 3, 3, "/"},
        {9, 3, 4, 6, "-"}, {9, 3, 5, 6, "-"}, {5, 5, 1, 1, "/"}, {5, 5, 2, 1, "/"}, {5, 5, 4, 1, "/"},
        {2, 3, 4, 6, "*"}, {2, 2, 4, 4, "*"}, {1, 1, 2, 2, "+"},
    };
    testing::FixedClock clock;
    for (const Case& t : cases) {
        for (clock.now = 1; RandomInt(6, 1) != t.k;) // the first tick that draws k
            ++clock.now;
        const MadeResult r = MakeResult(t.a, t.b);
        EXPECT_EQ(r.c, t.c) << t.a << "," << t.b << " k=" << t.k;
        EXPECT_EQ(r.op, t.op) << t.a << "," << t.b << " k=" << t.k;
    }
}

constexpr double kChiSquare8 = 26.12;   // 8 degrees of freedom, p = 0.001
constexpr double kChiSquare80 = 124.84; // 80 degrees of freedom, p = 0.001

// Whether 100,000 digits, drawn one per clock reading (the clock stepping one nanosecond per
// draw when `stepped`), pass a chi-square test of the digits 1..9 and of the 81 pairs of
// successive digits, and each digit is uncorrelated with the one before. Prints the figures
// of a failure.
bool DigitsLookRandom(bool stepped)
{
    std::optional<testing::FixedClock> clock;
    if (stepped)
        clock.emplace();
    std::vector<int> d(100000);
    for (std::size_t i = 0; i < d.size(); ++i) {
        if (clock)
            clock->now = 1700000000000000000ull + i;
        d[i] = RandomDigit();
    }
    const double n = static_cast<double>(d.size());
    double counts[10] = {}, pairs[10][10] = {}, mean = 0, var = 0, cov = 0, single = 0, paired = 0;
    for (std::size_t i = 0; i < d.size(); ++i) {
        counts[d[i]] += 1;
        mean += d[i] / n;
        if (i > 0)
            pairs[d[i - 1]][d[i]] += 1;
    }
    for (int a = 1; a <= 9; ++a) {
        single += std::pow(counts[a] - n / 9, 2) / (n / 9);
        for (int b = 1; b <= 9; ++b)
            paired += std::pow(pairs[a][b] - (n - 1) / 81, 2) / ((n - 1) / 81);
    }
    for (std::size_t i = 0; i < d.size(); ++i) {
        var += std::pow(d[i] - mean, 2);
        cov += i > 0 ? (d[i] - mean) * (d[i - 1] - mean) : 0.0;
    }
    const bool ok = single < kChiSquare8 && paired < kChiSquare80 && std::abs(cov / var) < 0.015;
    if (!ok)
        std::printf("chi-square %.2f (digits), %.2f (pairs), lag correlation %.4f\n", single, paired, cov / var);
    return ok;
}

// The stepped clock is repeatable. The real clock differs every run: a sound generator fails
// a test at p = 0.001 once in a thousand runs, so a failure counts only when a second sample
// fails too.
TEST(Randomness, DigitsAreUniformAndUncorrelated)
{
    EXPECT_TRUE(DigitsLookRandom(true));
    EXPECT_TRUE(DigitsLookRandom(false) || DigitsLookRandom(false));
}

} // namespace
} // namespace tallyon
