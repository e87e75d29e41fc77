// The new-puzzle button and the small board controls: show solution, grid size, start side
// and the full redraw.
#include "play/controls.h"

#include "core/board/random.h"
#include "core/codes/puzzle_code.h"
#include "core/generator/generator.h"
#include "play/draw.h"
#include "play/hint.h"
#include "play/keyboard.h"
#include "play/play_text.h"

#include <algorithm>
#include <array>

namespace tallyon {
namespace {

// Blanks the picture and forgets the offered link, the undone moves and the hints before the
// board is rebuilt. The undo history is kept.
void ClearForNewPuzzle(PlayHost& host, PlayState& state)
{
    state.HoverRow = state.HoverCol = 0;
    state.EndARow = state.EndACol = state.EndBRow = state.EndBCol = 0;
    state.redolist.clear();
    ForgetHint(host, state);
    state.HintCount = 0;
    host.OpenBoardCanvas()->Clear(host.Style().Background);
}

// The grades the key G steps through, in order.
constexpr std::array<std::optional<Grade>, 4> kGradeCycle = {std::nullopt, Grade::Easy, Grade::Medium, Grade::Hard};

// The grade of the puzzle in play, for the status line; a puzzle from a code that reasoning
// alone cannot finish is beyond every grade.
std::string GradeInPlay(const Board& board)
{
    if (board.List2.empty())
        return "no puzzle yet";
    const GradeReport report = GradePuzzle(board);
    return std::string("this one: ") + (report.solved ? GradeName(report.grade) : "beyond Hard");
}

void BeginBuilding(PlayHost& host)
{
    LetPendingEventsRun();
    host.SetBusy(true);
    host.SetCheckTimer(false);
    host.SetBoardEnabled(false);
    host.SetStatus("Creating Puzzle ...");
    host.SetIndicator(host.Style().Background);
}

void PuzzleBuilt(PlayHost& host, const Board& board, PlayState& state)
{
    ResetCursor(board, state);
    DrawBoard(host, board, kPuzzleMode);
    host.SetStatus("Puzzle Created");
    host.SetBoardEnabled(true);
    host.SetBusy(false);
}

} // namespace

std::string StartSideCaption(int side)
{
    switch (side) {
    case kSideRandom:
        return "Random";
    case kSideLeft:
        return "Left";
    case kSideTop:
        return "Top";
    default:
        return "";
    }
}

std::string GradeCaption(std::optional<Grade> grade) { return grade ? GradeName(*grade) : "Any"; }

std::optional<Grade> StepGrade(PlayHost& host, const Board& board)
{
    const auto at = std::find(kGradeCycle.begin(), kGradeCycle.end(), host.Next().grade);
    const std::optional<Grade> next =
        at == kGradeCycle.end() || at + 1 == kGradeCycle.end() ? kGradeCycle.front() : *(at + 1);
    host.SetNextGrade(next);
    host.SetStatus("Next puzzle: " + GradeCaption(next) + " (" + GradeInPlay(board) + ")");
    host.GameChanged();
    return next;
}

void NewPuzzle(PlayHost& host, Board& board, PlayState& state, int button)
{
    BeginBuilding(host);

    const int size = button == 2 ? RandomInt(7, 1) + 3 : WrapGridSize(host.Next().GridSize);
    host.SetNextGridSize(size);
    board.GridSize = size;
    board.BoardSpan = 2 * size + 1;
    ClearForNewPuzzle(host, state);
    BuildPuzzle(board, host.Next().PathDirection, host.PictureWidth(), 0, host.Next().grade);
    PuzzleBuilt(host, board, state);
    host.GameChanged();
}

bool NewPuzzleFromCode(PlayHost& host, Board& board, PlayState& state, const std::string& code)
{
    const DecodeResult result = DecodePuzzleCode(code, board, host.PictureWidth());
    if (!result.ok) {
        host.Ask("This puzzle code cannot be used:\r\n" + result.problem, "vbok+vbexclamation");
        return false;
    }
    BeginBuilding(host);
    ClearForNewPuzzle(host, state);
    PuzzleBuilt(host, board, state);
    host.GameChanged();
    return true;
}

void ShowSolution(PlayHost& host, const Board& board)
{
    if (board.PathList.empty())
        return;
    {
        const std::unique_ptr<Canvas> canvas = host.OpenBoardCanvas();
        const DrawStyle style = host.Style();
        DrawBoard(*canvas, board, style, kSolutionMode);
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
    DrawBoard(host, board, kPuzzleMode);
}

int StepGridSize(PlayHost& host, int button)
{
    host.SetCheckTimer(false);
    int size = WrapGridSize(host.Next().GridSize);
    if (button == 1)
        ++size;
    else if (button == 2)
        --size;
    host.SetNextGridSize(WrapGridSize(size));
    return host.Next().GridSize;
}

int StepStartSide(PlayHost& host, int button)
{
    // 64-bit, so that a direction read as the largest int still steps without overflow.
    const long long stepped = static_cast<long long>(host.Next().PathDirection) + (button == 2 ? -1 : 1);
    int side = static_cast<int>(std::clamp<long long>(stepped, kSideRandom - 1, kSideTop + 1));
    if (side > kSideTop)
        side = kSideRandom;
    if (side < kSideRandom)
        side = kSideTop;
    host.SetNextPathDirection(side);
    return side;
}

void RedrawBoard(PlayHost& host, Board& board)
{
    host.ApplyLayoutAndColours();
    if (!board.PathList.empty()) {
        DrawBoard(host, board, kPuzzleMode);
        return;
    }
    LayoutBoard(board, host.PictureWidth());
    DrawGrid(*host.OpenBoardCanvas(), board, host.Style());
}

} // namespace tallyon
