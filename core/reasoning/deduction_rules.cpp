// The rules of the deductions, each worked on whole sets of nodes and links at once and listed
// one node, group or link at a time when asked.
#include "core/reasoning/deduction_support.h"
#include "core/reasoning/deductions.h"

#include <algorithm>

namespace tallyon {

using namespace deduction_support;

void ReasoningSteps::AddNodeDeductions(Rule rule, NodeSet nodes, bool forces, const Knowledge& k, Sink& sink) const
{
    const auto add = [&](NodeSet about) {
        const LinkSet links = LinksAt(about) & Undecided(k);
        sink.Add(rule, about, 0, forces ? LinkSet{} : links, forces ? links : LinkSet{});
    };
    if (!sink.Listing()) {
        add(nodes);
        return;
    }
    for (NodeSet rest = nodes; rest; rest &= rest - 1)
        add(rest & (~rest + 1));
}

// Step 1: a node that is neither Start nor End, with one possible link left, cannot be passed
// through. (One with none has nothing left to drop.)
bool ReasoningSteps::DeadEnds(const Knowledge& k, Sink& sink) const
{
    const Degrees open = CountAt(k.possible, side_);
    const NodeSet dead = nodes_ & ~ends_ & open.one & ~open.two;
    if (dead & OnPath(k))
        return false;
    AddNodeDeductions(Rule::DeadEnd, dead, false, k, sink);
    return true;
}

// Step 3, first: a node on the path takes all its possible links when it has just as many as
// it needs (one at Start and End, two elsewhere).
bool ReasoningSteps::TakeLinks(const Knowledge& k, Sink& sink) const
{
    const Degrees open = CountAt(k.possible, side_), forced = CountAt(k.forced, side_);
    const NodeSet inner = (keys_ | forced.one) & ~ends_;
    const NodeSet fill = (inner & open.two & ~open.three & ~forced.two) | (ends_ & open.one & ~open.two & ~forced.one);
    AddNodeDeductions(Rule::TakeLinks, fill, true, k, sink);
    return true;
}

// Step 3, then: a node on the path that has all the links it needs drops the rest.
bool ReasoningSteps::DropRest(const Knowledge& k, Sink& sink) const
{
    const Degrees forced = CountAt(k.forced, side_);
    const NodeSet full = (forced.two & ~ends_) | (ends_ & forced.one);
    AddNodeDeductions(Rule::DropRest, full, false, k, sink);
    return true;
}

// Step 3, last: a link between two nodes of one chain would close a loop (Loop); one that
// would join Start's chain to End's while neither holds the Hint would end the path without
// it (SkipHint). Each link is one deduction about the chain or chains it would join.
bool ReasoningSteps::ChainLinks(const Knowledge& k, Rule rule, Sink& sink) const
{
    const Chains chains = FindChains(k);
    if (chains.broken)
        return false;
    const auto add = [&](NodeSet about, LinkSet links) {
        if (!sink.Listing()) {
            sink.Add(rule, about, 0, links, {});
            return;
        }
        ForEachLink(links, side_, [&](int a, int b) { sink.Add(rule, about, 0, LinkBetween(a, b), {}); });
    };
    if (rule == Rule::SkipHint) {
        if (JoiningEndsLeavesOut(chains))
            add(chains.startChain | chains.endChain, LinksBetween(chains.startChain, chains.endChain) & Undecided(k));
        return true;
    }
    for (int i = 0; i < chains.count; ++i) {
        const NodeSet chain = chains.chain[static_cast<std::size_t>(i)];
        if (chain & (chain - 1)) // two nodes or more
            add(chain, LinksBetween(chain, chain) & Undecided(k));
    }
    return true;
}

// Step 2: where one node x parts the possible links' graph, a part that holds neither Start
// nor End could be entered and left through x alone, which a simple chain cannot do; so could
// nodes that Start cannot reach at all. The parts are found by one depth-first search from
// Start that keeps, for each node, the earliest node its subtree reaches back to.
bool ReasoningSteps::Pockets(const Knowledge& k, Sink& sink) const
{
    std::array<int, kMaxLatticeNodes> order, low, parent, stack;
    std::array<NodeSet, kMaxLatticeNodes> subtree, unseen;
    std::array<NodeSet, kMaxParts> parts, joins;
    std::size_t partCount = 0;
    order.fill(-1);
    const int root = LowestNode(start_);
    const NodeSet onPath = OnPath(k);
    int time = 0, depth = 0;
    bool contradiction = false;
    auto enter = [&](int v, int from) {
        const auto i = static_cast<std::size_t>(v);
        order[i] = low[i] = time++;
        parent[i] = from;
        subtree[i] = NodeBit(v);
        unseen[i] = Neighbours(NodeBit(v), k.possible);
        stack[static_cast<std::size_t>(depth++)] = v;
    };
    enter(root, -1);
    while (depth > 0) {
        const int v = stack[static_cast<std::size_t>(depth - 1)];
        const auto i = static_cast<std::size_t>(v);
        if (unseen[i]) {
            const int w = LowestNode(unseen[i]);
            unseen[i] &= unseen[i] - 1;
            if (order[static_cast<std::size_t>(w)] < 0)
                enter(w, v);
            else if (w != parent[i])
                low[i] = std::min(low[i], order[static_cast<std::size_t>(w)]);
            continue;
        }
        --depth;
        if (v == root)
            break;
        const auto p = static_cast<std::size_t>(parent[i]);
        low[p] = std::min(low[p], low[i]);
        subtree[p] |= subtree[i];
        if (low[i] >= order[p] && !(subtree[i] & end_)) { // only the parent joins this part on
            contradiction = contradiction || (subtree[i] & onPath) != 0;
            parts[partCount] = subtree[i];
            joins[partCount++] = NodeBit(parent[i]);
        }
    }
    const NodeSet reached = subtree[static_cast<std::size_t>(root)];
    if (contradiction || !(reached & end_) || (onPath & ~reached))
        return false;
    // Parts are found innermost first; a part inside a later one is that one's business.
    for (std::size_t a = 0; a < partCount; ++a) {
        bool inner = false;
        for (std::size_t b = a + 1; b < partCount && !inner; ++b)
            inner = (parts[a] & ~parts[b]) == 0;
        if (!inner)
            sink.Add(Rule::Pocket, parts[a], joins[a], LinksAt(parts[a]) & Undecided(k), {});
    }
    // What Start cannot reach, one connected group at a time.
    for (NodeSet rest = nodes_ & ~reached; rest;) {
        NodeSet group = rest & (~rest + 1);
        for (NodeSet grown; (grown = group | (Neighbours(group, k.possible) & rest)) != group;)
            group = grown;
        rest &= ~group;
        sink.Add(Rule::Pocket, group, 0, LinksAt(group) & Undecided(k), {});
    }
    return true;
}

// Step 4: a region of free nodes (none on the path yet) that leads only into one chain could
// be passed only by leaving that chain and coming back to it; one that leads only into
// Start's and End's chains, neither of which holds the Hint, would join them without it.
bool ReasoningSteps::Regions(const Knowledge& k, Sink& sink) const
{
    const Chains chains = FindChains(k);
    if (chains.broken)
        return false;
    const NodeSet onPath = OnPath(k), free = nodes_ & ~onPath;
    const bool endsMayNotJoin = JoiningEndsLeavesOut(chains);
    for (NodeSet rest = free & CountAt(k.possible, side_).one; rest;) {
        NodeSet region = rest & (~rest + 1);
        for (NodeSet grown; (grown = region | (Neighbours(region, k.possible) & free)) != region;)
            region = grown;
        rest &= ~region;
        const NodeSet doors = Neighbours(region, k.possible) & ~region;
        NodeSet into = 0;
        bool oneChain = doors == 0;
        for (int i = 0; i < chains.count && !oneChain; ++i) {
            into = chains.chain[static_cast<std::size_t>(i)];
            oneChain = !(doors & ~into);
        }
        const NodeSet bothEnds = chains.startChain | chains.endChain;
        if (oneChain)
            sink.Add(Rule::Region, region, doors ? into : 0, LinksAt(region) & Undecided(k), {});
        else if (endsMayNotJoin && !(doors & ~bothEnds))
            sink.Add(Rule::EndsRegion, region, bothEnds, LinksAt(region) & Undecided(k), {});
    }
    return true;
}

} // namespace tallyon
