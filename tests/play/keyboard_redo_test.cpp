// Keyboard play, redo, and puzzles started from a code: what each changes on the board, in
// the histories and on the status line.
#include "core/codes/puzzle_code.h"
#include "play/keyboard.h"
#include "play/undo.h"
#include "play_fixture.h"

#include <gtest/gtest.h>

namespace tallyon::test {
namespace {

class Keys : public ::testing::Test {
protected:
    void SetUp() override
    {
        MakeRowPuzzle(board, 4);
        ResetCursor(board, state);
    }
    // The cursor ring: a box in the user-line colour, as drawn last.
    int Rings() const
    {
        int rings = 0;
        for (const CanvasOp& op : host.canvas.OpsOf(CanvasOp::Kind::Box))
            rings += op.colour == host.style.UserLineColour;
        return rings;
    }
    Board board;
    FakeHost host;
    PlayState state;
};

// The path of the row puzzle typed from Start with Shift+Right: each key shows the triple,
// links, records and starts the timer, and the cursor follows, so Verify finds it solved.
TEST_F(Keys, ShiftArrowsTypeThePathFromStart)
{
    EXPECT_EQ(std::vector<int>({state.CursorRow, state.CursorCol}), std::vector<int>({3, 1}));
    EXPECT_FALSE(state.CursorShown);
    KeyLink(host, board, state, 0, -1, 1); // nothing left of Start
    EXPECT_TRUE(state.undolist.empty());
    for (int i = 0; i < 4; ++i)
        KeyLink(host, board, state, 0, 1, 1);
    EXPECT_EQ(host.Requests("status")[1], "Use 1 and 1 to make 1");
    EXPECT_EQ(state.undolist.size(), 4u);
    EXPECT_TRUE(host.timer && state.CursorShown);
    EXPECT_EQ(std::vector<int>({state.CursorRow, state.CursorCol}), std::vector<int>({3, 9}));
    EXPECT_EQ(CheckSolution(board).message, "All Done !");
    EXPECT_GE(Rings(), 1);

    // Back over a made link: "Lined already", no record; Ctrl+Left then removes it, the cursor
    // staying put.
    KeyLink(host, board, state, 0, -1, 1);
    EXPECT_EQ(host.status, "Lined already");
    EXPECT_EQ(state.undolist.size(), 4u);
    KeyLink(host, board, state, 0, -1, 2);
    EXPECT_EQ(state.undolist.front(), "0,3,6,3,5,3,7");
    EXPECT_EQ(std::vector<int>({state.CursorRow, state.CursorCol}), std::vector<int>({3, 7}));
}

// Arrows move the cursor along the nodes and stop at the edge; the mouse hides it with one
// redraw of the board, and a hidden cursor draws no ring.
TEST_F(Keys, ArrowsMoveTheRingAndTheMouseHidesIt)
{
    MoveCursor(host, board, state, -1, 0);
    EXPECT_EQ(std::vector<int>({state.CursorRow, state.CursorCol}), std::vector<int>({1, 1}));
    MoveCursor(host, board, state, -1, 0);
    EXPECT_EQ(state.CursorRow, 1);
    EXPECT_TRUE(state.CursorShown);
    const CanvasOp ring = host.canvas.OpsOf(CanvasOp::Kind::Box).back();
    EXPECT_EQ(ring.colour, host.style.UserLineColour);
    EXPECT_EQ((ring.x1 + ring.x2) / 2, board.CellX(1, 1));
    EXPECT_LT(ring.x2 - ring.x1, board.CellPitch);
    host.canvas.Reset();
    HideCursor(host, board, state);
    EXPECT_EQ(host.canvas.OpsOf(CanvasOp::Kind::Clear).size(), 1u);
    EXPECT_EQ(Rings(), 0);
    host.canvas.Reset();
    HideCursor(host, board, state);
    ShowCursor(host, board, state);
    EXPECT_TRUE(host.canvas.Ops().empty());
}

// Redo takes the undone moves back newest first, as releases would make them; a new move, a
// reset and a new puzzle each clear what could be redone.
TEST_F(Keys, RedoReappliesUndoneMovesUntilANewMove)
{
    ClickCell(host, board, state, 3, 2);
    ClickCell(host, board, state, 5, 4);
    ClickCell(host, board, state, 3, 2, 2); // a removal
    const std::string linked = UserLinkMap(board);
    const std::vector<std::string> records = state.undolist;
    for (int i = 0; i < 3; ++i)
        UndoMove(host, board, state, 1);
    EXPECT_EQ(UserLinkMap(board), "");
    EXPECT_EQ(state.redolist.size(), 3u);
    host.timer = false;
    for (int i = 0; i < 4; ++i) // one more than there is
        RedoMove(host, board, state);
    EXPECT_EQ(UserLinkMap(board), linked);
    EXPECT_EQ(state.undolist, records);
    EXPECT_EQ(board.NodeLinks(board.CellNo(5, 5), board.CellNo(5, 3)), 1) << "both entries, as a release sets";
    EXPECT_TRUE(host.timer);

    UndoMove(host, board, state, 1);
    ClickCell(host, board, state, 7, 4);
    RedoMove(host, board, state);
    EXPECT_TRUE(state.redolist.empty());
    EXPECT_EQ(state.undolist.front(), "1,7,4,7,3,7,5");
    UndoMove(host, board, state, 1);
    UndoMove(host, board, state, 2); // the reset, answered Yes
    EXPECT_TRUE(state.redolist.empty());
    UndoMove(host, board, state, 1);
    host.next = {4, kSideLeft};
    NewPuzzle(host, board, state, 1);
    EXPECT_TRUE(state.redolist.empty());
    EXPECT_EQ(board.CellNo(state.CursorRow, state.CursorCol), board.StartNode);
}

// A code starts its puzzle as New Puzzle would, the next size untouched; a damaged one is
// explained and changes nothing.
TEST(PuzzleFromCode, StartsThePuzzleOrExplainsWhyNot)
{
    Board made;
    made.GridSize = 9;
    BuildPuzzle(made, kSideTop, kPictureWidth);
    const std::string code = EncodePuzzleCode(made);
    Board board;
    MakeRowPuzzle(board, 4);
    FakeHost host;
    PlayState state;
    state.redolist = {"1,3,2,3,1,3,3"};
    ASSERT_TRUE(NewPuzzleFromCode(host, board, state, code));
    EXPECT_EQ(board.PathList, made.PathList);
    EXPECT_EQ(host.status, "Puzzle Created");
    EXPECT_EQ(host.next.GridSize, 7);
    EXPECT_TRUE(state.redolist.empty());
    EXPECT_EQ(board.CellNo(state.CursorRow, state.CursorCol), board.StartNode);

    host.requests.clear();
    EXPECT_FALSE(NewPuzzleFromCode(host, board, state, code.substr(0, 40)));
    EXPECT_EQ(host.requests,
              std::vector<std::string>({"ask:This puzzle code cannot be used:\r\nIt is damaged or incomplete."}));
    EXPECT_EQ(board.PathList, made.PathList);
}

} // namespace
} // namespace tallyon::test
