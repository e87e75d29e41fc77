// The walk's attempts, drawn step by step over tables made once per puzzle.
#include "core/walk.h"
#include "core/path.h"
#include "core/random.h"

namespace tallyon {
namespace {

constexpr int kDrawCount = kStepDraws;
constexpr int kMaxTries = 100;
// Each band is named by its highest draw.
constexpr std::array<int, kDrawBands> kBandTop = {kDrawCount - 1, kRightAbove, kLeftAbove, kUpAbove};

constexpr int BandWidth(std::size_t band)
{
    return kBandTop[band] - (band + 1 < kBandTop.size() ? kBandTop[band + 1] : -1);
}

int DecimalLength(int n)
{
    int length = 1;
    for (; n >= 10; n /= 10)
        ++length;
    return length;
}

// The node of cell number k, or -1 when k names no node of a board of this span.
int NodeOfCell(int k, int span, int side)
{
    if (k < 1 || k > span * span)
        return -1;
    const int row = (k - 1) / span + 1, col = (k - 1) % span + 1;
    return IsNode(row, col) ? (row - 1) / 2 * side + (col - 1) / 2 : -1;
}

int DrawStartRow(int span)
{
    int row = 0;
    do {
        LetPendingEventsRun();
        row = RandomInt(span, 1);
    } while (row % 2 == 0);
    return row;
}

// How many tries in a row are refused when `accepting` of the 100 draws are accepted: the
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

// One attempt of the walk; true when it reached the right edge within 100 tries.
//
// Where a try is refused (a repeat of the last direction, or a node already used) the walk
// stays put and tries again, so the refused tries before the accepted one follow a geometric
// law and the accepted step is spread over the accepting draws in proportion. One draw picks
// both, with the same odds as drawing try by try, so the walk costs one clock read per step.
// An attempt that is stuck, or too far from the right edge for the tries it has left, is
// abandoned at once: its remaining tries could only be refused or run out.
bool WalkAttempt(const WalkTables& t, WalkNodes& out)
{
    int node = (DrawStartRow(t.span) - 1) / 2 * t.side;
    out.node[0] = node;
    out.count = 1;
    NodeSet used = t.usedBy[static_cast<std::size_t>(node)];
    char last = 0;
    for (int tries = 1; tries <= kMaxTries; ++tries) {
        const auto at = static_cast<std::size_t>(node);
        std::array<int, kDrawBands> width{};
        int accepting = 0;
        for (std::size_t i = 0; i < kDrawBands; ++i) {
            const int to = t.step[at][i];
            if (to >= 0 && t.direction[at][i] != last && !(used & NodeBit(to)))
                width[i] = BandWidth(i);
            accepting += width[i];
        }
        if (accepting == 0)
            return false;
        const std::uint64_t bits = RandomBits();
        // The high half sets the refused tries, the low half places the accepted draw.
        tries += RefusedTries(accepting, static_cast<std::uint32_t>(bits >> 32));
        const int col = 2 * (node % t.side) + 1;
        if (tries > kMaxTries || TriesToRightEdge(t.span, col, last) > kMaxTries + 1 - tries)
            return false;
        int x = static_cast<int>(((bits & 0xffffffffu) * static_cast<std::uint64_t>(accepting)) >> 32);
        std::size_t band = 0;
        while (x >= width[band])
            x -= width[band++];
        node = t.step[at][band];
        last = t.direction[at][band];
        out.node[static_cast<std::size_t>(out.count++)] = node;
        used |= t.usedBy[static_cast<std::size_t>(node)];
        if (node % t.side == t.side - 1)
            return true;
    }
    return false;
}

} // namespace

WalkTables::WalkTables(const Board& board) : span(board.BoardSpan), side(board.GridSize + 1)
{
    for (int v = 0; v < side * side; ++v) {
        const auto i = static_cast<std::size_t>(v);
        const int row = NodeRow(board.GridSize, v), col = NodeCol(board.GridSize, v);
        for (std::size_t band = 0; band < kDrawBands; ++band) {
            const Step s = StepForDraw(board, row, col, kBandTop[band]);
            step[i][band] = s.direction == 0 ? -1 : NodeIndex(board.GridSize, s.row, s.col);
            direction[i][band] = s.direction;
        }
        const int k = (row - 1) * span + col;
        cellNo[i] = k;
        listed[i] = DecimalLength(k) + 1;
        // Every tail of the number's text that does not start with 0 is the text of a number
        // the look-up finds: 113 lists 113, 13 and 3.
        usedBy[i] = NodeBit(v);
        for (int scale = 10; scale <= k; scale *= 10) {
            const int tail = k % scale, tailNode = NodeOfCell(tail, span, side);
            if (tail >= scale / 10 && tailNode >= 0)
                usedBy[i] |= NodeBit(tailNode);
        }
    }
}

void WalkToRightEdge(const WalkTables& tables, WalkNodes& out)
{
    do
        LetPendingEventsRun();
    while (!WalkAttempt(tables, out));
}

std::size_t ExpandedLength(const WalkTables& tables, const WalkNodes& walk)
{
    std::size_t length = 0;
    for (int i = 0; i < walk.count; ++i) {
        const auto v = static_cast<std::size_t>(walk.node[static_cast<std::size_t>(i)]);
        length += static_cast<std::size_t>(tables.listed[v]);
        if (i > 0) // the link cell's number is the mean of its two nodes' numbers
            length += static_cast<std::size_t>(
                DecimalLength((tables.cellNo[v] +
                               tables.cellNo[static_cast<std::size_t>(walk.node[static_cast<std::size_t>(i - 1)])]) /
                              2) +
                1);
    }
    return length;
}

} // namespace tallyon
