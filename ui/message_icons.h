// The pictures of the message box's eleven icon slots, drawn as vectors.
//
// Slots: 0 question, 1 exclamation, 2 information, 3 error, 4 critical stop, 5 happy face,
// 6 waste bin, 7 printer, 8 lit bulb, 9 spare (a star), 10 custom (a Tallyon node pair).
#pragma once

#include <QPixmap>
#include <QRectF>

class QPainter;

namespace tallyon {

inline constexpr int kMessageIconCount = 11;

// Paints slot `index` (0..10) into `box`; an index out of range paints nothing.
void PaintMessageIcon(QPainter& painter, int index, const QRectF& box);

// Slot `index` as a transparent square pixmap of `logicalSize` pixels at device pixel
// ratio `dpr`, so it stays crisp on a high-DPI screen.
QPixmap MessageIconPixmap(int index, int logicalSize, qreal dpr);

} // namespace tallyon
