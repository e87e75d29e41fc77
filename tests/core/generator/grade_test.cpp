// Puzzles made for a grade: at every size each grade is made, within the build bound, and is
// that grade: its deductions solve it and, above Easy, those of the grade below do not.
#include "core/generator/generator.h"
#include "core/reasoning/chain_solver.h"
#include "core/reasoning/walkthrough.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace tallyon {
namespace {

using namespace testing;

class GradedPuzzles : public ::testing::TestWithParam<Grade> {};

TEST_P(GradedPuzzles, AreOfTheirGradeAtEverySize)
{
    const Grade grade = GetParam();
    TickingClock clock;
    const int perSize = std::max(2, PuzzlesPerCase() / 20);
    for (int size = 4; size <= 10; ++size)
        for (int i = 0; i < perSize; ++i) {
            SCOPED_TRACE(::testing::Message() << GradeName(grade) << " " << size << "x" << size << " puzzle " << i);
            auto board = FreshBoard(size);
            const PuzzleStats stats = BuildPuzzle(*board, i % 2 ? kSideTop : kSideLeft, 8400, 0, grade);
            ASSERT_FALSE(stats.GaveUp) << "no puzzle within " << kTestBuildBound << " builds";
            const std::array<int, 3> keys = KeyNodeIndexes(*board);
            const LinkGraph valid = ValidLinkGraph(*board);
            EXPECT_EQ(GradePuzzle(*board).grade, grade);
            EXPECT_TRUE(SolvedWithin(grade, valid, keys[0], keys[1], keys[2]));
            if (grade != Grade::Easy) {
                const auto below = static_cast<Grade>(static_cast<int>(grade) - 1);
                EXPECT_FALSE(SolvedWithin(below, valid, keys[0], keys[1], keys[2]));
            }
            EXPECT_EQ(CountBoardChains(*board).chains, 1);
            const LinkSet path = PathLinkSet(*board), offPath = ToLinkSet(LinkGraph::Full(size + 1)).Without(path);
            EXPECT_GT(2 * CountLinks(ToLinkSet(valid).Without(path)), CountLinks(offPath))
                << "most links off the path are valid";
        }
}

INSTANTIATE_TEST_SUITE_P(Grades, GradedPuzzles, ::testing::Values(Grade::Easy, Grade::Medium, Grade::Hard),
                         [](const auto& info) { return std::string(GradeName(info.param)); });

} // namespace
} // namespace tallyon
