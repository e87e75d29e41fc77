// The canvas on a QPainter: the screen, the printer and the clipboard picture.
#include "platform/qpainter_canvas.h"

#include "core/board/board.h"
#include "platform/device_pixels.h"
#include "platform/qt_colour.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tallyon {
namespace {

QFont ToQFont(const FontSpec& wanted)
{
    QFont font(QString::fromStdString(wanted.family));
    font.setPointSizeF(wanted.points > 0 ? wanted.points : 1.0);
    font.setBold(wanted.bold);
    return font;
}

} // namespace

QPainterCanvas::QPainterCanvas(QPainter& painter, double dpi, double penUnit)
    : painter_(painter), scale_(dpi / kTwipsPerInch), penUnit_(penUnit)
{
    painter_.setRenderHint(QPainter::Antialiasing, true);
    painter_.setRenderHint(QPainter::TextAntialiasing, true);
}

double QPainterCanvas::ToDevice(int twips) const { return twips * scale_; }

void QPainterCanvas::Clear(Colour background)
{
    const QRect all = painter_.window();
    painter_.fillRect(all, ToQColor(background));
}

double QPainterCanvas::PenOnDevice(int penWidth) const
{
    // A pen wider than the surface paints the same as one as wide as it; bounding it keeps a
    // damaged setting from asking for a huge cached circle.
    const QPaintDevice* device = painter_.device();
    const double widest = device ? std::max(1, std::max(device->width(), device->height())) : 1.0;
    return std::min(std::max(1, penWidth) * penUnit_, widest);
}

void QPainterCanvas::Line(int x1, int y1, int x2, int y2, Colour colour, int penWidth)
{
    const DevicePixels pixels(painter_);
    if (pixels.Snaps() && (x1 == x2 || y1 == y2)) {
        // The pen's width in whole device pixels, its round caps as far beyond each end.
        const int t = pixels.Thickness(PenOnDevice(penWidth));
        const auto along = [&](int a, int b, bool across) {
            const QPointF from = pixels.ToDevice(across ? QPointF(ToDevice(a), 0) : QPointF(0, ToDevice(a)));
            const QPointF to = pixels.ToDevice(across ? QPointF(ToDevice(b), 0) : QPointF(0, ToDevice(b)));
            const double low = across ? std::min(from.x(), to.x()) : std::min(from.y(), to.y());
            const double high = across ? std::max(from.x(), to.x()) : std::max(from.y(), to.y());
            return std::pair{RoundHalfEven(low - t / 2.0), RoundHalfEven(high + t / 2.0)};
        };
        if (y1 == y2) {
            const auto [left, right] = along(x1, x2, true);
            pixels.Fill(painter_, QRect(left, pixels.LineStartY(ToDevice(y1), t), right - left, t), ToQColor(colour));
        } else {
            const auto [top, bottom] = along(y1, y2, false);
            pixels.Fill(painter_, QRect(pixels.LineStartX(ToDevice(x1), t), top, t, bottom - top), ToQColor(colour));
        }
        return;
    }
    QPen pen(ToQColor(colour), PenOnDevice(penWidth), Qt::SolidLine, Qt::RoundCap);
    painter_.setPen(pen);
    // Lines along an axis stay crisp (and cheap) without antialiasing; slanted ones need it.
    painter_.setRenderHint(QPainter::Antialiasing, x1 != x2 && y1 != y2);
    painter_.drawLine(QPointF(ToDevice(x1), ToDevice(y1)), QPointF(ToDevice(x2), ToDevice(y2)));
}

