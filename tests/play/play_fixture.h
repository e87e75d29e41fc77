// Test support for the play routines: a fake main window over a recording canvas, and boards
// whose digits and path are known.
#pragma once

#include "core/board/board.h"
#include "core/generator/generator.h"
#include "play/controls.h"
#include "play/linking.h"
#include "play/play_host.h"
#include "play/play_text.h"
#include "play/verify.h"
#include "tests/core/test_support.h"
#include "tests/support/recording_canvas.h"

#include <memory>
#include <string>
#include <vector>

namespace tallyon::test {

using tallyon::testing::TickingClock;

inline constexpr int kPictureWidth = 8400;

// Distinct colours so that every drawing can be told apart.
inline DrawStyle TestStyle()
{
    DrawStyle style{RGB(1, 2, 3), RGB(4, 5, 6), RGB(7, 8, 9), RGB(128, 0, 0), RGB(250, 251, 252), 2};
    style.MarkColour = RGB(90, 91, 92);
    return style;
}

// Hands every call on to another canvas that outlives it.
struct ForwardingCanvas : Canvas {
    explicit ForwardingCanvas(Canvas& to) : to_(to) {}
    void Clear(Colour c) override { to_.Clear(c); }
    void Line(int x1, int y1, int x2, int y2, Colour c, int w) override { to_.Line(x1, y1, x2, y2, c, w); }
    void Box(int x1, int y1, int x2, int y2, Colour c, int w) override { to_.Box(x1, y1, x2, y2, c, w); }
    void FilledBox(int x1, int y1, int x2, int y2, Colour f) override { to_.FilledBox(x1, y1, x2, y2, f); }
    void Circle(int x, int y, int r, Colour c, int w, std::optional<Colour> f) override
    {
        to_.Circle(x, y, r, c, w, f);
    }
    void Text(int x, int y, const std::string& t, const FontSpec& f, Colour c) override { to_.Text(x, y, t, f, c); }
    TextSize MeasureText(const std::string& t, const FontSpec& f) override { return to_.MeasureText(t, f); }
    Canvas& to_;
};

// The main window as plain fields that also records every request it gets, in order, as
// text ("status:Incorrect Math", "indicator:0,200,0", "marker:810,1845,270", "hide-marker",
// "timer:on", "busy:off", "board:enabled", "next-size:8", "next-direction:2", "ask:...").
// Every drawing lands in `canvas`, or in `target` when set.
class FakeHost : public PlayHost {
public:
    std::string status, rowCaption, columnCaption;
    bool timer = false;
    NextPuzzle next{7, 1};
    std::string gridSizeCaption = "7x7", startSideCaption = "Left";
    int answer = 6, asked = 0;
    DrawStyle style = TestStyle();
    RecordingCanvas canvas;
    RecordingCanvas overlay; // what the overlay holds now: ClearOverlay empties it
    Canvas* target = nullptr;
    std::vector<std::string> requests;

    // The requests of one kind ("status", "indicator", ...), values only, in order.
    std::vector<std::string> Requests(const std::string& kind) const
    {
        std::vector<std::string> values;
        for (const std::string& r : requests)
            if (r == kind || r.rfind(kind + ":", 0) == 0)
                values.push_back(r.size() > kind.size() ? r.substr(kind.size() + 1) : "");
        return values;
    }
    static std::string ColourText(Colour c)
    {
        return std::to_string(c & 0xFF) + "," + std::to_string((c >> 8) & 0xFF) + "," +
               std::to_string((c >> 16) & 0xFF);
    }

