// The four kinds of deduction a hint shows, each on a small crafted board painted with Qt as the
// window paints it: the hint's second press changes the pixels where it says (rings around the
// nodes to look at, the forced link in its colour, the ruled-out links paler) and nowhere else.
// The pictures are kept under build/screenshots as hint-<kind>.png; docs/ holds copies for the
// help page and the README.
#include "core/reasoning/hint.h"
#include "platform/qpainter_canvas.h"
#include "play/draw.h"
#include "play/hint.h"
#include "play_fixture.h"
#include "tests/core/test_support.h"

#include <QDir>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace tallyon::test {
namespace {

// Wide enough for a 4x4 board and the "X"s a pitch outside it: 440 pixels.
constexpr int kPictureSide = 6600;

// The look of a fresh install: black round nodes with white digits, a black grid, dark red
// links, on the xp scheme's background, its entry 12 for the crosses.
DrawStyle FreshInstallStyle()
{
    DrawStyle style;
    style.GridColour = RGB(0, 0, 0);
    style.ShapeColour = RGB(0, 0, 0);
    style.FontColour = RGB(255, 255, 255);
    style.UserLineColour = RGB(128, 0, 0);
    style.Background = RGB(236, 233, 216);
    style.MarkColour = RGB(128, 128, 128);
    return style;
}

struct Kind {
    const char* name;
    Rule rule;
    std::vector<int> path; // nodes of the 5 x 5 lattice, 0 to 24 row by row, Start first
    const char* valid;     // the valid links; every other link cell holds a 3
    const char* made;      // the player's links
};

//    Dead end: 0 and 5 hang on Start by one link; Start then has one way on.
//    Forced link: the Hint (12) has just the two links it needs; decoys make small rings.
//    Pocket: the square top right is joined on by End alone; End then has one way on.
//    Region: the player made Start's and End's links and the Hint's two; the free nodes along
//    the top lead from one end of the Hint's chain back to its other end.
const Kind kKinds[] = {
    {"dead-end", Rule::DeadEnd, {10, 11, 12, 13, 14}, "0-5 5-10 10-11 11-12 12-13 13-14 2-7 7-12 17-18 18-13", ""},
    {"forced-link",
     Rule::TakeLinks,
     {10, 11, 12, 13, 14},
     "10-11 11-12 12-13 13-14 5-10 10-15 5-6 15-16 6-11 16-11 2-3 3-8 8-7 7-2 17-18 18-23 23-22 22-17",
     ""},
    {"pocket",
     Rule::Pocket,
     {10, 11, 12, 13, 14},
     "10-11 11-12 12-13 13-14 0-1 0-5 1-6 5-6 6-11 3-4 3-8 4-9 8-9 9-14 15-16 16-21 21-20 20-15 15-10 17-18 18-23 "
     "23-22 22-17 17-12",
     ""},
    {"region",
     Rule::Region,
     {10, 11, 6, 7, 8, 13, 14},
     "10-11 6-11 6-7 7-8 8-13 13-14 1-6 1-2 2-3 3-8 11-16 16-17 17-18 13-18",
     "10-11 6-7 7-8 13-14"},
};

std::unique_ptr<Board> KindBoard(const Kind& kind)
{
    auto board = testing::CraftedBoard(4, kind.path, kind.valid);
    std::istringstream made(kind.made);
    for (std::string link; made >> link;)
        testing::MakeUserLink(*board, std::stoi(link), std::stoi(link.substr(link.find('-') + 1)));
    LayoutBoard(*board, kPictureSide);
    return board;
}

QImage Paint(const Board& board, const DrawStyle& style, const HintPicture* hint)
{
    const int side = kPictureSide / kTwipsPerPixel;
    QImage image(side, side, QImage::Format_RGB32);
    QPainter painter(&image);
    QPainterCanvas canvas(painter);
    DrawBoard(canvas, board, style, kPuzzleMode);
    if (hint)
        DrawHint(canvas, board, style, *hint);
    return image;
}

// How far apart two colours are, the largest difference of one channel.
int Distance(QColor a, Colour b)
{
    return std::max({std::abs(a.red() - RedOf(b)), std::abs(a.green() - GreenOf(b)), std::abs(a.blue() - BlueOf(b))});
}

// How close the pixels within two of a point (in twips of the picture) come to a colour: the
// line or ring there is drawn smoothed.
int Near(const QImage& image, double x, double y, Colour colour)
{
    const int cx = int(std::lround(x / kTwipsPerPixel)), cy = int(std::lround(y / kTwipsPerPixel));
    int nearest = 255;
    for (int dy = -2; dy <= 2; ++dy)
        for (int dx = -2; dx <= 2; ++dx)
            nearest = std::min(nearest, Distance(image.pixelColor(cx + dx, cy + dy), colour));
    return nearest;
}

double X(const Board& b, int col) { return b.BoardLeft + b.CellPitch * (col - 1.0); }
double Y(const Board& b, int row) { return b.BoardTop + b.CellPitch * (row - 1.0); }

// The pixels a hint may change: around each ringed node, along the forced link and across
// each ruled-out link, with the key nodes' rings drawn again over a forced link.
QImage Allowed(const Board& b, const Hint& hint, QSize size)
{
    QImage allowed(size, QImage::Format_RGB32);
    allowed.fill(Qt::white);
    QPainter painter(&allowed);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const double pitch = b.CellPitch / double(kTwipsPerPixel);
    const auto disc = [&](CellAt c, double radius) {
        painter.drawEllipse(QPointF(X(b, c.col), Y(b, c.row)) / kTwipsPerPixel, radius * pitch, radius * pitch);
    };
    for (const CellAt node : hint.look)
        disc(node, 0.55);
    for (const CellAt link : hint.ruledOut)
        disc(link, 0.85);
    disc(hint.link, 1.4);
    for (const int key : b.KeyNodes)
        disc({b.CellRow[key], b.CellCol[key]}, 0.45);
    return allowed;
}

TEST(HintPictures, EachKindChangesThePixelsWhereItSaysAndNowhereElse)
{
    const DrawStyle style = FreshInstallStyle();
    QDir().mkpath(TALLYON_SCREENSHOT_DIR);
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        const auto board = KindBoard(kind);
        const Hint hint = FindHint(*board);
        ASSERT_EQ(hint.kind, HintKind::Deduction) << hint.first;
        EXPECT_EQ(hint.rule, kind.rule) << hint.first;
        const HintPicture picture = HintPictureOf(hint, HintStage::Second);
        const QImage plain = Paint(*board, style, nullptr), shown = Paint(*board, style, &picture);
        shown.save(QString(TALLYON_SCREENSHOT_DIR) + "/hint-" + kind.name + ".png");

        // A ring around each node to look at, seen on the diagonal, clear of the grid.
        const double ring = 0.45 * board->CellPitch / std::sqrt(2.0);
        for (const CellAt node : hint.look)
            EXPECT_LE(Near(shown, X(*board, node.col) + ring, Y(*board, node.row) + ring, kHintLookColour), 16);
        // The forced link, between its node and its link cell's digit.
        const bool across = hint.link.row % 2 == 1;
        const double off = 0.3 * board->CellPitch;
        EXPECT_LE(Near(shown, X(*board, hint.link.col) - (across ? off : 0),
                       Y(*board, hint.link.row) - (across ? 0 : off), kForcedLinkColour),
                  16);
        // Each ruled-out link's digit paler than it was: its darkest pixel lighter. A node that
        // takes its links rules nothing out.
        EXPECT_EQ(hint.ruledOut.empty(), kind.rule == Rule::TakeLinks);
        for (const CellAt link : hint.ruledOut) {
            const int cx = int(X(*board, link.col) / kTwipsPerPixel), cy = int(Y(*board, link.row) / kTwipsPerPixel);
            int darkestPlain = 255, darkestShown = 255;
            for (int y = cy - 6; y <= cy + 6; ++y)
                for (int x = cx - 4; x <= cx + 4; ++x) {
                    darkestPlain = std::min(darkestPlain, qGray(plain.pixel(x, y)));
                    darkestShown = std::min(darkestShown, qGray(shown.pixel(x, y)));
                }
            EXPECT_GT(darkestShown, darkestPlain + 60) << link.row << "," << link.col;
        }
        // Nothing changes anywhere else.
        const QImage allowed = Allowed(*board, hint, plain.size());
        int changed = 0, outside = 0;
        for (int y = 0; y < plain.height(); ++y)
            for (int x = 0; x < plain.width(); ++x)
                if (plain.pixel(x, y) != shown.pixel(x, y)) {
                    ++changed;
                    outside += qGray(allowed.pixel(x, y)) != 0;
                }
        EXPECT_GT(changed, 100);
        EXPECT_EQ(outside, 0);
    }
}

} // namespace
} // namespace tallyon::test
