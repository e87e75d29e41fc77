// The path walk: step proposals, the walk's shape, its expansion and the quarter turn.
#include "core/generator.h"
#include "core/walk_reach.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace tallyon {
namespace {

using testing::ClockFor;
using testing::FixedClock;

std::vector<int> Numbers(const std::string& list)
{
    std::vector<int> out;
    std::size_t from = 0;
    for (std::size_t at = list.find(','); at != std::string::npos; at = list.find(',', from = at + 1))
        out.push_back(std::stoi(list.substr(from, at - from)));
    return out;
}

std::unique_ptr<Board> FreshBoard(int size)
{
    auto board = std::make_unique<Board>();
    board->GridSize = size;
    ResetBoard(*board, 8400);
    return board;
}

TEST(PathWalk, ChooseStepThresholds)
{
    struct Case { int row, col, v, newRow, newCol; const char* dir; };
    const Case cases[] = { // BoardSpan 9
        {5, 5, 76, 5, 7, "R"}, {5, 5, 75, 5, 3, "L"}, {5, 5, 51, 5, 3, "L"}, {5, 5, 50, 3, 5, "U"},
        {5, 5, 26, 3, 5, "U"}, {5, 5, 25, 7, 5, "D"}, {5, 5, 0, 7, 5, "D"},  {5, 7, 99, 5, 9, "R"},
        {5, 9, 99, 5, 7, "L"}, {5, 1, 99, 5, 3, "R"}, {5, 1, 60, 3, 1, "U"}, {1, 5, 40, 3, 5, "D"},
        {1, 1, 60, 3, 1, "D"}, {9, 1, 60, 7, 1, "U"}, {9, 1, 10, 9, 1, ""},  {9, 9, 30, 7, 9, "U"},
        {9, 9, 99, 9, 7, "L"}, {9, 5, 20, 9, 5, ""},
    };
    auto board = FreshBoard(4);
    FixedClock clock;
    for (const Case& t : cases) {
        ClockFor([] { return RandomInt(100, 0); }, t.v, clock);
        const Step s = ChooseStep(*board, t.row, t.col);
        EXPECT_EQ(s.direction, t.dir) << t.row << "," << t.col << " v=" << t.v;
        EXPECT_EQ(s.row, t.newRow) << t.row << "," << t.col << " v=" << t.v;
        EXPECT_EQ(s.col, t.newCol) << t.row << "," << t.col << " v=" << t.v;
    }
}

// Checks one laid walk: edges, steps of two, always turning, the text refusal, the flags.
void CheckWalk(const Board& b)
{
    const std::vector<int> nodes = Numbers(b.PathList);
    ASSERT_GE(nodes.size(), 2u);
    ASSERT_EQ(nodes.front(), b.StartNode);
    ASSERT_EQ(nodes.back(), b.EndNode);
    EXPECT_EQ(b.CellCol[b.StartNode], 1);
    EXPECT_EQ(b.CellRow[b.StartNode] % 2, 1);
    EXPECT_EQ(b.CellCol[b.EndNode], b.BoardSpan);
    EXPECT_EQ(b.KeyNodes[0], b.StartNode);
    EXPECT_EQ(b.KeyNodes[2], b.EndNode);
    std::string listed;
    int flags = 0;
    for (int r = 1; r <= b.BoardSpan; ++r)
        for (int c = 1; c <= b.BoardSpan; ++c)
            flags += b.PathLeft(r, c) + b.PathRight(r, c) + b.PathUp(r, c) + b.PathDown(r, c);
    EXPECT_EQ(flags, 2 * static_cast<int>(nodes.size() - 1));
    int lastDr = 0, lastDc = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const std::string text = std::to_string(nodes[i]) + ",";
        ASSERT_EQ(listed.find(text), std::string::npos) << "refused node taken: " << b.PathList;
        listed += text;
        if (i == 0)
            continue;
        const int dr = b.CellRow[nodes[i]] - b.CellRow[nodes[i - 1]];
        const int dc = b.CellCol[nodes[i]] - b.CellCol[nodes[i - 1]];
        ASSERT_EQ(std::abs(dr) + std::abs(dc), 2) << b.PathList;
        ASSERT_TRUE(dr == 0 || dc == 0) << b.PathList;
        ASSERT_FALSE(dr == lastDr && dc == lastDc) << "same direction twice: " << b.PathList;
        lastDr = dr;
        lastDc = dc;
    }
}

