// The deductions of a player, worked on whole sets of nodes and links at once, and listed one
// node, group or link at a time when asked.
#include "core/reasoning/deductions.h"
#include "core/reasoning/deduction_support.h"

#include <algorithm>
#include <cstdlib>

namespace tallyon {

using namespace deduction_support;
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

} // namespace tallyon
