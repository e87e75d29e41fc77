// Drawing the board: grid, cells with their digits, links and the Start/End/Hint marks.
#include "play/draw.h"

#include "play/play_text.h"

#include <algorithm>
#include <array>
#include <string>

namespace tallyon {
namespace {

// A round node is a little wider than a square one so that its digit fits inside.
int NodeRadius(const Board& board) { return RoundHalfEven(1.1 * board.CellBase); }

// The grid pen drawn for the GridLineWidth setting, which a damaged file may set to anything:
// at least 1, and no wider than a cell pitch, since a wider pen shows the board no
// differently. Kept small, it can be multiplied without overflow.
int LinePen(const Board& board, const DrawStyle& style)
{
    return std::clamp(style.GridLineWidth, 1, std::max(1, board.CellPitch / kTwipsPerPixel));
}

// Draws cells with one font, measuring each digit once.
class CellPainter {
public:
    CellPainter(Canvas& canvas, const Board& board, const DrawStyle& style)
        : canvas_(canvas), board_(board), style_(style)
    {
        font_.family = style.FontFamily;
        font_.points = board.FontSize;
    }

    void Draw(int row, int col, Colour fore, Colour fill)
    {
        if (IsNode(row, col))
            DrawNodeShape(row, col, fore, fill);
        else if (IsLinkCell(row, col))
            DrawPatch(row, col, fill);
        else
            return;
        DrawDigit(row, col, fore);
    }

private:
    // The shape, filled and outlined in the colour of its digit.
    void DrawNodeShape(int row, int col, Colour fore, Colour fill)
    {
        const int x = board_.CellX(row, col);
        const int y = board_.CellY(row, col);
        if (style_.NodeShape == kRoundNodes) {
            canvas_.Circle(x, y, NodeRadius(board_), fore, LinePen(board_, style_), fill);
            return;
        }
        const int q = board_.QuarterPitch;
        canvas_.FilledBox(x - q, y - q, x + q, y + q, fill);
        canvas_.Box(x - q, y - q, x + q, y + q, fore, LinePen(board_, style_));
    }

    // Blanks the grid line under a link cell's digit.
    void DrawPatch(int row, int col, Colour fill)
    {
        const int digit = board_.NodeValue(row, col);
        if (digit <= 0)
            return;
        const TextSize size = DigitSize(digit);
        const int x = board_.CellX(row, col);
        const int y = board_.CellY(row, col);
        const int halfW = size.width / 2 + size.width / 5;
        const int halfH = size.height / 2;
        canvas_.FilledBox(x - halfW, y - halfH, x + halfW, y + halfH, fill);
    }

    void DrawDigit(int row, int col, Colour fore)
    {
        const int digit = board_.NodeValue(row, col);
        if (digit <= 0)
            return;
        const TextSize size = DigitSize(digit);
        canvas_.Text(board_.CellX(row, col) - size.width / 2, board_.CellY(row, col) - size.height / 2,
                     std::to_string(digit), font_, fore);
    }

    TextSize DigitSize(int digit)
    {
        if (digit > 9)
            return canvas_.MeasureText(std::to_string(digit), font_);
        TextSize& size = digitSizes_[static_cast<std::size_t>(digit)];
        if (size.height == 0)
            size = canvas_.MeasureText(std::to_string(digit), font_);
        return size;
    }