void QPainterCanvas::Box(int x1, int y1, int x2, int y2, Colour colour, int penWidth)
{
    const DevicePixels pixels(painter_);
    if (pixels.Snaps()) {
        // Four lines of whole device pixels that meet square at the corners.
        const int t = pixels.Thickness(PenOnDevice(penWidth));
        const int left = pixels.LineStartX(ToDevice(std::min(x1, x2)), t);
        const int right = pixels.LineStartX(ToDevice(std::max(x1, x2)), t);
        const int top = pixels.LineStartY(ToDevice(std::min(y1, y2)), t);
        const int bottom = pixels.LineStartY(ToDevice(std::max(y1, y2)), t);
        const QColor c = ToQColor(colour);
        pixels.Fill(painter_, QRect(left, top, right - left + t, t), c);
        pixels.Fill(painter_, QRect(left, bottom, right - left + t, t), c);
        pixels.Fill(painter_, QRect(left, top, t, bottom - top + t), c);
        pixels.Fill(painter_, QRect(right, top, t, bottom - top + t), c);
        return;
    }
    QPen pen(ToQColor(colour), PenOnDevice(penWidth), Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
    painter_.setRenderHint(QPainter::Antialiasing, false);
    painter_.setPen(pen);
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(QRectF(QPointF(ToDevice(x1), ToDevice(y1)), QPointF(ToDevice(x2), ToDevice(y2))));
}

void QPainterCanvas::FilledBox(int x1, int y1, int x2, int y2, Colour fill)
{
    painter_.setRenderHint(QPainter::Antialiasing, false);
    painter_.fillRect(QRectF(QPointF(ToDevice(x1), ToDevice(y1)), QPointF(ToDevice(x2), ToDevice(y2))), ToQColor(fill));
}

void QPainterCanvas::PaintCircle(QPainter& painter, QPointF centre, double r, Colour outline, double pen,
                                 std::optional<Colour> fill)
{
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(QPen(ToQColor(outline), pen));
    painter.setBrush(fill ? QBrush(ToQColor(*fill)) : QBrush(Qt::NoBrush));
    painter.drawEllipse(centre, r, r);
    painter.setBrush(Qt::NoBrush);
}

void QPainterCanvas::Circle(int cx, int cy, int radius, Colour outline, int penWidth, std::optional<Colour> fill)
{
    const double r = ToDevice(radius);
    const double pen = PenOnDevice(penWidth);
    const QPointF centre(ToDevice(cx), ToDevice(cy));
    if (painter_.paintEngine() == nullptr || painter_.paintEngine()->type() != QPaintEngine::Raster) {
        PaintCircle(painter_, centre, r, outline, pen, fill); // vector output stays vector
        return;
    }
    // On a raster surface a board's many equal circles are rendered once and stamped.
    const CircleKey key{radius, outline, penWidth, fill.has_value(), fill.value_or(0)};
    auto found = circles_.find(key);
    const double half = r + pen;
    if (found == circles_.end()) {
        const qreal ratio = painter_.device()->devicePixelRatioF();
        const int side = static_cast<int>(std::ceil(2 * half * ratio)) + 2;
        QImage stamp(side, side, QImage::Format_ARGB32_Premultiplied);
        stamp.setDevicePixelRatio(ratio);
        stamp.fill(Qt::transparent);
        QPainter painter(&stamp);
        PaintCircle(painter, QPointF(side / ratio / 2, side / ratio / 2), r, outline, pen, fill);
        painter.end();
        found = circles_.emplace(key, stamp).first;
    }
    const QImage& stamp = found->second;
    const DevicePixels pixels(painter_);
    if (pixels.Snaps()) {
        // Every stamp starts on a device pixel, so that each circle is the same picture.
        const QPointF at = pixels.ToDevice(centre) - QPointF(stamp.width() / 2.0, stamp.height() / 2.0);
        pixels.Blit(painter_, QPoint(RoundHalfEven(at.x()), RoundHalfEven(at.y())), stamp);
        return;
    }
    const double offset = stamp.width() / stamp.devicePixelRatioF() / 2;
    painter_.drawImage(QPointF(centre.x() - offset, centre.y() - offset), stamp);
}

const QFont& QPainterCanvas::FontFor(const FontSpec& wanted)
{
    if (!fontKey_ || fontKey_->family != wanted.family || fontKey_->points != wanted.points ||
        fontKey_->bold != wanted.bold) {
        fontKey_ = wanted;
        font_ = ToQFont(wanted);
        texts_.clear();
    }
    return font_;
}

void QPainterCanvas::Text(int x, int y, const std::string& text, const FontSpec& font, Colour colour)
{
    painter_.setFont(FontFor(font));
    painter_.setPen(ToQColor(colour));
    auto [laidOut, added] = texts_.try_emplace(text, QString::fromStdString(text));
    if (added)
        laidOut->second.setPerformanceHint(QStaticText::AggressiveCaching);
    painter_.drawStaticText(QPointF(ToDevice(x), ToDevice(y)), laidOut->second);
}

TextSize QPainterCanvas::MeasureText(const std::string& text, const FontSpec& font)
{
    const QFontMetricsF metrics(FontFor(font), painter_.device());
    const QSizeF size = metrics.size(0, QString::fromStdString(text));
    return {static_cast<int>(std::lround(size.width() / scale_)),
            static_cast<int>(std::lround(size.height() / scale_))};
}

} // namespace tallyon
