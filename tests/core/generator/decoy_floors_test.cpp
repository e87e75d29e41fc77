// The decoy floors and the balance of valid-link counts, in every puzzle of a seeded sample
// per grid size: where the balancer stops closing links, and what it leaves.
#include "core/generator/degree_balance.h"
#include "core/generator/generator.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ostream>

namespace tallyon {
namespace {

using namespace testing;

// Per grid size: the floors, in percent, of the valid share of off-path links and of the
// share of path nodes (End aside) with a valid link off the path, below which the balancer
// closes no link; and how far apart the shares of path nodes among the nodes with 2, 3 and 4
// valid links may lie over the sample (wider up to 6x6, whose paths cover most of the board).
struct SizeFloors {
    int size, validFloor, roadFloor;
    double tellSpread;
};
constexpr SizeFloors kFloors[] = {
    {4, 55, 55, 0.20}, {5, 55, 55, 0.20}, {6, 55, 54, 0.20},  {7, 55, 58, 0.12},
    {8, 57, 57, 0.12}, {9, 57, 57, 0.12}, {10, 57, 57, 0.12},
};

// Names a size's row by its size, as the test's name shows it.
void PrintTo(const SizeFloors& f, std::ostream* out) { *out << f.size << "x" << f.size; }

// Puzzles per size, the same under the sanitizers: the shares of the counts of valid links
// settle within their limits only over some hundreds of 4x4 puzzles.
constexpr int kPuzzlesPerSize = 600;

// Links the balancer is made to leave room for closing when it is handed lower floors.
constexpr int kRoomToClose = 3;
constexpr int kMaxValidLinks = 4;
// A close that brings the counts closer by less than this is a tie, not a gain.
constexpr double kGain = 1e-5;

// A puzzle laid from the left as the balancer sees it.
struct Decoys {
    int side = 0;
    LinkGraph valid, path;  // every valid link; the path's own
    std::vector<int> nodes; // the path's nodes, Start first
    int hint = 0;           // the Hint's place among them
    NodeSet onPath = 0;

    bool OffPath(int a, int b) const { return !path.IsOpen(a, b); }
};

Decoys ReadDecoys(const Board& b)
{
    Decoys d;
    d.side = b.GridSize + 1;
    d.valid = ValidLinkGraph(b);
    d.path = LinkGraph::Empty(d.side);
    const std::vector<int> cells = Numbers(b.PathList);
    for (std::size_t i = 0; i < cells.size(); i += 2) {
        const int node = NodeIndex(b.GridSize, b.CellRow[cells[i]], b.CellCol[cells[i]]);
        if (cells[i] == b.KeyNodes[1])
            d.hint = static_cast<int>(d.nodes.size());
        if (!d.nodes.empty())
            d.path.SetLink(d.nodes.back(), node, true);
        d.nodes.push_back(node);
        d.onPath |= NodeBit(node);
    }
    return d;
}

// What the floors are about, counted on a choice of valid links.
struct Shares {
    int offLinks = 0, validOff = 0;            // links off the path, and the valid ones
    int roadNodes = 0, withRoad = 0;           // path nodes but End, and those with a valid link off the path
    std::array<int, kMaxLatticeNodes> roads{}; // per path node but End: its valid links off the path
};

Shares Measure(const Decoys& d, const LinkGraph& valid)
{
    Shares s;
    ForEachLatticeLink(d.side, [&](int a, int b) {
        if (!d.OffPath(a, b))
            return;
        ++s.offLinks;
        if (!valid.IsOpen(a, b))
            return;
        ++s.validOff;
        for (const int v : {a, b})
            s.roads[static_cast<std::size_t>(v)] += (d.onPath & NodeBit(v)) && v != d.nodes.back() ? 1 : 0;
    });
    s.roadNodes = static_cast<int>(d.nodes.size()) - 1;
    for (int i = 0; i < s.roadNodes; ++i)
        s.withRoad += s.roads[static_cast<std::size_t>(d.nodes[static_cast<std::size_t>(i)])] > 0 ? 1 : 0;
    return s;
}

// The fewest of `whole` that meet a floor of `percent`.
int Least(int whole, int percent) { return (percent * whole + 99) / 100; }

// How unlike the path nodes and the other nodes are in their counts of valid links: the
// squared differences of their shares of nodes with 2, 3 and 4.
double CountsGap(const Decoys& d, const LinkGraph& valid)
{
    std::array<double, kMaxValidLinks + 1> on{}, off{};
    double onAll = 0, offAll = 0;
    for (int v = 0; v < d.side * d.side; ++v) {
        const int links = CountNodes(valid.Neighbours(NodeBit(v)));
        if (links < 2)
            continue;
        const bool path = (d.onPath & NodeBit(v)) != 0;
        (path ? on : off)[static_cast<std::size_t>(links)] += 1;
        (path ? onAll : offAll) += 1;
    }
    double gap = 0;
    for (std::size_t n = 2; n <= kMaxValidLinks; ++n) {
        const double apart = on[n] / onAll - off[n] / offAll;
        gap += apart * apart;
    }
    return gap;
}

// The valid links off the path that the floors let the balancer close and whose closing
// would bring the counts closer: the balancer stops only when there are none.
int ClosesThatWouldBalance(const Decoys& d, const SizeFloors& f)
{
    const Shares s = Measure(d, d.valid);
    if (s.validOff - 1 < Least(s.offLinks, f.validFloor))
        return 0;
    const double gap = CountsGap(d, d.valid);
    int found = 0;
    ForEachLatticeLink(d.side, [&](int a, int b) {
        if (!d.OffPath(a, b) || !d.valid.IsOpen(a, b))
            return;
        const int lost = (s.roads[static_cast<std::size_t>(a)] == 1) + (s.roads[static_cast<std::size_t>(b)] == 1);
        if (lost > 0 && s.withRoad - lost < Least(s.roadNodes, f.roadFloor))
            return;
        LinkGraph closed = d.valid;
        closed.SetLink(a, b, false);
        found += CountsGap(d, closed) < gap - kGain ? 1 : 0;
    });
    return found;
}

bool SameLinks(const LinkGraph& a, const LinkGraph& b) { return a.right == b.right && a.down == b.down; }

// Handed floors a few links under a puzzle's shares, the balancer closes links down to them
// and never past them; `closed` says whether it closed any.
void CheckLowerFloors(const Decoys& d, bool& closed)
{
    const Shares s = Measure(d, d.valid);
    const BalanceFloors lower{std::max(0, 100 * (s.validOff - kRoomToClose) / s.offLinks),
                              std::max(0, 100 * (s.withRoad - kRoomToClose) / s.roadNodes)};
    LinkGraph freer = d.valid;
    BalanceDegrees(freer, d.nodes, d.hint, lower);
    const Shares after = Measure(d, freer);
    ASSERT_GE(after.validOff, Least(s.offLinks, lower.minValidPercent));
    ASSERT_GE(after.withRoad, Least(s.roadNodes, lower.minRoadPercent));
    closed = after.validOff < s.validOff;
}

// What the sample adds up to.
struct Tally {
    int atFloor = 0, underFloor = 0; // puzzles with just the valid links of the floor; one fewer
    int closedToLowerFloors = 0;
    std::array<long, kMaxValidLinks + 1> onPath{}, all{}; // nodes by their count of valid links

