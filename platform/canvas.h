// The one drawing surface of the program: screen, printer and clipboard picture all draw
// through it, so there is a single renderer.
//
// Coordinates are twips (1440 per inch; 15 per logical pixel on screen). Pen widths are in
// the target's pen units (one logical pixel on screen; see the implementation for others).
// Text is placed by its top-left corner.
#pragma once

#include "platform/colour.h"

#include <optional>
#include <string>

namespace tallyon {

inline constexpr int kTwipsPerInch = 1440;
inline constexpr int kTwipsPerPixel = 15;

struct FontSpec {
    std::string family = "Arial";
    double points = 10.0;
    bool bold = false;
};

struct TextSize {
    int width = 0;  // twips
    int height = 0; // twips
};

class Canvas {
public:
    virtual ~Canvas() = default;

    // Fills the whole surface with one colour.
    virtual void Clear(Colour background) = 0;
    // A straight line between two points.
    virtual void Line(int x1, int y1, int x2, int y2, Colour colour, int penWidth) = 0;
    // The outline of the box with the given corners.
    virtual void Box(int x1, int y1, int x2, int y2, Colour colour, int penWidth) = 0;
    // The box with the given corners filled, without outline.
    virtual void FilledBox(int x1, int y1, int x2, int y2, Colour fill) = 0;
    // A circle outlined in `outline`; filled with `fill` when one is given.
    virtual void Circle(int cx, int cy, int radius, Colour outline, int penWidth, std::optional<Colour> fill) = 0;
    // Text with its top-left corner at (x, y).
    virtual void Text(int x, int y, const std::string& text, const FontSpec& font, Colour colour) = 0;
    // The size the text would take.
    virtual TextSize MeasureText(const std::string& text, const FontSpec& font) = 0;
};

} // namespace tallyon
