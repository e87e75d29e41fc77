// The fill of the cells still without a digit, after the decoy squares.
#include "core/generator/decoy_fill.h"
#include "core/board/link_rule.h"
#include "core/board/random.h"
#include "core/generator/numbers.h"

#include <array>
#include <numeric>

namespace tallyon {

int PickLinkDigit(int a, int c, bool wantValid)
{
    std::array<int, 9> candidates{};
    int count = 0;
    for (int b = 1; b <= 9; ++b)
        if (IsValidTriple(a, b, c) == wantValid)
            candidates[static_cast<std::size_t>(count++)] = b;
    if (count == 0)
        return -1;
    return candidates[static_cast<std::size_t>(RandomInt(count, 0))];
}

namespace {

constexpr std::array<std::array<int, 2>, 4> kUnitSteps = {{{-1, 0}, {1, 0}, {0, -1}, {0, 1}}};

void MarkFilled(Board& b, int row, int col)
{
    if (b.CellState(row, col) == 0)
        b.CellState(row, col) = kCheckedMark;
}

// An empty node takes the digit that makes an already filled link valid, else it grows
// a valid triple towards a filled neighbour. False when no neighbour holds a digit yet.
bool FillNode(Board& b, int row, int col)
{
    for (const auto& d : kUnitSteps) {
        const int lr = row + d[0], lc = col + d[1], nr = row + 2 * d[0], nc = col + 2 * d[1];
        if (!OnBoard(b, nr, nc) || b.NodeValue(nr, nc) == 0 || b.NodeValue(lr, lc) == 0)
            continue;
        const MadeResult made = MakeResult(b.NodeValue(nr, nc), b.NodeValue(lr, lc));
        if (made.failed)
            continue;
        b.NodeValue(row, col) = made.c;
        MarkFilled(b, row, col);
        return true;
    }
    for (const auto& d : kUnitSteps) {
        const int lr = row + d[0], lc = col + d[1], nr = row + 2 * d[0], nc = col + 2 * d[1];
        if (!OnBoard(b, nr, nc) || b.NodeValue(nr, nc) == 0)
            continue;
        CompleteTriple(b, row, col, lr, lc, nr, nc);
        MarkFilled(b, row, col);
        MarkFilled(b, lr, lc);
        return b.NodeValue(row, col) != 0;
    }
    return false;
}

void FillLinkCell(Board& b, int row, int col)
{
    const bool across = (row % 2) == 1; // odd row: a horizontal link
    const int a = across ? b.NodeValue(row, col - 1) : b.NodeValue(row - 1, col);
    const int c = across ? b.NodeValue(row, col + 1) : b.NodeValue(row + 1, col);
    int digit = PickLinkDigit(a, c, true);
    if (digit < 0)
        digit = RandomDigit();
    b.NodeValue(row, col) = digit;
    MarkFilled(b, row, col);
}

} // namespace

void FillEmptyCells(Board& board)
{
    bool changed = true;
    while (changed) {
        changed = false;
        for (int r = 1; r <= board.BoardSpan; r += 2)
            for (int c = 1; c <= board.BoardSpan; c += 2)
                if (board.NodeValue(r, c) == 0 && FillNode(board, r, c))
                    changed = true;
    }
    for (int r = 1; r <= board.BoardSpan; ++r)
        for (int c = 1; c <= board.BoardSpan; ++c)
            if (IsLinkCell(r, c) && board.NodeValue(r, c) == 0)
                FillLinkCell(board, r, c);
}

} // namespace tallyon