    void Count(const Decoys& d, const SizeFloors& f)
    {
        const Shares s = Measure(d, d.valid);
        atFloor += s.validOff == Least(s.offLinks, f.validFloor) ? 1 : 0;
        underFloor += s.validOff == Least(s.offLinks, f.validFloor) - 1 ? 1 : 0;
        for (int v = 0; v < d.side * d.side; ++v) {
            const auto links = static_cast<std::size_t>(CountNodes(d.valid.Neighbours(NodeBit(v))));
            ++all[links];
            onPath[links] += (d.onPath & NodeBit(v)) ? 1 : 0;
        }
    }
    // How far apart the shares of path nodes among the nodes with 2, 3 and 4 valid links lie.
    double TellSpread() const
    {
        double lo = 1, hi = 0;
        for (std::size_t links = 2; links <= kMaxValidLinks; ++links) {
            lo = std::min(lo, static_cast<double>(onPath[links]) / all[links]);
            hi = std::max(hi, static_cast<double>(onPath[links]) / all[links]);
        }
        return hi - lo;
    }
};

class DecoyFloors : public ::testing::TestWithParam<SizeFloors> {};

// Every puzzle of the sample is where the balancer, given the floors above, stops: it would
// neither open nor close a link there, and no close the floors allow brings the counts closer.
// The valid floor binds: many puzzles stop exactly at it, more than one link under it (those
// start under it, and the balancer only opens links there). Over the sample, a node's count of
// valid links says little of whether it is on the path.
TEST_P(DecoyFloors, HoldInEveryBuiltPuzzle)
{
    const SizeFloors f = GetParam();
    TickingClock clock;
    auto board = FreshBoard(f.size);
    Tally tally;
    for (int i = 0; i < kPuzzlesPerSize; ++i) {
        BuildPuzzle(*board, kSideLeft, 8400);
        SCOPED_TRACE(::testing::Message() << "size " << f.size << " puzzle " << i);
        const Decoys d = ReadDecoys(*board);
        LinkGraph again = d.valid;
        BalanceDegrees(again, d.nodes, d.hint, {f.validFloor, f.roadFloor});
        ASSERT_TRUE(SameLinks(again, d.valid)) << "the balancer moves on from a built puzzle";
        ASSERT_EQ(ClosesThatWouldBalance(d, f), 0);
        bool closed = false;
        ASSERT_NO_FATAL_FAILURE(CheckLowerFloors(d, closed));
        tally.closedToLowerFloors += closed ? 1 : 0;
        tally.Count(d, f);
    }
    EXPECT_GE(tally.atFloor, kPuzzlesPerSize / 10) << "puzzles stopping at the valid floor";
    EXPECT_GT(tally.atFloor, tally.underFloor) << "puzzles stopping at the valid floor, and one link under it";
    EXPECT_GT(tally.closedToLowerFloors, kPuzzlesPerSize / 10);
    EXPECT_LE(tally.TellSpread(), f.tellSpread);
}

INSTANTIATE_TEST_SUITE_P(GridSizes, DecoyFloors, ::testing::ValuesIn(kFloors), [](const auto& info) {
    return std::to_string(info.param.size) + "x" + std::to_string(info.param.size);
});

} // namespace
} // namespace tallyon
