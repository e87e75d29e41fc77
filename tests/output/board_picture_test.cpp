// What the output board routine draws, checked on the recording canvas.
#include "output/board_picture.h"
#include "output_fixture.h"
#include "platform/recording_canvas.h"

#include <QTest>

#include <cmath>

using namespace tallyon;
using namespace tallyon::testing;

namespace {

constexpr Colour kBlack = RGB(0, 0, 0);
constexpr Colour kWhite = RGB(255, 255, 255);
constexpr int kLeft = 3000;
constexpr int kTop = 1000;

using Kind = CanvasOp::Kind;

std::vector<CanvasOp> Draw(const Board& board, int mode, const OutputOptions& options)
{
    RecordingCanvas canvas;
    PrintBoard(canvas, board, kLeft, kTop, mode, options);
    return canvas.Ops();
}

std::vector<CanvasOp> Only(const std::vector<CanvasOp>& ops, Kind kind)
{
    std::vector<CanvasOp> out;
    for (const auto& op : ops)
        if (op.kind == kind)
            out.push_back(op);
    return out;
}

std::vector<CanvasOp> TextsOf(const std::vector<CanvasOp>& ops, const std::string& text)
{
    std::vector<CanvasOp> out;
    for (const auto& op : Only(ops, Kind::Text))
        if (op.text == text)
            out.push_back(op);
    return out;
}

// The text op whose box contains the given point.
const CanvasOp* TextAt(const std::vector<CanvasOp>& ops, int x, int y)
{
    RecordingCanvas metric;
    for (const auto& op : ops) {
        if (op.kind != Kind::Text)
            continue;
        const TextSize size = metric.MeasureText(op.text, op.font);
        if (x >= op.x1 && x <= op.x1 + size.width && y >= op.y1 && y <= op.y1 + size.height)
            return &op;
    }
    return nullptr;
}

} // namespace

class BoardPictureTest : public QObject {
    Q_OBJECT

private slots:
    void scaleAndFontFollowGridSize_data();
    void scaleAndFontFollowGridSize();
    void lineWidthsFollowTheTarget_data();
    void lineWidthsFollowTheTarget();
    void pathOnlyInSolutionAndKeyNodesInverted_data();
    void pathOnlyInSolutionAndKeyNodesInverted();
    void startEndMarksFollowStartSide_data();
    void startEndMarksFollowStartSide();
    void footerSitsBelowTheBoard();
};

void BoardPictureTest::scaleAndFontFollowGridSize_data()
{
    QTest::addColumn<int>("gridSize");
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("points");
    QTest::newRow("4") << 4 << 0.9 << 12.6;
    QTest::newRow("5 keeps 0.8") << 5 << 0.8 << 12.0;
    QTest::newRow("6") << 6 << 0.9 << 11.4;
    QTest::newRow("7") << 7 << 0.9 << 10.8;
    QTest::newRow("10") << 10 << 0.9 << 9.0;
}

void BoardPictureTest::scaleAndFontFollowGridSize()
{
    QFETCH(int, gridSize);
    QFETCH(double, scale);
    QFETCH(double, points);
    const auto board = MakeBoard(gridSize, kSideLeft);
    const auto ops = Draw(*board, kPuzzleMode, DefaultOptions());

    const int last = board->BoardSpan - 1;
    const auto boxes = Only(ops, Kind::Box);
    QCOMPARE(int(boxes.size()), last * last); // circles: no node boxes
    const double pitch = board->CellPitch * scale;
    QCOMPARE(boxes.front().x1, kLeft);
    QCOMPARE(boxes.front().y1, kTop);
    QVERIFY(std::abs(boxes.front().x2 - kLeft - pitch) <= 1.0);
    const auto& farCorner = boxes.back();
    QVERIFY(std::abs(farCorner.x2 - kLeft - pitch * last) <= 1.0);
    QVERIFY(std::abs(farCorner.y2 - kTop - pitch * last) <= 1.0);

    const auto digits = TextsOf(ops, std::to_string(board->NodeValue(1, 1)));
    QVERIFY(!digits.empty());
    for (const auto& t : digits)
        QVERIFY(std::abs(t.font.points - points) < 1e-9);
}

