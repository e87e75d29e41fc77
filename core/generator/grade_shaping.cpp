// Cutting back what holds the deductions up, or opening links until they need more.
#include "core/generator/grade_shaping.h"

#include "core/board/random.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tallyon {
namespace {

// Rounds of cutting back allowed per path node: each round cuts at least one link.
constexpr int kCutRoundsPerPathNode = 4;
// The most nodes of a side road that Easy keeps as a tree.
constexpr int kMaxRoadTree = 3;

int LinksAt(const LinkSet& links, int side, int v)
{
    return CountNodes(ToLinkGraph(links, side).Neighbours(NodeBit(v)));
}

template <typename T>
void Shuffle(std::vector<T>& items)
{
    for (std::size_t i = items.size(); i > 1; --i)
        std::swap(items[i - 1], items[static_cast<std::size_t>(RandomInt(static_cast<int>(i), 0))]);
}

} // namespace

GradeShaper::GradeShaper(LinkGraph& open, const std::vector<int>& pathNodes, int hint, std::optional<Grade> grade)
    : open_(open), pathNodes_(pathNodes), wanted_(grade), grade_(grade.value_or(Grade::Hard)),
      start_(pathNodes.front()), hint_(pathNodes[static_cast<std::size_t>(hint)]), end_(pathNodes.back()),
      place_(static_cast<std::size_t>(open.side * open.side), -1)
{
    for (std::size_t i = 0; i < pathNodes.size(); ++i) {
        path_ |= NodeBit(pathNodes[i]);
        place_[static_cast<std::size_t>(pathNodes[i])] = static_cast<int>(i);
    }
    ForEachLatticeLink(open.side, [&](int a, int b) { offPath_ += IsPathLink(a, b) ? 0 : 1; });
}

int GradeShaper::ValidOffPath() const
{
    int valid = 0;
    ForEachLatticeLink(open_.side, [&](int a, int b) { valid += open_.IsOpen(a, b) && !IsPathLink(a, b) ? 1 : 0; });
    return valid;
}

std::vector<std::pair<int, int>> GradeShaper::ClosedLinks() const
{
    std::vector<std::pair<int, int>> closed;
    ForEachLatticeLink(open_.side, [&](int a, int b) {
        if (!open_.IsOpen(a, b))
            closed.emplace_back(a, b);
    });
    Shuffle(closed);
    return closed;
}

void GradeShaper::AddRoads(int percent)
{
    const int side = open_.side;
    std::vector<int> bare;
    int roads = 0;
    for (std::size_t i = 0; i + 1 < pathNodes_.size(); ++i) {
        const int p = pathNodes_[i];
        bool road = false;
        for (NodeSet around = open_.Neighbours(NodeBit(p)); around; around &= around - 1)
            road = road || !IsPathLink(p, LowestNode(around));
        (road ? roads : (bare.push_back(p), roads)) += road ? 1 : 0;
    }
    Shuffle(bare);
    const int roadNodes = static_cast<int>(pathNodes_.size()) - 1;
    for (const int p : bare) {
        if (100 * roads >= percent * roadNodes)
            return;
        std::vector<int> around;
        for (const int q : {p - side, p + side, p % side ? p - 1 : -1, (p + 1) % side ? p + 1 : -1})
            if (q >= 0 && q < side * side && !IsPathLink(p, q))
                around.push_back(q);
        Shuffle(around);
        for (const int q : around)
            if (OpenRoad(p, q)) {
                ++roads;
                break;
            }
    }
}

// A road from p to q as it is, or, for a free q, with q taken out of whatever group it was in
// so that it hangs on p alone; false, with nothing changed, when neither keeps the grade.
bool GradeShaper::OpenRoad(int p, int q)
{
    open_.SetLink(p, q, true);
    if (HasGrade())
        return true;
    if (!OnPath(q)) {
        const LinkGraph before = open_;
        for (NodeSet around = open_.Neighbours(NodeBit(q)) & ~NodeBit(p); around; around &= around - 1)
            open_.SetLink(q, LowestNode(around), false);
        if (HasGrade())
            return true;
        open_ = before;
    }
    open_.SetLink(p, q, false);
    return false;
}

