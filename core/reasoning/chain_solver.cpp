// Depth-first search over the open links, cut as soon as End, or a Hint still to be
// visited, can no longer be reached through unvisited nodes.
#include "core/reasoning/chain_solver.h"

#include <array>

namespace tallyon {

namespace {

class ChainSearch {
public:
    ChainSearch(const ChainGraph& g, NodeSet mustVisit, int end, int limit, long budget)
        : g_(g), must_(mustVisit), end_(NodeBit(end)), limit_(limit), budget_(budget)
    {
    }

    ChainCount Run(int start)
    {
        visited_ = NodeBit(start);
        Walk(NodeBit(start));
        return {found_, steps_ <= budget_, steps_};
    }

private:
    // The nodes reachable from `at` through unvisited nodes.
    NodeSet Region(NodeSet at) const
    {
        NodeSet region = at;
        for (NodeSet frontier = at; frontier;) {
            NodeSet next = 0;
            for (; frontier; frontier &= frontier - 1)
                next |= Adjacent(LowestNode(frontier));
            frontier = next & ~visited_ & ~region;
            region |= frontier;
        }
        return region;
    }

    // True when two paths through unvisited nodes lead from `from` to `at` and to End,
    // sharing no node but `from`: two augmenting paths of a unit-capacity flow in which
    // every node is split into an entry and an exit.
    bool TwoWaysOut(int from, NodeSet at) const
    {
        Flow flow;
        flow.pred.fill(-1);
        const NodeSet sinks = at | end_;
        return Augment(from, sinks, flow) && Augment(from, sinks, flow);
    }

    struct Flow {
        std::array<int, kMaxLatticeNodes> pred; // the node whose exit feeds this node's entry, or -1
        NodeSet used = 0;                       // nodes whose entry-to-exit capacity is taken
    };

    // States: 2 * node for its entry, 2 * node + 1 for its exit.
    bool Augment(int source, NodeSet sinks, Flow& flow) const
    {
        std::array<int, 2 * kMaxLatticeNodes> parent;
        parent.fill(-1);
        std::array<int, 2 * kMaxLatticeNodes> queue;
        int head = 0, tail = 0;
        auto push = [&](int state, int from) {
            if (parent[static_cast<std::size_t>(state)] < 0) {
                parent[static_cast<std::size_t>(state)] = from;
                queue[static_cast<std::size_t>(tail++)] = state;
            }
        };
        const NodeSet open = ~visited_ | sinks;
        push(2 * source + 1, 2 * source + 1);
        while (head < tail) {
            const int state = queue[static_cast<std::size_t>(head++)];
            const int v = state / 2;
            const NodeSet bit = NodeBit(v);
            if (state % 2 == 0) {
                if (sinks & bit) {
                    if (!(flow.used & bit)) {
                        Apply(parent, state, flow);
                        flow.used |= bit;
                        return true;
                    }
                } else if (!(flow.used & bit)) {
                    push(state + 1, state);
                }
                if (flow.pred[static_cast<std::size_t>(v)] >= 0)
                    push(2 * flow.pred[static_cast<std::size_t>(v)] + 1, state);
                continue;
            }
            if (v != source && (flow.used & bit))
                push(state - 1, state);
            for (NodeSet next = Adjacent(v) & open & ~NodeBit(source); next; next &= next - 1) {
                const int w = LowestNode(next);
                if (flow.pred[static_cast<std::size_t>(w)] != v)
                    push(2 * w, state);
            }
        }
        return false;
    }

    // Pushes one unit along the path that ends in `state`, from its source on.
    static void Apply(const std::array<int, 2 * kMaxLatticeNodes>& parent, int state, Flow& flow)
    {
        std::array<int, 2 * kMaxLatticeNodes> path;
        int length = 0;
        for (int s = state; parent[static_cast<std::size_t>(s)] != s; s = parent[static_cast<std::size_t>(s)])
            path[static_cast<std::size_t>(length++)] = s;
        for (int i = length - 1; i >= 0; --i) {
            const int to = path[static_cast<std::size_t>(i)];
            const int from = parent[static_cast<std::size_t>(to)];
            const int u = from / 2, v = to / 2;
            const bool forward = from % 2 == 1 && to % 2 == 0;
            if (u == v && forward)
                flow.used &= ~NodeBit(v); // back through a node
            else if (u == v)
                flow.used |= NodeBit(v); // through a node
            else if (forward)
                flow.pred[static_cast<std::size_t>(v)] = u; // along a link
            else if (flow.pred[static_cast<std::size_t>(u)] == v)
                flow.pred[static_cast<std::size_t>(u)] = -1; // back along a link
        }
    }

    NodeSet Adjacent(int node) const { return g_.adjacent[static_cast<std::size_t>(node)]; }

    void Walk(NodeSet at)
    {
        if (found_ >= limit_ || ++steps_ > budget_)
            return;
        if (at == end_) {
            if ((visited_ & must_) == must_)
                ++found_;
            return;
        }
        const NodeSet needed = end_ | (must_ & ~visited_);
        if ((Region(at) & needed) != needed)
            return;
        // A chain from here must reach each node still to visit and go on from it to End:
        // two paths from that node, one back here and one to End, sharing no other node.
        for (NodeSet rest = must_ & ~visited_ & ~end_; rest; rest &= rest - 1)
            if (!TwoWaysOut(LowestNode(rest), at))
                return;
        NodeSet next = Adjacent(LowestNode(at)) & ~visited_;
        while (next && found_ < limit_ && steps_ <= budget_) {
            const NodeSet bit = next & (~next + 1);
            next &= ~bit;
            visited_ |= bit;
            Walk(bit);
            visited_ &= ~bit;
        }
    }

    const ChainGraph& g_;
    NodeSet must_, end_;
    int limit_;
    long budget_;
    NodeSet visited_ = 0;
    int found_ = 0;
    long steps_ = 0;
};

} // namespace

ChainGraph ToChainGraph(const LinkGraph& lattice)
{
    ChainGraph g;
    for (int v = 0; v < lattice.side * lattice.side; ++v)
        g.adjacent[static_cast<std::size_t>(v)] = lattice.Neighbours(NodeBit(v));
    return g;
}

ChainCount CountChains(const ChainGraph& graph, int start, NodeSet mustVisit, int end, int limit, long budget)
{
    return ChainSearch(graph, mustVisit, end, limit, budget).Run(start);
}

ChainCount CountChains(const LinkGraph& graph, int start, NodeSet mustVisit, int end, int limit, long budget)
{
    return CountChains(ToChainGraph(graph), start, mustVisit, end, limit, budget);
}

ChainCount CountBoardChains(const Board& board, int limit, long budget)
{
    auto node = [&](int cell) { return NodeIndex(board.GridSize, board.CellRow[cell], board.CellCol[cell]); };
    return CountChains(ValidLinkGraph(board), node(board.KeyNodes[0]), NodeBit(node(board.KeyNodes[1])),
                       node(board.KeyNodes[2]), limit, budget);
}

} // namespace tallyon
