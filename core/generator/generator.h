// The puzzle generator: the stage sequence that makes a new puzzle.
//
// The stages have headers of their own, included here for callers that run them one by
// one: the path (path.h), the path rounds (path_round.h), its digits (numbers.h) and the
// decoys (decoys.h). Trace arguments are developer aids: with 1 they describe each step
// through ShowTrace (random.h). The game passes 0; tallyon-gen --trace passes 1, for a
// developer following how a puzzle's digits came about.
#pragma once

#include "core/board/board.h"
#include "core/generator/decoys.h"
#include "core/generator/numbers.h"
#include "core/generator/path.h"
#include "core/generator/path_round.h"
#include "core/reasoning/grader.h"

#include <optional>
#include <string>

namespace tallyon {

// What BuildPuzzle did: the path rounds of the puzzle it kept, and its grade.
struct PuzzleStats {
    int Rounds = 0;        // LayPath rounds of the kept puzzle's path
    bool BoundHit = false; // that path is the longest of kMaxPathRounds rounds
    int Builds = 0;        // puzzles built until one could be solved by reasoning
    GradeReport Grading;   // the kept puzzle's
};

// Builds a whole puzzle for board.GridSize: resets the board (geometry for pictureWidth),
// lays the path, numbers it, fills the decoys, fills List2, resolves the start side from
// startSideTag (0 Random, 1 Left, 2 Top, 3 and 4 as Left), turns it for Top, picks the
// key nodes and prepares CellState for play. A puzzle that the grader cannot solve by
// reasoning is built again, from a new path, until one can; in practice the first one can.
// With a grade, the puzzle is of that grade (grader.h).
PuzzleStats BuildPuzzle(Board& board, int startSideTag, int pictureWidth, int trace = 0,
                        std::optional<Grade> grade = std::nullopt);

// The last stages of BuildPuzzle for a puzzle put back from its parts (puzzle_code.h): on a
// board with its digits, StartSide, PathCells, PathList and path flags as BuildPuzzle leaves
// them, fills List2, picks the key nodes and prepares CellState for play.
void FinishRestoredPuzzle(Board& board);

// "6x6" for 6.
std::string GridSizeText(int n);

} // namespace tallyon
