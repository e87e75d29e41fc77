// The last decoy step: which links off the path end valid, and the link digits that follow.
//
// Contract: runs on a board whose path is expanded and numbered and whose every node and
// link cell holds a digit (CellState 1 at path nodes, 3 at path link cells; PathCells set).
// For any two node digits some link digit makes a link valid and at least three make it
// invalid, so the choice is free; only off-path link cells change. Afterwards the path is
// the only simple chain of valid links from Start through the Hint to End, by the argument
// of valid_links.cpp and shortcuts.h, and most path nodes have a valid side road.
#pragma once

#include "core/board/board.h"

namespace tallyon {

void ChooseValidLinks(Board& board);

} // namespace tallyon
