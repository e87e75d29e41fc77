// Drives the real main window with the mouse, as a player would: puzzles, links, verify, undo,
// the solution, the small controls and the exit.
#include "form1_driver.h"

#include "core/codes/puzzle_code.h"
#include "core/generator/generator.h"
#include "output/board_picture.h"
#include "output/print_job.h"
#include "platform/qt_colour.h"
#include "shell/options_form.h"
#include "ui/msg_form.h"

#include <QAction>
#include <QClipboard>
#include <QFontInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTimer>

using namespace tallyon;
using namespace tallyon::testing;

namespace {

// The board picture's pixels around a point given in twips, within a square `half` twips
// from it, that are close to the colour.
int PixelsNear(const QImage& image, int x, int y, int half, QColor colour)
{
    const double scale = image.devicePixelRatio() / kTwipsPerPixel;
    int count = 0;
    for (int py = int((y - half) * scale); py <= int((y + half) * scale); ++py)
        for (int px = int((x - half) * scale); px <= int((x + half) * scale); ++px) {
            const QColor c = image.pixelColor(px, py);
            count += std::abs(c.red() - colour.red()) + std::abs(c.green() - colour.green()) +
                         std::abs(c.blue() - colour.blue()) <
                     60;
        }
    return count;
}

} // namespace

class Form1Test : public QObject {
    Q_OBJECT

private slots:
    // A puzzle from the left played through the window: a wrong link is reported and marked
    // while Verify is held; undone, and the path linked, the board is solved; the undo button
    // then takes back the newest link with a left release and, asked, every link with a right
    // one; the history outlives a new puzzle. Each check tick shows green while the links are
    // right so far, red on a fault or a solved board.
    void playsAPuzzleThroughTheWindow()
    {
        Form1Fixture f;
        f.SetStartSide(1);
        f.NewPuzzle();
        QCOMPARE(f.label("Label7")->text(), QString("Puzzle Created"));
        const Board& b = f.window.board();
        PlayState& play = f.window.playState();
        QCOMPARE(b.StartSide, 1);

        const auto [row, col] = f.FindInvalidLinkCell();
        QVERIFY(row > 0);
        f.ClickCell(row, col, Qt::LeftButton);
        f.PressVerify();
        QCOMPARE(f.label("Label7")->text(), QString("Incorrect Math"));
        QWidget* marker = f.window.findChild<QWidget*>("errorMarker");
        QVERIFY(marker->isVisible());
        const QPoint centre = marker->geometry().center();
        QVERIFY(qAbs(centre.x() - b.CellX(row, col) / 15) <= 2 && qAbs(centre.y() - b.CellY(row, col) / 15) <= 2);
        f.Shot("form1-error-marker");
        f.ReleaseVerify();
        QVERIFY(!marker->isVisible());
        f.Tick();
        QCOMPARE(f.IndicatorColour(), QColor(240, 0, 0));
        f.Release("undoman", Qt::LeftButton);
        QCOMPARE(f.TotalDegree(), 0);

        f.LinkPath(2);
        f.Tick();
        QCOMPARE(f.IndicatorColour(), QColor(10, 200, 10));
        f.LinkPath(b.List2.size());
        f.PressVerify();
        QCOMPARE(f.label("Label7")->text(), QString("All Done !"));
        f.ReleaseVerify();
        QCOMPARE(f.label("Label7")->text(), QString());
        f.Tick();
        QCOMPARE(f.IndicatorColour(), QColor(240, 0, 0));
        f.Shot("form1-solved-left");

        const int degree = f.TotalDegree();
        const size_t records = play.undolist.size();
        f.Release("undoman", Qt::LeftButton);
        QCOMPARE(play.undolist.size(), records - 1);
        QCOMPARE(f.TotalDegree(), degree - 2);
        f.Release("undoman", Qt::RightButton);
        QCOMPARE(f.answers.calls.last().first, QString("Clear all user entries?"));
        QCOMPARE(f.TotalDegree(), 0);
        const size_t kept = play.undolist.size();
        QVERIFY(kept > 0);
        f.NewPuzzle();
        QCOMPARE(play.undolist.size(), kept);
    }

