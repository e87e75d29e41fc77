// Putting a colour scheme on widgets: the menu bar and its menus, and the message box.
#pragma once

#include "platform/qt_colour.h"
#include "shell/settings.h"

#include <QColor>

class QMenuBar;

namespace tallyon {

// Paints the bar and every menu reachable from it (submenus too) with one colour: the
// Window, Base and Button roles of their palettes, with background filling on. Under the
// Fusion style a menu's Base is set 8% darker, because Fusion fills menus that much lighter
// than Base; the menu then shows the colour itself. Menus added to the bar later are not
// coloured until the next call.
void SetMenuColour(QMenuBar* bar, Colour colour);

// The message box takes the scheme: background entry 2, control colour entry 4, and the
// dark text colour RGB(20, 20, 20) for its text.
void ApplySchemeToMessageBox(const AppState& state);

} // namespace tallyon
