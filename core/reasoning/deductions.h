// The deductions a player makes on a puzzle: the one reasoning engine behind the grader, the
// generator's grades, the hint key and the explained solution.
//
// Contract: a Knowledge holds what is known of the links of a side x side node lattice (node
// numbers as in lattice.h). A link is possible until it is dropped (known to lie off the
// path), and forced once it is known to lie on it; forced links are always possible. Every
// rule only ever drops or forces links that no solution can do without or with: applied to
// the knowledge of any board, it keeps every simple chain from Start through the Hint to End
// within the possible links and around the forced ones. When a step finds that no such chain
// is left, it says so (Contradiction) and leaves the knowledge unspecified.
//
// The rules can be applied a step at a time, everywhere at once (Apply: what the grader does,
// on bit sets), or found one deduction at a time, each about one node, one group of nodes or
// one link, as a player makes them (Find, First: what a hint and an explanation show). Apply
// makes exactly the changes of the deductions Find lists for the same rules.
#pragma once

#include "core/board/lattice.h"

#include <array>
#include <optional>
#include <vector>

namespace tallyon {

// A set of links of a lattice, each named by its lower node: h holds v for the link from v
// to the node on its right, v holds v for the link from v to the node below.
struct LinkSet {
    NodeSet h = 0;
    NodeSet v = 0;
    bool operator==(const LinkSet&) const = default;
    bool Empty() const { return (h | v) == 0; }
    LinkSet operator|(const LinkSet& o) const { return {h | o.h, v | o.v}; }
    LinkSet operator&(const LinkSet& o) const { return {h & o.h, v & o.v}; }
    LinkSet Without(const LinkSet& o) const { return {h & ~o.h, v & ~o.v}; }
};

LinkSet ToLinkSet(const LinkGraph& graph);
LinkGraph ToLinkGraph(const LinkSet& links, int side);
// The single link between neighbouring nodes a and b.
LinkSet LinkBetween(int a, int b);
// The number of links in a set.
int CountLinks(const LinkSet& links);
// Calls visit(a, b) for every link of the set, a < b, horizontal ones first, each in node order.
template <typename Visit>
void ForEachLink(const LinkSet& links, int side, Visit visit)
{
    for (NodeSet rest = links.h; rest; rest &= rest - 1)
        visit(LowestNode(rest), LowestNode(rest) + 1);
    for (NodeSet rest = links.v; rest; rest &= rest - 1)
        visit(LowestNode(rest), LowestNode(rest) + side);
}

struct Knowledge {
    LinkSet possible; // not dropped: at first every valid link
    LinkSet forced;   // known to lie on the path
    bool operator==(const Knowledge&) const = default;
};

enum class Outcome { NoProgress, Progress, Contradiction };

// The steps, numbered as the grader counts them. A player tries them in the order of
// kStepOrder: those that look at one node and its links first, then groups of nodes.
enum ReasoningStep {
    kDeadEnds = 1,    // a node other than Start and End with one possible link left is off the path
    kPockets = 2,     // a group that one node joins to the rest of the board is off the path
    kForcedLinks = 3, // a node on the path takes the links it needs and drops the rest
    kRegions = 4,     // free nodes whose way out leads back into one chain are off the path
    kLookAhead = 5,   // a link whose forcing leads to a contradiction is dropped (grader.h)
};
inline constexpr std::array<int, 4> kStepOrder = {kDeadEnds, kForcedLinks, kPockets, kRegions};

// The rules of the steps, each a kind of deduction with a name of its own.
enum class Rule {
    DeadEnd,    // step 1: a node with one possible link left is off the path
    TakeLinks,  // step 3: a node on the path with just the links it needs takes them
    DropRest,   // step 3: a node on the path that has all its links drops the rest
    Loop,       // step 3: a link between two nodes of one chain would close a loop
    SkipHint,   // step 3: a link would join Start's chain to End's without the Hint
    Pocket,     // step 2: a group that only one node joins on, or that Start cannot reach
    Region,     // step 4: free nodes whose links all lead into one chain
    EndsRegion, // step 4: free nodes whose links lead only into Start's and End's chains
    LookAhead,  // step 5: a link that, once forced, leads to a contradiction
};
// Every rule but the look-ahead, in the order a player tries them.
inline constexpr std::array<Rule, 8> kRuleOrder = {Rule::DeadEnd,  Rule::TakeLinks, Rule::DropRest, Rule::Loop,
                                                   Rule::SkipHint, Rule::Pocket,    Rule::Region,   Rule::EndsRegion};
int StepOf(Rule rule);

// One deduction: the node, group or link it is about, and what it rules out or forces.
struct Deduction {
    Rule rule = Rule::DeadEnd;
    NodeSet about = 0;  // the node or group of nodes it is about
    NodeSet beside = 0; // a pocket's joining node; the chain or chains a region or a loop lies by
    LinkSet dropped;    // links it rules out, possible and not forced before
    LinkSet forced;     // links it forces, possible and not forced before
};

// The fixed facts of one puzzle: its lattice and its Start, Hint and End nodes.
class ReasoningSteps {
public:
    ReasoningSteps(int side, int start, int hint, int end);

