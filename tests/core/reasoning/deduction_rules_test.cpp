// Each rule of the deductions against a slow, obvious check of the same rule, node by node,
// link by link and group by group, on small random boards in random states of knowledge that
// a chain from Start through the Hint to End still fits: a rule must find all it may, not
// only what is right.
#include "core/board/random.h"
#include "core/reasoning/deductions.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tallyon {
namespace {

using namespace testing;

// Boards drawn per lattice size and share of valid links.
constexpr int kBoardsPerKind = 300;
// Chains listed per board at most; past that no link is known to lie on none.
constexpr std::size_t kMaxChains = 20000;
// Each rule must find something on at least this many boards, or the test says little.
constexpr int kLeastFinds = 50;
constexpr int kPercent = 100;
// The rules of kRuleOrder, named in that order.
constexpr std::array<const char*, kRuleOrder.size()> kRuleNames = {
    "dead end", "take links", "drop the rest", "loop", "skip the Hint", "pocket", "region", "Start's and End's region",
};

// What a rule finds: the links it drops and forces, and for pockets and regions the groups
// it is about, each with the node or the chains beside it.
struct Found {
    LinkSet dropped, forced;
    std::vector<std::pair<NodeSet, NodeSet>> groups;
};

bool ListsGroups(Rule rule) { return rule == Rule::Pocket || rule == Rule::Region || rule == Rule::EndsRegion; }

std::string Text(NodeSet nodes)
{
    std::string out = "{";
    for (NodeSet rest = nodes; rest; rest &= rest - 1)
        out += (out.size() > 1 ? " " : "") + std::to_string(LowestNode(rest));
    return out + "}";
}

std::string Text(const LinkSet& links, int side)
{
    std::string out;
    ForEachLink(links, side, [&](int a, int b) { out += " " + std::to_string(a) + "-" + std::to_string(b); });
    return out;
}

std::string Text(Found f, int side)
{
    std::sort(f.groups.begin(), f.groups.end());
    std::string out = "drops" + Text(f.dropped, side) + "; forces" + Text(f.forced, side) + ";";
    for (const auto& [group, beside] : f.groups)
        out += " " + Text(group) + " by " + Text(beside);
    return out;
}

// A small board and what is known of its links.
struct Case {
    int side = 0, start = 0, hint = 0, end = 0;
    Knowledge k;
};

std::string Describe(const Case& c)
{
    return "side " + std::to_string(c.side) + ", Start " + std::to_string(c.start) + ", Hint " +
           std::to_string(c.hint) + ", End " + std::to_string(c.end) + "\npossible" + Text(c.k.possible, c.side) +
           "\nforced" + Text(c.k.forced, c.side);
}

// The rules as one checks them by hand: each node, each link, and the groups that fall away
// when one node is taken out, one at a time.
class SlowRules {
public:
    explicit SlowRules(const Case& c)
        : c_(c), possible_(ToLinkGraph(c.k.possible, c.side)), forced_(ToLinkGraph(c.k.forced, c.side)),
          all_(LinkGraph::Empty(c.side).nodes)
    {
    }

    Found Of(Rule rule) const
    {
        switch (rule) {
        case Rule::DeadEnd:
            return EachNode(false, [&](int v) { return !IsEnd(v) && Links(possible_, v) == 1; });
        case Rule::TakeLinks:
            return EachNode(true, [&](int v) {
                return OnPath(v) && Links(possible_, v) == Needs(v) && Links(forced_, v) < Needs(v);
            });
        case Rule::DropRest:
            return EachNode(false, [&](int v) { return Links(forced_, v) >= Needs(v); });
        case Rule::Loop:
            return EachLink([&](int a, int b) { return (ChainOf(a) & NodeBit(b)) != 0; });
        case Rule::SkipHint:
            return EachLink([&](int a, int b) {
                const NodeSet s = ChainOf(c_.start), e = ChainOf(c_.end);
                return EndsApart() &&
                       (((s & NodeBit(a)) && (e & NodeBit(b))) || ((e & NodeBit(a)) && (s & NodeBit(b))));
            });
        case Rule::Pocket:
            return Pockets();
        case Rule::Region:
        case Rule::EndsRegion:
            return Regions(rule);
        case Rule::LookAhead:
            break;
        }
        return {};
    }

private:
    int Links(const LinkGraph& g, int v) const { return CountNodes(g.Neighbours(NodeBit(v))); }
    bool IsEnd(int v) const { return v == c_.start || v == c_.end; }
    int Needs(int v) const { return IsEnd(v) ? 1 : 2; }
    bool OnPath(int v) const { return v == c_.start || v == c_.hint || v == c_.end || Links(forced_, v) > 0; }
    bool Undecided(int a, int b) const { return possible_.IsOpen(a, b) && !forced_.IsOpen(a, b); }

