// Shortcuts between path nodes on either side of the Hint, and whether one more stays harmless.
//
// Contract: the path's nodes are numbered by their places 0 (Start) to n (End) and the Hint is
// at place h. A shortcut joins places i < h < j: a link between two path nodes that is not the
// path's, or a set of off-path nodes joined by open links to just those two. Two shortcuts
// (i1, j1) and (i2, j2) cross when i1 < i2 and j1 < j2; then 0..i1, j1 back through h to i2,
// and j2..n is a second chain. When no two cross, they nest: a chain that leaves the path by
// the first shortcut it meets, from i to j, can come back between i and j only through i or j,
// both behind it, so it never passes h and goes on to n; the path is the only chain. So a new
// shortcut keeps the path the only chain exactly when it crosses none of those already open.
#pragma once

#include <utility>
#include <vector>

namespace tallyon {

class Shortcuts {
public:
    // i and j are the shortcut's two places, in either order.
    void Add(int i, int j);
    bool Crosses(int i, int j) const;
    void Clear() { joined_.clear(); }

private:
    std::vector<std::pair<int, int>> joined_; // (lower place, higher place)
};

} // namespace tallyon
