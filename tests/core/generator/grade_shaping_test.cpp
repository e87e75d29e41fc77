// Shaping the valid links for a grade, on its own: every change keeps the path the only chain,
// a shaped choice is of its grade, and the valid share is raised past half, not to it.
#include "core/generator/generator.h"
#include "core/generator/grade_shaping.h"
#include "core/reasoning/chain_solver.h"
#include "core/reasoning/walkthrough.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace tallyon {
namespace {

using namespace testing;

// The path's nodes of a built board, Start first, and the Hint's place among them.
std::vector<int> PathNodes(const Board& b)
{
    std::vector<int> nodes;
    for (std::size_t i = 0; i < b.PathCells.size(); i += 2)
        nodes.push_back(NodeIndex(b.GridSize, b.CellRow[b.PathCells[i]], b.CellCol[b.PathCells[i]]));
    return nodes;
}

// Built puzzles' valid links, shaped afresh for each grade: where the shaping says it made the
// grade, the deductions agree, the path is still the only chain, and no link of the path
// was closed.
TEST(GradeShaping, MakesEachGradeOnBuiltBoardsAndKeepsThePath)
{
    TickingClock clock;
    for (const int size : {5, 7, 9})
        for (int i = 0; i < 6; ++i) {
            auto board = FreshBoard(size);
            BuildPuzzle(*board, kSideLeft, 8400);
            const std::vector<int> path = PathNodes(*board);
            const int hint = static_cast<int>(HintItemIndex(board->PathCells.size()) / 2);
            for (const Grade grade : {Grade::Easy, Grade::Medium, Grade::Hard}) {
                SCOPED_TRACE(::testing::Message() << size << "x" << size << " puzzle " << i << " " << GradeName(grade));
                LinkGraph open = ValidLinkGraph(*board);
                GradeShaper shaper(open, path, hint, grade);
                if (!shaper.Shape())
                    continue;
                EXPECT_TRUE(shaper.HasGrade());
                EXPECT_TRUE(SolvedWithin(grade, open, path.front(), path[static_cast<std::size_t>(hint)], path.back()));
                for (std::size_t k = 1; k < path.size(); ++k)
                    ASSERT_TRUE(open.IsOpen(path[k - 1], path[k]));
                EXPECT_EQ(
                    CountChains(open, path.front(), NodeBit(path[static_cast<std::size_t>(hint)]), path.back()).chains,
                    1);
                shaper.Enrich();
                EXPECT_TRUE(shaper.HasGrade()) << "enriching keeps the grade";
            }
        }
}

// On a 5 x 5 lattice with the path along the top row, eighteen links among the free nodes below
// it, which no chain from Start can use, make exactly half of the 36 links off the path valid:
// raising opens more until over half are.
TEST(GradeShaping, RaisesTheValidSharePastHalf)
{
    const std::vector<int> path = {0, 1, 2, 3, 4};
    LinkGraph open = LinkGraph::Empty(5);
    for (std::size_t k = 1; k < path.size(); ++k)
        open.SetLink(path[k - 1], path[k], true);
    int opened = 0;
    ForEachLatticeLink(5, [&](int a, int b) {
        if (a >= 5 && opened < 18) {
            open.SetLink(a, b, true);
            ++opened;
        }
    });
    GradeShaper shaper(open, path, 2, std::nullopt);
    ASSERT_EQ(shaper.OffPath(), 36);
    ASSERT_EQ(2 * shaper.ValidOffPath(), shaper.OffPath());
    EXPECT_TRUE(shaper.RaiseValidShare(50));
    EXPECT_GT(2 * shaper.ValidOffPath(), shaper.OffPath());
    EXPECT_TRUE(shaper.HasGrade());
}

} // namespace
} // namespace tallyon
