// The groups of off-path nodes that become the side roads of a puzzle.
//
// Contract: pathNodes lists the path's nodes in order, Start first, as node numbers of the
// lattice of open.side x open.side nodes; open holds the links open so far (the path's and
// any shortcuts between path nodes). The result has one entry per path node, in the same
// order: that path node and the off-path nodes of its group (possibly none). Every off-path
// node lies in exactly one group, and each group is connected through lattice links.
//
// Each path node first takes one free neighbour (a largest matching, so that as many path
// nodes as possible get a side road); then the groups grow round-robin, one node per path
// node per round, towards where they touch themselves most. Groups are then merged while
// that makes more links inside groups than it takes from a group's own path node, until the
// share of path nodes (End aside) that keep a side road would fall below keepRoadPercent.
#pragma once

#include "core/board/lattice.h"

#include <vector>

namespace tallyon {

std::vector<NodeSet> FormSideGroups(const std::vector<int>& pathNodes, const LinkGraph& open, int keepRoadPercent);

} // namespace tallyon
