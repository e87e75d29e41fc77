// Undo history: undo and reset sequences with their record counts, and records that do not fit.
#include "play/undo.h"

#include "play_fixture.h"

#include <gtest/gtest.h>

namespace tallyon::test {
namespace {

class UndoTest : public ::testing::Test {
protected:
    void SetUp() override { MakeRowPuzzle(board, 4); }
    int Links(int rowA, int colA, int rowB, int colB) const
    {
        return board.NodeLinks(board.CellNo(rowA, colA), board.CellNo(rowB, colB));
    }
    Board board;
    FakeHost host;
    PlayState state;
};

TEST_F(UndoTest, EmptyHistoryDoesNothingForAnyButton)
{
    host.status = "kept";
    UndoMove(host, board, state, 1);
    UndoMove(host, board, state, 2);
    EXPECT_TRUE(host.asked.empty());
    EXPECT_EQ(host.status, "kept");
    EXPECT_TRUE(host.canvas.Ops().empty());
}

TEST_F(UndoTest, UndoingALinkTakesItAway)
{
    ClickCell(host, board, state, 5, 4);
    host.status = "Lined already";
    host.canvas.Reset();
    UndoMove(host, board, state, 1);
    EXPECT_TRUE(state.undolist.empty());
    EXPECT_EQ(UserLinkMap(board), "");
    EXPECT_EQ(Links(5, 3, 5, 5), 0);
    EXPECT_EQ(host.status, "");
    EXPECT_EQ(host.indicator, host.style.Background);
    EXPECT_EQ(host.canvas.OpsOf(CanvasOp::Kind::Line).front().colour, host.style.Background);
    // A left click on the pair makes it again normally.
    ClickCell(host, board, state, 5, 4);
    EXPECT_EQ(UserLinkMap(board), "5,3:R 5,5:L ");
}

TEST_F(UndoTest, UndoingARemovalRestoresOnlyOneEntryOfTheLink)
{
    ClickCell(host, board, state, 5, 4);
    ClickCell(host, board, state, 5, 4, 2);
    UndoMove(host, board, state, 1);
    EXPECT_EQ(state.undolist, std::vector<std::string>({"1,5,4,5,3,5,5"}));
    EXPECT_EQ(UserLinkMap(board), "5,3:R 5,5:L ");
    EXPECT_EQ(Links(5, 3, 5, 5), 1);
    EXPECT_EQ(Links(5, 5, 5, 3), 0);
    // The reverse entry is still 0: a right click on the link is refused.
    ClickCell(host, board, state, 5, 4, 2);
    EXPECT_EQ(state.undolist.size(), 1u);
    EXPECT_EQ(UserLinkMap(board), "5,3:R 5,5:L ");
}

TEST_F(UndoTest, ResetClearsEverythingAndTakesBackOnlyTheNewestRecord)
{
    ClickCell(host, board, state, 5, 4);
    ClickCell(host, board, state, 6, 5);
    ClickCell(host, board, state, 7, 6);
    UndoMove(host, board, state, 2);
    ASSERT_EQ(host.asked.size(), 1u);
    EXPECT_EQ(host.asked[0], std::make_pair(std::string("Clear all user entries?"), std::string("vbyesno+vbquestion")));
    EXPECT_FALSE(host.timer);
    EXPECT_EQ(UserLinkMap(board), "");
    EXPECT_EQ(Links(5, 3, 5, 5) + Links(5, 5, 5, 3) + Links(5, 5, 7, 5), 0);
    EXPECT_EQ(state.undolist, std::vector<std::string>({"1,6,5,5,5,7,5", "1,5,4,5,3,5,5"}));

    UndoMove(host, board, state, 1);
    UndoMove(host, board, state, 1);
    EXPECT_TRUE(state.undolist.empty());
    EXPECT_EQ(UserLinkMap(board), "");
    EXPECT_FALSE(host.timer);
}

TEST_F(UndoTest, ResetAnsweredNoChangesNothing)
{
    ClickCell(host, board, state, 5, 4);
    ClickCell(host, board, state, 6, 5);
    ClickCell(host, board, state, 7, 6);
    host.answer = 7;
    host.canvas.Reset();
    UndoMove(host, board, state, 2);
    EXPECT_EQ(state.undolist.size(), 3u);
    EXPECT_TRUE(host.timer);
    EXPECT_EQ(UserLinkMap(board), "5,3:R 5,5:DL 7,5:UR 7,7:L ");
    EXPECT_TRUE(host.canvas.Ops().empty());
}

TEST_F(UndoTest, ResetReplaysARemovalRecordAsALink)
{
    ClickCell(host, board, state, 5, 4);
    ClickCell(host, board, state, 5, 4, 2);
    ClickCell(host, board, state, 6, 5);
    UndoMove(host, board, state, 2); // clears, then takes back the link (6,5)
    EXPECT_EQ(UserLinkMap(board), "");
    UndoMove(host, board, state, 1); // the removal's inverse makes (5,4) again
    EXPECT_EQ(UserLinkMap(board), "5,3:R 5,5:L ");
}

TEST_F(UndoTest, RecordsThatDoNotFitAreRemovedWithoutHarm)
{
    state.undolist = {"", "0,x,4,3,3,3,5", "0,3,4", "1,25,26,25,25,25,27", "9,9,9,99,99,99,99", "0,5,4,5,3,5,5"};
    UndoMove(host, board, state, 1); // "": removed, nothing else
    EXPECT_EQ(state.undolist.size(), 5u);
    EXPECT_EQ(UserLinkMap(board), "");
    UndoMove(host, board, state, 1); // row not a number: reads 0, the ends still apply
    EXPECT_EQ(UserLinkMap(board), "3,3:R 3,5:L ");
    for (int i = 0; i < 3; ++i)      // too short, and off the 9 x 9 board
        UndoMove(host, board, state, 1);
    EXPECT_EQ(UserLinkMap(board), "3,3:R 3,5:L ");
    UndoMove(host, board, state, 1); // a removal's inverse links
    EXPECT_EQ(UserLinkMap(board), "3,3:R 3,5:L 5,3:R 5,5:L ");
    EXPECT_TRUE(state.undolist.empty());
}

} // namespace
} // namespace tallyon::test
