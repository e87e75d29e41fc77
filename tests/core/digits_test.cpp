// Digits: the path's numbering, the completion of triples, decoy squares and the stages.
#include "core/decoy_fill.h"
#include "core/generator.h"
#include "core/link_rule.h"
#include "puzzle_checks.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <vector>

namespace tallyon {
namespace {

using testing::PuzzlesPerCase;
using testing::ValidLinkAt;

std::unique_ptr<Board> FreshBoard(int size)
{
    auto board = std::make_unique<Board>();
    board->GridSize = size;
    ResetBoard(*board, 8400);
    return board;
}

TEST(Digits, CompleteTripleFillsOnlyWhatIsEmpty)
{
    auto b = FreshBoard(4);
    std::set<int> seen;
    for (int i = 0; i < 300; ++i) { // A empty, B = 4, C = 2
        b->NodeValue(1, 1) = 0;
        b->NodeValue(1, 2) = 4;
        b->NodeValue(1, 3) = 2;
        CompleteTriple(*b, 1, 1, 1, 2, 1, 3);
        seen.insert(b->NodeValue(1, 1));
    }
    EXPECT_EQ(seen, (std::set<int>{2, 6, 8}));
    // One, two or three members empty, in each position: the result is valid both ways.
    for (int mask = 1; mask < 8; ++mask)
        for (int i = 0; i < 50; ++i) {
            b->NodeValue(3, 1) = mask & 1 ? 0 : RandomDigit();
            b->NodeValue(4, 1) = mask & 2 ? 0 : RandomDigit();
            b->NodeValue(5, 1) = mask & 4 ? 0 : RandomDigit();
            const int kept[3] = {b->NodeValue(3, 1), b->NodeValue(4, 1), b->NodeValue(5, 1)};
            CompleteTriple(*b, 3, 1, 4, 1, 5, 1);
            ASSERT_TRUE(ValidLinkAt(*b, 4, 1)) << mask;
            EXPECT_TRUE(kept[0] == 0 || kept[0] == b->NodeValue(3, 1));
            EXPECT_TRUE(kept[1] == 0 || kept[1] == b->NodeValue(4, 1));
            EXPECT_TRUE(kept[2] == 0 || kept[2] == b->NodeValue(5, 1));
        }
    b->NodeValue(1, 5) = 8; // all set and invalid: left alone
    b->NodeValue(1, 6) = 2;
    b->NodeValue(1, 7) = 7;
    CompleteTriple(*b, 1, 5, 1, 6, 1, 7);
    EXPECT_EQ(b->NodeValue(1, 5) * 100 + b->NodeValue(1, 6) * 10 + b->NodeValue(1, 7), 827);
}

TEST(Digits, DecoyTripleMakesTheLinkInvalidButNeverTouchesThePath)
{
    auto b = FreshBoard(4);
    for (int i = 0; i < 200; ++i) {
        b->NodeValue(1, 1) = i % 3 == 0 ? 0 : RandomDigit();
        b->NodeValue(1, 2) = i % 2 == 0 ? 0 : 1; // 1 makes equal ends valid
        b->NodeValue(1, 3) = i % 5 == 0 ? 0 : b->NodeValue(1, 1);
        DecoyTriple(*b, 1, 1, 1, 2, 1, 3);
        ASSERT_GE(b->NodeValue(1, 1), 1);
        ASSERT_GE(b->NodeValue(1, 3), 1);
        ASSERT_GE(b->NodeValue(1, 2), 1);
        ASSERT_FALSE(ValidLinkAt(*b, 1, 2));
    }
    b->NodeValue(3, 1) = 2; // a path link keeps its valid digit
    b->NodeValue(3, 2) = 3;
    b->NodeValue(3, 3) = 5;
    b->CellState(3, 2) = kPathLinkMark;
    DecoyTriple(*b, 3, 1, 3, 2, 3, 3);
    EXPECT_EQ(b->NodeValue(3, 2), 3);
}

TEST(Digits, FillDecoysGrowsASquareClosedOnThePath)
{
    auto b = FreshBoard(4);
    // A path segment (1,1)-(1,2)-(1,3) along the top edge; everything else free.
    b->NodeValue(1, 1) = 2;
    b->NodeValue(1, 2) = 3;
    b->NodeValue(1, 3) = 5;
    b->CellState(1, 1) = kPathNodeMark;
    b->CellState(1, 2) = kPathLinkMark;
    b->CellState(1, 3) = kPathNodeMark;
    std::vector<std::string> trace;
    SetTraceHandler([&](const std::string& t) { trace.push_back(t); });
    FillDecoys(*b, 1);
    SetTraceHandler(nullptr);
    ASSERT_FALSE(trace.empty());
    EXPECT_EQ(trace.front(), " down dummy");
    for (const auto& [r, c] : {std::pair{2, 1}, {3, 1}, {3, 2}, {3, 3}, {2, 3}}) {
        EXPECT_EQ(b->CellState(r, c), kDecoyMark) << r << "," << c;
        EXPECT_GE(b->NodeValue(r, c), 1) << r << "," << c;
    }
    EXPECT_TRUE(ValidLinkAt(*b, 2, 1));  // the side road leaves the path validly
    EXPECT_TRUE(ValidLinkAt(*b, 3, 2));
    EXPECT_FALSE(ValidLinkAt(*b, 2, 3)); // and ends on it as a dead end
    EXPECT_EQ(b->NodeValue(1, 1) * 100 + b->NodeValue(1, 2) * 10 + b->NodeValue(1, 3), 235);
    for (int r = 1; r <= b->BoardSpan; ++r) // squares stay on the board; gaps stay empty
        for (int c = 1; c <= b->BoardSpan; ++c)
            if (r % 2 == 0 && c % 2 == 0) {
                EXPECT_EQ(b->NodeValue(r, c), 0);
            }
}

// Lays, expands and numbers a path, then checks it; returns the path's cells.
std::vector<int> NumberedPath(Board& b)
{
    LayPath(b);
    ExpandPath(b);
    NumberPath(b);
    std::vector<int> cells;
    std::size_t from = 0;
    for (std::size_t at = b.PathList.find(','); at != std::string::npos; at = b.PathList.find(',', from = at + 1))
        cells.push_back(std::stoi(b.PathList.substr(from, at - from)));
    return cells;
}

TEST(Digits, StagesNumberThePathAndLeaveItsDigitsAlone)
{
    for (int size = 4; size <= 10; ++size) {
        auto b = FreshBoard(size);
        for (int i = 0; i < PuzzlesPerCase() / 2; ++i) {
            const std::vector<int> cells = NumberedPath(*b);
            std::vector<int> digits;
            for (std::size_t k = 0; k < cells.size(); ++k) {
                const int r = b->CellRow[cells[k]], c = b->CellCol[cells[k]];
                digits.push_back(b->NodeValue(r, c));
                ASSERT_TRUE(digits.back() >= 1 && digits.back() <= 9);
                if (k % 2 == 1) {
                    ASSERT_TRUE(ValidLinkAt(*b, r, c)) << "path link " << cells[k];
                }
            }
            int filled = 0;
            for (int r = 1; r <= b->BoardSpan; ++r)
                for (int c = 1; c <= b->BoardSpan; ++c)
                    filled += b->NodeValue(r, c) > 0 ? 1 : 0;
            ASSERT_EQ(filled, static_cast<int>(cells.size())); // nothing off the path yet
            SpreadDecoys(*b);
            FillDecoys(*b);
            CheckDecoys(*b);
            for (std::size_t k = 0; k < cells.size(); ++k)
                ASSERT_EQ(b->NodeValue(b->CellRow[cells[k]], b->CellCol[cells[k]]), digits[k]);
        }
    }
}

} // namespace
} // namespace tallyon
