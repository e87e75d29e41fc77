// The saved game: a game in play written as lines of text a person can read, and read back.
//
// The lines, each a keyword and its values separated by single blanks:
//   Tallyon saved game, format 2
//   code <the puzzle's code>
//   next <grid size> <path direction> <any|easy|medium|hard>
//                                        the next puzzle: Label4 and Label6, and its grade
//   check <on|off> <colour>              Timer2 running, and Label8's colour (packed RGB)
//   hints <count>                        the hints shown on this puzzle
//   links <n>, then n lines <row> <column> <letters>: the player's links at a node, its user
//              flags in the order U, D, R, L
//   pairs <n>, then n lines <a> <b> <value>: the NodeLinks entries other than 0
//   marks <n>, then n lines <row> <column>: the link cells the player marked, row by row
//   undo <n>, then n undo records, newest first
//   redo <n>, then n records, newest undo first
//   end
// Format 1, written before hints, marks and grades, lacks the grade, the hints line and the
// marks; it is still read, as a game of any grade with no hints and no marks.
//
// Contract: ParseSavedGame accepts what FormatSavedGame writes, and format 1, and nothing
// else: a text of another format or version, a damaged or truncated one, or one whose puzzle
// code is refused, gives a reason and no game. A game read back formats to the same lines.
#pragma once

#include "core/board/board.h"
#include "platform/colour.h"
#include "play/play_host.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tallyon {

inline constexpr const char* kSavedGameFormat = "Tallyon saved game, format 2";
inline constexpr const char* kSavedGameFormat1 = "Tallyon saved game, format 1";
// What the first line of any version starts with, so that a later format is told apart from
// a file that is no saved game at all.
inline constexpr const char* kSavedGameHeading = "Tallyon saved game, format ";

struct SavedGame {
    std::unique_ptr<Board> board; // the puzzle, with the player's links and marks
    std::vector<std::string> undolist, redolist;
    NextPuzzle next;
    int hints = 0;
    bool checkRunning = false;
    Colour indicator = 0;
};

// The lines of a game in play (its hints from PlayState::HintCount); the board must hold a
// puzzle.
std::vector<std::string> FormatSavedGame(const Board& board, const PlayState& play, const NextPuzzle& next,
                                         bool checkRunning, Colour indicator);

struct SavedGameRead {
    std::optional<SavedGame> game;
    std::string problem; // why there is no game, for a message box
};

// Reads the lines of a saved game (without line ends); the board is laid out for a picture
// pictureWidth twips wide.
SavedGameRead ParseSavedGame(const std::vector<std::string>& lines, int pictureWidth);

} // namespace tallyon
