// Draws the black-and-white board for the printer and the clipboard through one routine.
#include "output/board_picture.h"

#include "platform/board_painter.h"
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
constexpr double kPatchPad = 0.04;    // a link digit's white patch beyond the digit, each side
constexpr double kPatchMaxHalfHeight = 0.3;
constexpr double kMargin = 1.6;     // room around the grid
constexpr double kFooterGap = 1.5;  // grid bottom to footer top
constexpr double kBottomRoom = 0.4; // below the footer in the picture

int Round(double v) { return static_cast<int>(std::lround(v)); }

FontSpec BoardFont(const Board& board, const OutputOptions& options)
{
    FontSpec font;
    font.family = options.fontName.isEmpty() ? std::string("Arial") : options.fontName.toStdString();
    font.points = OutputFontSize(board);
    font.bold = options.fontBold;
    return font;
}

// The black-and-white look of the printed page and the clipboard picture: every cell drawn as
// a box outline, white nodes with black digits, the key nodes inverted, the "X"s a printed
// pitch from Start and End, and the solution path under the cells.
BoardLook OutputLook(const Board& board, double left, double top, const OutputOptions& options, int lineWidth)
{
    const double pitch = OutputPitch(board);
    BoardLook look;
    look.left = left;
    look.top = top;
    look.pitch = pitch;
    look.font = look.markFont = BoardFont(board, options);
    look.grid = GridKind::CellBoxes;
    look.gridColour = kBlack;
    look.gridPen = lineWidth;
    look.nodeShape = options.NodeShape;
    look.nodeRadius = Round(kNodeRadius * pitch);
    look.nodeHalfBox = Round(kNodeHalfBox * pitch);
    look.nodePen = 1;
    look.outlineInDigitColour = false;
    look.nodeOutline = look.nodeDigit = look.linkDigit = kBlack;
    look.nodeFill = look.linkPatch = kWhite;
    look.patchPad = Round(kPatchPad * pitch);
    look.patchMaxHalfHeight = Round(kPatchMaxHalfHeight * pitch);
    look.pathColour = kBlack;
    look.pathPen = 4 * lineWidth;
    look.pathUnderCells = true;
    look.keyNodes = KeyNodeKind::Inverted;
    look.markColour = kBlack;
    look.markOffset = Round(kMarkOffset * pitch);
    look.xsForOtherSides = false; // paper shows the "X"s only for a puzzle laid from the left or the top
    return look;
}

void DrawFooter(Canvas& canvas, const BoardLook& look, const PictureExtent& extent)
{
    FontSpec small = look.font;
    small.points = kFooterPoints;
    canvas.Text(Round(look.left), Round(look.top) + extent.footerTop, FooterText(), small, kBlack);
}

} // namespace

double OutputScale(const Board& board) { return board.BoardSpan == 11 ? 0.8 : 0.9; }

double OutputPitch(const Board& board) { return board.CellPitch * OutputScale(board); }

double OutputFontSize(const Board& board) { return BoardFontSize(board.GridSize); }

std::string FooterText()
{
    const char* const homepage = TALLYON_HOMEPAGE;
    return *homepage == '\0' ? std::string("Tallyon") : "Tallyon from " + std::string(homepage);
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
    // A width from the settings file may be anything: a pen wider than a cell pitch draws the
    // board no differently, and so bounded it can be multiplied without overflow.
    const int pitchInPenUnits = std::max(1, Round(OutputPitch(board) * penUnitsPerTwip));
    lineWidth = std::clamp(lineWidth, 1, pitchInPenUnits);
    const BoardLook look = OutputLook(board, left, top, options, lineWidth);
    BoardPainter(canvas, board, look).Paint(mode == kSolutionMode ? BoardShows::Path : BoardShows::Nothing);
    DrawFooter(canvas, look, MeasureBoardPicture(board, canvas, options));
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
