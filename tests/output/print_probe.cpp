// The CUPS job test's helper.
//   output_print_probe            builds a puzzle and prints it, every question answered Yes;
//                                 prints each message shown and exits 0 when the page went to
//                                 the default printer ("Done" alone), 2 when there is no
//                                 default printer, 1 on a failure report.
//   output_print_probe --check P  exits 0 when the page image P holds two boards: ink in its
//                                 upper and lower halves with a blank band between them.
#include "output/print_job.h"
#include "output_fixture.h"
#include "ui/message_box.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPrinterInfo>

#include <cstdio>

using namespace tallyon;

namespace {

int InkInRow(const QImage& page, int y)
{
    int ink = 0;
    for (int x = 0; x < page.width(); ++x)
        ink += qGray(page.pixel(x, y)) < 128 ? 1 : 0;
    return ink;
}

int CheckPage(const QString& path)
{
    const QImage page(path);
    if (page.isNull()) {
        std::printf("cannot read %s\n", qPrintable(path));
        return 1;
    }
    const int half = page.height() / 2;
    int upper = 0, lower = 0, firstBlank = -1;
    for (int y = 0; y < page.height(); ++y) {
        const int ink = InkInRow(page, y);
        (y < half ? upper : lower) += ink;
        if (ink == 0 && upper > 0 && firstBlank < 0 && y < half)
            firstBlank = y;
    }
    std::printf("ink: upper half %d, lower half %d\n", upper, lower);
    const int area = page.width() * half;
    return upper > area / 200 && lower > area / 200 && lower > upper && firstBlank > 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (argc == 3 && QString(argv[1]) == "--check")
        return CheckPage(QString::fromLocal8Bit(argv[2]));
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    std::printf("default printer: %s\n",
                printer.isNull() ? "(none)" : qPrintable(printer.printerName()));
    if (printer.isNull())
        return 2;

    QStringList shown;
    SetMessageInterceptor([&shown](const QString& message, const QString&) {
        shown << message;
        std::printf("message: %s\n", qPrintable(QString(message).replace("\r\n", " | ")));
        return 6;
    });
    const auto board = testing::MakePuzzle(7, kSideTop);
    PrintPuzzleAndSolution(*board, testing::DefaultOptions(), QDir::tempPath() + "/");
    return shown.size() == 2 && shown[1] == "Done" ? 0 : 1;
}
