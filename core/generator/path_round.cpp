// The path rounds: LayPath and ExpandPath repeated until the path is long enough.
#include "core/generator/path_round.h"
#include "core/generator/path.h"
#include "core/generator/walk.h"

#include <cassert>

namespace tallyon {
namespace {

void ClearForWalk(Board& board)
{
    for (CellArray<int>* cells :
         {&board.NodeValue, &board.CellState, &board.PathLeft, &board.PathRight, &board.PathUp, &board.PathDown})
        for (int r = 1; r <= board.BoardSpan; ++r)
            for (int c = 1; c <= board.BoardSpan; ++c)
                (*cells)(r, c) = 0;
}

// Lays the walk on the board and expands it, as LayPath and ExpandPath leave a path.
void Lay(Board& board, const WalkTables& tables, const WalkNodes& walk)
{
    ClearForWalk(board);
    WriteWalk(board, tables, walk);
    ExpandPath(board);
}

} // namespace

// The rounds are drawn over the lattice alone; only the round that is kept (long enough, or
// the longest of all when the bound is reached, the first of that length) is written to the
// board and expanded.
BuildStats LayLongPath(Board& board)
{
    BuildStats stats;
    const std::size_t wanted = PathLengthWanted(board.GridSize);
    const WalkTables tables(board);
    WalkNodes walk, longest;
    std::size_t longestLength = 0;
    for (;;) {
        WalkToRightEdge(tables, walk);
        ++stats.Rounds;
        const std::size_t length = ExpandedLength(tables, walk);
        if (length >= wanted) {
            Lay(board, tables, walk);
            assert(board.PathList.size() == length);
            return stats;
        }
        if (length > longestLength) {
            longest = walk;
            longestLength = length;
        }
        if (stats.Rounds >= kMaxPathRounds) {
            Lay(board, tables, longest);
            stats.BoundHit = true;
            return stats;
        }
    }
}

std::size_t PathLengthWanted(int gridSize)
{
    if (gridSize == 4)
        return kPathLengthAtSize4;
    if (gridSize == 5)
        return kPathLengthAtSize5;
    return static_cast<std::size_t>(30 * gridSize);
}

} // namespace tallyon
