// Keyboard play: a cursor on the nodes, moved by the arrows, that links and unlinks towards a
// neighbour as a release over the link cell between them would, and marks the link that way.
//
// Contract: dRow and dCol name one of the four directions (one of them 0, the other -1 or 1).
// Nothing happens before the first puzzle. The cursor is drawn as a thin square ring in the
// user-line colour while PlayState::CursorShown is set; hiding it redraws the board.
#pragma once

#include "core/board/board.h"
#include "play/play_host.h"

namespace tallyon {

// Puts the cursor on the Start node, hidden; a new puzzle calls it.
void ResetCursor(const Board& board, PlayState& state);

// An arrow: shows the cursor and moves it to the neighbouring node, when there is one.
void MoveCursor(PlayHost& host, const Board& board, PlayState& state, int dRow, int dCol);

// Shift+arrow (button 1) and Ctrl+arrow (button 2): offers the link cell towards the
// neighbour, with the status "Use a and b to make c", and releases the button over it
// (MakeLink). A link moves the cursor on to the neighbour, so that a path is typed as a run of
// Shift+arrows.
void KeyLink(PlayHost& host, Board& board, PlayState& state, int dRow, int dCol, int button);

// Alt+arrow: toggles the player's mark ("not on the path") on the link cell towards the
// neighbour, a cross drawn on it. A mark changes neither the link cell's digit nor the links,
// and is no record of the undo history; it counts as a move for the hint key, and the game is
// kept with it. The board is drawn afresh, so that a cross taken away leaves no trace.
void ToggleMark(PlayHost& host, Board& board, PlayState& state, int dRow, int dCol);

// The mouse over the board: hides the cursor, redrawing the board without it.
void HideCursor(PlayHost& host, const Board& board, PlayState& state);

// Draws the cursor again where a redraw of the board or of a move may have covered it.
void ShowCursor(PlayHost& host, const Board& board, const PlayState& state);

} // namespace tallyon
