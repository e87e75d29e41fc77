// Prints how long the hint takes on half-solved 10x10 puzzles, and how long the whole
// explanation of a puzzle takes, as a markdown table.
#include "core/board/random.h"
#include "core/generator/generator.h"
#include "core/reasoning/explain.h"
#include "core/reasoning/hint.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <vector>

using namespace tallyon;

namespace {

constexpr int kGridSize = 10;

double Percentile(std::vector<double> v, double p)
{
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, static_cast<std::size_t>(p * static_cast<double>(v.size())))];
}

// The player's links along the first half of the path, from Start, as clicks would set them.
void LinkFirstHalf(Board& b)
{
    const std::size_t half = b.PathCells.size() / 2;
    for (std::size_t i = 0; i + 2 <= half; i += 2) {
        const int r1 = b.CellRow[b.PathCells[i]], c1 = b.CellCol[b.PathCells[i]];
        const int r2 = b.CellRow[b.PathCells[i + 2]], c2 = b.CellCol[b.PathCells[i + 2]];
        if (r1 == r2) {
            (c2 > c1 ? b.UserRight : b.UserLeft)(r1, c1) = 1;
            (c2 > c1 ? b.UserLeft : b.UserRight)(r2, c2) = 1;
        } else {
            (r2 > r1 ? b.UserDown : b.UserUp)(r1, c1) = 1;
            (r2 > r1 ? b.UserUp : b.UserDown)(r2, c2) = 1;
        }
    }
}

template <typename Run>
double Millis(Run run)
{
    // Processor time: the same whatever else the machine is doing meanwhile.
    const std::clock_t start = std::clock();
    run();
    return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

} // namespace

int main(int argc, char** argv)
{
    const int puzzles = argc > 1 ? std::max(1, std::atoi(argv[1])) : 200;
    auto board = std::make_unique<Board>();
    std::vector<double> hint, explain;
    for (int i = 0; i < puzzles; ++i) {
        board->GridSize = kGridSize;
        BuildPuzzle(*board, kSideRandom, 8400);
        explain.push_back(Millis([&] { ExplainPuzzle(*board); }));
        LinkFirstHalf(*board);
        hint.push_back(Millis([&] { FindHint(*board); }));
    }
    std::printf("%d puzzles of %dx%d\n\n| | median ms | p99 ms |\n|---|---|---|\n", puzzles, kGridSize, kGridSize);
    std::printf("| hint, the first half of the path linked | %.2f | %.2f |\n", Percentile(hint, 0.5),
                Percentile(hint, 0.99));
    std::printf("| the whole explanation, from the valid links alone | %.2f | %.2f |\n", Percentile(explain, 0.5),
                Percentile(explain, 0.99));
    return 0;
}
