// The one board painter, drawing in whatever look its caller gives it.
#include "platform/board_painter.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace tallyon {

BoardPainter::BoardPainter(Canvas& canvas, const Board& board, const BoardLook& look)
    : canvas_(canvas), board_(board), look_(look)
{
}

int BoardPainter::X(int col) const { return static_cast<int>(std::lround(look_.left + look_.pitch * (col - 1))); }

int BoardPainter::Y(int row) const { return static_cast<int>(std::lround(look_.top + look_.pitch * (row - 1))); }

void BoardPainter::Paint(BoardShows shows)
{
    Grid();
    if (shows == BoardShows::Path && look_.pathUnderCells)
        Path();
    Cells();
    if (shows == BoardShows::Path && !look_.pathUnderCells)
        Path();
    if (shows == BoardShows::UserLinks)
        UserLinks();
    Marks();
}

void BoardPainter::Grid()
{
    if (look_.clear)
        canvas_.Clear(look_.background);
    const int span = board_.BoardSpan; // always odd: the last node row and column
    if (look_.grid == GridKind::CellBoxes) {
        for (int r = 1; r < span; ++r)
            for (int c = 1; c < span; ++c)
                canvas_.Box(X(c), Y(r), X(c + 1), Y(r + 1), look_.gridColour, look_.gridPen);
        return;
    }
    // The outlines of the boxes between neighbouring nodes, drawn as whole lines: the same
    // picture as box after box, at a fraction of the cost.
    if (span < 3)
        return;
    for (int k = 1; k <= span; k += 2) {
        canvas_.Line(X(1), Y(k), X(span), Y(k), look_.gridColour, look_.gridPen);
        canvas_.Line(X(k), Y(1), X(k), Y(span), look_.gridColour, look_.gridPen);
    }
}

void BoardPainter::Cell(int row, int col, Colour digit, Colour fill)
{
    if (IsNode(row, col)) {
        NodeShape(row, col, look_.outlineInDigitColour ? digit : look_.nodeOutline, fill);
    } else if (IsLinkCell(row, col)) {
        const int value = board_.NodeValue(row, col);
        if (value > 0) {
            const TextSize size = DigitSize(value);
            const int halfW = size.width / 2 + size.width * look_.patchFifths / 5 + look_.patchPad;
            const int halfH = std::min(size.height / 2, look_.patchMaxHalfHeight);
            canvas_.FilledBox(X(col) - halfW, Y(row) - halfH, X(col) + halfW, Y(row) + halfH, fill);
        }
        if (look_.userMarks && board_.UserMark(row, col) == 1)
            UserMark(row, col);
    } else {
        return;
    }
    Digit(row, col, digit);
}

void BoardPainter::Cells()
{
    for (int row = 1; row <= board_.BoardSpan; ++row)
        for (int col = 1; col <= board_.BoardSpan; ++col) {
            if (IsNode(row, col))
                Cell(row, col, look_.nodeDigit, look_.nodeFill);
            else if (IsLinkCell(row, col))
                Cell(row, col, look_.linkDigit, look_.linkPatch);
        }
}

void BoardPainter::Line(int rowA, int colA, int rowB, int colB, Colour colour, int pen)
{
    canvas_.Line(X(colA), Y(rowA), X(colB), Y(rowB), colour, pen);
}

void BoardPainter::Path()
{
    const std::vector<int>& cells = board_.PathCells;
    for (std::size_t i = 1; i < cells.size(); ++i) {
        int rowA = 0, colA = 0, rowB = 0, colB = 0;
        if (CellOf(cells[i - 1], rowA, colA) && CellOf(cells[i], rowB, colB))
            Line(rowA, colA, rowB, colB, look_.pathColour, look_.pathPen);
    }
}

void BoardPainter::UserLink(int row, int col, int dRow, int dCol)
{
    LinkWithCells(row, col, dRow, dCol, look_.userLineColour);
}

