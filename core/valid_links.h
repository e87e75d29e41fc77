// The last decoy step: which links off the path end valid, and the link digits that follow.
//
// Contract: runs on a board whose path is expanded and numbered and whose every node and
// link cell holds a digit (CellState 1 at path nodes, 3 at path link cells; PathCells set).
// For any two node digits some link digit makes a link valid and at least three make it
// invalid, so the choice is free; only off-path link cells change. Afterwards the path is
// the only simple chain of valid links from Start through the Hint to End, by the argument
// of valid_links.cpp and the chain solver's proofs, and most path nodes have a valid side
// road.
#pragma once

#include "core/board.h"

namespace tallyon {

// Steps the solver may take to prove one extra valid link harmless; past it the link stays
// invalid, so a doubtful puzzle is never made.
inline constexpr long kLinkProofBudget = 4000;

void ChooseValidLinks(Board& board);

} // namespace tallyon