void BoardPictureTest::lineWidthsFollowTheTarget_data()
{
    QTest::addColumn<bool>("printer");
    QTest::addColumn<int>("printWidth");
    QTest::addColumn<int>("screenWidth");
    QTest::addColumn<int>("gridPen");
    QTest::newRow("print 3") << true << 3 << 1 << 3;
    QTest::newRow("print 6") << true << 6 << 2 << 6;
    QTest::newRow("picture 2") << false << 6 << 2 << 2;
}

void BoardPictureTest::lineWidthsFollowTheTarget()
{
    QFETCH(bool, printer);
    QFETCH(int, printWidth);
    QFETCH(int, screenWidth);
    QFETCH(int, gridPen);
    const auto board = MakeBoard(6, kSideLeft);
    OutputOptions options = DefaultOptions();
    options.PrintLineWidth = printWidth;
    options.GridLineWidth = screenWidth;
    RecordingCanvas canvas;
    if (printer)
        PrintBoard(canvas, *board, kLeft, kTop, kSolutionMode, options);
    else
        DrawBoardWithLineWidth(canvas, *board, kLeft, kTop, kSolutionMode, options, screenWidth);

    for (const auto& box : canvas.OpsOf(Kind::Box))
        QCOMPARE(box.penWidth, gridPen);
    const auto lines = canvas.OpsOf(Kind::Line);
    QVERIFY(!lines.empty());
    for (const auto& line : lines)
        QCOMPARE(line.penWidth, 4 * gridPen);
    for (const auto& circle : canvas.OpsOf(Kind::Circle))
        QCOMPARE(circle.penWidth, 1);
}

void BoardPictureTest::pathOnlyInSolutionAndKeyNodesInverted_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("nodeShape");
    QTest::newRow("puzzle, circles") << 0 << 2;
    QTest::newRow("solution, circles") << 1 << 2;
    QTest::newRow("puzzle, boxes") << 0 << 1;
    QTest::newRow("solution, boxes") << 1 << 1;
}

void BoardPictureTest::pathOnlyInSolutionAndKeyNodesInverted()
{
    QFETCH(int, mode);
    QFETCH(int, nodeShape);
    const auto board = MakeBoard(5, kSideLeft);
    OutputOptions options = DefaultOptions();
    options.NodeShape = nodeShape;
    const auto ops = Draw(*board, mode, options);

    // The path: one line per pair of consecutive path cells, centre to centre, along row 1.
    const auto lines = Only(ops, Kind::Line);
    QCOMPARE(int(lines.size()), mode == 1 ? board->BoardSpan - 1 : 0);
    for (const auto& line : lines) {
        QCOMPARE(line.colour, kBlack);
        QCOMPARE(line.y1, kTop);
        QCOMPARE(line.y2, kTop);
    }

    // Every node white with a black digit, then the three key nodes black with a white digit.
    const int nodes = (board->GridSize + 1) * (board->GridSize + 1);
    std::vector<CanvasOp> fills;
    for (const auto& op : ops)
        if ((op.kind == Kind::Circle && op.filled) || op.kind == Kind::FilledBox)
            fills.push_back(op);
    std::erase_if(fills, [&](const CanvasOp& op) {
        return op.kind == Kind::FilledBox && op.x2 - op.x1 < 0.6 * OutputPitch(*board);
    }); // the white patches under the link digits
    QCOMPARE(int(fills.size()), nodes + 3);
    for (int i = 0; i < nodes; ++i)
        QCOMPARE(fills[i].fill, kWhite);
    for (int i = 0; i < 3; ++i) {
        const CanvasOp& key = fills[nodes + i];
        QCOMPARE(key.fill, kBlack);
        const int k = board->KeyNodes[i];
        const int cx = (key.kind == Kind::Circle) ? key.x1 : (key.x1 + key.x2) / 2;
        const int cy = (key.kind == Kind::Circle) ? key.y1 : (key.y1 + key.y2) / 2;
        QCOMPARE(cx, kLeft + int(std::lround(OutputPitch(*board) * (board->CellCol[k] - 1))));
        std::vector<CanvasOp> whiteTexts;
        for (const auto& op : Only(ops, Kind::Text))
            if (op.colour == kWhite)
                whiteTexts.push_back(op);
        const CanvasOp* digit = TextAt(whiteTexts, cx, cy);
        QVERIFY2(digit, "a white digit over each key node");
        QCOMPARE(digit->text, std::to_string(board->NodeValue(board->CellRow[k], board->CellCol[k])));
    }
    QCOMPARE(int(Only(ops, Kind::Text).size()) - int(TextsOf(ops, FooterText()).size()),
             nodes + 2 * board->GridSize * (board->GridSize + 1) + 3 + 2); // digits, key digits, marks
}

