// The board picture: a widget that keeps what is drawn on it in a backing image, and the
// clickable labels of the main window.
//
// Contract: drawing goes through OpenCanvas(); the widget shows the image when the canvas is
// destroyed. Until the first canvas is opened there is no image: the widget shows its back
// colour, so that a box only ever coloured (SetBackColour) costs no image memory. Mouse events
// are passed on with button codes 1 left, 2 right, 4 middle, the shift state, and the position
// in twips.
#pragma once

#include "platform/canvas.h"
#include "platform/colour.h"

#include <QImage>
#include <QLabel>
#include <QWidget>

#include <memory>

namespace tallyon {

class PictureBox : public QWidget {
    Q_OBJECT
public:
    explicit PictureBox(QWidget* parent = nullptr);

    // A canvas on the backing image (twips, 15 per logical pixel).
    std::unique_ptr<Canvas> OpenCanvas();
    // The backing image as it stands; null before the first canvas.
    const QImage& Image() const { return image_; }
    // The colour shown before anything is drawn, and that a new image starts with.
    void SetBackColour(Colour colour);
    Colour BackColour() const { return back_; }
    int WidthTwips() const { return width() * kTwipsPerPixel; }

signals:
    void MouseMove(int button, int shift, float x, float y);
    void MouseUp(int button, int shift, float x, float y);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void EnsureImage();
    QImage image_;
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
