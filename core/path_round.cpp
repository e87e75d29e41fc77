// The path rounds: LayPath and ExpandPath repeated until the path is long enough.
#include "core/path_round.h"
#include "core/path.h"

#include <array>
#include <cassert>
#include <memory>
#include <string>
#include <vector>

namespace tallyon {
namespace {

// What a path round leaves on the board, kept for the longest round.
struct PathRound {
    std::string PathList;
    std::vector<int> PathCells;
    CellArray<int> PathLeft, PathRight, PathUp, PathDown;
    CellArray<int> CellState;
    int StartNode = 0;
    int EndNode = 0;
    std::array<int, 3> KeyNodes{};

    void Take(const Board& b)
    {
        PathList = b.PathList;
        PathCells = b.PathCells;
        PathLeft = b.PathLeft;
        PathRight = b.PathRight;
        PathUp = b.PathUp;
        PathDown = b.PathDown;
        CellState = b.CellState;
        StartNode = b.StartNode;
        EndNode = b.EndNode;
        KeyNodes = b.KeyNodes;
    }
    void Give(Board& b) const
    {
        b.PathList = PathList;
        b.PathCells = PathCells;
        b.PathLeft = PathLeft;
        b.PathRight = PathRight;
        b.PathUp = PathUp;
        b.PathDown = PathDown;
        b.CellState = CellState;
        b.StartNode = StartNode;
        b.EndNode = EndNode;
        b.KeyNodes = KeyNodes;
    }
};

int DecimalLength(int n)
{
    int length = 1;
    for (; n >= 10; n /= 10)
        ++length;
    return length;
}

// The length ExpandPath will give the node list that LayPath left: each link cell's number
// is the mean of its two nodes' numbers, and every number takes its digits and a comma.
std::size_t ExpandedLength(const Board& board)
{
    std::size_t length = board.PathList.size();
    const std::vector<int>& nodes = board.PathCells;
    for (std::size_t i = 1; i < nodes.size(); ++i)
        length += static_cast<std::size_t>(DecimalLength((nodes[i - 1] + nodes[i]) / 2) + 1);
    return length;
}

// Lays paths until one is long enough or the round bound is reached; in the latter case
// the longest path of all rounds (the first of that length) is put back. A round that is
// neither long enough nor the longest so far is dropped by the next one untouched, so its
// expansion is skipped.
} // namespace

BuildStats LayLongPath(Board& board)
{
    BuildStats stats;
    const std::size_t wanted = PathLengthWanted(board.GridSize);
    std::unique_ptr<PathRound> longest;
    for (;;) {
        if (stats.Rounds == 0)
            LayPath(board);
        else
            LayPathAgain(board);
        ++stats.Rounds;
        const std::size_t length = ExpandedLength(board);
        if (length >= wanted || !longest || length > longest->PathList.size()) {
            ExpandPath(board);
            assert(board.PathList.size() == length);
            if (length >= wanted)
                return stats;
            if (!longest)
                longest = std::make_unique<PathRound>();
            longest->Take(board);
        }
        if (stats.Rounds >= kMaxPathRounds) {
            longest->Give(board);
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
