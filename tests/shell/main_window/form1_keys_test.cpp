// The main window from the keyboard: a puzzle started from its code and typed with
// Shift+arrows, undo and redo, Tab and Space on the controls, the game resumed, and codes
// pasted, dropped and copied.
#include "form1_driver.h"

#include "core/codes/puzzle_code.h"
#include "core/generator/generator.h"
#include "output/print_job.h"
#include "platform/qt_colour.h"
#include "shell/main_window/board_keys.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPrinterInfo>

using namespace tallyon;
using namespace tallyon::testing;

namespace {

// The arrow from one path node to the next.
Qt::Key ArrowBetween(const Board& b, int from, int to)
{
    if (b.CellCol[to] != b.CellCol[from])
        return b.CellCol[to] > b.CellCol[from] ? Qt::Key_Right : Qt::Key_Left;
    return b.CellRow[to] > b.CellRow[from] ? Qt::Key_Down : Qt::Key_Up;
}

} // namespace

class Form1KeysTest : public QObject {
    Q_OBJECT

private slots:
    // Every key and modifier the board answers, and those it leaves to the focused control.
    // The keypad's arrows (NumLock off) come with the keypad modifier and act as the arrows do.
    void keysMapToTheirCommands()
    {
        using K = KeyCommand;
        const Qt::KeyboardModifiers none = Qt::NoModifier, pad = Qt::KeypadModifier, shift = Qt::ShiftModifier,
                                    ctrl = Qt::ControlModifier, alt = Qt::AltModifier;
        const struct {
            int key;
            Qt::KeyboardModifiers modifiers;
            bool release, repeat;
            KeyCommand command;
            int dRow, dCol;
        } cases[] = {
            {Qt::Key_Left, none, false, false, K::MoveCursor, 0, -1},
            {Qt::Key_Right, pad, false, false, K::MoveCursor, 0, 1},
            {Qt::Key_Up, pad, false, true, K::MoveCursor, -1, 0},
            {Qt::Key_Down, shift, false, false, K::Link, 1, 0},
            {Qt::Key_Left, shift | pad, false, false, K::Link, 0, -1},
            {Qt::Key_Right, ctrl, false, false, K::Unlink, 0, 1},
            {Qt::Key_Up, ctrl | pad, false, false, K::Unlink, -1, 0},
            {Qt::Key_Down, ctrl | shift, false, false, K::None, 0, 0},
            {Qt::Key_Left, alt | pad, false, false, K::Mark, 0, -1},
            {Qt::Key_Up, alt, false, false, K::Mark, -1, 0},
            {Qt::Key_Up, alt, false, true, K::None, 0, 0},
            {Qt::Key_Down, alt | shift, false, false, K::None, 0, 0},
            {Qt::Key_Left, none, true, false, K::None, 0, 0},
            {Qt::Key_Z, ctrl, false, false, K::Undo, 0, 0},
            {Qt::Key_Y, ctrl, false, true, K::Redo, 0, 0},
            {Qt::Key_Z, ctrl | shift, false, false, K::Redo, 0, 0},
            {Qt::Key_N, ctrl, false, false, K::NewPuzzle, 0, 0},
            {Qt::Key_P, ctrl, false, false, K::Print, 0, 0},
            {Qt::Key_R, ctrl, false, false, K::Resume, 0, 0},
            {Qt::Key_V, ctrl, false, false, K::PasteCode, 0, 0},
            {Qt::Key_C, ctrl, false, false, K::CopyCode, 0, 0},
            {Qt::Key_F, alt, false, false, K::FileMenu, 0, 0},
            {Qt::Key_F1, none, false, false, K::Instructions, 0, 0},
            {Qt::Key_V, none, false, false, K::VerifyPress, 0, 0},
            {Qt::Key_V, none, false, true, K::None, 0, 0},
            {Qt::Key_V, none, true, false, K::VerifyRelease, 0, 0},
            {Qt::Key_V, none, true, true, K::None, 0, 0},
            {Qt::Key_S, pad, false, false, K::SolutionPress, 0, 0},
            {Qt::Key_S, none, true, false, K::SolutionRelease, 0, 0},
            {Qt::Key_H, none, false, false, K::HintPress, 0, 0},
            {Qt::Key_H, none, false, true, K::None, 0, 0},
            {Qt::Key_H, pad, true, false, K::HintRelease, 0, 0},
            {Qt::Key_H, none, true, true, K::None, 0, 0},
            {Qt::Key_H, ctrl, false, false, K::None, 0, 0},
            {Qt::Key_G, none, false, false, K::Grade, 0, 0},
            {Qt::Key_G, none, false, true, K::None, 0, 0},
            {Qt::Key_G, none, true, false, K::None, 0, 0},
            {Qt::Key_V, ctrl, true, false, K::None, 0, 0},
            {Qt::Key_S, shift, false, false, K::None, 0, 0},
            {Qt::Key_Space, none, false, false, K::None, 0, 0},
            {Qt::Key_Tab, none, false, false, K::None, 0, 0},
            {Qt::Key_Return, none, false, false, K::None, 0, 0},
        };
        for (const auto& c : cases) {
            const KeyAction a = ActionForKey(c.key, c.modifiers, c.release, c.repeat);
            const QString what = QKeySequence(c.key | c.modifiers.toInt()).toString() + (c.release ? " up" : "");
            QVERIFY2(a.command == c.command && a.dRow == c.dRow && a.dCol == c.dCol, qPrintable(what));
        }
    }

