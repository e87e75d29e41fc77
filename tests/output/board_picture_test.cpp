// What the output board routine draws, checked on the recording canvas.
#include "output_fixture.h"
#include "tests/support/recording_canvas.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <functional>

using namespace tallyon;
using namespace tallyon::testing;
using Kind = CanvasOp::Kind;

namespace {

constexpr Colour kBlack = RGB(0, 0, 0);
constexpr Colour kWhite = RGB(255, 255, 255);
constexpr int kLeft = 3000;
constexpr int kTop = 1000;

TextSize Measure(const CanvasOp& text) { return RecordingCanvas().MeasureText(text.text, text.font); }

int Offset(const Board& board, int cells) { return int(std::lround(OutputPitch(board) * cells)); }

} // namespace

class BoardPictureTest : public QObject {
    Q_OBJECT

private slots:
    void drawsTheBoard_data()
    {
        QTest::addColumn<int>("gridSize");
        QTest::addColumn<double>("scale");
        QTest::addColumn<double>("points");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("nodeShape");
        QTest::addColumn<int>("side");
        QTest::newRow("4 puzzle circles Random") << 4 << 0.9 << 12.6 << kPuzzleMode << 2 << int(kSideRandom);
        QTest::newRow("5 solution boxes Left") << 5 << 0.8 << 12.0 << kSolutionMode << 1 << int(kSideLeft);
        QTest::newRow("10 puzzle boxes Top") << 10 << 0.9 << 9.0 << kPuzzleMode << 1 << int(kSideTop);
    }

    void drawsTheBoard()
    {
        QFETCH(int, gridSize);
        QFETCH(double, scale);
        QFETCH(double, points);
        QFETCH(int, mode);
        QFETCH(int, nodeShape);
        QFETCH(int, side);
        const auto board = MakePuzzle(gridSize, side == kSideTop ? kSideTop : kSideLeft);
        board->StartSide = side;
        OutputOptions options;
        options.NodeShape = nodeShape;
        options.PrintLineWidth = 3;
        RecordingCanvas canvas;
        PrintBoard(canvas, *board, kLeft, kTop, mode, options);
        const auto ops = [&canvas](const std::function<bool(const CanvasOp&)>& keep) {
            std::vector<CanvasOp> out;
            std::copy_if(canvas.Ops().begin(), canvas.Ops().end(), std::back_inserter(out), keep);
            return out;
        };

        // The grid: its pitch scaled, its lines 3 wide; every digit and mark in the one font size.
        const int last = board->BoardSpan - 1;
        const auto grid = ops([](const auto& op) { return op.kind == Kind::Box && op.penWidth == 3; });
        QCOMPARE(int(grid.size()), last * last);
        QVERIFY(std::abs(grid.front().x2 - kLeft - board->CellPitch * scale) <= 1.0);
        const auto texts = ops([](const auto& op) { return op.kind == Kind::Text && op.text != FooterText(); });
        QVERIFY(!texts.empty());
        for (const auto& text : texts)
            QCOMPARE(text.font.points, points);

        // The path: one line 12 wide per step, only in the solution.
        const auto lines = ops([](const auto& op) { return op.kind == Kind::Line; });
        QCOMPARE(int(lines.size()), mode == kSolutionMode ? int(board->List2.size()) - 1 : 0);
        for (const auto& line : lines)
            QVERIFY(line.penWidth == 12 && line.colour == kBlack);

        // Every node white, then the three key nodes black, each with a white digit.
        const int wide = Offset(*board, 1) / 2; // a node, not the white patch under a link digit
        const auto fills = ops([wide](const auto& op) {
            return op.kind == Kind::Circle ? op.filled : op.kind == Kind::FilledBox && op.x2 - op.x1 > wide;
        });
        const int nodes = (board->GridSize + 1) * (board->GridSize + 1);
        QCOMPARE(int(fills.size()), nodes + 3);
        for (int i = 0; i < nodes + 3; ++i)
            QCOMPARE(fills[i].fill, i < nodes ? kWhite : kBlack);
        const auto digits = ops([](const auto& op) { return op.kind == Kind::Text && op.colour == kWhite; });
        QCOMPARE(int(digits.size()), 3);
        for (int i = 0; i < 3; ++i) {
            const int k = board->KeyNodes[i], row = board->CellRow[k], col = board->CellCol[k];
            const CanvasOp& key = fills[nodes + i];
            const QPoint centre(kLeft + Offset(*board, col - 1), kTop + Offset(*board, row - 1));
            QCOMPARE(key.kind == Kind::Circle ? QPoint(key.x1, key.y1)
                                              : QPoint((key.x1 + key.x2) / 2, (key.y1 + key.y2) / 2),
                     centre);
            QCOMPARE(digits[i].text, std::to_string(board->NodeValue(row, col)));
        }

        // "X" beside Start and End: none for Random, left and right for Left, above and below for Top.
        const auto marks = ops([](const auto& op) { return op.kind == Kind::Text && op.text == "X"; });
        QCOMPARE(int(marks.size()), side == kSideRandom ? 0 : 2);
        const int far = Offset(*board, last);
        if (side == kSideLeft)
            QVERIFY(marks[0].x1 + Measure(marks[0]).width < kLeft && marks[1].x1 > kLeft + far);
        if (side == kSideTop)
            QVERIFY(marks[0].y1 + Measure(marks[0]).height < kTop && marks[1].y1 > kTop + far);
    }
};

QTEST_APPLESS_MAIN(BoardPictureTest)
#include "board_picture_test.moc"