bool GradeShaper::RaiseValidShare(int percent)
{
    int valid = ValidOffPath();
    for (const auto& [a, b] : ClosedLinks()) {
        if (100 * valid > percent * offPath_)
            return true;
        open_.SetLink(a, b, true);
        if (HasGrade())
            ++valid;
        else
            open_.SetLink(a, b, false);
    }
    return 100 * valid > percent * offPath_;
}

bool GradeShaper::IsPathLink(int a, int b) const
{
    const int pa = place_[static_cast<std::size_t>(a)], pb = place_[static_cast<std::size_t>(b)];
    return pa >= 0 && pb >= 0 && std::abs(pa - pb) == 1;
}

bool GradeShaper::SolvedBy(Grade grade) const { return SolvedWithin(grade, open_, start_, hint_, end_); }

bool GradeShaper::HasGrade() const
{
    if (!wanted_)
        return SolvedBy(Grade::Hard);
    return SolvedBy(grade_) && (grade_ == Grade::Easy || !SolvedBy(static_cast<Grade>(static_cast<int>(grade_) - 1)));
}

bool GradeShaper::Shape()
{
    if (!wanted_)
        return SolvedBy(Grade::Hard);
    if (!SolvedBy(grade_) && !Simplify())
        return false;
    if (!HasGrade() && !Complicate())
        return false;
    return HasGrade();
}

// Where the grade's deductions stall, a path node lacks links and still has others: the free
// nodes behind one of those are cut back, and the deductions run again.
bool GradeShaper::Simplify()
{
    const int side = open_.side;
    const int rounds = kCutRoundsPerPathNode * static_cast<int>(pathNodes_.size());
    for (int round = 0; round < rounds; ++round) {
        const Settled s = SettleWithin(grade_, open_, start_, hint_, end_);
        if (s.solved)
            return true;
        const LinkSet undecided = s.known.possible.Without(s.known.forced);
        const NodeSet chained =
            ToLinkGraph(s.known.forced, side).Neighbours(path_) | NodeBit(start_) | NodeBit(hint_) | NodeBit(end_);
        std::vector<std::pair<int, int>> stalled, atChains;
        ForEachLink(undecided, side, [&](int a, int b) {
            if (IsPathLink(a, b))
                return;
            for (const auto& [p, x] : {std::pair{a, b}, std::pair{b, a}}) {
                const int need = p == start_ || p == end_ ? 1 : 2;
                if (!OnPath(p) || LinksAt(s.known.forced, side, p) >= need)
                    continue;
                stalled.emplace_back(p, x);
                if (chained & NodeBit(p))
                    atChains.emplace_back(p, x);
            }
        });
        const std::vector<std::pair<int, int>>& pick = atChains.empty() ? stalled : atChains;
        if (pick.empty())
            return false;
        const auto [p, x] = pick[static_cast<std::size_t>(RandomInt(static_cast<int>(pick.size()), 0))];
        CutBack(s.known, p, x);
    }
    return SolvedBy(grade_);
}

// A link to another path node is closed. Free nodes are cut back: above Easy they are shared
// out among the path nodes they touch, each part joined to one of them alone, a pocket for
// the pocket step that keeps every one of those path nodes its side road; for Easy (or where
// no other path node touches them), to a small tree that hangs on p by the link to x alone,
// which dead ends peel.
void GradeShaper::CutBack(const Knowledge& known, int p, int x)
{
    const int side = open_.side;
    if (OnPath(x)) {
        open_.SetLink(p, x, false);
        return;
    }
    const LinkGraph possible = ToLinkGraph(known.possible.Without(known.forced), side);
    NodeSet group = NodeBit(x);
    for (NodeSet grown; (grown = group | (possible.Neighbours(group) & ~path_)) != group;)
        group = grown;
    if (grade_ != Grade::Easy && SplitGroup(possible, group, p, x))
        return;
    TrimToTree(possible, group, p, x);
}

