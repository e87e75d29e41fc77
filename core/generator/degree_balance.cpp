// Opening and closing decoy links, one at a time, where that brings the off-path nodes' counts
// of valid links closest to the path nodes' counts.
#include "core/generator/degree_balance.h"
#include "core/board/random.h"
#include "core/generator/shortcuts.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>
#include <vector>

namespace tallyon {
namespace {

constexpr int kMaxDegree = 4;
// A block of free nodes with every link open outweighs any imbalance of the counts (at most
// 2), so blocks are broken first.
constexpr double kBlockWeight = 10.0;
constexpr int kBlockSide = 3;
// Each path node short of the side-road floor weighs more than any imbalance of the counts:
// a side road that can be opened where merging groups took too many away comes first.
constexpr double kRoadWeight = 3.0;
// Between two moves that balance the counts equally well, the one that leaves more valid links.
constexpr double kValidLinkBonus = 1e-6;
constexpr double kBetter = 1e-9;
constexpr int kLinkSlots = 2 * kMaxLatticeNodes; // h links by their lower node, then v links

using Counts = std::array<int, kMaxDegree + 1>;

// How unlike the path and off-path nodes are in their counts of valid links, 2 to 4: the
// squared differences of their shares.
double Imbalance(const Counts& on, const Counts& off)
{
    const int p = on[2] + on[3] + on[4], o = off[2] + off[3] + off[4];
    if (p == 0 || o == 0)
        return 0.0;
    double sum = 0.0;
    for (std::size_t d = 2; d <= kMaxDegree; ++d) {
        const double gap = static_cast<double>(on[d]) / p - static_cast<double>(off[d]) / o;
        sum += gap * gap;
    }
    return sum;
}

class Balancer {
public:
    Balancer(LinkGraph& open, const std::vector<int>& pathNodes, int hint, BalanceFloors floors,
             const BalanceCheck& check)
        : open_(open), pathNodes_(pathNodes), hint_(hint), side_(open.side), floors_(floors), check_(check)
    {
        pathIndex_.fill(-1);
        for (std::size_t i = 0; i < pathNodes.size(); ++i) {
            pathIndex_[Index(pathNodes[i])] = static_cast<int>(i);
            path_ |= NodeBit(pathNodes[i]);
        }
        roadNodes_ = static_cast<int>(pathNodes.size()) - 1;
        ForEachLatticeLink(side_, [&](int a, int b) {
            if (!IsPathLink(a, b))
                links_[static_cast<std::size_t>(linkCount_++)] = {a, b};
        });
        for (int i = linkCount_; i > 1; --i)
            std::swap(links_[static_cast<std::size_t>(i - 1)], links_[static_cast<std::size_t>(RandomInt(i, 0))]);
    }

    // The best move each time, until none improves the score. A move the check refuses is
    // left out until another move is made.
    void Run()
    {
        std::array<bool, kLinkSlots> refused{};
        for (;;) {
            Survey();
            double best = Score(on_, off_, blocks_, validOff_, withRoad_);
            int pick = -1;
            for (int i = 0; i < linkCount_; ++i) {
                if (refused[static_cast<std::size_t>(i)])
                    continue;
                const double score = ScoreToggled(links_[static_cast<std::size_t>(i)]);
                if (score < best - kBetter) {
                    best = score;
                    pick = i;
                }
            }
            if (pick < 0)
                return;
            const Link l = links_[static_cast<std::size_t>(pick)];
            open_.SetLink(l.a, l.b, !open_.IsOpen(l.a, l.b));
            if (check_ && !check_(open_)) {
                open_.SetLink(l.a, l.b, !open_.IsOpen(l.a, l.b));
                refused[static_cast<std::size_t>(pick)] = true;
                continue;
            }
            refused.fill(false);
        }
    }

private:
    struct Link {
        int a, b; // a < b
    };

    static std::size_t Index(int v) { return static_cast<std::size_t>(v); }
    bool OnPath(int v) const { return pathIndex_[Index(v)] >= 0; }
    bool IsPathLink(int a, int b) const
    {
        return OnPath(a) && OnPath(b) && std::abs(pathIndex_[Index(a)] - pathIndex_[Index(b)]) == 1;
    }
    std::size_t Slot(Link l) const { return Index(l.b == l.a + 1 ? l.a : kMaxLatticeNodes + l.a); }

