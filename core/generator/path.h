// The path: the always-turning walk from the left edge to the right edge, its expansion with
// link cells, and the quarter turn for puzzles that start at the top.
//
// Every routine works on the Board it is given; none of them writes a digit.
#pragma once

#include "core/board/board.h"

#include <string>

namespace tallyon {

struct Step {
    int row = 0;
    int col = 0;
    char direction = 0; // 'R', 'L', 'U', 'D', or 0 when no step is proposed
};

// The step proposed for a draw v from 0 to 99: 'R' above kRightAbove, 'L' above kLeftAbove,
// 'U' above kUpAbove, else 'D', each only when the board has room that way; a draw whose
// way is closed falls through to the next rule. When no rule applies the given position is
// returned with direction 0.
inline constexpr int kStepDraws = 100; // a draw v is 0 to 99
inline constexpr int kRightAbove = 75;
inline constexpr int kLeftAbove = 50;
inline constexpr int kUpAbove = 25;
inline Step StepForDraw(const Board& board, int row, int col, int v)
{
    const int span = board.BoardSpan;
    if (col < span - 1 && v > kRightAbove)
        return {row, col + 2, 'R'};
    if (col > 2 && v > kLeftAbove)
        return {row, col - 2, 'L'};
    if (row > 2 && v > kUpAbove)
        return {row - 2, col, 'U'};
    if (row < span - 1)
        return {row + 2, col, 'D'};
    return {row, col, 0};
}

// Proposes one step from a node: StepForDraw for a fresh draw from 0 to 99.
Step ChooseStep(const Board& board, int row, int col);

// The fewest tries of the walk that can still reach the right edge from column col (col
// before the right edge), the last accepted step being `last`: the walk never steps right
// twice in a row, so each step right but the first needs another step between. An attempt
// with fewer tries left is abandoned at once.
inline int TriesToRightEdge(int boardSpan, int col, char last)
{
    const int rights = (boardSpan - col) / 2; // one "R" per two columns
    return last == 'R' ? 2 * rights : 2 * rights - 1;
}

// Appends "<cell>," to PathList and cell to PathCells.
void AppendPathCell(Board& board, int cell);

// The path flags of one step of the walk from node (row, col) to node (newRow, newCol), in the
// direction 'L', 'R', 'U' or 'D': the way out at the first node, the way back at the second.
void SetStepFlags(Board& board, int row, int col, int newRow, int newCol, char dir);

// Lays a node path from the left edge to the right edge (always turning).
void LayPath(Board& board);

struct WalkTables;
struct WalkNodes;
// Writes a walk (walk.h) as LayPath leaves its path: PathList and PathCells with its nodes'
// numbers, the path flags of each step, StartNode, EndNode and KeyNodes 0 and 2. The path
// marks of CellState and the flags must be clear where the walk goes.
void WriteWalk(Board& board, const WalkTables& tables, const WalkNodes& walk);

// Lays a path exactly as LayPath does, but only on a board on which nothing but LayPath and
// ExpandPath has run since the last LayPath. Those two write no digits, so NodeValue is left
// as it is (already clear); they set CellState and the path flags only on the cells listed
// in PathCells, so only those cells are cleared.
void LayPathAgain(Board& board);

// The letters of the solution's links at a node in the order U, D, R, L; "X" outside.
std::string PathLinks(const Board& board, int row, int col);

// Rewrites PathList with the link cells between the nodes and marks CellState 1 / 3.
void ExpandPath(Board& board);

// Turns the finished puzzle a quarter turn clockwise so that the path starts at the top:
// the digits, CellState and the path held in PathCells, and with it PathList and List2.
void TurnPath(Board& board);

} // namespace tallyon
