// Undo history: taking back the newest recorded link change, the reset of all user links, and
// redoing what was undone.
//
// Contract: records are "value,hoverRow,hoverCol,rowA,colA,rowB,colB" at the top (index 0) of
// PlayState::undolist. Fields that are not numbers read as 0; a record naming cells off the
// current board is removed without touching the board.
#pragma once

#include "core/board/board.h"
#include "play/play_host.h"

namespace tallyon {

// The release handler of undoman. Button 2 asks "Clear all user entries?" and on Yes stops
// Timer2, clears every user link and mark, redraws the board and then undoes the newest record
// as any other button does. Does nothing while the history is empty.
// An undone record goes to the top of redolist; a reset clears redolist.
void UndoMove(PlayHost& host, Board& board, PlayState& state, int button);

// Re-applies the newest undone move as a release on the board would make it: both NodeLinks
// entries, the same drawing, a new record at the top of undolist, and Timer2 enabled. Does
// nothing while redolist is empty or before the first puzzle.
void RedoMove(PlayHost& host, Board& board, PlayState& state);

} // namespace tallyon
