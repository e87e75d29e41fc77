// Side roads by construction, then every other link made valid where the path stays the only
// chain.
//
// 1. Shortcuts between two path nodes, one before the Hint and one after it, open where they
//    cross no other (shortcuts.h).
// 2. The off-path nodes are shared out into groups, one per path node (side_groups.h).
// 3. A group is joined by valid links to its own path node only, so it is a dead end: a
//    chain that enters it can leave only the way it came.
// 4. In random order, each remaining off-path link is made valid if the path stays the only
//    chain. A set of off-path nodes joined to two path nodes before the Hint, or two after
//    it, always opens a second chain (the detour between them); one joined to a path node
//    before the Hint and one after it only skips the Hint, which is harmless unless another
//    such shortcut crosses it and leads back.
// 5. Links are opened and closed once more so that no node's count of valid links gives the
//    path away (degree_balance.h); the link digits then follow the choice. The grader,
//    which every built puzzle goes through, proves the path the only chain once more.
#include "core/generator/valid_links.h"
#include "core/board/lattice.h"
#include "core/board/link_rule.h"
#include "core/board/random.h"
#include "core/generator/decoy_fill.h"
#include "core/generator/degree_balance.h"
#include "core/generator/grade_shaping.h"
#include "core/generator/shortcuts.h"
#include "core/generator/side_groups.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <numeric>
#include <utility>
#include <vector>

namespace tallyon {
namespace {

struct Link {
    int a, b; // node numbers, a < b
};

// Per grid size, in percent: the share of path nodes with a side road at which merging side
// groups stops, and the floors of the valid share of off-path links and of that side-road
// share below which links are no longer closed to hide the path's counts of valid links (a
// side-road share under its floor is raised where a road can be opened). Merging makes bigger
// groups whose nodes have more valid links, like the path's, at the cost of side roads: the
// small and middle sizes, whose paths leave free nodes only in narrow strips, merge furthest,
// 6x6, whose long paths leave the fewest free nodes, down to the half of its path nodes that
// must keep a road.
struct DecoyShares {
    int mergeRoad, validFloor, roadFloor;
};
constexpr std::array<DecoyShares, 7> kDecoyShares = {{
    {50, 55, 55}, // 4x4
    {58, 55, 55}, // 5x5
    {50, 55, 54}, // 6x6
    {52, 55, 58}, // 7x7
    {58, 57, 57}, // 8x8
    {58, 57, 57}, // 9x9
    {58, 57, 57}, // 10x10
}};
constexpr int kSmallestGrid = 4;
// Links off the path of which more than this share, in percent, are valid in every puzzle.
constexpr int kMostPercent = 50;

class LinkChooser {
public:
    LinkChooser(Board& board, std::optional<Grade> grade) : b_(board), n_(board.GridSize + 1), grade_(grade)
    {
        pathIndex_.fill(-1);
        for (std::size_t i = 0; i < board.PathCells.size(); i += 2) {
            const int cell = board.PathCells[i];
            pathIndex_[static_cast<std::size_t>(Node(cell))] = static_cast<int>(i / 2);
            pathNodes_.push_back(Node(cell));
            path_ |= NodeBit(Node(cell));
        }
        hint_ = static_cast<int>(HintItemIndex(board.PathCells.size()) / 2);
        open_ = LinkGraph::Empty(n_);
        for (std::size_t i = 1; i < pathNodes_.size(); ++i) {
            open_.SetLink(pathNodes_[i - 1], pathNodes_[i], true);
        }
    }

    bool Run(bool shape)
    {
        OpenShortcuts();
        SetOwners(FormSideGroups(pathNodes_, open_, Shares().mergeRoad));
        OpenGroupLinks(open_);
        TryOtherLinks();
        GradeShaper shaper(open_, pathNodes_, hint_, grade_);
        if (!grade_ || !shape) {
            shaper.RaiseValidShare(kMostPercent);
            BalanceDegrees(open_, pathNodes_, hint_, {Shares().validFloor, Shares().roadFloor});
            WriteDigits();
            return MostValid(shaper) && shaper.HasGrade();
        }
        bool shaped = shaper.Shape();
        if (shaped)
            shaper.AddRoads(Shares().roadFloor);
        if (shaped && grade_ == Grade::Easy)
            shaper.Enrich();
        // Most links off the path are valid in every puzzle, not only on average.
        shaped = shaped && shaper.RaiseValidShare(kMostPercent);
        BalanceCheck check;
        if (shaped)
            check = [&shaper](const LinkGraph&) { return shaper.HasGrade(); };
        BalanceDegrees(open_, pathNodes_, hint_, ShapedFloors(), check);
        WriteDigits();
        return shaped && MostValid(shaper);
    }

private:
    // Breaking a block of all-valid links may close links below any floor: only the end counts.
    static bool MostValid(const GradeShaper& shaper)
    {
        return 100 * shaper.ValidOffPath() > kMostPercent * shaper.OffPath();
    }
    // A puzzle shaped for a grade keeps fewer of its groups' links (Easy's side roads are trees,
    // Medium's groups pockets), and the balancing needs room to close links that would give the
    // path away by their count: links are closed down to just over half, not to the share the
    // puzzles drawn as they come keep.
    BalanceFloors ShapedFloors() const { return {kMostPercent + 1, Shares().roadFloor}; }
    const DecoyShares& Shares() const
    {
        return kDecoyShares[static_cast<std::size_t>(std::clamp(b_.GridSize, kSmallestGrid, 10) - kSmallestGrid)];
    }
    int Node(int cell) const { return NodeIndex(b_.GridSize, b_.CellRow[cell], b_.CellCol[cell]); }
    bool OnPath(int v) const { return pathIndex_[static_cast<std::size_t>(v)] >= 0; }

