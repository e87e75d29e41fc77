// The new-puzzle stage sequence: path, digits, decoys, start side and key nodes.
#include "core/generator.h"
#include "core/link_rule.h"
#include "core/path_round.h"
#include "core/random.h"

#include <cassert>
#include <memory>

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

void FillList2(Board& board)
{
    board.List2.clear();
    for (int cell : board.PathCells)
        board.List2.push_back(FormatNumber(cell));
}

int ResolveStartSide(int tag)
{
    if (tag != kSideRandom)
        return tag;
    int side = kSideLeft;
    if (RandomInt(100, 0) > 50)
        side = kSideTop;
    return side;
}

void SetKeyNodes(Board& board)
{
    const std::vector<int>& cells = board.PathCells;
    board.KeyNodes[1] = cells[HintItemIndex(cells.size())];
    board.KeyNodes[0] = cells.front();
    board.KeyNodes[2] = cells.back();
    board.StartNode = board.KeyNodes[0];
    board.EndNode = board.KeyNodes[2];
}

// CellState for play: -1 no cell, 0 a cell with a digit, 1 a node.
void PrepareCellState(Board& board)
{
    for (int r = 1; r <= board.BoardSpan; ++r)
        for (int c = 1; c <= board.BoardSpan; ++c)
            board.CellState(r, c) = board.NodeValue(r, c) > 0 ? kLinkCell : kNoCell;
    for (int r = 1; r <= board.BoardSpan; r += 2)
        for (int c = 1; c <= board.BoardSpan; c += 2)
            board.CellState(r, c) = kNodeCell;
}

} // namespace

BuildStats BuildPuzzle(Board& board, int startSideTag, int pictureWidth, int trace)
{
    ResetBoard(board, pictureWidth);
    const BuildStats stats = LayLongPath(board);
    NumberPath(board, trace);
    SpreadDecoys(board);
    FillDecoys(board, trace);
    CheckDecoys(board);
    FillList2(board);
    board.StartSide = ResolveStartSide(startSideTag);
    if (board.StartSide == kSideTop)
        TurnPath(board);
    SetKeyNodes(board);
    PrepareCellState(board);
    return stats;
}

std::size_t PathLengthWanted(int gridSize)
{
    if (gridSize == 4)
        return kPathLengthAtSize4;
    if (gridSize == 5)
        return kPathLengthAtSize5;
    return static_cast<std::size_t>(30 * gridSize);
}

std::string GridSizeText(int n) { return FormatNumber(n) + "x" + FormatNumber(n); }

} // namespace tallyon
