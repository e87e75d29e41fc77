// The main window's hint key, marks and grade key: H held shows the hint on the board picture
// and the status line and its release gives back the very same pixels; Alt+arrow draws a cross
// that the game keeps for a resume and a reset clears; G cycles the next puzzle's grade, which
// a resume puts back.
#include "form1_driver.h"

#include "core/codes/puzzle_code.h"
#include "core/generator/generator.h"
#include "core/reasoning/hint.h"
#include "platform/qt_colour.h"
#include "play/draw.h"

using namespace tallyon;
using namespace tallyon::testing;

namespace {

// The pixels of two pictures that differ, as a rectangle around them.
QRect Differing(const QImage& a, const QImage& b)
{
    QRect box;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                box |= QRect(x, y, 1, 1);
    return box;
}

// Where a lattice cell's centre lies on the board picture, in pixels.
QPoint CellPixel(const Board& b, int row, int col)
{
    return QPoint(b.CellX(row, col) / kTwipsPerPixel, b.CellY(row, col) / kTwipsPerPixel);
}

// Whether some pixel within `reach` of a point shows a colour, give or take a few levels.
bool Shows(const QImage& image, QPoint at, int reach, QColor colour)
{
    for (int y = at.y() - reach; y <= at.y() + reach; ++y)
        for (int x = at.x() - reach; x <= at.x() + reach; ++x) {
            const QColor c = image.pixelColor(x, y);
            if (std::abs(c.red() - colour.red()) + std::abs(c.green() - colour.green()) +
                    std::abs(c.blue() - colour.blue()) <=
                24)
                return true;
        }
    return false;
}

} // namespace

class Form1HintsTest : public QObject {
    Q_OBJECT

private slots:
    // The first press rings where to look and names the kind; the second draws the forced
    // link in its own colour with the same count; each release gives back the same pixels
    // and status line, and the auto-repeat of a held key changes nothing.
    void holdingHShowsTheHintAndReleasingGivesBackTheBoard()
    {
        Form1Fixture f;
        QVERIFY(f.window.LoadPuzzleCode(QString::fromStdString(MadeCode(7, kSideLeft))));
        f.LinkPath(5); // two links from Start, drawn one move at a time
        f.MovePointer(QPointF(1, 1));
        const QImage before = f.BoardImage();
        const QString status = f.label("Label7")->text();

        const Board& b = f.window.board();
        const Hint hint = FindHint(b);
        QCOMPARE(hint.kind, HintKind::Deduction);
        QTest::keyPress(&f.window, Qt::Key_H);
        const QImage first = f.BoardImage();
        QCOMPARE(f.label("Label7")->text().toStdString(), "Hint 1: " + hint.first);
        f.Shot("form1-hint-first-press");
        // A ring around each node to look at, on its diagonal, clear of the grid lines.
        const int ring = int(0.45 * b.CellPitch / kTwipsPerPixel / std::sqrt(2.0));
        for (const CellAt node : hint.look) {
            QVERIFY(Shows(first, CellPixel(b, node.row, node.col) + QPoint(ring, ring), 2, ToQColor(kHintLookColour)));
            QVERIFY(
                !Shows(before, CellPixel(b, node.row, node.col) + QPoint(ring, ring), 2, ToQColor(kHintLookColour)));
        }
        QTest::keyRelease(&f.window, Qt::Key_H);
        QCOMPARE(f.BoardImage(), before);
        QCOMPARE(f.label("Label7")->text(), status);

        QTest::keyPress(&f.window, Qt::Key_H);
        const QImage second = f.BoardImage();
        QCOMPARE(f.label("Label7")->text().toStdString(), "Hint 1: " + hint.second);
        f.Shot("form1-hint-second-press");
        // The link it forces, in the forced link's colour, a third of the way to its node.
        const bool across = hint.link.row % 2 == 1;
        const QPoint link = CellPixel(b, hint.link.row, hint.link.col);
        const QPoint node = CellPixel(b, hint.link.row - (across ? 0 : 1), hint.link.col - (across ? 1 : 0));
        QVERIFY(Shows(second, (2 * link + node) / 3, 2, ToQColor(kForcedLinkColour)));
        QVERIFY(!Shows(before, (2 * link + node) / 3, 2, ToQColor(kForcedLinkColour)));
        QTest::keyPress(&f.window, Qt::Key_H, Qt::NoModifier, -1); // a held key's repeat
        QCOMPARE(f.BoardImage(), second);
        QTest::keyRelease(&f.window, Qt::Key_H);
        QCOMPARE(f.BoardImage(), before);
        QCOMPARE(f.label("Label7")->text(), status);
    }

