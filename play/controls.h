// The new-puzzle button and the small board controls: show solution, grid size, start side
// and the full redraw.
//
// Contract: mouse buttons are 1 left, 2 right, 4 middle. Label4's tag holds the grid size and
// Label6's tag the start side (0 Random, 1 Left, 2 Top), both as decimal text.
#pragma once

#include "core/board.h"
#include "play/play_host.h"

#include <string>

namespace tallyon {

// The release handler of cmdnew: builds a puzzle of the size in Label4's tag (button 2: a
// random size 4 to 10), from the side in Label6's tag, and draws it. The undo history is kept.
void NewPuzzle(PlayHost& host, Board& board, PlayState& state, int button);

// cmdshowsol pressed: the board with the solution path, digits on top; "Solution ...".
void ShowSolution(PlayHost& host, const Board& board);
// cmdshowsol released: the board with the user's links again.
void HideSolution(PlayHost& host, const Board& board);

// Label4 released: stops Timer2, steps GridSize (1 up, 2 down, wrapping within 4..10), sets
// BoardSpan and Label4. Returns the new size. The board on screen is not redrawn.
int StepGridSize(PlayHost& host, Board& board, int button);

// Label6 released: steps the side in Label6's tag (2 down, others up, wrapping within 0..2),
// stores it in StartSide and sets Label6. Returns the new side.
int StepStartSide(PlayHost& host, Board& board, int button);

// Command2: the window's layout and colours, then the current puzzle with the user's links, or
// the empty grid when there is no puzzle.
void RedrawBoard(PlayHost& host, Board& board);

// "Random", "Left" or "Top" for 0, 1, 2; "" for anything else.
std::string StartSideCaption(int side);

} // namespace tallyon
