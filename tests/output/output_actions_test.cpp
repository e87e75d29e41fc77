// The menu actions end to end: the print question, the printed PDF page and the clipboard.
#include "output/clipboard_picture.h"
#include "output/print_job.h"
#include "output/print_module/send_page.h"
#include "output/print_module_loader.h"
#include "output_fixture.h"
#include "platform/qpainter_canvas.h"
#include "tests/support/message_log.h"
#include "tests/support/recording_canvas.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

using namespace tallyon;
using namespace tallyon::testing;

static QString ScreenshotPath(const QString& name) { return QDir(TALLYON_SCREENSHOT_DIR).filePath(name); }

// The first page of a PDF at 100 dots per inch, also saved as a screenshot.
static QImage Rasterise(const QString& pdf, const QString& screenshot)
{
    const QString stem = pdf.chopped(4);
    if (QProcess::execute("pdftoppm", {"-r", "100", "-png", "-singlefile", pdf, stem}) != 0)
        return {};
    QFile::remove(ScreenshotPath(screenshot));
    QFile::copy(stem + ".png", ScreenshotPath(screenshot));
    return QImage(stem + ".png");
}

class OutputActionsTest : public QObject {
    Q_OBJECT

private slots:
    void nothingBeforeTheFirstPuzzle()
    {
        const Board empty;
        QTemporaryDir dir;
        MessageLog log;
        QGuiApplication::clipboard()->setText("untouched");
        PrintPuzzleAndSolution(empty, OutputOptions(), dir.path() + "/");
        CopyBoardPicture(empty, kPuzzleMode, OutputOptions());
        CopyBoardPicture(empty, kSolutionMode, OutputOptions());
        QVERIFY(log.calls.isEmpty());
        QCOMPARE(QGuiApplication::clipboard()->text(), QString("untouched"));
        QVERIFY(QDir(dir.path()).isEmpty());
    }

    void refusingThePrintQuestionPrintsNothing()
    {
        const auto board = MakePuzzle(6, kSideLeft);
        QTemporaryDir dir;
        for (int refusal : {7, 2}) { // No, Cancel
            MessageLog log(refusal);
            PrintPuzzleAndSolution(*board, OutputOptions(), dir.path() + "/");
            QCOMPARE(log.Texts(), QStringList{"Print Puzzle and its Solution?"});
            QVERIFY(QDir(dir.path()).isEmpty());
        }
    }

    // A program copied without its plugins folder prints with the module it carries. Before
    // any print in this process: once loaded, the module stays loaded.
    void printWithoutTheModuleFileUsesTheBuiltInCopy()
    {
        if (!QPrinterInfo::defaultPrinter().isNull())
            QSKIP("a default printer exists here; the page would go to it");
        const QString module = QCoreApplication::applicationDirPath() + "/" + kPrintModuleFile;
        const QString aside = module + ".aside";
        if (!QFile::exists(module)) // left aside by a run that crashed here
            QFile::rename(aside, module);
        QFile::remove(aside);
        QVERIFY(QFile::rename(module, aside));
        const auto putBack = qScopeGuard([&] { QFile::rename(aside, module); });
        QTemporaryDir dir;
        const QString pdf = QDir(dir.path()).absoluteFilePath(kPrintFileName);
        MessageLog log(6);
        PrintPuzzleAndSolution(*MakePuzzle(5, kSideLeft), OutputOptions(), dir.path() + "/");
        QCOMPARE(log.Texts(), QStringList({"Print Puzzle and its Solution?", "Done\r\n" + pdf}));
        QVERIFY(HoldsTwoBoards(InkBands(Rasterise(pdf, "printed-page-built-in-module.png"))));
    }

    // What the loader says when no module loads fits one line of the message box beside
    // "Printing failed: " and names a missing library.
    void loaderReasonsAreShort()
    {
        const QString missing = ShortLoaderReason(
            "/opt/games/tallyon/plugins/tallyon-print.so: libQt6PrintSupport.so.6: cannot open shared object "
            "file: No such file or directory");
        QVERIFY2(missing.contains("libQt6PrintSupport.so.6") && missing.contains("not installed"), qPrintable(missing));
        QVERIFY(!missing.contains("/opt/"));
        const QString longReason = ShortLoaderReason(QString("/very/long/path").repeated(40) + ": undefined symbol");
        QVERIFY(QString("Printing failed: " + longReason).size() <= 200);
        QCOMPARE(ShortLoaderReason("  invalid ELF header \n"), QString("invalid ELF header"));
    }

