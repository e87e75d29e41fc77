// The always-turning walk drawn over the node lattice alone: the draws of LayPath, with
// nothing written to the board until the caller takes a walk that reached the right edge.
//
// Contract: WalkTables are made for a board whose BoardSpan is set (ResetBoard). A walk's
// nodes are numbered as in chain_solver.h. The walk makes exactly the draws LayPath makes, in
// the same order, and refuses exactly the nodes that IsOnPath would find in the path list:
// a node is used once its cell number, or a number whose decimal tail it is, is listed (3 is
// used once 13 is).
#pragma once

#include "core/board/board.h"
#include "core/board/lattice.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tallyon {

// The draws 0 to 99 fall into four bands, one per rule of StepForDraw; within a band every
// draw proposes the same step.
inline constexpr int kDrawBands = 4;

// The most nodes one listed number makes used: itself and its decimal tails (113: 113, 13, 3).
inline constexpr int kMaxUsedByOne = 3;

struct WalkTables {
    explicit WalkTables(const Board& board);

    int span = 0; // BoardSpan
    int side = 0; // nodes per row
    // What the walk needs of each node, packed to be read in one go at every step.
    struct NodeSteps {
        std::array<std::int8_t, kDrawBands> to;        // the node each band's step reaches, or -1
        std::array<char, kDrawBands> direction;        // its letter
        std::array<std::int8_t, kMaxUsedByOne> usedBy; // the nodes its listing makes used, -1 after
        std::int8_t col = 0;                           // its column in the lattice, 0 to side - 1
    };
    std::array<NodeSteps, kMaxLatticeNodes> node{};
    // For each number of accepting draws that some nodes' bands add up to (row() gives it),
    // the tries refused in a row before one is accepted, as thresholds of a 32-bit uniform
    // number: k tries or more are refused when it lies below refusals[k - 1].
    static constexpr int kMostRefused = 101; // past 100 tries the attempt is over anyway
    std::array<std::array<std::uint64_t, kMostRefused>, 1 << kDrawBands> refusals{};
    std::array<std::int8_t, 101> refusalRow{}; // by number of accepting draws, or -1
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
