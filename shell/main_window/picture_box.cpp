// The board picture with its backing image, and the clickable labels of the main window.
#include "shell/main_window/picture_box.h"

#include "platform/device_pixels.h"
#include "platform/qpainter_canvas.h"
#include "platform/qt_colour.h"
#include "ui/box_control.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace tallyon {
namespace {

constexpr int kFocusFrameInset = 3; // the labels' focus frame inside their raised panel, pixels

// Past this many calls since the last Clear the list is painted into an image once: a game
// that runs long without a full redraw then keeps an image, not an ever longer list. A full
// redraw of a 10x10 board takes about a thousand.
constexpr std::size_t kMostKept = 10000;
// A list kept past a full redraw's length gives its memory back when it is forgotten.
constexpr std::size_t kRedrawCalls = 2048;
static_assert(kMostKept <= 65535, "every font of a list has a 16-bit place");

float ToTwips(double pixels) { return static_cast<float>(pixels * kTwipsPerPixel); }

} // namespace

PictureBox::PictureBox(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

// Records the calls into the box's list, or into its overlay; measuring is done on a small
// image of the screen's resolution, as painting will; the box repaints when the canvas goes.
class PictureBox::ListCanvas : public Canvas {
public:
    ListCanvas(PictureBox& box, bool overlay)
        : box_(box), calls_(overlay ? box.overlay_ : box.list_), overlay_(overlay), probe_(1, 1, QImage::Format_RGB32)
    {
        probe_.setDevicePixelRatio(box.devicePixelRatioF());
    }
    ~ListCanvas() override { box_.update(); }

    void Clear(Colour background) override
    {
        calls_.Forget();
        if (overlay_)
            return;
        box_.painted_ = QImage();
        box_.ground_ = background;
    }
    void Line(int x1, int y1, int x2, int y2, Colour colour, int pen) override
    {
        Keep({Drawn::Kind::Line, false, 0, x1, y1, x2, y2, colour, pen, 0, 0});
    }
    void Box(int x1, int y1, int x2, int y2, Colour colour, int pen) override
    {
        Keep({Drawn::Kind::Box, false, 0, x1, y1, x2, y2, colour, pen, 0, 0});
    }
    void FilledBox(int x1, int y1, int x2, int y2, Colour fill) override
    {
        Keep({Drawn::Kind::FilledBox, false, 0, x1, y1, x2, y2, fill, 0, 0, 0});
    }
    void Circle(int cx, int cy, int radius, Colour outline, int pen, std::optional<Colour> fill) override
    {
        Keep({Drawn::Kind::Circle, fill.has_value(), 0, cx, cy, radius, 0, outline, pen, fill.value_or(0), 0});
    }
    void Text(int x, int y, const std::string& text, const FontSpec& font, Colour colour) override
    {
        calls_.KeepText(x, y, text, font, colour);
        Kept();
    }
    TextSize MeasureText(const std::string& text, const FontSpec& font) override
    {
        QPainter painter(&probe_);
        return QPainterCanvas(painter, 96.0, 1.0).MeasureText(text, font);
    }

private:
    void Keep(const Drawn& drawn)
    {
        calls_.drawn.push_back(drawn);
        Kept();
    }
    // The overlay lives only while a key is held and stays short; the picture's own list is
    // painted into an image when it grows long.
    void Kept()
    {
        if (!overlay_)
            box_.KeepOnPicture();
    }

    PictureBox& box_;
    Calls& calls_;
    bool overlay_;
    QImage probe_;
};

std::unique_ptr<Canvas> PictureBox::OpenCanvas() { return std::make_unique<ListCanvas>(*this, false); }

std::unique_ptr<Canvas> PictureBox::OpenOverlayCanvas() { return std::make_unique<ListCanvas>(*this, true); }

void PictureBox::ClearOverlay()
{
    overlay_.Forget();
    update();
}

void PictureBox::Calls::KeepText(int x, int y, const std::string& text, const FontSpec& font, Colour colour)
{
    const auto same = [&font](const FontSpec& f) {
        return f.points == font.points && f.bold == font.bold && f.family == font.family;
    };
    auto place = std::find_if(fonts.begin(), fonts.end(), same);
    if (place == fonts.end())
        place = fonts.insert(fonts.end(), font);
    const auto fontAt = static_cast<std::uint16_t>(place - fonts.begin());
    texts.push_back(text);
    drawn.push_back(
        {Drawn::Kind::Text, false, fontAt, x, y, 0, 0, colour, 0, 0, static_cast<std::uint32_t>(texts.size() - 1)});
}

void PictureBox::KeepOnPicture()
{
    if (list_.drawn.size() < kMostKept)
        return;
    QImage image(size() * devicePixelRatioF(), QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&image);
    PaintOwn(painter);
    painter.end();
    painted_ = image;
    list_.Forget();
}

void PictureBox::Calls::Forget()
{
    if (drawn.capacity() > kRedrawCalls) {
        drawn = {};
        texts = {};
    }
    drawn.clear();
    texts.clear();
    fonts.clear();
}

void PictureBox::Calls::PaintOn(Canvas& canvas) const
{
    for (const Drawn& d : drawn) {
        switch (d.kind) {
        case Drawn::Kind::Line:
            canvas.Line(d.x1, d.y1, d.x2, d.y2, d.colour, d.pen);
            break;
        case Drawn::Kind::Box:
            canvas.Box(d.x1, d.y1, d.x2, d.y2, d.colour, d.pen);
            break;
        case Drawn::Kind::FilledBox:
            canvas.FilledBox(d.x1, d.y1, d.x2, d.y2, d.colour);
            break;
        case Drawn::Kind::Circle:
            canvas.Circle(d.x1, d.y1, d.x2, d.colour, d.pen, d.filled ? std::optional<Colour>(d.fill) : std::nullopt);
            break;
        case Drawn::Kind::Text:
            canvas.Text(d.x1, d.y1, texts[d.text], fonts[d.font], d.colour);
            break;
        }
    }
}

void PictureBox::PaintOwn(QPainter& painter) const
{
    painter.fillRect(QRect(QPoint(0, 0), size()), ToQColor(ground_.value_or(back_)));
    if (!painted_.isNull()) {
        // Pixel for pixel where the widget starts part of a device pixel into its window.
        const DevicePixels pixels(painter);
        if (pixels.Snaps())
            pixels.Blit(painter, QPoint(pixels.EdgeX(0), pixels.EdgeY(0)), painted_);
        else
            painter.drawImage(QPointF(0, 0), painted_);
    }
    QPainterCanvas canvas(painter, 96.0, 1.0);
    list_.PaintOn(canvas);
}

void PictureBox::PaintPicture(QPainter& painter) const
{
    PaintOwn(painter);
    QPainterCanvas canvas(painter, 96.0, 1.0);
    overlay_.PaintOn(canvas);
}

QImage PictureBox::Image() const
{
    QImage image(size() * devicePixelRatioF(), QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&image);
    PaintPicture(painter);
    return image;
}

void PictureBox::SetBackColour(Colour colour) { back_ = colour; }

void PictureBox::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    PaintPicture(painter);
}

