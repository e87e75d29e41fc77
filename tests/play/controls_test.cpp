// The new-puzzle button and the board controls, and whole games played on generated puzzles.
#include "play/controls.h"

#include "core/generator.h"
#include "play/verify.h"
#include "play_fixture.h"

#include <gtest/gtest.h>

namespace tallyon::test {
namespace {

using Kind = CanvasOp::Kind;

// Links every pair of the generated path by clicking its link cells, Start to End.
void PlayThePath(FakeHost& host, Board& board, PlayState& state)
{
    for (std::size_t i = 1; i < board.List2.size(); i += 2) {
        const int cell = std::stoi(board.List2[i]);
        ClickCell(host, board, state, board.CellRow[cell], board.CellCol[cell]);
    }
}

struct Position {
    int row, col;
};
Position Where(const Board& board, int cell) { return {board.CellRow[cell], board.CellCol[cell]}; }

TEST(NewPuzzle, BuildsFromTheLabelsAndKeepsTheUndoHistory)
{
    Board board;
    FakeHost host;
    PlayState state;
    state.undolist = {"1,3,4,3,3,3,5"};
    host.gridSizeLabel = {"5x5", "5"};
    host.startSideLabel = {"Left", "1"};
    host.timer = true;
    NewPuzzle(host, board, state, 1);
    EXPECT_EQ(board.GridSize, 5);
    EXPECT_EQ(host.gridSizeLabel.caption, "5x5");
    EXPECT_EQ(host.status, "Puzzle Created");
    EXPECT_FALSE(host.busy);
    EXPECT_TRUE(host.boardEnabled);
    EXPECT_FALSE(host.timer);
    EXPECT_EQ(host.indicator, host.style.Background);
    EXPECT_EQ(state.undolist.size(), 1u);
    EXPECT_EQ(Where(board, board.StartNode).col, 1);
    EXPECT_EQ(Where(board, board.EndNode).col, board.BoardSpan);
    EXPECT_FALSE(host.canvas.OpsOf(Kind::Circle).empty());
}

TEST(NewPuzzle, RightButtonPicksARandomSizeAndShowsIt)
{
    Board board;
    FakeHost host;
    PlayState state;
    host.gridSizeLabel = {"6x6", "6"};
    for (int i = 0; i < 3; ++i) {
        NewPuzzle(host, board, state, 2);
        EXPECT_GE(board.GridSize, 4);
        EXPECT_LE(board.GridSize, 10);
        EXPECT_EQ(host.gridSizeLabel.caption, GridSizeText(board.GridSize));
        EXPECT_EQ(host.gridSizeLabel.tag, std::to_string(board.GridSize));
        EXPECT_EQ(board.BoardSpan, 2 * board.GridSize + 1);
    }
}

TEST(PlayedGame, TheExactPathOfALeftPuzzleIsDone)
{
    Board board;
    FakeHost host;
    PlayState state;
    host.gridSizeLabel = {"6x6", "6"};
    NewPuzzle(host, board, state, 1);
    PlayThePath(host, board, state);
    const CheckResult result = CheckSolution(board);
    EXPECT_EQ(result.message, "All Done !");
    EXPECT_EQ(result.status, 99);
    EXPECT_TRUE(host.timer);
    Timer2Tick(host, board);
    EXPECT_EQ(host.indicator, RGB(240, 0, 0));
    EXPECT_EQ(state.undolist.size(), board.List2.size() / 2);
}

TEST(PlayedGame, TheExactPathOfATopPuzzleIsNotSolved)
{
    Board board;
    FakeHost host;
    PlayState state;
    host.gridSizeLabel = {"5x5", "5"};
    host.startSideLabel = {"Top", "2"};
    NewPuzzle(host, board, state, 1);
    EXPECT_EQ(Where(board, board.StartNode).row, 1);
    EXPECT_EQ(Where(board, board.EndNode).row, board.BoardSpan);
    PlayThePath(host, board, state);
    const CheckResult result = CheckSolution(board);
    EXPECT_EQ(result.message, "Not solved: Connect Start to End and use the Hint Node");
    EXPECT_EQ(result.status, 0);
}

struct StepCase {
    int from, button, to;
};

class GridSizeSteps : public ::testing::TestWithParam<StepCase> {};

TEST_P(GridSizeSteps, StepAndWrap)
{
    const StepCase& s = GetParam();
    Board board;
    board.GridSize = s.from;
    FakeHost host;
    host.timer = true;
    EXPECT_EQ(StepGridSize(host, board, s.button), s.to);
    EXPECT_EQ(board.GridSize, s.to);
    EXPECT_EQ(board.BoardSpan, 2 * s.to + 1);
    EXPECT_EQ(host.gridSizeLabel.caption, GridSizeText(s.to));
    EXPECT_EQ(host.gridSizeLabel.tag, std::to_string(s.to));
    EXPECT_FALSE(host.timer);
    EXPECT_TRUE(host.canvas.Ops().empty());
}

INSTANTIATE_TEST_SUITE_P(Sizes, GridSizeSteps,
                         ::testing::Values(StepCase{7, 1, 8}, StepCase{7, 2, 6}, StepCase{10, 1, 4},
                                           StepCase{4, 2, 10}, StepCase{6, 4, 6}));

TEST(StepStartSide, CyclesRandomLeftTopBothWays)
{
    Board board;
    FakeHost host;
    host.startSideLabel = {"Random", "0"};
    std::vector<std::string> seen;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(StepStartSide(host, board, 1), board.StartSide);
        seen.push_back(host.startSideLabel.caption + "/" + host.startSideLabel.tag);
    }
    for (int i = 0; i < 3; ++i) {
        StepStartSide(host, board, 2);
        seen.push_back(host.startSideLabel.caption + "/" + host.startSideLabel.tag);
    }
    EXPECT_EQ(seen, std::vector<std::string>({"Left/1", "Top/2", "Random/0", "Top/2", "Left/1", "Random/0"}));
    host.startSideLabel = {"", "4"}; // a direction only the options window sets
    StepStartSide(host, board, 1);
    EXPECT_EQ(host.startSideLabel.caption, "Random");
}

TEST(ShowSolution, ShowsThePathOnlyWhileHeld)
{
    Board board;
    FakeHost host;
    MakePlainBoard(board, 4);
    host.status = "kept";
    ShowSolution(host, board);
    HideSolution(host, board);
    EXPECT_EQ(host.status, "kept");
    EXPECT_TRUE(host.canvas.Ops().empty());

    MakeRowPuzzle(board, 4);
    ShowSolution(host, board);
    EXPECT_EQ(host.status, "Solution ...");
    EXPECT_EQ(LinesIn(host.canvas, host.style.UserLineColour).size(), board.List2.size() - 1);
    // Digits go back on top of the path: the last digit drawn follows the last line.
    const auto& ops = host.canvas.Ops();
    int lastLine = 0, lastDigit = 0;
    for (int i = 0; i < static_cast<int>(ops.size()); ++i) {
        const CanvasOp& op = ops[static_cast<std::size_t>(i)];
        lastLine = op.colour == host.style.UserLineColour ? i : lastLine;
        lastDigit = (op.kind == Kind::Text && op.text != "X") ? i : lastDigit;
    }
    EXPECT_GT(lastDigit, lastLine);

    host.canvas.Reset();
    HideSolution(host, board);
    EXPECT_EQ(host.status, "");
    EXPECT_TRUE(LinesIn(host.canvas, host.style.UserLineColour).empty());
}

TEST(RedrawBoard, DrawsThePuzzleOrTheEmptyGrid)
{
    Board board;
    FakeHost host;
    MakePlainBoard(board, 6);
    RedrawBoard(host, board);
    EXPECT_EQ(host.layoutRuns, 1);
    EXPECT_EQ(host.canvas.Ops().front().kind, Kind::Clear);
    EXPECT_EQ(host.canvas.OpsOf(Kind::Line).size(), 14u);
    EXPECT_EQ(host.canvas.Ops().size(), 15u); // the clear and the grid alone

    MakeRowPuzzle(board, 6);
    board.UserRight(3, 1) = board.UserLeft(3, 3) = 1;
    host.canvas.Reset();
    RedrawBoard(host, board);
    EXPECT_EQ(host.layoutRuns, 2);
    EXPECT_EQ(host.canvas.OpsOf(Kind::Circle).size(), 49u + 2u + 3u); // nodes, the link's ends again, marks
    EXPECT_EQ(LinesIn(host.canvas, host.style.UserLineColour).size(), 1u);
}

} // namespace
} // namespace tallyon::test
