// Path generation: the always-turning walk from the left edge to the right edge, its
// expansion with link cells, and the quarter turn for puzzles that start at the top.
#include "core/generator/path.h"
#include "core/board/link_rule.h"
#include "core/board/random.h"
#include "core/generator/walk.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cstring>
#include <utility>

namespace tallyon {

// Appends "<n>," to PathList without going through a temporary string, and n to PathCells.
void AppendPathCell(Board& b, int n)
{
    char digits[16];
    auto [end, ec] = std::to_chars(digits, digits + sizeof digits - 1, n);
    (void)ec;
    *end++ = ',';
    b.PathList.append(digits, static_cast<std::size_t>(end - digits));
    b.PathCells.push_back(n);
}

// Sets the two flags of one step, one at each end.
void SetStepFlags(Board& b, int row, int col, int newRow, int newCol, char dir)
{
    switch (dir) {
    case 'L':
        b.PathLeft(row, col) = 1;
        b.PathRight(newRow, newCol) = 1;
        break;
    case 'R':
        b.PathRight(row, col) = 1;
        b.PathLeft(newRow, newCol) = 1;
        break;
    case 'U':
        b.PathUp(row, col) = 1;
        b.PathDown(newRow, newCol) = 1;
        break;
    case 'D':
        b.PathDown(row, col) = 1;
        b.PathUp(newRow, newCol) = 1;
        break;
    default:
        break;
    }
}

namespace {

void ClearPathList(Board& b)
{
    b.PathList.clear();
    b.PathCells.clear();
}

void ClearFlagsAt(Board& b, int row, int col)
{
    b.PathLeft(row, col) = 0;
    b.PathRight(row, col) = 0;
    b.PathUp(row, col) = 0;
    b.PathDown(row, col) = 0;
}

// Sets every cell from (1, 1) to (span, span) in storage order to 0: the board's cells and,
// between its rows, cells outside the board, which hold 0 anyway.
void ClearBoardCells(CellArray<int>& cells, int span)
{
    int* first = &cells(1, 1);
    const int* last = &cells(span, span);
    std::memset(first, 0, static_cast<std::size_t>(last - first + 1) * sizeof(int));
}

} // namespace

Step ChooseStep(const Board& board, int row, int col) { return StepForDraw(board, row, col, RandomInt(kStepDraws, 0)); }

namespace {

void ClearPathMarks(Board& board)
{
    for (CellArray<int>* cells : {&board.CellState, &board.PathLeft, &board.PathRight, &board.PathUp, &board.PathDown})
        ClearBoardCells(*cells, board.BoardSpan);
}

} // namespace

void WriteWalk(Board& board, const WalkTables& tables, const WalkNodes& walk)
{
    ClearPathList(board);
    for (int i = 0; i < walk.count; ++i) {
        const int v = walk.node[static_cast<std::size_t>(i)];
        AppendPathCell(board, tables.cellNo[static_cast<std::size_t>(v)]);
        if (i == 0)
            continue;
        const int u = walk.node[static_cast<std::size_t>(i - 1)];
        const char dir = v == u + 1 ? 'R' : v == u - 1 ? 'L' : v > u ? 'D' : 'U';
        SetStepFlags(board, NodeRow(board.GridSize, u), NodeCol(board.GridSize, u), NodeRow(board.GridSize, v),
                     NodeCol(board.GridSize, v), dir);
    }
    board.StartNode = board.PathCells.front();
    board.EndNode = board.PathCells.back();
    board.KeyNodes[0] = board.StartNode;
    board.KeyNodes[2] = board.EndNode;
}

void LayPath(Board& board)
{
    // Cells outside 1..BoardSpan are written only by ResetBoard's clearing, so clearing
    // the board's own cells clears the whole arrays.
    ClearBoardCells(board.NodeValue, board.BoardSpan);
    ClearPathMarks(board);
    const WalkTables tables(board);
    WalkNodes walk;
    WalkToRightEdge(tables, walk);
    WriteWalk(board, tables, walk);
}

void LayPathAgain(Board& board)
{
    for (int cell : board.PathCells) {
        const int row = board.CellRow[cell];
        const int col = board.CellCol[cell];
        board.CellState(row, col) = 0;
        ClearFlagsAt(board, row, col);
    }
    const WalkTables tables(board);
    WalkNodes walk;
    WalkToRightEdge(tables, walk);
    WriteWalk(board, tables, walk);
}

std::string PathLinks(const Board& board, int row, int col)
{
    if (row < 1 || row > board.BoardSpan || col < 1 || col > board.BoardSpan)
        return "X";
    // Each letter goes in front of the others, "L" first, so they read U, D, R, L.
    char links[4];
    int n = 0;
    if (board.PathUp(row, col) == 1)
        links[n++] = 'U';
    if (board.PathDown(row, col) == 1)
        links[n++] = 'D';
    if (board.PathRight(row, col) == 1)
        links[n++] = 'R';
    if (board.PathLeft(row, col) == 1)
        links[n++] = 'L';
    return std::string(links, static_cast<std::size_t>(n));
}

namespace {

// Removes the letter of the way back from a node's links.
void RemoveLetter(std::string& links, char back)
{
    const std::size_t at = links.find(back);
    if (at != std::string::npos)
        links.erase(at, 1);
}

} // namespace

void ExpandPath(Board& board)
{
    int row = board.CellRow[board.StartNode];
    int col = board.CellCol[board.StartNode];
    ClearPathList(board);
    AppendPathCell(board, board.StartNode);
    board.CellState(row, col) = kPathNodeMark;
    std::string pending = PathLinks(board, row, col);
    for (;;) {
        LetPendingEventsRun();
        if (board.CellNo(row, col) == board.EndNode) {
            board.CellState(row, col) = kPathNodeMark;
            return;
        }
        if (pending.size() != 1)
            return;
        int dr = 0, dc = 0;
        char back = 0;
        switch (pending[0]) {
        case 'D':
            dr = 1;
            back = 'U';
            break;
        case 'R':
            dc = 1;
            back = 'L';
            break;
        case 'L':
            dc = -1;
            back = 'R';
            break;
        case 'U':
            dr = -1;
            back = 'D';
            break;
        default:
            return;
        }
        AppendPathCell(board, board.CellNo(row + dr, col + dc));
        AppendPathCell(board, board.CellNo(row + 2 * dr, col + 2 * dc));
        board.CellState(row + dr, col + dc) = kPathLinkMark;
        board.CellState(row + 2 * dr, col + 2 * dc) = kPathNodeMark;
        row += 2 * dr;
        col += 2 * dc;
        pending = PathLinks(board, row, col);
        RemoveLetter(pending, back);
    }
}

void TurnPath(Board& board)
{
    const int span = board.BoardSpan;
    const std::vector<int> cells = board.PathCells;
    ClearPathList(board);
    board.List3.clear();
    for (int k : cells) {
        const int turned = board.CellNo(board.CellCol[k], span + 1 - board.CellRow[k]);
        board.List3.push_back(FormatNumber(turned));
        AppendPathCell(board, turned);
    }

    CellArray<int> values;
    CellArray<int> states;
    for (int r = 1; r <= span; ++r) {
        for (int c = 1; c <= span; ++c) {
            values(r, c) = board.NodeValue(r, c);
            states(r, c) = board.CellState(r, c);
        }
    }
    for (int r = 1; r <= span; ++r) {
        for (int c = 1; c <= span; ++c) {
            board.NodeValue(c, span + 1 - r) = values(r, c);
            board.CellState(c, span + 1 - r) = states(r, c);
        }
    }
    board.List2 = board.List3;
}

} // namespace tallyon
