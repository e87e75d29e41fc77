// The deductions taken one at a time, and the sets of links a board holds.
#include "core/reasoning/walkthrough.h"

#include "core/reasoning/grader.h"

namespace tallyon {

WalkEnd Walk(const ReasoningSteps& steps, Knowledge& k, const std::function<bool(const Deduction&)>& next)
{
    while (!steps.Solved(k)) {
        std::optional<Deduction> d = steps.First(k);
        if (!d)
            d = steps.Consistent(k) ? steps.LookAhead(k) : std::nullopt;
        if (!d)
            return WalkEnd::Stuck;
        ReasoningSteps::Take(*d, k);
        if (!next(*d))
            return WalkEnd::Stopped;
    }
    return WalkEnd::Solved;
}

ReasoningSteps StepsOf(const Board& board)
{
    const std::array<int, 3> keys = KeyNodeIndexes(board);
    return ReasoningSteps(board.GridSize + 1, keys[0], keys[1], keys[2]);
}

LinkSet PathLinkSet(const Board& board)
{
    LinkSet links;
    const auto node = [&](int cell) { return NodeIndex(board.GridSize, board.CellRow[cell], board.CellCol[cell]); };
    for (std::size_t i = 0; i + 2 < board.PathCells.size(); i += 2)
        links = links | LinkBetween(node(board.PathCells[i]), node(board.PathCells[i + 2]));
    return links;
}

namespace {

// The links of the lattice whose flag at the lower node (right or down) is set, or whose link
// cell is marked.
template <typename Has>
LinkSet LinksWhere(const Board& board, Has has)
{
    LinkSet links;
    ForEachLatticeLink(board.GridSize + 1, [&](int a, int b) {
        if (has(NodeRow(board.GridSize, a), NodeCol(board.GridSize, a), b == a + 1))
            links = links | LinkBetween(a, b);
    });
    return links;
}

} // namespace

LinkSet UserLinkSet(const Board& board)
{
    return LinksWhere(board, [&](int row, int col, bool across) {
        return (across ? board.UserRight(row, col) : board.UserDown(row, col)) == 1;
    });
}

LinkSet MarkedLinkSet(const Board& board)
{
    return LinksWhere(board, [&](int row, int col, bool across) {
        return board.UserMark(across ? row : row + 1, across ? col + 1 : col) == 1;
    });
}

} // namespace tallyon