    void printWritesOnePdfPageWithoutAPrinter()
    {
        if (!QPrinterInfo::defaultPrinter().isNull())
            QSKIP("a default printer exists here; the page would go to it");
        const auto board = MakePuzzle(10, kSideLeft); // the largest board must fit the page
        QTemporaryDir dir;
        const QString pdf = QDir(dir.path()).absoluteFilePath(kPrintFileName);
        MessageLog log(6);
        PrintPuzzleAndSolution(*board, OutputOptions(), dir.path() + "/");
        QCOMPARE(log.Texts(), QStringList({"Print Puzzle and its Solution?", "Done\r\n" + pdf}));

        // Rasterised, the page shows each board with its footer below it.
        const std::vector<int> bands = InkBands(Rasterise(pdf, "printed-page.png"));
        QVERIFY2(HoldsTwoBoards(bands), qPrintable(QString("%1 bands").arg(bands.size())));
    }

    // The tallest page, 9x9 laid from the top: on Letter the drawing shrinks to stay inside the
    // printable area, with both boards and footers whole; on A4 no grid size shrinks.
    void pageFitsLetterAndA4()
    {
        QTemporaryDir dir;
        QPrinter a4(QPrinter::HighResolution);
        a4.setOutputFormat(QPrinter::PdfFormat);
        a4.setOutputFileName(dir.filePath("probe.pdf"));
        a4.setPageSize(QPageSize(QPageSize::A4));
        QPainter probe(&a4);
        QVERIFY(probe.isActive());
        const double twips = kTwipsPerInch / double(a4.resolution());
        QPainterCanvas canvas(probe, a4.resolution(), a4.resolution() / kPrinterPenUnitsPerInch);
        for (const int size : {4, 5, 6, 7, 8, 9, 10})
            for (const int side : {kSideLeft, kSideTop})
                QCOMPARE(PrintScale(*MakePuzzle(size, side), OutputOptions(), canvas, a4.width() * twips,
                                    a4.height() * twips),
                         1.0);
        const auto board = MakePuzzle(9, kSideTop);
        for (const auto& [name, id] : {std::pair{"a4", QPageSize::A4}, std::pair{"letter", QPageSize::Letter}}) {
            QPrinter printer(QPrinter::HighResolution);
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(dir.filePath(QString(name) + ".pdf"));
            printer.setPageSize(QPageSize(id));
            const QRectF printable = printer.pageLayout().paintRect(QPageLayout::Inch);
            QVERIFY(PrintPage(printer, BoardPage(*board, OutputOptions())));
            const QImage page = Rasterise(printer.outputFileName(), QString("printed-page-9-top-%1.png").arg(name));
            // The lowest ink lies inside the printable area, and the solution's footer is there.
            int lowest = 0;
            for (int y = 0; y < page.height(); ++y)
                for (int x = 0; x < page.width(); ++x)
                    lowest = qGray(page.pixel(x, y)) < 200 ? y : lowest;
            QVERIFY2(lowest <= printable.bottom() * 100, name);
            const std::vector<int> bands = InkBands(page);
            QVERIFY2(bands.size() >= 4 && bands.back() < 30, name);
        }
    }

    void clipboardPicturesDifferAlongThePath()
    {
        const auto board = MakePuzzle(7, kSideTop);
        OutputOptions options;
        options.devicePixelRatio = 2.0;
        CopyBoardPicture(*board, kPuzzleMode, options);
        const QImage puzzle = QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
        CopyBoardPicture(*board, kSolutionMode, options);
        const QImage solution = QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
        QVERIFY(!puzzle.isNull() && solution.size() == puzzle.size());
        puzzle.save(ScreenshotPath("clipboard-puzzle.png"));
        solution.save(ScreenshotPath("clipboard-solution.png"));

        // Where the path runs: a band along it, a few pixels wider than its line.
        RecordingCanvas metric;
        const int margin = MeasureBoardPicture(*board, metric, options).margin;
        const double scale = options.devicePixelRatio / kTwipsPerPixel; // pixels per twip
        QPolygonF path;
        for (const auto& item : board->List2) {
            const int k = std::stoi(item);
            path << QPointF(margin + OutputPitch(*board) * (board->CellCol[k] - 1),
                            margin + OutputPitch(*board) * (board->CellRow[k] - 1)) *
                        scale;
        }
        QImage band(puzzle.size(), QImage::Format_RGB32);
        band.fill(Qt::white);
        QPainter painter(&band);
        painter.setPen(QPen(Qt::black, 4 * options.devicePixelRatio + 4, Qt::SolidLine, Qt::SquareCap));
        painter.drawPolyline(path);
        painter.end();
        // Every pixel that differs lies in it, and the path makes many differ.
        int differing = 0;
        for (int y = 0; y < puzzle.height(); ++y)
            for (int x = 0; x < puzzle.width(); ++x)
                if (puzzle.pixel(x, y) != solution.pixel(x, y)) {
                    ++differing;
                    QVERIFY2(band.pixelColor(x, y) == Qt::black, "a changed pixel off the path");
                }
        QVERIFY(differing > int(path.size()) * 10);
    }

