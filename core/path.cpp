// Path generation: the always-turning walk from the left edge to the right edge, its
// expansion with link cells, and the quarter turn for puzzles that start at the top.
#include "core/path.h"
#include "core/link_rule.h"
#include "core/random.h"
#include "core/walk_reach.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cstring>
#include <utility>

namespace tallyon {

// Appends "<n>," to PathList without going through a temporary string, and n to PathCells.
void AppendPathCell(Board& b, int n)
{
    char digits[16];
    auto [end, ec] = std::to_chars(digits, digits + sizeof digits - 1, n);
    (void)ec;
    *end++ = ',';
    b.PathList.append(digits, static_cast<std::size_t>(end - digits));
    b.PathCells.push_back(n);
}

// Sets the two flags of one step, one at each end.
void SetStepFlags(Board& b, int row, int col, int newRow, int newCol, char dir)
{
    switch (dir) {
    case 'L':
        b.PathLeft(row, col) = 1;
        b.PathRight(newRow, newCol) = 1;
        break;
    case 'R':
        b.PathRight(row, col) = 1;
        b.PathLeft(newRow, newCol) = 1;
        break;
    case 'U':
        b.PathUp(row, col) = 1;
        b.PathDown(newRow, newCol) = 1;
        break;
    case 'D':
        b.PathDown(row, col) = 1;
        b.PathUp(newRow, newCol) = 1;
        break;
    default:
        break;
    }
}

namespace {

void ClearPathList(Board& b)
{
    b.PathList.clear();
    b.PathCells.clear();
}

void ClearFlagsAt(Board& b, int row, int col)
{
    b.PathLeft(row, col) = 0;
    b.PathRight(row, col) = 0;
    b.PathUp(row, col) = 0;
    b.PathDown(row, col) = 0;
}

// Sets every cell from (1, 1) to (span, span) in storage order to 0: the board's cells and,
// between its rows, cells outside the board, which hold 0 anyway.
void ClearBoardCells(CellArray<int>& cells, int span)
{
    int* first = &cells(1, 1);
    const int* last = &cells(span, span);
    std::memset(first, 0, static_cast<std::size_t>(last - first + 1) * sizeof(int));
}

// The nodes touched by the current attempt, so that a new attempt clears only those.
struct AttemptNodes {
    static constexpr int Max = kCellArrayNodes;
    std::array<std::pair<int, int>, Max> at; // the first count entries are set
    int count = 0;
    void Add(int row, int col)
    {
        if (count < Max)
            at[static_cast<std::size_t>(count++)] = {row, col};
    }
};

int DrawStartRow(const Board& b)
{
    int row = 0;
    do {
        LetPendingEventsRun();
        row = RandomInt(b.BoardSpan, 1);
    } while (row % 2 == 0);
    return row;
}

// The draws 0 to 99 fall into four bands, one per rule of StepForDraw; within a band every
// draw proposes the same step. Each band is named by its highest draw.
constexpr int kDrawCount = 100;
constexpr std::array<int, 4> kBandTop = {kDrawCount - 1, kRightAbove, kLeftAbove, kUpAbove};

int BandWidth(std::size_t band)
{
    const int below = band + 1 < kBandTop.size() ? kBandTop[band + 1] : -1;
    return kBandTop[band] - below;
}

// How many tries in a row are refused when accepting of the 100 draws are accepted: the
// geometric law, by comparing a uniform number of 32 bits with the powers of the refusal
// odds; few tries are refused in a row, so this costs less than a logarithm. More than 100
// means the attempt runs out of tries.
int RefusedTries(int accepting, std::uint32_t uniform)
{
    const double u = (static_cast<double>(uniform) + 1.0) * (1.0 / 4294967296.0); // (0, 1]
    const double q = 1.0 - static_cast<double>(accepting) / kDrawCount;
    int refused = 0;
    for (double atLeastOneMore = q; u <= atLeastOneMore && refused <= kDrawCount; atLeastOneMore *= q)
        ++refused;
    return refused;
}

// The outcome of the tries made from one node until one is accepted.
struct AcceptedStep {
    Step step;
    int refused = 0; // tries refused before it
};

// Where a try from (row, col) is refused (a repeat of the last direction, or a node
// already used) the walk stays put and tries again, so the refused tries before the
// accepted one follow a geometric law and the accepted step is spread over the accepting
// draws in proportion. One draw picks both, with the same odds as drawing try by try, so
// the walk costs one clock read per step instead of about three. False when no draw is
// accepted: the attempt is stuck.
bool DrawAcceptedStep(const Board& b, const WalkReach& reach, int row, int col, char last, AcceptedStep& out)
{
    // Kept field by field: a whole Step array in memory stalls on store forwarding.
    std::array<int, kBandTop.size()> rows{}, cols{}, width{};
    std::array<char, kBandTop.size()> dirs{};
    int accepting = 0;
    for (std::size_t i = 0; i < kBandTop.size(); ++i) {
        const Step s = StepForDraw(b, row, col, kBandTop[i]);
        rows[i] = s.row;
        cols[i] = s.col;
        dirs[i] = s.direction;
        if (s.direction != last && !reach.Used(s.row, s.col))
            width[i] = BandWidth(i);
        accepting += width[i];
    }
    if (accepting == 0)
        return false;
    const std::uint64_t bits = RandomBits();
    // The high half sets the refused tries, the low half places the accepted draw.
    out.refused = RefusedTries(accepting, static_cast<std::uint32_t>(bits >> 32));
    int x = static_cast<int>(((bits & 0xffffffffu) * static_cast<std::uint64_t>(accepting)) >> 32);
    for (std::size_t i = 0; i < kBandTop.size(); ++i) {
        if (x < width[i]) {
            out.step = {rows[i], cols[i], dirs[i]};
            return true;
        }
        x -= width[i];
    }
    return false;
}

// One attempt of the walk; true when it reached the right edge within 100 tries. An
// attempt that is stuck, or too far from the right edge for the tries it has left, is
// abandoned at once: its remaining tries could only be refused or run out.
bool WalkAttempt(Board& b, AttemptNodes& nodes, WalkReach& reach)
{
    constexpr int kMaxTries = 100;
    int row = DrawStartRow(b);
    int col = 1;
    b.StartNode = b.CellNo(row, 1);
    AppendPathCell(b, b.StartNode);
    reach.AddListed(b.StartNode);
    nodes.Add(row, col);
    char last = 0;
    AcceptedStep next;
    for (int tries = 1; tries <= kMaxTries; ++tries) {
        if (!DrawAcceptedStep(b, reach, row, col, last, next))
            return false;
        tries += next.refused;
        if (tries > kMaxTries || TriesToRightEdge(b.BoardSpan, col, last) > kMaxTries + 1 - tries)
            return false;
        const Step& step = next.step;
        assert(IsOnPath(b, step.row, step.col) == 0);
        const int number = b.CellNo(step.row, step.col);
        AppendPathCell(b, number);
        reach.AddListed(number);
        const char dir = step.direction;
        SetStepFlags(b, row, col, step.row, step.col, dir);
        nodes.Add(step.row, step.col);
        if (step.col == b.BoardSpan) {
            b.EndNode = b.CellNo(step.row, b.BoardSpan);
            b.KeyNodes[0] = b.StartNode;
            b.KeyNodes[2] = b.EndNode;
            return true;
        }
        row = step.row;
        col = step.col;
        last = dir;
    }
    return false;
}

} // namespace

int TriesToRightEdge(int boardSpan, int col, char last)
{
    const int rights = (boardSpan - col) / 2; // one "R" per two columns
    return last == 'R' ? 2 * rights : 2 * rights - 1;
}

Step ChooseStep(const Board& board, int row, int col) { return StepForDraw(board, row, col, RandomInt(kDrawCount, 0)); }

namespace {

// Draws attempts until one reaches the right edge. The flags of an abandoned attempt sit
// only on its own nodes, so each new attempt clears just those.
void WalkUntilRightEdge(Board& board)
{
    AttemptNodes nodes;
    WalkReach reach;
    for (;;) {
        for (int i = 0; i < nodes.count; ++i)
            ClearFlagsAt(board, nodes.at[static_cast<std::size_t>(i)].first,
                         nodes.at[static_cast<std::size_t>(i)].second);
        nodes.count = 0;
        ClearPathList(board);
        reach.Reset(board);
        LetPendingEventsRun();
        if (WalkAttempt(board, nodes, reach))
            return;
    }
}

void ClearPathMarks(Board& board)
{
    for (CellArray<int>* cells : {&board.CellState, &board.PathLeft, &board.PathRight, &board.PathUp, &board.PathDown})
        ClearBoardCells(*cells, board.BoardSpan);
}

} // namespace

void LayPath(Board& board)
{
    // Cells outside 1..BoardSpan are written only by ResetBoard's clearing, so clearing
    // the board's own cells clears the whole arrays.
    ClearBoardCells(board.NodeValue, board.BoardSpan);
    ClearPathMarks(board);
    WalkUntilRightEdge(board);
}

void LayPathAgain(Board& board)
{
    for (int cell : board.PathCells) {
        const int row = board.CellRow[cell];
        const int col = board.CellCol[cell];
        board.CellState(row, col) = 0;
        ClearFlagsAt(board, row, col);
    }
    WalkUntilRightEdge(board);
}

std::string PathLinks(const Board& board, int row, int col)
{
    if (row < 1 || row > board.BoardSpan || col < 1 || col > board.BoardSpan)
        return "X";
    // Each letter goes in front of the others, "L" first, so they read U, D, R, L.
    char links[4];
    int n = 0;
    if (board.PathUp(row, col) == 1)
        links[n++] = 'U';
    if (board.PathDown(row, col) == 1)
        links[n++] = 'D';
    if (board.PathRight(row, col) == 1)
        links[n++] = 'R';
    if (board.PathLeft(row, col) == 1)
        links[n++] = 'L';
    return std::string(links, static_cast<std::size_t>(n));
}

namespace {

// Removes the letter of the way back from a node's links.
void RemoveLetter(std::string& links, char back)
{
    const std::size_t at = links.find(back);
    if (at != std::string::npos)
        links.erase(at, 1);
}

} // namespace

void ExpandPath(Board& board)
{
    int row = board.CellRow[board.StartNode];
    int col = board.CellCol[board.StartNode];
    ClearPathList(board);
    AppendPathCell(board, board.StartNode);
    board.CellState(row, col) = kPathNodeMark;
    std::string pending = PathLinks(board, row, col);
    for (;;) {
        LetPendingEventsRun();
        if (board.CellNo(row, col) == board.EndNode) {
            board.CellState(row, col) = kPathNodeMark;
            return;
        }
        if (pending.size() != 1)
            return;
        int dr = 0, dc = 0;
        char back = 0;
        switch (pending[0]) {
        case 'D':
            dr = 1;
            back = 'U';
            break;
        case 'R':
            dc = 1;
            back = 'L';
            break;
        case 'L':
            dc = -1;
            back = 'R';
            break;
        case 'U':
            dr = -1;
            back = 'D';
            break;
        default:
            return;
        }
        AppendPathCell(board, board.CellNo(row + dr, col + dc));
        AppendPathCell(board, board.CellNo(row + 2 * dr, col + 2 * dc));
        board.CellState(row + dr, col + dc) = kPathLinkMark;
        board.CellState(row + 2 * dr, col + 2 * dc) = kPathNodeMark;
        row += 2 * dr;
        col += 2 * dc;
        pending = PathLinks(board, row, col);
        RemoveLetter(pending, back);
    }
}

void TurnPath(Board& board)
{
    const int span = board.BoardSpan;
    const std::vector<int> cells = board.PathCells;
    ClearPathList(board);
    board.List3.clear();
    for (int k : cells) {
        const int turned = board.CellNo(board.CellCol[k], span + 1 - board.CellRow[k]);
        board.List3.push_back(FormatNumber(turned));
        AppendPathCell(board, turned);
    }

    CellArray<int> values;
    CellArray<int> states;
    for (int r = 1; r <= span; ++r) {
        for (int c = 1; c <= span; ++c) {
            values(r, c) = board.NodeValue(r, c);
            states(r, c) = board.CellState(r, c);
        }
    }
    for (int r = 1; r <= span; ++r) {
        for (int c = 1; c <= span; ++c) {
            board.NodeValue(c, span + 1 - r) = values(r, c);
            board.CellState(c, span + 1 - r) = states(r, c);
        }
    }
    board.List2 = board.List3;
}

} // namespace tallyon
