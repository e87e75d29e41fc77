// Lines kept whole on a device's pixels when logical pixels are not whole device pixels.
//
// At a fractional scale (a device pixel ratio of 1.25 or 1.5) a line one logical pixel wide is
// 1.25 or 1.5 device pixels wide, and how many pixel rows it covers depends on where it falls:
// with the window's widgets starting part of a pixel into it (a 19-pixel menu bar is 23.75
// device pixels at 1.25), one grid line comes out one pixel thick and the next two. Drawn
// through DevicePixels, every line of one pen covers the same whole number of device pixels.
//
// Where every logical pixel is a whole number of device pixels and the surface starts on a
// device pixel (scale 1 or 2), Qt's own drawing already gives each pen one thickness, and
// Snaps() is false so that those pictures stay exactly as Qt draws them. Vector output (a
// printer, a PDF) and transforms that turn or shear are never snapped.
#pragma once

#include <QPoint>
#include <QRect>
#include <QTransform>

class QColor;
class QImage;
class QPainter;

namespace tallyon {

class DevicePixels {
public:
    // Reads the painter's current transform to its device.
    explicit DevicePixels(const QPainter& painter);

    bool Snaps() const { return snaps_; }
    // Device pixels across one logical unit.
    double Scale() const { return scale_; }

    // The device pixels a line `width` logical units wide covers when centred on the logical
    // x (or y): the first of them; Thickness gives how many, at least one.
    int LineStartX(double x, int thickness) const;
    int LineStartY(double y, int thickness) const;
    int Thickness(double width) const;
    // The device pixel boundary nearest to a logical x (or y), as Qt rounds a filled box's edges.
    int EdgeX(double x) const;
    int EdgeY(double y) const;

    // Fills whole device pixels, given in device coordinates.
    void Fill(QPainter& painter, const QRect& device, const QColor& colour) const;
    // Draws an image pixel for pixel (its device pixel ratio set aside) with its top-left corner
    // on a device pixel.
    void Blit(QPainter& painter, QPoint device, const QImage& image) const;
    // The device position of a logical point.
    QPointF ToDevice(QPointF logical) const { return toDevice_.map(logical); }

private:
    QTransform toDevice_;    // logical to device, as the painter draws now
    QTransform deviceSpace_; // a world transform under which the painter draws in device pixels
    double scale_ = 1.0;
    bool snaps_ = false;
};

} // namespace tallyon