void BoardPictureTest::startEndMarksFollowStartSide_data()
{
    QTest::addColumn<int>("side");
    QTest::newRow("Random") << int(kSideRandom);
    QTest::newRow("Left") << int(kSideLeft);
    QTest::newRow("Top") << int(kSideTop);
}

void BoardPictureTest::startEndMarksFollowStartSide()
{
    QFETCH(int, side);
    const auto board = MakeBoard(7, side);
    const auto ops = Draw(*board, kPuzzleMode, DefaultOptions());
    const auto marks = TextsOf(ops, "X");
    if (side == kSideRandom) {
        QVERIFY(marks.empty());
        return;
    }
    QCOMPARE(int(marks.size()), 2);
    RecordingCanvas metric;
    const int far = kLeft + int(std::lround(OutputPitch(*board) * (board->BoardSpan - 1)));
    const int farTop = kTop + int(std::lround(OutputPitch(*board) * (board->BoardSpan - 1)));
    const TextSize size = metric.MeasureText("X", marks[0].font);
    const auto& start = marks[0];
    const auto& end = marks[1];
    if (side == kSideLeft) {
        QVERIFY(start.x1 + size.width < kLeft); // left of the board
        QVERIFY(end.x1 > far);                  // right of it
        QVERIFY(start.y1 < kTop && start.y1 + size.height > kTop); // beside row 1
    } else {
        QVERIFY(start.y1 + size.height < kTop); // above the board
        QVERIFY(end.y1 > farTop);               // below it
        QVERIFY(start.x1 < kLeft && start.x1 + size.width > kLeft);
    }
}

void BoardPictureTest::footerSitsBelowTheBoard()
{
    const auto board = MakeBoard(8, kSideTop);
    const auto ops = Draw(*board, kSolutionMode, DefaultOptions());
    const auto footer = TextsOf(ops, FooterText());
    QCOMPARE(int(footer.size()), 1);
    QCOMPARE(footer[0].font.points, 7.0);
    QCOMPARE(footer[0].colour, kBlack);
    const std::string homepage = TALLYON_HOMEPAGE;
    QCOMPARE(FooterText(), homepage.empty() ? std::string("Tallyon") : "Tallyon from " + homepage);
    // Below everything else drawn, "X" marks included.
    RecordingCanvas metric;
    for (const auto& op : ops) {
        if (op.kind == Kind::Text && op.text != FooterText())
            QVERIFY(op.y1 + metric.MeasureText(op.text, op.font).height < footer[0].y1);
        if (op.kind == Kind::Circle)
            QVERIFY(op.y1 + op.x2 < footer[0].y1);
    }
}

QTEST_APPLESS_MAIN(BoardPictureTest)
#include "board_picture_test.moc"
