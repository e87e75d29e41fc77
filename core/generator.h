// The puzzle generator: the path, its digits, the decoys, and the stage sequence.
//
// Every routine works on the Board it is given. Trace arguments are developer aids: with 1
// they describe each step through ShowTrace (random.h). The game passes 0; tallyon-gen
// --trace passes 1, for a developer following how a puzzle's digits came about.
#pragma once

#include "core/board.h"

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
int TriesToRightEdge(int boardSpan, int col, char last);

// Lays a node path from the left edge to the right edge (always turning).
void LayPath(Board& board);

// The letters of the solution's links at a node in the order U, D, R, L; "X" outside.
std::string PathLinks(const Board& board, int row, int col);

// Rewrites PathList with the link cells between the nodes and marks CellState 1 / 3.
void ExpandPath(Board& board);

// Turns the finished puzzle a quarter turn clockwise so that the path starts at the top:
// the digits, CellState and the path held in PathCells, and with it PathList and List2.
void TurnPath(Board& board);

// Puts digits on the path so that every path link is valid.
void NumberPath(Board& board, int trace = 0);

// Fills the empty members of the triple A (node), B (link cell), C (node) so it is valid.
void CompleteTriple(Board& board, int rowA, int colA, int rowB, int colB, int rowC, int colC);

// Fills the empty members of a triple and gives its link cell a digit that makes it invalid.
// Digits of path cells are never changed.
void DecoyTriple(Board& board, int rowA, int colA, int rowB, int colB, int rowC, int colC);

// The three decoy stages, always in this order.
void SpreadDecoys(Board& board);
void FillDecoys(Board& board, int trace = 0);
void CheckDecoys(Board& board);

struct BuildStats {
    int Rounds = 0;        // LayPath rounds used
    bool BoundHit = false; // the path never reached its length within the round bound
};

// The most LayPath rounds a puzzle may use before the longest path found is taken.
inline constexpr int kMaxPathRounds = 5000;

// The walk cannot reach 30 * GridSize characters on the two smallest boards, and the
// longest walk there is nearly always the same one, so every puzzle would share its path.
// These lengths are reached in about one round in nine and leave many different paths.
inline constexpr std::size_t kPathLengthAtSize4 = 60;
inline constexpr std::size_t kPathLengthAtSize5 = 90;

// The PathList length, in characters, that BuildPuzzle lays paths until it reaches.
std::size_t PathLengthWanted(int gridSize);

// Builds a whole puzzle for board.GridSize: resets the board (geometry for pictureWidth),
// lays the path, numbers it, fills the decoys, fills List2, resolves the start side from
// startSideTag (0 Random, 1 Left, 2 Top, 3 and 4 as Left), turns it for Top, picks the
// key nodes and prepares CellState for play.
BuildStats BuildPuzzle(Board& board, int startSideTag, int pictureWidth, int trace = 0);

// "6x6" for 6.
std::string GridSizeText(int n);

} // namespace tallyon
