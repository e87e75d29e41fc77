// The board model: geometry, the path look-up by text, and index faults.
#include "core/board/board.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tallyon {
namespace {

TEST(BoardModel, LayoutFollowsTheGridSize)
{
    struct Case {
        int size, width, span, base, pitch, quarter, half, left;
        double font;
    };
    const Case cases[] = {
        {4, 8400, 9, 156, 624, 156, 312, 1704, 12.6}, {10, 8400, 21, 90, 360, 90, 180, 600, 9.0},
        {10, 7000, 21, 90, 360, 90, 180, -100, 9.0}, // a narrow picture cuts the board
        {10, 7201, 21, 90, 360, 90, 180, 0, 9.0},    // 0.5 rounds to the even neighbour
        {10, 7203, 21, 90, 360, 90, 180, 2, 9.0},
    };
    auto board = std::make_unique<Board>();
    for (const Case& t : cases) {
        board->GridSize = t.size;
        LayoutBoard(*board, t.width);
        SCOPED_TRACE(std::to_string(t.size) + " in " + std::to_string(t.width));
        EXPECT_EQ(board->BoardSpan, t.span);
        EXPECT_EQ(board->CellBase, t.base);
        EXPECT_EQ(board->CellPitch, t.pitch);
        EXPECT_EQ(board->QuarterPitch, t.quarter);
        EXPECT_EQ(board->HalfPitch, t.half);
        EXPECT_EQ(board->BoardLeft, t.left);
        EXPECT_EQ(board->BoardTop, t.left);
        EXPECT_NEAR(board->FontSize, t.font, 1e-9);
    }
}

TEST(BoardModel, IsOnPathIsAPlainTextSearch)
{
    auto board = testing::FreshBoard(4);
    board->PathList = "19,21,13,";
    struct Case {
        int row, col, at;
    };
    const Case cases[] = {
        {3, 1, 1}, {3, 3, 4}, // 19 and 21 where they stand
        {1, 3, 8},            // 3 is the tail of 13 although 3 is free
        {1, 1, 5},            // 1 is the tail of 21
        {1, 9, 2},            // 9 is the tail of 19
        {1, 5, 0}, {0, 1, 0}, {1, 10, 0}, {-1, -1, 0},
    };
    for (const Case& t : cases)
        EXPECT_EQ(IsOnPath(*board, t.row, t.col), t.at) << t.row << "," << t.col;
}

// NodeLinks keeps only its entries other than 0: every write and read over the whole index
// range, corners included, must agree with a plain table of 730 x 730 integers.
TEST(BoardModel, NodeLinksReadsBackEveryWriteLikeAFullTable)
{
    testing::TickingClock clock;
    NodePairArray links;
    std::vector<int> full(730 * 730, 0);
    const int corners[] = {0, 1, 728, 729};
    std::vector<std::pair<int, int>> written;
    for (int a : corners)
        for (int b : corners)
            written.push_back({a, b});
    for (int i = 0; i < 3000; ++i)
        written.push_back({RandomInt(730, 0), RandomInt(730, 0)});
    for (std::size_t i = 0; i < written.size(); ++i) {
        const auto [a, b] = written[i];
        const int value = i % 3 == 2 ? 0 : RandomInt(5, -2); // clears and overwrites, any sign
        links.Set(a, b, value);
        full[static_cast<std::size_t>(a * 730 + b)] = value;
        const auto [c, d] = written[static_cast<std::size_t>(RandomInt(static_cast<int>(i) + 1, 0))];
        ASSERT_EQ(links(c, d), full[static_cast<std::size_t>(c * 730 + d)]) << c << "," << d;
    }
    for (int a = 0; a <= NodePairArray::Hi; ++a)
        for (int b = 0; b <= NodePairArray::Hi; ++b)
            ASSERT_EQ(links(a, b), full[static_cast<std::size_t>(a * 730 + b)]) << a << "," << b;
    EXPECT_EQ(links.Stored(),
              static_cast<std::size_t>(std::count_if(full.begin(), full.end(), [](int v) { return v != 0; })));
    links.Clear();
    EXPECT_TRUE(links.Stored() == 0 && links(729, 729) == 0 && links(0, 0) == 0);
}

TEST(BoardModelDeathTest, IndexOutsideTheArraysAborts)
{
    auto board = std::make_unique<Board>();
    EXPECT_DEATH(board->NodeValue(28, 1) = 1, "cell.*28");
    EXPECT_DEATH(board->CellState(1, -2) = 1, "cell.*-2");
    EXPECT_DEATH(board->CellRow[730] = 1, "cell number.*730");
    EXPECT_DEATH(board->NodeLinks.Set(0, 730, 1), "node pair.*730");
    board->NodeValue(-1, 27) = 5; // the edges of the ranges are fine
    EXPECT_EQ(board->NodeValue(-1, 27), 5);
}

} // namespace
} // namespace tallyon