// Checks the expanded list: node and link alternate, link between its nodes, marks 1 and 3.
void CheckExpansion(const Board& b)
{
    const std::vector<int> cells = Numbers(b.PathList);
    ASSERT_EQ(cells.size() % 2, 1u);
    ASSERT_EQ(cells.front(), b.StartNode);
    ASSERT_EQ(cells.back(), b.EndNode);
    std::set<int> onPath(cells.begin(), cells.end());
    ASSERT_EQ(onPath.size(), cells.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const int r = b.CellRow[cells[i]], c = b.CellCol[cells[i]];
        EXPECT_EQ(IsNode(r, c), i % 2 == 0);
        EXPECT_EQ(b.CellState(r, c), i % 2 == 0 ? kPathNodeMark : kPathLinkMark);
        if (i % 2 == 1) {
            EXPECT_EQ(2 * r, b.CellRow[cells[i - 1]] + b.CellRow[cells[i + 1]]);
            EXPECT_EQ(2 * c, b.CellCol[cells[i - 1]] + b.CellCol[cells[i + 1]]);
        }
    }
    for (int r = -1; r <= 27; ++r)
        for (int c = -1; c <= 27; ++c)
            if (r < 1 || c < 1 || r > b.BoardSpan || c > b.BoardSpan || !onPath.count(b.CellNo(r, c))) {
                ASSERT_EQ(b.CellState(r, c), 0) << r << "," << c;
            }
}

TEST(PathWalk, LaidAndExpandedPathsKeepTheirShape)
{
    for (int size = 4; size <= 10; ++size) {
        auto board = FreshBoard(size);
        for (int round = 0; round < 150; ++round) {
            LayPath(*board);
            ASSERT_NO_FATAL_FAILURE(CheckWalk(*board));
            ExpandPath(*board);
            ASSERT_NO_FATAL_FAILURE(CheckExpansion(*board));
        }
    }
}

TEST(PathWalk, UsedNodeTableAgreesWithTheTextSearch)
{
    for (int size : {4, 7, 10}) {
        auto board = FreshBoard(size);
        const int last = board->BoardSpan * board->BoardSpan;
        WalkReach reach;
        for (int round = 0; round < 50; ++round) {
            reach.Reset(*board);
            board->PathList.clear();
            for (int k = 0; k < 12; ++k) {
                const int number = 1 + RandomInt(last, 0);
                board->PathList += std::to_string(number) + ",";
                reach.AddListed(number);
                for (int r = 1; r <= board->BoardSpan; r += 2)
                    for (int c = 1; c <= board->BoardSpan; c += 2)
                        ASSERT_EQ(reach.Used(r, c), IsOnPath(*board, r, c) > 0) << board->PathList << " " << r << "," << c;
            }
        }
    }
}

TEST(PathWalk, PathLinksReadsTheFlagsInOrderUpDownRightLeft)
{
    auto board = FreshBoard(4);
    EXPECT_EQ(PathLinks(*board, 0, 3), "X");
    EXPECT_EQ(PathLinks(*board, 3, 10), "X");
    EXPECT_EQ(PathLinks(*board, 3, 3), "");
    board->PathLeft(3, 3) = 1;
    board->PathDown(3, 3) = 1;
    EXPECT_EQ(PathLinks(*board, 3, 3), "DL");
    board->PathUp(5, 5) = 1;
    board->PathRight(5, 5) = 1;
    EXPECT_EQ(PathLinks(*board, 5, 5), "UR");
}

