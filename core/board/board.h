// The board model: one struct that holds the whole puzzle, and the routines that set it up.
//
// Contract: a Board is owned by its user and passed to every routine; there is no global
// board. Per-cell arrays are indexed (row, column) from -1 to 27 in both dimensions, the
// node-pair array NodeLinks from 0 to 729 in both, and CellRow/CellCol from 0 to 729. An
// index outside these ranges is a programming error: the accessors report it and abort.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tallyon {

// Aborts with a message naming the array and the index. Never returns.
[[noreturn]] void IndexFault(const char* what, int first, int second);

// A square array of cells indexed (row, column), each from -1 to 27.
template <typename T>
class CellArray {
public:
    static constexpr int Lo = -1;
    static constexpr int Hi = 27;
    static constexpr int Side = Hi - Lo + 1;

    T& operator()(int row, int col) { return cells_[Index(row, col)]; }
    const T& operator()(int row, int col) const { return cells_[Index(row, col)]; }
    void Fill(const T& value) { cells_.fill(value); }

private:
    static std::size_t Index(int row, int col)
    {
        if (row < Lo || row > Hi || col < Lo || col > Hi)
            IndexFault("cell", row, col);
        return static_cast<std::size_t>(row - Lo) * Side + static_cast<std::size_t>(col - Lo);
    }
    std::array<T, Side * Side> cells_{};
};

// The nodes of the largest lattice the cell arrays hold: 14 by 14, at the odd rows and
// columns 1..27.
inline constexpr int kCellArrayLatticeSide = (CellArray<int>::Hi + 1) / 2;
inline constexpr int kCellArrayNodes = kCellArrayLatticeSide * kCellArrayLatticeSide;

// A one-dimensional array indexed by cell number, 0 to 729.
class CellNumberArray {
public:
    static constexpr int Hi = 729;
    int& operator[](int k) { return values_[Index(k)]; }
    int operator[](int k) const { return values_[Index(k)]; }
    void Fill(int value) { values_.fill(value); }

private:
    static std::size_t Index(int k)
    {
        if (k < 0 || k > Hi)
            IndexFault("cell number", k, 0);
        return static_cast<std::size_t>(k);
    }
    std::array<int, Hi + 1> values_{};
};

// NodeLinks(a, b): indexed by two cell numbers, each 0 to 729; every entry is 0 until it is
// set. A game sets a few hundred entries at most, so only those other than 0 are stored, in
// the order of (a, b): lookups and writes take a binary search, and a clear frees nothing.
class NodePairArray {
public:
    static constexpr int Hi = 729;
    int operator()(int a, int b) const;
    void Set(int a, int b, int value);
    // Every entry 0.
    void Clear() { entries_.clear(); }
    // The entries other than 0.
    std::size_t Stored() const { return entries_.size(); }
    // Calls visit(a, b, value) for every entry other than 0, in the order of (a, b).
    template <typename Visit>
    void ForEachStored(Visit visit) const
    {
        for (const auto& [key, value] : entries_)
            visit(static_cast<int>(key / (Hi + 1)), static_cast<int>(key % (Hi + 1)), value);
    }

private:
    static std::uint32_t Key(int a, int b);
    std::vector<std::pair<std::uint32_t, int>> entries_; // sorted by key, values never 0
};

// Values of CellState after a puzzle is built (during generation it holds the marks below).
inline constexpr int kNoCell = -1;
inline constexpr int kLinkCell = 0;
inline constexpr int kNodeCell = 1;
// Generation marks.
inline constexpr int kPathNodeMark = 1;
inline constexpr int kPathLinkMark = 3;
inline constexpr int kDecoyMark = 4;
inline constexpr int kCheckedMark = 5;

// Start sides, as held in StartSide and in the path-direction setting.
inline constexpr int kSideRandom = 0;
inline constexpr int kSideLeft = 1;
inline constexpr int kSideTop = 2;

struct Board {
    // Size.
    int GridSize = 7;   // node intervals along one side, 4..10
    int BoardSpan = 15; // 2 * GridSize + 1

    // Drawing geometry, in the board picture's unit (twips); see LayoutBoard.
    int CellBase = 0;
    int CellPitch = 0;
    int QuarterPitch = 0;
    int HalfPitch = 0;
    int BoardLeft = 0;
    int BoardTop = 0;
    double FontSize = 0.0; // points

