// The grader: solves a puzzle the way a player does, and says how hard that was.
//
// Contract: works on the valid links of a finished board and its Start, Hint and End. It
// applies the cheapest of the steps of deductions.h that still makes progress, and when none
// of steps 1 to 4 does, looks one step ahead: it forces one possible link and applies steps 1
// to 4 until they settle; a link that leads to a contradiction is dropped. It never looks
// further ahead than that. Every deduction holds for every chain from Start through the
// Hint to End, so on a puzzle with one chain the forced links are always that chain's; and
// a puzzle it solves has just one chain, since every chain holds the forced links, which
// already join Start to End.
#pragma once

#include "core/board/board.h"
#include "core/reasoning/deductions.h"

namespace tallyon {

enum class Grade {
    Easy,   // dead ends, pockets and forced links suffice
    Medium, // it needs the regions, or one or two look-aheads
    Hard,   // it needs three look-aheads or more
};

inline constexpr int kHardLookAheads = 3;

struct GradeReport {
    bool solved = false; // the steps find the whole path
    int lookAheads = 0;  // links dropped by looking ahead
    int hardestStep = 0; // the costliest step that made progress (ReasoningStep), 0 for none
    Grade grade = Grade::Easy;
    Knowledge known; // what the steps found: on a solved puzzle, the path is the forced links
};

// Grades the puzzle of the given valid links between nodes start, hint and end of its lattice.
GradeReport GradeChain(const LinkGraph& valid, int start, int hint, int end);

// Grades a finished board: its valid links and KeyNodes.
GradeReport GradePuzzle(const Board& board);

// "Easy", "Medium" or "Hard".
const char* GradeName(Grade grade);

} // namespace tallyon
