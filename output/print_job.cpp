// Sends the puzzle and its solution to the default printer, or to a PDF file without one.
#include "output/print_job.h"

#include "platform/answer_codes.h"
#include "platform/qpainter_canvas.h"
#include "ui/message_box.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace tallyon {
namespace {

// The printer for this job: the default printer, or a PDF writer into tempPath.
std::unique_ptr<QPrinter> MakePrinter(const QPrinterInfo& info, const QString& tempPath)
{
    if (!info.isNull())
        return std::make_unique<QPrinter>(info, QPrinter::HighResolution);
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(tempPath);
    return printer;
}

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

bool PrintPage(QPrinter& printer, const Board& board, const OutputOptions& options)
{
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    const double dpi = printer.resolution();
    QPainterCanvas canvas(painter, dpi, dpi / kPrinterPenUnitsPerInch);
    const double twipsPerPixel = kTwipsPerInch / dpi;
    const double scale =
        PrintScale(board, options, canvas, printer.width() * twipsPerPixel, printer.height() * twipsPerPixel);
    painter.scale(scale, scale); // lines, digits and marks alike
    PrintBoard(canvas, board, kPrintLeft, kPuzzleTop, kPuzzleMode, options);
    PrintBoard(canvas, board, kPrintLeft, kSolutionTop, kSolutionMode, options);
    return painter.end();
}

void PrintPuzzleAndSolution(const Board& board, const OutputOptions& options, const QString& appDir)
{
    if (board.List2.empty())
        return;
    if (ShowMessage("Print Puzzle and its Solution?", "vbyesno+vbquestion") != kAnswerYes)
        return;

    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    const QString finalPath = QDir(appDir).absoluteFilePath(QString::fromLatin1(kPrintFileName));
    const QString tempPath = finalPath + ".tmp";
    const std::unique_ptr<QPrinter> printer = MakePrinter(info, tempPath);
    const QString target = info.isNull() ? finalPath : "printer \"" + info.printerName() + "\"";

    if (!PrintPage(*printer, board, options)) {
        QFile::remove(tempPath);
        ReportFailure("the page could not be sent to " + target + ".");
        return;
    }
    if (!info.isNull()) {
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