void BoardPainter::LinkWithCells(int row, int col, int dRow, int dCol, Colour colour)
{
    Line(row, col, row + 2 * dRow, col + 2 * dCol, colour, look_.userLinePen);
    Cell(row, col, look_.nodeDigit, look_.nodeFill);
    Cell(row + 2 * dRow, col + 2 * dCol, look_.nodeDigit, look_.nodeFill);
    Cell(row + dRow, col + dCol, look_.linkDigit, look_.linkPatch);
}

void BoardPainter::UserLinks()
{
    const int span = board_.BoardSpan;
    for (int row = 1; row <= span; row += 2)
        for (int col = 1; col <= span; col += 2) {
            if (board_.UserRight(row, col) == 1 && col + 2 <= span)
                UserLink(row, col, 0, 1);
            if (board_.UserDown(row, col) == 1 && row + 2 <= span)
                UserLink(row, col, 1, 0);
        }
}

void BoardPainter::Marks()
{
    KeyNodeMarks();
    Xs();
}

void BoardPainter::KeyNodeMarks()
{
    if (look_.keyNodes == KeyNodeKind::Rings)
        Rings();
    else
        InvertedKeyNodes();
}

void BoardPainter::Hint(const HintPicture& hint)
{
    for (const CellAt link : hint.ruledOut)
        DimmedLink(link);
    CellAt a{}, b{};
    if (hint.forced && LinkEnds(*hint.forced, a, b))
        LinkWithCells(a.row, a.col, (b.row - a.row) / 2, (b.col - a.col) / 2, look_.forcedLinkColour);
    if (hint.wrong && OnBoard(board_, hint.wrong->row, hint.wrong->col)) {
        const int x = X(hint.wrong->col), y = Y(hint.wrong->row), h = look_.wrongFrameHalf;
        canvas_.Box(x - h, y - h, x + h, y + h, look_.wrongFrameColour, look_.wrongFramePen);
    }
    for (const CellAt node : hint.look)
        if (OnBoard(board_, node.row, node.col) && IsNode(node.row, node.col))
            canvas_.Circle(X(node.col), Y(node.row), look_.lookRingRadius, look_.lookRingColour, look_.lookRingPen,
                           std::nullopt);
    if (hint.forced)
        KeyNodeMarks();
}

void BoardPainter::UserMark(int row, int col)
{
    const int x = X(col), y = Y(row), h = look_.userMarkHalf;
    canvas_.Line(x - h, y - h, x + h, y + h, look_.userMarkColour, look_.userMarkPen);
    canvas_.Line(x - h, y + h, x + h, y - h, look_.userMarkColour, look_.userMarkPen);
}

bool BoardPainter::LinkEnds(CellAt link, CellAt& a, CellAt& b) const
{
    if (!OnBoard(board_, link.row, link.col) || !IsLinkCell(link.row, link.col))
        return false;
    const bool across = link.row % 2 == 1;
    a = {across ? link.row : link.row - 1, across ? link.col - 1 : link.col};
    b = {across ? link.row : link.row + 1, across ? link.col + 1 : link.col};
    return OnBoard(board_, a.row, a.col) && OnBoard(board_, b.row, b.col);
}

// The grid line between the two nodes, clear of their shapes, goes paler, and so does the
// link cell's digit.
void BoardPainter::DimmedLink(CellAt link)
{
    CellAt a{}, b{};
    if (!LinkEnds(link, a, b))
        return;
    const int reach = look_.dimmedFromNode;
    const int dx = b.col == a.col ? 0 : reach, dy = b.row == a.row ? 0 : reach;
    const int x1 = X(a.col) + dx, y1 = Y(a.row) + dy, x2 = X(b.col) - dx, y2 = Y(b.row) - dy;
    canvas_.Line(x1, y1, x2, y2, look_.background, look_.gridPen + 2);
    canvas_.Line(x1, y1, x2, y2, look_.dimmedGrid, look_.gridPen);
    Cell(link.row, link.col, look_.dimmedDigit, look_.linkPatch);
}

