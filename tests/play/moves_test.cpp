// Moves: what the pointer offers, what each button's release makes and records, and undo and
// reset of the recorded moves, including records that do not fit.
#include "core/board/random.h"
#include "play/draw.h"
#include "play/move.h"
#include "play/undo.h"
#include "play_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace tallyon::test {
namespace {

// Only the vertical link cell (6, 3) between nodes 1 and 3 with digit 2 is offered: the
// quarter-pitch edges round half to even into it (right and lower edges would round away
// from it otherwise), fractions are floored first, one twip further is the dead zone. Points
// that offer nothing link nothing either.
TEST(HoverZones, OffersOnlyLinkCellsWithinAQuarterPitch)
{
    const struct {
        const char* name;
        int row, col; // a lattice point; 0 and BoardSpan + 1 lie outside the board
        float dx, dy; // the pointer's offset from it in twips; a quarter pitch is 156
        bool offered;
        const char* captions; // Label1/Label2: the row and column, "" in a dead zone
    } cases[] = {
        {"centre", 6, 3, 0, 0, true, "6/3"},         {"right edge floored", 6, 3, 156.9f, 0, true, "6/3"},
        {"upper edge", 6, 3, 0, -156, true, "6/3"},  {"left edge", 6, 3, -156, 0, true, "6/3"},
        {"lower edge", 6, 3, 0, 156, true, "6/3"},   {"past right", 6, 3, 157, 0, false, "6/"},
        {"past upper", 6, 3, 0, -157, false, "/3"},  {"past left", 6, 3, -157, 0, false, "6/"},
        {"past lower", 6, 3, 0, 157, false, "/3"},   {"node", 5, 3, 0, 0, false, "5/3"},
        {"gap", 6, 4, 0, 0, false, "6/4"},           {"left ring, the Start X's column", 3, 0, 0, 0, false, "3/0"},
        {"right ring", 4, 10, 0, 0, false, "4/10"},  {"top ring", 0, 4, 0, 0, false, "0/4"},
        {"bottom ring", 10, 3, 0, 0, false, "10/3"}, {"beyond the ring", -1, 3, 0, 0, false, "-1/3"},
    };
    for (const auto& c : cases) {
        Board board;
        MakeRowPuzzle(board, 4);
        ASSERT_EQ(board.QuarterPitch, 156);
        board.NodeValue(6, 3) = 2;
        board.NodeValue(7, 3) = 3;
        FakeHost host;
        host.status = "old";
        PlayState state;
        HoverCell(host, board, state, static_cast<float>(board.BoardLeft + (c.col - 1) * board.CellPitch) + c.dx,
                  static_cast<float>(board.BoardTop + (c.row - 1) * board.CellPitch) + c.dy);
        const std::vector<int> hover{state.HoverRow, state.HoverCol, state.EndARow,
                                     state.EndACol,  state.EndBRow,  state.EndBCol};
        EXPECT_EQ(hover, c.offered ? std::vector<int>({6, 3, 5, 3, 7, 3}) : std::vector<int>(6, 0)) << c.name;
        EXPECT_EQ(host.status, c.offered ? "Use 1 and 2 to make 3" : "") << c.name;
        EXPECT_EQ(host.rowCaption + "/" + host.columnCaption, c.captions) << c.name;
        if (c.offered)
            continue;
        MakeLink(host, board, state, 1);
        EXPECT_TRUE(state.undolist.empty() && !host.timer) << c.name;
    }
}

// The lines drawn so far, as x1, y1, x2, y2, colour, pen width.
std::vector<std::vector<int>> Lines(const RecordingCanvas& canvas)
{
    std::vector<std::vector<int>> lines;
    for (const CanvasOp& l : canvas.OpsOf(CanvasOp::Kind::Line))
        lines.push_back({l.x1, l.y1, l.x2, l.y2, static_cast<int>(l.colour), l.penWidth});
    return lines;
}

// A row puzzle of size 4 with a fresh host and play state.
class Moves : public ::testing::Test {
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

TEST_F(Moves, ButtonsLinkRefuseAndRemoveWithTheirRecordsAndLines)
{
    const int w = host.style.GridLineWidth;
    const int x1 = board.CellX(5, 3), x2 = board.CellX(5, 5), y = board.CellY(5, 3);
    ClickCell(host, board, state, 5, 4, 4); // the middle button links like the left one
    EXPECT_EQ(state.undolist, std::vector<std::string>({"1,5,4,5,3,5,5"}));
    EXPECT_EQ(UserLinkMap(board), "5,3:R 5,5:L ");
    EXPECT_EQ(Links(5, 3, 5, 5) + Links(5, 5, 5, 3), 2);
    EXPECT_EQ(Lines(host.canvas),
              std::vector<std::vector<int>>({{x1, y, x2, y, int(host.style.UserLineColour), 3 * w}}));
    EXPECT_TRUE(host.timer);
    EXPECT_EQ(state.EndARow + state.EndBRow, 0); // the offered ends are forgotten

    host.timer = false;
    host.canvas.Reset();
    ClickCell(host, board, state, 5, 4);
    EXPECT_EQ(host.status, "Lined already");
    ClickCell(host, board, state, 7, 4, 2); // nothing there to remove
    EXPECT_EQ(state.undolist.size(), 1u);
    EXPECT_TRUE(host.canvas.Ops().empty());
    EXPECT_TRUE(host.timer);

    // Removing erases the line with the background and draws the grid line again.
    ClickCell(host, board, state, 5, 4, 2);
    EXPECT_EQ(state.undolist.front(), "0,5,4,5,3,5,5");
    EXPECT_EQ(UserLinkMap(board), "");
    EXPECT_EQ(Links(5, 3, 5, 5) + Links(5, 5, 5, 3), 0);
    EXPECT_EQ(Lines(host.canvas), std::vector<std::vector<int>>({{x1, y, x2, y, int(host.style.Background), 3 * w},
                                                                 {x1, y, x2, y, int(host.style.GridColour), w}}));
    EXPECT_EQ(host.canvas.OpsOf(CanvasOp::Kind::Text).size(), 3u); // both ends and the digit go back on top
}

// A move redraws the cells it touches and nothing else: its two nodes and its link cell, the
// line between them, and, where it ends at Start, Hint or End, the marks on top. An undo
// puts the marks back as well, wherever the move was.
TEST_F(Moves, RedrawOnlyTheCellsTheyTouch)
{
    const int half = board.CellPitch / 2;
    const auto inside = [&](int rowA, int colA, int rowB, int colB) {
        const int left = board.CellX(rowA, colA) - half, right = board.CellX(rowB, colB) + half;
        const int top = board.CellY(rowA, colA) - half, bottom = board.CellY(rowB, colB) + half;
        for (const CanvasOp& op : host.canvas.Ops()) {
            if (IsMark(op))
                continue;
            const int x2 = op.kind == CanvasOp::Kind::Circle || op.kind == CanvasOp::Kind::Text ? op.x1 : op.x2;
            const int y2 = op.kind == CanvasOp::Kind::Circle || op.kind == CanvasOp::Kind::Text ? op.y1 : op.y2;
            if (op.kind == CanvasOp::Kind::Clear || std::min(op.x1, x2) < left || std::max(op.x1, x2) > right ||
                std::min(op.y1, y2) < top || std::max(op.y1, y2) > bottom)
                return false;
        }
        return !host.canvas.Ops().empty();
    };
    const auto marks = [&] { return std::count_if(host.canvas.Ops().begin(), host.canvas.Ops().end(), IsMark); };
    ClickCell(host, board, state, 7, 6); // between (7, 5) and (7, 7), away from the marks
    EXPECT_TRUE(inside(7, 5, 7, 7));
    EXPECT_EQ(marks(), 0);
    host.canvas.Reset();
    ClickCell(host, board, state, 7, 6, 2);
    EXPECT_TRUE(inside(7, 5, 7, 7));
    EXPECT_EQ(marks(), 0);
    host.canvas.Reset();
    UndoMove(host, board, state, 1);
    EXPECT_TRUE(inside(7, 5, 7, 7));
    EXPECT_EQ(marks(), 5); // three rings and two "X"s
    host.canvas.Reset();
    ClickCell(host, board, state, 3, 2); // from Start
    EXPECT_TRUE(inside(3, 1, 3, 3));
    EXPECT_EQ(marks(), 5);
}

TEST_F(Moves, UndoingARemovalRestoresOnlyTheForwardEntry)
{
    ClickCell(host, board, state, 5, 4);
    ClickCell(host, board, state, 5, 4, 2);
    host.status = "Lined already";
    UndoMove(host, board, state, 1);
    EXPECT_EQ(state.undolist, std::vector<std::string>({"1,5,4,5,3,5,5"}));
    EXPECT_EQ(UserLinkMap(board), "5,3:R 5,5:L ");
    EXPECT_EQ(Links(5, 3, 5, 5), 1);
    EXPECT_EQ(Links(5, 5, 5, 3), 0);
    EXPECT_EQ(host.status, "");
    // The reverse entry is still 0: a right click on the link is refused.
    ClickCell(host, board, state, 5, 4, 2);
    EXPECT_EQ(state.undolist.size(), 1u);
    EXPECT_EQ(UserLinkMap(board), "5,3:R 5,5:L ");
}

TEST_F(Moves, ResetAnsweredNoChangesNothingAndYesKeepsTheOlderRecords)
{
    ClickCell(host, board, state, 5, 4);
    ClickCell(host, board, state, 6, 5);
    ClickCell(host, board, state, 7, 6);
    host.answer = 7;
    host.canvas.Reset();
    UndoMove(host, board, state, 2);
    EXPECT_EQ(state.undolist.size(), 3u);
    EXPECT_EQ(UserLinkMap(board), "5,3:R 5,5:DL 7,5:UR 7,7:L ");
    EXPECT_TRUE(host.canvas.Ops().empty());
    EXPECT_TRUE(host.timer);

    host.answer = 6;
    UndoMove(host, board, state, 2);
    EXPECT_EQ(host.asked, 2);
    EXPECT_FALSE(host.timer);
    EXPECT_EQ(UserLinkMap(board), "");
    EXPECT_EQ(Links(5, 3, 5, 5) + Links(5, 5, 5, 3) + Links(5, 5, 7, 5), 0);
    EXPECT_EQ(state.undolist, std::vector<std::string>({"1,6,5,5,5,7,5", "1,5,4,5,3,5,5"}));
}

TEST_F(Moves, RecordsThatDoNotFitAreRemovedWithoutHarm)
{
    state.undolist = {"", "0,x,4,3,3,3,5", "0,3,4", "1,25,26,25,25,25,27", "9,9,9,99,99,99,99", "0,5,4,5,3,5,5"};
    UndoMove(host, board, state, 1); // "": removed, nothing else
    EXPECT_EQ(state.undolist.size(), 5u);
    EXPECT_EQ(UserLinkMap(board), "");
    UndoMove(host, board, state, 1); // a field that is no number reads 0, the ends still apply
    EXPECT_EQ(UserLinkMap(board), "3,3:R 3,5:L ");
    for (int i = 0; i < 3; ++i) // too short, and off the 9 x 9 board
        UndoMove(host, board, state, 1);
    EXPECT_EQ(UserLinkMap(board), "3,3:R 3,5:L ");
    UndoMove(host, board, state, 1); // a removal's inverse links
    EXPECT_EQ(UserLinkMap(board), "3,3:R 3,5:L 5,3:R 5,5:L ");
    EXPECT_TRUE(state.undolist.empty());
    host.canvas.Reset();
    UndoMove(host, board, state, 2); // an empty history: no question, no drawing
    EXPECT_EQ(host.asked, 0);
    EXPECT_TRUE(host.canvas.Ops().empty());
}

// Any run of links, unlinks, undos, redos and resets, at every size: each link's flags stand at
// both its ends and NodeLinks(A, B) holds them; a full redraw draws exactly the links, the last
// row and column included; a left click on a link reads "Lined already" and records nothing; a
// link just redone is joined both ways, so that a right click takes it away.
TEST(MoveSequences, KeepFlagsLinksAndDrawingInStep)
{
    TickingClock clock;
    for (int size = 4; size <= 10; ++size) {
        Board board;
        MakeRowPuzzle(board, size);
        FakeHost host;
        PlayState state;
        const int span = board.BoardSpan;
        struct Link {
            int row, col, dRow, dCol; // End A, and the step to End B
        };
        const auto links = [&] {
            std::vector<Link> out;
            for (int row = 1; row <= span; row += 2)
                for (int col = 1; col <= span; col += 2) {
                    if (board.UserRight(row, col) == 1)
                        out.push_back({row, col, 0, 2});
                    if (board.UserDown(row, col) == 1)
                        out.push_back({row, col, 2, 0});
                }
            return out;
        };
        const auto id = [&](int row, int col) { return board.CellNo(row, col); };
        for (int step = 0; step < 150; ++step) {
            SCOPED_TRACE("size " + std::to_string(size) + " step " + std::to_string(step));
            const int op = RandomInt(11, 0);
            const std::vector<Link> before = links();
            if (op < 5 || (op == 9 && before.empty())) { // a click on any link cell
                const int row = RandomInt(span, 1);
                const int col = row % 2 == 1 ? 2 * RandomInt(span / 2, 1) : 2 * RandomInt(span / 2 + 1, 0) + 1;
                ClickCell(host, board, state, row, col, op < 3 ? 1 : op == 3 ? 4 : 2);
            } else if (op == 5) {
                UndoMove(host, board, state, 1);
            } else if (op == 6) {
                const std::size_t redoable = state.redolist.size();
                RedoMove(host, board, state);
                if (redoable > state.redolist.size() && !state.undolist.empty()) {
                    const Move m = ParseMoveRecord(state.undolist.front());
                    ASSERT_EQ(board.NodeLinks(id(m.rowB, m.colB), id(m.rowA, m.colA)),
                              board.NodeLinks(id(m.rowA, m.colA), id(m.rowB, m.colB)));
                }
            } else if (op == 7) {
                host.answer = RandomInt(2, 0) == 0 ? 6 : 7;
                UndoMove(host, board, state, 2);
            } else if (op == 8 && !before.empty()) { // a link made, clicked again
                const Link l = before[static_cast<std::size_t>(RandomInt(static_cast<int>(before.size()), 0))];
                const std::size_t records = state.undolist.size();
                ClickCell(host, board, state, l.row + l.dRow / 2, l.col + l.dCol / 2, 1);
                ASSERT_EQ(host.status, "Lined already");
                ASSERT_EQ(state.undolist.size(), records);
            } else if (op >= 9 && !before.empty()) { // a link taken away, unless joined one way only
                const Link l = before[static_cast<std::size_t>(RandomInt(static_cast<int>(before.size()), 0))];
                const bool bothWays = board.NodeLinks(id(l.row + l.dRow, l.col + l.dCol), id(l.row, l.col)) == 1;
                ClickCell(host, board, state, l.row + l.dRow / 2, l.col + l.dCol / 2, 2);
                ASSERT_EQ((l.dRow ? board.UserDown : board.UserRight)(l.row, l.col), bothWays ? 0 : 1);
            }
            const std::vector<Link> now = links();
            std::set<std::vector<int>> want, drawn;
            for (const Link& l : now) {
                const int rowB = l.row + l.dRow, colB = l.col + l.dCol;
                ASSERT_EQ((l.dRow ? board.UserUp : board.UserLeft)(rowB, colB), 1) << "the far end's flag";
                ASSERT_EQ(board.NodeLinks(id(l.row, l.col), id(rowB, colB)), 1);
                want.insert({board.CellX(l.row, l.col), board.CellY(l.row, l.col), board.CellX(rowB, colB),
                             board.CellY(rowB, colB)});
            }
            for (int row = 1; row <= span; row += 2)
                for (int col = 1; col <= span; col += 2)
                    ASSERT_TRUE((board.UserLeft(row, col) == 0 || board.UserRight(row, col - 2) == 1) &&
                                (board.UserUp(row, col) == 0 || board.UserDown(row - 2, col) == 1))
                        << "a flag without its other end at " << row << "," << col;
            RecordingCanvas full;
            DrawBoard(full, board, host.style, kPuzzleMode);
            for (const CanvasOp& line : full.OpsOf(CanvasOp::Kind::Line))
                if (line.colour == host.style.UserLineColour)
                    drawn.insert({line.x1, line.y1, line.x2, line.y2});
            ASSERT_EQ(drawn, want);
        }
    }
}

} // namespace
} // namespace tallyon::test
