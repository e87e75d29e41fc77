// Undo history: taking back the newest recorded link change, and the reset of all user links.
#include "play/undo.h"

#include "play/draw.h"
#include "play/linking.h"
#include "play/play_text.h"

#include <array>
#include <string>

namespace tallyon {
namespace {

constexpr int kYes = 6;

struct UndoFields {
    int value = 0, hoverRow = 0, hoverCol = 0, rowA = 0, colA = 0, rowB = 0, colB = 0;
};

UndoFields ParseRecord(const std::string& record)
{
    const std::vector<std::string> pieces = SplitText(record, ',');
    std::array<int, 7> f{};
    for (std::size_t i = 0; i < f.size() && i < pieces.size(); ++i)
        f[i] = NumberFromText(pieces[i]);
    return {f[0], f[1], f[2], f[3], f[4], f[5], f[6]};
}

void ClearUserLinks(Board& board)
{
    for (int row = 1; row <= board.BoardSpan; ++row) {
        for (int col = 1; col <= board.BoardSpan; ++col) {
            board.UserLeft(row, col) = 0;
            board.UserRight(row, col) = 0;
            board.UserUp(row, col) = 0;
            board.UserDown(row, col) = 0;
        }
    }
    for (int a = 1; a <= NodePairArray::Hi; ++a)
        for (int b = 1; b <= NodePairArray::Hi; ++b)
            board.NodeLinks(a, b) = 0;
}

// Writes the inverse of a record into the board and draws it. Only the A-to-B entry of
// NodeLinks is restored.
void ApplyInverse(PlayHost& host, Board& board, const UndoFields& r)
{
    if (!OnBoard(board, r.rowA, r.colA) || !OnBoard(board, r.rowB, r.colB))
        return;
    const int restored = r.value == 0 ? 1 : 0;
    const std::unique_ptr<Canvas> canvas = host.OpenBoardCanvas();
    const DrawStyle style = host.Style();
    DrawLink(*canvas, board, style, restored, r.rowA, r.colA, r.rowB, r.colB);
    const int idA = board.CellNo(r.rowA, r.colA);
    const int idB = board.CellNo(r.rowB, r.colB);
    board.NodeLinks(idA, idB) = restored;
    DrawCellAsNode(*canvas, board, style, r.rowA, r.colA);
    DrawCellAsNode(*canvas, board, style, r.rowB, r.colB);
    if (OnBoard(board, r.hoverRow, r.hoverCol))
        DrawCellAsLink(*canvas, board, style, r.hoverRow, r.hoverCol);
    SetLinkFlags(board, restored, r.rowA, r.colA, r.rowB, r.colB);
    if (LinkCrossesMarks(board, idA, idB))
        DrawMarks(*canvas, board, style);
}

void UndoNewest(PlayHost& host, Board& board, PlayState& state)
{
    const std::string record = state.undolist.front();
    if (!record.empty())
        ApplyInverse(host, board, ParseRecord(record));
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
        if (host.Ask("Clear all user entries?", "vbyesno+vbquestion") != kYes)
            return;
        host.SetCheckTimer(false);
        ClearUserLinks(board);
        DrawBoard(host, board, 0);
    }
    UndoNewest(host, board, state);
}

} // namespace tallyon
