// Colouring helpers for the help, about and options windows: scheme colours onto Qt widgets.
//
// Every helper sets the widget's palette roles and turns on background filling, so the colour
// shows whatever style the application runs under.
#pragma once

#include "platform/qt_colour.h"

class QWidget;

namespace tallyon::windowpaint {

// Background (Window role) of a widget, filled.
void SetBackground(QWidget* widget, Colour colour);
// Face of a push button, check box or option button (Button role), also its Window role.
void SetButtonColour(QWidget* button, Colour colour);
// Background of an editor or list (Base role), filled.
void SetBaseColour(QWidget* widget, Colour colour);
// Text colour of a label or editor (WindowText and Text roles).
void SetTextColour(QWidget* widget, Colour colour);

} // namespace tallyon::windowpaint
