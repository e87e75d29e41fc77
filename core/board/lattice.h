// The node lattice of a board as bit sets: node numbers, sets of nodes and the open links
// between neighbouring nodes, which the generator, the reasoning and the tools all work on.
//
// Contract: nodes are numbered row-major over the node lattice, (GridSize + 1) to a side, at
// most 128 of them, so that a set of nodes is one 128-bit word.
#pragma once

#include "core/board/board.h"

#include <cstdint>
#include <utility>

namespace tallyon {

__extension__ typedef unsigned __int128 NodeSet;

// The most nodes a NodeSet holds; the largest board has 121.
inline constexpr int kMaxLatticeNodes = 128;

inline NodeSet NodeBit(int node) { return NodeSet{1} << node; }

// The bits set in a word, counted in the word itself: the build targets every x86-64
// processor, so the compiler's own count would be a library call on a loop.
inline int CountBits(std::uint64_t x)
{
    x -= (x >> 1) & 0x5555555555555555ULL;
    x = (x & 0x3333333333333333ULL) + ((x >> 2) & 0x3333333333333333ULL);
    x = (x + (x >> 4)) & 0x0f0f0f0f0f0f0f0fULL;
    return static_cast<int>((x * 0x0101010101010101ULL) >> 56);
}

inline int CountNodes(NodeSet set)
{
    return CountBits(static_cast<std::uint64_t>(set)) + CountBits(static_cast<std::uint64_t>(set >> 64));
}

// The lowest node of a non-empty set.
inline int LowestNode(NodeSet set)
{
    const auto low = static_cast<std::uint64_t>(set);
    return low ? __builtin_ctzll(low) : 64 + __builtin_ctzll(static_cast<std::uint64_t>(set >> 64));
}

// The open (valid) links of a board as four direction masks over the node lattice.
struct LinkGraph {
    int side = 0;      // nodes per row and per column
    NodeSet nodes = 0; // every node of the lattice
    NodeSet right = 0; // nodes with an open link to the node on their right
    NodeSet left = 0;  // ... to the node on their left
    NodeSet down = 0;  // ... to the node below
    NodeSet up = 0;    // ... to the node above

    // An empty graph (no open link) over side x side nodes.
    static LinkGraph Empty(int side);
    // The whole lattice: every link between two neighbouring nodes open.
    static LinkGraph Full(int side);
    // Opens or closes the link between two neighbouring nodes.
    void SetLink(int a, int b, bool open);
    bool IsOpen(int a, int b) const;
    // The nodes joined to any node of `from` by an open link.
    NodeSet Neighbours(NodeSet from) const;
};

// Calls visit(a, b) once for every link of a side x side node lattice, a < b.
template <typename Visit>
void ForEachLatticeLink(int side, Visit visit)
{
    for (int v = 0; v < side * side; ++v) {
        if (v % side + 1 < side)
            visit(v, v + 1);
        if (v + side < side * side)
            visit(v, v + side);
    }
}

// The node number of the node cell (row, col) of a board; row and col must be odd.
inline int NodeIndex(int gridSize, int row, int col) { return ((row - 1) / 2) * (gridSize + 1) + (col - 1) / 2; }
// The row and column of node number v's cell, the other way round.
inline int NodeRow(int gridSize, int v) { return 2 * (v / (gridSize + 1)) + 1; }
inline int NodeCol(int gridSize, int v) { return 2 * (v % (gridSize + 1)) + 1; }

// The link cell between the neighbouring nodes a and b.
struct CellAt {
    int row, col;
};
inline CellAt LinkCellBetween(int gridSize, int a, int b)
{
    return {(NodeRow(gridSize, a) + NodeRow(gridSize, b)) / 2, (NodeCol(gridSize, a) + NodeCol(gridSize, b)) / 2};
}

// Whether the link between the neighbouring nodes a and b of a numbered board is valid.
bool IsValidLink(const Board& board, int a, int b);

// The graph of the links that the link rule accepts on a fully numbered board.
LinkGraph ValidLinkGraph(const Board& board);

} // namespace tallyon
