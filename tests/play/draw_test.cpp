// Board drawing: geometry and draw order on the recording canvas, and pictures painted with Qt
// at screen resolution, checked by their pixels and saved as screenshots for review.
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
        const bool mark = (op.kind == Kind::Circle && !op.filled) || op.text == "X";
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

// A node is outlined in the colour it is drawn with (the digits' colour), not the grid's, as
// a circle and as a box.
TEST(DrawCell, NodesAreOutlinedInTheForeColour)
{
    Board board;
    MakeRowPuzzle(board, 7);
    for (const int shape : {2, 1}) {
        QImage image(kPictureWidth / kTwipsPerPixel, kPictureWidth / kTwipsPerPixel, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QPainterCanvas canvas(painter);
        DrawStyle style{RGB(255, 0, 0), RGB(0, 0, 255), RGB(0, 160, 0), RGB(128, 0, 0), RGB(255, 255, 255), 4, shape};
        DrawCellAsNode(canvas, board, style, 5, 5);
        painter.end();
        image.save(QString(TALLYON_SCREENSHOT_DIR) + QString("/play_node_outline_%1.png").arg(shape));
        // Outward from the centre, along the row through it: fill, then outline, then paper.
        const int cx = board.CellX(5, 5) / kTwipsPerPixel, y = board.CellY(5, 5) / kTwipsPerPixel;
        int x = cx;
        while (image.pixelColor(x + 1, y) != QColor(Qt::white))
            ++x;
        const QColor edge = image.pixelColor(x - 1, y);
        EXPECT_TRUE(edge.green() > 100 && edge.red() < 100) << "shape " << shape << ": " << edge.name().toStdString();
        const QColor inside = image.pixelColor(cx + 2, y - 4);
        EXPECT_EQ(inside, QColor(0, 0, 255)) << "shape " << shape;
    }
}

// A GridLineWidth from a damaged file draws as wide as a cell pitch at most, links three times
// that, without overflow or a huge cached circle.
TEST(DrawBoard, HugeGridLineWidthDrawsAsOnePitch)
{
    Board board;
    MakeRowPuzzle(board, 7);
    board.UserRight(3, 1) = board.UserLeft(3, 3) = 1;
    DrawStyle style = TestStyle();
    style.GridLineWidth = 2147483647;
    RecordingCanvas ops;
    DrawBoard(ops, board, style, 0);
    for (const CanvasOp& op : ops.Ops()) {
        if (op.kind != CanvasOp::Kind::Text && op.kind != CanvasOp::Kind::Clear &&
            op.kind != CanvasOp::Kind::FilledBox) {
            EXPECT_TRUE(op.penWidth > 0 && op.penWidth <= 3 * board.CellPitch / kTwipsPerPixel) << op.penWidth;
        }
    }
    QImage image(kPictureWidth / kTwipsPerPixel, kPictureWidth / kTwipsPerPixel, QImage::Format_RGB32);
    QPainter painter(&image);
    QPainterCanvas canvas(painter);
    DrawBoard(canvas, board, style, 0);
}

// Makes a puzzle in the look of a fresh install (black grid and nodes, white digits, dark red
// links), lets `play` act on it while the host paints onto an image (which it may look at),
// and saves the picture.
template <typename Play>
void Render(const char* name, const std::string& size, const std::string& side, Play play)
{
    QImage image(kPictureWidth / kTwipsPerPixel, kPictureWidth / kTwipsPerPixel, QImage::Format_RGB32);
    QPainter painter(&image);
    QPainterCanvas canvas(painter);
    Board board;
    FakeHost host;
    PlayState state;
    host.target = &canvas;
    host.style = {RGB(0, 0, 0), RGB(0, 0, 0), RGB(255, 255, 255), RGB(128, 0, 0), RGB(255, 255, 255)};
    host.next = {std::stoi(size), std::stoi(side)};
    NewPuzzle(host, board, state, 1);
    play(host, board, state, image);
    painter.end();
    const std::string path = std::string(TALLYON_SCREENSHOT_DIR) + "/" + name;
    EXPECT_TRUE(image.save(QString::fromStdString(path))) << path;
}

TEST(Render, FreshInstallBoardWithLinksAndASolutionFromTheTop)
{
    Render("play_board_fresh_7.png", "7", "1", [](FakeHost& host, Board& board, PlayState& state, const QImage& image) {
        for (std::size_t i = 1; i < board.List2.size() && i < 12; i += 2) {
            const int cell = std::stoi(board.List2[i]);
            ClickCell(host, board, state, board.CellRow[cell], board.CellCol[cell]);
        }
        // A quarter of the way along each link made, the line shows in the link colour.
        for (std::size_t i = 0; i + 2 < board.List2.size() && i < 12; i += 2) {
            const int from = std::stoi(board.List2[i]), to = std::stoi(board.List2[i + 2]);
            const int x = (3 * board.CellX(board.CellRow[from], board.CellCol[from]) +
                           board.CellX(board.CellRow[to], board.CellCol[to])) /
                          4;
            const int y = (3 * board.CellY(board.CellRow[from], board.CellCol[from]) +
                           board.CellY(board.CellRow[to], board.CellCol[to])) /
                          4;
            EXPECT_EQ(image.pixelColor(x / kTwipsPerPixel, y / kTwipsPerPixel), QColor(128, 0, 0)) << "link " << i / 2;
        }
    });
    Render("play_solution_top_10.png", "10", "2", [](FakeHost& host, Board& board, PlayState&, const QImage&) {
        ShowSolution(host, board);
        EXPECT_EQ(host.status, "Solution ...");
    });
}

// The share of points around the ring of key node `key` (0 Start, 1 Hint, 2 End) that show
// the ring's colour.
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

// Linking at a key node, unlinking there and undoing both leave the rings of Start, Hint and
// End whole.
TEST(Render, KeyNodeRingsStayWholeThroughLinksUnlinksAndUndo)
{
    Render("play_key_rings_7.png", "7", "1", [](FakeHost& host, Board& board, PlayState& state, const QImage& image) {
        const auto rings = [&] {
            return std::vector<double>{RingShown(board, image, 0), RingShown(board, image, 1),
                                       RingShown(board, image, 2)};
        };
        const std::vector<double> whole = rings();
        EXPECT_EQ(whole, std::vector<double>({1.0, 1.0, 1.0}));
        // The path links at each key node: beside its List2 item.
        const std::size_t hint = HintItemIndex(board.List2.size()), last = board.List2.size() - 1;
        std::vector<std::pair<int, int>> links;
        for (const std::size_t i : {std::size_t(1), hint - 1, hint + 1, last - 1}) {
            const int cell = std::stoi(board.List2[i]);
            links.push_back({board.CellRow[cell], board.CellCol[cell]});
        }
        for (const auto& [row, col] : links) {
            ClickCell(host, board, state, row, col, 1);
            EXPECT_EQ(rings(), whole) << "link at " << row << "," << col;
        }
        for (const auto& [row, col] : links) {
            ClickCell(host, board, state, row, col, 2);
            EXPECT_EQ(rings(), whole) << "unlink at " << row << "," << col;
        }
        while (!state.undolist.empty()) {
            UndoMove(host, board, state, 1);
            EXPECT_EQ(rings(), whole) << "undo, " << state.undolist.size() << " records left";
        }
    });
}

} // namespace
} // namespace tallyon::test
