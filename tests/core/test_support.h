// Helpers shared by the core tests: a fixed clock, run sizes, and link validity read off a
// finished board apart from the generator.
#pragma once

#include "core/board/board.h"
#include "core/board/link_rule.h"
#include "core/board/random.h"

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace tallyon::testing {

// Pins the clock to a value for the lifetime of the object, then restores the real clock.
struct FixedClock {
    FixedClock()
    {
        SetClockSource([this] { return now; });
    }
    ~FixedClock() { SetClockSource(nullptr); }
    std::uint64_t now = 0;
};

// A clock that moves on by a fixed odd step at every reading, so that a run repeats
// exactly; restores the real clock at the end.
struct TickingClock {
    TickingClock()
    {
        SetClockSource([this] { return now += 7919; });
    }
    ~TickingClock() { SetClockSource(nullptr); }
    std::uint64_t now = 1;
};

// Puzzles per grid size and start side in the long suites; fewer under the sanitizers.
inline int PuzzlesPerCase()
{
#ifdef TALLYON_SLOW_TESTS
    return 40;
#else
    return 200;
#endif
}

// A cleared board of the given size, laid out for the usual picture width.
inline std::unique_ptr<Board> FreshBoard(int size)
{
    auto board = std::make_unique<Board>();
    board->GridSize = size;
    ResetBoard(*board, 8400);
    return board;
}

// The numbers of a comma-terminated list such as PathList.
inline std::vector<int> Numbers(const std::string& list)
{
    std::vector<int> out;
    std::istringstream in(list);
    for (std::string item; std::getline(in, item, ',');)
        out.push_back(std::stoi(item));
    return out;
}

struct Node {
    int row, col;
};

// The link between two neighbouring nodes, read as node, link cell, node.
inline bool ValidLinkBetween(const Board& b, Node a, Node c)
{
    return IsValidTriple(b.NodeValue(a.row, a.col), b.NodeValue((a.row + c.row) / 2, (a.col + c.col) / 2),
                         b.NodeValue(c.row, c.col));
}

} // namespace tallyon::testing
