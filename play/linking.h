// Linking by mouse: the pointer offers the link cell under it, a button release links or unlinks.
//
// Contract: HoverCell takes picture coordinates in twips (the unit of CellX and CellPitch) and
// fills the hover part of PlayState; MakeLink acts on what the last HoverCell offered and
// forgets the offered ends afterwards. Mouse buttons: 1 left, 2 right, 4 middle.
#pragma once

#include "core/board/board.h"
#include "play/move.h"
#include "play/play_host.h"

#include <string>

namespace tallyon {

// The pointer-move handler of the board picture. Clears Label1, Label2 and the status line,
// then offers the link cell within a quarter pitch of the pointer on both axes, if it holds a
// digit and both its end nodes lie on the board, with the hint "Use a and b to make c".
void HoverCell(PlayHost& host, const Board& board, PlayState& state, float x, float y);

// The button-release handler of the board picture. Button 2 removes the offered link (when
// both NodeLinks entries are set), any other button makes it ("Lined already" when the A-to-B
// entry is set). A change is drawn, recorded at the top of undolist and, when it touches Start
// or End, the marks are redrawn. With something offered, Timer2 is enabled in every case.
void MakeLink(PlayHost& host, Board& board, PlayState& state, int button);

} // namespace tallyon
