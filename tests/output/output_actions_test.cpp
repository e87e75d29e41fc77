// The menu actions end to end: the print question, the printed PDF page and the clipboard.
#include "output/clipboard_picture.h"
#include "output/print_job.h"
#include "output_fixture.h"
#include "platform/recording_canvas.h"
#include "ui/message_box.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace tallyon;
using namespace tallyon::testing;

namespace {

struct Asked {
    QString message;
    QString style;
};

// Answers every message with `answer` and keeps what was shown.
class MessageLog {
public:
    explicit MessageLog(int answer)
    {
        SetMessageInterceptor([this, answer](const QString& m, const QString& s) {
            shown.push_back({m, s});
            return answer;
        });
    }
    ~MessageLog() { SetMessageInterceptor(nullptr); }
    std::vector<Asked> shown;
};

bool IsDark(QRgb p) { return qGray(p) < 128; }

// Dark pixels inside the rectangle (clipped to the image).
int DarkPixels(const QImage& image, QRect area)
{
    area = area.intersected(image.rect());
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            count += IsDark(image.pixel(x, y)) ? 1 : 0;
    return count;
}

double DistanceToSegment(QPointF p, QPointF a, QPointF b)
{
    const QPointF d = b - a;
    const double len2 = QPointF::dotProduct(d, d);
    const double t = len2 > 0 ? std::clamp(QPointF::dotProduct(p - a, d) / len2, 0.0, 1.0) : 0.0;
    const QPointF q = a + t * d - p;
    return std::hypot(q.x(), q.y());
}

QString ScreenshotPath(const char* name) { return QDir(TALLYON_SCREENSHOT_DIR).filePath(name); }

} // namespace

class OutputActionsTest : public QObject {
    Q_OBJECT

private slots:
    void nothingBeforeTheFirstPuzzle();
    void refusingThePrintQuestionPrintsNothing();
    void printWritesOnePdfPageWithoutAPrinter();
    void printFailureIsReportedWithoutDone();
    void clipboardPicturesDifferAlongThePath_data();
    void clipboardPicturesDifferAlongThePath();
};

void OutputActionsTest::nothingBeforeTheFirstPuzzle()
{
    Board empty;
    empty.GridSize = 7;
    ResetBoard(empty, kPictureWidth);
    QTemporaryDir dir;
    QGuiApplication::clipboard()->setText("untouched");
    MessageLog log(6);

    PrintPuzzleAndSolution(empty, DefaultOptions(), dir.path() + "/");
    CopyBoardPicture(empty, kPuzzleMode, DefaultOptions());
    CopyBoardPicture(empty, kSolutionMode, DefaultOptions());

    QVERIFY(log.shown.empty());
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("untouched"));
    QVERIFY(QDir(dir.path()).isEmpty());
}

void OutputActionsTest::refusingThePrintQuestionPrintsNothing()
{
    const auto board = MakePuzzle(6, kSideLeft);
    QTemporaryDir dir;
    for (int answer : {7, 2, 1}) {
        MessageLog log(answer);
        PrintPuzzleAndSolution(*board, DefaultOptions(), dir.path() + "/");
        QCOMPARE(int(log.shown.size()), 1);
        QCOMPARE(log.shown[0].message, QString("Print Puzzle and its Solution?"));
        QCOMPARE(log.shown[0].style, QString("vbyesno+vbquestion"));
        QVERIFY(QDir(dir.path()).isEmpty());
    }
}