    // The knowledge before any deduction: every valid link possible, none forced.
    Knowledge Begin(const LinkGraph& valid) const;

    // Applies one of steps 1 to 4 once, everywhere it applies. Step 3 forces the links of
    // every node that takes them, or else drops the rest at every node that has its links,
    // or else drops the links that would close a loop or skip the Hint.
    Outcome Apply(int step, Knowledge& k) const;

    // Applies steps 1 to 4, in the order of kStepOrder, the first that makes progress each
    // time, until none does, the path is found or a contradiction shows. Returns Progress
    // when anything changed.
    Outcome Settle(Knowledge& k) const;

    // Adds every deduction of one rule on the knowledge (not the look-ahead) to `out`, in node
    // order. Pockets and regions are listed whole: a group inside a larger one is not listed
    // again. False, with nothing added, when the rule finds the knowledge contradicting itself.
    bool Find(Rule rule, const Knowledge& k, std::vector<Deduction>& out) const;

    // The first deduction a player would make, trying the rules in the order of kRuleOrder;
    // none when no rule applies or the knowledge contradicts itself.
    std::optional<Deduction> First(const Knowledge& k) const;

    // The look-ahead, where the rules stall: the first link not yet forced, horizontal ones
    // first, each in node order, whose forcing leads Settle to a contradiction, as a
    // deduction that drops it; none when no link does.
    std::optional<Deduction> LookAhead(const Knowledge& k) const;

    // Makes the deduction's changes.
    static void Take(const Deduction& d, Knowledge& k);

    // True when the forced links join Start to End through the Hint.
    bool Solved(const Knowledge& k) const;

    // False when the knowledge contradicts itself in a way seen at a glance: a node with more
    // forced links than it may have, or a node on the path with fewer possible than it needs.
    bool Consistent(const Knowledge& k) const;

    // The nodes known to lie on the path: Start, Hint, End and every end of a forced link.
    NodeSet OnPath(const Knowledge& k) const;

    int Side() const { return side_; }

private:
    // The forced chains: each node on the path (a key node, or one with a forced link) in one.
    struct Chains {
        std::array<NodeSet, kMaxLatticeNodes> chain;
        int count = 0;
        NodeSet startChain = 0, endChain = 0;
        bool loop = false;   // some chain closes on itself
        bool broken = false; // a loop, or Start's chain reaches End without the Hint or all forced links
    };
    // Receives deductions as a rule finds them; with `whole`, one per rule on the whole board.
    class Sink;

    // Gives `sink` the deduction of `rule` about `nodes`: their undecided links dropped, or
    // forced with `forces`; one deduction for them all, or one a node where the sink lists them.
    void AddNodeDeductions(Rule rule, NodeSet nodes, bool forces, const Knowledge& k, Sink& sink) const;
    bool DeadEnds(const Knowledge& k, Sink& sink) const;
    bool Pockets(const Knowledge& k, Sink& sink) const;
    bool TakeLinks(const Knowledge& k, Sink& sink) const;
    bool DropRest(const Knowledge& k, Sink& sink) const;
    bool ChainLinks(const Knowledge& k, Rule rule, Sink& sink) const;
    bool Regions(const Knowledge& k, Sink& sink) const;
    bool Run(Rule rule, const Knowledge& k, Sink& sink) const;

    Chains FindChains(const Knowledge& k) const;
    // True when Start's and End's chains are two and neither holds the Hint.
    bool JoiningEndsLeavesOut(const Chains& chains) const;
    NodeSet Neighbours(NodeSet from, const LinkSet& links) const;
    LinkSet LinksAt(NodeSet nodes) const;
    LinkSet LinksBetween(NodeSet a, NodeSet b) const;

    int side_;
    NodeSet nodes_ = 0;
    NodeSet start_, hint_, end_, ends_, keys_;
};

} // namespace tallyon
