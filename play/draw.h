// Drawing the board on screen: grid, cells with their digits, links and the Start/End/Hint
// marks, each drawn by the one board painter (platform/board_painter.h) in the window's look.
//
// Contract: every routine draws through the Canvas it is given, in twips, at the geometry the
// Board holds (CellPitch, BoardLeft, BoardTop, CellX, CellY, FontSize; see LayoutBoard) and in
// the colours of the DrawStyle. Row and column arguments lie in 1..BoardSpan. Cells without a
// digit are drawn without one. Nothing here changes the Board.
#pragma once

#include "core/board/board.h"
#include "platform/board_painter.h"
#include "platform/canvas.h"
#include "play/play_host.h"

namespace tallyon {

// Fixed colours of the marks; they belong to no scheme.
inline constexpr Colour kEndMarkColour = fixed::Red;   // Start and End rings and the "X"s
inline constexpr Colour kHintMarkColour = fixed::Blue; // the Hint ring

// Fixed colours of a hint (the key H), apart from every other colour of the board: orange
// rings around the nodes to look at, a green line for the link it forces, and a red frame, as
// Verify's marker has, around a wrong link or mark.
inline constexpr Colour kHintLookColour = RGB(235, 125, 0);
inline constexpr Colour kForcedLinkColour = RGB(0, 160, 60);
inline constexpr Colour kWrongFrameColour = fixed::Red;

// The window's look for the board painter: the geometry the Board holds, the colours and font
// of the DrawStyle, GridLineWidth as the pen (at least 1, at most a cell pitch), links three
// pens wide, rings around Start, Hint and End, the "X"s a cell pitch from them, the player's
// crosses in MarkColour, and a hint's rings, dimmed links and forced link.
BoardLook ScreenLook(const Board& board, const DrawStyle& style);

// Clears the picture with the background and draws the grid lines through the node centres
// (the outlines of the boxes between neighbouring nodes) in GridColour at GridLineWidth.
void DrawGrid(Canvas& canvas, const Board& board, const DrawStyle& style);

// Draws one cell at its centre. A node: its shape filled with `fill`, outlined in `fore`, and
// its digit in `fore`. A link cell: a patch of `fill` under its digit, and the digit in
// `fore`. A gap draws nothing.
void DrawCell(Canvas& canvas, const Board& board, const DrawStyle& style, int row, int col, Colour fore, Colour fill);
// DrawCell in the node colours (FontColour on ShapeColour) and in the link-cell colours
// (GridColour on the background).
void DrawCellAsNode(Canvas& canvas, const Board& board, const DrawStyle& style, int row, int col);
void DrawCellAsLink(Canvas& canvas, const Board& board, const DrawStyle& style, int row, int col);

// Value 1: the line between the two cells' centres in UserLineColour at 3 x GridLineWidth.
// Any other value: erases that line with the background and draws the grid line again in
// GridColour at GridLineWidth.
void DrawLink(Canvas& canvas, const Board& board, const DrawStyle& style, int value, int rowA, int colA, int rowB,
              int colB);

// Rings around Start and End, an "X" outside the board beside each (left of Start and right of
// End, or above Start and below End for a puzzle that starts at the top), and a thinner ring
// around the Hint node. Draws nothing for key nodes that are not on the board.
void DrawMarks(Canvas& canvas, const Board& board, const DrawStyle& style);

// True when a link between the nodes idA and idB runs through a mark: it ends at Start, Hint
// or End, whose rings a link line or a redrawn node would otherwise cut.
bool LinkCrossesMarks(const Board& board, int idA, int idB);

// A hint over the board as it stands (BoardPainter::Hint), in the window's look.
void DrawHint(Canvas& canvas, const Board& board, const DrawStyle& style, const HintPicture& hint);

// The whole board in the order grid, cells, links, marks. Mode 1 draws the solution path from
// PathList as plain lines; any other mode the user's links, each as the linking code draws it
// (the line, then its two end nodes and its link cell again on top).
void DrawBoard(Canvas& canvas, const Board& board, const DrawStyle& style, int mode);

// The same on the host's board picture, in the host's current style.
void DrawBoard(PlayHost& host, const Board& board, int mode);
void DrawMarks(PlayHost& host, const Board& board);

} // namespace tallyon
