// Colouring helpers for the help, about and options windows.
#include "shell/window_paint.h"

#include <QPalette>
#include <QWidget>

namespace tallyon::windowpaint {

namespace {

void SetRoles(QWidget* widget, std::initializer_list<QPalette::ColorRole> roles, Colour colour)
{
    QPalette palette = widget->palette();
    for (QPalette::ColorRole role : roles)
        palette.setColor(role, ToQColor(colour));
    widget->setPalette(palette);
}

} // namespace

void SetBackground(QWidget* widget, Colour colour)
{
    SetRoles(widget, {QPalette::Window}, colour);
    widget->setAutoFillBackground(true);
}

void SetButtonColour(QWidget* button, Colour colour)
{
    SetRoles(button, {QPalette::Button, QPalette::Window}, colour);
    button->setAutoFillBackground(true);
}

void SetBaseColour(QWidget* widget, Colour colour)
{
    SetRoles(widget, {QPalette::Base, QPalette::Window}, colour);
    widget->setAutoFillBackground(true);
}

void SetTextColour(QWidget* widget, Colour colour) { SetRoles(widget, {QPalette::WindowText, QPalette::Text}, colour); }

} // namespace tallyon::windowpaint
