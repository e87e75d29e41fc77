// Prints the generator's speed and what its puzzles offer a player, per grid size, as a
// markdown table. Puzzles are laid from the left so that equal paths compare equal.
#include "core/board/lattice.h"
#include "core/board/link_rule.h"
#include "core/board/random.h"
#include "core/generator/generator.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace tallyon;

namespace {

constexpr int kWalksPerPuzzle = 200;

struct Tally {
    std::vector<double> millis, validShare, sideShare;
    std::array<long, 3> grades{};
    std::vector<int> lookAheads;
    std::array<long, 5> onPath{}, nodes{}; // nodes with d valid links, and those on the path
    long fullBlocks = 0;                   // puzzles with a 3x3 block of free nodes all linked
    long rounds = 0, boundHits = 0;
    std::set<std::string> paths;
    std::set<std::pair<int, int>> ends;
    long deadEnds = 0, deadEndDepth = 0;
    long walks = 0, walkWins = 0;
};

// Processor time rather than the wall clock: what the generator costs, the same whatever else
// the machine is doing meanwhile.
double ProcessorMillis(std::clock_t start, std::clock_t stop)
{
    return 1000.0 * static_cast<double>(stop - start) / CLOCKS_PER_SEC;
}

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

// How many nodes have d valid links, on the path and in all; and whether some 3x3 block of
// nodes off the path has all twelve of its links valid.
void CountDegrees(const View& v, Tally& t)
{
    for (int node = 0; node < v.n * v.n; ++node) {
        const auto d = static_cast<std::size_t>(CountNodes(v.valid.Neighbours(NodeBit(node))));
        ++t.nodes[d];
        t.onPath[d] += v.OnPath(node) ? 1 : 0;
    }
    for (int r = 0; r + 3 <= v.n; ++r)
        for (int c = 0; c + 3 <= v.n; ++c) {
            bool full = true;
            for (int i = 0; i < 9 && full; ++i) {
                const int node = (r + i / 3) * v.n + c + i % 3;
                full = !v.OnPath(node) && (i % 3 == 2 || v.valid.IsOpen(node, node + 1)) &&
                       (i / 3 == 2 || v.valid.IsOpen(node, node + v.n));
            }
            if (full) {
                ++t.fullBlocks;
                return;
            }
        }
}

// P(on the path | d valid links) for d = 2, 3, 4, and the largest difference between them.
std::string DegreeTell(const Tally& t)
{
    double lo = 1.0, hi = 0.0;
    std::string out;
    for (std::size_t d = 2; d <= 4; ++d) {
        const double share = static_cast<double>(t.onPath[d]) / static_cast<double>(std::max(1L, t.nodes[d]));
        lo = std::min(lo, share);
        hi = std::max(hi, share);
        char text[16];
        std::snprintf(text, sizeof text, "%.2f / ", share);
        out += text;
    }
    char spread[16];
    std::snprintf(spread, sizeof spread, "%.2f", hi - lo);
    return out.substr(0, out.size() - 3) + " | " + spread;
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
    const std::optional<Grade> grade = argc > 2 ? GradeNamed(argv[2]) : std::nullopt;
    auto board = std::make_unique<Board>();
    std::printf("Puzzles per size: %d, laid from the left, %s; %d walks per puzzle\n\n", puzzles,
                grade ? GradeName(*grade) : "any grade", kWalksPerPuzzle);
    std::printf("| GridSize | median ms | p99 ms | mean rounds | bound hit | distinct paths | distinct (Start, End) "
                "| valid off-path share (median) | side-road share (median) | mean dead-end depth | walker success "
                "| Easy / Medium / Hard | look-aheads (median, max) | P(path \\| 2 / 3 / 4 valid links) \\| spread "
                "| full 3x3 free block |\n");
    std::printf("|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|\n");
    for (int size = 4; size <= 10; ++size) {
        Tally t;
        for (int i = 0; i < puzzles; ++i) {
            board->GridSize = size;
            const std::clock_t start = std::clock();
            const PuzzleStats stats = BuildPuzzle(*board, kSideLeft, 8400, 0, grade);
            t.millis.push_back(ProcessorMillis(start, std::clock()));
            t.rounds += stats.Rounds;
            t.boundHits += stats.BoundHit ? 1 : 0;
            ++t.grades[static_cast<std::size_t>(stats.Grading.grade)];
            t.lookAheads.push_back(stats.Grading.lookAheads);
            t.paths.insert(board->PathList);
            t.ends.insert({board->StartNode, board->EndNode});
            const View view(*board);
            CountLinks(view, t);
            CountDeadEnds(view, t);
            CountDegrees(view, t);
            Walk(view, t);
        }
        std::sort(t.lookAheads.begin(), t.lookAheads.end());
        std::printf(
            "| %d | %.2f | %.2f | %.1f | %ld | %zu | %zu | %.1f%% | %.1f%% | %.2f | %.2f%% | %ld / %ld / %ld "
            "| %d, %d | %s | %ld%% |\n",
            size, Percentile(t.millis, 0.5), Percentile(t.millis, 0.99), static_cast<double>(t.rounds) / puzzles,
            t.boundHits, t.paths.size(), t.ends.size(), Percentile(t.validShare, 0.5), Percentile(t.sideShare, 0.5),
            static_cast<double>(t.deadEndDepth) / std::max(1L, t.deadEnds), 100.0 * t.walkWins / std::max(1L, t.walks),
            t.grades[0], t.grades[1], t.grades[2], t.lookAheads[t.lookAheads.size() / 2], t.lookAheads.back(),
            DegreeTell(t).c_str(), 100 * t.fullBlocks / puzzles);
    }
    return 0;
}
