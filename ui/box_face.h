// The box button's face: its two bevels, its picture and its caption.
//
// The bevels are two box outlines one pen wide, the inner one 20 twips inside the outer, in
// colours mixed from the back colour: light above and to the left and dark below and to the
// right when raised, the other way round when pressed. Both stay whole lines at every scale:
// at a fractional one they are laid on whole device pixels (platform/device_pixels.h).
#pragma once

#include "platform/colour.h"

#include <QFont>
#include <QPixmap>
#include <QSize>
#include <QString>

class QPainter;

namespace tallyon {

// What the face shows, as taken when the control was last redrawn.
struct BoxFace {
    Colour back = 0, fore = 0;
    QFont font;
    QString caption;
    QPixmap picture;
    QSize size;
    int borderStyle = 0; // 1 adds a black frame around the bevels
    bool pressed = false;
    bool focusFrame = false;
    bool taken = false;
};

void DrawBoxFace(QPainter& painter, const BoxFace& face);

} // namespace tallyon
