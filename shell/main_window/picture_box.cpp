// The board picture with its backing image, and the clickable labels of the main window.
#include "shell/main_window/picture_box.h"

#include "platform/qpainter_canvas.h"
#include "platform/qt_colour.h"
#include "ui/box_control.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

namespace tallyon {
namespace {

constexpr int kFocusFrameInset = 3; // the labels' focus frame inside their raised panel, pixels

// Owns the painter before the canvas that uses it is built.
struct PainterHolder {
    explicit PainterHolder(QImage& image) : painter(&image) {}
    QPainter painter;
};

// A canvas on a picture box's image; the box repaints when the canvas goes.
class PictureCanvas : private PainterHolder, public QPainterCanvas {
public:
    PictureCanvas(QImage& image, QWidget* box) : PainterHolder(image), QPainterCanvas(painter, 96.0, 1.0), box_(box) {}
    ~PictureCanvas() override
    {
        painter.end();
        box_->update();
    }

private:
    QWidget* box_;
};

float ToTwips(double pixels) { return static_cast<float>(pixels * kTwipsPerPixel); }

} // namespace

PictureBox::PictureBox(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PictureBox::EnsureImage()
{
    const qreal ratio = devicePixelRatioF();
    const QSize wanted = size() * ratio;
    if (image_.size() == wanted && qFuzzyCompare(image_.devicePixelRatioF(), ratio))
        return;
    QImage fresh(wanted, QImage::Format_RGB32);
    fresh.setDevicePixelRatio(ratio);
    fresh.fill(ToQColor(back_));
    if (!image_.isNull()) {
        QPainter copy(&fresh);
        copy.drawImage(QPointF(0, 0), image_);
    }
    image_ = fresh;
}

std::unique_ptr<Canvas> PictureBox::OpenCanvas()
{
    EnsureImage();
    return std::make_unique<PictureCanvas>(image_, this);
}

void PictureBox::SetBackColour(Colour colour) { back_ = colour; }

void PictureBox::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    if (image_.isNull()) { // nothing drawn yet: the back colour alone, without an image to hold it
        painter.fillRect(event->rect(), ToQColor(back_));
        return;
    }
    EnsureImage();
    painter.drawImage(QPointF(0, 0), image_);
}

void PictureBox::resizeEvent(QResizeEvent*)
{
    if (!image_.isNull())
        EnsureImage();
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