    // The nodes reached from v over links of g, one step at a time, never leaving `within`.
    NodeSet Reach(int v, const LinkGraph& g, NodeSet within) const
    {
        std::vector<int> todo = {v};
        NodeSet seen = NodeBit(v);
        while (!todo.empty()) {
            const int at = todo.back();
            todo.pop_back();
            ForEachLatticeLink(c_.side, [&](int a, int b) {
                const int other = a == at ? b : b == at ? a : -1;
                if (other >= 0 && g.IsOpen(a, b) && (within & NodeBit(other)) && !(seen & NodeBit(other))) {
                    seen |= NodeBit(other);
                    todo.push_back(other);
                }
            });
        }
        return seen;
    }
    NodeSet ChainOf(int v) const { return Reach(v, forced_, all_); }
    bool EndsApart() const
    {
        const NodeSet both = ChainOf(c_.start) | ChainOf(c_.end);
        return !(ChainOf(c_.start) & NodeBit(c_.end)) && !(both & NodeBit(c_.hint));
    }

    // The undecided links with an end in `nodes`.
    LinkSet UndecidedAt(NodeSet nodes) const
    {
        LinkSet out;
        ForEachLatticeLink(c_.side, [&](int a, int b) {
            if (Undecided(a, b) && ((nodes & NodeBit(a)) || (nodes & NodeBit(b))))
                out = out | LinkBetween(a, b);
        });
        return out;
    }

    template <typename Applies>
    Found EachNode(bool forcing, Applies applies) const
    {
        Found f;
        for (int v = 0; v < c_.side * c_.side; ++v)
            if (applies(v))
                (forcing ? f.forced : f.dropped) = (forcing ? f.forced : f.dropped) | UndecidedAt(NodeBit(v));
        return f;
    }

    template <typename Applies>
    Found EachLink(Applies applies) const
    {
        Found f;
        ForEachLatticeLink(c_.side, [&](int a, int b) {
            if (Undecided(a, b) && applies(a, b))
                f.dropped = f.dropped | LinkBetween(a, b);
        });
        return f;
    }

    void AddGroup(Found& f, NodeSet group, NodeSet beside) const
    {
        const LinkSet links = UndecidedAt(group);
        if (links.Empty())
            return;
        f.dropped = f.dropped | links;
        f.groups.emplace_back(group, beside);
    }

    // The parts of `nodes` that its possible links keep together.
    std::vector<NodeSet> Parts(NodeSet nodes) const
    {
        std::vector<NodeSet> parts;
        for (NodeSet rest = nodes; rest; rest &= ~parts.back())
            parts.push_back(Reach(LowestNode(rest), possible_, nodes));
        return parts;
    }

    // Take out each node Start reaches in turn: a part of the rest that holds neither Start
    // nor End falls away. The largest such parts, and whatever Start cannot reach.
    Found Pockets() const
    {
        const NodeSet reached = Reach(c_.start, possible_, all_);
        std::vector<std::pair<NodeSet, NodeSet>> fallen;
        for (NodeSet rest = reached; rest; rest &= rest - 1)
            for (const NodeSet part : Parts(reached & ~(rest & (~rest + 1))))
                if (!(part & (NodeBit(c_.start) | NodeBit(c_.end))))
                    fallen.emplace_back(part, rest & (~rest + 1));
        Found f;
        for (const auto& [part, by] : fallen) {
            const bool inner = std::any_of(fallen.begin(), fallen.end(), [&](const auto& other) {
                return other.first != part && (part & ~other.first) == 0;
            });
            if (!inner)
                AddGroup(f, part, by);
        }
        for (const NodeSet part : Parts(all_ & ~reached))
            AddGroup(f, part, 0);
        return f;
    }

    // Free nodes held together by possible links, and the chains their possible links lead into.
    Found Regions(Rule rule) const
    {
        NodeSet free = 0;
        for (int v = 0; v < c_.side * c_.side; ++v)
            free |= OnPath(v) ? 0 : NodeBit(v);
        Found f;
        for (const NodeSet region : Parts(free)) {
            NodeSet doors = possible_.Neighbours(region) & ~region, chains = 0;
            std::vector<NodeSet> into;
            for (NodeSet rest = doors; rest; rest &= rest - 1)
                if (!(chains & (rest & (~rest + 1)))) {
                    into.push_back(ChainOf(LowestNode(rest)));
                    chains |= into.back();
                }
            const NodeSet ends = ChainOf(c_.start) | ChainOf(c_.end);
            if (into.size() <= 1 && rule == Rule::Region)
                AddGroup(f, region, chains);
            else if (into.size() > 1 && rule == Rule::EndsRegion && EndsApart() && !(doors & ~ends))
                AddGroup(f, region, ends);
        }
        return f;
    }

