// The path rounds: paths laid again and again until one is long enough for the board.
//
// Contract: LayLongPath runs on a board that ResetBoard has just prepared for its GridSize.
// It leaves the path expanded (PathList, PathCells, CellState and the path flags), and no
// digits.
#pragma once

#include "core/board/board.h"

#include <cstddef>

namespace tallyon {

struct BuildStats {
    int Rounds = 0;        // LayPath rounds used
    bool BoundHit = false; // the path never reached its length within the round bound
};

// The most LayPath rounds a puzzle may use before the longest path found is taken.
inline constexpr int kMaxPathRounds = 5000;

// The walk cannot reach 30 * GridSize characters on the two smallest boards, and the
// longest walk there is nearly always the same one, so every puzzle would share its path.
// These lengths are reached in about one round in nine and leave many different paths.
inline constexpr std::size_t kPathLengthAtSize4 = 60;
inline constexpr std::size_t kPathLengthAtSize5 = 90;

// The PathList length, in characters, that BuildPuzzle lays paths until it reaches.
std::size_t PathLengthWanted(int gridSize);

// Lays paths until PathList reaches PathLengthWanted, or, after kMaxPathRounds rounds, puts
// back the longest path of all rounds (the first of that length).
BuildStats LayLongPath(Board& board);

} // namespace tallyon
