// The options window's sample shapes: a line sample (colour and width) and filled samples.
#include "shell/options_samples.h"

#include "shell/window_paint.h"

#include <QPainter>

namespace tallyon {

SampleShape::SampleShape(Kind kind, QWidget* parent) : QWidget(parent), kind_(kind) {}

void SampleShape::SetBorderColor(Colour colour)
{
    borderColor_ = colour;
    update();
}

void SampleShape::SetBorderWidth(int width)
{
    borderWidth_ = width;
    update();
}

void SampleShape::SetFillColor(Colour colour)
{
    fillColor_ = colour;
    update();
}

void SampleShape::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (kind_ == Kind::Line) {
        QPen pen(ToQColor(borderColor_), borderWidth_);
        pen.setCapStyle(Qt::FlatCap);
        painter.setPen(pen);
        const int y = height() / 2;
        painter.drawLine(2, y, width() - 3, y);
        return;
    }
    painter.setPen(QPen(ToQColor(fixed::DarkText), 1));
    painter.setBrush(ToQColor(fillColor_));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace tallyon
