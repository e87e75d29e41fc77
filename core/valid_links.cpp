// Side roads by construction, then every other link made valid where the solver allows it.
//
// 1. Shortcuts between two path nodes, one before the Hint and one after it, open where the
//    solver allows them.
// 2. The off-path nodes are shared out into groups: each path node first takes one free
//    neighbour (a largest matching, so that most path nodes get a side road), then the
//    groups grow round-robin, one node per path node per round, towards where they touch
//    themselves most. Groups are merged while that makes more links valid than it closes
//    and enough path nodes keep a side road.
// 3. A group is joined by valid links to its own path node only, so it is a dead end: a
//    chain that enters it can leave only the way it came.
// 4. In random order, each remaining off-path link is made valid if the path stays the only
//    chain. A set of off-path nodes joined to two path nodes before the Hint, or two after
//    it, always opens a second chain (the detour between them); one joined to a path node
//    before the Hint and one after it only skips the Hint, which is harmless unless another
//    detour leads back, and only that case needs the solver.
// 5. The whole board is solved once more; the link digits then follow the choice.
#include "core/valid_links.h"
#include "core/chain_solver.h"
#include "core/decoy_fill.h"
#include "core/link_rule.h"
#include "core/random.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace tallyon {
namespace {

constexpr int kMaxNodes = 128;

struct Link {
    int a, b; // node numbers, a < b
};

// The share of path nodes, in percent, below which merging groups stops: the merge that
// takes the count of path nodes with a side road under it is the last one.
constexpr int kSideRoadPercent = 58;

// The number of links of the graph g between a node of a and a node of b.
int LinkCount(const LinkGraph& g, NodeSet a, NodeSet b)
{
    return CountNodes(((a & g.right) << 1) & b) + CountNodes(((a & g.left) >> 1) & b)
        + CountNodes(((a & g.down) << g.side) & b) + CountNodes(((a & g.up) >> g.side) & b);
}

// A random node of a non-empty set.
int PickNode(NodeSet set)
{
    for (int skip = RandomInt(CountNodes(set), 0); skip > 0; --skip)
        set &= set - 1;
    return LowestNode(set);
}

class LinkChooser {
public:
    explicit LinkChooser(Board& board) : b_(board), n_(board.GridSize + 1)
    {
        pathIndex_.fill(-1);
        for (std::size_t i = 0; i < board.PathCells.size(); i += 2) {
            const int cell = board.PathCells[i];
            pathIndex_[static_cast<std::size_t>(Node(cell))] = static_cast<int>(i / 2);
            pathNodes_.push_back(Node(cell));
            path_ |= NodeBit(Node(cell));
        }
        hint_ = static_cast<int>(HintItemIndex(board.PathCells.size()) / 2);
        grid_ = LinkGraph::Empty(n_);
        for (int v = 0; v < n_ * n_; ++v) {
            if (v % n_ + 1 < n_)
                grid_.SetLink(v, v + 1, true);
            if (v + n_ < n_ * n_)
                grid_.SetLink(v, v + n_, true);
        }
        open_ = LinkGraph::Empty(n_);
        for (std::size_t i = 1; i < pathNodes_.size(); ++i) {
            open_.SetLink(pathNodes_[i - 1], pathNodes_[i], true);
            shortcuts_.Join(static_cast<int>(i - 1), static_cast<int>(i));
        }
    }

    void Run()
    {
        LinkGraph deadEndsOnly = open_; // the path's own links so far
        OpenShortcuts();
        std::vector<NodeSet> groups = GrowGroups();
        MergeGroups(groups);
        SetOwners(groups);
        OpenGroupLinks(open_);
        OpenGroupLinks(deadEndsOnly);
        TryOtherLinks();
        // The whole board, solved once more without the shortcut view. Should this ever
        // find a second chain, only the dead ends stay: those alone can never open one.
        const ChainCount found = CountChains(open_, pathNodes_.front(), NodeBit(pathNodes_[static_cast<std::size_t>(hint_)]),
                                             pathNodes_.back(), 2, kBoardProofBudget);
        if (found.chains != 1 || !found.complete)
            open_ = deadEndsOnly;
        WriteDigits();
    }

private:
    int Node(int cell) const { return NodeIndex(b_.GridSize, b_.CellRow[cell], b_.CellCol[cell]); }
    bool OnPath(int v) const { return pathIndex_[static_cast<std::size_t>(v)] >= 0; }

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
        const std::array<int, kMaxNodes> seeds = MatchSeeds();
        for (int v = 0; v < n_ * n_; ++v)
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
    std::array<int, kMaxNodes> MatchSeeds() const
    {
        std::array<int, kMaxNodes> matchedTo;
        matchedTo.fill(-1);
        for (std::size_t i = 0; i < pathNodes_.size(); ++i) {
            NodeSet seen = 0;
            Augment(static_cast<int>(i), matchedTo, seen);
        }
        return matchedTo;
    }

