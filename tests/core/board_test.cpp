// The board model: geometry, cell numbers, the path look-up, rounding and index faults.
#include "core/board.h"

#include <gtest/gtest.h>

#include <memory>

namespace tallyon {
namespace {

TEST(BoardModel, LayoutFollowsTheGridSize)
{
    struct Case { int size, span, base, pitch, quarter, half; double font; };
    const Case cases[] = {
        {4, 9, 156, 624, 156, 312, 12.6}, {5, 11, 145, 580, 145, 290, 12.0},
        {6, 13, 134, 536, 134, 268, 11.4}, {10, 21, 90, 360, 90, 180, 9.0},
    };
    auto board = std::make_unique<Board>();
    for (const Case& t : cases) {
        board->GridSize = t.size;
        LayoutBoard(*board, 8400);
        EXPECT_EQ(board->BoardSpan, t.span);
        EXPECT_EQ(board->CellBase, t.base);
        EXPECT_EQ(board->CellPitch, t.pitch);
        EXPECT_EQ(board->QuarterPitch, t.quarter);
        EXPECT_EQ(board->HalfPitch, t.half);
        EXPECT_NEAR(board->FontSize, t.font, 1e-9);
        EXPECT_EQ(board->BoardLeft, (8400 - (t.span - 1) * t.pitch) / 2);
        EXPECT_EQ(board->BoardTop, board->BoardLeft);
    }
    board->GridSize = 10; // 20 * 360 = 7200 twips: a narrow picture cuts the board
    LayoutBoard(*board, 7000);
    EXPECT_EQ(board->BoardLeft, -100);
    LayoutBoard(*board, 7201); // 0.5 rounds to the even neighbour
    EXPECT_EQ(board->BoardLeft, 0);
    LayoutBoard(*board, 7203);
    EXPECT_EQ(board->BoardLeft, 2);
}

TEST(BoardModel, ResetNumbersCellsAndPlacesThem)
{
    auto board = std::make_unique<Board>();
    for (const auto& [size, last] : {std::pair{4, 81}, {10, 441}}) {
        board->GridSize = size;
        board->NodeValue(3, 3) = 7;
        board->UserLeft(5, 5) = 1;
        board->NodeLinks(2, 3) = 1;
        board->CellMark(27, 27) = "R";
        ResetBoard(*board, 8400);
        const int span = board->BoardSpan;
        EXPECT_EQ(board->CellNo(span, span), last);
        EXPECT_EQ(board->CellNo(1, 1), 1);
        EXPECT_EQ(board->CellNo(2, 1), span + 1);
        EXPECT_EQ(board->CellRow[last], span);
        EXPECT_EQ(board->CellCol[span + 2], 2);
        EXPECT_EQ(board->CellX(1, 3), 2 * board->CellPitch + board->BoardLeft);
        EXPECT_EQ(board->CellY(3, 1), 2 * board->CellPitch + board->BoardTop);
        EXPECT_EQ(board->CellX(0, 0), -1);
        EXPECT_EQ(board->CellX(span + 1, 1), -1);
        EXPECT_EQ(board->NodeValue(3, 3), 0);
        EXPECT_EQ(board->UserLeft(5, 5), 0);
        EXPECT_EQ(board->NodeLinks(2, 3), 0);
        EXPECT_EQ(board->CellMark(27, 27), "");
    }
}

TEST(BoardModel, IsOnPathIsAPlainTextSearch)
{
    auto board = std::make_unique<Board>();
    board->GridSize = 4;
    ResetBoard(*board, 8400);
    board->PathList = "19,21,13,";
    EXPECT_EQ(IsOnPath(*board, 3, 1), 1);  // 19 at the start
    EXPECT_EQ(IsOnPath(*board, 3, 3), 4);  // 21
    EXPECT_GT(IsOnPath(*board, 1, 3), 0);  // 3 is the tail of 13 although 3 is free
    EXPECT_GT(IsOnPath(*board, 1, 1), 0);  // 1 is the tail of 21
    EXPECT_EQ(IsOnPath(*board, 1, 5), 0);  // 5 is nowhere
    EXPECT_EQ(IsOnPath(*board, 1, 9), 2);  // 9 is the tail of 19
    board->PathList = "1,";
    for (const auto& [r, c] : {std::pair{0, 1}, {1, 0}, {10, 1}, {1, 10}, {-1, -1}})
        EXPECT_EQ(IsOnPath(*board, r, c), 0) << r << "," << c;
}

TEST(BoardModel, RoundingAndGridSizeWrap)
{
    for (const auto& [value, rounded] : {std::pair{0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2},
                                         {20.5, 20}, {21.5, 22}, {2.49, 2}, {2.51, 3}, {-2.6, -3}})
        EXPECT_EQ(RoundHalfEven(value), rounded) << value;
    for (const auto& [asked, got] : {std::pair{11, 4}, {3, 10}, {4, 4}, {10, 10}, {7, 7}})
        EXPECT_EQ(WrapGridSize(asked), got);
}

TEST(BoardModelDeathTest, IndexOutsideTheArraysAborts)
{
    auto board = std::make_unique<Board>();
    EXPECT_DEATH(board->NodeValue(28, 1) = 1, "cell.*28");
    EXPECT_DEATH(board->CellState(1, -2) = 1, "cell.*-2");
    EXPECT_DEATH(board->CellRow[730] = 1, "cell number.*730");
    EXPECT_DEATH(board->NodeLinks(0, 730) = 1, "node pair.*730");
    board->NodeValue(-1, 27) = 5; // the edges of the ranges are fine
    EXPECT_EQ(board->NodeValue(-1, 27), 5);
}

} // namespace
} // namespace tallyon