void OutputActionsTest::printWritesOnePdfPageWithoutAPrinter()
{
    if (!QPrinterInfo::defaultPrinter().isNull())
        QSKIP("a default printer exists here; the page would go to it");
    if (QStandardPaths::findExecutable("pdftoppm").isEmpty())
        QSKIP("pdftoppm (poppler-utils) is not installed");
    const auto board = MakePuzzle(10, kSideLeft); // the largest board must fit the page
    const OutputOptions options = DefaultOptions();
    QTemporaryDir dir;
    const QString appDir = dir.path() + "/";
    const QString pdf = QDir(dir.path()).absoluteFilePath("tallyon-print.pdf");
    QFile stale(pdf);
    QVERIFY(stale.open(QIODevice::WriteOnly));
    stale.write("old");
    stale.close();

    MessageLog log(6);
    PrintPuzzleAndSolution(*board, options, appDir);
    QCOMPARE(int(log.shown.size()), 2);
    QCOMPARE(log.shown[1].message, "Done\r\n" + pdf);
    QCOMPARE(log.shown[1].style, QString("vbinformation+vbok"));
    QVERIFY(QFileInfo(pdf).size() > 1000);
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{"tallyon-print.pdf"});

    // Rasterise the page: exactly one page, both boards and both footers where they belong.
    constexpr int dpi = 100;
    const QString stem = QDir(dir.path()).filePath("page");
    QCOMPARE(QProcess::execute("pdftoppm", {"-r", QString::number(dpi), "-png", pdf, stem}), 0);
    QVERIFY(!QFile::exists(stem + "-2.png"));
    const QString png = QFile::exists(stem + "-1.png") ? stem + "-1.png" : stem + "-01.png";
    QImage page(png);
    QVERIFY(!page.isNull());
    QFile::remove(ScreenshotPath("printed-page.png"));
    QVERIFY(QFile::copy(png, ScreenshotPath("printed-page.png")));

    QPrinter reference(QPrinter::HighResolution);
    reference.setOutputFormat(QPrinter::PdfFormat);
    const QRectF paint = reference.pageLayout().paintRect(QPageLayout::Inch);
    auto px = [&](int twips, double originInch) { return int(std::lround((originInch + twips / 1440.0) * dpi)); };
    RecordingCanvas metric;
    const PictureExtent e = MeasureBoardPicture(*board, metric, options);
    const int left = px(kPrintLeft, paint.left());
    const int width = px(kPrintLeft + e.gridSide, paint.left()) - left;
    for (int top : {kPuzzleTop, kSolutionTop}) {
        const int y0 = px(top, paint.top());
        const QRect grid(left, y0, width, px(top + e.gridSide, paint.top()) - y0);
        const QRect footer(left, px(top + e.footerTop, paint.top()), width,
                           px(top + e.footerBottom, paint.top()) - px(top + e.footerTop, paint.top()));
        QVERIFY2(DarkPixels(page, grid) > grid.width() * grid.height() / 20, qPrintable(QString::number(top)));
        QVERIFY2(DarkPixels(page, footer) > 20, "a footer below each board");
        QVERIFY2(grid.bottom() < page.height() && footer.bottom() < page.height(), "on the page");
    }
    // Nothing between the puzzle's footer and the solution's "X" marks.
    const int gapTop = px(kPuzzleTop + e.footerBottom, paint.top()) + 2;
    const int gapBottom = px(kSolutionTop - e.margin, paint.top());
    QCOMPARE(DarkPixels(page, QRect(0, gapTop, page.width(), gapBottom - gapTop)), 0);
    // The solution's board holds the path: clearly more ink than the puzzle's.
    const int puzzleInk = DarkPixels(page, QRect(left, px(kPuzzleTop, paint.top()), width, width));
    const int solutionInk = DarkPixels(page, QRect(left, px(kSolutionTop, paint.top()), width, width));
    QVERIFY(solutionInk > puzzleInk * 11 / 10);
}

void OutputActionsTest::printFailureIsReportedWithoutDone()
{
    if (!QPrinterInfo::defaultPrinter().isNull())
        QSKIP("a default printer exists here; the page would go to it");
    const auto board = MakePuzzle(4, kSideTop);
    MessageLog log(6);
    PrintPuzzleAndSolution(*board, DefaultOptions(), "/nonexistent/tallyon/dir/");
    QCOMPARE(int(log.shown.size()), 2);
    QVERIFY(log.shown[1].message.startsWith("Printing failed: "));
    QVERIFY(log.shown[1].message.contains("/nonexistent/tallyon/dir/tallyon-print.pdf"));
    QCOMPARE(log.shown[1].style, QString("vbok+vbcritical"));
}

