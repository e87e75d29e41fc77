// Bookkeeping that lets the path walk see at once whether it is stuck.
//
// Contract: WalkReach mirrors the walk's "already used" test. A node counts as used when
// the text of its cell number followed by "," occurs in the path list, that is, when its
// number is a decimal tail of a listed number (3 is used once 13 is listed). Used() agrees
// with IsOnPath() > 0 for every node of the lattice, provided every number appended to the
// path list since Reset() went through AddListed().
#pragma once

#include "core/board.h"

#include <array>

namespace tallyon {

class WalkReach {
public:
    // Starts a new attempt on a numbered board (ResetBoard), which must outlive the
    // attempt: no node is used.
    void Reset(const Board& board);
    // Records a cell number appended to the path list.
    void AddListed(int cellNumber);
    // True when the node (row, col) of the board counts as used.
    bool Used(int row, int col) const { return used_[Slot(row, col)]; }

private:
    static constexpr int kMaxNodes = kCellArrayNodes;
    static constexpr int kStride = 32; // more than the 27 cells of the longest row
    static std::size_t Slot(int row, int col) { return static_cast<std::size_t>(row * kStride + col); }
    void MarkUsed(int cellNumber);

    const Board* board_ = nullptr;
    std::array<bool, kStride * kStride> used_{};
    std::array<std::size_t, kMaxNodes> marked_; // the first markedCount_ entries are set
    int markedCount_ = 0;
};

} // namespace tallyon
