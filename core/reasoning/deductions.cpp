// The deductions of a player, worked on whole sets of nodes and links at once, and listed one
// node, group or link at a time when asked.
#include "core/reasoning/deductions.h"

#include <algorithm>
#include <cstdlib>

namespace tallyon {
namespace {

// The nodes with at least one, two and three links of a set.
struct Degrees {
    NodeSet one = 0, two = 0, three = 0;
};

Degrees CountAt(const LinkSet& l, int side)
{
    const NodeSet right = l.h, left = l.h << 1, down = l.v, up = l.v << side;
    const NodeSet across = right | left, along = down | up;
    Degrees d;
    d.one = across | along;
    d.two = (right & left) | (down & up) | (across & along);
    d.three = (right & left & along) | (down & up & across);
    return d;
}

LinkSet Undecided(const Knowledge& k) { return k.possible.Without(k.forced); }

// Node sets too small to hold two pockets of one board apart: the most a DFS can find.
constexpr std::size_t kMaxParts = kMaxLatticeNodes;

} // namespace

// Collects what a rule finds: every deduction when listing, else only their union.
class ReasoningSteps::Sink {
public:
    explicit Sink(std::vector<Deduction>* list = nullptr) : list_(list) {}
    bool Listing() const { return list_ != nullptr; }
    void Add(Rule rule, NodeSet about, NodeSet beside, LinkSet dropped, LinkSet forced)
    {
        if (dropped.Empty() && forced.Empty())
            return;
        dropped_ = dropped_ | dropped;
        forced_ = forced_ | forced;
        if (list_)
            list_->push_back({rule, about, beside, dropped, forced});
    }
    bool Any() const { return !dropped_.Empty() || !forced_.Empty(); }
    void ApplyTo(Knowledge& k) const
    {
        k.possible = k.possible.Without(dropped_);
        k.forced = k.forced | forced_;
    }

private:
    std::vector<Deduction>* list_;
    LinkSet dropped_, forced_;
};

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

LinkSet LinkBetween(int a, int b)
{
    const int low = std::min(a, b);
    return std::abs(a - b) == 1 ? LinkSet{NodeBit(low), 0} : LinkSet{0, NodeBit(low)};
}

int CountLinks(const LinkSet& links) { return CountNodes(links.h) + CountNodes(links.v); }

int StepOf(Rule rule)
{
    switch (rule) {
    case Rule::DeadEnd:
        return kDeadEnds;
    case Rule::Pocket:
        return kPockets;
    case Rule::Region:
    case Rule::EndsRegion:
        return kRegions;
    case Rule::LookAhead:
        return kLookAhead;
    case Rule::TakeLinks:
    case Rule::DropRest:
    case Rule::Loop:
    case Rule::SkipHint:
        break;
    }
    return kForcedLinks;
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

NodeSet ReasoningSteps::OnPath(const Knowledge& k) const { return keys_ | CountAt(k.forced, side_).one; }

bool ReasoningSteps::Consistent(const Knowledge& k) const
{
    const Degrees open = CountAt(k.possible, side_), forced = CountAt(k.forced, side_);
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
    if (!(CountAt(k.forced, side_).one & start_))
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
    Sink sink;
    bool ok = true;
    switch (step) {
    case kDeadEnds:
        ok = DeadEnds(k, sink);
        break;
    case kPockets:
        ok = Pockets(k, sink);
        break;
    case kForcedLinks:
        ok = TakeLinks(k, sink);
        if (ok && !sink.Any())
            ok = DropRest(k, sink);
        if (ok && !sink.Any())
            ok = ChainLinks(k, Rule::Loop, sink) && ChainLinks(k, Rule::SkipHint, sink);
        break;
    case kRegions:
        ok = Regions(k, sink);
        break;
    default:
        return Outcome::NoProgress;
    }
    if (!ok)
        return Outcome::Contradiction;
    if (!sink.Any())
        return Outcome::NoProgress;
    sink.ApplyTo(k);
    return Outcome::Progress;
}

Outcome ReasoningSteps::Settle(Knowledge& k) const
{
    if (!Consistent(k))
        return Outcome::Contradiction;
    bool changed = false;
    for (std::size_t i = 0; i < kStepOrder.size() && !Solved(k);) {
        const Outcome o = Apply(kStepOrder[i], k);
        if (o == Outcome::Contradiction || (o == Outcome::Progress && !Consistent(k)))
            return Outcome::Contradiction;
        changed = changed || o == Outcome::Progress;
        i = o == Outcome::Progress ? 0 : i + 1;
    }
    return changed ? Outcome::Progress : Outcome::NoProgress;
}

bool ReasoningSteps::Run(Rule rule, const Knowledge& k, Sink& sink) const
{
    switch (rule) {
    case Rule::DeadEnd:
        return DeadEnds(k, sink);
    case Rule::TakeLinks:
        return TakeLinks(k, sink);
    case Rule::DropRest:
        return DropRest(k, sink);
    case Rule::Loop:
    case Rule::SkipHint:
        return ChainLinks(k, rule, sink);
    case Rule::Pocket:
        return Pockets(k, sink);
    case Rule::Region:
    case Rule::EndsRegion: {
        // Both kinds come from one survey of the regions; only the one asked for is kept.
        std::vector<Deduction> both;
        Sink all(&both);
        if (!Regions(k, all))
            return false;
        for (const Deduction& d : both)
            if (d.rule == rule)
                sink.Add(d.rule, d.about, d.beside, d.dropped, d.forced);
        return true;
    }
    case Rule::LookAhead:
        break;
    }
    return true;
}

bool ReasoningSteps::Find(Rule rule, const Knowledge& k, std::vector<Deduction>& out) const
{
    std::vector<Deduction> found;
    Sink sink(&found);
    if (!Run(rule, k, sink))
        return false;
    out.insert(out.end(), found.begin(), found.end());
    return true;
}

std::optional<Deduction> ReasoningSteps::First(const Knowledge& k) const
{
    if (!Consistent(k))
        return std::nullopt;
    std::vector<Deduction> found;
    for (const Rule rule : kRuleOrder) {
        if (!Find(rule, k, found))
            return std::nullopt;
        if (!found.empty())
            return found.front();
    }
    return std::nullopt;
}

std::optional<Deduction> ReasoningSteps::LookAhead(const Knowledge& k) const
{
    const LinkSet undecided = Undecided(k);
    std::optional<Deduction> found;
    ForEachLink(undecided, side_, [&](int a, int b) {
        if (found)
            return;
        Knowledge trial = k;
        trial.forced = trial.forced | LinkBetween(a, b);
        if (Settle(trial) == Outcome::Contradiction)
            found = Deduction{Rule::LookAhead, NodeBit(a) | NodeBit(b), 0, LinkBetween(a, b), {}};
    });
    return found;
}

void ReasoningSteps::Take(const Deduction& d, Knowledge& k)
{
    k.possible = k.possible.Without(d.dropped);
    k.forced = k.forced | d.forced;
}

// Step 1: a node that is neither Start nor End, with one possible link left, cannot be passed
// through. (One with none has nothing left to drop.)
bool ReasoningSteps::DeadEnds(const Knowledge& k, Sink& sink) const
{
    const Degrees open = CountAt(k.possible, side_);
    const NodeSet dead = nodes_ & ~ends_ & open.one & ~open.two;
    if (dead & OnPath(k))
        return false;
    if (!sink.Listing()) {
        sink.Add(Rule::DeadEnd, dead, 0, LinksAt(dead) & Undecided(k), {});
        return true;
    }
    for (NodeSet rest = dead; rest; rest &= rest - 1) {
        const NodeSet node = rest & (~rest + 1);
        sink.Add(Rule::DeadEnd, node, 0, LinksAt(node) & Undecided(k), {});
    }
    return true;
}

// Step 3, first: a node on the path takes all its possible links when it has just as many as
// it needs (one at Start and End, two elsewhere).
bool ReasoningSteps::TakeLinks(const Knowledge& k, Sink& sink) const
{
    const Degrees open = CountAt(k.possible, side_), forced = CountAt(k.forced, side_);
    const NodeSet inner = (keys_ | forced.one) & ~ends_;
    const NodeSet fill = (inner & open.two & ~open.three & ~forced.two) | (ends_ & open.one & ~open.two & ~forced.one);
    if (!sink.Listing()) {
        sink.Add(Rule::TakeLinks, fill, 0, {}, LinksAt(fill) & Undecided(k));
        return true;
    }
    for (NodeSet rest = fill; rest; rest &= rest - 1) {
        const NodeSet node = rest & (~rest + 1);
        sink.Add(Rule::TakeLinks, node, 0, {}, LinksAt(node) & Undecided(k));
    }
    return true;
}

// Step 3, then: a node on the path that has all the links it needs drops the rest.
bool ReasoningSteps::DropRest(const Knowledge& k, Sink& sink) const
{
    const Degrees forced = CountAt(k.forced, side_);
    const NodeSet full = (forced.two & ~ends_) | (ends_ & forced.one);
    if (!sink.Listing()) {
        sink.Add(Rule::DropRest, full, 0, LinksAt(full) & Undecided(k), {});
        return true;
    }
    for (NodeSet rest = full; rest; rest &= rest - 1) {
        const NodeSet node = rest & (~rest + 1);
        sink.Add(Rule::DropRest, node, 0, LinksAt(node) & Undecided(k), {});
    }
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