    // Alt+Right from Start crosses out the link to its right: a cross in the scheme's entry 12
    // on the link cell's diagonals, no undo record, the link cell's digit still there. The
    // game keeps it: a window started afresh puts it back with Ctrl+R, pixel for pixel, and
    // the reset clears it.
    void altArrowDrawsACrossThatAResumeKeepsAndAResetClears()
    {
        QTemporaryDir stateDir;
        QImage marked;
        {
            Form1Fixture f;
            qputenv("XDG_STATE_HOME", stateDir.path().toLocal8Bit());
            QVERIFY(f.window.LoadPuzzleCode(QString::fromStdString(MadeCode(6, kSideLeft))));
            f.LinkPath(3);
            const Board& b = f.window.board();
            // Down from Start, or up from a Start in the bottom row.
            const bool down = b.CellRow[b.StartNode] + 2 <= b.BoardSpan;
            const int row = b.CellRow[b.StartNode] + (down ? 1 : -1), col = b.CellCol[b.StartNode];
            const QImage before = f.BoardImage();
            QTest::keyClick(&f.window, down ? Qt::Key_Down : Qt::Key_Up, Qt::AltModifier);
            f.MovePointer(QPointF(1, 1));
            marked = f.BoardImage();
            f.Shot("form1-mark-cross");
            QCOMPARE(f.window.board().UserMark(row, col), 1);
            QCOMPARE(f.window.playState().undolist.size(), std::size_t(1));
            const QPoint centre = CellPixel(b, row, col);
            const int arm = int(0.3 * b.CellPitch / kTwipsPerPixel) - 2;
            const QColor cross = ToQColor(f.state.SchemeColours[12]);
            for (const QPoint corner : {QPoint(arm, arm), QPoint(-arm, arm), QPoint(arm, -arm), QPoint(-arm, -arm)}) {
                QVERIFY(Shows(marked, centre + corner, 1, cross));
                QVERIFY(!Shows(before, centre + corner, 1, cross));
            }
            QVERIFY(Differing(before, marked).intersects(QRect(centre, QSize(1, 1)).adjusted(-arm, -arm, arm, arm)));
        }
        Form1Fixture g;
        qputenv("XDG_STATE_HOME", stateDir.path().toLocal8Bit());
        QTest::keyClick(&g.window, Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(g.label("Label7")->text(), QString("Puzzle resumed"));
        QCOMPARE(g.BoardImage(), marked);
        g.Release("undoman", Qt::RightButton); // answered Yes
        const Board& b = g.window.board();
        for (int row = 1; row <= b.BoardSpan; ++row)
            for (int col = 1; col <= b.BoardSpan; ++col)
                QCOMPARE(b.UserMark(row, col), 0);
    }

    // G steps the next puzzle's grade and says so beside the grade of the puzzle in play; New
    // Puzzle builds one of the grade chosen, and Ctrl+R in a window started afresh puts the
    // grade back with the game.
    void gCyclesTheGradeAndAResumeKeepsIt()
    {
        QTemporaryDir stateDir;
        {
            Form1Fixture f;
            qputenv("XDG_STATE_HOME", stateDir.path().toLocal8Bit());
            for (const char* grade : {"Easy", "Medium"}) {
                QTest::keyClick(&f.window, Qt::Key_G);
                QCOMPARE(f.label("Label7")->text(), QString("Next puzzle: %1 (no puzzle yet)").arg(grade));
            }
            f.NewPuzzle();
            QCOMPARE(GradePuzzle(f.window.board()).grade, Grade::Medium);
            QTest::keyClick(&f.window, Qt::Key_G);
            QCOMPARE(f.label("Label7")->text(), QString("Next puzzle: Hard (this one: Medium)"));
        }
        Form1Fixture g;
        QVERIFY(!g.window.Next().grade.has_value()); // a plain start: any grade
        qputenv("XDG_STATE_HOME", stateDir.path().toLocal8Bit());
        QTest::keyClick(&g.window, Qt::Key_R, Qt::ControlModifier);
        QVERIFY(g.window.Next().grade == Grade::Hard);
        QTest::keyClick(&g.window, Qt::Key_G);
        QCOMPARE(g.label("Label7")->text(), QString("Next puzzle: Any (this one: Medium)"));
    }
};

QTEST_MAIN(Form1HintsTest)
#include "form1_hints_test.moc"
