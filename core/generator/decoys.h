// The decoys: the digits off the path, laid in squares beside it, then the choice of which
// off-path links end valid (valid_links.h).
//
// Contract: the path is expanded and numbered. Digits of path cells are never changed.
#pragma once

#include "core/board/board.h"
#include "core/reasoning/grader.h"

#include <optional>

namespace tallyon {

// Fills the empty members of a triple and gives its link cell a digit that makes it invalid.
// Digits of path cells are never changed.
void DecoyTriple(Board& board, int rowA, int colA, int rowB, int colB, int rowC, int colC);

// The three decoy stages, always in this order. With a grade, the last shapes the decoys for a
// puzzle of that grade (valid_links.h) and says whether it could.
void SpreadDecoys(Board& board);
void FillDecoys(Board& board, int trace = 0);
bool CheckDecoys(Board& board, std::optional<Grade> grade = std::nullopt);

} // namespace tallyon