    // The player's marks are the screen's alone: the printed page's drawing calls and the
    // clipboard's pictures are the same with a mark on every link cell as with none.
    void marksNeverReachPaperOrTheClipboard()
    {
        const auto plain = MakePuzzle(5, kSideLeft);
        auto marked = std::make_unique<Board>(*plain);
        for (int row = 1; row <= marked->BoardSpan; ++row)
            for (int col = 1; col <= marked->BoardSpan; ++col)
                marked->UserMark(row, col) = IsLinkCell(row, col) ? 1 : 0;
        OutputOptions options;
        for (const int mode : {kPuzzleMode, kSolutionMode}) {
            RecordingCanvas page, markedPage;
            PrintBoard(page, *plain, kTwipsPerInch, kTwipsPerInch, mode, options);
            PrintBoard(markedPage, *marked, kTwipsPerInch, kTwipsPerInch, mode, options);
            QCOMPARE(markedPage.Ops().size(), page.Ops().size());
            for (std::size_t i = 0; i < page.Ops().size(); ++i)
                QVERIFY(markedPage.Ops()[i].kind == page.Ops()[i].kind && markedPage.Ops()[i].x1 == page.Ops()[i].x1 &&
                        markedPage.Ops()[i].y2 == page.Ops()[i].y2 &&
                        markedPage.Ops()[i].colour == page.Ops()[i].colour);
            CopyBoardPicture(*plain, mode, options);
            const QImage copied = QGuiApplication::clipboard()->image();
            CopyBoardPicture(*marked, mode, options);
            QCOMPARE(QGuiApplication::clipboard()->image(), copied);
        }
    }

    // At every size, from both sides, puzzle and solution, on a picture the size of the board
    // picture: the clipboard's picture holds the whole board, the "X"s and the footer, with
    // white all round its edges and as much room left of the ink as right of it.
    void clipboardPictureHoldsTheBoardItsMarginsAndFooter()
    {
        for (int size = 4; size <= 10; ++size)
            for (int side : {kSideLeft, kSideTop})
                for (int mode : {kPuzzleMode, kSolutionMode}) {
                    const auto board = MakePuzzle(size, side);
                    OutputOptions options;
                    options.pictureWidth = options.pictureHeight = 8400;
                    const QImage image = DrawBoardPicture(*board, mode, options).convertToFormat(QImage::Format_RGB32);
                    int left = image.width(), right = -1, top = image.height(), bottom = -1;
                    for (int y = 0; y < image.height(); ++y)
                        for (int x = 0; x < image.width(); ++x)
                            if (qGray(image.pixel(x, y)) < 200) {
                                left = std::min(left, x), right = std::max(right, x);
                                top = std::min(top, y), bottom = std::max(bottom, y);
                            }
                    const QString what = QString("%1x%1 side %2 mode %3: ink %4..%5 x %6..%7 in %8x%9")
                                             .arg(size)
                                             .arg(side)
                                             .arg(mode)
                                             .arg(left)
                                             .arg(right)
                                             .arg(top)
                                             .arg(bottom)
                                             .arg(image.width())
                                             .arg(image.height());
                    QVERIFY2(left > 2 && top > 2 && right < image.width() - 3 && bottom < image.height() - 3,
                             qPrintable(what));
                    QVERIFY2(std::abs(left - (image.width() - 1 - right)) <= 2, qPrintable(what));
                    // The board, then the footer: the last band of ink is one line of small text.
                    const std::vector<int> bands = InkBands(image);
                    QVERIFY2(bands.size() >= 2 && bands.back() < *std::max_element(bands.begin(), bands.end()) / 10,
                             qPrintable(what));
                }
    }
};

QTEST_MAIN(OutputActionsTest)
#include "output_actions_test.moc"
