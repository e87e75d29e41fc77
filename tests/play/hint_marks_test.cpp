// The hint key and the player's marks through the play routines: what each press draws on the
// overlay and says on the status line, puzzles solved by following the hints alone, wrong links
// and marks shown first, and marks toggled, drawn and cleared.
#include "core/board/random.h"
#include "play/draw.h"
#include "play/hint.h"
#include "play/keyboard.h"
#include "play/undo.h"
#include "play_fixture.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <set>
#include <utility>

namespace tallyon::test {
namespace {

using Kind = CanvasOp::Kind;

constexpr const char* kSolvedWords = "Your links are the whole path: nothing is left to find";

// The lattice cell whose centre lies at a point of the picture, if any.
std::optional<CellAt> CellAtPoint(const Board& b, int x, int y)
{
    for (int row = 1; row <= b.BoardSpan; ++row)
        for (int col = 1; col <= b.BoardSpan; ++col)
            if (b.CellX(row, col) == x && b.CellY(row, col) == y)
                return CellAt{row, col};
    return std::nullopt;
}

// What one press of H put on the overlay, read back from its drawing calls.
struct Shown {
    std::set<std::pair<int, int>> ringed; // nodes ringed in the hint's colour
    std::optional<CellAt> forced;         // the link cell of the line in the forced colour
    std::set<std::pair<int, int>> framed; // link cells framed as wrong
    std::set<std::pair<int, int>> dimmed; // link cells whose digit is drawn dimmed
};

Shown ReadOverlay(const Board& b, const DrawStyle& style, const RecordingCanvas& overlay)
{
    Shown shown;
    const BoardLook look = ScreenLook(b, style);
    for (const CanvasOp& op : overlay.Ops()) {
        if (op.kind == Kind::Circle && op.colour == kHintLookColour)
            if (const auto cell = CellAtPoint(b, op.x1, op.y1))
                shown.ringed.insert({cell->row, cell->col});
        if (op.kind == Kind::Line && op.colour == kForcedLinkColour) {
            const auto a = CellAtPoint(b, op.x1, op.y1), c = CellAtPoint(b, op.x2, op.y2);
            EXPECT_TRUE(a && c) << "the forced link runs from node to node";
            if (a && c)
                shown.forced = CellAt{(a->row + c->row) / 2, (a->col + c->col) / 2};
        }
        if (op.kind == Kind::Box && op.colour == kWrongFrameColour)
            if (const auto cell = CellAtPoint(b, (op.x1 + op.x2) / 2, (op.y1 + op.y2) / 2))
                shown.framed.insert({cell->row, cell->col});
        if (op.kind == Kind::Text && op.colour == look.dimmedDigit) {
            const TextSize size = RecordingCanvas().MeasureText(op.text, op.font);
            if (const auto cell = CellAtPoint(b, op.x1 + size.width / 2, op.y1 + size.height / 2))
                shown.dimmed.insert({cell->row, cell->col});
        }
    }
    return shown;
}

// Presses and releases H, checking that the board picture itself is never drawn on and that
// the status line comes back; returns what the press showed and said.
std::pair<Shown, std::string> PressH(FakeHost& host, const Board& board, PlayState& state)
{
    const std::size_t boardOps = host.canvas.Ops().size();
    const std::string before = host.status;
    HintPress(host, board, state);
    const Shown shown = ReadOverlay(board, host.style, host.overlay);
    const std::string said = host.status;
    HintRelease(host, state);
    EXPECT_EQ(host.canvas.Ops().size(), boardOps) << "a hint draws on the overlay only";
    EXPECT_TRUE(host.overlay.Ops().empty());
    EXPECT_EQ(host.status, before);
    return {shown, said};
}

// The path's link cells, as (row, col).
std::set<std::pair<int, int>> PathLinkCells(const Board& b)
{
    std::set<std::pair<int, int>> cells;
    for (std::size_t i = 1; i < b.List2.size(); i += 2) {
        const int k = std::stoi(b.List2[i]);
        cells.insert({b.CellRow[k], b.CellCol[k]});
    }
    return cells;
}

// Following the hints alone solves seeded puzzles of every size from either side: H twice,
// the link the second press draws made by a click, until H says the path is complete. The
// first press of each hint counts it and rings a node of the link it leads to; the second
// keeps the count, draws that link on the path and dims only links off it.
TEST(HintKey, FollowingTheHintsAloneSolvesPuzzlesOfEverySize)
{
    TickingClock clock;
    for (int size = 4; size <= 10; ++size)
        for (int side : {kSideLeft, kSideTop}) {
            SCOPED_TRACE("size " + std::to_string(size) + " side " + std::to_string(side));
            FakeHost host;
            Board board;
            PlayState state;
            host.next = {size, side};
            NewPuzzle(host, board, state, 1);
            const std::set<std::pair<int, int>> path = PathLinkCells(board);
            int hints = 0;
            for (;;) {
                const auto [first, said] = PressH(host, board, state);
                if (said == kSolvedWords)
                    break;
                ++hints;
                ASSERT_EQ(said.rfind("Hint " + std::to_string(hints) + ": ", 0), 0u) << said;
                ASSERT_LE(hints, static_cast<int>(path.size()));
                EXPECT_FALSE(first.forced.has_value()) << "the first press forces nothing yet";
                const auto [second, said2] = PressH(host, board, state);
                ASSERT_EQ(said2.rfind("Hint " + std::to_string(hints) + ": ", 0), 0u) << said2;
                ASSERT_TRUE(second.forced.has_value()) << said2;
                const CellAt link = *second.forced;
                EXPECT_TRUE(path.count({link.row, link.col})) << "the hint leads off the path";
                for (const auto& cell : second.dimmed)
                    EXPECT_FALSE(path.count(cell)) << "a link of the path is ruled out";
                const bool across = link.row % 2 == 1;
                const std::pair<int, int> a{across ? link.row : link.row - 1, across ? link.col - 1 : link.col};
                const std::pair<int, int> b{across ? link.row : link.row + 1, across ? link.col + 1 : link.col};
                EXPECT_TRUE(first.ringed.count(a) || first.ringed.count(b)) << said;
                const std::string links = UserLinkMap(board);
                ClickCell(host, board, state, link.row, link.col);
                ASSERT_NE(UserLinkMap(board), links) << "the hint's link was made already";
            }
            EXPECT_GT(hints, 0);
            EXPECT_EQ(state.HintCount, hints);
            // Only the path's links are made: Verify agrees where it can (a puzzle laid from the
            // top is never "All Done !"), and the links at the nodes add up to the path's.
            int ends = 0;
            for (int row = 1; row <= board.BoardSpan; row += 2)
                for (int col = 1; col <= board.BoardSpan; col += 2)
                    ends += NodeDegree(board, row, col);
            EXPECT_EQ(ends, 2 * static_cast<int>(path.size()));
            EXPECT_TRUE(side != kSideLeft || CheckSolution(board).status == kStatusSolved);
        }
}

// A wrong link comes before any deduction, framed, on both presses and counted once; taking it
// back is a move, so the next press is a new hint; a mark on a link of the path comes first
// too. A new puzzle starts the count again.
TEST(HintKey, WrongLinksAndMarksComeFirstAndEveryMoveStartsANewHint)
{
    TickingClock clock;
    FakeHost host;
    Board board;
    PlayState state;
    host.next = {6, kSideLeft};
    NewPuzzle(host, board, state, 1);
    const std::set<std::pair<int, int>> path = PathLinkCells(board);
    CellAt off{0, 0};
    for (int row = 1; row <= board.BoardSpan && off.row == 0; ++row)
        for (int col = 1; col <= board.BoardSpan && off.row == 0; ++col)
            if (IsLinkCell(row, col) && !path.count({row, col}))
                off = {row, col};
    ClickCell(host, board, state, off.row, off.col);
    for (int press = 0; press < 2; ++press) {
        const auto [shown, said] = PressH(host, board, state);
        EXPECT_EQ(shown.framed, (std::set<std::pair<int, int>>{{off.row, off.col}}));
        EXPECT_FALSE(shown.forced.has_value());
        EXPECT_EQ(shown.ringed.size(), 2u) << "both ends of the wrong link";
        EXPECT_TRUE(said.rfind("Hint 1: Wrong link ", 0) == 0 || said.rfind("Hint 1: The link ", 0) == 0) << said;
    }
    ClickCell(host, board, state, off.row, off.col, 2);
    EXPECT_EQ(PressH(host, board, state).second.rfind("Hint 2: ", 0), 0u);

    // The cursor starts on Start: a cross on the path's first link is a wrong mark.
    ResetCursor(board, state);
    const int link = std::stoi(board.List2[1]);
    const int dRow = board.CellRow[link] - state.CursorRow, dCol = board.CellCol[link] - state.CursorCol;
    ToggleMark(host, board, state, dRow, dCol);
    const auto [shown, said] = PressH(host, board, state);
    EXPECT_EQ(said.rfind("Hint 3: The cross ", 0), 0u) << said;
    EXPECT_EQ(shown.framed, (std::set<std::pair<int, int>>{{board.CellRow[link], board.CellCol[link]}}));

    // A link made, an undo, a redo and a mark each start a new hint; a second press does not.
    const std::function<void()> moves[] = {
        [&] { ToggleMark(host, board, state, dRow, dCol); },
        [&] { ClickCell(host, board, state, board.CellRow[link], board.CellCol[link]); },
        [&] { UndoMove(host, board, state, 1); },
        [&] { RedoMove(host, board, state); },
    };
    int count = 3;
    for (const auto& move : moves) {
        move();
        EXPECT_EQ(PressH(host, board, state).second.rfind("Hint " + std::to_string(++count) + ": ", 0), 0u);
        EXPECT_EQ(PressH(host, board, state).second.rfind("Hint " + std::to_string(count) + ": ", 0), 0u);
    }
    NewPuzzle(host, board, state, 1);
    EXPECT_EQ(PressH(host, board, state).second.rfind("Hint 1: ", 0), 0u);
}

// A move while H is still held takes the hint away at once; H before the first puzzle does
// nothing at all.
TEST(HintKey, AMoveWhileHeldDropsTheHintAndNothingHappensBeforeAPuzzle)
{
    FakeHost host;
    Board board;
    PlayState state;
    HintPress(host, board, state);
    HintRelease(host, state);
    EXPECT_TRUE(host.requests.empty());

    MakeRowPuzzle(board, 4);
    HintPress(host, board, state);
    EXPECT_FALSE(host.overlay.Ops().empty());
    ClickCell(host, board, state, 3, 2);
    EXPECT_TRUE(host.overlay.Ops().empty());
    host.SetStatus("after the move");
    HintRelease(host, state);
    EXPECT_EQ(host.status, "after the move") << "the release leaves the move's status line";
}

// The crosses drawn on a link cell: pairs of lines in the scheme's colour crossing at its
// centre (a linked cell is drawn again over its link, cross and all).
int CrossesAt(const RecordingCanvas& canvas, const Board& b, const DrawStyle& style, int row, int col)
{
    int lines = 0;
    for (const CanvasOp& op : canvas.OpsOf(Kind::Line))
        lines += op.colour == style.MarkColour && (op.x1 + op.x2) / 2 == b.CellX(row, col) &&
                 (op.y1 + op.y2) / 2 == b.CellY(row, col) && op.x1 != op.x2 && op.y1 != op.y2;
    return lines / 2;
}

// Alt+arrow toggles a mark towards each neighbour on the board: a cross on that link cell,
// nothing else changed (no digit, no link, no undo record); again, and it is gone. Off the
// board it does nothing. A reset answered Yes and a new puzzle clear the marks.
TEST(Marks, ToggleDrawAndClear)
{
    FakeHost host;
    Board board;
    PlayState state;
    ToggleMark(host, board, state, 0, 1); // no puzzle: nothing
    EXPECT_TRUE(host.requests.empty());
    MakeRowPuzzle(board, 4);
    ResetCursor(board, state);
    ClickCell(host, board, state, 3, 2);
    const Board before = board;
    const std::vector<std::string> undo = state.undolist;
    MoveCursor(host, board, state, 0, 1);
    for (const auto& [dRow, dCol] : {std::pair{0, 1}, std::pair{0, -1}, std::pair{1, 0}, std::pair{-1, 0}}) {
        const int row = state.CursorRow + dRow, col = state.CursorCol + dCol;
        host.canvas.Reset();
        ToggleMark(host, board, state, dRow, dCol);
        EXPECT_EQ(board.UserMark(row, col), 1);
        EXPECT_GT(CrossesAt(host.canvas, board, host.style, row, col), 0);
        EXPECT_EQ(host.canvas.OpsOf(Kind::Clear).size(), 1u) << "the whole board, drawn afresh";
    }
    EXPECT_EQ(UserLinkMap(board), UserLinkMap(before));
    EXPECT_EQ(state.undolist, undo);
    for (int row = 1; row <= board.BoardSpan; ++row)
        for (int col = 1; col <= board.BoardSpan; ++col)
            EXPECT_EQ(board.NodeValue(row, col), before.NodeValue(row, col));
    host.canvas.Reset();
    ToggleMark(host, board, state, 0, 1);
    EXPECT_EQ(board.UserMark(3, 4), 0);
    EXPECT_EQ(CrossesAt(host.canvas, board, host.style, 3, 4), 0);
    EXPECT_GT(CrossesAt(host.canvas, board, host.style, 3, 2), 0);

    MoveCursor(host, board, state, -1, 0); // the top row: nothing above it
    const auto requests = host.requests.size();
    ToggleMark(host, board, state, -1, 0);
    EXPECT_EQ(host.requests.size(), requests);

    UndoMove(host, board, state, 2); // the reset, answered Yes
    for (int row = 1; row <= board.BoardSpan; ++row)
        for (int col = 1; col <= board.BoardSpan; ++col)
            ASSERT_EQ(board.UserMark(row, col), 0);
    ClickCell(host, board, state, 3, 2);
    ToggleMark(host, board, state, 1, 0);
    host.next = {4, kSideLeft};
    NewPuzzle(host, board, state, 1);
    for (int row = 1; row <= board.BoardSpan; ++row)
        for (int col = 1; col <= board.BoardSpan; ++col)
            ASSERT_EQ(board.UserMark(row, col), 0);
}

// G steps Any, Easy, Medium, Hard and round again, saying what comes next and the grade of the
// puzzle in play; a new puzzle is then of the grade chosen.
TEST(GradeKey, StepsTheNextGradeAndNewPuzzlesTakeIt)
{
    TickingClock clock;
    FakeHost host;
    Board board;
    StepGrade(host, board);
    EXPECT_EQ(host.status, "Next puzzle: Easy (no puzzle yet)");
    for (const char* next : {"Medium", "Hard", "Any", "Easy"}) {
        StepGrade(host, board);
        EXPECT_EQ(host.status, "Next puzzle: " + std::string(next) + " (no puzzle yet)");
    }
    PlayState state;
    for (const Grade grade : {Grade::Easy, Grade::Medium, Grade::Hard}) {
        host.next.grade = grade;
        host.next.GridSize = 7;
        NewPuzzle(host, board, state, 1);
        EXPECT_EQ(GradePuzzle(board).grade, grade);
        StepGrade(host, board);
        EXPECT_EQ(host.status.substr(host.status.find('(')), "(this one: " + std::string(GradeName(grade)) + ")");
    }
}

} // namespace
} // namespace tallyon::test
