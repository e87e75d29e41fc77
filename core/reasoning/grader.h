// The grader: solves a puzzle the way a player does, and grades it by the kind of reasoning
// it cannot be solved without.
//
// Contract: works on the valid links of a finished board and its Start, Hint and End. Each
// grade has a set of deductions (deductions.h), each set holding the one below:
//   Easy:   dead ends and forced links, with the loop and skip-the-Hint rules: each looks at
//           one node and its links;
//   Medium: adds pockets, groups of nodes that one node joins to the rest;
//   Hard:   adds regions, groups whose ways out all lead into one chain, and, where those
//           stall, the one-step look-ahead: a link is forced and steps 1 to 4 applied until
//           they settle; a link that leads to a contradiction is dropped.
// A puzzle's grade is the lowest whose deductions solve it. Within a grade the cheapest step
// that still makes progress is applied, in the order of kStepOrder. Every deduction holds for
// every chain from Start through the Hint to End, so on a puzzle with one chain the forced
// links are always that chain's; and a puzzle it solves has just one chain, since every chain
// holds the forced links, which already join Start to End.
#pragma once

#include "core/board/board.h"
#include "core/reasoning/deductions.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace tallyon {

enum class Grade {
    Easy,   // dead ends and forced links suffice
    Medium, // it needs pockets
    Hard,   // it needs regions, or a look-ahead
};

// The steps of a grade, in the order a player tries them (look-aheads aside).
const std::vector<int>& GradeSteps(Grade grade);

struct GradeReport {
    bool solved = false;       // the deductions find the whole path
    Grade grade = Grade::Hard; // the lowest grade whose deductions solve it; Hard when none does
    int lookAheads = 0;        // links dropped by looking ahead
    int hardestStep = 0;       // the step, hardest in kStepOrder, that made progress; kLookAhead after one
    std::array<int, kLookAhead + 1> progress{}; // progress[step]: the times that step made progress
    Knowledge known; // what the deductions found: on a solved puzzle, the path is the forced links
};

// Grades the puzzle of the given valid links between nodes start, hint and end of its lattice.
GradeReport GradeChain(const LinkGraph& valid, int start, int hint, int end);

// Grades a finished board: its valid links and KeyNodes.
GradeReport GradePuzzle(const Board& board);

// What the deductions of `grade` alone find on the puzzle of the given valid links (no
// look-ahead), and whether that is the whole path: the generator's quicker question.
struct Settled {
    Knowledge known;
    bool solved = false;
};
Settled SettleWithin(Grade grade, const LinkGraph& valid, int start, int hint, int end);
bool SolvedWithin(Grade grade, const LinkGraph& valid, int start, int hint, int end);

// The board's Start, Hint and End as node numbers of its lattice.
std::array<int, 3> KeyNodeIndexes(const Board& board);

// "Easy", "Medium" or "Hard".
const char* GradeName(Grade grade);
// The grade a name stands for, in any case ("hard", "Hard"); none for any other text.
std::optional<Grade> GradeNamed(std::string_view name);

} // namespace tallyon
