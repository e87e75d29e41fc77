// Checks of a finished puzzle, written apart from the generator: the path read back from
// List2, link validity, the grouping of off-path nodes and a count of Start-to-End chains.
#pragma once

#include "core/board.h"
#include "core/link_rule.h"

#include <array>
#include <set>
#include <string>
#include <vector>

namespace tallyon::testing {

struct Node {
    int row, col;
};

// The cell numbers of List2, in order.
inline std::vector<int> PathCells(const Board& b)
{
    std::vector<int> cells;
    for (const std::string& item : b.List2)
        cells.push_back(std::stoi(item));
    return cells;
}

// The two end nodes of a link cell.
inline std::array<Node, 2> LinkEnds(int row, int col)
{
    if (row % 2 == 1)
        return {Node{row, col - 1}, Node{row, col + 1}};
    return {Node{row - 1, col}, Node{row + 1, col}};
}

inline bool ValidLinkAt(const Board& b, int row, int col)
{
    const auto e = LinkEnds(row, col);
    return IsValidTriple(b.NodeValue(e[0].row, e[0].col), b.NodeValue(row, col), b.NodeValue(e[1].row, e[1].col));
}

// The link cell between two neighbouring nodes.
inline Node Between(Node a, Node b) { return {(a.row + b.row) / 2, (a.col + b.col) / 2}; }

inline std::vector<Node> Neighbours(const Board& b, Node n)
{
    std::vector<Node> out;
    for (const auto& [dr, dc] : {std::pair{-2, 0}, {2, 0}, {0, -2}, {0, 2}}) {
        const Node m{n.row + dr, n.col + dc};
        if (m.row >= 1 && m.row <= b.BoardSpan && m.col >= 1 && m.col <= b.BoardSpan)
            out.push_back(m);
    }
    return out;
}

// Problems with the grouping that keeps the path the only chain: off-path nodes joined by
// valid links form groups, each joined by valid links to at most one path node, and no
// valid link joins two path nodes except the path's own. Empty when all is well.
inline std::string GroupingProblem(const Board& b)
{
    std::set<int> path;
    for (int k : PathCells(b))
        path.insert(k);
    auto onPath = [&](Node n) { return path.count(b.CellNo(n.row, n.col)) > 0; };
    std::set<int> seen;
    for (int r = 1; r <= b.BoardSpan; r += 2)
        for (int c = 1; c <= b.BoardSpan; c += 2) {
            if (onPath({r, c}) || seen.count(b.CellNo(r, c)))
                continue;
            std::set<int> pathNodes;
            std::vector<Node> stack{{r, c}};
            seen.insert(b.CellNo(r, c));
            while (!stack.empty()) {
                const Node n = stack.back();
                stack.pop_back();
                for (const Node m : Neighbours(b, n)) {
                    const Node link = Between(n, m);
                    if (!ValidLinkAt(b, link.row, link.col))
                        continue;
                    if (onPath(m))
                        pathNodes.insert(b.CellNo(m.row, m.col));
                    else if (seen.insert(b.CellNo(m.row, m.col)).second)
                        stack.push_back(m);
                }
            }
            if (pathNodes.size() > 1)
                return "group at " + std::to_string(r) + "," + std::to_string(c) + " reaches "
                    + std::to_string(pathNodes.size()) + " path nodes";
        }
    for (int r = 1; r <= b.BoardSpan; ++r)
        for (int c = 1; c <= b.BoardSpan; ++c) {
            if (!IsLinkCell(r, c) || path.count(b.CellNo(r, c)))
                continue;
            const auto e = LinkEnds(r, c);
            if (onPath(e[0]) && onPath(e[1]) && ValidLinkAt(b, r, c))
                return "valid shortcut between path nodes at " + std::to_string(r) + "," + std::to_string(c);
        }
    return "";
}

// Counts simple chains of valid links from Start to End, up to limit. A branch stops as
// soon as End cannot be reached through unvisited nodes.
class ChainCounter {
public:
    explicit ChainCounter(const Board& b) : b_(b) {}

    int Count(int limit)
    {
        limit_ = limit;
        found_ = 0;
        visited_.clear();
        const Node start{b_.CellRow[b_.StartNode], b_.CellCol[b_.StartNode]};
        visited_.insert(b_.StartNode);
        Walk(start);
        return found_;
    }

private:
    bool CanReachEnd(Node from) const
    {
        std::set<int> reached{b_.CellNo(from.row, from.col)};
        std::vector<Node> stack{from};
        while (!stack.empty()) {
            const Node n = stack.back();
            stack.pop_back();
            for (const Node m : Neighbours(b_, n)) {
                const int k = b_.CellNo(m.row, m.col);
                const Node link = Between(n, m);
                if (visited_.count(k) || reached.count(k) || !ValidLinkAt(b_, link.row, link.col))
                    continue;
                if (k == b_.EndNode)
                    return true;
                reached.insert(k);
                stack.push_back(m);
            }
        }
        return false;
    }

    void Walk(Node n)
    {
        if (b_.CellNo(n.row, n.col) == b_.EndNode) {
            ++found_;
            return;
        }
        if (!CanReachEnd(n))
            return;
        for (const Node m : Neighbours(b_, n)) {
            const int k = b_.CellNo(m.row, m.col);
            const Node link = Between(n, m);
            if (found_ >= limit_ || visited_.count(k) || !ValidLinkAt(b_, link.row, link.col))
                continue;
            visited_.insert(k);
            Walk(m);
            visited_.erase(k);
        }
    }

    const Board& b_;
    std::set<int> visited_;
    int limit_ = 0;
    int found_ = 0;
};

} // namespace tallyon::testing
