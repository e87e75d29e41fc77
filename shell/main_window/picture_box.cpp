// The board picture with its backing image, and the clickable labels of the main window.
#include "shell/main_window/picture_box.h"

#include "platform/qpainter_canvas.h"
#include "platform/qt_colour.h"
#include "ui/box_control.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace tallyon {
namespace {

constexpr int kFocusFrameInset = 3; // the labels' focus frame inside their raised panel, pixels

// Past this many calls since the last Clear the list is painted into an image once: a game
// that runs long without a full redraw then keeps an image, not an ever longer list. A full
// redraw of a 10x10 board takes about a thousand.
constexpr std::size_t kMostKept = 20000;

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
        box_.drawn_.clear();
        box_.painted_ = QImage();
        box_.ground_ = background;
    }
    void Line(int x1, int y1, int x2, int y2, Colour colour, int pen) override
    {
        box_.Keep({Drawn::Kind::Line, x1, y1, x2, y2, colour, pen, {}, {}, {}});
    }
    void Box(int x1, int y1, int x2, int y2, Colour colour, int pen) override
    {
        box_.Keep({Drawn::Kind::Box, x1, y1, x2, y2, colour, pen, {}, {}, {}});
    }
    void FilledBox(int x1, int y1, int x2, int y2, Colour fill) override
    {
        box_.Keep({Drawn::Kind::FilledBox, x1, y1, x2, y2, fill, 0, {}, {}, {}});
    }
    void Circle(int cx, int cy, int radius, Colour outline, int pen, std::optional<Colour> fill) override
    {
        box_.Keep({Drawn::Kind::Circle, cx, cy, radius, 0, outline, pen, fill, {}, {}});
    }
    void Text(int x, int y, const std::string& text, const FontSpec& font, Colour colour) override
    {
        box_.Keep({Drawn::Kind::Text, x, y, 0, 0, colour, 0, {}, text, font});
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

void PictureBox::Keep(Drawn drawn)
{
    drawn_.push_back(std::move(drawn));
    if (drawn_.size() < kMostKept)
        return;
    QImage image(size() * devicePixelRatioF(), QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&image);
    PaintPicture(painter);
    painter.end();
    painted_ = image;
    drawn_.clear();
}

void PictureBox::PaintPicture(QPainter& painter) const
{
    painter.fillRect(QRect(QPoint(0, 0), size()), ToQColor(ground_.value_or(back_)));
    if (!painted_.isNull())
        painter.drawImage(QPointF(0, 0), painted_);
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
            canvas.Circle(d.x1, d.y1, d.x2, d.colour, d.pen, d.fill);
            break;
        case Drawn::Kind::Text:
            canvas.Text(d.x1, d.y1, d.text, d.font, d.colour);
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