    // A puzzle started from its code, typed with Shift+arrows, verified with V, then undone
    // and redone from the keyboard.
    void typesAPuzzleStartedFromItsCode()
    {
        Form1Fixture f;
        const std::string code = MadeCode(5, kSideLeft);
        QVERIFY(f.window.LoadPuzzleCode(QString::fromStdString(code)));
        QCOMPARE(f.label("Label7")->text(), QString("Puzzle Created"));
        QCOMPARE(f.label("Label4")->text(), QString("7x7")); // the next size is the settings' own
        const Board& b = f.window.board();
        QCOMPARE(EncodePuzzleCode(b), code);
        for (std::size_t i = 2; i < b.List2.size(); i += 2)
            QTest::keyClick(&f.window, ArrowBetween(b, std::stoi(b.List2[i - 2]), std::stoi(b.List2[i])),
                            Qt::ShiftModifier);
        f.Shot("form1-keys-typed-path");
        // The ring around the cursor, now on End, in the link colour.
        const int x = b.CellX(b.CellRow[b.EndNode], b.CellCol[b.EndNode]) / kTwipsPerPixel;
        const int y = b.CellY(b.CellRow[b.EndNode], b.CellCol[b.EndNode]) / kTwipsPerPixel;
        const int half = int(0.4 * b.CellPitch / kTwipsPerPixel);
        QCOMPARE(f.BoardImage().pixelColor(x - 2, y - half), QColor(128, 0, 0));

        QTest::keyPress(&f.window, Qt::Key_V);
        QCOMPARE(f.label("Label7")->text(), QString("All Done !"));
        QTest::keyPress(&f.window, Qt::Key_V, Qt::NoModifier); // held: the repeat changes nothing
        QTest::keyRelease(&f.window, Qt::Key_V);
        QCOMPARE(f.label("Label7")->text(), QString());

        // Ctrl+Z takes the last link back; Ctrl+Y and Ctrl+Shift+Z give the same pixels again.
        const QImage before = f.BoardImage();
        const size_t records = f.window.playState().undolist.size();
        QTest::keyClick(&f.window, Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(f.BoardImage() != before);
        QCOMPARE(f.window.playState().undolist.size(), records - 1);
        QTest::keyClick(&f.window, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(f.BoardImage(), before);
        QTest::keyClick(&f.window, Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(&f.window, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.BoardImage(), before);
        QCOMPARE(f.window.playState().undolist.size(), records);
    }

    // Tab walks the buttons and the two labels; Space on New Puzzle makes a puzzle and on the
    // grid-size label steps the size. The focus shows as a frame in the caption's colour, in
    // every scheme of all.col.
    void tabAndSpacePressTheFocusedControlInEveryScheme()
    {
        for (const char* scheme : {"xp.col", "Classic.col", "Blue.col", "Olive.col", "Rose.col", "Sand.col", "Mint.col",
                                   "Lavender.col", "Slate.col", "Contrast.col"}) {
            Form1Fixture f{QString(scheme)};
            auto* cmdnew = f.window.findChild<BoxControl*>("cmdnew");
            QApplication::setActiveWindow(&f.window);
            const QImage plain = cmdnew->grab().toImage(); // the window's first focus shows no frame
            cmdnew->clearFocus();
            cmdnew->setFocus(Qt::TabFocusReason);
            const QImage focused = cmdnew->grab().toImage();
            // Near the top edge, inside the bevel: dots in the caption's colour where the face was.
            const QColor fore = ToQColor(cmdnew->ForeColor());
            int frame = 0;
            for (int y = 2; y < 7; ++y)
                for (int x = 0; x < plain.width(); ++x)
                    frame += plain.pixelColor(x, y) != fore && focused.pixelColor(x, y) == fore;
            QVERIFY2(frame > plain.width() / 4, scheme);
            f.Shot(QString("form1-keys-focus-%1").arg(QString(scheme).chopped(4)));

            QTest::keyClick(cmdnew, Qt::Key_Space);
            QCOMPARE(f.label("Label7")->text(), QString("Puzzle Created"));
            for (int i = 0; i < 5; ++i)
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(f.label("Label4")));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
            QCOMPARE(f.label("Label4")->text(), QString("8x8"));
        }
    }

    void damagedCodeIsExplainedAndTheBoardStaysEmpty()
    {
        Form1Fixture f;
        std::string code = MadeCode(6, kSideTop);
        code[20] = code[20] == 'A' ? 'B' : 'A';
        QVERIFY(!f.window.LoadPuzzleCode(QString::fromStdString(code)));
        QCOMPARE(f.answers.calls.size(), 1);
        QVERIFY(f.answers.calls[0].first.startsWith("This puzzle code cannot be used:"));
        QCOMPARE(f.answers.calls[0].second, QString("vbok+vbexclamation"));
        QVERIFY(f.window.board().PathList.empty());
        QCOMPARE(f.label("Label7")->text(), QString("Click Create New Puzzle to create a new puzzle"));
        QTest::keyClick(&f.window, Qt::Key_Right, Qt::ShiftModifier); // no puzzle: the keys do nothing
        QVERIFY(f.window.playState().undolist.empty());
    }

    // The game is kept after every change: a window started afresh puts it back with Ctrl+R,
    // the same pixels, labels and history, and Ctrl+Y then redoes the undone link. A plain
    // start keeps the empty board.
    void ctrlRResumesTheGameLeftInAnotherWindow()
    {
        QImage left;
        QTemporaryDir state; // outlives the first window's own folder
        std::vector<std::string> undo, redo;
        {
            Form1Fixture f;
            qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
            QVERIFY(f.window.LoadPuzzleCode(QString::fromStdString(MadeCode(6, kSideTop))));
            const Board& b = f.window.board();
            for (std::size_t i = 2; i < 8; i += 2)
                QTest::keyClick(&f.window, ArrowBetween(b, std::stoi(b.List2[i - 2]), std::stoi(b.List2[i])),
                                Qt::ShiftModifier);
            QTest::keyClick(&f.window, Qt::Key_Z, Qt::ControlModifier);
            f.ClickLabel("Label4", Qt::LeftButton);                     // 8x8 for the next puzzle
            f.ClickLabel("Label6", Qt::LeftButton);                     // Left
            QTest::keyClick(&f.window, Qt::Key_Z, Qt::ControlModifier); // kept with the labels
            f.MovePointer(QPointF(1, 1));                               // the cursor's ring is no part of the game
            left = f.BoardImage();
            undo = f.window.playState().undolist;
            redo = f.window.playState().redolist;
            QCOMPARE(redo.size(), std::size_t(2));
        }
        Form1Fixture g;
        QVERIFY(g.BoardImage() != left);
        qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
        QTest::keyClick(&g.window, Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(g.label("Label7")->text(), QString("Puzzle resumed"));
        QCOMPARE(g.BoardImage(), left);
        QCOMPARE(g.window.playState().undolist, undo);
        QCOMPARE(g.window.playState().redolist, redo);
        QCOMPARE(g.label("Label4")->text(), QString("8x8"));
        QCOMPARE(g.label("Label6")->text(), QString("Left"));
        QTest::keyClick(&g.window, Qt::Key_Y, Qt::ControlModifier);
        QVERIFY(g.BoardImage() != left);
        QCOMPARE(g.window.playState().redolist.size(), std::size_t(1));
        QVERIFY(g.answers.calls.isEmpty());
    }

    // The check's indicator comes back with the game: a resume shows the colour the saved
    // game had, green for right links, not the red that the game in the window had.
    void resumeShowsTheSavedGamesIndicator()
    {
        QTemporaryDir state;
        QColor saved;
        {
            Form1Fixture f;
            qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
            f.NewPuzzle();
            const auto [row, col] = f.PathLinkCell(1);
            f.ClickCell(row, col, Qt::LeftButton);
            f.Tick();
            const auto [nextRow, nextCol] = f.PathLinkCell(3); // a change, kept with the indicator
            f.ClickCell(nextRow, nextCol, Qt::LeftButton);
            saved = f.IndicatorColour();
            QCOMPARE(saved, QColor(10, 200, 10));
        }
        Form1Fixture g;
        g.NewPuzzle();
        const auto [row, col] = g.FindInvalidLinkCell();
        g.ClickCell(row, col, Qt::LeftButton);
        g.Tick();
        QCOMPARE(g.IndicatorColour(), QColor(240, 0, 0));
        qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
        QTest::keyClick(&g.window, Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(g.label("Label7")->text(), QString("Puzzle resumed"));
        QCOMPARE(g.IndicatorColour(), saved);
    }

    // A saved game that cannot be used is explained and kept aside as game.bad; the board is
    // left as it was. A save that fails keeps the old file and the status line's captions
    // ("Puzzle Created", "Use ... to make ..."), and is told in a message box once a run.
    void damagedSavedGameIsKeptAsideAndAFailedSaveIsReportedOnce()
    {
        Form1Fixture f;
        const QString folder = qEnvironmentVariable("XDG_STATE_HOME") + "/tallyon";
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(WriteBytes(folder + "/game", "Tallyon saved game, format 7\r\n"));
        QVERIFY(!f.window.ResumeGame());
        QCOMPARE(f.answers.calls.size(), 1);
        QVERIFY(f.answers.calls[0].first.startsWith("The saved game cannot be resumed:\r\n" + folder + "/game\r\n"));
        QVERIFY(f.answers.calls[0].first.endsWith("format 7, which this version of Tallyon does not read"));
        QCOMPARE(DirectoryEntries(folder), QStringList{"game.bad"});
        QVERIFY(f.window.board().PathList.empty());

        f.NewPuzzle();
        const QByteArray saved = ReadBytes(folder + "/game");
        QVERIFY(saved.startsWith("Tallyon saved game, format 2\r\ncode T1-"));
        {
            FileSizeLimit full;
            const Board& b = f.window.board();
            const int link = std::stoi(b.List2[1]); // the path's first link cell, wherever Start is
            f.ClickCell(b.CellRow[link], b.CellCol[link], Qt::LeftButton);
            QVERIFY2(f.label("Label7")->text().startsWith("Use "), qPrintable(f.label("Label7")->text()));
            QCOMPARE(f.answers.calls.size(), 2);
            QVERIFY(f.answers.calls[1].first.startsWith("The game cannot be kept for a later resume: "));
            QCOMPARE(f.answers.calls[1].second, QString("vbok+vbinformation"));
            QVERIFY(!f.window.SaveProblem().empty());
            f.ClickCell(b.CellRow[link], b.CellCol[link], Qt::RightButton);
            f.NewPuzzle();
            QCOMPARE(f.label("Label7")->text(), QString("Puzzle Created"));
            QCOMPARE(f.answers.calls.size(), 2); // once a run
        }
        QCOMPARE(ReadBytes(folder + "/game"), saved);
        f.NewPuzzle();
        QVERIFY(f.window.SaveProblem().empty());
    }

    // Ctrl+V plays the code on the clipboard as --puzzle does, blanks and line ends around it
    // ignored; a damaged one is explained and changes nothing. Ctrl+C copies the code, and a
    // code dropped on the window is played too.
    void puzzleCodesComeInByPasteAndDropAndGoOutByCopy()
    {
        Form1Fixture f;
        const std::string code = MadeCode(7, kSideLeft);
        QGuiApplication::clipboard()->setText(QString::fromStdString("  " + code + "\r\n"));
        QTest::keyClick(&f.window, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(EncodePuzzleCode(f.window.board()), code);
        const QImage pasted = f.BoardImage();
        QGuiApplication::clipboard()->setText(QString::fromStdString(code.substr(0, code.size() - 3)));
        QTest::keyClick(&f.window, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.answers.calls.size(), 1);
        QVERIFY(f.answers.calls[0].first.startsWith("This puzzle code cannot be used:"));
        QCOMPARE(f.BoardImage(), pasted);
        QGuiApplication::clipboard()->clear();
        QTest::keyClick(&f.window, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text().toStdString(), code);

        Form1Fixture g;
        QMimeData text;
        text.setText(QString::fromStdString(code + "\n"));
        QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&g.window, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(100, 100), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&g.window, &drop);
        QCOMPARE(g.answers.calls.size(), 0);
        QCOMPARE(EncodePuzzleCode(g.window.board()), code);
        QCOMPARE(g.BoardImage(), pasted);
    }

    void shortcutsReachTheMenuInstructionsAndPrint()
    {
        Form1Fixture f;
        QTest::keyClick(&f.window, Qt::Key_F1);
        QCOMPARE(f.answers.calls.size(), 1);
        QCOMPARE(f.answers.calls[0].second, QString("vbok+vbinformation"));
        QTest::keyClick(&f.window, Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(f.label("Label7")->text(), QString("Puzzle Created"));
        if (QPrinterInfo::defaultPrinter().isNull()) { // no printer: the page goes to the PDF fallback
            f.answers.next = 6;
            QTest::keyClick(&f.window, Qt::Key_P, Qt::ControlModifier);
            QVERIFY(QFile::exists(f.dir.path() + "/" + kPrintFileName));
        }
        QTest::keyClick(&f.window, Qt::Key_F, Qt::AltModifier);
        QCOMPARE(f.window.menuBar()->activeAction(), f.window.findChild<QMenu*>("mnuzerosum")->menuAction());
    }
};

QTEST_MAIN(Form1KeysTest)
#include "form1_keys_test.moc"
