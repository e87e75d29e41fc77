// Helpers shared by the core tests: a fixed clock, run sizes, and checks of finished boards
// written apart from the generator (link validity, grouping of off-path nodes, chain count).
#pragma once

#include "core/board.h"
#include "core/link_rule.h"
#include "core/random.h"

#include <cstdint>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace tallyon::testing {

// Pins the clock to a value for the lifetime of the object, then restores the real clock.
struct FixedClock {
    FixedClock() { SetClockSource([this] { return now; }); }
    ~FixedClock() { SetClockSource(nullptr); }
    std::uint64_t now = 0;
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

// The neighbours of a node joined to it by a valid link.
inline std::vector<Node> Linked(const Board& b, Node n)
{
    std::vector<Node> out;
    for (const Node m : {Node{n.row - 2, n.col}, {n.row + 2, n.col}, {n.row, n.col - 2}, {n.row, n.col + 2}})
        if (m.row >= 1 && m.row <= b.BoardSpan && m.col >= 1 && m.col <= b.BoardSpan && ValidLinkBetween(b, n, m))
            out.push_back(m);
    return out;
}

// What breaks the grouping that keeps the path the only chain, or "" when nothing does:
// off-path nodes joined by valid links form groups, each with valid links to at most one
// path node, and no valid off-path link joins two path nodes.
inline std::string GroupingProblem(const Board& b, const std::vector<int>& pathCells)
{
    const std::set<int> path(pathCells.begin(), pathCells.end());
    auto onPath = [&](Node n) { return path.count(b.CellNo(n.row, n.col)) > 0; };
    std::set<int> seen;
    for (int r = 1; r <= b.BoardSpan; r += 2)
        for (int c = 1; c <= b.BoardSpan; c += 2) {
            if (onPath({r, c})) {
                for (const Node m : Linked(b, {r, c}))
                    if (onPath(m) && !path.count(b.CellNo((r + m.row) / 2, (c + m.col) / 2)))
                        return "valid shortcut from path node " + std::to_string(b.CellNo(r, c));
                continue;
            }
            if (!seen.insert(b.CellNo(r, c)).second)
                continue;
            std::set<int> pathNodes;
            for (std::vector<Node> stack{{r, c}}; !stack.empty();) {
                const Node n = stack.back();
                stack.pop_back();
                for (const Node m : Linked(b, n))
                    if (onPath(m))
                        pathNodes.insert(b.CellNo(m.row, m.col));
                    else if (seen.insert(b.CellNo(m.row, m.col)).second)
                        stack.push_back(m);
            }
            if (pathNodes.size() > 1)
                return "group at " + std::to_string(b.CellNo(r, c)) + " reaches several path nodes";
        }
    return "";
}

// Counts simple chains of valid links from Start to End, stopping at limit. A branch is
// cut as soon as End cannot be reached through unvisited nodes.
struct ChainCounter {
    const Board& b;
    int limit;
    std::set<int> visited;
    int found = 0;

    int No(Node n) const { return b.CellNo(n.row, n.col); }

    bool CanReachEnd(Node from) const
    {
        std::set<int> reached = visited;
        for (std::vector<Node> stack{from}; !stack.empty();) {
            const Node n = stack.back();
            stack.pop_back();
            for (const Node m : Linked(b, n))
                if (No(m) == b.EndNode)
                    return true;
                else if (reached.insert(No(m)).second)
                    stack.push_back(m);
        }
        return false;
    }

    void Walk(Node n)
    {
        if (No(n) == b.EndNode)
            ++found;
        else if (CanReachEnd(n))
            for (const Node m : Linked(b, n))
                if (found < limit && visited.insert(No(m)).second) {
                    Walk(m);
                    visited.erase(No(m));
                }
    }
};

inline int CountChains(const Board& b, int limit)
{
    ChainCounter counter{b, limit, {b.StartNode}};
    counter.Walk({b.CellRow[b.StartNode], b.CellCol[b.StartNode]});
    return counter.found;
}

} // namespace tallyon::testing
