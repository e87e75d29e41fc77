// The chain solver against a plain enumeration of every simple chain on small lattices, and the
// shortcut rule against the solver.
#include "core/board/random.h"
#include "core/generator/shortcuts.h"
#include "core/reasoning/chain_solver.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace tallyon {
namespace {

using namespace testing;

// Every simple chain from start to end that visits every node of `must`, by brute force.
int Enumerate(const LinkGraph& g, int at, NodeSet must, int end, NodeSet visited)
{
    if (at == end)
        return (visited & must) == must ? 1 : 0;
    int total = 0;
    for (int next = 0; next < g.side * g.side; ++next)
        if (!(visited & NodeBit(next)) && g.IsOpen(at, next) &&
            (std::abs(at - next) == g.side || (std::abs(at - next) == 1 && at / g.side == next / g.side)))
            total += Enumerate(g, next, must, end, visited | NodeBit(next));
    return total;
}

// A lattice of side x side nodes with each link open at the given odds (percent).
LinkGraph RandomGraph(int side, int openPercent)
{
    LinkGraph g = LinkGraph::Empty(side);
    ForEachLatticeLink(side, [&](int a, int b) { g.SetLink(a, b, RandomInt(100, 0) < openPercent); });
    return g;
}

TEST(ChainSolver, AgreesWithEveryChainEnumerated)
{
    int seenNone = 0, seenOne = 0, seenMany = 0;
    for (int side : {3, 4, 5})
        for (int percent : {55, 75, 95})
            for (int i = 0; i < 60; ++i) {
                const LinkGraph g = RandomGraph(side, percent);
                const int start = RandomInt(side, 0) * side, end = RandomInt(side, 0) * side + side - 1;
                // The Hint alone, or the Hint and the two ends of a link, as the generator asks.
                NodeSet must = NodeBit(RandomInt(side * side, 0));
                if (i % 2 == 1)
                    must |= NodeBit(RandomInt(side * side, 0)) | NodeBit(RandomInt(side * side, 0));
                const int all = Enumerate(g, start, must, end, NodeBit(start));
                for (int limit : {1, 2, 1000}) {
                    const ChainCount found = CountChains(g, start, must, end, limit);
                    ASSERT_TRUE(found.complete);
                    ASSERT_EQ(found.chains, std::min(all, limit))
                        << "side " << side << " start " << start << " end " << end;
                }
                seenNone += all == 0;
                seenOne += all == 1;
                seenMany += all > 1;
            }
    EXPECT_TRUE(seenNone > 10 && seenOne > 10 && seenMany > 10) << seenNone << " " << seenOne << " " << seenMany;
}

TEST(ChainSolver, ReportsARunOutBudgetAsIncomplete)
{
    const LinkGraph g = LinkGraph::Full(5);
    const int every = Enumerate(g, 0, NodeBit(12), 24, NodeBit(0));
    const ChainCount all = CountChains(g, 0, NodeBit(12), 24, 1000000, 10000000);
    EXPECT_TRUE(all.complete);
    EXPECT_EQ(all.chains, every);
    const ChainCount cut = CountChains(g, 0, NodeBit(12), 24, 1000000, 500);
    EXPECT_FALSE(cut.complete);
    EXPECT_LT(cut.chains, every);
}

// A path of places 0..n with shortcuts across its Hint, added one at a time: each is let in
// exactly when the solver still finds the path the only chain with it.
TEST(Shortcuts, LetInJustWhatKeepsThePathTheOnlyChain)
{
    TickingClock clock;
    int refused = 0, allowed = 0;
    for (int i = 0; i < 300; ++i) {
        const int n = RandomInt(14, 4), hint = RandomInt(n - 1, 1); // 0 < hint < n
        ChainGraph graph;
        for (int place = 1; place <= n; ++place)
            graph.Join(place - 1, place);
        Shortcuts shortcuts;
        for (int tries = 0; tries < 8; ++tries) {
            const int from = RandomInt(hint, 0), to = RandomInt(n - hint, hint + 1); // across the Hint
            ChainGraph with = graph;
            with.Join(from, to);
            const ChainCount found = CountChains(with, 0, NodeBit(hint), n, 2, 10000000);
            ASSERT_TRUE(found.complete);
            ASSERT_EQ(found.chains == 1, !shortcuts.Crosses(from, to))
                << "n " << n << " hint " << hint << " shortcut " << from << "-" << to;
            if (found.chains != 1) {
                ++refused;
                continue;
            }
            ++allowed;
            graph = with;
            shortcuts.Add(to, from);
        }
    }
    EXPECT_TRUE(refused > 100 && allowed > 100) << refused << " " << allowed;
}

} // namespace
} // namespace tallyon
