// The hint: followed alone it solves every puzzle; wrong links and marks come first; each kind
// of deduction names the right nodes; and every text fits the status line.
#include "core/generator/generator.h"
#include "core/reasoning/explain.h"
#include "core/reasoning/hint.h"
#include "core/reasoning/walkthrough.h"
#include "core/reasoning/wording.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace tallyon {
namespace {

using namespace testing;

// The node numbers at the ends of a link cell.
std::pair<int, int> LinkEnds(const Board& b, CellAt cell)
{
    const bool across = cell.row % 2 == 1;
    const int a = NodeIndex(b.GridSize, across ? cell.row : cell.row - 1, across ? cell.col - 1 : cell.col);
    return {a, across ? a + 1 : a + b.GridSize + 1};
}

void ExpectFits(const Hint& h)
{
    EXPECT_LE(h.first.size(), kHintTextLimit) << h.first;
    EXPECT_LE(h.second.size(), kHintTextLimit) << h.second;
}

// Presses for the hint and makes the link it shows, until the hint says the path is done:
// every hint forces a link of the path not yet made, so there are no more hints than links.
TEST(Hint, FollowedAloneSolvesEveryPuzzle)
{
    TickingClock clock;
    const int perSize = PuzzlesPerCase() / 10;
    for (int size = 4; size <= 10; ++size)
        for (int i = 0; i < perSize; ++i) {
            auto board = FreshBoard(size);
            BuildPuzzle(*board, i % 2 ? kSideTop : kSideLeft, 8400);
            const LinkSet path = PathLinkSet(*board);
            int hints = 0;
            for (Hint h = FindHint(*board); h.kind != HintKind::Solved; h = FindHint(*board)) {
                SCOPED_TRACE(::testing::Message() << "size " << size << " puzzle " << i << " hint " << hints);
                ASSERT_EQ(h.kind, HintKind::Deduction) << h.first;
                ExpectFits(h);
                const auto [a, c] = LinkEnds(*board, h.link);
                ASSERT_FALSE((LinkBetween(a, c) & path).Empty()) << "the hint forces a link off the path";
                ASSERT_TRUE((LinkBetween(a, c) & UserLinkSet(*board)).Empty()) << "the hint repeats a link";
                for (const CellAt cell : h.ruledOut) {
                    const auto [p, q] = LinkEnds(*board, cell);
                    ASSERT_TRUE((LinkBetween(p, q) & path).Empty()) << "the hint rules out a link of the path";
                }
                MakeUserLink(*board, a, c);
                ++hints;
            }
            EXPECT_LE(hints, CountLinks(path));
        }
}

// The player's links and marks are read from every link cell of every size, each as the one
// link between the nodes on either side of it.
TEST(Hint, ReadsEveryLinkAndMarkOfTheBoard)
{
    for (int size = 4; size <= 10; ++size) {
        auto board = FreshBoard(size);
        ForEachLatticeLink(size + 1, [&](int a, int b) {
            const CellAt cell = LinkCellBetween(size, a, b);
            board->UserMark(cell.row, cell.col) = 1;
            EXPECT_EQ(MarkedLinkSet(*board), LinkBetween(a, b))
                << "size " << size << " cell " << cell.row << "," << cell.col;
            board->UserMark(cell.row, cell.col) = 0;
            MakeUserLink(*board, a, b);
            EXPECT_EQ(UserLinkSet(*board), LinkBetween(a, b)) << "size " << size << " link " << a << "-" << b;
            board->UserRight.Fill(0);
            board->UserLeft.Fill(0);
            board->UserDown.Fill(0);
            board->UserUp.Fill(0);
        });
    }
}

// A wrong link comes before any deduction, its arithmetic first; then a wrong mark.
TEST(Hint, WrongLinksAndMarksComeFirst)
{
    //   0 - 1 - 2 - 3 - 4     the path along row 1, with a valid side road 0-5 and 6 a dead end
    //   |
    //   5 - 6
    auto board = CraftedBoard(4, {0, 1, 2, 3, 4}, "0-1 1-2 2-3 3-4 0-5 5-6");
    MakeUserLink(*board, 1, 2);
    board->UserMark(1, 2) = 1; // 0-1: on the path
    MakeUserLink(*board, 0, 5);
    MakeUserLink(*board, 6, 7); // row 2, columns 2 and 3: 2 and 3 cannot make 2
    Hint h = FindHint(*board);
    EXPECT_EQ(h.kind, HintKind::WrongLink);
    EXPECT_EQ(h.first, "Wrong link between row 2, columns 2 and 3: 2 and 3 cannot make 2");
    EXPECT_TRUE(h.link.row == 3 && h.link.col == 4);
    board->UserRight(3, 3) = board->UserLeft(3, 5) = 0;
    h = FindHint(*board);
    EXPECT_EQ(h.first,
              "The link between rows 1 and 2 in column 1 is right, but it leads nowhere: it is not on the path");
    EXPECT_TRUE(h.link.row == 2 && h.link.col == 1);
    board->UserDown(1, 1) = board->UserUp(3, 1) = 0;
    h = FindHint(*board);
    EXPECT_EQ(h.kind, HintKind::WrongMark);
    EXPECT_EQ(h.first, "The cross between row 1, columns 1 and 2 is wrong: that link is on the path");
    board->UserMark(1, 2) = 0;
    board->UserMark(2, 1) = 1; // 0-5, rows 1 and 2 in column 1: off the path, rightly marked
    EXPECT_EQ(FindHint(*board).kind, HintKind::Deduction);
    for (const int v : {0, 2, 3})
        MakeUserLink(*board, v, v + 1);
    EXPECT_EQ(FindHint(*board).kind, HintKind::Solved);
}

// One board per kind of deduction, on a 5 x 5 lattice (nodes 0 to 24 row by row, every node a
// 2), with the player's links where the kind needs them.
TEST(Hint, EachKindNamesItsNodesAndLinks)
{
    struct Case {
        Rule rule;
        std::vector<int> path;
        const char* valid;
        const char* made; // the player's links
        const char* first;
        const char* second;
    };
    const Case cases[] = {
        // 5 and 0 hang on Start (10) by one link: dead ends, and then Start takes 10-11.
        {Rule::DeadEnd,
         {10, 11, 12, 13, 14},
         "0-5 5-10 10-11 11-12 12-13 13-14",
         "",
         "Dead end: a node with only one valid link left cannot be on the path (2 nodes from row 1, column 1)",
         "2 nodes from row 1, column 1 are dead ends: link the 2 in row 3, column 1 to the 2 on its right"},
        {Rule::TakeLinks,
         {10, 11, 12, 13, 14},
         "10-11 11-12 12-13 13-14",
         "",
         "Forced link: a node on the path with just the links it needs takes them (the 2 in row 3, column 1)",
         "The 2 in row 3, column 1 has just the links it needs: link it to the 2 on its right"},
        // 12 has both its links: 12-13 goes, and 13 takes 13-18.
        {Rule::DropRest,
         {10, 11, 12, 17, 18, 13, 14},
         "0-5 2-3 2-7 3-4 3-8 7-12 8-9 9-14 10-11 11-12 12-13 12-17 13-14 13-18 16-17 16-21 17-18 17-22 20-21 21-22",
         "10-11 11-12 12-17 13-14",
         "Full node: a node on the path with all its links can take no other (the 2 in row 3, column 3)",
         "The 2 in row 3, column 3 is full: link the 2 in row 3, column 4 to the 2 below it"},
        // The chain 13-18-19-14 would close on itself through 13-14: 13 takes 12 instead.
        {Rule::Loop,
         {10, 11, 12, 13, 18, 19, 14, 9, 4},
         "0-5 1-6 2-3 3-4 4-9 6-7 7-8 7-12 8-9 9-14 10-11 11-12 12-13 13-14 13-18 14-19 15-20 16-21 17-22 18-19 19-24 "
         "21-22",
         "10-11 11-12 13-18 18-19 19-14 9-4",
         "Loop: a link between two nodes of one chain would close a loop (row 3, columns 4 and 5)",
         "Row 3, columns 4 and 5 would close a loop: link the 2 in row 3, column 4 to the 2 on its left"},
        // Start's chain ends at 23, End's at 24, and the Hint (18) is in neither.
        {Rule::SkipHint,
         {20, 21, 22, 23, 18, 13, 14, 19, 24},
         "1-2 2-3 2-7 4-9 6-11 7-8 8-9 10-11 10-15 11-12 11-16 12-17 13-14 13-18 14-19 16-17 17-18 18-23 19-24 20-21 "
         "21-22 22-23 23-24",
         "20-21 21-22 22-23",
         "Skipping the Hint: joining Start's chain to End's would leave out the Hint (row 5, columns 4 and 5)",
         "Row 5, columns 4 and 5 would skip the Hint: link the 2 in row 5, column 4 to the 2 above it"},
        // 18 leads only into the chain 17-12-13, so 13 takes 14.
        {Rule::Region,
         {15, 16, 17, 12, 13, 14, 9},
         "0-1 0-5 1-2 1-6 2-3 3-4 3-8 5-10 7-12 8-9 9-14 10-15 12-13 12-17 13-14 13-18 15-16 15-20 16-17 17-18 20-21",
         "17-12 12-13",
         "Region: free nodes leading back into one chain cannot be on the path (the 2 in row 4, column 4)",
         "The 2 in row 4, column 4 leads to one chain: link the 2 in row 3, column 4 to the 2 on its right"},
        // The loop of 2, 3, 4, 7, 8 and 9 hangs on 12 alone.
        {Rule::Pocket,
         {15, 10, 11, 12, 13, 14, 19},
         "2-3 2-7 3-4 3-8 4-9 6-7 7-12 8-9 10-11 10-15 11-12 12-13 13-14 14-19 15-16 15-20 16-17 17-18 18-19",
         "",
         "Pocket: a group only one node joins to the rest can never be left (6 nodes from row 1, column 3)",
         "6 nodes from row 1, column 3 are a pocket: link the 2 in row 3, column 3 to the 2 on its left"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(Wording::KindName(c.rule));
        auto board = CraftedBoard(4, c.path, c.valid);
        ForEachLatticeLink(5, [&](int a, int b) {
            if (LinksFromText(5, c.made).IsOpen(a, b))
                MakeUserLink(*board, a, b);
        });
        const Hint h = FindHint(*board);
        EXPECT_EQ(h.kind, HintKind::Deduction);
        EXPECT_EQ(h.rule, c.rule);
        EXPECT_EQ(h.first, c.first);
        EXPECT_EQ(h.second, c.second);
    }
}

// The explanation: its deductions, taken in order from the valid links, force exactly the path,
// and its lines number them and end with the path from Start.
TEST(Explanation, ItsDeductionsForceThePathAndItsLinesEndWithIt)
{
    TickingClock clock;
    for (int size = 4; size <= 10; ++size) {
        auto board = FreshBoard(size);
        BuildPuzzle(*board, kSideLeft, 8400);
        const Explanation e = ExplainPuzzle(*board);
        ASSERT_TRUE(e.solved);
        Knowledge k = StepsOf(*board).Begin(ValidLinkGraph(*board));
        for (const Deduction& d : e.steps)
            ReasoningSteps::Take(d, k);
        EXPECT_EQ(k.forced, PathLinkSet(*board));
        const std::vector<std::string> lines = ExplanationLines(*board, e);
        ASSERT_EQ(lines.size(), e.steps.size() + 1);
        EXPECT_EQ(lines[0].rfind("1. ", 0), 0u);
        EXPECT_EQ(lines.back().rfind("Path: the ", 0), 0u);
        EXPECT_NE(lines.back().find("(Start), "), std::string::npos);
        const std::string json = ExplanationJson(*board, e);
        EXPECT_EQ(json.rfind("{\"Steps\":[{\"Number\":1,", 0), 0u);
        EXPECT_NE(json.find("\"Solved\":true,\"Path\":[["), std::string::npos);
    }
}

} // namespace
} // namespace tallyon
