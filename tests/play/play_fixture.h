// Test support for the play routines: a fake main window over a recording canvas, and boards
// with a hand-laid path whose digits are known.
#pragma once

#include "core/board.h"
#include "platform/recording_canvas.h"
#include "play/play_host.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tallyon::test {

inline constexpr int kPictureWidth = 8400;

// Distinct colours so that every drawing can be told apart.
DrawStyle TestStyle();

// The main window as a set of plain fields; every drawing lands in `canvas`.
class FakeHost : public PlayHost {
public:
    std::string status, rowCaption, columnCaption;
    Colour indicator = 0;
    bool timer = false, busy = false, boardEnabled = true, markerShown = false;
    int markerLeft = 0, markerTop = 0, markerSize = 0;
    LabelText gridSizeLabel{"7x7", "7"}, startSideLabel{"Left", "1"};
    int answer = 6;
    std::vector<std::pair<std::string, std::string>> asked;
    int layoutRuns = 0, canvasOpens = 0;
    DrawStyle style = TestStyle();
    RecordingCanvas canvas;

    void SetStatus(const std::string& text) override { status = text; }
    std::string Status() const override { return status; }
    void SetHoverCaptions(const std::string& row, const std::string& column) override;
    void SetIndicator(Colour colour) override { indicator = colour; }
    void SetCheckTimer(bool enabled) override { timer = enabled; }
    bool CheckTimerEnabled() const override { return timer; }
    void ShowErrorMarker(int left, int top, int size) override;
    void HideErrorMarker() override { markerShown = false; }
    void SetBusy(bool on) override { busy = on; }
    void SetBoardEnabled(bool enabled) override { boardEnabled = enabled; }
    LabelText GridSizeLabel() const override { return gridSizeLabel; }
    void SetGridSizeLabel(const LabelText& label) override { gridSizeLabel = label; }
    LabelText StartSideLabel() const override { return startSideLabel; }
    void SetStartSideLabel(const LabelText& label) override { startSideLabel = label; }
    int Ask(const std::string& message, const std::string& style) override;
    int PictureWidth() const override { return kPictureWidth; }
    std::unique_ptr<Canvas> OpenBoardCanvas() override;
    DrawStyle Style() const override { return style; }
    void ApplyLayoutAndColours() override { ++layoutRuns; }
};

// A board of the given size with every node digit 1 and every link-cell digit 5 (1, 5, 1 is
// no valid link), prepared for play like a generated one but without a path.
void MakePlainBoard(Board& board, int gridSize);

// Lays a solution path through the given nodes (neighbours two cells apart): link cells get
// digit 1 (1, 1, 1 is valid), PathList, List2, the path flags and the key nodes are set.
void LayTestPath(Board& board, const std::vector<std::pair<int, int>>& nodes);

// A plain board with the path straight along row 3 from column 1 to the last column.
void MakeRowPuzzle(Board& board, int gridSize);

// Moves the pointer onto the centre of cell (row, col) and releases the button there.
void ClickCell(FakeHost& host, Board& board, PlayState& state, int row, int col, int button = 1);

// The recorded lines drawn in one colour.
std::vector<CanvasOp> LinesIn(const RecordingCanvas& canvas, Colour colour);

// The user links of the whole board, as "row,col:letters" for every linked node.
std::string UserLinkMap(const Board& board);

} // namespace tallyon::test