    bool Augment(int i, std::array<int, kMaxNodes>& matchedTo, NodeSet& seen) const
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
    void MergeGroups(std::vector<NodeSet>& groups) const
    {
        // A path node has a side road while its group is not empty or a shortcut leaves it.
        // The End node's side roads lead nowhere a player could want to go, so End is not
        // counted.
        const std::size_t last = groups.size() - 1;
        auto hasRoad = [&](std::size_t i) {
            return (groups[i] & ~path_) || (open_.Neighbours(NodeBit(pathNodes_[i])) & ~NeighboursOnPath(i));
        };
        int withRoad = 0;
        for (std::size_t i = 0; i < last; ++i)
            withRoad += hasRoad(i) ? 1 : 0;
        const int keep = (kSideRoadPercent * static_cast<int>(last) + 99) / 100;
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

    // Shortcuts between two path nodes, one before the Hint and one after it, that the
    // solver proves harmless.
    void OpenShortcuts()
    {
        ForEachLink([&](Link l) {
            if (OnPath(l.a) && OnPath(l.b) && Straddles(NodeBit(l.a) | NodeBit(l.b)))
                TryLink(l);
        });
    }

    // Each group becomes one set of off-path nodes, joined to its own path node.
    void SetOwners(const std::vector<NodeSet>& groups)
    {
        owner_.fill(-1);
        std::iota(parent_.begin(), parent_.end(), 0);
        for (std::size_t i = 0; i < groups.size(); ++i) {
            const NodeSet off = groups[i] & ~path_;
            if (!off)
                continue;
            const int root = LowestNode(off);
            attached_[static_cast<std::size_t>(root)] = NodeBit(pathNodes_[i]);
            for (NodeSet rest = off; rest; rest &= rest - 1) {
                owner_[static_cast<std::size_t>(LowestNode(rest))] = pathNodes_[i];
                parent_[static_cast<std::size_t>(LowestNode(rest))] = root;
            }
        }
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

    void OpenGroupLinks(LinkGraph& graph) const
    {
        ForEachLink([&](Link l) {
            const bool pathA = OnPath(l.a), pathB = OnPath(l.b);
            const int ownerA = pathA ? l.a : owner_[static_cast<std::size_t>(l.a)];
            const int ownerB = pathB ? l.b : owner_[static_cast<std::size_t>(l.b)];
            if (!(pathA && pathB) && ownerA == ownerB)
                graph.SetLink(l.a, l.b, true);
        });
    }

    void TryOtherLinks()
    {
        std::vector<Link> closed;
        ForEachLink([&](Link l) {
            if (!open_.IsOpen(l.a, l.b))
                closed.push_back(l);
        });
        for (std::size_t i = closed.size(); i > 1; --i)
            std::swap(closed[i - 1], closed[static_cast<std::size_t>(RandomInt(static_cast<int>(i), 0))]);
        // Links that would join a path node before the Hint to one after it go first: each
        // such trap gives two path nodes a side road, and the later links could block it.
        // A link refused once stays refused: opening more links only adds chains.
        std::vector<bool> tried(closed.size(), false);
        for (std::size_t i = 0; i < closed.size(); ++i) {
            bool sameSet = false;
            const NodeSet joined = JoinedPathNodes(closed[i], sameSet);
            if (!sameSet && CountNodes(joined) == 2 && Straddles(joined)) {
                TryLink(closed[i]);
                tried[i] = true;
            }
        }
        for (std::size_t i = 0; i < closed.size(); ++i)
            if (!tried[i])
                TryLink(closed[i]);
    }

    // The path nodes a set of off-path nodes would be joined to if the link opened, or 0
    // when the link joins two nodes of one such set and so changes nothing that matters.
    NodeSet JoinedPathNodes(Link l, bool& sameSet)
    {
        sameSet = false;
        const bool pathA = OnPath(l.a), pathB = OnPath(l.b);
        if (pathA && pathB)
            return NodeBit(l.a) | NodeBit(l.b);
        if (pathA || pathB) {
            const int off = pathA ? l.b : l.a, on = pathA ? l.a : l.b;
            return attached_[static_cast<std::size_t>(Find(off))] | NodeBit(on);
        }
        const int ra = Find(l.a), rb = Find(l.b);
        sameSet = ra == rb;
        return attached_[static_cast<std::size_t>(ra)] | attached_[static_cast<std::size_t>(rb)];
    }

    // True when the two path nodes lie on either side of the Hint.
    bool Straddles(NodeSet joined) const
    {
        const int first = pathIndex_[static_cast<std::size_t>(LowestNode(joined))];
        const int second = pathIndex_[static_cast<std::size_t>(LowestNode(joined & (joined - 1)))];
        return std::min(first, second) < hint_ && std::max(first, second) > hint_;
    }

    // True when joining the two path nodes of `joined` leaves the path the only chain.
    // Every set of off-path nodes is joined to at most two path nodes, so to a chain it is
    // either a dead end or one more link between those two; the solver then works on the
    // path nodes alone, with the path's links and these shortcuts.
    bool ProvedHarmless(NodeSet joined) const
    {
        ChainGraph tried = shortcuts_;
        const int first = pathIndex_[static_cast<std::size_t>(LowestNode(joined))];
        const int second = pathIndex_[static_cast<std::size_t>(LowestNode(joined & (joined - 1)))];
        tried.Join(first, second);
        const int last = static_cast<int>(pathNodes_.size()) - 1;
        const ChainCount found = CountChains(tried, 0, NodeBit(hint_), last, 2, kLinkProofBudget);
        return found.chains == 1 && found.complete;
    }

    void TryLink(Link l)
    {
        bool sameSet = false;
        const NodeSet joined = JoinedPathNodes(l, sameSet);
        const int count = CountNodes(joined);
        if (!sameSet && count > 1) {
            if (count > 2 || !Straddles(joined) || !ProvedHarmless(joined))
                return;
            shortcuts_.Join(pathIndex_[static_cast<std::size_t>(LowestNode(joined))],
                            pathIndex_[static_cast<std::size_t>(LowestNode(joined & (joined - 1)))]);
        }
        open_.SetLink(l.a, l.b, true);
        if (OnPath(l.a) && OnPath(l.b))
            return;
        const int ra = Find(OnPath(l.a) ? l.b : l.a), rb = Find(OnPath(l.b) ? l.a : l.b);
        parent_[static_cast<std::size_t>(ra)] = rb;
        attached_[static_cast<std::size_t>(rb)] = joined;
    }

    // Sets each off-path link cell's digit so that the link is valid exactly when open.
    void WriteDigits()
    {
        ForEachLink([&](Link l) {
            const int ra = 2 * (l.a / n_) + 1, ca = 2 * (l.a % n_) + 1;
            const int rc = 2 * (l.b / n_) + 1, cc = 2 * (l.b % n_) + 1;
            int& digit = b_.NodeValue((ra + rc) / 2, (ca + cc) / 2);
            const int x = b_.NodeValue(ra, ca), z = b_.NodeValue(rc, cc);
            const bool open = open_.IsOpen(l.a, l.b);
            if (IsValidTriple(x, digit, z) != open)
                digit = PickLinkDigit(x, z, open);
        });
    }

    // Calls visit on every link that is not a link of the path.
    template <typename Visit>
    void ForEachLink(Visit visit) const
    {
        for (int v = 0; v < n_ * n_; ++v)
            for (int w : {v + 1, v + n_}) {
                if ((w == v + 1 && v % n_ + 1 >= n_) || w >= n_ * n_)
                    continue;
                if (OnPath(v) && OnPath(w)
                    && std::abs(pathIndex_[static_cast<std::size_t>(v)] - pathIndex_[static_cast<std::size_t>(w)]) == 1)
                    continue;
                visit(Link{v, w});
            }
    }

    int Find(int v)
    {
        while (parent_[static_cast<std::size_t>(v)] != v)
            v = parent_[static_cast<std::size_t>(v)] = parent_[static_cast<std::size_t>(parent_[static_cast<std::size_t>(v)])];
        return v;
    }

    Board& b_;
    int n_;
    std::array<int, kMaxNodes> pathIndex_{};
    std::array<int, kMaxNodes> owner_{};
    std::array<int, kMaxNodes> parent_{};
    std::array<NodeSet, kMaxNodes> attached_{};
    std::vector<int> pathNodes_;
    NodeSet path_ = 0;
    int hint_ = 0;
    LinkGraph grid_, open_;
    ChainGraph shortcuts_; // path nodes by path index: the path's links and the shortcuts
};

} // namespace

void ChooseValidLinks(Board& board) { LinkChooser(board).Run(); }

} // namespace tallyon
