// The path walk: the walk's shape and odds, its expansion and the quarter turn.
#include "core/generator/generator.h"
#include "core/generator/path_round.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace tallyon {
namespace {

using namespace testing;

// One laid and expanded path: nodes from the left edge to the right edge in steps of two,
// always turning, never onto a node whose text with "," is already listed (so "3," is
// refused once "13," is); a link cell between each two nodes; marks 1 and 3 on the path and
// nowhere else.
void CheckLaidPath(const Board& b)
{
    const std::vector<int> cells = Numbers(b.PathList);
    ASSERT_TRUE(cells.size() >= 3 && cells.size() % 2 == 1) << b.PathList;
    ASSERT_EQ(cells.front(), b.StartNode);
    ASSERT_EQ(cells.back(), b.EndNode);
    EXPECT_EQ(b.CellCol[b.StartNode], 1);
    EXPECT_EQ(b.CellCol[b.EndNode], b.BoardSpan);
    std::string listed;
    int lastDr = 0, lastDc = 0;
    for (std::size_t i = 0; i < cells.size(); i += 2) {
        const int r = b.CellRow[cells[i]], c = b.CellCol[cells[i]];
        ASSERT_TRUE(IsNode(r, c) && b.CellState(r, c) == kPathNodeMark) << cells[i];
        const std::string text = std::to_string(cells[i]) + ",";
        ASSERT_EQ(listed.find(text), std::string::npos) << "refused node taken: " << b.PathList;
        listed += text;
        if (i == 0)
            continue;
        const int dr = r - b.CellRow[cells[i - 2]], dc = c - b.CellCol[cells[i - 2]];
        ASSERT_TRUE(std::abs(dr) + std::abs(dc) == 2 && (dr == 0 || dc == 0)) << b.PathList;
        ASSERT_FALSE(dr == lastDr && dc == lastDc) << "same direction twice: " << b.PathList;
        lastDr = dr;
        lastDc = dc;
        ASSERT_EQ(cells[i - 1], b.CellNo(r - dr / 2, c - dc / 2)) << b.PathList;
        ASSERT_EQ(b.CellState(r - dr / 2, c - dc / 2), kPathLinkMark);
    }
    std::size_t marked = 0;
    for (int r = -1; r <= 27; ++r)
        for (int c = -1; c <= 27; ++c)
            marked += b.CellState(r, c) != 0 ? 1 : 0;
    ASSERT_EQ(marked, cells.size());
}

TEST(PathWalk, LaidAndExpandedPathsKeepTheirShape)
{
    for (int size = 4; size <= 10; ++size) {
        auto board = FreshBoard(size);
        for (int round = 0; round < 150; ++round) {
            SCOPED_TRACE("size " + std::to_string(size) + " round " + std::to_string(round));
            if (round == 0)
                LayPath(*board);
            else
                LayPathAgain(*board); // as the puzzle builder repeats it
            ExpandPath(*board);
            ASSERT_NO_FATAL_FAILURE(CheckLaidPath(*board));
        }
    }
}

// The walk drawn try by try: a refused try (the last direction again, or a node whose
// text with "," is listed) spends one of the 100 tries of the attempt. Returns the nodes
// and the steps to the left of the first attempt that reaches the right edge.
struct WalkShape {
    int nodes = 0;
    int lefts = 0;
};

WalkShape TryByTryWalk(const Board& b)
{
    for (;;) {
        int row = 0;
        do
            row = RandomInt(b.BoardSpan, 1);
        while (row % 2 == 0);
        int col = 1;
        WalkShape shape{1, 0};
        std::string listed = std::to_string(b.CellNo(row, col)) + ",";
        char last = 0;
        for (int tries = 1; tries <= 100; ++tries) {
            const Step s = ChooseStep(b, row, col);
            const std::string text = std::to_string(b.CellNo(s.row, s.col)) + ",";
            if (s.direction == last || listed.find(text) != std::string::npos)
                continue;
            listed += text;
            ++shape.nodes;
            shape.lefts += s.direction == 'L' ? 1 : 0;
            if (s.col == b.BoardSpan)
                return shape;
            row = s.row;
            col = s.col;
            last = s.direction;
        }
    }
}

WalkShape LaidWalk(const Board& b)
{
    WalkShape shape{static_cast<int>(b.PathCells.size()), 0};
    for (std::size_t i = 1; i < b.PathCells.size(); ++i)
        shape.lefts += b.CellCol[b.PathCells[i]] < b.CellCol[b.PathCells[i - 1]] ? 1 : 0;
    return shape;
}

// The laid walk draws once per step for the refused tries and the step together; its paths
// must be as long, and turn back as often, on average, as those of the walk drawn try by
// try. On the small board the 100 tries hardly bind; on the large one they bind hard.
TEST(PathWalk, OneDrawPerStepKeepsTheOddsOfTryByTry)
{
    TickingClock clock;
    for (int size : {4, 10}) {
        auto board = FreshBoard(size);
        constexpr int kWalks = 4000;
        double nodes[2] = {}, lefts[2] = {};
        for (int i = 0; i < kWalks; ++i) {
            LayPath(*board);
            const WalkShape shapes[2] = {LaidWalk(*board), TryByTryWalk(*board)};
            for (int k = 0; k < 2; ++k) {
                nodes[k] += shapes[k].nodes;
                lefts[k] += shapes[k].lefts;
            }
        }
        EXPECT_NEAR(nodes[0] / kWalks, nodes[1] / kWalks, 0.5) << "size " << size;
        EXPECT_NEAR(lefts[0] / kWalks, lefts[1] / kWalks, 0.1) << "size " << size;
    }
}

// The bound that abandons an attempt early must never abandon one that could still reach
// the right edge: it is the fewest steps found by a search over (column, last step right).
TEST(PathWalk, TriesToRightEdgeIsTheFewestStepsLeft)
{
    for (int span : {9, 21}) {
        // fewest[col][lastRight]: filled from the right edge leftwards.
        std::vector<std::array<int, 2>> fewest(static_cast<std::size_t>(span + 2), {0, 0});
        for (int col = span - 2; col >= 1; col -= 2) {
            const auto c = static_cast<std::size_t>(col);
            fewest[c][0] = 1 + fewest[c + 2][1]; // step right now
            fewest[c][1] = 1 + fewest[c][0];     // first a step up or down
            EXPECT_EQ(TriesToRightEdge(span, col, 'U'), fewest[c][0]) << span << " col " << col;
            EXPECT_EQ(TriesToRightEdge(span, col, 0), fewest[c][0]) << span << " col " << col;
            EXPECT_EQ(TriesToRightEdge(span, col, 'R'), fewest[c][1]) << span << " col " << col;
        }
    }
}

TEST(PathWalk, TurnPathMovesTheLeftEdgeToTheTop)
{
    auto board = FreshBoard(4); // BoardSpan 9
    // (1,1) -> (1,2) -> (1,3) -> (2,3) -> (3,3), and the corner (9,9).
    board->PathCells = {1, 2, 3, 12, 21};
    board->NodeValue(1, 1) = 4;
    board->NodeValue(9, 9) = 7;
    board->CellState(1, 2) = 3;
    TurnPath(*board);
    EXPECT_EQ(board->List2, (std::vector<std::string>{"9", "18", "27", "26", "25"}));
    EXPECT_EQ(board->PathList, "9,18,27,26,25,");
    EXPECT_EQ(board->NodeValue(1, 9), 4); // (1,1) went to (1,9)
    EXPECT_EQ(board->NodeValue(9, 1), 7); // (9,9) went to (9,1)
    EXPECT_EQ(board->NodeValue(1, 1), 0);
    EXPECT_EQ(board->CellState(2, 9), 3);
    EXPECT_EQ(board->PathCells, (std::vector<int>{9, 18, 27, 26, 25}));
}

} // namespace
} // namespace tallyon