    Case c_;
    LinkGraph possible_, forced_;
    NodeSet all_;
};

// Every simple chain from `at` to the case's End through its Hint, as its links.
void ListChains(const Case& c, const LinkGraph& g, int at, NodeSet visited, LinkSet used, std::vector<LinkSet>& out)
{
    if (out.size() >= kMaxChains)
        return;
    if (at == c.end) {
        if (visited & NodeBit(c.hint))
            out.push_back(used);
        return;
    }
    for (NodeSet next = g.Neighbours(NodeBit(at)) & ~visited; next; next &= next - 1) {
        const int to = LowestNode(next);
        ListChains(c, g, to, visited | NodeBit(to), used | LinkBetween(at, to), out);
    }
}

// A random board of side x side nodes with a state of knowledge that a chain still fits:
// some of one chain's links forced, some of the links that lie on no chain dropped.
std::optional<Case> DrawCase(int side, int validPercent)
{
    LinkGraph valid = LinkGraph::Empty(side);
    ForEachLatticeLink(side, [&](int a, int b) { valid.SetLink(a, b, RandomInt(kPercent, 0) < validPercent); });
    Case c{side, RandomInt(side * side, 0), RandomInt(side * side, 0), RandomInt(side * side, 0), {}};
    if (c.start == c.hint || c.hint == c.end || c.start == c.end)
        return std::nullopt;
    std::vector<LinkSet> chains;
    ListChains(c, valid, c.start, NodeBit(c.start), {}, chains);
    if (chains.empty())
        return std::nullopt;
    LinkSet onSome;
    for (const LinkSet& chain : chains)
        onSome = onSome | chain;
    if (chains.size() >= kMaxChains)
        onSome = ToLinkSet(valid);
    const int forcePercent = RandomInt(kPercent, 0), dropPercent = RandomInt(kPercent, 0);
    c.k.possible = ToLinkSet(valid);
    ForEachLink(chains[static_cast<std::size_t>(RandomInt(static_cast<int>(chains.size()), 0))], side,
                [&](int a, int b) {
                    if (RandomInt(kPercent, 0) < forcePercent)
                        c.k.forced = c.k.forced | LinkBetween(a, b);
                });
    ForEachLink(c.k.possible.Without(onSome), side, [&](int a, int b) {
        if (RandomInt(kPercent, 0) < dropPercent)
            c.k.possible = c.k.possible.Without(LinkBetween(a, b));
    });
    return c;
}

Found Listed(Rule rule, const std::vector<Deduction>& list)
{
    Found f;
    for (const Deduction& d : list) {
        f.dropped = f.dropped | d.dropped;
        f.forced = f.forced | d.forced;
        if (ListsGroups(rule))
            f.groups.emplace_back(d.about, d.beside);
    }
    return f;
}

// The rules of a step in the stages Apply takes them: step 3 takes links where it can, or
// else drops the rest where it can, or else drops the links that close a loop or skip the Hint.
std::vector<std::vector<Rule>> Stages(int step)
{
    switch (step) {
    case kDeadEnds:
        return {{Rule::DeadEnd}};
    case kPockets:
        return {{Rule::Pocket}};
    case kForcedLinks:
        return {{Rule::TakeLinks}, {Rule::DropRest}, {Rule::Loop, Rule::SkipHint}};
    default:
        return {{Rule::Region, Rule::EndsRegion}};
    }
}

// The knowledge after one step, made of the deductions Find lists for its first stage that
// finds any.
Knowledge StepByFind(const ReasoningSteps& steps, int step, const Knowledge& k)
{
    for (const auto& stage : Stages(step)) {
        std::vector<Deduction> found;
        for (const Rule rule : stage)
            steps.Find(rule, k, found);
        Knowledge after = k;
        for (const Deduction& d : found)
            ReasoningSteps::Take(d, after);
        if (!found.empty())
            return after;
    }
    return k;
}

// Each rule lists just what the slow check finds, and each step applied at once makes just
// the changes of what its rules list; `finds` counts the rules that found anything.
void CheckCase(const Case& c, std::array<int, kRuleOrder.size()>& finds)
{
    const ReasoningSteps steps(c.side, c.start, c.hint, c.end);
    for (std::size_t r = 0; r < kRuleOrder.size(); ++r) {
        std::vector<Deduction> list;
        ASSERT_TRUE(steps.Find(kRuleOrder[r], c.k, list)) << "a contradiction where a chain fits";
        ASSERT_EQ(Text(Listed(kRuleOrder[r], list), c.side), Text(SlowRules(c).Of(kRuleOrder[r]), c.side))
            << kRuleNames[r];
        finds[r] += list.empty() ? 0 : 1;
    }
    for (const int step : kStepOrder) {
        Knowledge k = c.k;
        const Outcome outcome = steps.Apply(step, k);
        const Knowledge want = StepByFind(steps, step, c.k);
        ASSERT_TRUE(k == want) << "step " << step;
        ASSERT_EQ(outcome, want == c.k ? Outcome::NoProgress : Outcome::Progress) << "step " << step;
    }
}

TEST(DeductionRules, FindAllThatTheSlowCheckFindsAndApplyMakesTheirChanges)
{
    TickingClock clock;
    std::array<int, kRuleOrder.size()> finds{};
    for (const int side : {3, 4, 5})
        for (const int validPercent : {60, 75, 90})
            for (int boards = 0; boards < kBoardsPerKind;) {
                const std::optional<Case> c = DrawCase(side, validPercent);
                if (!c)
                    continue;
                ++boards;
                SCOPED_TRACE(Describe(*c));
                ASSERT_NO_FATAL_FAILURE(CheckCase(*c, finds));
            }
    for (std::size_t r = 0; r < kRuleOrder.size(); ++r)
        EXPECT_GE(finds[r], kLeastFinds) << kRuleNames[r];
}

} // namespace
} // namespace tallyon
