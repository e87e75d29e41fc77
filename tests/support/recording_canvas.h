// A canvas that records every call instead of drawing, for tests.
#pragma once

#include "platform/canvas.h"

#include <string>
#include <vector>

namespace tallyon {

struct CanvasOp {
    enum class Kind { Clear, Line, Box, FilledBox, Circle, Text };
    Kind kind = Kind::Clear;
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0; // Circle: centre in x1, y1 and radius in x2
    Colour colour = 0;                  // outline, line, text or clear colour
    int penWidth = 0;
    bool filled = false;
    Colour fill = 0;
    std::string text;
    FontSpec font;
};

class RecordingCanvas : public Canvas {
public:
    void Clear(Colour background) override;
    void Line(int x1, int y1, int x2, int y2, Colour colour, int penWidth) override;
    void Box(int x1, int y1, int x2, int y2, Colour colour, int penWidth) override;
    void FilledBox(int x1, int y1, int x2, int y2, Colour fill) override;
    void Circle(int cx, int cy, int radius, Colour outline, int penWidth, std::optional<Colour> fill) override;
    void Text(int x, int y, const std::string& text, const FontSpec& font, Colour colour) override;
    // A fixed metric: each character 0.6 em wide, lines 1.2 em high.
    TextSize MeasureText(const std::string& text, const FontSpec& font) override;

    const std::vector<CanvasOp>& Ops() const { return ops_; }
    void Reset() { ops_.clear(); }
    // The recorded operations of one kind, in order.
    std::vector<CanvasOp> OpsOf(CanvasOp::Kind kind) const;

private:
    std::vector<CanvasOp> ops_;
};

} // namespace tallyon
