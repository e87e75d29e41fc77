// A link change as a value: its record text, applying it to the board and redrawing it.
#include "play/move.h"

#include "play/draw.h"
#include "play/play_text.h"

#include <array>
#include <vector>

namespace tallyon {

std::string MoveRecord(const Move& move)
{
    const int fields[] = {move.value, move.linkRow, move.linkCol, move.rowA, move.colA, move.rowB, move.colB};
    std::string record;
    for (int field : fields)
        record += (record.empty() ? "" : ",") + std::to_string(field);
    return record;
}

Move ParseMoveRecord(const std::string& record)
{
    const std::vector<std::string> pieces = SplitText(record, ',');
    std::array<int, 7> f{};
    for (std::size_t i = 0; i < f.size() && i < pieces.size(); ++i)
        f[i] = NumberFromText(pieces[i]);
    return {f[0], f[1], f[2], f[3], f[4], f[5], f[6]};
}

void SetLinkFlags(Board& board, int value, int rowA, int colA, int rowB, int colB)
{
    if (rowA == rowB && colB > colA) {
        board.UserRight(rowA, colA) = value;
        board.UserLeft(rowB, colB) = value;
    } else if (rowA == rowB && colB < colA) {
        board.UserLeft(rowA, colA) = value;
        board.UserRight(rowB, colB) = value;
    } else if (colA == colB && rowB > rowA) {
        board.UserDown(rowA, colA) = value;
        board.UserUp(rowB, colB) = value;
    } else if (colA == colB && rowB < rowA) {
        board.UserUp(rowA, colA) = value;
        board.UserDown(rowB, colB) = value;
    }
}

void ApplyMove(Board& board, const Move& move, LinkEntries entries)
{
    SetLinkFlags(board, move.value, move.rowA, move.colA, move.rowB, move.colB);
    const int idA = board.CellNo(move.rowA, move.colA);
    const int idB = board.CellNo(move.rowB, move.colB);
    board.NodeLinks.Set(idA, idB, move.value);
    if (entries == LinkEntries::Both)
        board.NodeLinks.Set(idB, idA, move.value);
}

Move Reversed(const Move& move)
{
    Move back = move;
    back.value = move.value == 0 ? 1 : 0;
    return back;
}

void DrawMove(Canvas& canvas, const Board& board, const DrawStyle& style, const Move& move)
{
    if (!OnBoard(board, move.rowA, move.colA) || !OnBoard(board, move.rowB, move.colB))
        return;
    DrawLink(canvas, board, style, move.value, move.rowA, move.colA, move.rowB, move.colB);
    DrawCellAsNode(canvas, board, style, move.rowA, move.colA);
    DrawCellAsNode(canvas, board, style, move.rowB, move.colB);
    if (OnBoard(board, move.linkRow, move.linkCol))
        DrawCellAsLink(canvas, board, style, move.linkRow, move.linkCol);
    if (LinkCrossesMarks(board, board.CellNo(move.rowA, move.colA), board.CellNo(move.rowB, move.colB)))
        DrawMarks(canvas, board, style);
}

} // namespace tallyon
