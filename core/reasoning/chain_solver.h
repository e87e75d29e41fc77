// The exact solver: counts the simple chains of valid links from Start through the Hint to
// End, so that the generator can prove that its path is the only one.
//
// Contract: nodes are numbered as in lattice.h. A chain is a sequence of distinct nodes joined
// by open links that starts at Start, ends at End and contains every node it must visit (the
// Hint; the tests also ask for further nodes). Counting stops at `limit`; a search that needs
// more than `budget` steps stops early and reports itself incomplete, in which case `chains`
// is only a lower bound.
#pragma once

#include "core/board/lattice.h"

#include <array>

namespace tallyon {

// Any graph of at most 128 nodes, as the set of neighbours of each node.
struct ChainGraph {
    std::array<NodeSet, kMaxLatticeNodes> adjacent{};
    void Join(int a, int b)
    {
        adjacent[static_cast<std::size_t>(a)] |= NodeBit(b);
        adjacent[static_cast<std::size_t>(b)] |= NodeBit(a);
    }
};

// The lattice graph's open links as a graph.
ChainGraph ToChainGraph(const LinkGraph& lattice);

struct ChainCount {
    int chains = 0;       // chains found, at most the limit
    bool complete = true; // false when the step budget ran out first
    long steps = 0;       // search steps used
};

inline constexpr long kDefaultChainBudget = 200000;

ChainCount CountChains(const ChainGraph& graph, int start, NodeSet mustVisit, int end, int limit = 2,
                       long budget = kDefaultChainBudget);
ChainCount CountChains(const LinkGraph& graph, int start, NodeSet mustVisit, int end, int limit = 2,
                       long budget = kDefaultChainBudget);

// The chains of a finished board, between its key nodes (cell numbers in KeyNodes).
ChainCount CountBoardChains(const Board& board, int limit = 2, long budget = kDefaultChainBudget);

} // namespace tallyon
