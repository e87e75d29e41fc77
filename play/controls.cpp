// The new-puzzle button and the small board controls: show solution, grid size, start side
// and the full redraw.
#include "play/controls.h"

#include "core/generator.h"
#include "core/random.h"
#include "play/draw.h"
#include "play/play_text.h"

namespace tallyon {
namespace {

void SetGridSize(PlayHost& host, Board& board, int size)
{
    board.GridSize = size;
    host.SetGridSizeLabel({GridSizeText(size), std::to_string(size)});
    board.BoardSpan = 2 * size + 1;
}

// Blanks the picture and forgets the offered link before the board is rebuilt.
void ClearForNewPuzzle(PlayHost& host, PlayState& state)
{
    state.HoverRow = state.HoverCol = 0;
    state.EndARow = state.EndACol = state.EndBRow = state.EndBCol = 0;
    host.OpenBoardCanvas()->Clear(host.Style().Background);
}

} // namespace

std::string StartSideCaption(int side)
{
    switch (side) {
    case kSideRandom: return "Random";
    case kSideLeft: return "Left";
    case kSideTop: return "Top";
    default: return "";
    }
}

void NewPuzzle(PlayHost& host, Board& board, PlayState& state, int button)
{
    LetPendingEventsRun();
    host.SetBusy(true);
    host.SetCheckTimer(false);
    host.SetBoardEnabled(false);
    host.SetStatus("Creating Puzzle ...");
    host.SetIndicator(host.Style().Background);

    const int size = button == 2 ? RandomInt(7, 1) + 3
                                 : WrapGridSize(NumberFromText(host.GridSizeLabel().tag));
    SetGridSize(host, board, size);
    ClearForNewPuzzle(host, state);
    BuildPuzzle(board, NumberFromText(host.StartSideLabel().tag), host.PictureWidth());
    DrawBoard(host, board, 0);

    host.SetStatus("Puzzle Created");
    host.SetBoardEnabled(true);
    host.SetBusy(false);
}

void ShowSolution(PlayHost& host, const Board& board)
{
    if (board.PathList.empty())
        return;
    {
        const std::unique_ptr<Canvas> canvas = host.OpenBoardCanvas();
        const DrawStyle style = host.Style();
        DrawBoard(*canvas, board, style, 1);
        for (int row = 1; row <= board.BoardSpan; ++row) {
            for (int col = 1; col <= board.BoardSpan; ++col) {
                // Link cells go straight to their own colours: a node-coloured patch under
                // them would leave a fringe around the digit on a smoothed surface.
                if (board.NodeValue(row, col) <= 0 || (row % 2 == 0 && col % 2 == 0))
                    continue;
                if (IsLinkCell(row, col))
                    DrawCellAsLink(*canvas, board, style, row, col);
                else
                    DrawCellAsNode(*canvas, board, style, row, col);
            }
        }
        DrawMarks(*canvas, board, style);
    }
    host.SetStatus("Solution ...");
}

void HideSolution(PlayHost& host, const Board& board)
{
    if (board.PathList.empty())
        return;
    host.SetStatus("");
    DrawBoard(host, board, 0);
}

int StepGridSize(PlayHost& host, Board& board, int button)
{
    host.SetCheckTimer(false);
    int size = board.GridSize;
    if (button == 1)
        ++size;
    else if (button == 2)
        --size;
    SetGridSize(host, board, WrapGridSize(size));
    return board.GridSize;
}

int StepStartSide(PlayHost& host, Board& board, int button)
{
    int side = NumberFromText(host.StartSideLabel().tag) + (button == 2 ? -1 : 1);
    if (side > kSideTop)
        side = kSideRandom;
    if (side < kSideRandom)
        side = kSideTop;
    board.StartSide = side;
    host.SetStartSideLabel({StartSideCaption(side), std::to_string(side)});
    return side;
}

void RedrawBoard(PlayHost& host, Board& board)
{
    host.ApplyLayoutAndColours();
    if (!board.PathList.empty()) {
        DrawBoard(host, board, 0);
        return;
    }
    LayoutBoard(board, host.PictureWidth());
    DrawGrid(*host.OpenBoardCanvas(), board, host.Style());
}

} // namespace tallyon
