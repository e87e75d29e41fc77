// The last decoy step: which links off the path end valid, and the link digits that follow.
//
// Contract: runs on a board whose path is expanded and numbered and whose every node and
// link cell holds a digit (CellState 1 at path nodes, 3 at path link cells; PathCells set).
// For any two node digits some link digit makes a link valid and at least three make it
// invalid, so the choice is free; only off-path link cells change. Afterwards the path is
// the only simple chain of valid links from Start through the Hint to End, by the argument
// of valid_links.cpp and shortcuts.h, and most path nodes have a valid side road.
//
// With a grade, the choice is shaped so that the puzzle is of that grade (grade_shaping.h) and
// the balancing keeps it so; false when the shaping gave up, the links then left as chosen
// without it.
#pragma once

#include "core/board/board.h"
#include "core/reasoning/grader.h"

#include <optional>

namespace tallyon {

bool ChooseValidLinks(Board& board, std::optional<Grade> grade = std::nullopt);

} // namespace tallyon