    // Each label steps its setting and its caption follows (the stepping itself is play's).
    // On a built puzzle they set the next puzzle only: the board, a full redraw and the
    // clipboard picture keep the "X"s where this puzzle starts.
    void gridSizeAndStartSideLabelsCycle()
    {
        Form1Fixture f;
        QLabel* size = f.label("Label4");
        QLabel* side = f.label("Label6");
        f.ClickLabel("Label4", Qt::RightButton);
        QCOMPARE(size->text(), QString("6x6"));
        QCOMPARE(side->text(), QString("Random")); // the file's path direction 0
        f.ClickLabel("Label6", Qt::RightButton);
        QCOMPARE(side->text(), QString("Top"));
        f.SetGridSize(7);
        f.SetStartSide(1);
        f.NewPuzzle();
        const QImage before = f.BoardImage();
        const auto copied = [&f] {
            f.window.findChild<QAction*>("mnuclipsol")->trigger();
            return QGuiApplication::clipboard()->image();
        };
        const QImage copiedBefore = copied();
        f.ClickLabel("Label4", Qt::LeftButton);
        f.ClickLabel("Label6", Qt::LeftButton);
        QCOMPARE(size->text(), QString("8x8"));
        QCOMPARE(side->text(), QString("Top"));
        QCOMPARE(f.window.board().StartSide, int(kSideLeft));
        QCOMPARE(f.BoardImage(), before);
        f.window.findChild<QPushButton*>("Command2")->click();
        QCOMPARE(f.BoardImage(), before);
        QCOMPARE(copied(), copiedBefore);
    }

    void solutionShowsOnlyWhileHeld()
    {
        Form1Fixture f;
        f.Press("cmdshowsol");
        QCOMPARE(f.label("Label7")->text(), QString("Click Create New Puzzle to create a new puzzle"));
        f.Release("cmdshowsol", Qt::LeftButton);
        f.SetStartSide(2);
        f.NewPuzzle();
        const QImage before = f.BoardImage();
        f.Press("cmdshowsol");
        QCOMPARE(f.label("Label7")->text(), QString("Solution ..."));
        QVERIFY(f.BoardImage() != before);
        f.Shot("form1-solution-held");
        f.Release("cmdshowsol", Qt::LeftButton);
        QCOMPARE(f.label("Label7")->text(), QString());
        QCOMPARE(f.BoardImage(), before);
    }

    // The close box leaves tallyon.cfg as it was, unasked; File > Exit asks, and only a "Yes"
    // closes the window and saves the settings.
    void exitAskedNoThenYesSavesSettings()
    {
        Form1Fixture closed;
        closed.ClickLabel("Label4", Qt::LeftButton);
        closed.window.close();
        QVERIFY(!closed.window.isVisible());
        QCOMPARE(closed.ConfigText(), closed.initialConfig);
        QVERIFY(closed.answers.calls.isEmpty());

        // The grid size is saved as Label4 shows it. A click on Label6 sets the next puzzle's
        // start side only: the path direction saved stays the file's 0 ("Random") until the
        // options window, which reads it back from the label, has been opened.
        const auto savedNumbers = [](Form1Fixture& fixture) {
            return fixture.ConfigText().section("\r\n", 0, 0).split(' ', Qt::SkipEmptyParts);
        };
        for (const bool openOptions : {false, true}) {
            Form1Fixture f;
            f.ClickLabel("Label4", Qt::LeftButton); // 8x8
            f.ClickLabel("Label6", Qt::LeftButton); // Left
            if (openOptions) {
                f.window.OptionsForm()->show();
                f.window.OptionsForm()->hide();
            }
            f.answers.next = 7;
            f.window.ExitCommand();
            QCOMPARE(f.answers.calls.last(), qMakePair(QString("Exit?"), QString("vbYesNo+vbquestion")));
            QVERIFY(f.window.isVisible());
            QCOMPARE(f.ConfigText(), f.initialConfig);
            f.answers.next = 6;
            f.window.ExitCommand();
            QVERIFY(!f.window.isVisible());
            QCOMPARE(savedNumbers(f).value(0), QString("8"));
            QCOMPARE(savedNumbers(f).value(6), QString(openOptions ? "1" : "0"));
        }
    }

