// The deductions of a player, worked on whole sets of nodes and links at once.
#include "core/reasoning/deductions.h"

#include <algorithm>

namespace tallyon {
namespace {

// The nodes with at least one, two and three links of a set.
struct Degrees {
    NodeSet one = 0, two = 0, three = 0;
};

Degrees CountLinks(const LinkSet& l, int side)
{
    const NodeSet right = l.h, left = l.h << 1, down = l.v, up = l.v << side;
    const NodeSet across = right | left, along = down | up;
    Degrees d;
    d.one = across | along;
    d.two = (right & left) | (down & up) | (across & along);
    d.three = (right & left & along) | (down & up & across);
    return d;
}

bool Meets(const LinkSet& a, const LinkSet& mask) { return ((a.h & mask.h) | (a.v & mask.v)) != 0; }

// Drops every link of `mask` that is not forced; true when one was possible.
bool DropUndecided(Knowledge& k, const LinkSet& mask)
{
    const LinkSet gone{mask.h & ~k.forced.h, mask.v & ~k.forced.v};
    if (!Meets(k.possible, gone))
        return false;
    k.possible.h &= ~gone.h;
    k.possible.v &= ~gone.v;
    return true;
}

} // namespace

LinkSet ToLinkSet(const LinkGraph& graph) { return {graph.right, graph.down}; }

LinkGraph ToLinkGraph(const LinkSet& links, int side)
{
    LinkGraph g = LinkGraph::Empty(side);
    g.right = links.h;
    g.left = links.h << 1;
    g.down = links.v;
    g.up = links.v << side;
    return g;
}

ReasoningSteps::ReasoningSteps(int side, int start, int hint, int end)
    : side_(side), start_(NodeBit(start)), hint_(NodeBit(hint)), end_(NodeBit(end)), ends_(start_ | end_),
      keys_(ends_ | hint_)
{
    nodes_ = LinkGraph::Empty(side).nodes;
}

Knowledge ReasoningSteps::Begin(const LinkGraph& valid) const { return {ToLinkSet(valid), {}}; }

NodeSet ReasoningSteps::Neighbours(NodeSet from, const LinkSet& l) const
{
    return ((from & l.h) << 1) | ((from >> 1) & l.h) | ((from & l.v) << side_) | ((from >> side_) & l.v);
}

LinkSet ReasoningSteps::LinksAt(NodeSet nodes) const { return {nodes | (nodes >> 1), nodes | (nodes >> side_)}; }

LinkSet ReasoningSteps::LinksBetween(NodeSet a, NodeSet b) const
{
    return {(a & (b >> 1)) | (b & (a >> 1)), (a & (b >> side_)) | (b & (a >> side_))};
}

NodeSet ReasoningSteps::OnPath(const Knowledge& k) const { return keys_ | CountLinks(k.forced, side_).one; }

bool ReasoningSteps::Consistent(const Knowledge& k) const
{
    const Degrees open = CountLinks(k.possible, side_), forced = CountLinks(k.forced, side_);
    const NodeSet inner = (keys_ | forced.one) & ~ends_;
    return !(forced.three | (ends_ & forced.two) | (inner & ~open.two) | (ends_ & ~open.one));
}

ReasoningSteps::Chains ReasoningSteps::FindChains(const Knowledge& k) const
{
    Chains c;
    for (NodeSet rest = OnPath(k); rest;) {
        NodeSet chain = rest & (~rest + 1);
        for (NodeSet grown; (grown = chain | Neighbours(chain, k.forced)) != chain;)
            chain = grown;
        // A chain of n nodes has n - 1 links; with as many links as nodes it closes a loop.
        if (CountNodes(k.forced.h & chain) + CountNodes(k.forced.v & chain) >= CountNodes(chain))
            c.loop = true;
        c.chain[static_cast<std::size_t>(c.count++)] = chain;
        if (chain & start_)
            c.startChain = chain;
        if (chain & end_)
            c.endChain = chain;
        rest &= ~chain;
    }
    // Start's chain that reaches End is the whole path: it must hold the Hint, and no forced
    // link may lie outside it.
    c.broken = c.loop || (c.startChain == c.endChain && (!(c.startChain & hint_) || c.count > 1));
    return c;
}

bool ReasoningSteps::Solved(const Knowledge& k) const
{
    if (!(CountLinks(k.forced, side_).one & start_))
        return false;
    const Chains c = FindChains(k);
    return !c.broken && (c.startChain & end_) && Consistent(k);
}

bool ReasoningSteps::JoiningEndsLeavesOut(const Chains& chains) const
{
    return chains.startChain != chains.endChain && !(hint_ & (chains.startChain | chains.endChain));
}

Outcome ReasoningSteps::Apply(int step, Knowledge& k) const
{
    switch (step) {
    case kDeadEnds:
        return DeadEnds(k);
    case kPockets:
        return Pockets(k);
    case kForcedLinks:
        return ForcedLinks(k);
    case kRegions:
        return Regions(k);
    default:
        return Outcome::NoProgress;
    }
}

Outcome ReasoningSteps::Settle(Knowledge& k) const
{
    if (!Consistent(k))
        return Outcome::Contradiction;
    bool changed = false;
    for (int step = kDeadEnds; step <= kRegions && !Solved(k);) {
        const Outcome o = Apply(step, k);
        if (o == Outcome::Contradiction || (o == Outcome::Progress && !Consistent(k)))
            return Outcome::Contradiction;
        changed = changed || o == Outcome::Progress;
        step = o == Outcome::Progress ? kDeadEnds : step + 1;
    }
    return changed ? Outcome::Progress : Outcome::NoProgress;
}

// Step 1: a node that is neither Start nor End, with one possible link left, cannot be passed
// through. (One with none has nothing left to drop.)
Outcome ReasoningSteps::DeadEnds(Knowledge& k) const
{
    const Degrees open = CountLinks(k.possible, side_);
    const NodeSet dead = nodes_ & ~ends_ & open.one & ~open.two;
    if (!dead)
        return Outcome::NoProgress;
    if (dead & OnPath(k))
        return Outcome::Contradiction;
    DropUndecided(k, LinksAt(dead));
    return Outcome::Progress;
}

// Step 2: where one node x parts the possible links' graph, a part that holds neither Start
// nor End could be entered and left through x alone, which a simple chain cannot do; so could
// nodes that Start cannot reach at all. The parts are found by one depth-first search from
// Start that keeps, for each node, the earliest node its subtree reaches back to.
Outcome ReasoningSteps::Pockets(Knowledge& k) const
{
    std::array<int, kMaxLatticeNodes> order, low, parent;
    std::array<NodeSet, kMaxLatticeNodes> subtree, unseen;
    std::array<int, kMaxLatticeNodes> stack;
    order.fill(-1);
    const int root = LowestNode(start_);
    const NodeSet onPath = OnPath(k);
    int time = 0, depth = 0;
    NodeSet off = 0;
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
            off |= subtree[i];
        }
    }
    const NodeSet reached = subtree[static_cast<std::size_t>(root)];
    if (contradiction || !(reached & end_) || (onPath & ~reached))
        return Outcome::Contradiction;
    off |= nodes_ & ~reached;
    return DropUndecided(k, LinksAt(off)) ? Outcome::Progress : Outcome::NoProgress;
}

