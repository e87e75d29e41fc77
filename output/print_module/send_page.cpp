// Sends a page to the default printer, or to a PDF file without one.
#include "output/print_module/send_page.h"

#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

#include <memory>

namespace tallyon {
namespace {

// The printer for this job: the default printer, or a PDF writer into pdfPath.
std::unique_ptr<QPrinter> MakePrinter(const QPrinterInfo& info, const QString& pdfPath)
{
    if (!info.isNull())
        return std::make_unique<QPrinter>(info, QPrinter::HighResolution);
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(pdfPath);
    return printer;
}

} // namespace

bool PrintPage(QPrinter& printer, const PagePainter& page)
{
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    page.Paint(painter, printer.resolution(), printer.width(), printer.height());
    return painter.end();
}

} // namespace tallyon

extern "C" Q_DECL_EXPORT bool TallyonSendPage(const tallyon::PagePainter& page, const QString& pdfPath,
                                              QString& printerName)
{
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    printerName = info.isNull() ? QString() : info.printerName();
    const std::unique_ptr<QPrinter> printer = tallyon::MakePrinter(info, pdfPath);
    return tallyon::PrintPage(*printer, page);
}
