// Where the game in play is kept between runs, and how that file is written and read.
//
// Contract: the file is "game" in the "tallyon" folder of $XDG_STATE_HOME (~/.local/state when
// the variable is unset, empty or not an absolute path), in the lines of play/saved_game.h.
// It is replaced atomically, so that a crash, a kill or a full disk leaves the old game or
// the new one, never a torn file. Two copies of the program share it: the last change
// written wins.
#pragma once

#include "play/saved_game.h"

#include <QString>

#include <vector>

namespace tallyon {

QString SavedGamePath();

// Writes the game, making its folder where missing; false with the reason when it cannot, the
// old file left as it was.
bool WriteSavedGame(const std::vector<std::string>& lines, QString* why);

// The saved game, or the reason there is none that can be played.
SavedGameRead ReadSavedGame(int pictureWidth);

// Moves a saved game that cannot be used aside, to "game.bad" beside it (replacing an older
// one), so that the next change starts the file afresh and the damaged one stays to look at.
// False when there is nothing to move or it cannot be moved.
bool KeepSavedGameAside();

} // namespace tallyon
