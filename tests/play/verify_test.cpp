// Verification: the link arithmetic, the verdicts on hand-made boards, the verify button and
// the periodic indicator.
#include "play/verify.h"

#include "play/linking.h"
#include "play_fixture.h"

#include <gtest/gtest.h>

#include <functional>

namespace tallyon::test {
namespace {

struct MathCase {
    int a, b, c, wrong;
};

class CheckMathTriples : public ::testing::TestWithParam<MathCase> {};

TEST_P(CheckMathTriples, JudgesLikeTheLinkRule)
{
    const MathCase& m = GetParam();
    int c = m.c;
    EXPECT_EQ(CheckMath(0, m.a, m.b, c), m.wrong) << m.a << "," << m.b << "," << m.c;
    EXPECT_EQ(c, m.c);
    int reversed = m.a;
    EXPECT_EQ(CheckMath(0, m.c, m.b, reversed), m.wrong) << "reversed";
}

INSTANTIATE_TEST_SUITE_P(Triples, CheckMathTriples,
                         ::testing::Values(MathCase{1, 2, 3, 0}, MathCase{9, 3, 3, 0}, MathCase{4, 4, 1, 0},
                                           MathCase{2, 7, 5, 0}, MathCase{6, 3, 2, 0}, MathCase{2, 4, 8, 0},
                                           MathCase{8, 2, 7, -1}, MathCase{1, 3, 9, -1},
                                           MathCase{5, 0, 9, -1}, MathCase{0, 0, 7, 0}));

TEST(CheckMath, RepairReplacesAFailingResult)
{
    int c = 7;
    EXPECT_EQ(CheckMath(1, 8, 2, c), 0);
    EXPECT_EQ(c, 6);
    c = 3;
    EXPECT_EQ(CheckMath(1, 1, 2, c), 0);
    EXPECT_EQ(c, 3);
}

TEST(LinkLetters, ListsUpDownRightLeftAndCountsTheDegree)
{
    Board board;
    MakePlainBoard(board, 4);
    EXPECT_EQ(LinkLetters(board, 5, 5), "");
    board.UserLeft(5, 5) = board.UserUp(5, 5) = 1;
    EXPECT_EQ(LinkLetters(board, 5, 5), "UL");
    board.UserRight(5, 5) = board.UserDown(5, 5) = 1;
    EXPECT_EQ(LinkLetters(board, 5, 5), "UDRL");
    EXPECT_EQ(NodeDegree(board, 5, 5), 4);
}

void Link(Board& board, int rowA, int colA, int rowB, int colB)
{
    SetLinkFlags(board, 1, rowA, colA, rowB, colB);
    board.NodeValue((rowA + rowB) / 2, (colA + colB) / 2) = 1; // 1, 1, 1 is valid
}

void Digits(Board& board, int row, int col, int a, int b, int c)
{
    board.NodeValue(row, col) = a;
    board.NodeValue(row, col + 1) = b;
    board.NodeValue(row, col + 2) = c;
    SetLinkFlags(board, 1, row, col, row, col + 2);
}

// The square of nodes (5,5), (5,7), (7,7), (7,5).
void Square(Board& board)
{
    Link(board, 5, 5, 5, 7);
    Link(board, 5, 7, 7, 7);
    Link(board, 7, 5, 7, 7);
    Link(board, 5, 5, 7, 5);
}

struct VerdictCase {
    const char* name;
    std::function<void(Board&)> setUp;
    std::string message;
    int row, column, status;
};

const std::string kNotSolved = "Not solved: Connect Start to End and use the Hint Node";

class Verdicts : public ::testing::TestWithParam<VerdictCase> {};

TEST_P(Verdicts, CheckSolutionReports)
{
    const VerdictCase& v = GetParam();
    Board board;
    MakeRowPuzzle(board, 4);
    v.setUp(board);
    const CheckResult r = CheckSolution(board);
    EXPECT_EQ(r.message, v.message);
    EXPECT_EQ(std::vector<int>({r.row, r.column, r.status}), std::vector<int>({v.row, v.column, v.status}));
}

INSTANTIATE_TEST_SUITE_P(
    Boards, Verdicts,
    ::testing::Values(
        VerdictCase{"no_links", [](Board&) {}, kNotSolved, 0, 0, 0},
        VerdictCase{"one_good_link", [](Board& b) { Digits(b, 7, 3, 1, 2, 3); }, kNotSolved, 0, 0, 0},
        VerdictCase{"nine_three_three", [](Board& b) { Digits(b, 7, 3, 9, 3, 3); }, kNotSolved, 0, 0, 0},
        VerdictCase{"four_four_one", [](Board& b) { Digits(b, 7, 3, 4, 4, 1); }, kNotSolved, 0, 0, 0},
        VerdictCase{"wrong_link", [](Board& b) { Digits(b, 7, 3, 8, 2, 7); }, "Incorrect Math", 7, 4, -1},
        VerdictCase{"wrong_vertical_link",
                    [](Board& b) { SetLinkFlags(b, 1, 7, 9, 9, 9); }, "Incorrect Math", 8, 9, -1},
        VerdictCase{"square_loop", Square, "User links may be in a loop", 0, 0, 1},
        VerdictCase{"wrong_link_in_a_loop",
                    [](Board& b) { Square(b); b.NodeValue(7, 6) = 5; }, "Incorrect Math", 7, 6, -1},
        VerdictCase{"three_links_at_a_node",
                    [](Board& b) { Link(b, 5, 3, 5, 5); Link(b, 5, 5, 5, 7); Link(b, 5, 5, 7, 5); },
                    "A node is used more than twice", 0, 0, 1},
        VerdictCase{"two_loops_sharing_an_edge",
                    [](Board& b) { Square(b); Link(b, 5, 3, 5, 5); Link(b, 7, 3, 7, 5); Link(b, 5, 3, 7, 3); },
                    "User links may be in a loop", 0, 0, 1},
        VerdictCase{"key_nodes_linked_but_not_the_path",
                    [](Board& b) { Link(b, 3, 1, 3, 3); Link(b, 3, 5, 3, 7); Link(b, 3, 7, 3, 9); },
                    kNotSolved, 0, 0, 0},
        VerdictCase{"exact_path",
                    [](Board& b) { for (int c = 1; c < 9; c += 2) Link(b, 3, c, 3, c + 2); },
                    "All Done !", 0, 0, 99}),
    [](const ::testing::TestParamInfo<VerdictCase>& info) { return std::string(info.param.name); });

TEST(VerifyButton, ShowsTheVerdictAndMarkerOnlyWhileHeld)
{
    Board board;
    MakeRowPuzzle(board, 4);
    FakeHost host;
    VerifyPress(host, board);
    EXPECT_EQ(host.status, kNotSolved);
    EXPECT_FALSE(host.markerShown);

    Digits(board, 7, 3, 8, 2, 7);
    VerifyPress(host, board);
    EXPECT_EQ(host.status, "Incorrect Math");
    const int q = board.QuarterPitch;
    EXPECT_TRUE(host.markerShown);
    EXPECT_EQ(std::vector<int>({host.markerLeft, host.markerTop, host.markerSize}),
              std::vector<int>({board.CellX(7, 4) - q, board.CellY(7, 4) - q, 2 * q}));
    VerifyRelease(host, board);
    EXPECT_FALSE(host.markerShown);
    EXPECT_EQ(host.status, "");

    // Without a puzzle the button does nothing.
    Board empty;
    MakePlainBoard(empty, 4);
    FakeHost idle;
    idle.status = "kept";
    idle.markerShown = true;
    VerifyPress(idle, empty);
    VerifyRelease(idle, empty);
    Timer2Tick(idle, empty);
    EXPECT_EQ(idle.status, "kept");
    EXPECT_TRUE(idle.markerShown);
    EXPECT_EQ(idle.indicator, 0u);
}

TEST(Timer2Tick, GreenOnlyWhileUnsolvedWithoutFaults)
{
    Board board;
    MakeRowPuzzle(board, 4);
    FakeHost host;
    Timer2Tick(host, board);
    EXPECT_EQ(host.indicator, RGB(10, 200, 10));
    Link(board, 3, 1, 3, 3);
    Timer2Tick(host, board);
    EXPECT_EQ(host.indicator, RGB(10, 200, 10));
    Digits(board, 7, 3, 8, 2, 7);
    Timer2Tick(host, board);
    EXPECT_EQ(host.indicator, RGB(240, 0, 0));
}

} // namespace
} // namespace tallyon::test
