// The board on screen: the board painter in the window's look, piece by piece.
#include "play/draw.h"

#include <algorithm>
#include <array>
#include <string>

namespace tallyon {
namespace {

// The grid pen drawn for the GridLineWidth setting, which a damaged file may set to anything:
// at least 1, and no wider than a cell pitch, since a wider pen shows the board no
// differently. Kept small, it can be multiplied without overflow.
int LinePen(const Board& board, const DrawStyle& style)
{
    return std::clamp(style.GridLineWidth, 1, std::max(1, board.CellPitch / kTwipsPerPixel));
}

// Sizes of the player's crosses and of a hint, in cell pitches and pen units.
constexpr double kCrossHalf = 0.3;     // from the link cell's centre, inside its gap cells
constexpr double kHintRingHalf = 0.45; // around a node, clear of the key nodes' rings
constexpr double kWrongFrameHalf = 0.35;
constexpr int kCrossPen = 2;
constexpr int kHintRingPen = 3;
constexpr int kWrongFramePen = 2;
// A ruled-out link is drawn a third of the way from the background to its own colours.
constexpr int kDimmedShare = 3;

// `colour` taken 1/kDimmedShare of the way from `background`.
Colour Dimmed(Colour colour, Colour background)
{
    const auto mix = [](int c, int b) { return b + (c - b) / kDimmedShare; };
    return RGB(mix(RedOf(colour), RedOf(background)), mix(GreenOf(colour), GreenOf(background)),
               mix(BlueOf(colour), BlueOf(background)));
}

// The crosses in the scheme's colour, or in the grid's where that is the background's (a
// damaged all.col) and the crosses would not show.
Colour CrossColour(const DrawStyle& style)
{
    return style.MarkColour != style.Background ? style.MarkColour : style.GridColour;
}

void SetHintLook(BoardLook& look, const Board& board, const DrawStyle& style)
{
    const double pitch = board.CellPitch;
    look.userMarks = true;
    look.userMarkColour = CrossColour(style);
    look.userMarkHalf = RoundHalfEven(kCrossHalf * pitch);
    look.userMarkPen = kCrossPen;
    look.lookRingColour = kHintLookColour;
    look.lookRingRadius = RoundHalfEven(kHintRingHalf * pitch);
    look.lookRingPen = kHintRingPen;
    look.dimmedDigit = Dimmed(style.GridColour, style.Background);
    look.dimmedGrid = look.dimmedDigit;
    const int shape = look.nodeShape == kRoundNodes ? look.nodeRadius : look.nodeHalfBox;
    look.dimmedFromNode = shape + (look.nodePen + 1) * kTwipsPerPixel;
    look.forcedLinkColour = kForcedLinkColour;
    look.wrongFrameColour = kWrongFrameColour;
    look.wrongFrameHalf = RoundHalfEven(kWrongFrameHalf * pitch);
    look.wrongFramePen = kWrongFramePen;
}

// Draws one piece of the board in the screen's look.
template <typename Piece>
void InScreenLook(Canvas& canvas, const Board& board, const DrawStyle& style, Piece piece)
{
    const BoardLook look = ScreenLook(board, style);
    BoardPainter painter(canvas, board, look);
    piece(painter);
}

} // namespace

BoardLook ScreenLook(const Board& board, const DrawStyle& style)
{
    const int pen = LinePen(board, style);
    BoardLook look;
    look.left = board.BoardLeft;
    look.top = board.BoardTop;
    look.pitch = board.CellPitch;
    look.font = {style.FontFamily, board.FontSize, false};
    look.markFont = {style.FontFamily, board.FontSize, true};
    look.clear = true;
    look.background = style.Background;
    look.grid = GridKind::NodeLines;
    look.gridColour = style.GridColour;
    look.gridPen = pen;
    look.nodeShape = style.NodeShape;
    // A round node is a little wider than a square one so that its digit fits inside.
    look.nodeRadius = RoundHalfEven(1.1 * board.CellBase);
    look.nodeHalfBox = board.QuarterPitch;
    look.nodePen = pen;
    look.outlineInDigitColour = true;
    look.nodeDigit = style.FontColour;
    look.nodeFill = style.ShapeColour;
    look.linkDigit = style.GridColour;
    look.linkPatch = style.Background;
    look.patchFifths = 1;
    look.pathColour = look.userLineColour = style.UserLineColour;
    look.pathPen = look.userLinePen = 3 * pen;
    look.keyNodes = KeyNodeKind::Rings;
    look.ringRadius = RoundHalfEven(1.45 * board.CellBase);
    look.hintRing = kHintMarkColour;
    look.endRing = look.markColour = kEndMarkColour;
    look.markOffset = board.CellPitch;
    SetHintLook(look, board, style);
    return look;
}

void DrawGrid(Canvas& canvas, const Board& board, const DrawStyle& style)
{
    InScreenLook(canvas, board, style, [](BoardPainter& p) { p.Grid(); });
}

void DrawCell(Canvas& canvas, const Board& board, const DrawStyle& style, int row, int col, Colour fore, Colour fill)
{
    InScreenLook(canvas, board, style, [&](BoardPainter& p) { p.Cell(row, col, fore, fill); });
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
    const int pen = LinePen(board, style);
    InScreenLook(canvas, board, style, [&](BoardPainter& p) {
        if (value == 1) {
            p.Line(rowA, colA, rowB, colB, style.UserLineColour, 3 * pen);
            return;
        }
        p.Line(rowA, colA, rowB, colB, style.Background, 3 * pen);
        p.Line(rowA, colA, rowB, colB, style.GridColour, pen);
    });
}

void DrawMarks(Canvas& canvas, const Board& board, const DrawStyle& style)
{
    InScreenLook(canvas, board, style, [](BoardPainter& p) { p.Marks(); });
}

bool LinkCrossesMarks(const Board& board, int idA, int idB)
{
    return std::any_of(board.KeyNodes.begin(), board.KeyNodes.end(),
                       [idA, idB](int key) { return key == idA || key == idB; });
}

void DrawHint(Canvas& canvas, const Board& board, const DrawStyle& style, const HintPicture& hint)
{
    InScreenLook(canvas, board, style, [&hint](BoardPainter& p) { p.Hint(hint); });
}

void DrawBoard(Canvas& canvas, const Board& board, const DrawStyle& style, int mode)
{
    InScreenLook(canvas, board, style, [mode](BoardPainter& p) {
        p.Paint(mode == kSolutionMode ? BoardShows::Path : BoardShows::UserLinks);
    });
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
