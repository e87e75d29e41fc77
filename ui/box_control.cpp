// The box button: its face, its saved properties and the events it passes on.
#include "ui/box_control.h"

#include "platform/canvas.h"
#include "platform/qt_colour.h"

#include "ui/property_bag.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>

namespace tallyon {
namespace {

constexpr int kDefaultFontSize = 8;

Colour SystemColour(QPalette::ColorRole role) { return FromQColor(QApplication::palette().color(role)); }

} // namespace

int MouseButtonCode(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return 1;
    case Qt::RightButton:
        return 2;
    case Qt::MiddleButton:
        return 4;
    default:
        return 0;
    }
}

int MouseButtonsCode(Qt::MouseButtons buttons)
{
    return (buttons & Qt::LeftButton ? 1 : 0) | (buttons & Qt::RightButton ? 2 : 0) |
           (buttons & Qt::MiddleButton ? 4 : 0);
}

int ShiftCode(Qt::KeyboardModifiers modifiers)
{
    return (modifiers & Qt::ShiftModifier ? 1 : 0) | (modifiers & Qt::ControlModifier ? 2 : 0) |
           (modifiers & Qt::AltModifier ? 4 : 0);
}

int KeyCode(int key)
{
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9) || key == Qt::Key_Space)
        return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return 112 + (key - Qt::Key_F1);
    switch (key) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Shift:
        return 16;
    case Qt::Key_Control:
        return 17;
    case Qt::Key_Alt:
        return 18;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return 46;
    default:
        return key & 0xFFFF;
    }
}

BoxControl::BoxControl(QWidget* parent)
    : QWidget(parent), back_(SystemColour(QPalette::Button)), fore_(SystemColour(QPalette::ButtonText)),
      font_(parent ? parent->font() : QApplication::font())
{
    font_.setPointSize(kDefaultFontSize);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    resize(1215 / kTwipsPerPixel, 495 / kTwipsPerPixel);
}

void BoxControl::SetBackColor(Colour colour)
{
    back_ = colour;
    Changed("BackColor", false);
}
void BoxControl::SetForeColor(Colour colour)
{
    fore_ = colour;
    Changed("ForeColor", true);
}
void BoxControl::SetEnabled(bool enabled)
{
    setEnabled(enabled);
    Changed("Enabled", false);
}
void BoxControl::SetFont(const QFont& font)
{
    font_ = font;
    Changed("Font", true);
}
void BoxControl::SetFontSize(int points)
{
    font_.setPointSize(qMax(1, points));
    Changed("FontSize", true);
}
void BoxControl::SetFontBold(bool bold)
{
    font_.setBold(bold);
    Changed("FontBold", true);
}
void BoxControl::SetFontItalic(bool italic)
{
    font_.setItalic(italic);
    Changed("FontItalic", true);
}
void BoxControl::SetCaption(const QString& caption)
{
    caption_ = caption;
    Changed("Caption", true);
}
void BoxControl::SetPicture(const QPixmap& picture)
{
    picture_ = picture;
    Changed("Picture", true);
}
void BoxControl::SetBorderStyle(int style)
{
    borderStyle_ = style;
    Changed("BorderStyle", false);
}

void BoxControl::SetToolTipText(const QString& text)
{
    setToolTip(text);
    Changed("ToolTipText", false);
}

void BoxControl::Changed(const char* name, bool redraw)
{
    if (redraw)
        Redraw();
    emit PropertyChanged(QString::fromLatin1(name));
}

void BoxControl::ReadProperties(const PropertyBag& bag)
{
    const QFont holderFont = parentWidget() ? parentWidget()->font() : QApplication::font();
    const Colour buttonText = SystemColour(QPalette::ButtonText);
    setEnabled(bag.Read("Enabled", true).toBool());
    font_ = bag.Read("Font", holderFont).value<QFont>();
    caption_ = bag.Read("Caption", caption_).toString();
    borderStyle_ = bag.Read("BorderStyle", 0).toInt();
    fore_ = bag.Read("ForeColor", buttonText).toUInt();
    font_.setPointSize(qMax(1, bag.Read("FontSize", kDefaultFontSize).toInt()));
    font_.setBold(bag.Read("FontBold", 0).toInt() != 0);
    font_.setItalic(bag.Read("FontItalic", false).toBool());
    // Read and Write share this default, so every back colour survives a save and a load. It
    // is the text colour, as for ForeColor, because boxes already saved were written against
    // that default; another default would change how they load.
    back_ = bag.Read("BackColor", buttonText).toUInt();
    picture_ = bag.Read("Picture", QPixmap()).value<QPixmap>();
    Redraw();
}

