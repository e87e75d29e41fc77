// The last decoy step: which links off the path end valid, and the link digits that follow.
//
// Contract: runs on a board whose path is expanded and numbered and whose every node and
// link cell holds a digit (CellState 1 at path nodes, 3 at path link cells; PathCells set).
// For any two node digits some link digit makes a link valid and at least three make it
// invalid, so the choice is free; only off-path link cells change. Afterwards the path is
// the only simple chain of valid links from Start through the Hint to End, by the argument
// of valid_links.cpp and shortcuts.h, and most path nodes have a valid side road.
//
// With a grade, the choice is drawn as it is for no grade and kept when the puzzle happens to
// be of that grade, or, with `shape`, shaped so that it is (grade_shaping.h), the balancing
// keeping it so. False when the puzzle is not of the grade, or when most links off the path
// could not be made valid; the links are then left as chosen.
#pragma once

#include "core/board/board.h"
#include "core/reasoning/grader.h"

#include <optional>

namespace tallyon {

bool ChooseValidLinks(Board& board, std::optional<Grade> grade = std::nullopt, bool shape = true);

} // namespace tallyon