    double Score(const Counts& on, const Counts& off, int blocks, int validOff, int withRoad) const
    {
        const int roadsShort = std::max(0, (floors_.minRoadPercent * roadNodes_ + 99) / 100 - withRoad);
        return kBlockWeight * blocks + kRoadWeight * roadsShort + Imbalance(on, off) - kValidLinkBonus * validOff;
    }

    // Counts, components and blocks of the links open now.
    void Survey()
    {
        on_.fill(0);
        off_.fill(0);
        validOff_ = withRoad_ = 0;
        for (int v = 0; v < side_ * side_; ++v) {
            const NodeSet around = open_.Neighbours(NodeBit(v));
            degree_[Index(v)] = CountNodes(around);
            if (degree_[Index(v)] <= kMaxDegree)
                ++(OnPath(v) ? on_ : off_)[Index(degree_[Index(v)])];
            roads_[Index(v)] = 0;
        }
        for (int i = 0; i < linkCount_; ++i) {
            const Link l = links_[static_cast<std::size_t>(i)];
            if (!open_.IsOpen(l.a, l.b))
                continue;
            ++validOff_;
            for (const int v : {l.a, l.b})
                roads_[Index(v)] += OnPath(v) && v != pathNodes_.back() ? 1 : 0;
        }
        for (std::size_t i = 0; i + 1 < pathNodes_.size(); ++i)
            withRoad_ += roads_[Index(pathNodes_[i])] > 0 ? 1 : 0;
        FindComponents();
        SurveyBlocks();
    }

    // The sets of off-path nodes joined by open links, and the path nodes each reaches.
    void FindComponents()
    {
        component_.fill(-1);
        int count = 0;
        shortcuts_.Clear();
        for (NodeSet rest = LinkGraph::Empty(side_).nodes & ~path_; rest; ++count) {
            NodeSet set = rest & (~rest + 1);
            for (NodeSet grown; (grown = set | (open_.Neighbours(set) & ~path_)) != set;)
                set = grown;
            rest &= ~set;
            attached_[static_cast<std::size_t>(count)] = open_.Neighbours(set) & path_;
            for (NodeSet s = set; s; s &= s - 1)
                component_[Index(LowestNode(s))] = count;
            JoinShortcut(attached_[static_cast<std::size_t>(count)]);
        }
        for (int i = 0; i < linkCount_; ++i) {
            const Link l = links_[static_cast<std::size_t>(i)];
            if (OnPath(l.a) && OnPath(l.b) && open_.IsOpen(l.a, l.b))
                JoinShortcut(NodeBit(l.a) | NodeBit(l.b));
        }
    }

    void JoinShortcut(NodeSet two)
    {
        if (CountNodes(two) == 2)
            shortcuts_.Add(pathIndex_[Index(LowestNode(two))], pathIndex_[Index(LowestNode(two & (two - 1)))]);
    }

    // For each link: the full blocks it lies in, and whether opening it would fill a block.
    void SurveyBlocks()
    {
        blocks_ = 0;
        inBlocks_.fill(0);
        fillsBlock_.fill(0);
        for (int r = 0; r + kBlockSide <= side_; ++r)
            for (int c = 0; c + kBlockSide <= side_; ++c) {
                std::array<Link, 12> inside;
                int n = 0, closed = 0;
                Link missing{};
                bool free = true;
                for (int dr = 0; dr < kBlockSide; ++dr)
                    for (int dc = 0; dc < kBlockSide; ++dc) {
                        const int v = (r + dr) * side_ + c + dc;
                        free = free && !OnPath(v);
                        if (dc + 1 < kBlockSide)
                            inside[static_cast<std::size_t>(n++)] = {v, v + 1};
                        if (dr + 1 < kBlockSide)
                            inside[static_cast<std::size_t>(n++)] = {v, v + side_};
                    }
                if (!free)
                    continue;
                for (const Link l : inside)
                    if (!open_.IsOpen(l.a, l.b)) {
                        ++closed;
                        missing = l;
                    }
                if (closed == 1)
                    fillsBlock_[Slot(missing)] += 1;
                if (closed == 0) {
                    ++blocks_;
                    for (const Link l : inside)
                        inBlocks_[Slot(l)] += 1;
                }
            }
    }

