// Prints the generator's speed and what its puzzles offer a player, per grid size, as a
// markdown table. Puzzles are laid from the left so that equal paths compare equal.
#include "core/chain_solver.h"
#include "core/generator.h"
#include "core/link_rule.h"
#include "core/random.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace tallyon;

namespace {

constexpr int kWalksPerPuzzle = 200;

struct Tally {
    std::vector<double> millis, validShare, sideShare;
    long rounds = 0, boundHits = 0;
    std::set<std::string> paths;
    std::set<std::pair<int, int>> ends;
    long deadEnds = 0, deadEndDepth = 0;
    long walks = 0, walkWins = 0;
};

double Percentile(std::vector<double> v, double p)
{
    std::sort(v.begin(), v.end());
    const std::size_t i = std::min(v.size() - 1, static_cast<std::size_t>(p * static_cast<double>(v.size())));
    return v[i];
}

struct View {
    const Board& b;
    LinkGraph valid;
    NodeSet path = 0;
    int n;
    explicit View(const Board& board) : b(board), valid(ValidLinkGraph(board)), n(board.GridSize + 1)
    {
        for (std::size_t i = 0; i < b.List2.size(); i += 2)
            path |= NodeBit(Node(std::stoi(b.List2[i])));
    }
    int Node(int cell) const { return NodeIndex(b.GridSize, b.CellRow[cell], b.CellCol[cell]); }
    bool OnPath(int v) const { return (path & NodeBit(v)) != 0; }
    bool PathLink(int v, int w) const
    {
        const CellAt link = LinkCellBetween(b.GridSize, v, w);
        const int cell = b.CellNo(link.row, link.col);
        return std::find(b.List2.begin(), b.List2.end(), std::to_string(cell)) != b.List2.end();
    }
};

// Valid off-path share and the share of path nodes (End aside) with a valid side road.
void CountLinks(const View& v, Tally& t)
{
    long offPath = 0, valid = 0;
    NodeSet sideRoad = 0;
    ForEachLatticeLink(v.n, [&](int a, int z) {
        if (v.PathLink(a, z))
            return;
        ++offPath;
        if (!v.valid.IsOpen(a, z))
            return;
        ++valid;
        // A valid link that is not the path's: a side road for each path node it touches.
        sideRoad |= (NodeBit(a) | NodeBit(z)) & v.path;
    });
    sideRoad &= ~NodeBit(v.Node(v.b.EndNode));
    const long pathNodes = static_cast<long>(v.b.List2.size() / 2);
    t.validShare.push_back(100.0 * valid / std::max(1L, offPath));
    t.sideShare.push_back(100.0 * CountNodes(sideRoad) / std::max(1L, pathNodes));
}

// Every set of off-path nodes joined by valid links to one path node only is a dead end;
// its depth is the most links a player can follow into it.
void CountDeadEnds(const View& v, Tally& t)
{
    const NodeSet offPath = v.valid.nodes & ~v.path;
    NodeSet seen = 0;
    for (int start = 0; start < v.n * v.n; ++start) {
        if (!(offPath & NodeBit(start)) || (seen & NodeBit(start)))
            continue;
        NodeSet group = NodeBit(start);
        for (NodeSet grown; (grown = group | (v.valid.Neighbours(group) & offPath)) != group;)
            group = grown;
        seen |= group;
        const NodeSet doors = v.valid.Neighbours(group) & v.path;
        if (CountNodes(doors) != 1)
            continue;
        int depth = 0;
        for (NodeSet reached = doors; (v.valid.Neighbours(reached) & group & ~reached) != 0; ++depth)
            reached |= v.valid.Neighbours(reached) & group;
        ++t.deadEnds;
        t.deadEndDepth += depth;
    }
}

// A walker who takes a random valid link to a node not yet visited and never backs up.
void Walk(const View& v, Tally& t)
{
    const int start = v.Node(v.b.KeyNodes[0]), hint = v.Node(v.b.KeyNodes[1]), end = v.Node(v.b.KeyNodes[2]);
    for (int w = 0; w < kWalksPerPuzzle; ++w) {
        NodeSet visited = NodeBit(start);
        for (int at = start; at != end;) {
            const NodeSet next = v.valid.Neighbours(NodeBit(at)) & ~visited;
            if (!next)
                break;
            NodeSet pick = next;
            for (int skip = RandomInt(CountNodes(next), 0); skip > 0; --skip)
                pick &= pick - 1;
            at = LowestNode(pick);
            visited |= NodeBit(at);
        }
        ++t.walks;
        t.walkWins += (visited & NodeBit(end)) && (visited & NodeBit(hint)) ? 1 : 0;
    }
}

} // namespace

int main(int argc, char** argv)
{
    const int puzzles = argc > 1 ? std::max(1, std::atoi(argv[1])) : 200;
    auto board = std::make_unique<Board>();
    std::printf("Puzzles per size: %d, laid from the left; %d walks per puzzle\n\n", puzzles, kWalksPerPuzzle);
    std::printf(
        "| GridSize | median ms | p99 ms | mean rounds | bound hit | distinct paths | distinct (Start, End) "
        "| valid off-path share (median) | side-road share (median) | mean dead-end depth | walker success |\n");
    std::printf("|---|---|---|---|---|---|---|---|---|---|---|\n");
    for (int size = 4; size <= 10; ++size) {
        Tally t;
        for (int i = 0; i < puzzles; ++i) {
            board->GridSize = size;
            const auto start = std::chrono::steady_clock::now();
            const BuildStats stats = BuildPuzzle(*board, kSideLeft, 8400);
            const auto stop = std::chrono::steady_clock::now();
            t.millis.push_back(std::chrono::duration<double, std::milli>(stop - start).count());
            t.rounds += stats.Rounds;
            t.boundHits += stats.BoundHit ? 1 : 0;
            t.paths.insert(board->PathList);
            t.ends.insert({board->StartNode, board->EndNode});
            const View view(*board);
            CountLinks(view, t);
            CountDeadEnds(view, t);
            Walk(view, t);
        }
        std::printf("| %d | %.2f | %.2f | %.1f | %ld | %zu | %zu | %.1f%% | %.1f%% | %.2f | %.2f%% |\n", size,
                    Percentile(t.millis, 0.5), Percentile(t.millis, 0.99), static_cast<double>(t.rounds) / puzzles,
                    t.boundHits, t.paths.size(), t.ends.size(), Percentile(t.validShare, 0.5),
                    Percentile(t.sideShare, 0.5), static_cast<double>(t.deadEndDepth) / std::max(1L, t.deadEnds),
                    100.0 * t.walkWins / std::max(1L, t.walks));
    }
    return 0;
}
