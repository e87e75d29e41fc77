// Shared by the output tests: a generated puzzle, and what a printed page must show.
#pragma once

#include "core/generator/generator.h"
#include "output/board_picture.h"

#include <QImage>

#include <memory>
#include <utility>
#include <vector>

namespace tallyon::testing {

inline constexpr int kPictureWidth = 9000; // twips, wide enough for every grid size

// A generator that can no longer make a puzzle gives up after this many builds, so that a test
// fails instead of waiting for its puzzle without end.
inline constexpr int kOutputTestBuildBound = 40;

inline std::unique_ptr<Board> MakePuzzle(int gridSize, int startSideTag)
{
    auto board = std::make_unique<Board>();
    board->GridSize = gridSize;
    SetBuildBound(kOutputTestBuildBound);
    BuildPuzzle(*board, startSideTag, kPictureWidth);
    return board;
}

// The heights, top to bottom, of the runs of image rows that hold ink.
inline std::vector<int> InkBands(const QImage& page)
{
    std::vector<int> bands;
    int run = 0;
    for (int y = 0; y <= page.height(); ++y) {
        bool ink = false;
        for (int x = 0; y < page.height() && x < page.width() && !ink; ++x)
            ink = qGray(page.pixel(x, y)) < 200; // thin lines come out grey
        if (ink)
            ++run;
        else if (run > 0)
            bands.push_back(std::exchange(run, 0));
    }
    return bands;
}

// A printed page of boards with their StartSide Left: each board, then its footer, a short line.
inline bool HoldsTwoBoards(const std::vector<int>& bands)
{
    return bands.size() == 4 && bands[0] > 10 * bands[1] && bands[2] > 10 * bands[3];
}

} // namespace tallyon::testing
