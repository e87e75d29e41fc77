// Printing the puzzle and its solution on one page (menu "Print").
//
// Contract: does nothing before the first puzzle (empty List2). Otherwise asks
// "Print Puzzle and its Solution?" and prints only on Yes (6). The page goes to the system's
// default printer without a dialog; with no default printer it is written as the PDF file
// "tallyon-print.pdf" in appDir instead, and the closing report names that file. A job that
// cannot start, or a print module that cannot be loaded (output/print_module_loader.h),
// reports "Printing failed: ..." and never "Done".
//
// Pen widths on the printer: one pen unit is 1/600 inch, so PrintLineWidth 6 draws the grid
// 0.01 inch (0.25 mm) wide and the solution path 0.04 inch (1 mm).
#pragma once

#include "core/board/board.h"
#include "output/board_picture.h"
#include "output/page_painter.h"

#include <QString>

namespace tallyon {

inline constexpr char kPrintFileName[] = "tallyon-print.pdf";

// Where each board lies on the page, in twips from the printable area's top-left corner.
inline constexpr int kPrintLeft = 3000;
inline constexpr int kPuzzleTop = 1000;
inline constexpr int kSolutionTop = 8700;

void PrintPuzzleAndSolution(const Board& board, const OutputOptions& options, const QString& appDir);

// The factor, at most 1, by which the page's drawing shrinks so that both boards and the
// solution's footer fit a printable area of the given size in twips. On A4 every grid size
// fits at 1; Letter is shorter, and a tall puzzle (9x9 laid from the top) needs less.
double PrintScale(const Board& board, const OutputOptions& options, Canvas& measure, double printableWidth,
                  double printableHeight);

// The printed page: both boards, shrunk by PrintScale when the page is too small. The board
// and options must outlive it.
class BoardPage : public PagePainter {
public:
    BoardPage(const Board& board, const OutputOptions& options) : board_(board), options_(options) {}
    void Paint(QPainter& painter, double dpi, double width, double height) const override;

private:
    const Board& board_;
    const OutputOptions& options_;
};

} // namespace tallyon
