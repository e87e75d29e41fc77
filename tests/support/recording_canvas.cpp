// A canvas that records every call instead of drawing, for tests.
#include "tests/support/recording_canvas.h"

namespace tallyon {

void RecordingCanvas::Clear(Colour background)
{
    CanvasOp op;
    op.kind = CanvasOp::Kind::Clear;
    op.colour = background;
    ops_.push_back(op);
}

void RecordingCanvas::Line(int x1, int y1, int x2, int y2, Colour colour, int penWidth)
{
    ops_.push_back({CanvasOp::Kind::Line, x1, y1, x2, y2, colour, penWidth, false, 0, {}, {}});
}

void RecordingCanvas::Box(int x1, int y1, int x2, int y2, Colour colour, int penWidth)
{
    ops_.push_back({CanvasOp::Kind::Box, x1, y1, x2, y2, colour, penWidth, false, 0, {}, {}});
}

void RecordingCanvas::FilledBox(int x1, int y1, int x2, int y2, Colour fill)
{
    ops_.push_back({CanvasOp::Kind::FilledBox, x1, y1, x2, y2, fill, 0, true, fill, {}, {}});
}

void RecordingCanvas::Circle(int cx, int cy, int radius, Colour outline, int penWidth, std::optional<Colour> fill)
{
    ops_.push_back(
        {CanvasOp::Kind::Circle, cx, cy, radius, 0, outline, penWidth, fill.has_value(), fill.value_or(0), {}, {}});
}

void RecordingCanvas::Text(int x, int y, const std::string& text, const FontSpec& font, Colour colour)
{
    ops_.push_back({CanvasOp::Kind::Text, x, y, 0, 0, colour, 0, false, 0, text, font});
}

TextSize RecordingCanvas::MeasureText(const std::string& text, const FontSpec& font)
{
    const double em = font.points * 20.0; // twips per em
    return {static_cast<int>(0.6 * em * static_cast<double>(text.size())), static_cast<int>(1.2 * em)};
}

std::vector<CanvasOp> RecordingCanvas::OpsOf(CanvasOp::Kind kind) const
{
    std::vector<CanvasOp> out;
    for (const auto& op : ops_)
        if (op.kind == kind)
            out.push_back(op);
    return out;
}

} // namespace tallyon