    // Shortcuts between two path nodes, one before the Hint and one after it, that cross no
    // other.
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

    // The path nodes that a link other than the path's own leaves.
    NodeSet PathNodesWithRoad() const
    {
        NodeSet roads = 0;
        for (std::size_t i = 0; i < pathNodes_.size(); ++i) {
            NodeSet own = 0;
            if (i > 0)
                own |= NodeBit(pathNodes_[i - 1]);
            if (i + 1 < pathNodes_.size())
                own |= NodeBit(pathNodes_[i + 1]);
            if (open_.Neighbours(NodeBit(pathNodes_[i])) & ~own)
                roads |= NodeBit(pathNodes_[i]);
        }
        return roads;
    }

    void TryOtherLinks()
    {
        withRoad_ = PathNodesWithRoad();
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
        // Those that would give a path node its first side road go before the others.
        std::vector<bool> tried(closed.size(), false);
        for (const bool firstRoadOnly : {true, false})
            for (std::size_t i = 0; i < closed.size(); ++i) {
                bool sameSet = false;
                const NodeSet joined = JoinedPathNodes(closed[i], sameSet);
                if (tried[i] || sameSet || CountNodes(joined) != 2 || !Straddles(joined))
                    continue;
                if (firstRoadOnly && !(joined & ~withRoad_))
                    continue;
                TryLink(closed[i]);
                tried[i] = true;
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
        const auto [first, second] = PathIndexes(joined);
        return first < hint_ && second > hint_;
    }

    // The path indexes, in order, of the two path nodes of a set of two.
    std::pair<int, int> PathIndexes(NodeSet two) const
    {
        const int a = pathIndex_[static_cast<std::size_t>(LowestNode(two))];
        const int b = pathIndex_[static_cast<std::size_t>(LowestNode(two & (two - 1)))];
        return {std::min(a, b), std::max(a, b)};
    }

    // True when joining the two path nodes of `joined`, on either side of the Hint, leaves the
    // path the only chain (shortcuts.h). Every set of off-path nodes is joined to at most two
    // path nodes, so to a chain it is either a dead end or one more shortcut between those two.
    bool ProvedHarmless(NodeSet joined) const
    {
        const auto [first, second] = PathIndexes(joined);
        return !shortcuts_.Crosses(first, second);
    }

    void TryLink(Link l)
    {
        bool sameSet = false;
        const NodeSet joined = JoinedPathNodes(l, sameSet);
        const int count = CountNodes(joined);
        if (!sameSet && count > 1) {
            if (count > 2 || !Straddles(joined) || !ProvedHarmless(joined))
                return;
            const auto [first, second] = PathIndexes(joined);
            shortcuts_.Add(first, second);
        }
        open_.SetLink(l.a, l.b, true);
        withRoad_ |= joined;
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
            const bool open = open_.IsOpen(l.a, l.b);
            if (IsValidLink(b_, l.a, l.b) == open)
                return;
            const int size = b_.GridSize;
            const CellAt cell = LinkCellBetween(size, l.a, l.b);
            b_.NodeValue(cell.row, cell.col) =
                PickLinkDigit(b_.NodeValue(NodeRow(size, l.a), NodeCol(size, l.a)),
                              b_.NodeValue(NodeRow(size, l.b), NodeCol(size, l.b)), open);
        });
    }

    // Calls visit on every link that is not a link of the path.
    template <typename Visit>
    void ForEachLink(Visit visit) const
    {
        ForEachLatticeLink(n_, [&](int v, int w) {
            if (!OnPath(v) || !OnPath(w) ||
                std::abs(pathIndex_[static_cast<std::size_t>(v)] - pathIndex_[static_cast<std::size_t>(w)]) != 1)
                visit(Link{v, w});
        });
    }

    int Find(int v)
    {
        while (parent_[static_cast<std::size_t>(v)] != v)
            v = parent_[static_cast<std::size_t>(v)] =
                parent_[static_cast<std::size_t>(parent_[static_cast<std::size_t>(v)])];
        return v;
    }

    Board& b_;
    int n_;
    std::optional<Grade> grade_;
    std::array<int, kMaxLatticeNodes> pathIndex_{};
    std::array<int, kMaxLatticeNodes> owner_{};
    std::array<int, kMaxLatticeNodes> parent_{};
    std::array<NodeSet, kMaxLatticeNodes> attached_{};
    std::vector<int> pathNodes_;
    NodeSet path_ = 0;
    NodeSet withRoad_ = 0; // path nodes with a side road, kept while links are tried
    int hint_ = 0;
    LinkGraph open_;
    Shortcuts shortcuts_; // between path nodes, by their places on the path
};

} // namespace

bool ChooseValidLinks(Board& board, std::optional<Grade> grade, bool shape)
{
    return LinkChooser(board, grade).Run(shape);
}

} // namespace tallyon
