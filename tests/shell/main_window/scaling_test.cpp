// The main window at the scale factor the test runs under (QT_SCALE_FACTOR, 1.25 and 1.5 by
// the build): the board and the buttons sit at fractional device positions there, and still
// every grid line keeps the one thickness of its pen, every plain node the same circle, and
// each box button's bevel its two lines on all four sides.
#include "form1_driver.h"

#include <QWindow>

#include <cmath>

#include <map>
#include <set>
#include <vector>

using namespace tallyon;
using namespace tallyon::testing;

namespace {

// The runs of one colour met along a line of pixels: where each starts and how long it is.
struct Run {
    int start = 0, length = 0;
};

std::vector<Run> RunsOf(const QImage& image, QPoint from, QPoint step, int count, QRgb colour)
{
    std::vector<Run> runs;
    bool inside = false;
    for (int i = 0; i < count; ++i) {
        const QPoint at = from + step * i;
        const bool match = image.valid(at) && (image.pixel(at) & 0xffffff) == (colour & 0xffffff);
        if (match && !inside)
            runs.push_back({i, 0});
        if (match)
            ++runs.back().length;
        inside = match;
    }
    return runs;
}

// The colours met along a line of pixels, a run of one colour at a time, in order.
struct ColourRun {
    QRgb colour = 0;
    int length = 0;
};

std::vector<ColourRun> ColourRuns(const QImage& image, QPoint from, QPoint step, int count)
{
    std::vector<ColourRun> runs;
    for (int i = 0; i < count; ++i) {
        const QRgb c = image.pixel(from + step * i) & 0xffffff;
        if (runs.empty() || runs.back().colour != c)
            runs.push_back({c, 0});
        ++runs.back().length;
    }
    return runs;
}

QString Lengths(const std::vector<Run>& runs)
{
    QStringList out;
    for (const Run& r : runs)
        out << QString::number(r.length);
    return out.join(' ');
}

} // namespace

class ScalingTest : public QObject {
    Q_OBJECT

private:
    // The window as it shows on screen, in device pixels, and where a child lies in it.
    static QImage WindowImage(Form1Fixture& f) { return f.window.grab().toImage(); }
    static QRectF InWindow(Form1Fixture& f, QWidget* child, double ratio)
    {
        const QRect r(child->mapTo(&f.window, QPoint(0, 0)), child->size());
        return QRectF(r.x() * ratio, r.y() * ratio, r.width() * ratio, r.height() * ratio);
    }

private slots:
    // The empty board: each line across it meets every line of the other direction in a run
    // of the grid's colour, and all those runs are as long as each other.
    void gridLinesKeepOneThickness()
    {
        Form1Fixture f;
        f.Shot(QStringLiteral("form1-scale-%1-empty").arg(qEnvironmentVariable("QT_SCALE_FACTOR")));
        const QImage image = WindowImage(f);
        const double ratio = image.devicePixelRatio();
        QCOMPARE(ratio, qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble());
        const QRectF board = InWindow(f, f.picture(), ratio);
        const Board& b = f.window.board();
        const Colour gridColour = f.state.settings.GridColour;
        const QRgb grid = qRgb(RedOf(gridColour), GreenOf(gridColour), BlueOf(gridColour));
        const int lines = b.GridSize + 1;
        std::set<int> lengths;
        for (int k = 2; k < b.BoardSpan; k += 2) { // between two node rows or columns
            const double mid = (b.BoardLeft + b.CellPitch * (k - 1)) / double(kTwipsPerPixel) * ratio;
            const QPoint down(int(board.x() + mid), int(board.top()));
            const QPoint across(int(board.left()), int(board.y() + mid));
            for (const auto& runs : {RunsOf(image, down, {0, 1}, int(board.height()), grid),
                                     RunsOf(image, across, {1, 0}, int(board.width()), grid)}) {
                QVERIFY2(int(runs.size()) == lines,
                         qPrintable(QString("%1 lines met, %2 drawn at scan %3").arg(runs.size()).arg(lines).arg(k)));
                for (const Run& r : runs)
                    lengths.insert(r.length);
                QVERIFY2(lengths.size() == 1, qPrintable("line thicknesses " + Lengths(runs)));
            }
        }
    }

