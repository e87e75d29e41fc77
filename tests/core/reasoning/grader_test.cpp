// The grader: each deduction on a board made for it, and every deduction against all the
// chains of small boards counted one by one.
#include "core/board/random.h"
#include "core/reasoning/grader.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace tallyon {
namespace {

using namespace testing;

// Links written "0-1 1-5 ...", node numbers of a lattice `side` nodes wide.
LinkSet Links(int side, const std::string& text)
{
    LinkGraph g = LinkGraph::Empty(side);
    std::istringstream in(text);
    for (std::string pair; in >> pair;)
        g.SetLink(std::stoi(pair), std::stoi(pair.substr(pair.find('-') + 1)), true);
    return ToLinkSet(g);
}

// The links of a set written as Links() reads them.
std::string Text(int side, const LinkSet& links)
{
    std::string out;
    const LinkGraph g = ToLinkGraph(links, side);
    ForEachLatticeLink(side, [&](int a, int b) {
        if (g.IsOpen(a, b))
            out += std::to_string(a) + "-" + std::to_string(b) + " ";
    });
    return out;
}

LinkSet Minus(LinkSet a, LinkSet b) { return {a.h & ~b.h, a.v & ~b.v}; }
LinkSet Plus(LinkSet a, LinkSet b) { return {a.h | b.h, a.v | b.v}; }
bool Within(LinkSet a, LinkSet b) { return !(a.h & ~b.h) && !(a.v & ~b.v); }

// On a lattice 4 nodes wide:
//    0  1  2  3
//    4  5  6  7
//    8  9 10 11
//   12 13 14 15
struct Deduction {
    const char* name;
    int step, start, hint, end;
    const char* valid;
    const char* forced;  // forced before the step
    const char* dropped; // what the step drops
    const char* added;   // what the step forces
};

const Deduction kDeductions[] = {
    {"a node with one link left is a dead end", kDeadEnds, 0, 2, 3, "0-1 1-2 2-3 1-5", "", "1-5", ""},
    {"a loop that only node 1 joins on is a pocket", kPockets, 0, 2, 3, "0-1 1-2 2-3 1-5 4-5 5-9 8-9 4-8", "",
     "1-5 4-5 5-9 8-9 4-8", ""},
    {"the Hint, Start and End take the links they need", kForcedLinks, 0, 5, 3, "0-1 1-2 2-3 1-5 5-6 6-2", "", "",
     "0-1 1-5 5-6 2-3"},
    {"a node with both its links drops the rest", kForcedLinks, 0, 10, 15,
     "0-1 0-4 1-2 1-5 2-3 2-6 9-10 10-11 10-14 11-15 14-15", "0-1 1-2", "0-4 1-5", ""},
    {"a link that closes a chain on itself", kForcedLinks, 0, 10, 15,
     "0-1 0-4 1-2 2-6 5-6 1-5 4-5 5-9 9-10 10-11 10-14 11-15 14-15", "1-2 2-6 5-6", "1-5", ""},
    {"a link joining Start's and End's chains without the Hint", kForcedLinks, 0, 10, 3,
     "0-1 1-2 2-3 1-5 2-6 5-9 6-10 9-10 10-11", "0-1 2-3", "1-2", ""},
    {"free nodes that lead only into one chain", kRegions, 12, 9, 15,
     "0-1 1-2 0-4 2-6 4-5 5-6 4-8 6-7 6-10 8-12 8-9 9-10 9-13 10-11 10-14 12-13 13-14 14-15 11-15 7-11", "4-5 5-6",
     "0-1 1-2 0-4 2-6", ""},
    {"free nodes that lead only into Start's and End's chains", kRegions, 0, 13, 3,
     "0-1 1-5 5-6 2-6 2-3 0-4 4-8 8-12 12-13 13-14 14-15 11-15 7-11 3-7", "0-1 2-3", "1-5 5-6 2-6", ""},
};

TEST(Grader, EachDeductionOnABoardMadeForIt)
{
    constexpr int kSide = 4;
    for (const Deduction& d : kDeductions) {
        SCOPED_TRACE(d.name);
        const ReasoningSteps steps(kSide, d.start, d.hint, d.end);
        Knowledge k = steps.Begin(ToLinkGraph(Links(kSide, d.valid), kSide));
        k.forced = Links(kSide, d.forced);
        Knowledge want = k;
        want.possible = Minus(k.possible, Links(kSide, d.dropped));
        want.forced = Plus(k.forced, Links(kSide, d.added));
        EXPECT_EQ(steps.Apply(d.step, k), Outcome::Progress);
        EXPECT_EQ(Text(kSide, Minus(want.possible, k.possible)) + Text(kSide, Minus(k.possible, want.possible)), "")
            << "dropped: " << Text(kSide, Minus(Links(kSide, d.valid), k.possible));
        EXPECT_EQ(Text(kSide, k.forced), Text(kSide, want.forced));
    }
}

// On this board steps 1 to 4 stall with Start's link forced: only forcing 5-8 and following it
// through shows that Start's chain would reach End without the Hint.
//    0 - 1 - 2
//        |   |
//    3 - 4 - 5
//    |   |   |
//    6 - 7 - 8
TEST(Grader, LooksAheadOneStepWhenTheOthersStall)
{
    const LinkSet valid = Links(3, "0-1 1-2 1-4 2-5 3-4 3-6 4-5 4-7 5-8 6-7 7-8");
    const GradeReport r = GradeChain(ToLinkGraph(valid, 3), 0, 7, 8);
    EXPECT_GE(r.lookAheads, 1);
    EXPECT_EQ(r.hardestStep, kLookAhead);
    EXPECT_FALSE(ToLinkGraph(r.known.possible, 3).IsOpen(5, 8));
    EXPECT_FALSE(r.solved) << "two chains are left, 0-1-2-5-4-3-6-7-8 and 0-1-4-3-6-7-8";
}

// Every simple chain from start to end through hint, as its set of links.
void EveryChain(const LinkGraph& g, int at, int hint, int end, NodeSet visited, LinkSet used, std::vector<LinkSet>& out)
{
    if (at == end) {
        if (visited & NodeBit(hint))
            out.push_back(used);
        return;
    }
    for (NodeSet next = g.Neighbours(NodeBit(at)) & ~visited; next; next &= next - 1) {
        const int to = LowestNode(next);
        LinkSet with = used;
        (std::abs(to - at) == 1 ? with.h : with.v) |= NodeBit(std::min(at, to));
        EveryChain(g, to, hint, end, visited | NodeBit(to), with, out);
    }
}

// On random small boards, whatever the grader forces lies on every chain, whatever it drops on
// none, and a board it calls solved has one chain: the forced links.
TEST(Grader, AgreesWithEveryChainOfSmallBoards)
{
    TickingClock clock;
    int solved = 0, stuck = 0, lookedAhead = 0;
    for (int side : {3, 4, 5})
        for (int percent : {60, 75, 90})
            for (int i = 0; i < 150; ++i) {
                LinkGraph g = LinkGraph::Empty(side);
                ForEachLatticeLink(side, [&](int a, int b) { g.SetLink(a, b, RandomInt(100, 0) < percent); });
                const int start = RandomInt(side, 0) * side, end = RandomInt(side, 0) * side + side - 1;
                const int hint = RandomInt(side * side, 0);
                if (hint == start || hint == end)
                    continue;
                std::vector<LinkSet> chains;
                EveryChain(g, start, hint, end, NodeBit(start), {}, chains);
                const GradeReport r = GradeChain(g, start, hint, end);
                SCOPED_TRACE(::testing::Message() << "side " << side << " start " << start << " hint " << hint
                                                  << " end " << end << ", " << chains.size() << " chains");
                for (const LinkSet& chain : chains)
                    ASSERT_TRUE(Within(r.known.forced, chain) && Within(chain, r.known.possible));
                if (r.solved) {
                    ASSERT_TRUE(chains.size() == 1 && chains[0] == r.known.forced);
                }
                solved += r.solved ? 1 : 0;
                stuck += !r.solved && !chains.empty() ? 1 : 0;
                lookedAhead += r.lookAheads > 0 ? 1 : 0;
            }
    EXPECT_TRUE(solved > 50 && stuck > 50 && lookedAhead > 5) << solved << " " << stuck << " " << lookedAhead;
}

// One board per grade, each at the edge of the grade below, on a lattice 4 nodes wide.
TEST(Grader, GradesByTheDeductionsAPuzzleCannotDoWithout)
{
    struct Case {
        const char* name;
        int start, hint, end;
        const char* valid;
        Grade grade;
        int step; // the step of the grade that is needed
    };
    const Case cases[] = {
        // The dead end 5 leaves node 1 two links; Start, the Hint and End take theirs.
        {"easy: a dead end, then forced links", 0, 2, 3, "0-1 1-2 2-3 1-5", Grade::Easy, kDeadEnds},
        //    0  1  2  3
        //    4  5 -6  7     The loop 5-6-10-9 hangs on the Hint (10) alone. Nodes 14 and
        //       |  |        10 each keep three links until it is seen as a pocket.
        //    8  9 -10-11
        //          |  |
        //   12-13-14-15
        {"medium: a loop that only the Hint joins on", 12, 10, 11,
         "5-6 5-9 6-10 9-10 10-11 10-14 11-15 12-13 13-14 14-15", Grade::Medium, kPockets},
        //    0  1  2  3
        //    4 -5 -6 -7     4, 5 and 8 lead only into Start (12) and End's chain (6-7), and 9
        //    |     |        only into the Hint's chain (13-14-10): regions, which no single
        //    8  9 -10 11    node parts from the rest.
        //    |  |  |
        //   12-13-14 15
        {"hard: regions between the chains", 12, 14, 7, "4-5 4-8 5-6 6-7 6-10 8-12 9-10 9-13 10-14 12-13 13-14",
         Grade::Hard, kRegions},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const LinkGraph valid = ToLinkGraph(Links(4, c.valid), 4);
        const GradeReport r = GradeChain(valid, c.start, c.hint, c.end);
        EXPECT_TRUE(r.solved && r.grade == c.grade && r.lookAheads == 0);
        EXPECT_GT(r.progress[static_cast<std::size_t>(c.step)], 0);
        // Within its grade it is solved; the grade below stalls.
        EXPECT_TRUE(SolvedWithin(c.grade, valid, c.start, c.hint, c.end));
        if (c.grade != Grade::Easy) {
            const auto below = static_cast<Grade>(static_cast<int>(c.grade) - 1);
            EXPECT_FALSE(SolvedWithin(below, valid, c.start, c.hint, c.end));
        }
    }
    // A board that needs a look-ahead is Hard, solved or not.
    const GradeReport ahead =
        GradeChain(ToLinkGraph(Links(3, "0-1 1-2 1-4 2-5 3-4 3-6 4-5 4-7 5-8 6-7 7-8"), 3), 0, 7, 8);
    EXPECT_TRUE(ahead.grade == Grade::Hard && ahead.progress[kLookAhead] == ahead.lookAheads && ahead.lookAheads > 0);
    EXPECT_EQ(GradeNamed("hard"), Grade::Hard);
    EXPECT_EQ(GradeNamed("Medium"), Grade::Medium);
    for (const char* other : {"any", "har", "hardest", "", "easy medium"})
        EXPECT_EQ(GradeNamed(other), std::nullopt) << other;
}

} // namespace
} // namespace tallyon