void PictureBox::mouseMoveEvent(QMouseEvent* event)
{
    emit MouseMove(MouseButtonsCode(event->buttons()), ShiftCode(event->modifiers()), ToTwips(event->position().x()),
                   ToTwips(event->position().y()));
}

void PictureBox::mouseReleaseEvent(QMouseEvent* event)
{
    emit MouseUp(MouseButtonCode(event->button()), ShiftCode(event->modifiers()), ToTwips(event->position().x()),
                 ToTwips(event->position().y()));
}

ClickLabel::ClickLabel(QWidget* parent) : QLabel(parent) { setFocusPolicy(Qt::TabFocus); }

void ClickLabel::mouseReleaseEvent(QMouseEvent* event) { emit MouseUp(MouseButtonCode(event->button())); }

void ClickLabel::keyReleaseEvent(QKeyEvent* event)
{
    if (IsPressKey(event) && !event->isAutoRepeat()) {
        emit MouseUp(1);
        return;
    }
    QLabel::keyReleaseEvent(event);
}

void ClickLabel::paintEvent(QPaintEvent* event)
{
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1, Qt::DotLine));
    painter.drawRect(rect().adjusted(kFocusFrameInset, kFocusFrameInset, -kFocusFrameInset - 1, -kFocusFrameInset - 1));
}

void ClickLabel::focusInEvent(QFocusEvent* event)
{
    QLabel::focusInEvent(event);
    update();
}

void ClickLabel::focusOutEvent(QFocusEvent* event)
{
    QLabel::focusOutEvent(event);
    update();
}

} // namespace tallyon
