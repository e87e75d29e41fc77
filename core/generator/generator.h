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
    bool GaveUp = false;   // the build bound ran out: the board holds the last puzzle built
    GradeReport Grading;   // the kept puzzle's
};

// Builds a whole puzzle for board.GridSize: resets the board (geometry for pictureWidth),
// lays the path, numbers it, fills the decoys, fills List2, resolves the start side from
// startSideTag (0 Random, 1 Left, 2 Top, 3 and 4 as Left), turns it for Top, picks the
// key nodes and prepares CellState for play. With a grade, the decoys are shaped for a puzzle
// of that grade (grader.h). A puzzle whose decoys could not be chosen so that most links off
// the path are valid (and, with a grade, that it is of that grade), or that the grader cannot
// solve by reasoning, is built again, from a new path; in practice the first one will do.
PuzzleStats BuildPuzzle(Board& board, int startSideTag, int pictureWidth, int trace = 0,
                        std::optional<Grade> grade = std::nullopt);

// A bound on the puzzles one BuildPuzzle call builds before it gives up, for the whole
// process; 0, the default, for none: the game waits for its puzzle however long that takes.
// Tools and tests set one, so that a generator that can no longer make what is asked for
// stops with a result that says so (PuzzleStats::GaveUp) instead of running on.
void SetBuildBound(int builds);

// The last stages of BuildPuzzle for a puzzle put back from its parts (puzzle_code.h): on a
// board with its digits, StartSide, PathCells, PathList and path flags as BuildPuzzle leaves
// them, fills List2, picks the key nodes and prepares CellState for play.
void FinishRestoredPuzzle(Board& board);

// "6x6" for 6.
std::string GridSizeText(int n);

} // namespace tallyon