bool BoardPainter::CellOf(int cellNo, int& row, int& col) const
{
    if (!IsBoardCellNumber(board_, cellNo))
        return false;
    row = board_.CellRow[cellNo];
    col = board_.CellCol[cellNo];
    return true;
}

TextSize BoardPainter::DigitSize(int digit)
{
    if (digit > 9)
        return canvas_.MeasureText(std::to_string(digit), look_.font);
    TextSize& size = digitSizes_[static_cast<std::size_t>(digit)];
    if (size.height == 0)
        size = canvas_.MeasureText(std::to_string(digit), look_.font);
    return size;
}

void BoardPainter::CentredText(int x, int y, const std::string& text, const FontSpec& font, Colour colour)
{
    const TextSize size = canvas_.MeasureText(text, font);
    canvas_.Text(x - size.width / 2, y - size.height / 2, text, font, colour);
}

void BoardPainter::NodeShape(int row, int col, Colour outline, Colour fill)
{
    const int x = X(col), y = Y(row);
    if (look_.nodeShape == kRoundNodes) {
        canvas_.Circle(x, y, look_.nodeRadius, outline, look_.nodePen, fill);
        return;
    }
    const int h = look_.nodeHalfBox;
    canvas_.FilledBox(x - h, y - h, x + h, y + h, fill);
    canvas_.Box(x - h, y - h, x + h, y + h, outline, look_.nodePen);
}

void BoardPainter::Digit(int row, int col, Colour colour)
{
    const int value = board_.NodeValue(row, col);
    if (value <= 0)
        return;
    const TextSize size = DigitSize(value);
    canvas_.Text(X(col) - size.width / 2, Y(row) - size.height / 2, std::to_string(value), look_.font, colour);
}

void BoardPainter::Rings()
{
    int row = 0, col = 0, endRow = 0, endCol = 0;
    if (CellOf(board_.KeyNodes[1], row, col))
        canvas_.Circle(X(col), Y(row), look_.ringRadius, look_.hintRing, look_.hintRingPen, std::nullopt);
    if (!CellOf(board_.KeyNodes[0], row, col) || !CellOf(board_.KeyNodes[2], endRow, endCol))
        return;
    canvas_.Circle(X(col), Y(row), look_.ringRadius, look_.endRing, look_.endRingPen, std::nullopt);
    canvas_.Circle(X(endCol), Y(endRow), look_.ringRadius, look_.endRing, look_.endRingPen, std::nullopt);
}

// Start and End drawn with the node colours swapped, the outline kept.
void BoardPainter::InvertedKeyNodes()
{
    int row = 0, col = 0;
    for (const int key : board_.KeyNodes)
        if (CellOf(key, row, col)) {
            NodeShape(row, col, look_.outlineInDigitColour ? look_.nodeFill : look_.nodeOutline, look_.nodeDigit);
            Digit(row, col, look_.nodeFill);
        }
}

// An "X" outside the board beside Start and End: above Start and below End for a puzzle laid
// from the top, else left of Start and right of End (the path directions 3 and 4 lay the path
// from the left).
void BoardPainter::Xs()
{
    const int side = board_.StartSide;
    if (side != kSideLeft && side != kSideTop && !look_.xsForOtherSides)
        return;
    int startRow = 0, startCol = 0, endRow = 0, endCol = 0;
    if (!CellOf(board_.KeyNodes[0], startRow, startCol) || !CellOf(board_.KeyNodes[2], endRow, endCol))
        return;
    const int away = look_.markOffset;
    const bool top = board_.StartSide == kSideTop;
    CentredText(X(startCol) - (top ? 0 : away), Y(startRow) - (top ? away : 0), "X", look_.markFont, look_.markColour);
    CentredText(X(endCol) + (top ? 0 : away), Y(endRow) + (top ? away : 0), "X", look_.markFont, look_.markColour);
}

} // namespace tallyon
