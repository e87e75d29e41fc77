// Fuzz target: settings, as a damaged tallyon.cfg may give them, flowing into the board as
// drawn on screen and into the printed page, on the recording canvas. Every pen drawn must be
// at least 1 and bounded by the board, whatever the widths asked for.
#include "core/board/random.h"
#include "core/generator/generator.h"
#include "output/board_picture.h"
#include "play/draw.h"
#include "tests/support/recording_canvas.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

std::int32_t Take(const std::uint8_t*& data, std::size_t& size)
{
    std::int32_t value = 0;
    const std::size_t n = size < sizeof value ? size : sizeof value;
    std::memcpy(&value, data, n);
    data += n;
    size -= n;
    return value;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tallyon;
    std::uint64_t tick = 1;
    SetClockSource([&tick] { return tick += 7919; }); // the same input makes the same puzzle
    Board board;
    board.GridSize = 4 + int(std::uint32_t(Take(data, size)) % 7);
    BuildPuzzle(board, int(std::uint32_t(Take(data, size)) % 5), 8400);
    DrawStyle style;
    style.GridLineWidth = Take(data, size);
    style.NodeShape = Take(data, size);
    OutputOptions options;
    options.NodeShape = style.NodeShape;
    options.GridLineWidth = style.GridLineWidth;
    options.PrintLineWidth = Take(data, size);
    const int mode = Take(data, size) & 1;
    RecordingCanvas screen, page;
    DrawBoard(screen, board, style, mode);
    PrintBoard(page, board, 3000, 1000, mode, options);
    SetClockSource(nullptr);
    for (const RecordingCanvas* canvas : {&screen, &page})
        for (const CanvasOp& op : canvas->Ops())
            if ((op.kind == CanvasOp::Kind::Line || op.kind == CanvasOp::Kind::Box) &&
                (op.penWidth < 1 || op.penWidth > 4 * board.CellPitch))
                std::abort();
    return 0;
}