    // The window keeps one size, so its title bar offers minimize but no maximize; while it
    // exists, the message box is kept over it.
    void oneSizeAndTheMessageBoxOverIt()
    {
        {
            Form1Fixture f;
            QCOMPARE(f.window.minimumSize(), f.window.maximumSize());
            QVERIFY(!f.window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
            QVERIFY(f.window.windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
            QCOMPARE(MessageForm().Owner(), &f.window);
        }
        QCOMPARE(MessageForm().Owner(), nullptr);
    }

    // At every size and from both sides the "X"s sit outside the board beside Start and End;
    // in every scheme the ground is the scheme's and the player's links show in the link colour.
    void boardsOfEverySizeAndSchemeLookRight()
    {
        const QColor red(240, 0, 0);
        for (int size : {4, 7, 10})
            for (int side : {1, 2}) {
                Form1Fixture f;
                f.SetGridSize(size);
                f.SetStartSide(side);
                f.NewPuzzle();
                const Board& b = f.window.board();
                QCOMPARE(b.GridSize, size);
                f.Shot(QString("form1-puzzle-%1x%1-%2").arg(size).arg(side == 1 ? "left" : "top"));
                const QImage image = f.BoardImage();
                const auto redNear = [&](int node, int dRow, int dCol) {
                    const int x = b.CellX(b.CellRow[node], b.CellCol[node]) + dCol * b.CellPitch;
                    const int y = b.CellY(b.CellRow[node], b.CellCol[node]) + dRow * b.CellPitch;
                    return PixelsNear(image, x, y, b.CellPitch / 3, red);
                };
                const int top = side == 2 ? 1 : 0, left = 1 - top;
                QVERIFY(redNear(b.StartNode, -top, -left) > 5 && redNear(b.EndNode, top, left) > 5);
                QCOMPARE(redNear(b.StartNode, -left, -top), 0);
                if (size == 7 && side == 1) {
                    f.LinkPath(b.List2.size() / 2);
                    f.Shot("form1-half-built-path");
                }
            }
        for (const char* scheme : {"xp.col", "Slate.col", "Contrast.col"}) {
            Form1Fixture f{QString(scheme)};
            f.SetStartSide(1);
            f.NewPuzzle();
            f.LinkPath(9);
            f.Shot("form1-scheme-" + QString(scheme).chopped(4));
            const Board& b = f.window.board();
            const QImage image = f.BoardImage();
            QCOMPARE(image.pixelColor(1, 1), ToQColor(f.state.SchemeColours[kSchemeBackground]));
            // A quarter of the way along the first link, clear of its digits.
            const int from = std::stoi(b.List2[0]), to = std::stoi(b.List2[2]);
            const int x = (3 * b.CellX(b.CellRow[from], b.CellCol[from]) + b.CellX(b.CellRow[to], b.CellCol[to])) / 4;
            const int y = (3 * b.CellY(b.CellRow[from], b.CellCol[from]) + b.CellY(b.CellRow[to], b.CellCol[to])) / 4;
            QVERIFY(PixelsNear(image, x, y, 15, QColor(128, 0, 0)) > 0);
        }
    }

    // Options > Apply with another scheme reaches the main window: every box button shows the
    // new control colour at once, before it is pressed.
    void applyRecoloursEveryButtonAtOnce()
    {
        Form1Fixture f("xp.col");
        const char* names[] = {"cmdnew", "cmdshowsol", "cmdhelp", "cmdverify", "undoman"};
        const QColor before = f.window.findChild<BoxControl*>("cmdnew")->grab().toImage().pixelColor(6, 6);
        // File > Options, the scheme "Slate" clicked, Apply, Close.
        Form6* options = f.window.findChild<Form6*>();
        QVERIFY(options);
        f.state.PreviewSchemesFile = f.dir.path() + "/all.col";
        QTimer::singleShot(0, options, [options] {
            QListWidgetItem* slate = options->List1->findItems("Slate", Qt::MatchExactly).value(0);
            QTest::mouseClick(options->List1->viewport(), Qt::LeftButton, {},
                              options->List1->visualItemRect(slate).center());
            QTest::mouseClick(options->command1, Qt::LeftButton);
            QTest::mouseClick(options->command2, Qt::LeftButton);
        });
        f.window.findChild<QAction*>("mnuopts")->trigger();
        QCOMPARE(f.state.settings.SchemeFile, QString("Slate.col"));
        const QColor control = ToQColor(f.state.SchemeColours[kSchemeControl]);
        QVERIFY(control != before);
        for (const char* name : names) {
            const QImage face = f.window.findChild<BoxControl*>(name)->grab().toImage();
            QCOMPARE(face.pixelColor(6, 6), control);
            QCOMPARE(face.pixelColor(face.width() - 7, face.height() - 7), control);
        }
        f.Shot("form1-after-apply-slate");
    }

    // The board picture's font is "Arial" (Liberation Sans here), and it is the font of the
    // clipboard picture, which comes with the puzzle's code as text, and of the printed page.
    void printAndClipboardUseTheBoardFont()
    {
        Form1Fixture f;
        QCOMPARE(f.picture()->font().family(), QString("Arial"));
        QCOMPARE(QFontInfo(f.picture()->font()).family(), QString("Liberation Sans"));
        f.SetStartSide(1);
        f.NewPuzzle();
        f.window.findChild<QAction*>("mnuclippuz")->trigger();
        QCOMPARE(QGuiApplication::clipboard()->text().toStdString(), EncodePuzzleCode(f.window.board()));
        OutputOptions options;
        options.fontName = "Arial";
        options.fontBold = true;
        options.pictureWidth = f.picture()->width() * kTwipsPerPixel;
        options.pictureHeight = f.picture()->height() * kTwipsPerPixel;
        options.devicePixelRatio = f.picture()->devicePixelRatioF();
        const QImage copied = QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(copied,
                 DrawBoardPicture(f.window.board(), kPuzzleMode, options).convertToFormat(QImage::Format_RGB32));
        options.fontName = "DejaVu Sans";
        QVERIFY(copied !=
                DrawBoardPicture(f.window.board(), kPuzzleMode, options).convertToFormat(QImage::Format_RGB32));

        if (!QPrinterInfo::defaultPrinter().isNull())
            QSKIP("a default printer takes the page; the PDF fallback is not written");
        f.window.findChild<QAction*>("mnuprint")->trigger();
        QFile pdf(f.dir.path() + "/" + kPrintFileName);
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        const QByteArray bytes = pdf.readAll();
        QVERIFY(bytes.contains("/BaseFont /") && bytes.contains("LiberationSans-Bold"));
        QVERIFY(!bytes.contains("DejaVu"));
    }

    // A tallyon.cfg naming a scheme that all.col lacks: the message, then the built-in xp colours
    // on the window, the buttons and the menu bar, whose caption stays readable.
    void missingSchemeStartsInTheXpLook()
    {
        Form1Fixture f(QString("Gone.col"));
        QCOMPARE(f.answers.calls.value(0),
                 qMakePair(QString("Colour Scheme: Gone.col not found"), QString("vbok+vbcritical")));
        QCOMPARE(f.state.settings.SchemeFile, QString("xp.col"));
        f.Shot("form1-missing-scheme");
        const QImage shot = f.window.grab().toImage();
        const QImage face = f.window.findChild<BoxControl*>("cmdnew")->grab().toImage();
        QCOMPARE(shot.pixelColor(shot.width() - 3, shot.height() - 3), QColor(236, 233, 216));
        QCOMPARE(face.pixelColor(6, 6), QColor(245, 244, 236));
        QMenuBar* bar = f.window.menuBar();
        const QImage menu = bar->grab().toImage();
        QCOMPARE(menu.pixelColor(menu.width() - 3, menu.height() / 2), QColor(236, 233, 216));
        int dark = 0; // the caption "File"
        for (int y = 0; y < menu.height(); ++y)
            for (int x = 0; x < 40 && x < menu.width(); ++x)
                dark += menu.pixelColor(x, y).lightness() < 100 ? 1 : 0;
        QVERIFY(dark > 10);
    }

    void startUpWithOddSettingFiles_data()
    {
        QTest::addColumn<std::optional<QByteArray>>("config");
        QTest::addColumn<bool>("fresh");   // the message, then the fresh-install settings written
        QTest::addColumn<QString>("size"); // Label4
        QTest::addColumn<QString>("side"); // Label6
        QTest::addColumn<int>("laidFrom"); // the side a new puzzle starts on, 0 for either
        const auto row = [](const char* tag, std::optional<QByteArray> bytes, bool fresh, const char* size,
                            const char* side, int laidFrom) {
            QTest::newRow(tag) << bytes << fresh << QString(size) << QString(side) << laidFrom;
        };
        const auto file = [](const char* line1) { return QByteArray(line1) + "\r\nxp.col\r\n"; };
        row("valid", ConfigFor("xp.col"), false, "7x7", "Random", 0);
        row("missing", std::nullopt, true, "7x7", "Random", 0);
        row("damaged", QByteArray("7 2 x\r\n"), true, "7x7", "Random", 0);
        row("size 3", file(" 3 2 1 0 0 16777215 1 128 6"), false, "7x7", "Left", kSideLeft);
        row("size 11", file(" 11 2 1 0 0 16777215 2 128 6"), false, "7x7", "Top", kSideTop);
        // Direction 3, set only by the options, keeps the label's own caption and lays from the left.
        row("direction 3", file(" 9 2 1 0 0 16777215 3 128 6"), false, "9x9", "Left", kSideLeft);
    }

    void startUpWithOddSettingFiles()
    {
        QFETCH(std::optional<QByteArray>, config);
        QFETCH(bool, fresh);
        QFETCH(QString, size);
        QFETCH(QString, side);
        QFETCH(int, laidFrom);
        Form1Fixture f(ConfigBytes{config});
        const QString path = f.dir.path() + "/tallyon.cfg";
        if (fresh) {
            QCOMPARE(f.answers.calls.value(0),
                     qMakePair("Configuration file:\r\n" + path + "\r\ncould not be accessed, new file will be created",
                               QString("vbok+vbinformation")));
            QCOMPARE(f.ConfigText(), QString(" 7  2  1  0  0  16777215  0  128  6\r\nxp.col\r\n"));
        } else {
            QVERIFY(f.answers.calls.isEmpty());
        }
        QCOMPARE(f.label("Label4")->text(), size);
        QCOMPARE(f.label("Label6")->text(), side);
        QCOMPARE(f.label("Label7")->text(), QString("Click Create New Puzzle to create a new puzzle"));
        QCOMPARE(f.window.windowTitle(), QString("Tallyon"));
        QVERIFY(f.window.board().List2.empty());
        f.Shot("form1-startup-" + QString(QTest::currentDataTag()).replace(' ', '-'));
        f.NewPuzzle();
        const Board& b = f.window.board();
        QCOMPARE(QString::fromStdString(GridSizeText(b.GridSize)), size);
        if (laidFrom == kSideLeft)
            QCOMPARE(b.CellCol[b.StartNode], 1);
        if (laidFrom == kSideTop)
            QCOMPARE(b.CellRow[b.StartNode], 1);
    }
};

QTEST_MAIN(Form1Test)
#include "form1_test.moc"
