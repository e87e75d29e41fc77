// The board picture: a widget that keeps what is drawn on it in a backing image, and the
// clickable labels of the main window.
//
// Contract: drawing goes through OpenCanvas(); the widget shows what was drawn when the canvas
// is destroyed, and keeps showing it, drawing over drawing, until a Clear starts afresh. What
// was drawn is kept as the list of drawing calls since the last Clear and painted again when
// the widget is shown: the window's own buffer already holds the pixels, and a second picture
// of them would cost as much memory again. A list grown very long is painted into an image
// once and goes on from there. Before anything is drawn the widget shows its back colour. An
// overlay, a second list of calls painted over the picture, holds what shows only for a while
// (a hint): dropping it leaves the picture's own pixels exactly as they were.
// Mouse events are passed on with button codes 1 left, 2 right, 4 middle, the shift state, and
// the position in twips.
#pragma once

#include "platform/canvas.h"
#include "platform/colour.h"

#include <QImage>
#include <QLabel>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tallyon {

class PictureBox : public QWidget {
    Q_OBJECT
public:
    explicit PictureBox(QWidget* parent = nullptr);

    // A canvas on the picture (twips, 15 per logical pixel).
    std::unique_ptr<Canvas> OpenCanvas();
    // A canvas on the overlay, and the overlay dropped. A Clear on the overlay's canvas drops
    // the overlay as well; it never clears the picture.
    std::unique_ptr<Canvas> OpenOverlayCanvas();
    void ClearOverlay();
    // The picture as it stands, painted into an image of the widget's size.
    QImage Image() const;
    // The colour shown where nothing is drawn yet.
    void SetBackColour(Colour colour);
    Colour BackColour() const { return back_; }
    int WidthTwips() const { return width() * kTwipsPerPixel; }

signals:
    void MouseMove(int button, int shift, float x, float y);
    void MouseUp(int button, int shift, float x, float y);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    // One drawing call, kept to be painted again. A text and its font are named by their
    // place in the lists beside it, which keeps every call small: a full redraw of a 10x10
    // board makes about a thousand calls, and a long game many thousands.
    struct Drawn {
        enum class Kind : std::uint8_t { Line, Box, FilledBox, Circle, Text } kind;
        bool filled = false;                // a circle with a fill
        std::uint16_t font = 0;             // a text's font in fonts_
        int x1 = 0, y1 = 0, x2 = 0, y2 = 0; // a circle's centre in x1, y1 and radius in x2
        Colour colour = 0;
        int pen = 0;
        Colour fill = 0;
        std::uint32_t text = 0; // a text's place in texts_
    };
    // A list of drawing calls with the texts and fonts they name.
    struct Calls {
        std::vector<Drawn> drawn;
        std::vector<std::string> texts; // the texts of the Text calls, in order
        std::vector<FontSpec> fonts;    // each font the Text calls use, once

        void KeepText(int x, int y, const std::string& text, const FontSpec& font, Colour colour);
        void PaintOn(Canvas& canvas) const;
        // Forgets the calls, and gives their memory back when the list had grown long.
        void Forget();
    };
    class ListCanvas;
    // Paints the picture's own pixels: the ground, the image a long list was painted into,
    // then the list.
    void PaintOwn(QPainter& painter) const;
    // The picture's own pixels, then the overlay.
    void PaintPicture(QPainter& painter) const;
    // Keeps a call of the picture's own list, painting a long list into `painted_`.
    void KeepOnPicture();

    Calls list_;                   // since the last Clear, or since `painted_` was made
    Calls overlay_;                // painted over everything, until dropped
    std::optional<Colour> ground_; // the last Clear's colour
    QImage painted_;               // a long list painted once; null until one grew so long
    Colour back_ = fixed::White;
};

// A label with a release event, as the grid-size and start-side labels need. It takes the
// focus by Tab, shows it as a dotted frame in its text colour, and Space, Return or Enter
// release it as the left button does.
class ClickLabel : public QLabel {
    Q_OBJECT
public:
    explicit ClickLabel(QWidget* parent = nullptr);

signals:
    void MouseUp(int button);

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

} // namespace tallyon
