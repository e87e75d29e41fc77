// Lines kept whole on a device's pixels when logical pixels are not whole device pixels.
#include "platform/device_pixels.h"

#include "core/board/board.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tallyon {
namespace {

bool Whole(double value) { return std::abs(value - std::round(value)) < 1e-9; }

} // namespace

DevicePixels::DevicePixels(const QPainter& painter)
{
    const QPaintEngine* engine = painter.paintEngine();
    toDevice_ = painter.deviceTransform();
    scale_ = toDevice_.m11();
    const bool raster = engine != nullptr && engine->type() == QPaintEngine::Raster;
    const bool upright =
        toDevice_.m12() == 0.0 && toDevice_.m21() == 0.0 && toDevice_.m11() == toDevice_.m22() && toDevice_.m11() > 0.0;
    const bool whole = Whole(toDevice_.m11()) && Whole(toDevice_.dx()) && Whole(toDevice_.dy());
    snaps_ = raster && upright && !whole;
    // The device transform is the world transform followed by the rest (the widget's place in
    // its window and the device pixel ratio); undoing the rest leaves device pixels.
    const QTransform rest = painter.worldTransform().inverted() * toDevice_;
    deviceSpace_ = rest.inverted();
}

int DevicePixels::Thickness(double width) const { return std::max(1, RoundHalfEven(width * scale_)); }

int DevicePixels::LineStartX(double x, int thickness) const
{
    return RoundHalfEven(toDevice_.map(QPointF(x, 0)).x() - thickness / 2.0);
}

int DevicePixels::LineStartY(double y, int thickness) const
{
    return RoundHalfEven(toDevice_.map(QPointF(0, y)).y() - thickness / 2.0);
}

int DevicePixels::EdgeX(double x) const { return qRound(toDevice_.map(QPointF(x, 0)).x()); }

int DevicePixels::EdgeY(double y) const { return qRound(toDevice_.map(QPointF(0, y)).y()); }

void DevicePixels::Fill(QPainter& painter, const QRect& device, const QColor& colour) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setWorldTransform(deviceSpace_);
    painter.fillRect(device, colour);
    painter.restore();
}

void DevicePixels::Blit(QPainter& painter, QPoint device, const QImage& image) const
{
    painter.save();
    painter.setWorldTransform(deviceSpace_);
    painter.drawImage(QRect(device, image.size()), image, image.rect());
    painter.restore();
}

} // namespace tallyon
