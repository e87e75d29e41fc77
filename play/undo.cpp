// Undo history: taking back the newest recorded link change, the reset of all user links, and
// redoing what was undone.
#include "play/undo.h"

#include "platform/answer_codes.h"
#include "play/draw.h"
#include "play/hint.h"
#include "play/move.h"

#include <string>

namespace tallyon {
namespace {

void ClearUserLinks(Board& board)
{
    for (int row = 1; row <= board.BoardSpan; ++row) {
        for (int col = 1; col <= board.BoardSpan; ++col) {
            board.UserLeft(row, col) = 0;
            board.UserRight(row, col) = 0;
            board.UserUp(row, col) = 0;
            board.UserDown(row, col) = 0;
            board.UserMark(row, col) = 0;
        }
    }
    board.NodeLinks.Clear(); // every pair of cell numbers back to 0
}

void UndoNewest(PlayHost& host, Board& board, PlayState& state)
{
    ForgetHint(host, state);
    const std::string record = state.undolist.front();
    const Move back = Reversed(ParseMoveRecord(record));
    // A record naming cells off the board (a hand-made or stale one) is dropped unapplied.
    if (OnBoard(board, back.rowA, back.colA) && OnBoard(board, back.rowB, back.colB)) {
        ApplyMove(board, back, LinkEntries::AToBOnly);
        const std::unique_ptr<Canvas> canvas = host.OpenBoardCanvas();
        DrawMove(*canvas, board, host.Style(), back);
        state.redolist.insert(state.redolist.begin(), record);
    }
    state.undolist.erase(state.undolist.begin());
    host.SetIndicator(host.Style().Background);
    host.SetStatus("");
    DrawMarks(host, board);
}

} // namespace

void UndoMove(PlayHost& host, Board& board, PlayState& state, int button)
{
    if (state.undolist.empty())
        return;
    if (button == 2) {
        if (host.Ask("Clear all user entries?", "vbyesno+vbquestion") != kAnswerYes)
            return;
        host.SetCheckTimer(false);
        ClearUserLinks(board);
        DrawBoard(host, board, kPuzzleMode);
        UndoNewest(host, board, state);
        // Redoing on a cleared board would bring back single links out of their context.
        state.redolist.clear();
        host.GameChanged();
        return;
    }
    UndoNewest(host, board, state);
    host.GameChanged();
}

void RedoMove(PlayHost& host, Board& board, PlayState& state)
{
    if (state.redolist.empty() || board.List2.empty())
        return;
    const Move move = ParseMoveRecord(state.redolist.front());
    state.redolist.erase(state.redolist.begin());
    ForgetHint(host, state);
    if (!OnBoard(board, move.rowA, move.colA) || !OnBoard(board, move.rowB, move.colB)) {
        host.GameChanged(); // the record is gone
        return;
    }
    // As a release on the board makes it: both link entries, the drawing, a record and Timer2.
    ApplyMove(board, move, LinkEntries::Both);
    {
        const std::unique_ptr<Canvas> canvas = host.OpenBoardCanvas();
        DrawMove(*canvas, board, host.Style(), move);
    }
    state.undolist.insert(state.undolist.begin(), MoveRecord(move));
    host.SetCheckTimer(true);
    host.GameChanged();
}

} // namespace tallyon
