// The walk's attempts, drawn step by step over tables made once per puzzle.
#include "core/generator/walk.h"
#include "core/board/random.h"
#include "core/generator/path.h"

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

// The start row: a row drawn from 1 to BoardSpan, drawn again until it is odd, is one of the
// odd rows, each as likely as the others; so one draw among the odd rows picks it with the
// same odds, where the redraws took two draws on average.
int DrawStartRow(int span)
{
    LetPendingEventsRun();
    return 2 * RandomInt((span + 1) / 2, 0) + 1;
}

// How many tries in a row are refused when `accepting` of the 100 draws are accepted: the
// geometric law, by comparing a uniform number u of 32 bits with the powers of the refusal
// odds q, k tries or more being refused when (u + 1) / 2^32 <= q^k. Few tries are refused in a
// row, so this costs less than a logarithm. More than 100 means the attempt runs out of tries.
int RefusedTries(const WalkTables& t, int accepting, std::uint32_t uniform)
{
    const auto& below = t.refusals[static_cast<std::size_t>(t.refusalRow[static_cast<std::size_t>(accepting)])];
    int refused = 0;
    while (refused < WalkTables::kMostRefused && uniform < below[static_cast<std::size_t>(refused)])
        ++refused;
    return refused;
}

// The thresholds of RefusedTries for `accepting` draws: q^k * 2^32, rounded down, for k = 1 to
// 101; (u + 1) <= q^k * 2^32 holds for a whole u + 1 just when it holds for the rounded value.
void FillRefusals(std::array<std::uint64_t, WalkTables::kMostRefused>& below, int accepting)
{
    const double q = 1.0 - static_cast<double>(accepting) / kDrawCount;
    double power = q;
    for (std::uint64_t& threshold : below) {
        threshold = static_cast<std::uint64_t>(power * 4294967296.0);
        power *= q;
    }
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
    // Which nodes count as used; only the entries set by this attempt are ever read back.
    std::array<bool, kMaxLatticeNodes> used{};
    auto list = [&](int v) {
        out.node[static_cast<std::size_t>(out.count++)] = v;
        for (const std::int8_t u : t.node[static_cast<std::size_t>(v)].usedBy)
            if (u >= 0)
                used[static_cast<std::size_t>(u)] = true;
    };
    int node = (DrawStartRow(t.span) - 1) / 2 * t.side;
    out.count = 0;
    list(node);
    char last = 0;
    for (int tries = 1; tries <= kMaxTries; ++tries) {
        const WalkTables::NodeSteps& at = t.node[static_cast<std::size_t>(node)];
        std::array<int, kDrawBands> width{};
        int accepting = 0;
        for (std::size_t i = 0; i < kDrawBands; ++i) {
            const int to = at.to[i];
            if (to >= 0 && at.direction[i] != last && !used[static_cast<std::size_t>(to)])
                width[i] = BandWidth(i);
            accepting += width[i];
        }
        if (accepting == 0)
            return false;
        const std::uint64_t bits = RandomBits();
        // The high half sets the refused tries, the low half places the accepted draw.
        tries += RefusedTries(t, accepting, static_cast<std::uint32_t>(bits >> 32));
        if (tries > kMaxTries || TriesToRightEdge(t.span, 2 * at.col + 1, last) > kMaxTries + 1 - tries)
            return false;
        int x = static_cast<int>(((bits & 0xffffffffu) * static_cast<std::uint64_t>(accepting)) >> 32);
        std::size_t band = 0;
        while (x >= width[band])
            x -= width[band++];
        node = at.to[band];
        last = at.direction[band];
        list(node);
        if (t.node[static_cast<std::size_t>(node)].col == t.side - 1)
            return true;
    }
    return false;
}

} // namespace

WalkTables::WalkTables(const Board& board) : span(board.BoardSpan), side(board.GridSize + 1)
{
    // Every number of accepting draws is the sum of the widths of some of the bands.
    refusalRow.fill(-1);
    for (unsigned bands = 1; bands < refusals.size(); ++bands) {
        int accepting = 0;
        for (std::size_t i = 0; i < kDrawBands; ++i)
            accepting += (bands >> i) & 1U ? BandWidth(i) : 0;
        auto& row = refusalRow[static_cast<std::size_t>(accepting)];
        if (row < 0) {
            row = static_cast<std::int8_t>(bands);
            FillRefusals(refusals[bands], accepting);
        }
    }
    for (int v = 0; v < side * side; ++v) {
        const auto i = static_cast<std::size_t>(v);
        NodeSteps& n = node[i];
        const int row = NodeRow(board.GridSize, v), col = NodeCol(board.GridSize, v);
        n.col = static_cast<std::int8_t>((col - 1) / 2);
        for (std::size_t band = 0; band < kDrawBands; ++band) {
            const Step s = StepForDraw(board, row, col, kBandTop[band]);
            n.to[band] = static_cast<std::int8_t>(s.direction == 0 ? -1 : NodeIndex(board.GridSize, s.row, s.col));
            n.direction[band] = s.direction;
        }
        const int k = (row - 1) * span + col;
        cellNo[i] = k;
        listed[i] = DecimalLength(k) + 1;
        // Every tail of the number's text that does not start with 0 is the text of a number
        // the look-up finds: 113 lists 113, 13 and 3.
        n.usedBy.fill(-1);
        std::size_t count = 0;
        n.usedBy[count++] = static_cast<std::int8_t>(v);
        for (int scale = 10; scale <= k && count < n.usedBy.size(); scale *= 10) {
            const int tail = k % scale, tailNode = NodeOfCell(tail, span, side);
            if (tail >= scale / 10 && tailNode >= 0)
                n.usedBy[count++] = static_cast<std::int8_t>(tailNode);
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