bool GradeShaper::SplitGroup(const LinkGraph& possible, NodeSet group, int p, int x)
{
    std::vector<int> owner(static_cast<std::size_t>(open_.side * open_.side), -1);
    std::vector<int> queue{x};
    owner[static_cast<std::size_t>(x)] = p;
    bool shared = false;
    std::vector<int> members;
    for (NodeSet rest = group; rest; rest &= rest - 1)
        members.push_back(LowestNode(rest));
    Shuffle(members);
    for (const int g : members) {
        const NodeSet touching = possible.Neighbours(NodeBit(g)) & path_ & ~NodeBit(p);
        if (!touching || owner[static_cast<std::size_t>(g)] >= 0)
            continue;
        owner[static_cast<std::size_t>(g)] = LowestNode(touching);
        queue.push_back(g);
        shared = true;
    }
    if (!shared)
        return false;
    for (std::size_t at = 0; at < queue.size(); ++at)
        for (NodeSet next = possible.Neighbours(NodeBit(queue[at])) & group; next; next &= next - 1) {
            const int w = LowestNode(next);
            if (owner[static_cast<std::size_t>(w)] < 0) {
                owner[static_cast<std::size_t>(w)] = owner[static_cast<std::size_t>(queue[at])];
                queue.push_back(w);
            }
        }
    ForEachLatticeLink(open_.side, [&](int a, int b) {
        if (!possible.IsOpen(a, b) || !(group & (NodeBit(a) | NodeBit(b))))
            return;
        const int oa = OnPath(a) ? a : owner[static_cast<std::size_t>(a)];
        const int ob = OnPath(b) ? b : owner[static_cast<std::size_t>(b)];
        if (oa != ob)
            open_.SetLink(a, b, false);
    });
    return true;
}

void GradeShaper::TrimToTree(const LinkGraph& possible, NodeSet group, int p, int x)
{
    const int side = open_.side;
    // A small tree from x by breadth first stays p's side road; the rest of the group is cut
    // off from it and from p, and keeps its own links: a part of the board that no valid link
    // joins to p's road, which dead ends and forced links can leave alone.
    const int treeSize = 1 + RandomInt(kMaxRoadTree, 0);
    NodeSet tree = NodeBit(x);
    LinkSet treeLinks = LinkBetween(p, x);
    for (int grown = 1; grown < treeSize;) {
        const NodeSet reach = possible.Neighbours(tree) & group & ~tree;
        if (!reach)
            break;
        const int v = LowestNode(reach);
        const int from = LowestNode(possible.Neighbours(NodeBit(v)) & tree);
        tree |= NodeBit(v);
        treeLinks = treeLinks | LinkBetween(v, from);
        ++grown;
    }
    ForEachLatticeLink(side, [&](int a, int b) {
        const NodeSet ends = NodeBit(a) | NodeBit(b);
        const bool atTree = (ends & tree) != 0, atP = (ends & NodeBit(p)) != 0, atGroup = (ends & group) != 0;
        if (possible.IsOpen(a, b) && (LinkBetween(a, b) & treeLinks).Empty() && (atTree || (atP && atGroup)))
            open_.SetLink(a, b, false);
    });
}

void GradeShaper::Enrich()
{
    for (const auto& [a, b] : ClosedLinks()) {
        open_.SetLink(a, b, true);
        if (!HasGrade())
            open_.SetLink(a, b, false);
    }
}

// Links off the path are opened one at a time in random order, each kept while the grade's
// deductions still solve the puzzle, until the grade below no longer does.
bool GradeShaper::Complicate()
{
    const auto below = static_cast<Grade>(static_cast<int>(grade_) - 1);
    // Links between free nodes first: they make the groups harder to see through while leaving
    // the path nodes' counts of valid links as they are, which would otherwise give them away.
    std::vector<std::pair<int, int>> closed = ClosedLinks();
    std::stable_partition(closed.begin(), closed.end(),
                          [&](const auto& l) { return !OnPath(l.first) && !OnPath(l.second); });
    for (const auto& [a, b] : closed) {
        open_.SetLink(a, b, true);
        if (!SolvedBy(grade_)) {
            open_.SetLink(a, b, false);
            continue;
        }
        if (!SolvedBy(below))
            return true;
    }
    return false;
}

} // namespace tallyon
