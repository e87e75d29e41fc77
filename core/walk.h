// The always-turning walk drawn over the node lattice alone: the draws of LayPath, with
// nothing written to the board until the caller takes a walk that reached the right edge.
//
// Contract: WalkTables are made for a board whose BoardSpan is set (ResetBoard). A walk's
// nodes are numbered as in chain_solver.h. The walk makes exactly the draws LayPath makes, in
// the same order, and refuses exactly the nodes that IsOnPath would find in the path list:
// a node is used once its cell number, or a number whose decimal tail it is, is listed (3 is
// used once 13 is).
#pragma once

#include "core/board.h"
#include "core/chain_solver.h"

#include <array>
#include <cstddef>

namespace tallyon {

// The draws 0 to 99 fall into four bands, one per rule of StepForDraw; within a band every
// draw proposes the same step.
inline constexpr int kDrawBands = 4;

struct WalkTables {
    explicit WalkTables(const Board& board);

    int span = 0; // BoardSpan
    int side = 0; // nodes per row
    // For each node and band: the node the step reaches, or -1, and the step's letter.
    std::array<std::array<int, kDrawBands>, kMaxLatticeNodes> step{};
    std::array<std::array<char, kDrawBands>, kMaxLatticeNodes> direction{};
    // For each node: the nodes counted as used once it is listed, itself among them.
    std::array<NodeSet, kMaxLatticeNodes> usedBy{};
    // For each node: its cell number, and the characters "<number>," takes in PathList.
    std::array<int, kMaxLatticeNodes> cellNo{};
    std::array<int, kMaxLatticeNodes> listed{};
};

// The nodes of one walk, Start first.
struct WalkNodes {
    std::array<int, kMaxLatticeNodes> node{};
    int count = 0;
};

// Draws attempts, as LayPath does, until one reaches the right edge, and returns its nodes.
void WalkToRightEdge(const WalkTables& tables, WalkNodes& out);

// The length in characters that PathList takes for the walk once ExpandPath has put the
// link cells between its nodes.
std::size_t ExpandedLength(const WalkTables& tables, const WalkNodes& walk);

} // namespace tallyon
