// ColPik: the options window's colour picker - sixteen standard swatches, red/green/blue
// scroll bars with their values, and a preview of the chosen colour.
#pragma once

#include "platform/colour.h"

#include <QWidget>

#include <array>

class QLabel;
class QPushButton;
class QScrollBar;

namespace tallyon {

class ColPik : public QWidget {
    Q_OBJECT
    Q_PROPERTY(uint SelectedColour READ SelectedColour WRITE SetSelectedColour NOTIFY ColourChanged)

public:
    // The classic sixteen: black, maroon, green, olive, navy, purple, teal, silver, grey, red,
    // lime, yellow, blue, fuchsia, aqua, white.
    static const std::array<Colour, 16> kStandardColours;

    explicit ColPik(QWidget* parent = nullptr);

    // The chosen colour; setting it moves the bars and the preview.
    Colour SelectedColour() const;
    void SetSelectedColour(Colour colour);
    // The scheme's window background and control colour.
    void SetColours(Colour back, Colour control);

    // For the window that holds it (and tests): swatch i (0..15) and the bars (0 red,
    // 1 green, 2 blue).
    QPushButton* Swatch(int index) const { return swatches_[index]; }
    QScrollBar* Bar(int index) const { return bars_[index]; }
    QWidget* Preview() const { return preview_; }

signals:
    void ColourChanged(uint colour);

private:
    void BuildSwatches();
    void BuildBars();
    void BarMoved();

    std::array<QPushButton*, 16> swatches_{};
    std::array<QScrollBar*, 3> bars_{};
    std::array<QLabel*, 3> values_{};
    std::array<QLabel*, 3> names_{};
    QWidget* preview_ = nullptr;
    bool settingBars_ = false;
};

} // namespace tallyon
