// Verdicts of CheckSolution on hand-made boards and on a played puzzle from the top, the
// new-puzzle button and the grid-size and start-side labels.
#include "core/generator/generator.h"
#include "play/controls.h"
#include "play/undo.h"
#include "play_fixture.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <tuple>

namespace tallyon::test {
namespace {

// Links two nodes through a link cell holding 1 (1, 1, 1 is valid).
void Link(Board& board, int rowA, int colA, int rowB, int colB)
{
    SetLinkFlags(board, 1, rowA, colA, rowB, colB);
    board.NodeValue((rowA + rowB) / 2, (colA + colB) / 2) = 1;
}

// Links (row, col) to (row, col + 2) with the digits a, b, c.
void Digits(Board& board, int row, int col, int a, int b, int c)
{
    SetLinkFlags(board, 1, row, col, row, col + 2);
    std::tie(board.NodeValue(row, col), board.NodeValue(row, col + 1), board.NodeValue(row, col + 2)) =
        std::tie(a, b, c);
}

// Links each listed pair of nodes {rowA, colA, rowB, colB}.
void Links(Board& board, std::initializer_list<std::array<int, 4>> pairs)
{
    for (const auto& [rowA, colA, rowB, colB] : pairs)
        Link(board, rowA, colA, rowB, colB);
}

// Links the four nodes of the square whose top-left node is (row, col) into a loop.
void SquareLoop(Board& board, int r, int c)
{
    Links(board, {{r, c, r, c + 2}, {r, c + 2, r + 2, c + 2}, {r + 2, c, r + 2, c + 2}, {r, c, r + 2, c}});
}

// Links the row puzzle's whole path.
void PathLinks(Board& board)
{
    for (int c = 1; c < 9; c += 2)
        Link(board, 3, c, 3, c + 2);
}

const std::string kNotSolved = "Not solved: Connect Start to End and use the Hint Node";

// Each board's verdict: message, reported link cell and status.
TEST(Verdicts, CheckSolutionReports)
{
    const struct {
        const char* name;
        std::function<void(Board&)> setUp;
        std::string message;
        int row, column, status;
    } cases[] = {
        {"no links", [](Board&) {}, kNotSolved, 0, 0, 0},
        {"9 3 3", [](Board& b) { Digits(b, 7, 3, 9, 3, 3); }, kNotSolved, 0, 0, 0},
        {"3 3 9", [](Board& b) { Digits(b, 7, 3, 3, 3, 9); }, kNotSolved, 0, 0, 0},
        {"wrong link", [](Board& b) { Digits(b, 7, 3, 8, 2, 7); }, "Incorrect Math", 7, 4, -1},
        {"square loop", [](Board& b) { SquareLoop(b, 5, 5); }, "User links may be in a loop", 0, 0, 1},
        // a loop whose crossing node is also used four times
        {"figure eight", [](Board& b) { SquareLoop(b, 5, 5), SquareLoop(b, 7, 7); }, "User links may be in a loop", 0,
         0, 1},
        {"three links at a node",
         [](Board& b) {
             Links(b, {{5, 3, 5, 5}, {5, 5, 5, 7}, {5, 5, 7, 5}});
         },
         "A node is used more than twice", 0, 0, 1},
        {"key nodes linked, not the path",
         [](Board& b) {
             Links(b, {{3, 1, 3, 3}, {3, 5, 3, 7}, {3, 7, 3, 9}});
         },
         kNotSolved, 0, 0, 0},
        {"exact path", PathLinks, "All Done !", 0, 0, 99},
    };
    for (const auto& v : cases) {
        Board board;
        MakeRowPuzzle(board, 4);
        v.setUp(board);
        const CheckResult r = CheckSolution(board);
        EXPECT_EQ(r.message, v.message) << v.name;
        EXPECT_EQ(std::vector<int>({r.row, r.column, r.status}), std::vector<int>({v.row, v.column, v.status}))
            << v.name;
    }
}

using Texts = std::vector<std::string>;

// Holding Verify shows the verdict and marks the faulty link cell with a square a half pitch
// wide, centred on it; releasing takes both away. Of several wrong links, the first met
// reading the nodes row by row is the one reported.
TEST(VerifyDisplay, MarksTheFirstWrongLinkWhileHeld)
{
    Board board;
    MakeRowPuzzle(board, 4);
    Digits(board, 7, 5, 8, 2, 7);       // wrong, in the lower row
    Digits(board, 5, 3, 9, 1, 5);       // wrong, met first
    Digits(board, 5, 7, 2, 2, 4);       // right
    SetLinkFlags(board, 1, 5, 3, 7, 3); // wrong too, but below: the link to the right comes first
    board.NodeValue(6, 3) = 1;
    board.NodeValue(7, 3) = 5;
    FakeHost host;
    VerifyPress(host, board);
    const int q = board.QuarterPitch;
    const std::string marker = std::to_string(board.CellX(5, 4) - q) + "," + std::to_string(board.CellY(5, 4) - q) +
                               "," + std::to_string(2 * q);
    EXPECT_EQ(host.requests, Texts({"hide-marker", "marker:" + marker, "status:Incorrect Math"}));
    host.requests.clear();
    VerifyRelease(host, board);
    EXPECT_EQ(host.requests, Texts({"hide-marker", "status:"}));

    // A structural fault has no link to mark.
    Board loop;
    MakeRowPuzzle(loop, 4);
    SquareLoop(loop, 5, 5);
    host.requests.clear();
    VerifyPress(host, loop);
    EXPECT_EQ(host.requests, Texts({"hide-marker", "status:User links may be in a loop"}));
}

// Each tick of Timer2 sets the indicator green, then red on wrong arithmetic, a structural
// fault, or the solved board (its status is not 0); a board merely unfinished stays green.
TEST(VerifyDisplay, TimerTicksColourTheIndicator)
{
    const std::string green = FakeHost::ColourText(fixed::Green), red = FakeHost::ColourText(fixed::Red);
    const struct {
        const char* name;
        std::function<void(Board&)> setUp;
        Texts indicator;
    } cases[] = {
        {"unfinished", [](Board& b) { Link(b, 3, 1, 3, 3); }, {green}},
        {"wrong", [](Board& b) { Digits(b, 7, 3, 8, 2, 7); }, {green, red}},
        {"overused",
         [](Board& b) {
             Links(b, {{5, 5, 5, 7}, {5, 5, 5, 3}, {5, 5, 7, 5}});
         },
         {green, red}},
        {"solved", PathLinks, {green, red}},
    };
    for (const auto& c : cases) {
        Board board;
        MakeRowPuzzle(board, 4);
        c.setUp(board);
        FakeHost host;
        Timer2Tick(host, board);
        EXPECT_EQ(host.Requests("indicator"), c.indicator) << c.name;
        EXPECT_TRUE(host.Requests("status").empty()) << c.name;
    }
    // Before the first puzzle the tick does nothing.
    FakeHost host;
    Timer2Tick(host, Board());
    EXPECT_TRUE(host.requests.empty());
}

// A release on the board links, records, redraws, starts the timer and has the game kept; an
// undo takes the indicator back to the background and clears the status line; a reset asks
// first and stops the timer. A release that changes nothing keeps nothing.
TEST(PlayRequests, LinkUndoAndResetAskTheWindowInOrder)
{
    Board board;
    MakeRowPuzzle(board, 4);
    FakeHost host;
    PlayState state;
    ClickCell(host, board, state, 3, 2);
    EXPECT_EQ(host.requests, Texts({"status:", "status:Use 1 and 1 to make 1", "timer:on", "saved"}));
    host.requests.clear();
    ClickCell(host, board, state, 3, 2);
    EXPECT_EQ(host.requests, Texts({"status:", "status:Use 1 and 1 to make 1", "status:Lined already", "timer:on"}));
    host.requests.clear();
    UndoMove(host, board, state, 1);
    EXPECT_EQ(host.requests, Texts({"indicator:" + FakeHost::ColourText(host.style.Background), "status:", "saved"}));
    ClickCell(host, board, state, 3, 2);
    host.requests.clear();
    UndoMove(host, board, state, 2);
    EXPECT_EQ(host.requests, Texts({"ask:Clear all user entries?", "timer:off",
                                    "indicator:" + FakeHost::ColourText(host.style.Background), "status:", "saved"}));
}

TEST(NewPuzzle, BuildsFromTheNextSettingsOrARandomSizeAndKeepsTheHistory)
{
    Board board;
    FakeHost host;
    PlayState state;
    state.undolist = {"1,3,4,3,3,3,5"};
    host.next = {5, kSideTop};
    NewPuzzle(host, board, state, 1);
    EXPECT_EQ(host.status, "Puzzle Created");
    EXPECT_EQ(board.CellRow[board.StartNode], 1);
    EXPECT_EQ(board.CellRow[board.EndNode], 11);
    for (std::size_t i = 1; i < board.List2.size(); i += 2) {
        const int cell = std::stoi(board.List2[i]);
        ClickCell(host, board, state, board.CellRow[cell], board.CellCol[cell]);
    }
    EXPECT_EQ(state.undolist.size(), 1 + board.List2.size() / 2); // the older record is kept
    EXPECT_EQ(CheckSolution(board).message, "Not solved: Connect Start to End and use the Hint Node");

    // The right button picks a size from 4 to 10, shows it as the next size, and still keeps
    // the history.
    const std::size_t records = state.undolist.size();
    for (int i = 0; i < 3; ++i) {
        NewPuzzle(host, board, state, 2);
        EXPECT_TRUE(board.GridSize >= 4 && board.GridSize <= 10) << board.GridSize;
        EXPECT_EQ(host.next.GridSize, board.GridSize);
        EXPECT_EQ(host.gridSizeCaption, GridSizeText(board.GridSize));
    }
    EXPECT_EQ(state.undolist.size(), records);
}

TEST(BoardLabels, GridSizeAndStartSideStepAndWrap)
{
    const int sizes[][3] = {{7, 1, 8}, {7, 2, 6}, {10, 1, 4}, {4, 2, 10}, {6, 4, 6}}; // from, button, to
    for (const auto& [from, button, to] : sizes) {
        FakeHost host;
        host.next.GridSize = from;
        host.timer = true;
        EXPECT_EQ(StepGridSize(host, button), to);
        EXPECT_EQ(host.next.GridSize, to);
        EXPECT_EQ(host.gridSizeCaption, GridSizeText(to));
        EXPECT_FALSE(host.timer);
    }
    FakeHost host;
    host.next.PathDirection = kSideRandom;
    std::string seen;
    for (int button : {1, 1, 1, 2, 2, 2}) {
        EXPECT_EQ(StepStartSide(host, button), host.next.PathDirection);
        seen += host.startSideCaption + "/" + std::to_string(host.next.PathDirection) + " ";
    }
    EXPECT_EQ(seen, "Left/1 Top/2 Random/0 Top/2 Left/1 Random/0 ");
    // Directions from the options or a damaged file step back into 0..2, the largest too.
    const int odd[][3] = {{3, 1, 0},  {4, 2, 0},          {3, 2, 2},
                          {-7, 1, 2}, {2147483647, 1, 0}, {-2147483647 - 1, 2, 2}}; // from, button, to
    for (const auto& [from, button, to] : odd) {
        host.next.PathDirection = from;
        EXPECT_EQ(StepStartSide(host, button), to) << from;
    }
}

// The labels set the next puzzle only: the one being played keeps its size, span and start
// side, so pointing beside it offers nothing and its marks stay where Start and End lie.
TEST(BoardLabels, SteppingThemLeavesThePuzzleInPlayAlone)
{
    Board board;
    FakeHost host;
    PlayState state;
    host.next = {7, kSideLeft};
    NewPuzzle(host, board, state, 1);
    const int span = board.BoardSpan;
    StepGridSize(host, 1);
    StepStartSide(host, 1);
    EXPECT_EQ(host.next.GridSize, 8);
    EXPECT_EQ(host.next.PathDirection, kSideTop);
    EXPECT_EQ(board.GridSize, 7);
    EXPECT_EQ(board.BoardSpan, span);
    EXPECT_EQ(board.StartSide, kSideLeft);

    // Just right of the board, at the height of row 1.
    HoverCell(host, board, state, static_cast<float>(board.CellX(1, span) + board.CellPitch),
              static_cast<float>(board.CellY(1, 1)));
    EXPECT_EQ(host.status.rfind("Use", 0), std::string::npos) << host.status;
    const std::size_t records = state.undolist.size();
    MakeLink(host, board, state, 1);
    EXPECT_EQ(state.undolist.size(), records);
    EXPECT_EQ(UserLinkMap(board), "");

    NewPuzzle(host, board, state, 1);
    EXPECT_EQ(board.GridSize, 8);
    EXPECT_EQ(board.StartSide, kSideTop);
}

} // namespace
} // namespace tallyon::test
