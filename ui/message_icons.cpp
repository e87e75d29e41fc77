// Vector artwork for the message box icons; every picture is drawn in a 100 x 100 frame.
#include "ui/message_icons.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <array>
#include <cmath>
#include <functional>

namespace tallyon {
namespace {

const QColor kOutline(40, 40, 40);

// A glyph centred on (cx, cy), `height` tall, filled with `colour`.
void Glyph(QPainter& p, const QString& text, qreal cx, qreal cy, qreal height, const QColor& colour, bool bold = true)
{
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(100);
    font.setBold(bold);
    QPainterPath path;
    path.addText(0, 0, font, text);
    const QRectF r = path.boundingRect();
    const qreal scale = height / r.height();
    QTransform t;
    t.translate(cx, cy);
    t.scale(scale, scale);
    t.translate(-r.center().x(), -r.center().y());
    p.setPen(Qt::NoPen);
    p.setBrush(colour);
    p.drawPath(t.map(path));
}

void Disc(QPainter& p, const QColor& light, const QColor& dark)
{
    QRadialGradient g(QPointF(40, 35), 60);
    g.setColorAt(0, light);
    g.setColorAt(1, dark);
    p.setPen(QPen(dark.darker(140), 3));
    p.setBrush(g);
    p.drawEllipse(QRectF(6, 6, 88, 88));
}

void Question(QPainter& p)
{
    Disc(p, QColor(110, 160, 240), QColor(20, 70, 170));
    Glyph(p, QStringLiteral("?"), 50, 51, 58, Qt::white);
}

void Exclamation(QPainter& p)
{
    QPainterPath tri;
    tri.moveTo(50, 6);
    tri.lineTo(96, 90);
    tri.lineTo(4, 90);
    tri.closeSubpath();
    QLinearGradient g(0, 6, 0, 90);
    g.setColorAt(0, QColor(255, 230, 90));
    g.setColorAt(1, QColor(235, 170, 0));
    p.setPen(QPen(QColor(150, 100, 0), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(g);
    p.drawPath(tri);
    Glyph(p, QStringLiteral("!"), 50, 59, 50, QColor(30, 30, 30));
}

void Information(QPainter& p)
{
    Disc(p, QColor(120, 190, 250), QColor(10, 90, 190));
    Glyph(p, QStringLiteral("i"), 50, 50, 56, Qt::white);
}

void Error(QPainter& p)
{
    Disc(p, QColor(250, 110, 100), QColor(180, 20, 20));
    p.setPen(QPen(Qt::white, 12, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(32, 32), QPointF(68, 68));
    p.drawLine(QPointF(68, 32), QPointF(32, 68));
}

void CriticalStop(QPainter& p)
{
    QPolygonF octagon;
    for (int i = 0; i < 8; ++i) {
        const qreal a = (22.5 + 45.0 * i) * M_PI / 180.0;
        octagon << QPointF(50 + 46 * std::cos(a), 50 + 46 * std::sin(a));
    }
    p.setPen(QPen(QColor(120, 0, 0), 3));
    p.setBrush(QColor(200, 16, 16));
    p.drawPolygon(octagon);
    QPolygonF inner;
    for (const QPointF& pt : octagon)
        inner << QPointF(50, 50) + (pt - QPointF(50, 50)) * 0.86;
    p.setPen(QPen(Qt::white, 3));
    p.setBrush(Qt::NoBrush);
    p.drawPolygon(inner);
    Glyph(p, QStringLiteral("STOP"), 50, 50, 20, Qt::white);
}

void HappyFace(QPainter& p)
{
    Disc(p, QColor(255, 240, 120), QColor(230, 170, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(40, 30, 0));
    p.drawEllipse(QRectF(31, 30, 11, 15));
    p.drawEllipse(QRectF(58, 30, 11, 15));
    p.setPen(QPen(QColor(40, 30, 0), 6, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(27, 30, 46, 44), -20 * 16, -140 * 16);
}

void WasteBin(QPainter& p)
{
    QPainterPath body;
    body.moveTo(22, 28);
    body.lineTo(78, 28);
    body.lineTo(71, 94);
    body.lineTo(29, 94);
    body.closeSubpath();
    QLinearGradient g(22, 0, 78, 0);
    g.setColorAt(0, QColor(150, 155, 165));
    g.setColorAt(0.5, QColor(215, 220, 228));
    g.setColorAt(1, QColor(120, 125, 135));
    p.setPen(QPen(kOutline, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(g);
    p.drawPath(body);
    p.setPen(QPen(QColor(80, 85, 95), 3, Qt::SolidLine, Qt::RoundCap));
    for (qreal x : {38.0, 50.0, 62.0})
        p.drawLine(QPointF(x, 38), QPointF(x + (50 - x) * 0.12, 86));
    p.setPen(QPen(kOutline, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(QColor(170, 175, 185));
    p.drawRoundedRect(QRectF(14, 17, 72, 10), 3, 3);
    p.drawRoundedRect(QRectF(40, 8, 20, 9), 3, 3);
}

void Printer(QPainter& p)
{
    p.setPen(QPen(kOutline, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::white);
    p.drawRect(QRectF(28, 8, 44, 34)); // paper waiting at the back
    QLinearGradient g(0, 36, 0, 76);
    g.setColorAt(0, QColor(200, 205, 215));
    g.setColorAt(1, QColor(120, 125, 140));
    p.setBrush(g);
    p.drawRoundedRect(QRectF(8, 36, 84, 40), 6, 6); // body
    p.setBrush(QColor(60, 200, 80));
    p.setPen(Qt::NoPen);
    p.drawEllipse(QRectF(78, 44, 7, 7)); // power lamp
    p.setPen(QPen(kOutline, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::white);
    p.drawRect(QRectF(24, 62, 52, 32)); // printed sheet
    p.setPen(QPen(QColor(90, 90, 90), 3, Qt::SolidLine, Qt::RoundCap));
    for (qreal y : {72.0, 80.0, 88.0})
        p.drawLine(QPointF(31, y), QPointF(y == 88.0 ? 55 : 69, y));
}

void LitBulb(QPainter& p)
{
    p.setPen(QPen(QColor(250, 190, 0), 4, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 7; ++i) {
        const qreal a = (180 + 30.0 * i) * M_PI / 180.0;
        p.drawLine(QPointF(50 + 36 * std::cos(a), 40 + 36 * std::sin(a)),
                   QPointF(50 + 47 * std::cos(a), 40 + 47 * std::sin(a)));
    }
    QRadialGradient glow(QPointF(46, 34), 30);
    glow.setColorAt(0, QColor(255, 255, 235));
    glow.setColorAt(0.6, QColor(255, 235, 90));
    glow.setColorAt(1, QColor(245, 195, 20));
    QPainterPath bulb;
    bulb.addEllipse(QRectF(24, 14, 52, 50));
    QPainterPath neck;
    neck.addRect(QRectF(38, 56, 24, 14));
    p.setPen(QPen(QColor(170, 120, 0), 3));
    p.setBrush(glow);
    p.drawPath(bulb.united(neck));
    p.setPen(QPen(QColor(200, 110, 0), 2.5));
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({QPointF(43, 58), QPointF(45, 40), QPointF(50, 46), QPointF(55, 40), QPointF(57, 58)}));
    p.setPen(QPen(kOutline, 2.5));
    p.setBrush(QColor(150, 150, 155));
    p.drawRoundedRect(QRectF(37, 70, 26, 16), 3, 3);
    p.drawLine(QPointF(37, 75.5), QPointF(63, 75.5));
    p.drawLine(QPointF(37, 80.5), QPointF(63, 80.5));
    p.drawChord(QRectF(42, 80, 16, 14), 180 * 16, 180 * 16);
}

void Star(QPainter& p)
{
    QPolygonF star;
    for (int i = 0; i < 10; ++i) {
        const qreal r = (i % 2 == 0) ? 46 : 19;
        const qreal a = (-90 + 36.0 * i) * M_PI / 180.0;
        star << QPointF(50 + r * std::cos(a), 54 + r * std::sin(a));
    }
    QRadialGradient g(QPointF(44, 42), 50);
    g.setColorAt(0, QColor(255, 245, 160));
    g.setColorAt(1, QColor(235, 160, 0));
    p.setPen(QPen(QColor(160, 95, 0), 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(g);
    p.drawPolygon(star);
}

void NodePair(QPainter& p)
{
    // A corner of a Tallyon board: three nodes on a path (3 + 2 = 5, 5 + 3 = 8) and one off it.
    const QPointF nodes[4] = {{20, 80}, {20, 20}, {80, 20}, {80, 80}};
    p.setPen(QPen(QColor(150, 150, 150), 2, Qt::DashLine));
    p.drawLine(nodes[2], nodes[3]);
    p.drawLine(nodes[3], nodes[0]);
    p.setPen(QPen(QColor(0, 128, 0), 9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPolyline(nodes, 3);
    const char* const digits[4] = {"3", "5", "8", "6"};
    for (int i = 0; i < 4; ++i) {
        const bool onPath = i < 3;
        p.setPen(QPen(onPath ? kOutline : QColor(150, 150, 150), 3));
        p.setBrush(onPath ? QColor(250, 250, 255) : QColor(225, 225, 225));
        p.drawEllipse(nodes[i], 18, 18);
        Glyph(p, QString::fromLatin1(digits[i]), nodes[i].x(), nodes[i].y(), 20,
              onPath ? QColor(20, 20, 200) : QColor(120, 120, 120));
    }
}

using Painter = void (*)(QPainter&);
constexpr std::array<Painter, kMessageIconCount> kPainters = {
    Question, Exclamation, Information, Error, CriticalStop, HappyFace, WasteBin, Printer, LitBulb, Star, NodePair};

} // namespace

void PaintMessageIcon(QPainter& painter, int index, const QRectF& box)
{
    if (index < 0 || index >= kMessageIconCount)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(box.topLeft());
    painter.scale(box.width() / 100.0, box.height() / 100.0);
    kPainters[static_cast<std::size_t>(index)](painter);
    painter.restore();
}

QPixmap MessageIconPixmap(int index, int logicalSize, qreal dpr)
{
    const int side = qMax(1, qRound(logicalSize * dpr));
    QPixmap pixmap(side, side);
    pixmap.setDevicePixelRatio(dpr);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    PaintMessageIcon(painter, index, QRectF(0, 0, logicalSize, logicalSize));
    return pixmap;
}

} // namespace tallyon