TEST(PathWalk, TurnPathMovesTheLeftEdgeToTheTop)
{
    auto board = FreshBoard(4); // BoardSpan 9
    // (1,1) -> (1,2) -> (1,3) -> (2,3) -> (3,3), and the corner (9,9).
    board->List2 = {"1", "2", "3", "12", "21"};
    board->NodeValue(1, 1) = 4;
    board->NodeValue(9, 9) = 7;
    board->NodeValue(3, 3) = 2;
    board->CellState(1, 2) = 3;
    board->PathRight(1, 1) = 1;
    TurnPath(*board);
    EXPECT_EQ(board->List2, (std::vector<std::string>{"9", "18", "27", "26", "25"}));
    EXPECT_EQ(board->PathList, "9,18,27,26,25,");
    EXPECT_EQ(board->NodeValue(1, 9), 4);  // (1,1) went to (1,9)
    EXPECT_EQ(board->NodeValue(9, 1), 7);  // (9,9) went to (9,1)
    EXPECT_EQ(board->NodeValue(3, 7), 2);
    EXPECT_EQ(board->NodeValue(1, 1), 0);
    EXPECT_EQ(board->CellState(2, 9), 3);
    EXPECT_EQ(board->CellMark(1, 9), "D");
    EXPECT_EQ(board->CellMark(3, 9), "L");
    EXPECT_EQ(board->PathRight(1, 1), 1); // the flags keep the unturned path
}

// Depth-first search over every walk LayPath can lay: from each left-edge node, always
// turning, ending at the first node in the last column. A node is refused when its text
// followed by "," is in the list (byText), or else only when it is really on the path.
struct WalkSearch {
    Board& b;
    bool byText;
    std::set<int> taken;

    bool Refused(int row, int col) const
    {
        return byText ? IsOnPath(b, row, col) > 0 : taken.count(b.CellNo(row, col)) > 0;
    }

    // The longest expanded path list, in characters, of any walk going on from (row, col).
    std::size_t Longest(int row, int col, int lastDr, int lastDc, std::size_t expanded)
    {
        if (col == b.BoardSpan)
            return expanded;
        std::size_t best = 0;
        static constexpr int kSteps[4][2] = {{0, 2}, {0, -2}, {-2, 0}, {2, 0}};
        for (const auto& s : kSteps) {
            const int nr = row + s[0], nc = col + s[1];
            if (nr < 1 || nr > b.BoardSpan || nc < 1 || (s[0] == lastDr && s[1] == lastDc) || Refused(nr, nc))
                continue;
            const std::string node = std::to_string(b.CellNo(nr, nc)) + ",";
            const std::string link = std::to_string(b.CellNo(row + s[0] / 2, col + s[1] / 2)) + ",";
            const std::size_t before = b.PathList.size();
            b.PathList += node;
            taken.insert(b.CellNo(nr, nc));
            best = std::max(best, Longest(nr, nc, s[0], s[1], expanded + link.size() + node.size()));
            taken.erase(b.CellNo(nr, nc));
            b.PathList.resize(before);
        }
        return best;
    }

    std::size_t LongestFromLeftEdge()
    {
        std::size_t best = 0;
        for (int row = 1; row <= b.BoardSpan; row += 2) {
            b.PathList = std::to_string(b.CellNo(row, 1)) + ",";
            taken = {b.CellNo(row, 1)};
            best = std::max(best, Longest(row, 1, 0, 0, b.PathList.size()));
        }
        return best;
    }
};

TEST(PathWalk, NoWalkOnTheSmallestBoardIsLongEnough)
{
    auto board = FreshBoard(4);
    // The walk as laid, with the text refusal: far below the 120 characters asked for.
    const std::size_t laid = WalkSearch{*board, true, {}}.LongestFromLeftEdge();
    EXPECT_EQ(laid, 74u);
    // Even a walk that refused only nodes really on the path would stay below.
    const std::size_t selfAvoiding = WalkSearch{*board, false, {}}.LongestFromLeftEdge();
    EXPECT_EQ(selfAvoiding, 96u);
    EXPECT_LT(std::max(laid, selfAvoiding), 30u * 4u);
}

} // namespace
} // namespace tallyon
