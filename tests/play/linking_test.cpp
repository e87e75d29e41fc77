// Linking by mouse: what the pointer offers, and what a release makes, removes and records.
#include "play/linking.h"

#include "play/draw.h"
#include "play_fixture.h"

#include <gtest/gtest.h>

namespace tallyon::test {
namespace {

using Kind = CanvasOp::Kind;

struct HoverCase {
    const char* name;
    double dx, dy;          // pointer offset from cell (5, 4), in quarter pitches
    int extra;              // twips added to the offset along the axis that moves
    bool offered;
};

class HoverZones : public ::testing::TestWithParam<HoverCase> {};

TEST_P(HoverZones, OffersOnlyWithinAQuarterPitch)
{
    const HoverCase& c = GetParam();
    Board board;
    MakeRowPuzzle(board, 4);
    FakeHost host;
    PlayState state;
    const int q = board.QuarterPitch;
    const float x = static_cast<float>(board.CellX(5, 4) + c.dx * q + (c.dx != 0 ? c.extra : 0));
    const float y = static_cast<float>(board.CellY(5, 4) + c.dy * q + (c.dy != 0 ? c.extra : 0));
    HoverCell(host, board, state, x, y);
    if (c.offered) {
        EXPECT_EQ(std::vector<int>({state.HoverRow, state.HoverCol, state.EndARow, state.EndACol,
                                    state.EndBRow, state.EndBCol}),
                  std::vector<int>({5, 4, 5, 3, 5, 5}));
        EXPECT_EQ(host.status, "Use 1 and 5 to make 1");
    } else {
        EXPECT_EQ(state.EndARow + state.EndACol + state.EndBRow + state.EndBCol, 0);
        EXPECT_EQ(host.status, "");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Offsets, HoverZones,
    ::testing::Values(HoverCase{"centre", 0, 0, 0, true}, HoverCase{"right_edge", 1, 0, 0, true},
                      HoverCase{"left_edge", -1, 0, 0, true}, HoverCase{"below_edge", 0, 1, 0, true},
                      HoverCase{"above_edge", 0, -1, 0, true},
                      HoverCase{"past_right", 1, 0, 1, false}, HoverCase{"past_left", -1, 0, -1, false},
                      HoverCase{"past_below", 0, 1, 1, false}, HoverCase{"past_above", 0, -1, -1, false},
                      HoverCase{"half_pitch", 2, 0, 0, false}, HoverCase{"next_node", 4, 0, 0, false},
                      HoverCase{"gap_below", 0, 4, 0, false}),
    [](const ::testing::TestParamInfo<HoverCase>& info) { return std::string(info.param.name); });

TEST(HoverCell, FloorsTheDistanceBeforeRounding)
{
    Board board;
    MakeRowPuzzle(board, 4);
    FakeHost host;
    PlayState state;
    const float y = static_cast<float>(board.CellY(3, 4));
    HoverCell(host, board, state, static_cast<float>(board.CellX(3, 4) + board.QuarterPitch) + 0.9f, y);
    EXPECT_EQ(state.HoverCol, 4);
    EXPECT_EQ(host.rowCaption, "3");
    EXPECT_EQ(host.columnCaption, "4");
}

TEST(HoverCell, OffersNothingOffTheLinkCells)
{
    Board board;
    MakeRowPuzzle(board, 4);
    const int p = board.CellPitch;
    const std::pair<int, int> points[] = {
        {board.CellX(3, 3), board.CellY(3, 3)},         // a node
        {board.CellX(4, 4), board.CellY(4, 4)},         // a gap
        {board.BoardLeft - p, board.CellY(3, 1)},       // column 0, left of the board
        {board.CellX(3, 9) + p, board.CellY(3, 9)},     // beyond the last column
        {board.CellX(1, 3), board.BoardTop - p},        // row 0
        {board.CellX(9, 4), board.CellY(9, 4) + 2 * p}, // far below
        {-100000, -100000},
    };
    for (const auto& [x, y] : points) {
        FakeHost host;
        host.status = "old";
        PlayState state;
        HoverCell(host, board, state, static_cast<float>(x), static_cast<float>(y));
        EXPECT_EQ(state.HoverRow + state.HoverCol + state.EndARow + state.EndBCol, 0) << x << "," << y;
        EXPECT_EQ(host.status, "");
        MakeLink(host, board, state, 1);
        EXPECT_FALSE(host.timer);
        EXPECT_TRUE(state.undolist.empty());
    }

    // Before the first puzzle nothing is offered at all.
    Board empty;
    MakePlainBoard(empty, 4);
    FakeHost host;
    PlayState state;
    HoverCell(host, empty, state, static_cast<float>(empty.CellX(3, 4)), static_cast<float>(empty.CellY(3, 4)));
    EXPECT_EQ(state.HoverRow, 0);
    EXPECT_EQ(host.columnCaption, "");
}

TEST(HoverCell, HintNamesEndADigitAndEndB)
{
    Board board;
    MakeRowPuzzle(board, 4);
    board.NodeValue(5, 3) = 1;
    board.NodeValue(6, 3) = 2;
    board.NodeValue(7, 3) = 3;
    FakeHost host;
    PlayState state;
    HoverCell(host, board, state, static_cast<float>(board.CellX(6, 3)), static_cast<float>(board.CellY(6, 3)));
    EXPECT_EQ(host.status, "Use 1 and 2 to make 3");
    EXPECT_EQ(std::vector<int>({state.EndARow, state.EndACol, state.EndBRow, state.EndBCol}),
              std::vector<int>({5, 3, 7, 3}));
}

TEST(MakeLink, LeftAndMiddleLinkAndRecordTheMove)
{
    for (int button : {1, 4}) {
        Board board;
        MakeRowPuzzle(board, 4);
        FakeHost host;
        PlayState state;
        ClickCell(host, board, state, 5, 4, button);
        ClickCell(host, board, state, 6, 3, button);
        EXPECT_EQ(state.undolist, std::vector<std::string>({"1,6,3,5,3,7,3", "1,5,4,5,3,5,5"}));
        EXPECT_EQ(UserLinkMap(board), "5,3:DR 5,5:L 7,3:U ");
        EXPECT_EQ(board.NodeLinks(board.CellNo(5, 3), board.CellNo(5, 5)), 1);
        EXPECT_EQ(board.NodeLinks(board.CellNo(5, 5), board.CellNo(5, 3)), 1);
        EXPECT_TRUE(host.timer);
        // The offered ends are forgotten; the hovered cell stays until the next move.
        EXPECT_EQ(state.EndARow + state.EndBRow, 0);
        EXPECT_EQ(state.HoverRow, 6);
        host.timer = false;
        MakeLink(host, board, state, button);
        EXPECT_FALSE(host.timer);
        EXPECT_EQ(state.undolist.size(), 2u);
    }
}

TEST(MakeLink, RefusedReleasesAddNoRecordButStartTheTimer)
{
    Board board;
    MakeRowPuzzle(board, 4);
    FakeHost host;
    PlayState state;
    ClickCell(host, board, state, 5, 4);
    host.timer = false;
    host.canvas.Reset();
    ClickCell(host, board, state, 5, 4);
    EXPECT_EQ(host.status, "Lined already");
    EXPECT_TRUE(host.timer);

    host.timer = false;
    ClickCell(host, board, state, 7, 4, 2); // nothing to remove
    EXPECT_TRUE(host.timer);
    EXPECT_EQ(state.undolist.size(), 1u);
    EXPECT_TRUE(host.canvas.Ops().empty());
}

TEST(MakeLink, RightButtonRemovesAndErases)
{
    Board board;
    MakeRowPuzzle(board, 4);
    FakeHost host;
    PlayState state;
    ClickCell(host, board, state, 5, 4);
    host.canvas.Reset();
    ClickCell(host, board, state, 5, 4, 2);
    EXPECT_EQ(state.undolist.front(), "0,5,4,5,3,5,5");
    EXPECT_EQ(UserLinkMap(board), "");
    EXPECT_EQ(board.NodeLinks(board.CellNo(5, 5), board.CellNo(5, 3)), 0);
    const std::vector<CanvasOp> lines = host.canvas.OpsOf(Kind::Line);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].colour, host.style.Background);
    EXPECT_EQ(lines[1].colour, host.style.GridColour);
    // The digits go back on top of the erased line: both ends and the link cell.
    EXPECT_EQ(host.canvas.OpsOf(Kind::Text).size(), 3u);
}

TEST(MakeLink, RedrawsTheMarksOnlyWhenTouchingStartOrEnd)
{
    auto markRings = [](const FakeHost& host) {
        int n = 0;
        for (const CanvasOp& op : host.canvas.OpsOf(Kind::Circle))
            n += op.colour == kEndMarkColour ? 1 : 0;
        return n;
    };
    Board board;
    MakeRowPuzzle(board, 4);
    FakeHost host;
    PlayState state;
    ClickCell(host, board, state, 5, 6);
    EXPECT_EQ(markRings(host), 0);
    ClickCell(host, board, state, 3, 2); // Start is (3, 1)
    EXPECT_EQ(markRings(host), 2);
    host.canvas.Reset();
    ClickCell(host, board, state, 4, 9); // End is (3, 9)
    EXPECT_EQ(markRings(host), 2);
}

} // namespace
} // namespace tallyon::test
