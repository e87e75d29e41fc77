// One printed page as the print module asks the program for it.
//
// The module owns the printer and the painter; the program only draws. Paint is called once,
// on a painter that has begun on the printer, with the printer's resolution in dots per inch
// and its printable area in device pixels.
#pragma once

class QPainter;

namespace tallyon {

class PagePainter {
public:
    virtual ~PagePainter() = default;
    virtual void Paint(QPainter& painter, double dpi, double width, double height) const = 0;
};

} // namespace tallyon
