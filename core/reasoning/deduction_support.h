// What the two sources of the deductions share, deductions.cpp (the steps and the listing) and
// deduction_rules.cpp (the rules): counts of links at nodes, and the sink that collects what a
// rule finds. Nothing else includes it.
#pragma once

#include "core/reasoning/deductions.h"

#include <vector>

namespace tallyon::deduction_support {

// The nodes with at least one, two and three links of a set.
struct Degrees {
    NodeSet one = 0, two = 0, three = 0;
};

inline Degrees CountAt(const LinkSet& l, int side)
{
    const NodeSet right = l.h, left = l.h << 1, down = l.v, up = l.v << side;
    const NodeSet across = right | left, along = down | up;
    Degrees d;
    d.one = across | along;
    d.two = (right & left) | (down & up) | (across & along);
    d.three = (right & left & along) | (down & up & across);
    return d;
}

inline LinkSet Undecided(const Knowledge& k) { return k.possible.Without(k.forced); }

// The most parts one search for pockets can find: one for each node of the largest lattice.
constexpr std::size_t kMaxParts = kMaxLatticeNodes;

} // namespace tallyon::deduction_support

namespace tallyon {

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

} // namespace tallyon
