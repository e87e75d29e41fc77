// Side-road groups on a lattice made for them: every path node that can have a group gets one.
#include "core/generator/side_groups.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace tallyon {
namespace {

using namespace testing;

// On 3 x 3 nodes, the path 3, 0, 1, 2, 5, 8 leaves 4, 6 and 7 free:
//    0 - 1 - 2
//    |       |
//    3   4   5
//            |
//    6   7   8
// Start (3) can take 4 or 6, node 1 and node 5 only 4, nodes 0 and 2 none, End (8) does not
// count. Taking the lowest free neighbour first, Start would take 4 and leave 1 and 5 without;
// a largest matching gives Start 6 and 4 to node 1 or 5, whose group 7 may then grow into.
TEST(SideGroups, AsManyPathNodesAsCanHaveAGroupGetOne)
{
    const std::vector<int> path = {3, 0, 1, 2, 5, 8};
    LinkGraph open = LinkGraph::Empty(3);
    for (std::size_t i = 1; i < path.size(); ++i)
        open.SetLink(path[i - 1], path[i], true);
    for (int keepPercent : {100, 0}) {
        TickingClock clock;
        const std::vector<NodeSet> groups = FormSideGroups(path, open, keepPercent);
        ASSERT_EQ(groups.size(), path.size());
        NodeSet all = 0;
        int withGroup = 0;
        for (std::size_t i = 0; i < groups.size(); ++i) {
            EXPECT_TRUE(groups[i] & NodeBit(path[i])) << "each group holds its own path node";
            const NodeSet off = groups[i] & ~NodeBit(path[i]);
            EXPECT_FALSE(all & off) << "no node in two groups";
            all |= off;
            withGroup += off && i + 1 < path.size() ? 1 : 0;
            // Connected: grown from its path node through its own nodes.
            NodeSet reached = NodeBit(path[i]);
            for (NodeSet grown; (grown = reached | (LinkGraph::Full(3).Neighbours(reached) & groups[i])) != reached;)
                reached = grown;
            EXPECT_EQ(reached, groups[i]) << "group " << i;
        }
        EXPECT_EQ(all, NodeBit(4) | NodeBit(6) | NodeBit(7));
        EXPECT_TRUE(groups[0] & NodeBit(6)) << "Start takes 6, leaving 4 to node 1 or 5";
        if (keepPercent == 100)
            EXPECT_EQ(withGroup, 2); // nothing merged away
        else
            EXPECT_GE(withGroup, 1);
    }
}

} // namespace
} // namespace tallyon
