// The hint key H: while it is held, what a stuck player should look at next shows over the
// board and in the status line; released, the board and the status line are as they were.
//
// Contract: the hint comes from the reasoning engine (core/reasoning/hint.h) on the board as
// the player left it. The first press after a move shows where to look and the kind of
// deduction, counted as a new hint ("Hint 3: ..."); a further press without a move also shows
// what it rules out and the link it forces. A wrong link or mark is shown, framed, before any
// deduction. Every move (a link, an unlink, an undo, a redo, a reset, a mark, a new puzzle)
// calls ForgetHint. The hint is drawn on the host's overlay only, so the picture under it is
// never touched. Nothing happens before the first puzzle.
#pragma once

#include "core/board/board.h"
#include "core/reasoning/hint.h"
#include "platform/board_painter.h"
#include "play/play_host.h"

#include <string>

namespace tallyon {

// H pressed: the hint over the board and in the status line.
void HintPress(PlayHost& host, const Board& board, PlayState& state);

// H released: the overlay dropped and the status line back to what it showed before. A hint
// counted by the press is kept with the game now (PlayHost::GameChanged), once the key is up,
// since a failed save may ask the player about it in a message box.
void HintRelease(PlayHost& host, PlayState& state);

// A move was made: the next press is the first of the next hint, and a hint still shown goes.
void ForgetHint(PlayHost& host, PlayState& state);

// The status line of a hint: "Hint <count>: " and the words of the stage shown; the words
// alone when the player's links are the whole path, which is counted as no hint.
std::string HintStatus(const Hint& hint, int count, HintStage stage);

// What a hint shows at a stage: the nodes to look at and a wrong link or mark at once, the
// links it rules out and the link it forces from the second press on.
HintPicture HintPictureOf(const Hint& hint, HintStage stage);

} // namespace tallyon
