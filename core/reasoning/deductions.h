// The deductions a player makes on a puzzle, one kind at a time: what the grader is built of.
//
// Contract: a Knowledge holds what is known of the links of a side x side node lattice (node
// numbers as in chain_solver.h). A link is possible until it is dropped (known to lie off the
// path), and forced once it is known to lie on it; forced links are always possible. Each
// step of ReasoningSteps only ever drops or forces links that no solution can do without or
// with: a step applied to the knowledge of any board keeps every simple chain from Start
// through the Hint to End within the possible links and around the forced ones. When it finds
// that no such chain is left, it says so (Contradiction) and leaves the knowledge unspecified.
#pragma once

#include "core/board/lattice.h"

#include <array>

namespace tallyon {

// A set of links of a lattice, each named by its lower node: h holds v for the link from v
// to the node on its right, v holds v for the link from v to the node below.
struct LinkSet {
    NodeSet h = 0;
    NodeSet v = 0;
    bool operator==(const LinkSet&) const = default;
};

LinkSet ToLinkSet(const LinkGraph& graph);
LinkGraph ToLinkGraph(const LinkSet& links, int side);

struct Knowledge {
    LinkSet possible; // not dropped: at first every valid link
    LinkSet forced;   // known to lie on the path
    bool operator==(const Knowledge&) const = default;
};

enum class Outcome { NoProgress, Progress, Contradiction };

// The steps in the order a player tries them, cheapest first. The numbers are the grader's.
enum ReasoningStep {
    kDeadEnds = 1,    // a node other than Start and End with one possible link left is off the path
    kPockets = 2,     // a group that only one node joins to Start is off the path
    kForcedLinks = 3, // a node on the path takes the links it needs and drops the rest
    kRegions = 4,     // free nodes whose way out leads back into one chain are off the path
    kLookAhead = 5,   // a link whose forcing leads to a contradiction is dropped (grader.h)
};

// The fixed facts of one puzzle: its lattice and its Start, Hint and End nodes.
class ReasoningSteps {
public:
    ReasoningSteps(int side, int start, int hint, int end);

    // The knowledge before any deduction: every valid link possible, none forced.
    Knowledge Begin(const LinkGraph& valid) const;

    // Applies one of steps 1 to 4 once, everywhere it applies.
    Outcome Apply(int step, Knowledge& k) const;

    // Applies steps 1 to 4, cheapest first, until none makes progress, the path is found or
    // a contradiction shows. Returns Progress when anything changed.
    Outcome Settle(Knowledge& k) const;

    // True when the forced links join Start to End through the Hint.
    bool Solved(const Knowledge& k) const;

    // False when the knowledge contradicts itself in a way seen at a glance: a node with more
    // forced links than it may have, or a node on the path with fewer possible than it needs.
    bool Consistent(const Knowledge& k) const;

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

    Outcome DeadEnds(Knowledge& k) const;
    Outcome Pockets(Knowledge& k) const;
    Outcome ForcedLinks(Knowledge& k) const;
    Outcome Regions(Knowledge& k) const;
    Outcome ChainLinks(Knowledge& k, const Chains& chains) const;

    Chains FindChains(const Knowledge& k) const;
    NodeSet OnPath(const Knowledge& k) const;
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
