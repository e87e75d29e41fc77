// The CUPS job test's helper.
//   output_print_probe            prints a puzzle, every question answered Yes, and prints each
//                                 message shown; exits 0 when the page went to the default
//                                 printer ("Done" alone), 2 with no default printer, 1 otherwise.
//   output_print_probe --check P  exits 0 when the page image P holds both boards and footers.
#include "output/print_job.h"
#include "output_fixture.h"
#include "ui/message_box.h"

#include <QApplication>
#include <QDir>
#include <QPrinterInfo>

#include <cstdio>

using namespace tallyon;

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (argc == 3 && QString(argv[1]) == "--check") {
        const std::vector<int> bands = testing::InkBands(QImage(QString::fromLocal8Bit(argv[2])));
        std::printf("ink bands:");
        for (int height : bands)
            std::printf(" %d", height);
        std::printf("\n");
        return testing::HoldsTwoBoards(bands) ? 0 : 1;
    }
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    std::printf("default printer: %s\n", printer.isNull() ? "(none)" : qPrintable(printer.printerName()));
    if (printer.isNull())
        return 2;
    QStringList shown;
    SetMessageInterceptor([&shown](const QString& message, const QString&) {
        shown << message;
        std::printf("message: %s\n", qPrintable(QString(message).replace("\r\n", " | ")));
        return 6;
    });
    PrintPuzzleAndSolution(*testing::MakePuzzle(7, kSideLeft), OutputOptions(), QDir::tempPath() + "/");
    return shown == QStringList{"Print Puzzle and its Solution?", "Done"} ? 0 : 1;
}
