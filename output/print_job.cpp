// Sends the puzzle and its solution to the default printer, or to a PDF file without one.
#include "output/print_job.h"

#include "output/print_module_loader.h"
#include "platform/answer_codes.h"
#include "platform/qpainter_canvas.h"
#include "ui/message_box.h"

#include <QDir>
#include <QFile>
#include <QPainter>

#include <algorithm>
#include <cstdio>

namespace tallyon {
namespace {

// Moves the finished temporary file over the old PDF.
bool ReplaceFile(const QString& tempPath, const QString& finalPath)
{
    const QByteArray from = QFile::encodeName(tempPath);
    const QByteArray to = QFile::encodeName(finalPath);
    return std::rename(from.constData(), to.constData()) == 0;
}

void ReportFailure(const QString& why) { ShowMessage("Printing failed: " + why, "vbok+vbcritical"); }

} // namespace

double PrintScale(const Board& board, const OutputOptions& options, Canvas& measure, double printableWidth,
                  double printableHeight)
{
    const PictureExtent extent = MeasureBoardPicture(board, measure, options);
    const double right = kPrintLeft + extent.gridSide + extent.margin;
    const double bottom = kSolutionTop + extent.footerBottom;
    return std::min({1.0, printableWidth / right, printableHeight / bottom});
}

void BoardPage::Paint(QPainter& painter, double dpi, double width, double height) const
{
    QPainterCanvas canvas(painter, dpi, dpi / kPrinterPenUnitsPerInch);
    const double twipsPerPixel = kTwipsPerInch / dpi;
    const double scale = PrintScale(board_, options_, canvas, width * twipsPerPixel, height * twipsPerPixel);
    painter.scale(scale, scale); // lines, digits and marks alike
    PrintBoard(canvas, board_, kPrintLeft, kPuzzleTop, kPuzzleMode, options_);
    PrintBoard(canvas, board_, kPrintLeft, kSolutionTop, kSolutionMode, options_);
}

void PrintPuzzleAndSolution(const Board& board, const OutputOptions& options, const QString& appDir)
{
    if (board.List2.empty())
        return;
    if (ShowMessage("Print Puzzle and its Solution?", "vbyesno+vbquestion") != kAnswerYes)
        return;

    const PrintModule module = LoadPrintModule();
    if (module.send == nullptr) {
        ReportFailure(module.problem);
        return;
    }
    const SendPageFunction send = module.send;
    const QString finalPath = QDir(appDir).absoluteFilePath(QString::fromLatin1(kPrintFileName));
    const QString tempPath = finalPath + ".tmp";
    QString printerName;
    if (!send(BoardPage(board, options), tempPath, printerName)) {
        QFile::remove(tempPath);
        const QString target = printerName.isEmpty() ? finalPath : "printer \"" + printerName + "\"";
        ReportFailure("the page could not be sent to " + target + ".");
        return;
    }
    if (!printerName.isEmpty()) {
        ShowMessage("Done", "vbinformation+vbok");
        return;
    }
    if (!ReplaceFile(tempPath, finalPath)) {
        QFile::remove(tempPath);
        ReportFailure("the page could not be saved as " + finalPath + ".");
        return;
    }
    ShowMessage("Done\r\n" + finalPath, "vbinformation+vbok");
}

} // namespace tallyon
