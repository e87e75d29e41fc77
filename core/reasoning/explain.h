// The solution explained: the deductions that solve a puzzle, one at a time from the valid
// links alone, in the player's words, then the path.
//
// Contract: the board holds a built puzzle (its player's links and marks play no part). The
// text has one numbered line a deduction and a last line with the path, Start first; the
// JSON holds the same as data, places counted as in wording.h.
#pragma once

#include "core/board/board.h"
#include "core/reasoning/deductions.h"

#include <string>
#include <vector>

namespace tallyon {

struct Explanation {
    std::vector<Deduction> steps;
    bool solved = false; // the deductions find the whole path
};

Explanation ExplainPuzzle(const Board& board);
std::vector<std::string> ExplanationLines(const Board& board, const Explanation& explanation);
std::string ExplanationJson(const Board& board, const Explanation& explanation);

} // namespace tallyon
