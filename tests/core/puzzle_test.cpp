// Whole puzzles: the properties every built board must have, for every size and start side.
#include "core/generator.h"
#include "puzzle_checks.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <string>

namespace tallyon {
namespace {

using testing::Between;
using testing::ChainCounter;
using testing::GroupingProblem;
using testing::Node;
using testing::PathCells;
using testing::PuzzlesPerCase;
using testing::ValidLinkAt;

// Every node and link cell holds 1..9, gaps hold 0, and CellState is set for play.
void CheckCells(const Board& b)
{
    for (int r = 1; r <= b.BoardSpan; ++r)
        for (int c = 1; c <= b.BoardSpan; ++c) {
            const int v = b.NodeValue(r, c), s = b.CellState(r, c);
            if (r % 2 == 0 && c % 2 == 0) {
                ASSERT_EQ(v, 0) << r << "," << c;
                ASSERT_EQ(s, kNoCell) << r << "," << c;
            } else {
                ASSERT_TRUE(v >= 1 && v <= 9) << r << "," << c << " holds " << v;
                ASSERT_EQ(s, IsNode(r, c) ? kNodeCell : kLinkCell) << r << "," << c;
            }
        }
}

// The path read from List2: node and link alternate from Start to End, each link valid.
void CheckPath(const Board& b, int side)
{
    const std::vector<int> cells = PathCells(b);
    ASSERT_EQ(cells.size() % 2, 1u);
    std::string list;
    for (int k : cells)
        list += std::to_string(k) + ",";
    EXPECT_EQ(b.PathList, list);
    EXPECT_EQ(b.StartNode, cells.front());
    EXPECT_EQ(b.EndNode, cells.back());
    EXPECT_EQ(b.KeyNodes[0], cells.front());
    EXPECT_EQ(b.KeyNodes[2], cells.back());
    const std::size_t hint = cells.size() / 2 + (cells.size() / 2) % 2; // n / 2 ends in .5: to even
    EXPECT_EQ(b.KeyNodes[1], cells[hint]);
    EXPECT_TRUE(IsNode(b.CellRow[b.KeyNodes[1]], b.CellCol[b.KeyNodes[1]]));
    const bool top = side == kSideTop;
    const int span = b.BoardSpan;
    EXPECT_EQ(top ? b.CellRow[b.StartNode] : b.CellCol[b.StartNode], 1);
    EXPECT_EQ(top ? b.CellRow[b.EndNode] : b.CellCol[b.EndNode], span);
    for (std::size_t i = 0; i + 2 < cells.size(); i += 2) {
        const Node a{b.CellRow[cells[i]], b.CellCol[cells[i]]};
        const Node c{b.CellRow[cells[i + 2]], b.CellCol[cells[i + 2]]};
        ASSERT_TRUE(IsNode(a.row, a.col));
        ASSERT_EQ(std::abs(a.row - c.row) + std::abs(a.col - c.col), 2);
        const Node link = Between(a, c);
        ASSERT_EQ(b.CellNo(link.row, link.col), cells[i + 1]);
        ASSERT_TRUE(ValidLinkAt(b, link.row, link.col)) << "path link " << cells[i + 1];
    }
}

class BuiltPuzzles : public ::testing::TestWithParam<int> {};

TEST_P(BuiltPuzzles, HaveTheirPropertiesAndOneChainFromStartToEnd)
{
    const int size = GetParam();
    auto board = std::make_unique<Board>();
    for (int side : {kSideLeft, kSideTop}) {
        for (int i = 0; i < PuzzlesPerCase(); ++i) {
            board->GridSize = size;
            const BuildStats stats = BuildPuzzle(*board, side, 8400);
            SCOPED_TRACE("size " + std::to_string(size) + " side " + std::to_string(side) + " puzzle " + std::to_string(i));
            ASSERT_EQ(board->StartSide, side);
            ASSERT_GE(stats.Rounds, 1);
            ASSERT_LE(stats.Rounds, kMaxPathRounds);
            if (side == kSideLeft) { // turning renumbers the cells, and so changes the length
                ASSERT_EQ(stats.BoundHit, board->PathList.size() < 30u * size);
            }
            if (size == 4) {
                ASSERT_TRUE(stats.BoundHit);
            }
            if (stats.BoundHit) {
                ASSERT_EQ(stats.Rounds, kMaxPathRounds);
            }
            ASSERT_NO_FATAL_FAILURE(CheckCells(*board));
            ASSERT_NO_FATAL_FAILURE(CheckPath(*board, side));
            ASSERT_EQ(GroupingProblem(*board), "");
            if (size <= 6) {
                ASSERT_EQ(ChainCounter(*board).Count(2), 1);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(GridSizes, BuiltPuzzles, ::testing::Range(4, 11));

TEST(BuildPuzzle, StartSideTags)
{
    auto board = std::make_unique<Board>();
    board->GridSize = 7;
    for (int tag : {3, 4}) { // laid from the left, the tag kept
        BuildPuzzle(*board, tag, 8400);
        EXPECT_EQ(board->StartSide, tag);
        EXPECT_EQ(board->CellCol[board->StartNode], 1);
        EXPECT_EQ(board->CellCol[board->EndNode], board->BoardSpan);
    }
    int left = 0, top = 0;
    for (int i = 0; i < 60; ++i) {
        BuildPuzzle(*board, kSideRandom, 8400);
        ASSERT_TRUE(board->StartSide == kSideLeft || board->StartSide == kSideTop);
        (board->StartSide == kSideLeft ? left : top) += 1;
        const bool topSide = board->StartSide == kSideTop;
        EXPECT_EQ(topSide ? board->CellRow[board->StartNode] : board->CellCol[board->StartNode], 1);
    }
    EXPECT_GT(left, 5);
    EXPECT_GT(top, 5);
    EXPECT_EQ(GridSizeText(6), "6x6");
    EXPECT_EQ(GridSizeText(10), "10x10");
}

TEST(BuildPuzzle, TraceDescribesTheSteps)
{
    std::vector<std::string> lines;
    SetTraceHandler([&](const std::string& text) { lines.push_back(text); });
    auto board = std::make_unique<Board>();
    board->GridSize = 7;
    BuildPuzzle(*board, kSideLeft, 8400, 1);
    SetTraceHandler(nullptr);
    const std::size_t steps = PathCells(*board).size() / 2;
    ASSERT_GE(lines.size(), steps);
    EXPECT_NE(lines.front().find("function= "), std::string::npos);
    lines.clear();
    BuildPuzzle(*board, kSideLeft, 8400); // no trace by default
    EXPECT_TRUE(lines.empty());
}

} // namespace
} // namespace tallyon