    double ScoreToggled(Link l) const
    {
        const bool opening = !open_.IsOpen(l.a, l.b);
        const int by = opening ? 1 : -1;
        if (opening ? !Harmless(l) : !MayClose(l))
            return Score(on_, off_, blocks_, validOff_, withRoad_);
        Counts on = on_, off = off_;
        int withRoad = withRoad_;
        for (const int v : {l.a, l.b}) {
            Counts& counts = OnPath(v) ? on : off;
            const int d = degree_[Index(v)];
            if (d <= kMaxDegree)
                --counts[Index(d)];
            if (d + by <= kMaxDegree)
                ++counts[Index(d + by)];
            // A path node (End aside) gains its first side road, or loses its last.
            if (OnPath(v) && v != pathNodes_.back() && roads_[Index(v)] == (opening ? 0 : 1))
                withRoad += by;
        }
        const int blocks = blocks_ + (opening ? fillsBlock_[Slot(l)] : -inBlocks_[Slot(l)]);
        return Score(on, off, blocks, validOff_ + by, withRoad);
    }

    // Closing keeps the valid share and the side-road share at their floors, unless it breaks
    // a block.
    bool MayClose(Link l) const
    {
        if (inBlocks_[Slot(l)] > 0)
            return true;
        if (100 * (validOff_ - 1) < floors_.minValidPercent * linkCount_)
            return false;
        int lost = 0;
        for (const int v : {l.a, l.b})
            lost += roads_[Index(v)] == 1 ? 1 : 0;
        return lost == 0 || 100 * (withRoad_ - lost) >= floors_.minRoadPercent * roadNodes_;
    }

    // True when opening the link leaves every set of off-path nodes joined to one path node,
    // or to two on either side of the Hint joined by no shortcut that crosses another.
    bool Harmless(Link l) const
    {
        const NodeSet a = OnPath(l.a) ? NodeBit(l.a) : attached_[static_cast<std::size_t>(component_[Index(l.a)])];
        const NodeSet b = OnPath(l.b) ? NodeBit(l.b) : attached_[static_cast<std::size_t>(component_[Index(l.b)])];
        if (!OnPath(l.a) && !OnPath(l.b) && component_[Index(l.a)] == component_[Index(l.b)])
            return true;
        const NodeSet joined = a | b;
        if (CountNodes(joined) <= 1)
            return true;
        if (CountNodes(joined) > 2)
            return false;
        int first = pathIndex_[Index(LowestNode(joined))],
            second = pathIndex_[Index(LowestNode(joined & (joined - 1)))];
        if (first > second)
            std::swap(first, second);
        if (!(first < hint_ && second > hint_))
            return false;
        return !shortcuts_.Crosses(first, second);
    }

    LinkGraph& open_;
    const std::vector<int>& pathNodes_;
    int hint_;
    int side_;
    BalanceFloors floors_;
    const BalanceCheck& check_;
    NodeSet path_ = 0;
    std::array<int, kMaxLatticeNodes> pathIndex_;
    std::array<Link, kLinkSlots> links_; // the links off the path, in random order
    int linkCount_ = 0, roadNodes_ = 0;

    // What Survey() finds.
    std::array<int, kMaxLatticeNodes> degree_{}, roads_{}, component_{};
    std::array<NodeSet, kMaxLatticeNodes> attached_{};
    std::array<int, kLinkSlots> inBlocks_{}, fillsBlock_{};
    Shortcuts shortcuts_; // between path nodes, by their places on the path
    Counts on_{}, off_{};
    int validOff_ = 0, withRoad_ = 0, blocks_ = 0;
};

} // namespace

void BalanceDegrees(LinkGraph& open, const std::vector<int>& pathNodes, int hint, BalanceFloors floors,
                    const BalanceCheck& check)
{
    Balancer(open, pathNodes, hint, floors, check).Run();
}

} // namespace tallyon