void OutputActionsTest::clipboardPicturesDifferAlongThePath_data()
{
    QTest::addColumn<int>("gridSize");
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("nodeShape");
    QTest::addColumn<bool>("bold");
    QTest::addColumn<double>("dpr");
    QTest::addColumn<QString>("name");
    QTest::newRow("7 Top circles dpr 2") << 7 << int(kSideTop) << 2 << false << 2.0 << "clipboard";
    QTest::newRow("4 Left boxes bold") << 4 << int(kSideLeft) << 1 << true << 1.0 << "clipboard-boxes";
}

void OutputActionsTest::clipboardPicturesDifferAlongThePath()
{
    QFETCH(int, gridSize);
    QFETCH(int, side);
    QFETCH(int, nodeShape);
    QFETCH(bool, bold);
    QFETCH(double, dpr);
    QFETCH(QString, name);
    const auto board = MakePuzzle(gridSize, side);
    OutputOptions options = DefaultOptions();
    options.NodeShape = nodeShape;
    options.fontBold = bold;
    options.devicePixelRatio = dpr;
    QClipboard* clipboard = QGuiApplication::clipboard();
    CopyBoardPicture(*board, kPuzzleMode, options);
    const QImage puzzle = clipboard->image().convertToFormat(QImage::Format_RGB32);
    CopyBoardPicture(*board, kSolutionMode, options);
    const QImage solution = clipboard->image().convertToFormat(QImage::Format_RGB32);
    QVERIFY(!puzzle.isNull());
    puzzle.save(ScreenshotPath(qPrintable(name + "-puzzle.png")));
    solution.save(ScreenshotPath(qPrintable(name + "-solution.png")));

    // Trimmed to the board and its footer, drawn at the screen's pixel density.
    RecordingCanvas metric;
    const PictureExtent e = MeasureBoardPicture(*board, metric, options);
    QCOMPARE(solution.size(), puzzle.size());
    const double scale = options.devicePixelRatio / kTwipsPerPixel; // pixels per twip
    QVERIFY(std::abs(puzzle.width() - (e.gridSide + 2 * e.margin) * scale) <= 1.0);
    QVERIFY(puzzle.height() < options.pictureHeight * scale);
    QVERIFY(puzzle.height() > (e.margin + e.footerBottom) * scale);
    QCOMPARE(puzzle.pixel(1, 1), qRgb(255, 255, 255));

    // Every pixel that differs lies on the path, and the path makes many differ.
    std::vector<QPointF> path;
    for (const auto& item : board->List2) {
        const int k = std::stoi(item);
        path.emplace_back((e.margin + OutputPitch(*board) * (board->CellCol[k] - 1)) * scale,
                          (e.margin + OutputPitch(*board) * (board->CellRow[k] - 1)) * scale);
    }
    const double reach = 2.0 * options.GridLineWidth * options.devicePixelRatio + 2.0;
    int differing = 0;
    for (int y = 0; y < puzzle.height(); ++y)
        for (int x = 0; x < puzzle.width(); ++x) {
            if (puzzle.pixel(x, y) == solution.pixel(x, y))
                continue;
            ++differing;
            double nearest = 1e9;
            for (std::size_t i = 1; i < path.size(); ++i)
                nearest = std::min(nearest, DistanceToSegment(QPointF(x, y), path[i - 1], path[i]));
            QVERIFY2(nearest <= reach, qPrintable(QString("pixel %1,%2 off the path").arg(x).arg(y)));
        }
    QVERIFY(differing > int(path.size()) * 10);
}

QTEST_MAIN(OutputActionsTest)
#include "output_actions_test.moc"
