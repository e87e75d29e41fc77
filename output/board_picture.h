// The black-and-white board picture shared by the printed page and the clipboard picture.
//
// Contract: the board is drawn by the one board painter (platform/board_painter.h) in the
// output's black-and-white look; PrintBoard and DrawBoardWithLineWidth give it that look and
// add the footer. They draw only through the Canvas given, in twips, and never read the screen
// colours. Mode 0 draws the
// puzzle, mode 1 the puzzle with its solution path. The board must hold a built puzzle
// (PathList, KeyNodes and the digits); an empty board draws only its grid.
#pragma once

#include "core/board/board.h"
#include "platform/canvas.h"

#include <QImage>
#include <QString>

#include <string>

namespace tallyon {

// What the output needs from the settings and the board picture Picture1.
struct OutputOptions {
    int NodeShape = kRoundNodes; // anything else draws boxes
    int GridLineWidth = 1;       // pen width of the clipboard picture (screen pixels)
    int PrintLineWidth = 6;      // pen width on the printer (printer pen units)
    QString fontName = "Arial";  // Picture1's font
    bool fontBold = false;
    int pictureWidth = 0; // Picture1's size in twips; 0 takes the board's own size
    int pictureHeight = 0;
    double devicePixelRatio = 1.0; // of the screen the picture is made for; below 1 counts as 1
};

// 0.9, but 0.8 when BoardSpan is 11 (GridSize 5): printed 5x5 boards keep the size they have
// always printed at, so a player's new printouts match the earlier ones.
double OutputScale(const Board& board);
// The printed cell pitch in twips: CellPitch x OutputScale.
double OutputPitch(const Board& board);
// 12 - 0.6 x (GridSize - 5) points.
double OutputFontSize(const Board& board);
// "Tallyon", or "Tallyon from <homepage>" when the build names a homepage.
std::string FooterText();

// The extent of one board as drawn by PrintBoard, relative to its origin (the grid's
// top-left corner), in twips.
struct PictureExtent {
    int margin = 0;    // room kept around the grid for the nodes and the "X" marks
    int gridSide = 0;  // (BoardSpan - 1) pitches
    int footerTop = 0; // top of the footer line
    int footerBottom = 0;
};
PictureExtent MeasureBoardPicture(const Board& board, Canvas& canvas, const OutputOptions& options);

// Draws one board with its grid's top-left corner at (left, top), twips, grid lines
// PrintLineWidth wide, the solution path (mode 1) four times that.
void PrintBoard(Canvas& canvas, const Board& board, int left, int top, int mode, const OutputOptions& options);

// The printer's pen unit: PrintLineWidth counts in 1/600 inch.
inline constexpr double kPrinterPenUnitsPerInch = 600.0;

// The same board drawn with grid lines lineWidth pen units wide, penUnitsPerTwip of them in a
// twip; used for the clipboard picture (pen units of screen pixels). The width drawn is
// bounded by a cell pitch.
void DrawBoardWithLineWidth(Canvas& canvas, const Board& board, int left, int top, int mode,
                            const OutputOptions& options, int lineWidth, double penUnitsPerTwip);

// The clipboard picture: a white image of Picture1's size at the options' device pixel
// ratio, the board drawn at the margin, trimmed to the board, its margin and the footer.
QImage DrawBoardPicture(const Board& board, int mode, const OutputOptions& options);

} // namespace tallyon
