// The path's digits: every path link made valid, one triple at a time.
//
// The trace argument is a developer aid: with 1 each step is described through ShowTrace
// (random.h). The game passes 0; tallyon-gen --trace passes 1.
#pragma once

#include "core/board/board.h"

namespace tallyon {

// Puts digits on the path so that every path link is valid.
void NumberPath(Board& board, int trace = 0);

// Fills the empty members of the triple A (node), B (link cell), C (node) so it is valid.
void CompleteTriple(Board& board, int rowA, int colA, int rowB, int colB, int rowC, int colC);

} // namespace tallyon
