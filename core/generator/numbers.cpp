// Number assignment: digits along the path, and the completion of any node-link-node triple.
#include "core/generator/numbers.h"
#include "core/board/link_rule.h"
#include "core/board/random.h"

#include <vector>

namespace tallyon {
namespace {

// Unit steps from node A towards its link cell L, tested down, up, left, right.
bool StepTowards(const Board& b, int a, int l, int& dr, int& dc, const char*& word)
{
    const int ra = b.CellRow[a], ca = b.CellCol[a];
    const int rl = b.CellRow[l], cl = b.CellCol[l];
    dr = dc = 0;
    if (cl == ca && rl > ra) {
        dr = 1;
        word = " DOWN vx =";
    } else if (cl == ca && rl < ra) {
        dr = -1;
        word = " UP vx =";
    } else if (rl == ra && cl < ca) {
        dc = -1;
        word = "node";
    } else if (rl == ra && cl > ca) {
        dc = 1;
        word = " RIGHT vx =";
    } else {
        return false;
    }
    return true;
}

void TraceStep(const char* word, int a, int b, const MadeResult& made)
{
    std::string text = word;
    if (std::string(word) == "node")
        text += " " + FormatNumber(made.c) + " will instead be changed to";
    text += " " + FormatNumber(made.c) + " function= " + made.op + " of " + FormatNumber(a) + " and " + FormatNumber(b);
    ShowTrace(text);
}

} // namespace

void NumberPath(Board& board, int trace)
{
    const std::vector<int>& cells = board.PathCells;
    board.NodeValue(board.CellRow[board.StartNode], board.CellCol[board.StartNode]) = RandomDigit();
    for (std::size_t i = 0; i < cells.size(); i += 2) {
        const int a = cells[i];
        const int l = i + 1 < cells.size() ? cells[i + 1] : 0;
        const int ra = board.CellRow[a], ca = board.CellCol[a];
        board.CellState(ra, ca) = kPathNodeMark;
        int dr = 0, dc = 0;
        const char* word = "";
        if (l == 0 || !StepTowards(board, a, l, dr, dc, word))
            continue; // the End node: nothing follows it
        const int digitA = board.NodeValue(ra, ca);
        int& link = board.NodeValue(ra + dr, ca + dc);
        if (link == 0)
            link = RandomDigit();
        const MadeResult made = MakeResult(digitA, link);
        if (made.failed)
            return;
        board.NodeValue(ra + 2 * dr, ca + 2 * dc) = made.c;
        if (trace == 1)
            TraceStep(word, digitA, link, made);
    }
}

void CompleteTriple(Board& board, int rowA, int colA, int rowB, int colB, int rowC, int colC)
{
    int& x = board.NodeValue(rowA, colA);
    int& y = board.NodeValue(rowB, colB);
    int& z = board.NodeValue(rowC, colC);
    if (x == 0) {
        if (y == 0)
            y = RandomDigit();
        if (z == 0)
            z = RandomDigit();
        const MadeResult made = MakeResult(y, z);
        if (!made.failed)
            x = made.c;
    } else if (y == 0) {
        if (z == 0)
            z = RandomDigit();
        const MadeResult made = MakeResult(x, z);
        if (!made.failed)
            y = made.c;
    } else if (z == 0) {
        const MadeResult made = MakeResult(x, y);
        if (!made.failed)
            z = made.c;
    }
}

} // namespace tallyon
