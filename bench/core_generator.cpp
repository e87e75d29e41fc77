// Prints the generator's speed and the make-up of its boards per grid size, as a markdown table.
#include "core/generator.h"
#include "core/link_rule.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <numeric>
#include <set>
#include <string>
#include <vector>

using namespace tallyon;

namespace {

struct Tally {
    std::vector<double> millis;
    long rounds = 0, boundHits = 0;
    long offPathLinks = 0, offPathValid = 0, ceiling = 0;
    long pathNodes = 0, sideRoadNodes = 0;
};

// The most off-path links any digits could make valid while the path stays the only
// chain: every link between two off-path nodes, plus, for each group of off-path nodes that
// any links join, its links to the one path node it touches most.
long ValidCeiling(const Board& b, const std::set<int>& path)
{
    const int span = b.BoardSpan;
    std::vector<int> parent(static_cast<std::size_t>(span * span + 1));
    std::iota(parent.begin(), parent.end(), 0);
    auto find = [&](int x) {
        while (parent[static_cast<std::size_t>(x)] != x)
            x = parent[static_cast<std::size_t>(x)] = parent[static_cast<std::size_t>(parent[static_cast<std::size_t>(x)])];
        return x;
    };
    auto onPath = [&](int r, int c) { return path.count(b.CellNo(r, c)) > 0; };
    long internal = 0;
    std::map<std::pair<int, int>, long> toPathNode; // (group, path node) -> links
    // Calls visit(a, z) with the end nodes' cell numbers of every off-path link cell.
    auto forEachOffPathLink = [&](auto visit) {
        for (int r = 1; r <= span; ++r)
            for (int c = 1; c <= span; ++c) {
                if (!IsLinkCell(r, c) || onPath(r, c))
                    continue;
                const bool across = r % 2 == 1;
                visit(across ? b.CellNo(r, c - 1) : b.CellNo(r - 1, c),
                      across ? b.CellNo(r, c + 1) : b.CellNo(r + 1, c));
            }
    };
    forEachOffPathLink([&](int a, int z) {
        if (path.count(a) == 0 && path.count(z) == 0) {
            ++internal;
            parent[static_cast<std::size_t>(find(a))] = find(z);
        }
    });
    forEachOffPathLink([&](int a, int z) {
        if (path.count(a) != path.count(z))
            ++toPathNode[path.count(a) ? std::pair{find(z), a} : std::pair{find(a), z}];
    });
    std::map<int, long> best;
    for (const auto& [key, links] : toPathNode)
        best[key.first] = std::max(best[key.first], links);
    for (const auto& [group, links] : best)
        internal += links;
    return internal;
}

bool ValidLink(const Board& b, int r, int c)
{
    if (r % 2 == 1)
        return IsValidTriple(b.NodeValue(r, c - 1), b.NodeValue(r, c), b.NodeValue(r, c + 1));
    return IsValidTriple(b.NodeValue(r - 1, c), b.NodeValue(r, c), b.NodeValue(r + 1, c));
}

// Counts off-path links, the valid ones, and path nodes with a valid link off the path.
void CountLinks(const Board& b, Tally& t)
{
    std::set<int> path;
    for (const std::string& item : b.List2)
        path.insert(std::stoi(item));
    auto onPath = [&](int r, int c) { return path.count(b.CellNo(r, c)) > 0; };
    std::set<int> withSideRoad;
    for (int r = 1; r <= b.BoardSpan; ++r)
        for (int c = 1; c <= b.BoardSpan; ++c) {
            if (!IsLinkCell(r, c) || onPath(r, c))
                continue;
            ++t.offPathLinks;
            if (!ValidLink(b, r, c))
                continue;
            ++t.offPathValid;
            const bool across = r % 2 == 1;
            const int ra = across ? r : r - 1, ca = across ? c - 1 : c;
            const int rc = across ? r : r + 1, cc = across ? c + 1 : c;
            if (onPath(ra, ca) != onPath(rc, cc))
                withSideRoad.insert(onPath(ra, ca) ? b.CellNo(ra, ca) : b.CellNo(rc, cc));
        }
    t.pathNodes += static_cast<long>((b.List2.size() + 1) / 2);
    t.ceiling += ValidCeiling(b, path);
    t.sideRoadNodes += static_cast<long>(withSideRoad.size());
}

double Percentile(std::vector<double> v, double p)
{
    std::sort(v.begin(), v.end());
    const std::size_t i = std::min(v.size() - 1, static_cast<std::size_t>(p * static_cast<double>(v.size())));
    return v[i];
}

} // namespace

int main(int argc, char** argv)
{
    const int puzzles = argc > 1 ? std::max(1, std::atoi(argv[1])) : 200;
    auto board = std::make_unique<Board>();
    std::printf("Puzzles per size: %d\n\n", puzzles);
    std::printf("| GridSize | median ms | p99 ms | mean rounds | bound hit | valid off-path share | ceiling | path nodes with valid side road |\n");
    std::printf("|---|---|---|---|---|---|---|---|\n");
    for (int size = 4; size <= 10; ++size) {
        Tally t;
        for (int i = 0; i < puzzles; ++i) {
            board->GridSize = size;
            const auto start = std::chrono::steady_clock::now();
            const BuildStats stats = BuildPuzzle(*board, i % 2 == 0 ? kSideLeft : kSideTop, 8400);
            const auto stop = std::chrono::steady_clock::now();
            t.millis.push_back(std::chrono::duration<double, std::milli>(stop - start).count());
            t.rounds += stats.Rounds;
            t.boundHits += stats.BoundHit ? 1 : 0;
            CountLinks(*board, t);
        }
        std::printf("| %d | %.2f | %.2f | %.1f | %ld/%d (%.0f%%) | %.1f%% | %.1f%% | %.2f per puzzle (%.1f%%) |\n", size,
                    Percentile(t.millis, 0.5), Percentile(t.millis, 0.99), static_cast<double>(t.rounds) / puzzles,
                    t.boundHits, puzzles, 100.0 * t.boundHits / puzzles,
                    100.0 * t.offPathValid / std::max(1L, t.offPathLinks),
                    100.0 * t.ceiling / std::max(1L, t.offPathLinks),
                    static_cast<double>(t.sideRoadNodes) / puzzles,
                    100.0 * t.sideRoadNodes / std::max(1L, t.pathNodes));
    }
    std::printf("\nceiling: the highest valid off-path share any digits could give while the path stays\n"
                "the only chain (all links between off-path nodes, plus each group's links to one path node).\n");
    return 0;
}
