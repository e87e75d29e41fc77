// Board pictures painted with Qt at screen resolution and saved as screenshots for review.
#include "core/generator.h"
#include "platform/qpainter_canvas.h"
#include "play/controls.h"
#include "play/draw.h"
#include "play/linking.h"
#include "play/verify.h"
#include "play_fixture.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace tallyon::test {
namespace {

constexpr int kPixels = kPictureWidth / kTwipsPerPixel;

// A canvas that owns its painter on an image; painting ends when it is destroyed.
class ImageCanvas : public Canvas {
public:
    explicit ImageCanvas(QImage& image) : painter_(&image), inner_(painter_) {}
    void Clear(Colour c) override { inner_.Clear(c); }
    void Line(int x1, int y1, int x2, int y2, Colour c, int w) override { inner_.Line(x1, y1, x2, y2, c, w); }
    void Box(int x1, int y1, int x2, int y2, Colour c, int w) override { inner_.Box(x1, y1, x2, y2, c, w); }
    void FilledBox(int x1, int y1, int x2, int y2, Colour f) override { inner_.FilledBox(x1, y1, x2, y2, f); }
    void Circle(int cx, int cy, int r, Colour c, int w, std::optional<Colour> f) override
    {
        inner_.Circle(cx, cy, r, c, w, f);
    }
    void Text(int x, int y, const std::string& t, const FontSpec& f, Colour c) override { inner_.Text(x, y, t, f, c); }
    TextSize MeasureText(const std::string& t, const FontSpec& f) override { return inner_.MeasureText(t, f); }

private:
    QPainter painter_;
    QPainterCanvas inner_;
};

class ImageHost : public FakeHost {
public:
    QImage image{kPixels, kPixels, QImage::Format_RGB32};
    std::unique_ptr<Canvas> OpenBoardCanvas() override { return std::make_unique<ImageCanvas>(image); }
};

// The look of a fresh install: black grid and nodes, white digits, dark red links.
DrawStyle FreshStyle()
{
    DrawStyle style;
    style.GridColour = RGB(0, 0, 0);
    style.ShapeColour = RGB(0, 0, 0);
    style.FontColour = RGB(255, 255, 255);
    style.UserLineColour = RGB(128, 0, 0);
    style.Background = RGB(255, 255, 255);
    style.GridLineWidth = 1;
    style.NodeShape = 2;
    return style;
}

QRgb PixelAt(const QImage& image, int xTwips, int yTwips)
{
    return image.pixel(xTwips / kTwipsPerPixel, yTwips / kTwipsPerPixel);
}

void Save(const QImage& image, const char* name)
{
    const std::string path = std::string(TALLYON_SCREENSHOT_DIR) + "/" + name;
    EXPECT_TRUE(image.save(QString::fromStdString(path))) << path;
}

void LinkFirstPathCells(ImageHost& host, Board& board, PlayState& state, std::size_t count)
{
    for (std::size_t i = 1; i < board.List2.size() && i < 2 * count; i += 2) {
        const int cell = std::stoi(board.List2[i]);
        ClickCell(host, board, state, board.CellRow[cell], board.CellCol[cell]);
    }
}

TEST(Render, FreshInstallBoardWithLinks)
{
    Board board;
    ImageHost host;
    PlayState state;
    host.style = FreshStyle();
    host.gridSizeLabel = {"7x7", "7"};
    NewPuzzle(host, board, state, 1);
    LinkFirstPathCells(host, board, state, 6);
    Save(host.image, "play_board_fresh_7.png");

    const int sx = board.CellX(board.CellRow[board.StartNode], board.CellCol[board.StartNode]);
    const int sy = board.CellY(board.CellRow[board.StartNode], board.CellCol[board.StartNode]);
    EXPECT_EQ(host.image.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_EQ(PixelAt(host.image, sx, sy + board.CellBase * 3 / 4), qRgb(0, 0, 0)); // inside the node
    const std::string hint = "Use";
    HoverCell(host, board, state, static_cast<float>(board.CellX(1, 2)), static_cast<float>(board.CellY(1, 2)));
    EXPECT_EQ(host.status.substr(0, 3), hint);
    RedrawBoard(host, board);
    Save(host.image, "play_redrawn_fresh_7.png");
}

TEST(Render, SolutionOfALargeTopPuzzle)
{
    Board board;
    ImageHost host;
    PlayState state;
    host.style = FreshStyle();
    host.gridSizeLabel = {"10x10", "10"};
    host.startSideLabel = {"Top", "2"};
    NewPuzzle(host, board, state, 1);
    ShowSolution(host, board);
    Save(host.image, "play_solution_top_10.png");
    HideSolution(host, board);
    Save(host.image, "play_hidden_top_10.png");
}

TEST(Render, BoxNodesWithAWrongLinkInAnotherScheme)
{
    Board board;
    ImageHost host;
    PlayState state;
    host.style.GridColour = RGB(64, 64, 64);
    host.style.ShapeColour = RGB(212, 208, 200);
    host.style.FontColour = RGB(10, 36, 106);
    host.style.UserLineColour = RGB(0, 120, 0);
    host.style.Background = RGB(255, 255, 255);
    host.style.GridLineWidth = 2;
    host.style.NodeShape = 1;
    host.gridSizeLabel = {"4x4", "4"};
    NewPuzzle(host, board, state, 1);
    LinkFirstPathCells(host, board, state, 3);
    // A wrong link somewhere off the path, if the board has one in its second row of links.
    for (int col = 2; col < board.BoardSpan; col += 2) {
        int c = board.NodeValue(board.BoardSpan, col + 1);
        if (CheckMath(0, board.NodeValue(board.BoardSpan, col - 1), board.NodeValue(board.BoardSpan, col), c) != 0) {
            ClickCell(host, board, state, board.BoardSpan, col);
            break;
        }
    }
    Save(host.image, "play_board_boxes_4.png");
}

} // namespace
} // namespace tallyon::test
