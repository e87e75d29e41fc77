// A link change as a value: made by a button release, taken back by undo.
//
// Contract: a Move names a link cell and its two end nodes, A left of or above the link cell
// and B right of or below it, and the value written: 1 links, 0 unlinks. Applying a move
// writes the board state only; DrawMove redraws exactly the cells a move touched. The undo
// history keeps moves as record texts, written and read here alone.
#pragma once

#include "core/board/board.h"
#include "platform/canvas.h"
#include "play/play_host.h"

#include <string>

namespace tallyon {

struct Move {
    int value = 0;
    int linkRow = 0, linkCol = 0;
    int rowA = 0, colA = 0;
    int rowB = 0, colB = 0;
};

// The undo record of a move: "value,linkRow,linkCol,rowA,colA,rowB,colB".
std::string MoveRecord(const Move& move);
// The move of an undo record; a field that is not a number reads as 0, a missing one too.
Move ParseMoveRecord(const std::string& record);

// Which NodeLinks entries a move writes. A link made by the mouse writes both. Undo writes
// only the A-to-B entry, so a link brought back by undo is not fully restored: the B-to-A
// entry stays 0, a right release can no longer remove it (that needs both entries) and a left
// release reports "Lined already". Players meet this and the game keeps it.
enum class LinkEntries { Both, AToBOnly };

// Writes the move's value into the user direction flags of both ends and into NodeLinks.
void ApplyMove(Board& board, const Move& move, LinkEntries entries);

// The move that takes `move` back: the same cells, the other value.
Move Reversed(const Move& move);

// Writes a link value into the user direction flags of the two end nodes.
void SetLinkFlags(Board& board, int value, int rowA, int colA, int rowB, int colB);

// Redraws what the move touched: its line (drawn or erased), both end nodes and the link cell
// on top of it, and the Start, Hint and End marks when the move ends at one of them, as the
// line and the redrawn node would otherwise cut its ring. Ends off the board draw nothing.
void DrawMove(Canvas& canvas, const Board& board, const DrawStyle& style, const Move& move);

} // namespace tallyon
