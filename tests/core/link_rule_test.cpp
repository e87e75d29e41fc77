// The link rule, the digit routines built on it and the link-digit picker of the decoys.
#include "core/decoy_fill.h"
#include "core/link_rule.h"
#include "test_support.h"

#include <gtest/gtest.h>


namespace tallyon {
namespace {

using testing::ClockFor;
using testing::FixedClock;

TEST(LinkRule, HelpTextTriplesAndEveryOperation)
{
    struct Case { int a, b, c; bool valid; };
    const Case cases[] = {
        {8, 2, 7, false}, {1, 3, 9, false}, {1, 2, 3, true}, {9, 3, 3, true},
        {4, 4, 1, true},  // equal digits make 1
        {2, 3, 5, true},  {5, 3, 2, true}, {3, 5, 2, true}, // sum, difference both ways
        {2, 4, 8, true},  {8, 4, 2, true}, {2, 8, 4, true}, // product, quotient both ways
        {7, 2, 3, false}, {3, 2, 7, false}, {9, 9, 9, false}, {1, 1, 1, true},
    };
    for (const Case& t : cases) {
        EXPECT_EQ(IsValidTriple(t.a, t.b, t.c), t.valid) << t.a << "," << t.b << "," << t.c;
        EXPECT_EQ(IsValidTriple(t.c, t.b, t.a), t.valid) << "reversed " << t.a << "," << t.b << "," << t.c;
    }
}

TEST(LinkRule, EveryLinkDigitPairHasValidAndAtLeastThreeInvalidDigits)
{
    for (int a = 1; a <= 9; ++a)
        for (int c = 1; c <= 9; ++c) {
            int valid = 0;
            for (int b = 1; b <= 9; ++b)
                valid += IsValidTriple(a, b, c) ? 1 : 0;
            EXPECT_GE(valid, 1) << a << "," << c;
            EXPECT_GE(9 - valid, 3) << a << "," << c;
            for (int i = 0; i < 20; ++i) {
                EXPECT_TRUE(IsValidTriple(a, PickLinkDigit(a, c, true), c));
                const int bad = PickLinkDigit(a, c, false);
                EXPECT_GE(bad, 1);
                EXPECT_FALSE(IsValidTriple(a, bad, c));
            }
        }
}

TEST(LinkRule, MakeResultFollowsTheDrawnOperationOrFallsBack)
{
    // k indexes the table 1 "+", 2 "-", 3 "/", 4 "*", 5 "+", 6 "-".
    struct Case { int a, b, k, c; const char* op; };
    const Case cases[] = {
        {2, 7, 2, 5, "-"}, {2, 7, 6, 5, "-"}, {2, 7, 3, 9, "+"}, {2, 7, 1, 9, "+"},
        {9, 3, 3, 3, "/"}, {9, 3, 4, 6, "-"}, {9, 3, 5, 6, "-"},
        {5, 5, 1, 1, "/"}, {5, 5, 2, 1, "/"}, {5, 5, 3, 1, "/"}, {5, 5, 4, 1, "/"},
        {2, 3, 4, 6, "*"}, {3, 3, 3, 1, "/"}, {2, 2, 4, 4, "*"}, {1, 1, 2, 2, "+"},
    };
    FixedClock clock;
    for (const Case& t : cases) {
        ClockFor([] { return RandomInt(6, 1); }, t.k, clock);
        const MadeResult r = MakeResult(t.a, t.b);
        EXPECT_FALSE(r.failed);
        EXPECT_EQ(r.c, t.c) << t.a << "," << t.b << " k=" << t.k;
        EXPECT_EQ(r.op, t.op) << t.a << "," << t.b << " k=" << t.k;
        EXPECT_TRUE(IsValidTriple(t.a, t.b, r.c));
    }
}

TEST(LinkRule, MakeResultIsValidForAllDigitsAndFailsOnZero)
{
    for (int a = 1; a <= 9; ++a)
        for (int b = 1; b <= 9; ++b)
            for (int i = 0; i < 10; ++i) {
                const MadeResult r = MakeResult(a, b);
                ASSERT_FALSE(r.failed);
                ASSERT_GE(r.c, 1);
                ASSERT_LE(r.c, 9);
                ASSERT_TRUE(IsValidTriple(a, b, r.c));
            }
    for (const auto& [a, b] : {std::pair{0, 3}, {3, 0}, {0, 0}}) {
        const MadeResult r = MakeResult(a, b);
        EXPECT_TRUE(r.failed);
        EXPECT_EQ(r.c, -1);
    }
}

TEST(LinkRule, SuggestResultExamples)
{
    EXPECT_EQ(SuggestResult(8, 2), 6);
    EXPECT_EQ(SuggestResult(4, 4), 1);
    EXPECT_EQ(SuggestResult(2, 3), 5);
    EXPECT_EQ(SuggestResult(3, 9), 6);
    for (int a = 1; a <= 9; ++a)
        for (int b = 1; b <= 9; ++b)
            EXPECT_TRUE(IsValidTriple(a, b, SuggestResult(a, b))) << a << "," << b;
}

} // namespace
} // namespace tallyon
