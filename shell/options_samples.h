// The options window's sample shapes: a line sample (colour and width) and filled samples.
#pragma once

#include "platform/colour.h"

#include <QWidget>

namespace tallyon {

// A design-time shape: either a horizontal line of BorderColor and BorderWidth across the
// middle, or a box filled with FillColor and outlined in dark text.
class SampleShape : public QWidget {
    Q_OBJECT
public:
    enum class Kind { Line, Filled };

    SampleShape(Kind kind, QWidget* parent = nullptr);

    Colour BorderColor() const { return borderColor_; }
    void SetBorderColor(Colour colour);
    int BorderWidth() const { return borderWidth_; }
    void SetBorderWidth(int width);
    Colour FillColor() const { return fillColor_; }
    void SetFillColor(Colour colour);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Kind kind_;
    Colour borderColor_ = 0;
    int borderWidth_ = 1;
    Colour fillColor_ = 0;
};

} // namespace tallyon
