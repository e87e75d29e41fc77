// Board drawing: geometry and draw order on the recording canvas, and pictures painted with Qt
// at screen resolution, saved as screenshots for review.
#include "play/draw.h"

#include "platform/qpainter_canvas.h"
#include "play/controls.h"
#include "play_fixture.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <set>

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
    EXPECT_EQ(std::vector<int>({first[0], first[1], last[1], first[2], first[3], last[4]}),
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
        if (op->kind == Kind::Circle)
            drawn.insert({op->x1, op->y1});
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

// Makes a puzzle in the look of a fresh install (black grid and nodes, white digits, dark red
// links), lets `play` act on it while the host paints onto an image, and saves the picture.
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
    play(host, board, state);
    painter.end();
    const std::string path = std::string(TALLYON_SCREENSHOT_DIR) + "/" + name;
    EXPECT_TRUE(image.save(QString::fromStdString(path))) << path;
}

TEST(Render, FreshInstallBoardWithLinksAndASolutionFromTheTop)
{
    Render("play_board_fresh_7.png", "7", "1", [](FakeHost& host, Board& board, PlayState& state) {
        for (std::size_t i = 1; i < board.List2.size() && i < 12; i += 2) {
            const int cell = std::stoi(board.List2[i]);
            ClickCell(host, board, state, board.CellRow[cell], board.CellCol[cell]);
        }
    });
    Render("play_solution_top_10.png", "10", "2", [](FakeHost& host, Board& board, PlayState&) {
        ShowSolution(host, board);
        EXPECT_EQ(host.status, "Solution ...");
    });
}

} // namespace
} // namespace tallyon::test