void BoxControl::WriteProperties(PropertyBag& bag) const
{
    const QFont holderFont = parentWidget() ? parentWidget()->font() : QApplication::font();
    const Colour buttonText = SystemColour(QPalette::ButtonText);
    bag.Write("Enabled", isEnabled(), true);
    bag.Write("Font", font_, holderFont);
    bag.Write("Caption", caption_, QString());
    bag.Write("BorderStyle", borderStyle_, 0);
    bag.Write("ForeColor", fore_, buttonText);
    bag.Write("FontSize", font_.pointSize(), kDefaultFontSize);
    bag.Write("FontBold", font_.bold() ? 1 : 0, 0);
    bag.Write("FontItalic", font_.italic(), false);
    bag.Write("BackColor", back_, buttonText);
    if (!picture_.isNull())
        bag.Write("Picture", picture_, QVariant());
    bag.Write("ToolTipText1", toolTip(), QString());
}

void BoxControl::Refresh() { Redraw(); }

void BoxControl::Redraw()
{
    face_ = {back_, fore_, font_, caption_, picture_, size(), borderStyle_, pressed_, focusShown_ && hasFocus(), true};
    update();
}

void BoxControl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!face_.taken)
        painter.fillRect(rect(), ToQColor(back_));
    else
        DrawBoxFace(painter, face_);
}

void BoxControl::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    Redraw();
}

void BoxControl::mousePressEvent(QMouseEvent* event)
{
    pressed_ = true;
    Redraw();
    const QPointF at = event->position() * kTwipsPerPixel;
    emit MouseDown(MouseButtonCode(event->button()), ShiftCode(event->modifiers()), at.x(), at.y());
}

void BoxControl::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF at = event->position() * kTwipsPerPixel;
    emit MouseMove(MouseButtonsCode(event->buttons()), ShiftCode(event->modifiers()), at.x(), at.y());
}

void BoxControl::mouseReleaseEvent(QMouseEvent* event)
{
    pressed_ = false;
    Redraw();
    const QPointF at = event->position() * kTwipsPerPixel;
    emit MouseUp(MouseButtonCode(event->button()), ShiftCode(event->modifiers()), at.x(), at.y());
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit Click();
}

void BoxControl::mouseDoubleClickEvent(QMouseEvent*)
{
    // The second press of a double click raises DblClick instead of MouseDown.
    pressed_ = true;
    Redraw();
    emit DblClick();
}

bool IsPressKey(const QKeyEvent* event)
{
    const int key = event->key();
    return (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) &&
           (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

void BoxControl::keyPressEvent(QKeyEvent* event)
{
    emit KeyDown(KeyCode(event->key()), ShiftCode(event->modifiers()));
    if (!event->text().isEmpty())
        emit KeyPress(event->text().at(0).unicode());
    if (IsPressKey(event) && !event->isAutoRepeat() && !pressed_) {
        pressed_ = true;
        Redraw();
        emit MouseDown(1, 0, 0.0F, 0.0F);
    }
}

void BoxControl::keyReleaseEvent(QKeyEvent* event)
{
    if (event->isAutoRepeat())
        return;
    emit KeyUp(KeyCode(event->key()), ShiftCode(event->modifiers()));
    if (IsPressKey(event) && pressed_) {
        pressed_ = false;
        Redraw();
        emit MouseUp(1, 0, 0.0F, 0.0F);
        emit Click();
    }
}

// The frame shows for focus reached by Tab or a shortcut, not for a click or the window's own
// first focus, and it comes back with the window when the window is left and re-entered.
void BoxControl::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason)
        focusShown_ =
            reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
    Redraw();
}

void BoxControl::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason)
        focusShown_ = false;
    if (pressed_) { // a key held down as the focus left
        pressed_ = false;
        emit MouseUp(1, 0, 0.0F, 0.0F);
    }
    Redraw();
}

} // namespace tallyon
