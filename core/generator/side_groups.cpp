// Side-road groups: a matching for the first node of each, round-robin growth, merging.
#include "core/generator/side_groups.h"
#include "core/board/random.h"

#include <array>

namespace tallyon {
namespace {

// The number of links of the graph g between a node of a and a node of b.
int LinkCount(const LinkGraph& g, NodeSet a, NodeSet b)
{
    return CountNodes(((a & g.right) << 1) & b) + CountNodes(((a & g.left) >> 1) & b) +
           CountNodes(((a & g.down) << g.side) & b) + CountNodes(((a & g.up) >> g.side) & b);
}

// A random node of a non-empty set.
int PickNode(NodeSet set)
{
    for (int skip = RandomInt(CountNodes(set), 0); skip > 0; --skip)
        set &= set - 1;
    return LowestNode(set);
}

class GroupBuilder {
public:
    GroupBuilder(const std::vector<int>& pathNodes, const LinkGraph& open)
        : pathNodes_(pathNodes), open_(open), grid_(LinkGraph::Full(open.side))
    {
        for (int p : pathNodes)
            path_ |= NodeBit(p);
    }

    // The off-path nodes, each claimed by the path node whose group reached it first. Each
    // group holds its path node as well.
    std::vector<NodeSet> GrowGroups() const
    {
        NodeSet unclaimed = grid_.nodes & ~path_;
        std::vector<NodeSet> groups;
        for (int p : pathNodes_)
            groups.push_back(NodeBit(p));
        // The first node of every group comes from a largest matching of path nodes to
        // off-path neighbours, so that as many path nodes as possible get a side road.
        const std::array<int, kMaxLatticeNodes> seeds = MatchSeeds();
        for (int v = 0; v < grid_.side * grid_.side; ++v)
            if (seeds[static_cast<std::size_t>(v)] >= 0) {
                groups[static_cast<std::size_t>(seeds[static_cast<std::size_t>(v)])] |= NodeBit(v);
                unclaimed &= ~NodeBit(v);
            }
        for (bool grown = true; unclaimed && grown;) {
            grown = false;
            for (NodeSet& group : groups) {
                const NodeSet reach = grid_.Neighbours(group) & unclaimed;
                if (!reach)
                    continue;
                const int v = PickNode(Snuggest(reach, group));
                group |= NodeBit(v);
                unclaimed &= ~NodeBit(v);
                grown = true;
            }
        }
        return groups;
    }

    // For each off-path node, the path index it is matched to, or -1 (augmenting paths).
    std::array<int, kMaxLatticeNodes> MatchSeeds() const
    {
        std::array<int, kMaxLatticeNodes> matchedTo;
        matchedTo.fill(-1);
        // Path nodes that already have a side road, a shortcut, and End, whose side roads
        // do not count, come last: an augmenting path never unmatches a path node, so the
        // ones that need a free node are served first.
        for (const bool needy : {true, false})
            for (std::size_t i = 0; i < pathNodes_.size(); ++i) {
                if (NeedsRoad(i) != needy)
                    continue;
                NodeSet seen = 0;
                Augment(static_cast<int>(i), matchedTo, seen);
            }
        return matchedTo;
    }

    // True for a path node other than End that no shortcut leaves.
    bool NeedsRoad(std::size_t i) const { return i + 1 < pathNodes_.size() && !HasShortcut(i); }

    bool HasShortcut(std::size_t i) const
    {
        return (open_.Neighbours(NodeBit(pathNodes_[i])) & ~NeighboursOnPath(i)) != 0;
    }

    bool Augment(int i, std::array<int, kMaxLatticeNodes>& matchedTo, NodeSet& seen) const
    {
        const NodeSet around = grid_.Neighbours(NodeBit(pathNodes_[static_cast<std::size_t>(i)])) & ~path_ & ~seen;
        for (NodeSet rest = around; rest; rest &= rest - 1) {
            const int v = LowestNode(rest);
            seen |= NodeBit(v);
            int& holder = matchedTo[static_cast<std::size_t>(v)];
            if (holder < 0 || Augment(holder, matchedTo, seen)) {
                holder = i;
                return true;
            }
        }
        return false;
    }

    // Folds a group into a neighbouring one while that makes more links valid than it loses
    // (its links to its own path node close, the links between the two groups open), as
    // long as enough path nodes keep a side road.
    void MergeGroups(std::vector<NodeSet>& groups, int keepRoadPercent) const
    {
        // A path node has a side road while its group is not empty or a shortcut leaves it.
        // The End node's side roads lead nowhere a player could want to go, so End is not
        // counted.
        const std::size_t last = groups.size() - 1;
        auto hasRoad = [&](std::size_t i) { return (groups[i] & ~path_) || HasShortcut(i); };
        int withRoad = 0;
        for (std::size_t i = 0; i < last; ++i)
            withRoad += hasRoad(i) ? 1 : 0;
        const int keep = (keepRoadPercent * static_cast<int>(last) + 99) / 100;
        for (;;) {
            int bestGain = 0;
            std::size_t from = 0, into = 0;
            for (std::size_t i = 0; i < groups.size(); ++i) {
                const NodeSet off = groups[i] & ~path_;
                if (!off)
                    continue;
                const int loss = LinkCount(grid_, off, NodeBit(pathNodes_[i]));
                for (std::size_t j = 0; j < groups.size(); ++j) {
                    if (j == i || !(groups[j] & ~path_))
                        continue;
                    const int gain = LinkCount(grid_, off, groups[j]) - loss;
                    if (gain > bestGain) {
                        bestGain = gain;
                        from = i;
                        into = j;
                    }
                }
            }
            if (bestGain == 0)
                return;
            groups[into] |= groups[from] & ~path_;
            groups[from] &= path_;
            if (from != last && !hasRoad(from) && --withRoad < keep)
                return;
        }
    }

    // The path nodes before and after path node i.
    NodeSet NeighboursOnPath(std::size_t i) const
    {
        NodeSet around = 0;
        if (i > 0)
            around |= NodeBit(pathNodes_[i - 1]);
        if (i + 1 < pathNodes_.size())
            around |= NodeBit(pathNodes_[i + 1]);
        return around;
    }

    // The nodes of `reach` that touch the group on the most sides: growing there keeps a
    // group compact, so fewer links run between two groups and stay invalid.
    NodeSet Snuggest(NodeSet reach, NodeSet group) const
    {
        NodeSet best = 0;
        int most = 0;
        for (NodeSet rest = reach; rest; rest &= rest - 1) {
            const int v = LowestNode(rest);
            const int touching = CountNodes(grid_.Neighbours(NodeBit(v)) & group);
            if (touching > most) {
                most = touching;
                best = 0;
            }
            if (touching == most)
                best |= NodeBit(v);
        }
        return best;
    }

private:
    const std::vector<int>& pathNodes_;
    const LinkGraph& open_;
    LinkGraph grid_;
    NodeSet path_ = 0;
};

} // namespace

std::vector<NodeSet> FormSideGroups(const std::vector<int>& pathNodes, const LinkGraph& open, int keepRoadPercent)
{
    const GroupBuilder builder(pathNodes, open);
    std::vector<NodeSet> groups = builder.GrowGroups();
    builder.MergeGroups(groups, keepRoadPercent);
    return groups;
}

} // namespace tallyon
