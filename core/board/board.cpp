// The board model's set-up: geometry, clearing, cell numbers and the path look-up.
#include "core/board/board.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace tallyon {

void IndexFault(const char* what, int first, int second)
{
    std::fprintf(stderr, "tallyon: index out of range in %s array: (%d, %d)\n", what, first, second);
    std::fflush(stderr);
    std::abort();
}

std::uint32_t NodePairArray::Key(int a, int b)
{
    if (a < 0 || a > Hi || b < 0 || b > Hi)
        IndexFault("node pair", a, b);
    return static_cast<std::uint32_t>(a) * (Hi + 1) + static_cast<std::uint32_t>(b);
}

namespace {

template <typename Entries>
auto FindEntry(Entries& entries, std::uint32_t key)
{
    return std::lower_bound(entries.begin(), entries.end(), key,
                            [](const auto& entry, std::uint32_t k) { return entry.first < k; });
}

} // namespace

int NodePairArray::operator()(int a, int b) const
{
    const std::uint32_t key = Key(a, b);
    const auto at = FindEntry(entries_, key);
    return at != entries_.end() && at->first == key ? at->second : 0;
}

void NodePairArray::Set(int a, int b, int value)
{
    const std::uint32_t key = Key(a, b);
    const auto at = FindEntry(entries_, key);
    const bool held = at != entries_.end() && at->first == key;
    if (value == 0) {
        if (held)
            entries_.erase(at);
    } else if (held) {
        at->second = value;
    } else {
        entries_.insert(at, {key, value});
    }
}

int RoundHalfEven(double value)
{
    const double rounded = std::nearbyint(value); // the default rounding mode: ties to even
    if (!(rounded >= static_cast<double>(INT_MIN) && rounded <= static_cast<double>(INT_MAX)))
        return 0;
    return static_cast<int>(rounded);
}

double BoardFontSize(int gridSize) { return 12.0 - 0.6 * (gridSize - 5); }

int WrapGridSize(int size)
{
    if (size > 10)
        return 4;
    if (size < 4)
        return 10;
    return size;
}

void LayoutBoard(Board& board, int pictureWidth)
{
    const int n = board.GridSize;
    board.BoardSpan = 2 * n + 1;
    board.CellBase = 134 - 11 * (n - 6);
    board.CellPitch = 4 * board.CellBase;
    board.QuarterPitch = RoundHalfEven(board.CellPitch / 4.0);
    board.HalfPitch = RoundHalfEven(board.CellPitch / 2.0);
    const int margin = RoundHalfEven((pictureWidth - (board.BoardSpan - 1) * board.CellPitch) / 2.0);
    board.BoardLeft = margin;
    board.BoardTop = margin;
    board.FontSize = BoardFontSize(n);
}

static void ClearCells(Board& board)
{
    board.NodeValue.Fill(0);
    board.CellState.Fill(0);
    board.PathLeft.Fill(0);
    board.PathRight.Fill(0);
    board.PathUp.Fill(0);
    board.PathDown.Fill(0);
    board.UserLeft.Fill(0);
    board.UserRight.Fill(0);
    board.UserUp.Fill(0);
    board.UserDown.Fill(0);
    board.UserMark.Fill(0);
    board.CellX.Fill(-1);
    board.CellY.Fill(-1);
    board.CellNo.Fill(0);
    board.CellRow.Fill(0);
    board.CellCol.Fill(0);
    board.NodeLinks.Clear();
}

static void NumberCells(Board& board)
{
    int counter = 0;
    for (int row = 1; row <= board.BoardSpan; ++row) {
        for (int col = 1; col <= board.BoardSpan; ++col) {
            ++counter;
            board.CellNo(row, col) = counter;
            board.CellRow[counter] = row;
            board.CellCol[counter] = col;
            board.CellX(row, col) = (col - 1) * board.CellPitch + board.BoardLeft;
            board.CellY(row, col) = (row - 1) * board.CellPitch + board.BoardTop;
        }
    }
}

void ResetBoard(Board& board, int pictureWidth)
{
    ClearCells(board);
    board.PathList.clear();
    board.PathCells.clear();
    board.List2.clear();
    board.List3.clear();
    board.KeyNodes = {0, 0, 0};
    board.StartNode = 0;
    board.EndNode = 0;
    LayoutBoard(board, pictureWidth);
    NumberCells(board);
}

int IsOnPath(const Board& board, int row, int col)
{
    if (row < 1 || row > board.BoardSpan || col < 1 || col > board.BoardSpan)
        return 0;
    // The text of the cell number followed by ",", searched as plain text: "3," is also
    // found inside "13,". Callers only ask whether the answer is above 0.
    char text[16];
    auto [end, ec] = std::to_chars(text, text + sizeof text - 1, board.CellNo(row, col));
    (void)ec;
    *end++ = ',';
    const std::size_t at =
        std::string_view(board.PathList).find(std::string_view(text, static_cast<std::size_t>(end - text)));
    return at == std::string_view::npos ? 0 : static_cast<int>(at) + 1;
}

} // namespace tallyon
