// The path walk as the new-puzzle driver repeats it, round after round.
//
// Contract: LayPathAgain(board) lays a path exactly as LayPath does, but only on a board on
// which nothing but LayPath and ExpandPath has run since the last LayPath. Those two write
// no digits, so it leaves NodeValue as it is (already clear).
// They set CellState and the path flags only on the cells listed in PathCells, so it clears
// those cells alone.
#pragma once

#include "core/board.h"

namespace tallyon {

void LayPathAgain(Board& board);

} // namespace tallyon