    // Per-cell arrays.
    CellArray<int> NodeValue;
    CellArray<int> CellState;
    CellArray<int> PathLeft, PathRight, PathUp, PathDown;
    CellArray<int> UserLeft, UserRight, UserUp, UserDown;
    // The player's marks: 1 on a link cell the player has ruled out ("not on the path"). They
    // are no moves: the undo history never holds them, and a reset or a new puzzle clears them.
    CellArray<int> UserMark;
    CellArray<int> CellX, CellY;
    CellArray<int> CellNo;
    CellNumberArray CellRow, CellCol;
    NodePairArray NodeLinks;

    // The solution.
    std::string PathList;           // cell numbers, each followed by ","
    std::vector<int> PathCells;     // the same numbers, kept in step with PathList
    std::vector<std::string> List2; // the path in order, Start first
    std::vector<std::string> List3; // scratch while the path is turned
    std::array<int, 3> KeyNodes{};  // 0 Start, 1 Hint, 2 End (cell numbers)
    int StartNode = 0;
    int EndNode = 0;
    int StartSide = kSideLeft;
};

// Computes the drawing geometry from GridSize and the board picture's width (twips):
// CellBase = 134 - 11 * (GridSize - 6), CellPitch = 4 * CellBase, QuarterPitch and HalfPitch
// rounded half to even, BoardLeft = BoardTop = (width - (BoardSpan - 1) * CellPitch) / 2
// rounded, FontSize = 12 - 0.6 * (GridSize - 5). Sets BoardSpan from GridSize.
void LayoutBoard(Board& board, int pictureWidth);

// Brings the board to its empty state for the current GridSize: clears every per-cell array
// over -1..27 (CellX, CellY to -1; user and path flags to 0), clears NodeLinks, sets
// BoardSpan, lays out the geometry and numbers the cells row by row. The caller stops its
// periodic check timer itself.
void ResetBoard(Board& board, int pictureWidth);

// 0 outside 1..BoardSpan; otherwise the 1-based position of "<CellNo>," in PathList, or 0.
// A plain substring search: "3," is found inside "13,". The walk refuses the nodes it finds,
// so it also refuses some free nodes whose number ends a listed one; the shapes and lengths of
// the paths it lays, and the proof of the longest it can reach, rest on that refusal.
int IsOnPath(const Board& board, int row, int col);

// The point size of the board's digits, on screen and on paper: 12 - 0.6 x (GridSize - 5).
double BoardFontSize(int gridSize);

// Wraps a grid size into 4..10: above 10 gives 4, below 4 gives 10.
int WrapGridSize(int size);

// How a board is shown, on screen, on paper and on the clipboard alike: the draw modes, and
// the NodeShape setting's values (round nodes; any other value draws boxes).
inline constexpr int kPuzzleMode = 0;   // the puzzle, with the player's links on screen
inline constexpr int kSolutionMode = 1; // the puzzle with its solution path
inline constexpr int kRoundNodes = 2;
inline constexpr int kBoxNodes = 1; // the value the options store for boxes

// True when (row, col) lies on the board, 1..BoardSpan in both, and inside the cell arrays.
inline bool OnBoard(const Board& board, int row, int col)
{
    return row >= 1 && row <= board.BoardSpan && col >= 1 && col <= board.BoardSpan && row <= CellArray<int>::Hi &&
           col <= CellArray<int>::Hi;
}

// True when cell number `cellNo` names a cell of the board; its row and column are then
// CellRow[cellNo] and CellCol[cellNo].
inline bool IsBoardCellNumber(const Board& board, int cellNo)
{
    return cellNo >= 1 && cellNo <= CellNumberArray::Hi && OnBoard(board, board.CellRow[cellNo], board.CellCol[cellNo]);
}

// True for node cells (odd row, odd column).
inline bool IsNode(int row, int col) { return (row & 1) && (col & 1); }
// True for link cells (exactly one coordinate even).
inline bool IsLinkCell(int row, int col) { return ((row & 1) != 0) != ((col & 1) != 0); }

// Rounds to the nearest integer, an exact half going to the even neighbour; 0 for a value
// outside the range of int, or not a number, as a damaged settings file may give.
int RoundHalfEven(double value);

// The index of the Hint among the items of a path list of `items` cells: half the count,
// rounded half to even. The count is always odd, so the index is even: always a node.
inline std::size_t HintItemIndex(std::size_t items)
{
    return static_cast<std::size_t>(RoundHalfEven(static_cast<double>(items) / 2.0));
}

} // namespace tallyon
