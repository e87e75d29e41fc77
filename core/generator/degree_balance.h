// The last touch to the valid links: no node's count of valid links gives the path away.
//
// Contract: `open` holds a choice of valid links in which the path is the only chain from
// Start through the Hint to End, every set of off-path nodes joined by open links reaching at
// most two path nodes, one on each side of the Hint; `pathNodes` lists the path's nodes from
// Start to End and `hint` is the Hint's place in that list. Links are closed, and opened where
// the path provably stays the only chain (shortcuts.h), one at a time,
// while that brings the path nodes' and the off-path nodes' counts of valid links (2, 3 and 4)
// closer in their shares, or breaks a 3 x 3 block of off-path nodes with all twelve links
// open. Closing stops at the floors: the valid share of the off-path links and the share of
// path nodes (End aside) with a side road, in percent; a block is broken even below them. A
// side-road share below its floor is raised first, where a road can be opened.
#pragma once

#include "core/board/lattice.h"

#include <functional>
#include <vector>

namespace tallyon {

struct BalanceFloors {
    int minValidPercent = 0;
    int minRoadPercent = 0;
};

// A test every change must pass besides the balancer's own, or none when empty: a puzzle made
// for a grade stays of that grade.
using BalanceCheck = std::function<bool(const LinkGraph& open)>;

void BalanceDegrees(LinkGraph& open, const std::vector<int>& pathNodes, int hint, BalanceFloors floors,
                    const BalanceCheck& check = {});

} // namespace tallyon
