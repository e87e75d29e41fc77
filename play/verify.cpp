// Verification: the arithmetic of every user link, the shape of the user's chain, and whether
// it is exactly the generated path.
#include "play/verify.h"

#include "core/board/link_rule.h"

#include <array>

namespace tallyon {
namespace {

const char* const kWrongMath = "Incorrect Math";
const char* const kLoop = "User links may be in a loop";
const char* const kOverused = "A node is used more than twice";
const char* const kNotSolved = "Not solved: Connect Start to End and use the Hint Node";
const char* const kSolved = "All Done !";

struct Direction {
    int dRow, dCol;
    CellArray<int> Board::*flag;
    CellArray<int> Board::*path;
};

// The order in which the links of one node are checked and compared.
const std::array<Direction, 4> kDirections = {{
    {0, -1, &Board::UserLeft, &Board::PathLeft},
    {0, 1, &Board::UserRight, &Board::PathRight},
    {-1, 0, &Board::UserUp, &Board::PathUp},
    {1, 0, &Board::UserDown, &Board::PathDown},
}};

// True when some node's user links differ from the generated path's.
bool DiffersFromPath(const Board& board)
{
    for (int row = 1; row <= board.BoardSpan; row += 2)
        for (int col = 1; col <= board.BoardSpan; col += 2)
            for (const Direction& d : kDirections)
                if ((board.*d.flag)(row, col) != (board.*d.path)(row, col))
                    return true;
    return false;
}

bool KeyNodeLinked(const Board& board, int cellNo)
{
    if (cellNo < 0 || cellNo > CellNumberArray::Hi)
        return false;
    const int row = board.CellRow[cellNo], col = board.CellCol[cellNo];
    if (row < CellArray<int>::Lo || row > CellArray<int>::Hi || col < CellArray<int>::Lo || col > CellArray<int>::Hi)
        return false;
    return !LinkLetters(board, row, col).empty();
}

} // namespace

int CheckMath(int a, int b, int c) { return IsValidTripleAsVerified(a, b, c) ? 0 : -1; }

int NodeDegree(const Board& board, int row, int col)
{
    return board.UserLeft(row, col) + board.UserRight(row, col) + board.UserUp(row, col) + board.UserDown(row, col);
}

std::string LinkLetters(const Board& board, int row, int col)
{
    std::string letters;
    if (board.UserLeft(row, col) == 1)
        letters = "L" + letters;
    if (board.UserRight(row, col) == 1)
        letters = "R" + letters;
    if (board.UserDown(row, col) == 1)
        letters = "D" + letters;
    if (board.UserUp(row, col) == 1)
        letters = "U" + letters;
    return letters;
}

CheckResult CheckSolution(const Board& board)
{
    int ends = 0, overused = 0, links = 0;
    for (int row = 1; row <= board.BoardSpan; row += 2) {
        for (int col = 1; col <= board.BoardSpan; col += 2) {
            const int degree = NodeDegree(board, row, col);
            ends += degree == 1 ? 1 : 0;
            overused += degree > 2 ? 1 : 0;
            for (const Direction& d : kDirections) {
                if ((board.*d.flag)(row, col) != 1)
                    continue;
                ++links;
                const int linkRow = row + d.dRow, linkCol = col + d.dCol;
                const int c = board.NodeValue(row + 2 * d.dRow, col + 2 * d.dCol);
                if (CheckMath(board.NodeValue(row, col), board.NodeValue(linkRow, linkCol), c) != 0)
                    return {kWrongMath, linkRow, linkCol, kStatusWrongMath};
            }
        }
    }
    if (links > 0 && ends == 0)
        return {kLoop, 0, 0, kStatusStructure};
    if (links > 0 && overused >= 1)
        return {kOverused, 0, 0, kStatusStructure};

    CheckResult notSolved{kNotSolved, 0, 0, kStatusNotSolved};
    for (int key : {board.KeyNodes[0], board.KeyNodes[2], board.KeyNodes[1]})
        if (!KeyNodeLinked(board, key))
            return notSolved;
    if (DiffersFromPath(board))
        return notSolved;
    return {kSolved, 0, 0, kStatusSolved};
}

void VerifyPress(PlayHost& host, const Board& board)
{
    if (board.List2.empty())
        return;
    host.HideErrorMarker();
    const CheckResult result = CheckSolution(board);
    if (result.row != 0) {
        const int q = board.QuarterPitch;
        host.ShowErrorMarker(board.CellX(result.row, result.column) - q, board.CellY(result.row, result.column) - q,
                             2 * q);
    }
    host.SetStatus(result.message);
}

void VerifyRelease(PlayHost& host, const Board& board)
{
    if (board.List2.empty())
        return;
    host.HideErrorMarker();
    host.SetStatus("");
}

void Timer2Tick(PlayHost& host, const Board& board)
{
    if (board.List2.empty())
        return;
    host.SetIndicator(fixed::Green);
    const CheckResult result = CheckSolution(board);
    if (result.row > 0 || result.status != 0)
        host.SetIndicator(fixed::Red);
}

} // namespace tallyon