    // A puzzle: the outline of every plain node is the same picture, wherever the node lies.
    void nodesAreOneCircle()
    {
        Form1Fixture f;
        f.NewPuzzle();
        f.Shot(QStringLiteral("form1-scale-%1-puzzle").arg(qEnvironmentVariable("QT_SCALE_FACTOR")));
        const QImage image = WindowImage(f);
        const double ratio = image.devicePixelRatio();
        const QRectF board = InWindow(f, f.picture(), ratio);
        const Board& b = f.window.board();
        const double radius = 1.1 * b.CellBase / kTwipsPerPixel * ratio; // the screen look's node
        const int reach = int(std::ceil(radius)) + 3;
        const std::set<int> keys(b.KeyNodes.begin(), b.KeyNodes.end());
        // The outline's pixels around a node's centre, shifted by (dx, dy): its outer half and
        // the edge beyond, clear of the digit inside and of the grid lines that meet it.
        const auto ring = [&](QPoint centre, int dx, int dy) {
            std::vector<QRgb> pixels;
            for (int y = -reach; y <= reach; ++y)
                for (int x = -reach; x <= reach; ++x) {
                    const double d = std::hypot(x, y);
                    if (std::abs(x) > 3 && std::abs(y) > 3 && d >= radius - ratio / 2 && d <= radius + 2 * ratio)
                        pixels.push_back(image.pixel(centre + QPoint(x + dx, y + dy)));
                }
            return pixels;
        };
        std::vector<QRgb> first;
        int compared = 0;
        for (int row = 1; row <= b.BoardSpan; row += 2)
            for (int col = 1; col <= b.BoardSpan; col += 2) {
                if (keys.count(b.CellNo(row, col)) != 0)
                    continue;
                const QPoint centre(int(board.x() + b.CellX(row, col) / double(kTwipsPerPixel) * ratio),
                                    int(board.y() + b.CellY(row, col) / double(kTwipsPerPixel) * ratio));
                if (first.empty()) {
                    first = ring(centre, 0, 0);
                    continue;
                }
                bool same = false;
                for (int dy = -1; dy <= 1 && !same; ++dy)
                    for (int dx = -1; dx <= 1 && !same; ++dx)
                        same = ring(centre, dx, dy) == first;
                QVERIFY2(same,
                         qPrintable(QString("the node at row %1, column %2 has another outline").arg(row).arg(col)));
                ++compared;
            }
        QVERIFY(compared > 10);
    }

    // Every box button: along a line from outside into its face, each side shows two bevel
    // lines of two colours before the face, never one line swallowed by the other, and every
    // bevel line of every button is as thick as the others.
    void bevelsKeepTheirTwoLines()
    {
        Form1Fixture f;
        const QImage image = WindowImage(f);
        const double ratio = image.devicePixelRatio();
        const int reach = int(std::ceil(6 * ratio)); // the bevel lies within 3 pixels of an edge
        std::set<int> thicknesses;
        for (const char* name : {"cmdnew", "cmdverify", "cmdshowsol", "undoman", "cmdhelp"}) {
            BoxControl* button = f.window.findChild<BoxControl*>(name);
            const QRectF r = InWindow(f, button, ratio);
            const Colour back = button->BackColor();
            const QRgb face = qRgb(RedOf(back), GreenOf(back), BlueOf(back)) & 0xffffff;
            const QPoint centre = r.center().toPoint();
            const struct {
                const char* side;
                QPoint from, step;
            } sides[] = {
                {"top", {centre.x(), int(r.top()) - 1}, {0, 1}},
                {"bottom", {centre.x(), int(std::ceil(r.bottom()))}, {0, -1}},
                {"left", {int(r.left()) - 1, centre.y()}, {1, 0}},
                {"right", {int(std::ceil(r.right())), centre.y()}, {-1, 0}},
            };
            for (const auto& side : sides) {
                // Outside the button, then its two lines (the face may show between them), then
                // the face.
                const std::vector<ColourRun> met = ColourRuns(image, side.from, side.step, reach);
                const QString where = QString("%1 %2").arg(name, side.side);
                QVERIFY2(met.back().colour == face, qPrintable(where + ": no face"));
                std::vector<ColourRun> lines;
                for (auto run = met.begin() + 1; run != met.end(); ++run)
                    if (run->colour != face)
                        lines.push_back(*run);
                QVERIFY2(lines.size() == 2 && lines[0].colour != lines[1].colour,
                         qPrintable(where + QString(": %1 bevel lines").arg(lines.size())));
                thicknesses.insert(lines[0].length);
                thicknesses.insert(lines[1].length);
                QVERIFY2(thicknesses.size() == 1, qPrintable(where + ": bevel lines of two thicknesses"));
            }
        }
    }
};

QTEST_MAIN(ScalingTest)
#include "scaling_test.moc"
