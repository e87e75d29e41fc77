// Linking by mouse: the pointer offers the link cell under it, a button release links or unlinks.
#include "play/linking.h"

#include "play/draw.h"
#include "play/hint.h"
#include "play/play_text.h"

#include <cmath>
#include <optional>
#include <string>

namespace tallyon {
namespace {

// The lattice coordinate under a picture coordinate, or nothing in the dead zone between two
// cells. Beyond the board's first cell it is 0 or below: the "X" beside Start lies at 0.
std::optional<int> LatticeIndex(float position, int origin, int pitch)
{
    if (pitch <= 0)
        return std::nullopt;
    const double dx = std::floor(static_cast<double>(position) - origin);
    const int u = RoundHalfEven(2.0 * dx / pitch);
    if (u % 2 != 0)
        return std::nullopt;
    return u / 2 + 1;
}

// A hover caption: the coordinate as text, or "" in a dead zone.
std::string HoverCaption(std::optional<int> index) { return index ? std::to_string(*index) : std::string(); }

void ClearHover(PlayState& state)
{
    state.HoverRow = state.HoverCol = 0;
    state.EndARow = state.EndACol = state.EndBRow = state.EndBCol = 0;
}

void ForgetEnds(PlayState& state) { state.EndARow = state.EndACol = state.EndBRow = state.EndBCol = 0; }

// The end nodes of the hovered link cell: left and right of a horizontal one, above and below
// a vertical one.
void SetEnds(PlayState& state)
{
    const int row = state.HoverRow, col = state.HoverCol;
    if (col % 2 == 0) {
        state.EndARow = row, state.EndACol = col - 1;
        state.EndBRow = row, state.EndBCol = col + 1;
    }
    if (col % 2 != 0) {
        state.EndARow = row - 1, state.EndACol = col;
        state.EndBRow = row + 1, state.EndBCol = col;
    }
}

// The link value a release writes, or -1 when it changes nothing.
int LinkValueFor(PlayHost& host, const Board& board, int button, int idA, int idB)
{
    if (button == 2)
        return (board.NodeLinks(idA, idB) == 0 || board.NodeLinks(idB, idA) == 0) ? -1 : 0;
    if (board.NodeLinks(idA, idB) == 1) {
        host.SetStatus("Lined already");
        return -1;
    }
    return 1;
}

} // namespace

void HoverCell(PlayHost& host, const Board& board, PlayState& state, float x, float y)
{
    host.SetHoverCaptions("", "");
    host.SetStatus("");
    ClearHover(state);
    if (board.List2.empty())
        return;

    const std::optional<int> colIndex = LatticeIndex(x, board.BoardLeft, board.CellPitch);
    const std::optional<int> rowIndex = LatticeIndex(y, board.BoardTop, board.CellPitch);
    host.SetHoverCaptions(HoverCaption(rowIndex), HoverCaption(colIndex));
    // Read back as numbers from the captions: an empty one reads as 0.
    const int col = colIndex.value_or(0), row = rowIndex.value_or(0);
    if (!OnBoard(board, row, col) || board.CellState(row, col) != kLinkCell)
        return;
    state.HoverRow = row;
    state.HoverCol = col;
    SetEnds(state);
    if (!OnBoard(board, state.EndARow, state.EndACol) || !OnBoard(board, state.EndBRow, state.EndBCol)) {
        ClearHover(state);
        return;
    }
    host.SetStatus("Use" + CaptionNumber(board.NodeValue(state.EndARow, state.EndACol)) + " and" +
                   CaptionNumber(board.NodeValue(row, col)) + " to make" +
                   CaptionNumber(board.NodeValue(state.EndBRow, state.EndBCol)));
}

void MakeLink(PlayHost& host, Board& board, PlayState& state, int button)
{
    if (state.EndARow < 1 || state.EndACol < 1 || state.EndBRow < 1 || state.EndBCol < 1)
        return;
    const int idA = board.CellNo(state.EndARow, state.EndACol);
    const int idB = board.CellNo(state.EndBRow, state.EndBCol);
    const int value = LinkValueFor(host, board, button, idA, idB);
    if (value >= 0) {
        const Move move{value,         state.HoverRow, state.HoverCol, state.EndARow,
                        state.EndACol, state.EndBRow,  state.EndBCol};
        ApplyMove(board, move, LinkEntries::Both);
        const std::unique_ptr<Canvas> canvas = host.OpenBoardCanvas();
        DrawMove(*canvas, board, host.Style(), move);
        state.undolist.insert(state.undolist.begin(), MoveRecord(move));
        state.redolist.clear();
    }
    ForgetEnds(state);
    host.SetCheckTimer(true);
    if (value >= 0) {
        ForgetHint(host, state);
        host.GameChanged();
    }
}

} // namespace tallyon
