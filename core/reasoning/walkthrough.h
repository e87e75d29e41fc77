// A puzzle's deductions one at a time, as a player makes them: what a hint and an explained
// solution show.
//
// Contract: from the knowledge given, Walk takes ReasoningSteps::First's deduction each time,
// or the look-ahead's where the rules stall, and passes each to `next` once it is made; it
// stops when the path is found, when nothing more can be deduced, or when `next` returns
// false.
#pragma once

#include "core/board/board.h"
#include "core/reasoning/deductions.h"

#include <functional>

namespace tallyon {

enum class WalkEnd { Solved, Stopped, Stuck };

WalkEnd Walk(const ReasoningSteps& steps, Knowledge& k, const std::function<bool(const Deduction&)>& next);

// The reasoning steps of a built board, between its Start, Hint and End.
ReasoningSteps StepsOf(const Board& board);

// The path's links, from the board's path cells (which follow the board as it is shown, turned
// or not), and the player's links and marks.
LinkSet PathLinkSet(const Board& board);
LinkSet UserLinkSet(const Board& board);
LinkSet MarkedLinkSet(const Board& board);

} // namespace tallyon
