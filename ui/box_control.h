// BoxControl: the program's own push button, with separate press and release events.
//
// The face is drawn into the control's surface (a cached picture) and shown from there. Setting
// ForeColor, Font, Caption, FontSize, FontBold, FontItalic or Picture redraws the surface at
// once; BackColor, Enabled and BorderStyle only take effect at the next redraw (a resize, a
// press, or one of the redrawing properties). Positions in events are twips relative to the
// control; buttons are 1 left, 2 right, 4 middle; shift is 1 shift, 2 ctrl, 4 alt.
#pragma once

#include "platform/colour.h"
#include "ui/box_face.h"

#include <QFont>
#include <QPixmap>
#include <QString>
#include <QWidget>

namespace tallyon {

class PropertyBag;

// Space, Return or Enter without a modifier (the keypad's too): the keys that press a focused
// control as the left mouse button does.
bool IsPressKey(const QKeyEvent* event);

class BoxControl : public QWidget {
    Q_OBJECT
    Q_PROPERTY(uint BackColor READ BackColor WRITE SetBackColor)
    Q_PROPERTY(uint ForeColor READ ForeColor WRITE SetForeColor)
    Q_PROPERTY(bool Enabled READ Enabled WRITE SetEnabled)
    Q_PROPERTY(QFont Font READ Font WRITE SetFont)
    Q_PROPERTY(int FontSize READ FontSize WRITE SetFontSize)
    Q_PROPERTY(bool FontBold READ FontBold WRITE SetFontBold)
    Q_PROPERTY(bool FontItalic READ FontItalic WRITE SetFontItalic)
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(QPixmap Picture READ Picture WRITE SetPicture)
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE SetBorderStyle)
    Q_PROPERTY(QString ToolTipText READ ToolTipText WRITE SetToolTipText)

public:
    explicit BoxControl(QWidget* parent = nullptr);

    Colour BackColor() const { return back_; }
    void SetBackColor(Colour colour);
    Colour ForeColor() const { return fore_; }
    void SetForeColor(Colour colour);
    bool Enabled() const { return isEnabled(); }
    void SetEnabled(bool enabled);
    QFont Font() const { return font_; }
    void SetFont(const QFont& font);
    int FontSize() const { return font_.pointSize(); }
    void SetFontSize(int points);
    bool FontBold() const { return font_.bold(); }
    void SetFontBold(bool bold);
    bool FontItalic() const { return font_.italic(); }
    void SetFontItalic(bool italic);
    QString Caption() const { return caption_; }
    void SetCaption(const QString& caption);
    QPixmap Picture() const { return picture_; }
    void SetPicture(const QPixmap& picture);
    int BorderStyle() const { return borderStyle_; }
    void SetBorderStyle(int style);
    QString ToolTipText() const { return toolTip(); }
    void SetToolTipText(const QString& text);

    // Whether the face shows the pressed look (a mouse button is held on it).
    bool Pressed() const { return pressed_; }

    // Redraws the face from the current properties, so that a BackColor, Enabled or
    // BorderStyle just set shows at once.
    void Refresh();

    // Reads the saved properties; a missing one takes its default (both colours the system
    // button-text colour, the holding window's font, the current caption, size 8, no bold).
    void ReadProperties(const PropertyBag& bag);
    // Writes the saved properties, and "ToolTipText1".
    void WriteProperties(PropertyBag& bag) const;

signals:
    void Click();
    void DblClick();
    void KeyDown(int keyCode, int shift);
    void KeyPress(int keyAscii);
    void KeyUp(int keyCode, int shift);
    void MouseDown(int button, int shift, float x, float y);
    void MouseMove(int button, int shift, float x, float y);
    void MouseUp(int button, int shift, float x, float y);
    // A property changed, by its saved name ("Caption", "BackColor", ...).
    void PropertyChanged(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    // What the face shows, taken whenever it is redrawn and painted from then on, so that a
    // property that does not redraw (BackColor alone) changes nothing on screen until the next
    // redraw. Painting from it when shown, rather than keeping a picture of the face, saves
    // the picture's memory and draws no text before the window is on screen.
    void Redraw();
    void Changed(const char* name, bool redraw);

    Colour back_;
    Colour fore_;
    QFont font_;
    QString caption_;
    QPixmap picture_;
    int borderStyle_ = 0;
    bool pressed_ = false;
    bool focusShown_ = false; // focus reached by the keyboard, shown as a dotted frame
    BoxFace face_;
};

// Shared event codes of the program's controls.
int MouseButtonCode(Qt::MouseButton button);
int MouseButtonsCode(Qt::MouseButtons buttons);
int ShiftCode(Qt::KeyboardModifiers modifiers);
// The program's key code for a key (letters and digits as their upper-case character,
// Enter 13, Escape 27, arrows 37 to 40, F1 112, ...).
int KeyCode(int qtKey);

} // namespace tallyon