    Canvas& canvas_;
    const Board& board_;
    const DrawStyle& style_;
    FontSpec font_;
    std::array<TextSize, 10> digitSizes_{};
};

int NodeX(const Board& board, int col) { return (col - 1) * board.CellPitch + board.BoardLeft; }
int NodeY(const Board& board, int row) { return (row - 1) * board.CellPitch + board.BoardTop; }

// Finds the row and column of a cell number when it lies on the board.
bool CellOfNumber(const Board& board, int cellNo, int& row, int& col)
{
    if (!IsBoardCellNumber(board, cellNo))
        return false;
    row = board.CellRow[cellNo];
    col = board.CellCol[cellNo];
    return true;
}

// Places the text centred on (x, y).
void CentredText(Canvas& canvas, int x, int y, const std::string& text, const FontSpec& font, Colour colour)
{
    const TextSize size = canvas.MeasureText(text, font);
    canvas.Text(x - size.width / 2, y - size.height / 2, text, font, colour);
}

// Which way the "X"s go: above and below for a puzzle laid from the top, else beside; the
// path directions 3 and 4 lay the path from the left.
int MarkSide(const Board& board) { return board.StartSide == kSideTop ? kSideTop : kSideLeft; }

void DrawPath(Canvas& canvas, const Board& board, const DrawStyle& style)
{
    const std::vector<int>& cells = board.PathCells;
    for (std::size_t i = 1; i < cells.size(); ++i) {
        int rowA = 0, colA = 0, rowB = 0, colB = 0;
        if (CellOfNumber(board, cells[i - 1], rowA, colA) && CellOfNumber(board, cells[i], rowB, colB))
            DrawLink(canvas, board, style, 1, rowA, colA, rowB, colB);
    }
}

// A user link as the linking code draws it: the line, then its ends and its link cell on top
// so that their digits stay readable.
void DrawUserLink(Canvas& canvas, const Board& board, const DrawStyle& style, CellPainter& cells, int row, int col,
                  int dRow, int dCol)
{
    DrawLink(canvas, board, style, 1, row, col, row + 2 * dRow, col + 2 * dCol);
    cells.Draw(row, col, style.FontColour, style.ShapeColour);
    cells.Draw(row + 2 * dRow, col + 2 * dCol, style.FontColour, style.ShapeColour);
    cells.Draw(row + dRow, col + dCol, style.GridColour, style.Background);
}

void DrawUserLinks(Canvas& canvas, const Board& board, const DrawStyle& style, CellPainter& cells)
{
    const int span = board.BoardSpan;
    for (int row = 1; row <= span; row += 2) {
        for (int col = 1; col <= span; col += 2) {
            if (board.UserRight(row, col) == 1 && col + 2 <= span)
                DrawUserLink(canvas, board, style, cells, row, col, 0, 1);
            if (board.UserDown(row, col) == 1 && row + 2 <= span)
                DrawUserLink(canvas, board, style, cells, row, col, 1, 0);
        }
    }
}

} // namespace

void DrawGrid(Canvas& canvas, const Board& board, const DrawStyle& style)
{
    canvas.Clear(style.Background);
    // The outlines of the boxes between neighbouring nodes, drawn as whole grid lines: the same
    // picture as box after box, at a fraction of the cost.
    const int span = board.BoardSpan; // always odd: the last node row and column
    if (span < 3)
        return;
    const int left = NodeX(board, 1), right = NodeX(board, span);
    const int top = NodeY(board, 1), bottom = NodeY(board, span);
    for (int k = 1; k <= span; k += 2) {
        canvas.Line(left, NodeY(board, k), right, NodeY(board, k), style.GridColour, LinePen(board, style));
        canvas.Line(NodeX(board, k), top, NodeX(board, k), bottom, style.GridColour, LinePen(board, style));
    }
}

void DrawCell(Canvas& canvas, const Board& board, const DrawStyle& style, int row, int col, Colour fore, Colour fill)
{
    CellPainter(canvas, board, style).Draw(row, col, fore, fill);
}

void DrawCellAsNode(Canvas& canvas, const Board& board, const DrawStyle& style, int row, int col)
{
    DrawCell(canvas, board, style, row, col, style.FontColour, style.ShapeColour);
}

void DrawCellAsLink(Canvas& canvas, const Board& board, const DrawStyle& style, int row, int col)
{
    DrawCell(canvas, board, style, row, col, style.GridColour, style.Background);
}

void DrawLink(Canvas& canvas, const Board& board, const DrawStyle& style, int value, int rowA, int colA, int rowB,
              int colB)
{
    const int x1 = board.CellX(rowA, colA), y1 = board.CellY(rowA, colA);
    const int x2 = board.CellX(rowB, colB), y2 = board.CellY(rowB, colB);
    const int wide = 3 * LinePen(board, style);
    if (value == 1) {
        canvas.Line(x1, y1, x2, y2, style.UserLineColour, wide);
        return;
    }
    canvas.Line(x1, y1, x2, y2, style.Background, wide);
    canvas.Line(x1, y1, x2, y2, style.GridColour, LinePen(board, style));
}

void DrawMarks(Canvas& canvas, const Board& board, const DrawStyle& style)
{
    int startRow = 0, startCol = 0, endRow = 0, endCol = 0, hintRow = 0, hintCol = 0;
    const int ring = RoundHalfEven(1.45 * board.CellBase);
    if (CellOfNumber(board, board.KeyNodes[1], hintRow, hintCol))
        canvas.Circle(board.CellX(hintRow, hintCol), board.CellY(hintRow, hintCol), ring, kHintMarkColour, 2,
                      std::nullopt);
    if (!CellOfNumber(board, board.KeyNodes[0], startRow, startCol) ||
        !CellOfNumber(board, board.KeyNodes[2], endRow, endCol))
        return;
    const int sx = board.CellX(startRow, startCol), sy = board.CellY(startRow, startCol);
    const int ex = board.CellX(endRow, endCol), ey = board.CellY(endRow, endCol);
    canvas.Circle(sx, sy, ring, kEndMarkColour, 3, std::nullopt);
    canvas.Circle(ex, ey, ring, kEndMarkColour, 3, std::nullopt);

    const FontSpec font{style.FontFamily, board.FontSize, true};
    const int away = board.CellPitch;
    if (MarkSide(board) == kSideTop) {
        CentredText(canvas, sx, sy - away, "X", font, kEndMarkColour);
        CentredText(canvas, ex, ey + away, "X", font, kEndMarkColour);
    } else {
        CentredText(canvas, sx - away, sy, "X", font, kEndMarkColour);
        CentredText(canvas, ex + away, ey, "X", font, kEndMarkColour);
    }
}

bool LinkCrossesMarks(const Board& board, int idA, int idB)
{
    return std::any_of(board.KeyNodes.begin(), board.KeyNodes.end(),
                       [idA, idB](int key) { return key == idA || key == idB; });
}

void DrawBoard(Canvas& canvas, const Board& board, const DrawStyle& style, int mode)
{
    DrawGrid(canvas, board, style);
    CellPainter cells(canvas, board, style);
    for (int row = 1; row <= board.BoardSpan; ++row) {
        for (int col = 1; col <= board.BoardSpan; ++col) {
            if (IsNode(row, col))
                cells.Draw(row, col, style.FontColour, style.ShapeColour);
            else if (IsLinkCell(row, col))
                cells.Draw(row, col, style.GridColour, style.Background);
        }
    }
    if (mode == kSolutionMode)
        DrawPath(canvas, board, style);
    else
        DrawUserLinks(canvas, board, style, cells);
    DrawMarks(canvas, board, style);
}

void DrawBoard(PlayHost& host, const Board& board, int mode)
{
    const std::unique_ptr<Canvas> canvas = host.OpenBoardCanvas();
    DrawBoard(*canvas, board, host.Style(), mode);
}

void DrawMarks(PlayHost& host, const Board& board)
{
    const std::unique_ptr<Canvas> canvas = host.OpenBoardCanvas();
    DrawMarks(*canvas, board, host.Style());
}

} // namespace tallyon
