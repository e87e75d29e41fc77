// What the play routines need from the main window, and the play state the window owns.
//
// Contract: the play routines are plain C++ over a Board, a Canvas and a PlayHost. The main
// window implements PlayHost with its widgets (Label1, Label2, Label4, Label6, Label7, Label8,
// Timer2, the error marker, Picture1 and Picture4) and owns one PlayState beside its Board.
// No play routine keeps state of its own between calls.
#pragma once

#include "core/board/board.h"
#include "core/reasoning/grader.h"
#include "platform/canvas.h"
#include "platform/colour.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tallyon {

// Colours and widths of the board picture, built by the host from the settings and the active
// colour scheme.
struct DrawStyle {
    Colour GridColour = fixed::DarkText;
    Colour ShapeColour = 0;
    Colour FontColour = fixed::DarkText;
    Colour UserLineColour = 0;
    Colour Background = fixed::White; // the scheme's entry 2
    int GridLineWidth = 1;            // pen units (one logical pixel on screen)
    int NodeShape = kRoundNodes;      // anything else draws boxes
    std::string FontFamily = "Arial";
    Colour MarkColour = fixed::MidGrey; // the player's crosses: the scheme's entry 12
};

// The grid size, path direction and grade that the next new puzzle takes, the first two as the
// host shows them on Label4 and Label6. The grid size is the setting saved on Exit; the direction is Label6's own,
// which takes the setting at start-up and from the options, while its clicks leave the setting
// alone. A puzzle already built keeps its own size and start side in its Board, so stepping
// these never changes the puzzle being played.
struct NextPuzzle {
    int GridSize = 7;
    int PathDirection = 0;                     // 0 Random, 1 Left, 2 Top; 3 and 4 lay the path from the left
    std::optional<Grade> grade = std::nullopt; // none: any grade, the generator as it comes
};

// The main window as the play routines see it. Every call takes effect at once.
class PlayHost {
public:
    virtual ~PlayHost() = default;

    // Label7, the status line.
    virtual void SetStatus(const std::string& text) = 0;
    virtual std::string Status() const = 0;
    // Label1 (hovered row) and Label2 (hovered column).
    virtual void SetHoverCaptions(const std::string& row, const std::string& column) = 0;
    // Label8's back colour, the indicator of the periodic check.
    virtual void SetIndicator(Colour colour) = 0;
    // Timer2, the periodic check (interval 2000 ms); its ticks call Timer2Tick.
    virtual void SetCheckTimer(bool enabled) = 0;
    // The error marker over the board picture; left, top and size in twips of the picture.
    virtual void ShowErrorMarker(int left, int top, int size) = 0;
    virtual void HideErrorMarker() = 0;
    // The busy pointer for the whole screen (hourglass on, default off).
    virtual void SetBusy(bool busy) = 0;
    // Enables or disables the board pictures Picture1 and Picture4 together.
    virtual void SetBoardEnabled(bool enabled) = 0;
    // The settings of the next puzzle.
    virtual NextPuzzle Next() const = 0;
    // Stores the next grid size and shows it on Label4 ("7x7").
    virtual void SetNextGridSize(int size) = 0;
    // Stores the next path direction and shows it on Label6 ("Random", "Left", "Top").
    virtual void SetNextPathDirection(int direction) = 0;
    // Stores the next puzzle's grade; no control shows it.
    virtual void SetNextGrade(std::optional<Grade> grade) = 0;
    // Shows the program's message box and returns its answer code (platform/answer_codes.h).
    virtual int Ask(const std::string& message, const std::string& style) = 0;
    // Width of the board picture in twips.
    virtual int PictureWidth() const = 0;
    // A canvas on the board picture's backing image; what is drawn shows when it is destroyed.
    virtual std::unique_ptr<Canvas> OpenBoardCanvas() = 0;
    // A layer over the board picture for what shows only while a key is held: drawn over the
    // picture, and dropped whole by ClearOverlay, which leaves every pixel of the picture as
    // it was before. Clearing the picture leaves the layer alone.
    virtual std::unique_ptr<Canvas> OpenOverlayCanvas() = 0;
    virtual void ClearOverlay() = 0;
    // The current colours and widths.
    virtual DrawStyle Style() const = 0;
    // The window's layout step and colour application, run before a full redraw.
    virtual void ApplyLayoutAndColours() = 0;
    // The game in play changed: a new puzzle, one from a code, a link made or removed, an
    // undo, a redo, a reset, a mark, a hint counted, or the next puzzle's grade, each after it
    // is drawn. The host may keep the game to resume.
    virtual void GameChanged() {}
};

// Where the hint key stands: its next press shows where to look and the kind of deduction
// (First), or also what the deduction rules out and forces (Second).
enum class HintStage { First, Second };

// Hover, undo, cursor and hint state of play, owned by the main window beside the Board.
struct PlayState {
    // The offered triple: the link cell under the pointer and its two end nodes (A left or
    // above, B right or below). All 0 when nothing is offered.
    int HoverRow = 0;
    int HoverCol = 0;
    int EndARow = 0;
    int EndACol = 0;
    int EndBRow = 0;
    int EndBCol = 0;
    // The undo history, newest record at index 0; never cleared by a new puzzle.
    std::vector<std::string> undolist;
    // The moves undone since the last new move, newest undo at index 0, in the record form of
    // undolist; cleared by a new move, a reset and a new puzzle.
    std::vector<std::string> redolist;
    // The keyboard cursor: a node, Start on a new puzzle; drawn only while shown (from the
    // first key that moves it until the mouse moves over the board).
    int CursorRow = 0;
    int CursorCol = 0;
    bool CursorShown = false;
    // The hints shown on this puzzle, each counted at its first press; 0 for a new puzzle.
    int HintCount = 0;
    HintStage HintNext = HintStage::First;
    // While H is held: the hint shows on the overlay, and the status line it took the place of.
    bool HintShown = false;
    std::string StatusBeforeHint;
    // A hint counted since the game was last kept.
    bool HintCountUnkept = false;
};

} // namespace tallyon
