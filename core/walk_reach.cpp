// The used-node bookkeeping of the path walk.
#include "core/walk_reach.h"

namespace tallyon {

void WalkReach::Reset(const Board& board)
{
    board_ = &board;
    for (int i = 0; i < markedCount_; ++i)
        used_[marked_[static_cast<std::size_t>(i)]] = false;
    markedCount_ = 0;
}

void WalkReach::MarkUsed(int cellNumber)
{
    if (cellNumber < 1 || cellNumber > board_->BoardSpan * board_->BoardSpan)
        return;
    const int row = board_->CellRow[cellNumber];
    const int col = board_->CellCol[cellNumber];
    if (!IsNode(row, col) || Used(row, col))
        return;
    used_[Slot(row, col)] = true;
    marked_[static_cast<std::size_t>(markedCount_++)] = Slot(row, col);
}

void WalkReach::AddListed(int cellNumber)
{
    // Every tail of the number's text that does not start with 0 is the text of a number
    // found by the look-up: 113 lists 113, 13 and 3.
    MarkUsed(cellNumber);
    for (int scale = 10; scale <= cellNumber; scale *= 10) {
        const int tail = cellNumber % scale;
        if (tail >= scale / 10)
            MarkUsed(tail);
    }
}

} // namespace tallyon
