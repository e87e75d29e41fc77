// The board picture keeps drawing calls, not pixels: whatever mix of calls is drawn, however
// many (a long list is painted into an image once and goes on from there), and across a
// Clear, the picture is the very image the same calls paint directly.
#include "platform/qpainter_canvas.h"
#include "shell/main_window/picture_box.h"

#include <QDir>
#include <QPainter>
#include <QtTest>

#include <cstdint>
#include <string>

using namespace tallyon;

namespace {

constexpr int kWidth = 240, kHeight = 160; // pixels
constexpr int kSpanX = kWidth * kTwipsPerPixel, kSpanY = kHeight * kTwipsPerPixel;

// A repeatable mix of every kind of call: pens, fills and no fills, three fonts, short and
// long texts (long ones are kept out of line by std::string).
class CallMix {
public:
    explicit CallMix(std::uint32_t seed) : state_(seed) {}

    void DrawOne(Canvas& canvas)
    {
        static const FontSpec fonts[] = {{"Arial", 9.0, false}, {"Arial", 9.0, true}, {"Times New Roman", 12.0, false}};
        static const std::string texts[] = {"7", "+", "Start", "a caption longer than any short string"};
        const int x1 = Draw(kSpanX), y1 = Draw(kSpanY), x2 = Draw(kSpanX), y2 = Draw(kSpanY);
        const Colour colour = Draw(1 << 24);
        switch (Draw(6)) {
        case 0:
            canvas.Line(x1, y1, x2, y2, colour, Draw(4));
            break;
        case 1:
            canvas.Box(x1, y1, x2, y2, colour, Draw(3) + 1);
            break;
        case 2:
            canvas.FilledBox(x1, y1, x1 + Draw(600), y1 + Draw(600), colour);
            break;
        case 3:
            canvas.Circle(x1, y1, Draw(400), colour, Draw(3) + 1, std::nullopt);
            break;
        case 4:
            canvas.Circle(x1, y1, Draw(400), colour, 1, static_cast<Colour>(Draw(1 << 24)));
            break;
        default:
            canvas.Text(x1, y1, texts[Draw(4)], fonts[Draw(3)], colour);
        }
    }

private:
    int Draw(int n)
    {
        state_ = state_ * 1664525U + 1013904223U;
        return static_cast<int>((state_ >> 8) % static_cast<std::uint32_t>(n));
    }
    std::uint32_t state_;
};

// Draws `calls` calls of the mix `seed` on a canvas.
void DrawMix(Canvas& canvas, std::uint32_t seed, int calls)
{
    CallMix mix(seed);
    for (int i = 0; i < calls; ++i)
        mix.DrawOne(canvas);
}

// The mix `seed` painted straight into an image on a ground, `rounds` times over.
QImage Direct(std::uint32_t seed, int calls, Colour ground, int rounds = 1)
{
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    QPainter painter(&image);
    QPainterCanvas canvas(painter, 96.0, 1.0);
    canvas.Clear(ground);
    for (int round = 0; round < rounds; ++round)
        DrawMix(canvas, seed, calls);
    return image;
}

} // namespace

class PictureBoxTest : public QObject {
    Q_OBJECT
private slots:
    void keptCallsPaintWhatTheCallsPaint()
    {
        PictureBox box;
        box.resize(kWidth, kHeight);
        const Colour ground = 0x336699;
        // A redraw's length, then lengths that go past the point where the list is painted
        // into an image, once and twice.
        for (const int calls : {1000, 10500, 25000}) {
            {
                const auto canvas = box.OpenCanvas();
                canvas->Clear(ground);
                DrawMix(*canvas, static_cast<std::uint32_t>(calls), calls);
            }
            const QImage picture = box.Image().convertToFormat(QImage::Format_RGB32);
            QDir().mkpath(TALLYON_SCREENSHOT_DIR);
            picture.save(QString(TALLYON_SCREENSHOT_DIR) + "/picture-box-" + QString::number(calls) + "-calls.png");
            QVERIFY2(picture == Direct(static_cast<std::uint32_t>(calls), calls, ground),
                     qPrintable(QString::number(calls) + " calls"));
        }
        // A second canvas draws over what the first drew: no Clear, nothing forgotten.
        for (int round = 0; round < 2; ++round) {
            const auto canvas = box.OpenCanvas();
            if (round == 0)
                canvas->Clear(ground);
            DrawMix(*canvas, 7, 300);
        }
        QCOMPARE(box.Image().convertToFormat(QImage::Format_RGB32), Direct(7, 300, ground, 2));
    }
};

QTEST_MAIN(PictureBoxTest)
#include "picture_box_test.moc"
