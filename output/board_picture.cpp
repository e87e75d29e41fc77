// Draws the black-and-white board for the printer and the clipboard through one routine.
#include "output/board_picture.h"

#include "platform/qpainter_canvas.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

#ifndef TALLYON_HOMEPAGE
#define TALLYON_HOMEPAGE ""
#endif

namespace tallyon {
namespace {

constexpr Colour kBlack = RGB(0, 0, 0);
constexpr Colour kWhite = RGB(255, 255, 255);
constexpr double kFooterPoints = 7.0;

// Sizes relative to the printed pitch.
constexpr double kNodeRadius = 0.38;  // circle nodes
constexpr double kNodeHalfBox = 0.34; // box nodes
constexpr double kMarkOffset = 1.0;   // "X" centre from the node centre, outwards
constexpr double kMargin = 1.6;       // room around the grid
constexpr double kFooterGap = 1.5;    // grid bottom to footer top
constexpr double kBottomRoom = 0.4;   // below the footer in the picture

int Round(double v) { return static_cast<int>(std::lround(v)); }

// Everything one drawing pass needs, fixed once.
struct Pass {
    Canvas& canvas;
    const Board& board;
    const OutputOptions& options;
    double left;
    double top;
    double pitch;
    FontSpec font;

    int X(int col) const { return Round(left + pitch * (col - 1)); }
    int Y(int row) const { return Round(top + pitch * (row - 1)); }
};

FontSpec BoardFont(const Board& board, const OutputOptions& options)
{
    FontSpec font;
    font.family = options.fontName.isEmpty() ? std::string("Arial") : options.fontName.toStdString();
    font.points = OutputFontSize(board);
    font.bold = options.fontBold;
    return font;
}

void CentredText(const Pass& p, int cx, int cy, const std::string& text, const FontSpec& font, Colour colour)
{
    const TextSize size = p.canvas.MeasureText(text, font);
    p.canvas.Text(cx - size.width / 2, cy - size.height / 2, text, font, colour);
}

void DrawGrid(const Pass& p, int lineWidth)
{
    const int last = p.board.BoardSpan - 1;
    for (int r = 1; r <= last; ++r)
        for (int c = 1; c <= last; ++c)
            p.canvas.Box(p.X(c), p.Y(r), p.X(c + 1), p.Y(r + 1), kBlack, lineWidth);
}

void DrawPath(const Pass& p, int lineWidth)
{
    const std::vector<int>& cells = p.board.PathCells;
    for (std::size_t i = 1; i < cells.size(); ++i) {
        const int a = cells[i - 1];
        const int b = cells[i];
        if (!IsBoardCellNumber(p.board, a) || !IsBoardCellNumber(p.board, b))
            continue;
        p.canvas.Line(p.X(p.board.CellCol[a]), p.Y(p.board.CellRow[a]), p.X(p.board.CellCol[b]),
                      p.Y(p.board.CellRow[b]), kBlack, 4 * lineWidth);
    }
}

// One node shape with its digit: white with black digit, or inverted for the key nodes.
void DrawNode(const Pass& p, int row, int col, bool inverted)
{
    const int cx = p.X(col);
    const int cy = p.Y(row);
    const Colour fill = inverted ? kBlack : kWhite;
    if (p.options.NodeShape == kRoundNodes) {
        p.canvas.Circle(cx, cy, Round(kNodeRadius * p.pitch), kBlack, 1, fill);
    } else {
        const int h = Round(kNodeHalfBox * p.pitch);
        p.canvas.FilledBox(cx - h, cy - h, cx + h, cy + h, fill);
        p.canvas.Box(cx - h, cy - h, cx + h, cy + h, kBlack, 1);
    }
    const int value = p.board.NodeValue(row, col);
    if (value > 0)
        CentredText(p, cx, cy, std::to_string(value), p.font, inverted ? kWhite : kBlack);
}

// A link cell's digit, on a white patch so that the grid line under it does not cross it.
void DrawLinkDigit(const Pass& p, int row, int col)
{
    const int value = p.board.NodeValue(row, col);
    if (value <= 0)
        return;
    const std::string text = std::to_string(value);
    const TextSize size = p.canvas.MeasureText(text, p.font);
    const int cx = p.X(col);
    const int cy = p.Y(row);
    const int hw = size.width / 2 + Round(0.04 * p.pitch);
    const int hh = std::min(size.height / 2, Round(0.3 * p.pitch));
    p.canvas.FilledBox(cx - hw, cy - hh, cx + hw, cy + hh, kWhite);
    CentredText(p, cx, cy, text, p.font, kBlack);
}

void DrawCells(const Pass& p)
{
    const int span = p.board.BoardSpan;
    for (int r = 1; r <= span; ++r)
        for (int c = 1; c <= span; ++c) {
            if (IsNode(r, c))
                DrawNode(p, r, c, false);
            else if (IsLinkCell(r, c))
                DrawLinkDigit(p, r, c);
        }
}

void DrawKeyNodes(const Pass& p)
{
    for (int k : p.board.KeyNodes)
        if (IsBoardCellNumber(p.board, k))
            DrawNode(p, p.board.CellRow[k], p.board.CellCol[k], true);
}

// "X" beside the Start and End nodes, outside the board on the side nearest to each.
void DrawStartEndMarks(const Pass& p)
{
    const int side = p.board.StartSide;
    if (side != kSideLeft && side != kSideTop)
        return;
    const int span = p.board.BoardSpan;
    const int offset = Round(kMarkOffset * p.pitch);
    for (int k : {p.board.KeyNodes[0], p.board.KeyNodes[2]}) {
        if (!IsBoardCellNumber(p.board, k))
            continue;
        const int row = p.board.CellRow[k];
        const int col = p.board.CellCol[k];
        int x = p.X(col);
        int y = p.Y(row);
        if (side == kSideLeft)
            x += (2 * col <= span) ? -offset : offset;
        else
            y += (2 * row <= span) ? -offset : offset;
        CentredText(p, x, y, "X", p.font, kBlack);
    }
}

void DrawFooter(const Pass& p, const PictureExtent& extent)
{
    FontSpec small = p.font;
    small.points = kFooterPoints;
    p.canvas.Text(Round(p.left), Round(p.top) + extent.footerTop, FooterText(), small, kBlack);
}

} // namespace

double OutputScale(const Board& board) { return board.BoardSpan == 11 ? 0.8 : 0.9; }

double OutputPitch(const Board& board) { return board.CellPitch * OutputScale(board); }

double OutputFontSize(const Board& board) { return 12.0 - 0.6 * (board.GridSize - 5); }

std::string FooterText()
{
    const std::string homepage = TALLYON_HOMEPAGE;
    return homepage.empty() ? std::string("Tallyon") : "Tallyon from " + homepage;
}

PictureExtent MeasureBoardPicture(const Board& board, Canvas& canvas, const OutputOptions& options)
{
    const double pitch = OutputPitch(board);
    FontSpec small = BoardFont(board, options);
    small.points = kFooterPoints;
    PictureExtent e;
    e.margin = Round(kMargin * pitch);
    e.gridSide = Round(pitch * (board.BoardSpan - 1));
    e.footerTop = e.gridSide + Round(kFooterGap * pitch);
    e.footerBottom = e.footerTop + canvas.MeasureText(FooterText(), small).height;
    return e;
}

void DrawBoardWithLineWidth(Canvas& canvas, const Board& board, int left, int top, int mode,
                            const OutputOptions& options, int lineWidth, double penUnitsPerTwip)
{
    const Pass p{canvas, board, options, double(left), double(top), OutputPitch(board), BoardFont(board, options)};
    // A width from the settings file may be anything: a pen wider than a cell pitch draws the
    // board no differently, and so bounded it can be multiplied without overflow.
    const int pitchInPenUnits = std::max(1, Round(p.pitch * penUnitsPerTwip));
    lineWidth = std::clamp(lineWidth, 1, pitchInPenUnits);
    DrawGrid(p, lineWidth);
    if (mode == kSolutionMode)
        DrawPath(p, lineWidth);
    DrawCells(p);
    DrawKeyNodes(p);
    DrawStartEndMarks(p);
    DrawFooter(p, MeasureBoardPicture(board, canvas, options));
}

void PrintBoard(Canvas& canvas, const Board& board, int left, int top, int mode, const OutputOptions& options)
{
    DrawBoardWithLineWidth(canvas, board, left, top, mode, options, options.PrintLineWidth,
                           kPrinterPenUnitsPerInch / kTwipsPerInch);
}

QImage DrawBoardPicture(const Board& board, int mode, const OutputOptions& options)
{
    const double dpr = std::max(1.0, options.devicePixelRatio);
    QImage probe(1, 1, QImage::Format_RGB32);
    QPainter probePainter(&probe);
    QPainterCanvas probeCanvas(probePainter);
    const PictureExtent e = MeasureBoardPicture(board, probeCanvas, options);
    probePainter.end();

    const int trimWidth = e.gridSide + 2 * e.margin;
    const int trimHeight = e.margin + e.footerBottom + Round(kBottomRoom * OutputPitch(board));
    const int width = options.pictureWidth > 0 ? options.pictureWidth : trimWidth;
    const int height = options.pictureHeight > 0 ? options.pictureHeight : trimHeight;
    auto toPixels = [dpr](int twips) { return std::max(1, int(std::ceil(twips * dpr / kTwipsPerPixel))); };

    QImage image(toPixels(width), toPixels(height), QImage::Format_RGB32);
    image.setDevicePixelRatio(dpr);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        QPainterCanvas canvas(painter);
        canvas.Clear(kWhite);
        DrawBoardWithLineWidth(canvas, board, e.margin, e.margin, mode, options, options.GridLineWidth,
                               1.0 / kTwipsPerPixel);
    }
    QImage trimmed =
        image.copy(0, 0, std::min(image.width(), toPixels(trimWidth)), std::min(image.height(), toPixels(trimHeight)));
    trimmed.setDevicePixelRatio(dpr);
    return trimmed;
}

} // namespace tallyon
