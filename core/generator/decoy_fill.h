// The cells the decoy squares left without a digit.
//
// Contract: these routines run on a board whose path is numbered (CellState 1 at path nodes,
// 3 at path link cells, as during generation). They never change a path cell's digit and
// leave gap cells (both coordinates even) at 0.
#pragma once

#include "core/board/board.h"

namespace tallyon {

// A random digit b in 1..9 for which IsValidTriple(a, b, c) equals wantValid, or -1 when no
// digit qualifies. For two digits 1..9 both kinds always exist (at least three make a link
// invalid; 1 or the difference always makes it valid).
int PickLinkDigit(int a, int c, bool wantValid);

// Gives every node and link cell in 1..BoardSpan that still holds 0 a digit, preferring
// digits that make links valid, and marks each such cell 5 in CellState.
void FillEmptyCells(Board& board);

} // namespace tallyon