    void SetStatus(const std::string& text) override { status = text, Note("status:" + text); }
    std::string Status() const override { return status; }
    void SetHoverCaptions(const std::string& r, const std::string& c) override { rowCaption = r, columnCaption = c; }
    void SetIndicator(Colour colour) override { Note("indicator:" + ColourText(colour)); }
    void SetCheckTimer(bool enabled) override { timer = enabled, Note(enabled ? "timer:on" : "timer:off"); }
    void ShowErrorMarker(int left, int top, int size) override
    {
        Note("marker:" + std::to_string(left) + "," + std::to_string(top) + "," + std::to_string(size));
    }
    void HideErrorMarker() override { Note("hide-marker"); }
    void SetBusy(bool busy) override { Note(busy ? "busy:on" : "busy:off"); }
    void SetBoardEnabled(bool enabled) override { Note(enabled ? "board:enabled" : "board:disabled"); }
    NextPuzzle Next() const override { return next; }
    void SetNextGridSize(int size) override
    {
        next.GridSize = size, gridSizeCaption = GridSizeText(size);
        Note("next-size:" + std::to_string(size));
    }
    void SetNextPathDirection(int direction) override
    {
        next.PathDirection = direction;
        startSideCaption = StartSideCaption(direction);
        Note("next-direction:" + std::to_string(direction));
    }
    void SetNextGrade(std::optional<Grade> grade) override
    {
        next.grade = grade;
        Note("next-grade:" + std::string(grade ? GradeName(*grade) : "Any"));
    }
    int Ask(const std::string& message, const std::string&) override { return Note("ask:" + message), ++asked, answer; }
    int PictureWidth() const override { return kPictureWidth; }
    std::unique_ptr<Canvas> OpenBoardCanvas() override
    {
        return std::make_unique<ForwardingCanvas>(target ? *target : canvas);
    }
    std::unique_ptr<Canvas> OpenOverlayCanvas() override { return std::make_unique<ForwardingCanvas>(overlay); }
    void ClearOverlay() override { overlay.Reset(), Note("overlay-cleared"); }
    DrawStyle Style() const override { return style; }
    void ApplyLayoutAndColours() override { Note("layout"); }
    void GameChanged() override { Note("saved"); }

private:
    void Note(const std::string& request) { requests.push_back(request); }
};

// A board of the given size with the path straight along row 3 from column 1 to the last, the
// Hint at (3, 5). Node digits are 1; row 3's link cells hold 1 (1, 1, 1 is valid), others 5.
inline void MakeRowPuzzle(Board& board, int gridSize)
{
    board.GridSize = gridSize;
    ResetBoard(board, kPictureWidth);
    for (int row = 1; row <= board.BoardSpan; ++row) {
        for (int col = 1; col <= board.BoardSpan; ++col) {
            const bool node = IsNode(row, col), link = IsLinkCell(row, col);
            board.NodeValue(row, col) = node || (link && row == 3) ? 1 : (link ? 5 : 0);
            board.CellState(row, col) = node ? kNodeCell : (link ? kLinkCell : kNoCell);
        }
    }
    for (int col = 1; col <= board.BoardSpan; ++col) {
        board.PathRight(3, col) = col % 2 == 1 && col < board.BoardSpan;
        board.PathLeft(3, col) = col % 2 == 1 && col > 1;
        board.PathCells.push_back(board.CellNo(3, col));
        board.List2.push_back(std::to_string(board.CellNo(3, col)));
        board.PathList += board.List2.back() + ",";
    }
    board.KeyNodes = {board.CellNo(3, 1), board.CellNo(3, 5), board.CellNo(3, board.BoardSpan)};
    board.StartNode = board.KeyNodes[0];
    board.EndNode = board.KeyNodes[2];
}

// A Start, Hint or End mark: a ring (an unfilled circle) or an "X".
inline bool IsMark(const CanvasOp& op) { return (op.kind == CanvasOp::Kind::Circle && !op.filled) || op.text == "X"; }

// Moves the pointer onto the centre of cell (row, col) and releases the button there.
inline void ClickCell(FakeHost& host, Board& board, PlayState& state, int row, int col, int button = 1)
{
    HoverCell(host, board, state, static_cast<float>(board.CellX(row, col)), static_cast<float>(board.CellY(row, col)));
    MakeLink(host, board, state, button);
}

// The user links of the whole board, as "row,col:letters " for every linked node.
inline std::string UserLinkMap(const Board& board)
{
    std::string map;
    for (int row = 1; row <= board.BoardSpan; row += 2)
        for (int col = 1; col <= board.BoardSpan; col += 2)
            if (const std::string letters = LinkLetters(board, row, col); !letters.empty())
                map += std::to_string(row) + "," + std::to_string(col) + ":" + letters + " ";
    return map;
}

} // namespace tallyon::test
