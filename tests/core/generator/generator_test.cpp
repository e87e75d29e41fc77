// Whole puzzles: the properties every built board must have, for every size and start side.
#include "core/generator/generator.h"
#include "core/reasoning/chain_solver.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <chrono>

namespace tallyon {
namespace {

using namespace testing;

// Every node and link cell holds 1..9, gaps hold 0, and CellState is set for play.
void CheckCells(const Board& b)
{
    for (int r = 1; r <= b.BoardSpan; ++r)
        for (int c = 1; c <= b.BoardSpan; ++c) {
            const int v = b.NodeValue(r, c), s = b.CellState(r, c);
            if (r % 2 == 0 && c % 2 == 0)
                ASSERT_TRUE(v == 0 && s == kNoCell) << r << "," << c;
            else
                ASSERT_TRUE(v >= 1 && v <= 9 && s == (IsNode(r, c) ? kNodeCell : kLinkCell))
                    << r << "," << c << " holds " << v;
        }
}

// The path: List2 and PathList agree and alternate node and link from Start to End on the
// named edges, each link valid read from either end; the key nodes sit at their places.
void CheckPath(const Board& b, int side, const std::vector<int>& cells)
{
    ASSERT_EQ(cells.size() % 2, 1u);
    ASSERT_EQ(cells.size(), b.List2.size());
    for (std::size_t i = 0; i < cells.size(); ++i)
        ASSERT_EQ(std::to_string(cells[i]), b.List2[i]);
    EXPECT_EQ(b.StartNode, cells.front());
    EXPECT_EQ(b.EndNode, cells.back());
    EXPECT_EQ(b.KeyNodes[0], b.StartNode);
    EXPECT_EQ(b.KeyNodes[2], b.EndNode);
    const std::size_t half = cells.size() / 2; // size / 2 ends in .5 and rounds to even
    EXPECT_EQ(b.KeyNodes[1], cells[half + half % 2]);
    const auto& along = side == kSideTop ? b.CellRow : b.CellCol;
    EXPECT_EQ(along[b.StartNode], 1);
    EXPECT_EQ(along[b.EndNode], b.BoardSpan);
    for (std::size_t i = 0; i + 2 < cells.size(); i += 2) {
        const Node a{b.CellRow[cells[i]], b.CellCol[cells[i]]};
        const Node c{b.CellRow[cells[i + 2]], b.CellCol[cells[i + 2]]};
        ASSERT_TRUE(IsNode(a.row, a.col));
        ASSERT_EQ(std::abs(a.row - c.row) + std::abs(a.col - c.col), 2);
        const int mr = (a.row + c.row) / 2, mc = (a.col + c.col) / 2;
        ASSERT_EQ(b.CellNo(mr, mc), cells[i + 1]);
        const int x = b.NodeValue(a.row, a.col), y = b.NodeValue(mr, mc), z = b.NodeValue(c.row, c.col);
        ASSERT_TRUE(IsValidTriple(x, y, z) && IsValidTriple(z, y, x)) << "path link " << cells[i + 1];
    }
}

// The path's links between its nodes.
LinkGraph PathLinks(const Board& b, const std::vector<int>& cells)
{
    LinkGraph g = LinkGraph::Empty(b.GridSize + 1);
    const auto node = [&](int cell) { return NodeIndex(b.GridSize, b.CellRow[cell], b.CellCol[cell]); };
    for (std::size_t i = 0; i + 2 < cells.size(); i += 2)
        g.SetLink(node(cells[i]), node(cells[i + 2]), true);
    return g;
}

class BuiltPuzzles : public ::testing::TestWithParam<int> {};

TEST_P(BuiltPuzzles, HaveTheirPropertiesAndOneChainFromStartToEnd)
{
    const int size = GetParam();
    // A clock that repeats, so that the count of builds below is the same on every run.
    TickingClock clock;
    auto board = FreshBoard(size);
    int builds = 0;
    for (int side : {kSideLeft, kSideTop})
        for (int i = 0; i < PuzzlesPerCase(); ++i) {
            const PuzzleStats stats = BuildPuzzle(*board, side, 8400);
            SCOPED_TRACE(::testing::Message() << "size " << size << " side " << side << " puzzle " << i);
            ASSERT_EQ(board->StartSide, side);
            ASSERT_TRUE(stats.Rounds >= 1 &&
                        (stats.BoundHit ? stats.Rounds == kMaxPathRounds : stats.Rounds <= kMaxPathRounds));
            // The path list is as long as the rules ask: 30 characters a grid step, but 60 and
            // 90 on the two smallest boards, where the walk cannot reach 120 and 150. Turning
            // renumbers the cells, and so changes the length.
            const std::size_t wanted[] = {60, 90, 180, 210, 240, 270, 300};
            ASSERT_TRUE(side != kSideLeft || (stats.BoundHit ? board->PathList.size() < wanted[size - 4]
                                                             : board->PathList.size() >= wanted[size - 4]))
                << board->PathList.size() << " characters";
            const std::vector<int> cells = Numbers(board->PathList);
            ASSERT_NO_FATAL_FAILURE(CheckCells(*board));
            ASSERT_NO_FATAL_FAILURE(CheckPath(*board, side, cells));
            const ChainCount chains = CountBoardChains(*board);
            ASSERT_TRUE(chains.complete && chains.chains == 1) << chains.chains << " chains";
            // Solved by reasoning, to the path itself.
            ASSERT_TRUE(stats.Grading.solved);
            builds += stats.Builds;
            ASSERT_TRUE(ToLinkGraph(stats.Grading.known.forced, size + 1).right == PathLinks(*board, cells).right &&
                        ToLinkGraph(stats.Grading.known.forced, size + 1).down == PathLinks(*board, cells).down);
        }
    const int puzzles = 2 * PuzzlesPerCase();
    // A puzzle is built again when its path leaves too few links off it that can be valid
    // (most must be) or the grader cannot solve it: a tight path on the middle sizes, now and
    // then, never most of the time.
    EXPECT_LE(builds, puzzles + puzzles / 3);
}

INSTANTIATE_TEST_SUITE_P(GridSizes, BuiltPuzzles, ::testing::Range(4, 11));

TEST(BuildPuzzle, DecoyStagesLeaveThePathDigitsAlone)
{
    for (int size = 4; size <= 10; ++size)
        for (int i = 0; i < 2 * PuzzlesPerCase(); ++i) { // as many as the two start sides build
            auto b = FreshBoard(size);
            LayPath(*b);
            ExpandPath(*b);
            NumberPath(*b);
            const std::vector<int> cells = Numbers(b->PathList);
            std::vector<int> digits;
            for (int k : cells)
                digits.push_back(b->NodeValue(b->CellRow[k], b->CellCol[k]));
            SpreadDecoys(*b);
            FillDecoys(*b);
            CheckDecoys(*b);
            for (std::size_t k = 0; k < cells.size(); ++k)
                ASSERT_EQ(b->NodeValue(b->CellRow[cells[k]], b->CellCol[cells[k]]), digits[k])
                    << "size " << size << " cell " << cells[k];
        }
}

TEST(BuildPuzzle, StartSideTags)
{
    auto board = FreshBoard(7);
    int count[5] = {};
    for (int tag : {3, 4}) { // laid from the left, the tag kept
        BuildPuzzle(*board, tag, 8400);
        EXPECT_TRUE(board->StartSide == tag && board->CellCol[board->StartNode] == 1) << tag;
    }
    // "Random" lays from the top for a draw above 50 of 0..99: 49 in 100. Two thousand small
    // puzzles tell that from 60 (or 51) with room to spare, and a ticking clock makes the run
    // repeat exactly.
    TickingClock clock;
    auto small = FreshBoard(4);
    constexpr int kSamples = 2000;
    for (int i = 0; i < kSamples; ++i) {
        BuildPuzzle(*small, kSideRandom, 8400);
        ASSERT_TRUE(small->StartSide == kSideLeft || small->StartSide == kSideTop);
        ++count[small->StartSide];
        EXPECT_EQ((small->StartSide == kSideTop ? small->CellRow : small->CellCol)[small->StartNode], 1);
    }
    const double top = 100.0 * count[kSideTop] / kSamples;
    EXPECT_TRUE(top > 45.5 && top < 52.5) << top << "% from the top";
}

// Equal seeds give equal draws, so the real clock never gives the same time twice nor goes
// back, across the reads where it carries the time forward by itself and the ones where it
// takes up the system's time again (about every 50 ms); and it keeps near the system's time.
TEST(RandomDraws, TheRealClockOnlyMovesOnAndKeepsTheTimeOfDay)
{
    const auto systemNs = [] {
        const auto since = std::chrono::system_clock::now().time_since_epoch();
        return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(since).count());
    };
    constexpr std::uint64_t kRunNs = 400'000'000, kNearNs = 2'000'000;
    const std::uint64_t first = TimeOfDayNanoseconds(), until = systemNs() + kRunNs;
    std::uint64_t last = first, reads = 0, backs = 0;
    for (std::uint64_t now = 0; (++reads & 1023) != 0 || systemNs() < until; last = now) {
        now = TimeOfDayNanoseconds();
        backs += now <= last ? 1 : 0;
    }
    EXPECT_EQ(backs, 0u) << "of " << reads << " reads";
    const std::uint64_t system = systemNs(), ours = TimeOfDayNanoseconds();
    EXPECT_LT(ours > system ? ours - system : system - ours, kNearNs);
}

// The step rules at the edges of their draws, each draw made by the clock: above 75 right,
// above 50 left, above 25 up, else down; a way the board does not have falls through.
TEST(PathWalk, ChooseStepThresholdsAtTheirEdges)
{
    FixedClock clock;
    const auto drawing = [&clock](int v) {
        for (clock.now = 0; RandomInt(100, 0) != v; ++clock.now) {}
    };
    auto board = FreshBoard(4); // nodes at rows and columns 1, 3, 5, 7, 9
    const struct {
        int v, row, col;
        char direction;
    } cases[] = {
        {76, 5, 5, 'R'}, {75, 5, 5, 'L'}, {51, 5, 5, 'L'}, {50, 5, 5, 'U'}, {26, 5, 5, 'U'},
        {25, 5, 5, 'D'}, {0, 5, 5, 'D'},  {99, 5, 9, 'L'}, {99, 5, 1, 'R'}, {75, 5, 1, 'U'},
        {50, 1, 5, 'D'}, {99, 9, 1, 'R'}, {25, 9, 1, 0},
    };
    for (const auto& c : cases) {
        drawing(c.v);
        const Step step = ChooseStep(*board, c.row, c.col);
        EXPECT_EQ(step.direction, c.direction) << "draw " << c.v << " at " << c.row << "," << c.col;
        const int dRow = c.direction == 'U' ? -2 : c.direction == 'D' ? 2 : 0;
        const int dCol = c.direction == 'L' ? -2 : c.direction == 'R' ? 2 : 0;
        EXPECT_TRUE(step.row == c.row + dRow && step.col == c.col + dCol) << "draw " << c.v;
    }
}

} // namespace
} // namespace tallyon
