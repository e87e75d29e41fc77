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

// Records the calls into the box's list; measuring is done on a small image of the screen's
// resolution, as painting will; the box repaints when the canvas goes.
class PictureBox::ListCanvas : public Canvas {
public:
    explicit ListCanvas(PictureBox& box) : box_(box), probe_(1, 1, QImage::Format_RGB32)
    {
        probe_.setDevicePixelRatio(box.devicePixelRatioF());
    }
    ~ListCanvas() override { box_.update(); }

    void Clear(Colour background) override
    {
        box_.ForgetList();
        box_.painted_ = QImage();
        box_.ground_ = background;
    }
    void Line(int x1, int y1, int x2, int y2, Colour colour, int pen) override
    {
        box_.Keep({Drawn::Kind::Line, false, 0, x1, y1, x2, y2, colour, pen, 0, 0});
    }
    void Box(int x1, int y1, int x2, int y2, Colour colour, int pen) override
    {
        box_.Keep({Drawn::Kind::Box, false, 0, x1, y1, x2, y2, colour, pen, 0, 0});
    }
    void FilledBox(int x1, int y1, int x2, int y2, Colour fill) override
    {
        box_.Keep({Drawn::Kind::FilledBox, false, 0, x1, y1, x2, y2, fill, 0, 0, 0});
    }
    void Circle(int cx, int cy, int radius, Colour outline, int pen, std::optional<Colour> fill) override
    {
        box_.Keep({Drawn::Kind::Circle, fill.has_value(), 0, cx, cy, radius, 0, outline, pen, fill.value_or(0), 0});
    }
    void Text(int x, int y, const std::string& text, const FontSpec& font, Colour colour) override
    {
        box_.KeepText(x, y, text, font, colour);
    }
    TextSize MeasureText(const std::string& text, const FontSpec& font) override
    {
        QPainter painter(&probe_);
        return QPainterCanvas(painter, 96.0, 1.0).MeasureText(text, font);
    }

private:
    PictureBox& box_;
    QImage probe_;
};

std::unique_ptr<Canvas> PictureBox::OpenCanvas() { return std::make_unique<ListCanvas>(*this); }

void PictureBox::KeepText(int x, int y, const std::string& text, const FontSpec& font, Colour colour)
{
    const auto same = [&font](const FontSpec& f) {
        return f.points == font.points && f.bold == font.bold && f.family == font.family;
    };
    auto place = std::find_if(fonts_.begin(), fonts_.end(), same);
    if (place == fonts_.end())
        place = fonts_.insert(fonts_.end(), font);
    const auto fontAt = static_cast<std::uint16_t>(place - fonts_.begin());
    texts_.push_back(text);
    Keep({Drawn::Kind::Text, false, fontAt, x, y, 0, 0, colour, 0, 0, static_cast<std::uint32_t>(texts_.size() - 1)});
}

void PictureBox::Keep(const Drawn& drawn)
{
    drawn_.push_back(drawn);
    if (drawn_.size() < kMostKept)
        return;
    QImage image(size() * devicePixelRatioF(), QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&image);
    PaintPicture(painter);
    painter.end();
    painted_ = image;
    ForgetList();
}

void PictureBox::ForgetList()
{
    if (drawn_.capacity() > kRedrawCalls) {
        drawn_ = {};
        texts_ = {};
    }
    drawn_.clear();
    texts_.clear();
    fonts_.clear();
}

void PictureBox::PaintPicture(QPainter& painter) const
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
    for (const Drawn& d : drawn_) {
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
            canvas.Text(d.x1, d.y1, texts_[d.text], fonts_[d.font], d.colour);
            break;
        }
    }
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
