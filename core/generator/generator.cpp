// The new-puzzle stage sequence: path, digits, decoys, start side and key nodes.
#include "core/generator/generator.h"
#include "core/board/link_rule.h"
#include "core/board/random.h"

namespace tallyon {
namespace {

int buildBound = 0;

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

PuzzleStats BuildPuzzle(Board& board, int startSideTag, int pictureWidth, int trace, std::optional<Grade> grade)
{
    PuzzleStats stats;
    do {
        ++stats.Builds;
        ResetBoard(board, pictureWidth);
        const BuildStats path = LayLongPath(board);
        stats.Rounds = path.Rounds;
        stats.BoundHit = path.BoundHit;
        NumberPath(board, trace);
        SpreadDecoys(board);
        FillDecoys(board, trace);
        const bool decoysChosen = CheckDecoys(board, grade);
        FillList2(board);
        board.StartSide = ResolveStartSide(startSideTag);
        if (board.StartSide == kSideTop)
            TurnPath(board);
        SetKeyNodes(board);
        PrepareCellState(board);
        stats.Grading = GradePuzzle(board);
        if (decoysChosen && stats.Grading.solved && (!grade || stats.Grading.grade == *grade))
            return stats;
    } while (buildBound <= 0 || stats.Builds < buildBound);
    stats.GaveUp = true;
    return stats;
}

void SetBuildBound(int builds) { buildBound = builds; }

void FinishRestoredPuzzle(Board& board)
{
    FillList2(board);
    if (board.StartSide == kSideTop)
        board.List3 = board.List2; // as the quarter turn leaves it
    SetKeyNodes(board);
    PrepareCellState(board);
}

std::string GridSizeText(int n) { return FormatNumber(n) + "x" + FormatNumber(n); }

} // namespace tallyon
