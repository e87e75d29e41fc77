// Keyboard play: the cursor, its ring, and links typed towards a neighbour.
#include "play/keyboard.h"

#include "play/draw.h"
#include "play/hint.h"
#include "play/linking.h"

namespace tallyon {
namespace {

// The ring's half side in cell pitches: clear of the node shape (at most 0.275) and of the
// digits of the link cells around it (a pitch away).
constexpr double kCursorRingHalf = 0.4;
constexpr int kCursorRingPen = 2;

bool Ready(const Board& board, const PlayState& state)
{
    return !board.List2.empty() && OnBoard(board, state.CursorRow, state.CursorCol);
}

// The board again without any ring, then the ring where the cursor is.
void Redraw(PlayHost& host, const Board& board, const PlayState& state)
{
    DrawBoard(host, board, kPuzzleMode);
    ShowCursor(host, board, state);
}

} // namespace

void ResetCursor(const Board& board, PlayState& state)
{
    state.CursorShown = false;
    state.CursorRow = state.CursorCol = 0;
    if (IsBoardCellNumber(board, board.StartNode)) {
        state.CursorRow = board.CellRow[board.StartNode];
        state.CursorCol = board.CellCol[board.StartNode];
    }
}

void MoveCursor(PlayHost& host, const Board& board, PlayState& state, int dRow, int dCol)
{
    if (!Ready(board, state))
        return;
    if (OnBoard(board, state.CursorRow + 2 * dRow, state.CursorCol + 2 * dCol)) {
        state.CursorRow += 2 * dRow;
        state.CursorCol += 2 * dCol;
    }
    state.CursorShown = true;
    Redraw(host, board, state);
}

void KeyLink(PlayHost& host, Board& board, PlayState& state, int dRow, int dCol, int button)
{
    if (!Ready(board, state))
        return;
    const int linkRow = state.CursorRow + dRow, linkCol = state.CursorCol + dCol;
    if (!OnBoard(board, state.CursorRow + 2 * dRow, state.CursorCol + 2 * dCol))
        return;
    HoverCell(host, board, state, static_cast<float>(board.CellX(linkRow, linkCol)),
              static_cast<float>(board.CellY(linkRow, linkCol)));
    MakeLink(host, board, state, button);
    const bool moved = button != 2;
    if (moved) {
        state.CursorRow += 2 * dRow;
        state.CursorCol += 2 * dCol;
    }
    if (moved || !state.CursorShown) {
        state.CursorShown = true;
        Redraw(host, board, state);
        return;
    }
    ShowCursor(host, board, state);
}

void ToggleMark(PlayHost& host, Board& board, PlayState& state, int dRow, int dCol)
{
    if (!Ready(board, state) || !OnBoard(board, state.CursorRow + 2 * dRow, state.CursorCol + 2 * dCol))
        return;
    int& mark = board.UserMark(state.CursorRow + dRow, state.CursorCol + dCol);
    mark = mark == 1 ? 0 : 1;
    ForgetHint(host, state);
    state.CursorShown = true;
    Redraw(host, board, state);
    host.GameChanged();
}

void HideCursor(PlayHost& host, const Board& board, PlayState& state)
{
    if (!state.CursorShown)
        return;
    state.CursorShown = false;
    if (!board.List2.empty())
        DrawBoard(host, board, kPuzzleMode);
}

void ShowCursor(PlayHost& host, const Board& board, const PlayState& state)
{
    if (!state.CursorShown || !Ready(board, state))
        return;
    const int x = board.CellX(state.CursorRow, state.CursorCol), y = board.CellY(state.CursorRow, state.CursorCol);
    const int half = RoundHalfEven(kCursorRingHalf * board.CellPitch);
    host.OpenBoardCanvas()->Box(x - half, y - half, x + half, y + half, host.Style().UserLineColour, kCursorRingPen);
}

} // namespace tallyon
