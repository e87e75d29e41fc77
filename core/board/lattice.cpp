// The lattice's link masks, and the links of a board that the link rule accepts.
#include "core/board/lattice.h"
#include "core/board/link_rule.h"

namespace tallyon {

LinkGraph LinkGraph::Empty(int side)
{
    LinkGraph g;
    g.side = side;
    g.nodes = (NodeBit(side * side - 1) - 1) | NodeBit(side * side - 1);
    return g;
}

LinkGraph LinkGraph::Full(int side)
{
    LinkGraph g = Empty(side);
    ForEachLatticeLink(side, [&g](int a, int b) { g.SetLink(a, b, true); });
    return g;
}

void LinkGraph::SetLink(int a, int b, bool open)
{
    if (a > b)
        std::swap(a, b);
    NodeSet& forward = b - a == 1 ? right : down;
    NodeSet& backward = b - a == 1 ? left : up;
    if (open) {
        forward |= NodeBit(a);
        backward |= NodeBit(b);
    } else {
        forward &= ~NodeBit(a);
        backward &= ~NodeBit(b);
    }
}

bool LinkGraph::IsOpen(int a, int b) const
{
    if (a > b)
        std::swap(a, b);
    return ((b - a == 1 ? right : down) & NodeBit(a)) != 0;
}

NodeSet LinkGraph::Neighbours(NodeSet from) const
{
    return ((from & right) << 1) | ((from & left) >> 1) | ((from & down) << side) | ((from & up) >> side);
}

bool IsValidLink(const Board& board, int a, int b)
{
    const int size = board.GridSize;
    const CellAt link = LinkCellBetween(size, a, b);
    return IsValidTriple(board.NodeValue(NodeRow(size, a), NodeCol(size, a)), board.NodeValue(link.row, link.col),
                         board.NodeValue(NodeRow(size, b), NodeCol(size, b)));
}

LinkGraph ValidLinkGraph(const Board& board)
{
    LinkGraph g = LinkGraph::Empty(board.GridSize + 1);
    ForEachLatticeLink(g.side, [&](int a, int b) { g.SetLink(a, b, IsValidLink(board, a, b)); });
    return g;
}

} // namespace tallyon
