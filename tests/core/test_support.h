// Helpers shared by the core tests: a fixed clock, run sizes, and link validity read off a
// finished board apart from the generator.
#pragma once

#include "core/board/board.h"
#include "core/board/lattice.h"
#include "core/board/link_rule.h"
#include "core/board/random.h"
#include "core/generator/generator.h"

#include <algorithm>
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

// Every puzzle the core tests build is made within this many builds, or the build gives up
// (PuzzleStats::GaveUp): a generator that rejects every puzzle then fails the tests that ask
// for a puzzle at once, instead of running them into their time limit.
inline constexpr int kTestBuildBound = 40;
inline const bool kTestBuildBoundSet = (SetBuildBound(kTestBuildBound), true);

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

// Links written "0-1 1-5 ...", node numbers of a lattice `side` nodes wide.
inline LinkGraph LinksFromText(int side, const std::string& text)
{
    LinkGraph g = LinkGraph::Empty(side);
    std::istringstream in(text);
    for (std::string pair; in >> pair;)
        g.SetLink(std::stoi(pair), std::stoi(pair.substr(pair.find('-') + 1)), true);
    return g;
}

// A puzzle made by hand: the path through the given nodes (Start first, Hint in the middle as
// the game picks it) and exactly the valid links given, on a board of `gridSize`. Every node
// holds a 2; a link cell holds 1 where its link is valid (2 x 1 = 2) and 3 where not.
inline std::unique_ptr<Board> CraftedBoard(int gridSize, const std::vector<int>& path, const std::string& valid)
{
    auto board = FreshBoard(gridSize);
    const int side = gridSize + 1;
    const LinkGraph open = LinksFromText(side, valid);
    for (int r = 1; r <= board->BoardSpan; ++r)
        for (int c = 1; c <= board->BoardSpan; ++c)
            board->NodeValue(r, c) = IsNode(r, c) ? 2 : IsLinkCell(r, c) ? 3 : 0;
    ForEachLatticeLink(side, [&](int a, int b) {
        const CellAt cell = LinkCellBetween(gridSize, a, b);
        board->NodeValue(cell.row, cell.col) = open.IsOpen(a, b) ? 1 : 3;
    });
    const auto append = [&](int row, int col) {
        board->PathCells.push_back(board->CellNo(row, col));
        board->PathList += std::to_string(board->CellNo(row, col)) + ",";
    };
    append(NodeRow(gridSize, path[0]), NodeCol(gridSize, path[0]));
    for (std::size_t i = 1; i < path.size(); ++i) {
        const CellAt link = LinkCellBetween(gridSize, path[i - 1], path[i]);
        append(link.row, link.col);
        append(NodeRow(gridSize, path[i]), NodeCol(gridSize, path[i]));
    }
    board->StartSide = kSideLeft;
    FinishRestoredPuzzle(*board);
    return board;
}

// Makes the player's link between two neighbouring nodes, as a click would set its flags.
inline void MakeUserLink(Board& b, int a, int c)
{
    const int lo = std::min(a, c), hi = std::max(a, c);
    const int row = NodeRow(b.GridSize, lo), col = NodeCol(b.GridSize, lo);
    if (hi == lo + 1) {
        b.UserRight(row, col) = 1;
        b.UserLeft(row, col + 2) = 1;
    } else {
        b.UserDown(row, col) = 1;
        b.UserUp(row + 2, col) = 1;
    }
}

} // namespace tallyon::testing