// Step 3: a node on the path takes all its possible links when it has just as many as it
// needs (one at Start and End, two elsewhere), and drops the rest once it has them all. A
// link between two nodes of one chain would close a loop; one that would join Start's chain
// to End's while neither holds the Hint would end the path without it.
Outcome ReasoningSteps::ForcedLinks(Knowledge& k) const
{
    const Degrees open = CountLinks(k.possible, side_), forced = CountLinks(k.forced, side_);
    const NodeSet inner = (keys_ | forced.one) & ~ends_;
    const NodeSet fill = (inner & open.two & ~open.three & ~forced.two) | (ends_ & open.one & ~open.two & ~forced.one);
    if (fill) {
        const LinkSet at = LinksAt(fill);
        k.forced.h |= k.possible.h & at.h;
        k.forced.v |= k.possible.v & at.v;
        return Outcome::Progress;
    }
    const NodeSet full = (inner & forced.two) | (ends_ & forced.one);
    if (DropUndecided(k, LinksAt(full)))
        return Outcome::Progress;
    const Chains chains = FindChains(k);
    if (chains.broken)
        return Outcome::Contradiction;
    return ChainLinks(k, chains);
}

Outcome ReasoningSteps::ChainLinks(Knowledge& k, const Chains& chains) const
{
    bool dropped = false;
    for (int i = 0; i < chains.count; ++i) {
        const NodeSet chain = chains.chain[static_cast<std::size_t>(i)];
        if (chain & (chain - 1)) // two nodes or more
            dropped = DropUndecided(k, LinksBetween(chain, chain)) || dropped;
    }
    if (JoiningEndsLeavesOut(chains))
        dropped = DropUndecided(k, LinksBetween(chains.startChain, chains.endChain)) || dropped;
    return dropped ? Outcome::Progress : Outcome::NoProgress;
}

// Step 4: a region of free nodes (none on the path yet) that leads only into one chain could
// be passed only by leaving that chain and coming back to it; one that leads only into
// Start's and End's chains, neither of which holds the Hint, would join them without it.
Outcome ReasoningSteps::Regions(Knowledge& k) const
{
    const Chains chains = FindChains(k);
    if (chains.broken)
        return Outcome::Contradiction;
    const NodeSet onPath = OnPath(k), free = nodes_ & ~onPath;
    const bool endsMayNotJoin = JoiningEndsLeavesOut(chains);
    NodeSet off = 0;
    for (NodeSet rest = free & CountLinks(k.possible, side_).one; rest;) {
        NodeSet region = rest & (~rest + 1);
        for (NodeSet grown; (grown = region | (Neighbours(region, k.possible) & free)) != region;)
            region = grown;
        rest &= ~region;
        const NodeSet doors = Neighbours(region, k.possible) & ~region;
        bool oneChain = doors == 0;
        for (int i = 0; i < chains.count && !oneChain; ++i)
            oneChain = !(doors & ~chains.chain[static_cast<std::size_t>(i)]);
        if (oneChain || (endsMayNotJoin && !(doors & ~(chains.startChain | chains.endChain))))
            off |= region;
    }
    return DropUndecided(k, LinksAt(off)) ? Outcome::Progress : Outcome::NoProgress;
}

} // namespace tallyon
