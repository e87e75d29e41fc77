// The box button's face: its two bevels, its picture and its caption.
#include "ui/box_face.h"

#include "platform/canvas.h"
#include "platform/device_pixels.h"
#include "platform/qt_colour.h"

#include <QFontMetricsF>
#include <QPainter>

namespace tallyon {
namespace {

constexpr qreal kInset = 20.0 / kTwipsPerPixel; // the inner bevel's inset, 20 twips
constexpr qreal kFocusInset = 2.0;              // the focus frame inside the bevel, pixels

QColor Mix(const QColor& a, const QColor& b, qreal t)
{
    return QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * t, a.greenF() + (b.greenF() - a.greenF()) * t,
                            a.blueF() + (b.blueF() - a.blueF()) * t);
}

// The colours of one bevel: its top and left edges, and its bottom and right edges.
struct BevelColours {
    QColor topLeft, bottomRight;
};

// One bevel as lines one pixel wide through the given rectangle's edges.
void Bevel(QPainter& p, const QRectF& r, const BevelColours& colours)
{
    p.setPen(QPen(colours.topLeft, 1.0, Qt::SolidLine, Qt::SquareCap));
    p.drawLine(r.topLeft(), r.topRight());
    p.drawLine(r.topLeft(), r.bottomLeft());
    p.setPen(QPen(colours.bottomRight, 1.0, Qt::SolidLine, Qt::SquareCap));
    p.drawLine(r.bottomLeft(), r.bottomRight());
    p.drawLine(r.topRight(), r.bottomRight());
}

// The same on whole device pixels: `outer` holds the device pixels inside which the bevel's
// lines, `thickness` pixels each, run along the edges.
void DeviceBevel(QPainter& p, const DevicePixels& pixels, const QRect& outer, int thickness,
                 const BevelColours& colours)
{
    const int t = thickness;
    pixels.Fill(p, QRect(outer.left(), outer.top(), outer.width(), t), colours.topLeft);
    pixels.Fill(p, QRect(outer.left(), outer.top(), t, outer.height()), colours.topLeft);
    pixels.Fill(p, QRect(outer.left(), outer.bottom() - t + 1, outer.width(), t), colours.bottomRight);
    pixels.Fill(p, QRect(outer.right() - t + 1, outer.top(), t, outer.height()), colours.bottomRight);
}

// The black frame (border style 1) and the two bevels, outer first.
void DrawBevels(QPainter& p, const BoxFace& f, const BevelColours& outer, const BevelColours& inner)
{
    const QRectF all(0, 0, f.size.width(), f.size.height());
    const DevicePixels pixels(p);
    if (!pixels.Snaps()) {
        const qreal edge = f.borderStyle == 1 ? 1.5 : 0.5;
        if (f.borderStyle == 1)
            Bevel(p, all.adjusted(0.5, 0.5, -0.5, -0.5), {Qt::black, Qt::black});
        const QRectF outerRect = all.adjusted(edge, edge, -edge, -edge);
        Bevel(p, outerRect, outer);
        Bevel(p, outerRect.adjusted(kInset, kInset, -kInset, -kInset), inner);
        return;
    }
    // The face's device pixels, as its fill covers them; each line as thick as a pen one pixel
    // wide, the inner bevel as far inside the outer one as the inset comes to.
    QRect box(QPoint(pixels.EdgeX(0), pixels.EdgeY(0)), QPoint(pixels.EdgeX(all.width()), pixels.EdgeY(all.height())));
    box.adjust(0, 0, -1, -1);
    const int t = pixels.Thickness(1.0);
    const int inset = std::max(t, pixels.Thickness(kInset));
    if (f.borderStyle == 1) {
        DeviceBevel(p, pixels, box, t, {Qt::black, Qt::black});
        box.adjust(t, t, -t, -t);
    }
    DeviceBevel(p, pixels, box, t, outer);
    DeviceBevel(p, pixels, box.adjusted(inset, inset, -inset, -inset), t, inner);
}

void DrawContent(QPainter& p, const BoxFace& f)
{
    const qreal width = f.size.width(), height = f.size.height();
    const QPointF shift = f.pressed ? QPointF(1, 1) : QPointF(0, 0);
    const QFontMetricsF metrics(f.font);
    const QSizeF text =
        f.caption.isEmpty() ? QSizeF(0, 0) : QSizeF(metrics.horizontalAdvance(f.caption), metrics.height());
    const QSizeF pic = f.picture.isNull() ? QSizeF(0, 0) : f.picture.deviceIndependentSize();
    const qreal gap = (!f.caption.isEmpty() && !f.picture.isNull()) ? 2.0 : 0.0;
    qreal top = (height - (pic.height() + gap + text.height())) / 2.0;
    if (!f.picture.isNull()) {
        p.drawPixmap(QPointF((width - pic.width()) / 2.0, top) + shift, f.picture);
        top += pic.height() + gap;
    }
    if (!f.caption.isEmpty()) {
        p.setFont(f.font);
        p.setPen(ToQColor(f.fore));
        p.drawText(QRectF(0, top, width, text.height()).translated(shift), Qt::AlignHCenter | Qt::AlignVCenter,
                   f.caption);
    }
}

} // namespace

void DrawBoxFace(QPainter& p, const BoxFace& f)
{
    const QColor back = ToQColor(f.back);
    const QRectF all(0, 0, f.size.width(), f.size.height());
    p.fillRect(all, back);
    const QColor light = Mix(back, Qt::white, 0.65);
    const QColor shadow = Mix(back, Qt::black, 0.45);
    const QColor dark = Mix(back, Qt::black, 0.8);
    if (f.pressed)
        DrawBevels(p, f, {dark, light}, {shadow, back});
    else
        DrawBevels(p, f, {light, dark}, {back.lighter(110), shadow});
    DrawContent(p, f);
    if (f.focusFrame) {
        // In the caption's colour, which every scheme keeps readable on the face.
        const qreal edge = (f.borderStyle == 1 ? 1.5 : 0.5) + kInset + kFocusInset;
        p.setPen(QPen(ToQColor(f.fore), 1, Qt::DotLine));
        p.setBrush(Qt::NoBrush);
        p.drawRect(all.adjusted(edge, edge, -edge, -edge));
    }
}

} // namespace tallyon
