// Board drawing: geometry and draw order on the recording canvas, and the key-node rings
// painted with Qt at screen resolution, checked by their pixels and saved as a screenshot.
#include "play/draw.h"

#include "platform/qpainter_canvas.h"
#include "play/controls.h"
#include "play/undo.h"
#include "play_fixture.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <utility>
#include <vector>

namespace tallyon::test {
namespace {

using Kind = CanvasOp::Kind;

class DrawBoardAt : public ::testing::TestWithParam<int> {};

TEST_P(DrawBoardAt, GridCellsLinksAndMarksInOrderOnTheLattice)
{
    const int n = GetParam(), pitch = 4 * (134 - 11 * (n - 6));
    Board board;
    MakeRowPuzzle(board, n);
    board.UserRight(5, 1) = board.UserLeft(5, 3) = board.UserDown(7, 7) = board.UserUp(9, 7) = 1;
    const DrawStyle style = TestStyle();
    RecordingCanvas canvas;
    DrawBoard(canvas, board, style, 0);
    const std::vector<CanvasOp>& ops = canvas.Ops();
    ASSERT_EQ(board.CellPitch, pitch);

    // Order: the clear, the grid, every node and cell digit, the links (each followed by its
    // ends and link cell again), then the marks.
    std::vector<int> first(5, -1), last(5, -1);
    for (int i = 0; i < static_cast<int>(ops.size()); ++i) {
        const CanvasOp& op = ops[static_cast<std::size_t>(i)];
        const bool mark = IsMark(op);
        const int phase = op.kind == Kind::Clear                                   ? 0
                          : op.kind == Kind::Line && op.colour == style.GridColour ? 1
                          : op.colour == style.UserLineColour                      ? 3
                                                                                   : (mark ? 4 : 2);
        first[phase] = first[phase] < 0 ? i : first[phase];
        last[phase] = i;
    }
    const int cells = (n + 1) * (n + 1) + 2 * n * (n + 1); // nodes and link cells, two ops each
    EXPECT_EQ(
        std::vector<int>({first[0], first[1], last[1], first[2], first[3], last[4]}),
        std::vector<int>({0, 1, 2 * (n + 1), last[1] + 1, first[2] + 2 * cells, static_cast<int>(ops.size()) - 1}));
    EXPECT_LT(last[3], first[4]);
    EXPECT_EQ(ops[0].colour, style.Background);

    // Nodes and digits sit on the lattice, digits at the board's size; the grid runs through
    // every row and every column of nodes, first node to last, at GridLineWidth.
    std::set<std::pair<int, int>> nodes, drawn;
    for (int row = 1; row <= board.BoardSpan; row += 2)
        for (int col = 1; col <= board.BoardSpan; col += 2)
            nodes.insert({(col - 1) * pitch + board.BoardLeft, (row - 1) * pitch + board.BoardTop});
    for (auto op = ops.begin() + first[2]; op != ops.begin() + first[3]; ++op) {
        if (op->kind == Kind::Circle) {
            drawn.insert({op->x1, op->y1});
            EXPECT_EQ(op->colour, style.FontColour) << "node outlines take the digits' colour";
            EXPECT_TRUE(op->filled && op->fill == style.ShapeColour);
        }
        const TextSize size = canvas.MeasureText(op->text, op->font);
        if (op->kind == Kind::Text) {
            EXPECT_DOUBLE_EQ(op->font.points, board.FontSize);
            EXPECT_LE((op->x1 + size.width / 2 - board.BoardLeft) % pitch, 1);
            EXPECT_LE((op->y1 + size.height / 2 - board.BoardTop) % pitch, 1);
        }
    }
    EXPECT_EQ(drawn, nodes);
    const int edge = board.BoardLeft, far = edge + 2 * n * pitch;
    for (auto line = ops.begin() + first[1]; line != ops.begin() + first[2]; ++line) {
        EXPECT_TRUE(nodes.count({line->x1, line->y1}) && nodes.count({line->x2, line->y2}));
        EXPECT_TRUE((line->x1 == edge && line->x2 == far) || (line->y1 == edge && line->y2 == far));
        EXPECT_EQ(line->penWidth, style.GridLineWidth);
    }
}

INSTANTIATE_TEST_SUITE_P(GridSizes, DrawBoardAt, ::testing::Values(4, 10));

// A box node, like a round one, is filled with the shape colour and outlined in the digits'
// colour, not the grid's.
TEST(DrawCell, BoxNodesAreOutlinedInTheDigitColour)
{
    Board board;
    MakeRowPuzzle(board, 4);
    DrawStyle style = TestStyle();
    style.NodeShape = kBoxNodes;
    RecordingCanvas canvas;
    DrawCellAsNode(canvas, board, style, 5, 5);
    ASSERT_EQ(canvas.OpsOf(Kind::Box).size(), 1u);
    EXPECT_EQ(canvas.OpsOf(Kind::Box)[0].colour, style.FontColour);
    ASSERT_EQ(canvas.OpsOf(Kind::FilledBox).size(), 1u);
    EXPECT_EQ(canvas.OpsOf(Kind::FilledBox)[0].fill, style.ShapeColour);
}

// The "X"s go above Start and below End only for a puzzle laid from the top; every other
// start side, the path directions 3 and 4 of a hand-edited settings file among them, puts
// them beside, as for a puzzle from the left.
TEST(DrawMarks, XsBesideTheEndsUnlessLaidFromTheTop)
{
    auto marks = [](int side) {
        Board board;
        MakeRowPuzzle(board, 4);
        board.StartSide = side;
        RecordingCanvas canvas;
        DrawMarks(canvas, board, TestStyle());
        std::vector<std::pair<int, int>> xs;
        for (const CanvasOp& op : canvas.Ops())
            if (op.text == "X")
                xs.emplace_back(op.x1, op.y1);
        return xs;
    };
    const auto beside = marks(kSideLeft), above = marks(kSideTop);
    ASSERT_EQ(beside.size(), 2u);
    EXPECT_EQ(beside[0].second, beside[1].second) << "Start and End of a row puzzle share a row";
    EXPECT_NE(above[0].second, above[1].second);
    EXPECT_EQ(marks(3), beside);
    EXPECT_EQ(marks(4), beside);
}

// The share of points around the ring of key node `key` (0 Start, 1 Hint, 2 End) that show
// the ring's colour, within two pixels of its radius.
double RingShown(const Board& board, const QImage& image, std::size_t key)
{
    const int k = board.KeyNodes[key];
    const double cx = board.CellX(board.CellRow[k], board.CellCol[k]) / double(kTwipsPerPixel);
    const double cy = board.CellY(board.CellRow[k], board.CellCol[k]) / double(kTwipsPerPixel);
    const double r = RoundHalfEven(1.45 * board.CellBase) / double(kTwipsPerPixel);
    const QColor ring = key == 1 ? QColor(20, 20, 200) : QColor(230, 0, 0);
    int shown = 0;
    constexpr int kPoints = 120;
    for (int i = 0; i < kPoints; ++i) {
        const double a = 2 * M_PI * i / kPoints;
        bool found = false;
        for (double d = -2; d <= 2 && !found; d += 0.5) {
            const QColor c = image.pixelColor(int(std::lround(cx + (r + d) * std::cos(a))),
                                              int(std::lround(cy + (r + d) * std::sin(a))));
            found =
                std::abs(c.red() - ring.red()) + std::abs(c.green() - ring.green()) + std::abs(c.blue() - ring.blue()) <
                120;
        }
        shown += found ? 1 : 0;
    }
    return double(shown) / kPoints;
}

// On a puzzle in the look of a fresh install, painted with Qt: linking at a key node,
// unlinking there and undoing both leave the rings of Start, Hint and End whole.
TEST(Render, KeyNodeRingsStayWholeThroughLinksUnlinksAndUndo)
{
    QImage image(kPictureWidth / kTwipsPerPixel, kPictureWidth / kTwipsPerPixel, QImage::Format_RGB32);
    QPainter painter(&image);
    QPainterCanvas canvas(painter);
    Board board;
    FakeHost host;
    PlayState state;
    host.target = &canvas;
    host.style = {RGB(0, 0, 0), RGB(0, 0, 0), RGB(255, 255, 255), RGB(128, 0, 0), RGB(255, 255, 255)};
    NewPuzzle(host, board, state, 1);
    const auto rings = [&] {
        return std::vector<double>{RingShown(board, image, 0), RingShown(board, image, 1), RingShown(board, image, 2)};
    };
    EXPECT_EQ(rings(), std::vector<double>({1.0, 1.0, 1.0}));
    // The path links at each key node: beside its List2 item.
    const std::size_t hint = HintItemIndex(board.List2.size()), last = board.List2.size() - 1;
    for (const int button : {1, 2})
        for (const std::size_t i : {std::size_t(1), hint - 1, hint + 1, last - 1}) {
            const int cell = std::stoi(board.List2[i]);
            ClickCell(host, board, state, board.CellRow[cell], board.CellCol[cell], button);
            EXPECT_EQ(rings(), std::vector<double>({1.0, 1.0, 1.0})) << "button " << button << " at " << cell;
        }
    while (!state.undolist.empty()) {
        UndoMove(host, board, state, 1);
        EXPECT_EQ(rings(), std::vector<double>({1.0, 1.0, 1.0})) << "undo, " << state.undolist.size() << " left";
    }
    painter.end();
    image.save(QString(TALLYON_SCREENSHOT_DIR) + "/play_key_rings_7.png");
}

} // namespace
} // namespace tallyon::test
