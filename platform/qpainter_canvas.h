// The canvas on a QPainter: the screen, the printer and the clipboard picture.
//
// The painter's coordinates are converted from twips by the given device resolution
// (dots per inch of the painter's logical coordinate system). Pen widths are multiplied by
// penUnit device units: 1 on screen (one logical pixel), larger on a printer.
#pragma once

#include "platform/canvas.h"

#include <QFont>
#include <QImage>
#include <QPointF>
#include <QStaticText>

#include <map>
#include <string>
#include <tuple>

class QPainter;

namespace tallyon {

class QPainterCanvas : public Canvas {
public:
    // dpi: logical units per inch of the painter (96 on screen: 15 twips per pixel).
    // penUnit: device units per pen-width unit.
    QPainterCanvas(QPainter& painter, double dpi = 96.0, double penUnit = 1.0);

    void Clear(Colour background) override;
    void Line(int x1, int y1, int x2, int y2, Colour colour, int penWidth) override;
    void Box(int x1, int y1, int x2, int y2, Colour colour, int penWidth) override;
    void FilledBox(int x1, int y1, int x2, int y2, Colour fill) override;
    void Circle(int cx, int cy, int radius, Colour outline, int penWidth, std::optional<Colour> fill) override;
    void Text(int x, int y, const std::string& text, const FontSpec& font, Colour colour) override;
    TextSize MeasureText(const std::string& text, const FontSpec& font) override;

private:
    double ToDevice(int twips) const;
    // A pen width in pen units as drawn on the device: at least one unit, at most the size of
    // the surface.
    double PenOnDevice(int penWidth) const;
    // The QFont of a FontSpec; the last one is kept, with the laid-out texts drawn in it, so that
    // runs of text in one font (a board's digits) are not set up anew for every call.
    const QFont& FontFor(const FontSpec& wanted);
    static void PaintCircle(QPainter& painter, QPointF centre, double r, Colour outline, double pen,
                            std::optional<Colour> fill);
    // Circles already rendered on a raster surface: radius, outline, pen, filled, fill.
    using CircleKey = std::tuple<int, Colour, int, bool, Colour>;
    std::map<CircleKey, QImage> circles_;
    QPainter& painter_;
    double scale_; // device units per twip
    double penUnit_;
    std::optional<FontSpec> fontKey_;
    QFont font_;
    std::map<std::string, QStaticText> texts_;
};

} // namespace tallyon
