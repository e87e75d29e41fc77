// A main window in a fresh program directory, driven with the mouse as a player drives it.
#pragma once

#include "core/board/board.h"
#include "core/board/link_rule.h"
#include "core/codes/puzzle_code.h"
#include "core/generator/generator.h"
#include "play/verify.h"
#include "shell/main_window/form1.h"
#include "shell/main_window/picture_box.h"
#include "tests/shell/shell_test_support.h"
#include "ui/box_control.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <optional>
#include <utility>

namespace tallyon::testing {

inline QByteArray ConfigFor(const QString& scheme)
{
    return QByteArray(" 7  2  1  0  0  16777215  0  128  6\r\n") + scheme.toUtf8() + "\r\n";
}

// The bytes of tallyon.cfg at start-up; none for a missing file.
struct ConfigBytes {
    std::optional<QByteArray> bytes;
};

// A generator that can no longer make a puzzle gives up after this many builds, so that a test
// that starts a new puzzle fails instead of waiting for it without end.
inline constexpr int kWindowTestBuildBound = 40;

// The code of a puzzle built afresh at a size, laid from a side.
inline std::string MadeCode(int size, int side)
{
    Board board;
    board.GridSize = size;
    BuildPuzzle(board, side, 8400);
    return EncodePuzzleCode(board);
}

struct Form1Fixture {
    explicit Form1Fixture(const QString& scheme = "xp.col") : Form1Fixture(ConfigBytes{ConfigFor(scheme)}) {}

    explicit Form1Fixture(const ConfigBytes& config) : window(state)
    {
        const QString root = dir.path() + "/";
        QFile::copy(QStringLiteral(TALLYON_DATA_DIR) + "/all.col", root + "all.col");
        if (config.bytes)
            WriteBytes(root + "tallyon.cfg", *config.bytes);
        initialConfig = ConfigText();
        state.AppDir = root;
        SetBuildBound(kWindowTestBuildBound);
        // The saved game goes into this directory too, never the player's own state folder.
        qputenv("XDG_STATE_HOME", (root + "state").toLocal8Bit());
        window.Start();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }

    QLabel* label(const char* name) { return window.findChild<QLabel*>(name); }
    PictureBox* picture() { return window.findChild<PictureBox*>("Picture1"); }

    QString ConfigText() { return QString::fromUtf8(ReadBytes(dir.path() + "/tallyon.cfg")); }

    void Press(const char* button, Qt::MouseButton which = Qt::LeftButton)
    {
        QTest::mousePress(window.findChild<BoxControl*>(button), which);
    }
    void Release(const char* button, Qt::MouseButton which)
    {
        BoxControl* box = window.findChild<BoxControl*>(button);
        QTest::mousePress(box, which);
        QTest::mouseRelease(box, which);
    }
    void PressVerify() { Press("cmdverify"); }
    void ReleaseVerify() { QTest::mouseRelease(window.findChild<BoxControl*>("cmdverify"), Qt::LeftButton); }
    void NewPuzzle(Qt::MouseButton which = Qt::LeftButton) { Release("cmdnew", which); }

    void ClickLabel(const char* name, Qt::MouseButton which) { QTest::mouseClick(label(name), which); }
    void SetStartSide(int side)
    {
        for (int i = 0; i < 3 && window.Next().PathDirection != side; ++i)
            ClickLabel("Label6", Qt::LeftButton);
    }
    void SetGridSize(int size)
    {
        for (int i = 0; i < 7 && window.Next().GridSize != size; ++i)
            ClickLabel("Label4", Qt::LeftButton);
    }

    // Sends a pointer move and a button release over the cell's drawing position.
    void ClickCell(int row, int col, Qt::MouseButton which)
    {
        const Board& b = window.board();
        ClickAt(QPointF(b.CellX(row, col) / 15.0, b.CellY(row, col) / 15.0), which);
    }

    // Moves the pointer to a point of the board picture, in pixels: the keyboard's cursor goes.
    void MovePointer(QPointF at)
    {
        PictureBox* box = picture();
        QMouseEvent move(QEvent::MouseMove, at, box->mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(box, &move);
    }

    // The same at a point of the board picture, in pixels.
    void ClickAt(QPointF at, Qt::MouseButton which)
    {
        PictureBox* box = picture();
        MovePointer(at);
        QMouseEvent release(QEvent::MouseButtonRelease, at, box->mapToGlobal(at), which, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(box, &release);
    }

    std::pair<int, int> PathLinkCell(size_t index)
    {
        const Board& b = window.board();
        const int k = std::stoi(b.List2.at(index));
        return {b.CellRow[k], b.CellCol[k]};
    }

    // Links the path's first cells, up to List2 index `count`.
    void LinkPath(size_t count)
    {
        for (size_t k = 1; k < count && k < window.board().List2.size(); k += 2) {
            const auto [row, col] = PathLinkCell(k);
            ClickCell(row, col, Qt::LeftButton);
        }
    }

    // A link cell whose triple breaks the link rule.
    std::pair<int, int> FindInvalidLinkCell()
    {
        const Board& b = window.board();
        for (int r = 1; r <= b.BoardSpan; ++r)
            for (int c = 1; c <= b.BoardSpan; ++c) {
                if (!IsLinkCell(r, c))
                    continue;
                const bool across = (r % 2) == 1;
                const int a = across ? b.NodeValue(r, c - 1) : b.NodeValue(r - 1, c);
                const int z = across ? b.NodeValue(r, c + 1) : b.NodeValue(r + 1, c);
                if (!IsValidTriple(a, b.NodeValue(r, c), z))
                    return {r, c};
            }
        return {0, 0};
    }

    int TotalDegree()
    {
        const Board& b = window.board();
        int sum = 0;
        for (int r = 1; r <= b.BoardSpan; r += 2)
            for (int c = 1; c <= b.BoardSpan; c += 2)
                sum += NodeDegree(b, r, c);
        return sum;
    }

    QColor IndicatorColour() { return label("Label8")->palette().color(QPalette::Window); }
    // Runs the periodic check's next tick now: Timer2 must be running every 2000 ms; it is
    // fired at once and then set back to its interval.
    void Tick()
    {
        QTimer* timer = window.findChild<QTimer*>("Timer2");
        QVERIFY(timer && timer->isActive());
        QCOMPARE(timer->interval(), 2000);
        QSignalSpy ticked(timer, &QTimer::timeout);
        timer->start(0);
        QVERIFY(ticked.wait(1000));
        timer->start(2000);
    }
    QImage BoardImage() { return picture()->Image(); }
    void Shot(const QString& name)
    {
        QDir().mkpath(TALLYON_SCREENSHOT_DIR);
        window.grab().save(QString(TALLYON_SCREENSHOT_DIR) + "/" + name + ".png");
    }

    MessageLog answers{6};
    QTemporaryDir dir;
    AppState state;
    Form1 window;
    QString initialConfig;
};

} // namespace tallyon::testing
