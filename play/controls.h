// The new-puzzle button and the small board controls: show solution, grid size, start side,
// the next puzzle's grade (the key G) and the full redraw.
//
// Contract: mouse buttons are 1 left, 2 right, 4 middle. The grid size and start side of the
// next puzzle come from the host (PlayHost::Next); the built puzzle's own are in its Board.
#pragma once

#include "core/board/board.h"
#include "play/play_host.h"

#include <string>

namespace tallyon {

// The release handler of cmdnew: builds a puzzle of the next grid size (button 2: a random
// size 4 to 10, which becomes the next size too), from the next path direction, of the next
// grade when one is chosen, and draws it. The undo history is kept.
void NewPuzzle(PlayHost& host, Board& board, PlayState& state, int button);

// The puzzle a puzzle code names (core/codes/puzzle_code.h), built and shown as NewPuzzle leaves a
// puzzle: "Puzzle Created". The next grid size and path direction are left as they are. A code
// that cannot be used shows a message saying why, leaves the board as it was, and gives false.
bool NewPuzzleFromCode(PlayHost& host, Board& board, PlayState& state, const std::string& code);

// cmdshowsol pressed: the board with the solution path, digits on top; "Solution ...".
void ShowSolution(PlayHost& host, const Board& board);
// cmdshowsol released: the board with the user's links again.
void HideSolution(PlayHost& host, const Board& board);

// Label4 released: stops Timer2 and steps the next grid size (1 up, 2 down, wrapping within
// 4..10). Returns the new size. The puzzle on screen keeps its own size and is not redrawn.
int StepGridSize(PlayHost& host, int button);

// Label6 released: steps the next path direction (2 down, others up); a result above 2
// becomes 0 and one below 0 becomes 2. Returns the new direction. The puzzle on screen
// keeps its own start side.
int StepStartSide(PlayHost& host, int button);

// Command2: the window's layout and colours, then the current puzzle with the user's links, or
// the empty grid when there is no puzzle.
void RedrawBoard(PlayHost& host, Board& board);

// "Random", "Left" or "Top" for 0, 1, 2; "" for anything else.
std::string StartSideCaption(int side);

// The key G: steps the next puzzle's grade Any, Easy, Medium, Hard and round again, and says
// so with the grade of the puzzle in play: "Next puzzle: Hard (this one: Medium)". The game is
// kept with it (PlayHost::GameChanged). Returns the new grade.
std::optional<Grade> StepGrade(PlayHost& host, const Board& board);

// "Any" for no grade, else the grade's name.
std::string GradeCaption(std::optional<Grade> grade);

} // namespace tallyon
