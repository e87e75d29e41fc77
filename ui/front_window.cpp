// Bringing a newly shown window to the front with the keyboard focus.
#include "ui/front_window.h"

#include <QGuiApplication>
#include <QWidget>

namespace tallyon {

void BringToFront(QWidget* window)
{
    // The offscreen platform, used by the tests, has no stacking and says so at every raise.
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        window->raise();
    window->activateWindow();
}

} // namespace tallyon
