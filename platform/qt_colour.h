// Conversions between the program's packed colours and Qt's.
#pragma once

#include "platform/colour.h"

#include <QColor>

namespace tallyon {

inline QColor ToQColor(Colour c) { return QColor(RedOf(c), GreenOf(c), BlueOf(c)); }
inline Colour FromQColor(const QColor& c) { return RGB(c.red(), c.green(), c.blue()); }

} // namespace tallyon
