// The fill of cells still without a digit and the seal of the path (end of the decoy stages).
#include "core/decoy_fill.h"
#include "core/generator.h"
#include "core/link_rule.h"
#include "core/random.h"

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

bool Inside(const Board& b, int row, int col)
{
    return row >= 1 && row <= b.BoardSpan && col >= 1 && col <= b.BoardSpan;
}

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
        if (!Inside(b, nr, nc) || b.NodeValue(nr, nc) == 0 || b.NodeValue(lr, lc) == 0)
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
        if (!Inside(b, nr, nc) || b.NodeValue(nr, nc) == 0)
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

namespace {

// Union-find over the nodes of the lattice, numbered row-major.
struct NodeGroups {
    std::array<int, 14 * 14> parent{};
    int perRow = 0;
    explicit NodeGroups(int span) : perRow((span + 1) / 2) { std::iota(parent.begin(), parent.end(), 0); }
    int Id(int row, int col) const { return ((row - 1) / 2) * perRow + (col - 1) / 2; }
    int Find(int x)
    {
        while (parent[static_cast<std::size_t>(x)] != x) {
            parent[static_cast<std::size_t>(x)] = parent[static_cast<std::size_t>(parent[static_cast<std::size_t>(x)])];
            x = parent[static_cast<std::size_t>(x)];
        }
        return x;
    }
    void Join(int x, int y) { parent[static_cast<std::size_t>(Find(x))] = Find(y); }
};

struct LinkEnds {
    int ra, ca, rc, cc;
};

LinkEnds EndsOf(int row, int col)
{
    if (row % 2 == 1)
        return {row, col - 1, row, col + 1};
    return {row - 1, col, row + 1, col};
}

bool IsValidLink(const Board& b, int row, int col)
{
    const LinkEnds e = EndsOf(row, col);
    return IsValidTriple(b.NodeValue(e.ra, e.ca), b.NodeValue(row, col), b.NodeValue(e.rc, e.cc));
}

void MakeInvalid(Board& b, int row, int col)
{
    const LinkEnds e = EndsOf(row, col);
    const int digit = PickLinkDigit(b.NodeValue(e.ra, e.ca), b.NodeValue(e.rc, e.cc), false);
    if (digit > 0)
        b.NodeValue(row, col) = digit;
}

} // namespace

void SealPath(Board& board)
{
    const int span = board.BoardSpan;
    NodeGroups groups(span);
    auto onPath = [&](int r, int c) { return board.CellState(r, c) == kPathNodeMark; };
    for (int r = 1; r <= span; ++r)
        for (int c = 1; c <= span; ++c) {
            if (!IsLinkCell(r, c))
                continue;
            const LinkEnds e = EndsOf(r, c);
            if (!onPath(e.ra, e.ca) && !onPath(e.rc, e.cc) && IsValidLink(board, r, c))
                groups.Join(groups.Id(e.ra, e.ca), groups.Id(e.rc, e.cc));
        }
    // The path node each group keeps its side road to (cell number), 0 while it has none.
    std::array<int, 14 * 14> keptNode{};
    for (int r = 1; r <= span; ++r)
        for (int c = 1; c <= span; ++c) {
            if (!IsLinkCell(r, c) || board.CellState(r, c) == kPathLinkMark || !IsValidLink(board, r, c))
                continue;
            const LinkEnds e = EndsOf(r, c);
            const bool pathA = onPath(e.ra, e.ca), pathC = onPath(e.rc, e.cc);
            if (pathA && pathC) {
                MakeInvalid(board, r, c);
            } else if (pathA || pathC) {
                const int root = pathA ? groups.Find(groups.Id(e.rc, e.cc)) : groups.Find(groups.Id(e.ra, e.ca));
                const int pathNode = pathA ? board.CellNo(e.ra, e.ca) : board.CellNo(e.rc, e.cc);
                int& kept = keptNode[static_cast<std::size_t>(root)];
                if (kept == 0)
                    kept = pathNode;
                else if (kept != pathNode)
                    MakeInvalid(board, r, c);
            }
        }
}

} // namespace tallyon
