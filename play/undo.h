// Undo history: taking back the newest recorded link change, and the reset of all user links.
//
// Contract: records are "value,hoverRow,hoverCol,rowA,colA,rowB,colB" at the top (index 0) of
// PlayState::undolist. Fields that are not numbers read as 0; a record naming cells off the
// current board is removed without touching the board.
#pragma once

#include "core/board.h"
#include "play/play_host.h"

namespace tallyon {

// The release handler of undoman. Button 2 asks "Clear all user entries?" and on Yes stops
// Timer2, clears every user link, redraws the board and then undoes the newest record as any
// other button does. Does nothing while the history is empty.
void UndoMove(PlayHost& host, Board& board, PlayState& state, int button);

} // namespace tallyon
