// The decoy stages: squares of valid side roads grown beside the path, closed where they
// end on a path node, then the last empty cells filled and the path sealed.
#include "core/generator/decoys.h"
#include "core/board/link_rule.h"
#include "core/board/random.h"
#include "core/generator/decoy_fill.h"
#include "core/generator/numbers.h"
#include "core/generator/valid_links.h"

#include <array>

namespace tallyon {
namespace {

// Choices of valid links tried for one path before it is given up: first drawn as they come,
// as many times as a small board makes cheap (where a grade comes often enough that way, and
// with the look of a puzzle of no grade), then shaped for the grade.
constexpr int kShapingTries = 4;
int NaturalDraws(int gridSize) { return gridSize <= 4 ? 20 : gridSize == 5 ? 4 : 0; }

} // namespace

void DecoyTriple(Board& board, int rowA, int colA, int rowB, int colB, int rowC, int colC)
{
    int& x = board.NodeValue(rowA, colA);
    int& y = board.NodeValue(rowB, colB);
    int& z = board.NodeValue(rowC, colC);
    if (x == 0)
        x = RandomDigit();
    if (z == 0)
        z = RandomDigit();
    const int state = board.CellState(rowB, colB);
    if (state == kPathLinkMark)
        return; // a path cell keeps its digit
    if (y == 0 || IsValidTriple(x, y, z))
        y = PickLinkDigit(x, z, false);
}

namespace {

// One kind of decoy square: beside a marked segment running along seg, on the side out.
struct Block {
    int segRow, segCol; // unit step along the segment
    int outRow, outCol; // unit step towards the square
    const char* name;
};

constexpr std::array<Block, 4> kBlocks = {{
    {0, 1, 1, 0, " down dummy"},
    {0, 1, -1, 0, " up dummy"},
    {1, 0, 0, 1, " right dummy"},
    {1, 0, 0, -1, " left dummy"},
}};

// True when the square of block k beside the segment starting at node (r, c) may be built.
bool SquareFits(const Board& b, const Block& k, int r, int c)
{
    const int r1 = r + 2 * k.segRow, c1 = c + 2 * k.segCol;
    const int f0r = r + 2 * k.outRow, f0c = c + 2 * k.outCol;
    const int f1r = r1 + 2 * k.outRow, f1c = c1 + 2 * k.outCol;
    if (!OnBoard(b, r1, c1) || !OnBoard(b, f0r, f0c) || !OnBoard(b, f1r, f1c))
        return false;
    return b.CellState(r, c) != 0 && b.CellState(r + k.segRow, c + k.segCol) != 0 && b.CellState(r1, c1) != 0 &&
           b.CellState(f0r, f0c) == 0 && b.CellState(f1r, f1c) == 0;
}

// Builds the square: the entering side and the far side as valid triples, the closing
// side made invalid when it ends on a path node. Its five new cells are marked 4.
void BuildSquare(Board& b, const Block& k, int r, int c)
{
    const int r1 = r + 2 * k.segRow, c1 = c + 2 * k.segCol;
    const int f0r = r + 2 * k.outRow, f0c = c + 2 * k.outCol;
    const int f1r = r1 + 2 * k.outRow, f1c = c1 + 2 * k.outCol;
    const int e0r = r + k.outRow, e0c = c + k.outCol;   // entering link
    const int mr = f0r + k.segRow, mc = f0c + k.segCol; // far link
    const int e1r = r1 + k.outRow, e1c = c1 + k.outCol; // closing link
    CompleteTriple(b, r, c, e0r, e0c, f0r, f0c);
    CompleteTriple(b, f0r, f0c, mr, mc, f1r, f1c);
    if (b.CellState(r1, c1) == kPathNodeMark)
        DecoyTriple(b, f1r, f1c, e1r, e1c, r1, c1);
    CompleteTriple(b, f1r, f1c, e1r, e1c, r1, c1);
    for (const auto& [row, col] : {std::array<int, 2>{e0r, e0c}, {f0r, f0c}, {mr, mc}, {f1r, f1c}, {e1r, e1c}})
        b.CellState(row, col) = kDecoyMark;
}

// Runs one block over the board in scan order; builds the first fitting square only, or
// every square that fits when it is reached. Returns the number built.
int RunBlock(Board& b, const Block& k, bool firstOnly)
{
    int built = 0;
    for (int r = 1; r <= b.BoardSpan; r += 2) {
        LetPendingEventsRun();
        for (int c = 1; c <= b.BoardSpan; c += 2) {
            if (!SquareFits(b, k, r, c))
                continue;
            BuildSquare(b, k, r, c);
            ++built;
            if (firstOnly)
                return built;
        }
    }
    return built;
}

} // namespace

void SpreadDecoys(Board& board)
{
    for (const Block& k : kBlocks)
        RunBlock(board, k, false);
}

void FillDecoys(Board& board, int trace)
{
    bool found = true;
    while (found) {
        found = false;
        LetPendingEventsRun();
        for (const Block& k : kBlocks) {
            if (RunBlock(board, k, true) == 0)
                continue;
            found = true;
            if (trace == 1)
                ShowTrace(k.name);
        }
    }
}

bool CheckDecoys(Board& board, std::optional<Grade> grade)
{
    // A path node still without a digit, next to an empty cell, is closed off as a decoy.
    static constexpr std::array<std::array<int, 2>, 3> passes = {{{0, 1}, {1, 0}, {0, -1}}};
    for (const auto& p : passes)
        for (int r = 1; r <= board.BoardSpan; ++r)
            for (int c = 1; c <= board.BoardSpan; ++c) {
                const int far = 2;
                if (board.NodeValue(r, c) != 0 || board.CellState(r, c) != kPathNodeMark ||
                    !OnBoard(board, r + far * p[0], c + far * p[1]) || board.NodeValue(r + p[0], c + p[1]) != 0)
                    continue;
                DecoyTriple(board, r, c, r + p[0], c + p[1], r + far * p[0], c + far * p[1]);
                if (board.CellState(r + p[0], c + p[1]) == 0)
                    board.CellState(r + p[0], c + p[1]) = kCheckedMark;
            }
    FillEmptyCells(board);
    // Each try starts from a fresh random choice of side roads.
    const int natural = grade ? NaturalDraws(board.GridSize) : 0;
    for (int tries = 0; tries < natural + kShapingTries; ++tries)
        if (ChooseValidLinks(board, grade, tries >= natural))
            return true;
    return false;
}

} // namespace tallyon
