// The one board painter: the grid, the cells with their digits, the path or the player's links,
// the marks, and on the screen the player's crosses and a hint, for the screen, the printed
// page, the clipboard picture and test recordings.
//
// Contract: the painter draws only through the Canvas it is given, in twips, and never changes
// the Board. Everything that differs between those pictures (where the board lies, its pitch,
// colours, pens, fonts, node sizes, and what is shown) comes in a BoardLook; the painter itself
// holds no colour or size of its own. Cell numbers that do not name a cell of the board, and
// key nodes off it, are skipped.
#pragma once

#include "core/board/board.h"
#include "core/board/lattice.h"
#include "platform/canvas.h"

#include <array>
#include <climits>
#include <optional>
#include <vector>

namespace tallyon {

// How the grid is drawn: as whole lines through the node rows and columns (the outlines of the
// boxes between neighbouring nodes), or as one box outline per cell.
enum class GridKind { NodeLines, CellBoxes };

// How the Start, Hint and End nodes stand out: rings around them, or drawn inverted (node
// colours swapped) on top of the cells.
enum class KeyNodeKind { Rings, Inverted };

struct BoardLook {
    // Geometry: the centre of cell (row, col) lies at left + pitch x (col - 1),
    // top + pitch x (row - 1), rounded to the nearest twip.
    double left = 0, top = 0, pitch = 0;
    FontSpec font;     // the digits
    FontSpec markFont; // the "X"s beside Start and End

    // Cleared with `background` first when `clear` is set.
    bool clear = false;
    Colour background = 0;

    GridKind grid = GridKind::NodeLines;
    Colour gridColour = 0;
    int gridPen = 1;

    int nodeShape = kRoundNodes;      // round nodes, anything else boxes
    int nodeRadius = 0;               // round nodes
    int nodeHalfBox = 0;              // box nodes
    int nodePen = 1;                  // the node outline
    bool outlineInDigitColour = true; // else outlined in nodeOutline
    Colour nodeOutline = 0;
    Colour nodeDigit = 0, nodeFill = 0;

    // A link cell's digit stands on a patch that hides the grid line under it: as wide as the
    // digit plus patchFifths fifths of it plus patchPad twips on each side, as high as the
    // digit but at most patchMaxHalfHeight from the centre.
    Colour linkDigit = 0, linkPatch = 0;
    int patchFifths = 0;
    int patchPad = 0;
    int patchMaxHalfHeight = INT_MAX;

    // The solution path; drawn under the cells, or over them.
    Colour pathColour = 0;
    int pathPen = 1;
    bool pathUnderCells = false;
    // The player's links.
    Colour userLineColour = 0;
    int userLinePen = 1;

    KeyNodeKind keyNodes = KeyNodeKind::Rings;
    int ringRadius = 0;
    Colour hintRing = 0, endRing = 0;
    int hintRingPen = 2, endRingPen = 3;
    Colour markColour = 0; // the "X"s
    int markOffset = 0;    // from the Start or End node's centre, outwards
    // Start sides other than Left and Top (0 on a board not yet built, 3 and 4 from a settings
    // file) put the "X"s beside Start and End when set, and show none otherwise.
    bool xsForOtherSides = true;

    // The player's marks (Board::UserMark), each a cross over the link cell's patch and under
    // its digit, drawn only where `userMarks` is set: the screen shows them, paper and the
    // clipboard picture never do.
    bool userMarks = false;
    Colour userMarkColour = 0;
    int userMarkHalf = 0; // from the link cell's centre to the end of each arm, along x and y
    int userMarkPen = 1;

    // A hint (BoardPainter::Hint): rings around the nodes to look at, the links it rules out
    // dimmed (their digit and grid line in paler colours), the link it forces drawn as a
    // player's link in a colour of its own, and a frame around a wrong link or mark.
    Colour lookRingColour = 0;
    int lookRingRadius = 0, lookRingPen = 1;
    Colour dimmedDigit = 0, dimmedGrid = 0;
    int dimmedFromNode = 0; // a dimmed grid line starts this far from each node's centre
    Colour forcedLinkColour = 0;
    Colour wrongFrameColour = 0;
    int wrongFrameHalf = 0, wrongFramePen = 1;
};

// What a hint shows over the board, as lattice cells.
struct HintPicture {
    std::vector<CellAt> look;     // nodes to look at
    std::vector<CellAt> ruledOut; // link cells whose links it rules out
    std::optional<CellAt> forced; // the link cell of the link it forces
    std::optional<CellAt> wrong;  // the link cell of a wrong link or mark
};

// What a whole board shows besides its grid and cells.
enum class BoardShows { UserLinks, Path, Nothing };

class BoardPainter {
public:
    BoardPainter(Canvas& canvas, const Board& board, const BoardLook& look);

    int X(int col) const;
    int Y(int row) const;

    // The whole board: clear, grid, cells, then the path or the player's links, then the key
    // nodes' marks.
    void Paint(BoardShows shows);

    // Clears (when the look says so) and draws the grid.
    void Grid();
    // One cell at its centre: a node's shape filled with `fill` with its digit in `digit`, or a
    // link cell's patch of `fill` under its digit in `digit`. Gaps draw nothing.
    void Cell(int row, int col, Colour digit, Colour fill);
    // Every node and link cell in the look's colours.
    void Cells();
    // A straight line between two cells' centres.
    void Line(int rowA, int colA, int rowB, int colB, Colour colour, int pen);
    // The solution path, link by link, in pathColour.
    void Path();
    // One player's link: its line, then its two ends and its link cell again on top, so that
    // their digits stay readable.
    void UserLink(int row, int col, int dRow, int dCol);
    void UserLinks();
    // The key nodes' marks: rings or inverted nodes, then the "X"s beside Start and End.
    void Marks();
    // A hint over the board as it stands: the ruled-out links dimmed, the forced link, the
    // frame around a wrong one, the rings around the nodes to look at, and the key nodes'
    // rings again where a forced link's line may have crossed them. Cells off the board are
    // skipped.
    void Hint(const HintPicture& hint);

private:
    bool CellOf(int cellNo, int& row, int& col) const;
    TextSize DigitSize(int digit);
    void CentredText(int x, int y, const std::string& text, const FontSpec& font, Colour colour);
    void NodeShape(int row, int col, Colour outline, Colour fill);
    void Digit(int row, int col, Colour colour);
    // The key nodes' rings, or the key nodes inverted.
    void KeyNodeMarks();
    void Rings();
    void InvertedKeyNodes();
    void Xs();
    // A link's line in `colour`, then its two ends and its link cell again on top.
    void LinkWithCells(int row, int col, int dRow, int dCol, Colour colour);
    void UserMark(int row, int col);
    // The two end nodes of a link cell: left and right of a horizontal one, above and below a
    // vertical one; false for a cell that is no link cell of the board.
    bool LinkEnds(CellAt link, CellAt& a, CellAt& b) const;
    void DimmedLink(CellAt link);

    Canvas& canvas_;
    const Board& board_;
    const BoardLook& look_;
    std::array<TextSize, 10> digitSizes_{};
};

} // namespace tallyon
