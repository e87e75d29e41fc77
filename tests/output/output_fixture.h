// Boards for the output tests: a hand-made board with a known path, and a generated puzzle.
#pragma once

#include "core/board.h"
#include "core/generator.h"
#include "output/board_picture.h"

#include <memory>
#include <string>

namespace tallyon::testing {

inline constexpr int kPictureWidth = 9000; // twips, wide enough for every grid size

// A board of the given size with every node and link cell holding a digit and a straight
// path: along row 1 from left to right for StartSide Left or Random, down column 1 for Top.
inline std::unique_ptr<Board> MakeBoard(int gridSize, int startSide)
{
    auto board = std::make_unique<Board>();
    board->GridSize = gridSize;
    ResetBoard(*board, kPictureWidth);
    const int span = board->BoardSpan;
    for (int r = 1; r <= span; ++r)
        for (int c = 1; c <= span; ++c)
            if (IsNode(r, c) || IsLinkCell(r, c))
                board->NodeValue(r, c) = (r * 7 + c * 3) % 9 + 1;
    board->PathList.clear();
    board->List2.clear();
    for (int i = 1; i <= span; ++i) {
        const int k = startSide == kSideTop ? board->CellNo(i, 1) : board->CellNo(1, i);
        board->PathList += std::to_string(k) + ",";
        board->List2.push_back(std::to_string(k));
    }
    const int hintIndex = static_cast<int>(board->List2.size()) / 2;
    board->KeyNodes = {std::stoi(board->List2.front()), std::stoi(board->List2[hintIndex]),
                       std::stoi(board->List2.back())};
    board->StartNode = board->KeyNodes[0];
    board->EndNode = board->KeyNodes[2];
    board->StartSide = startSide;
    return board;
}

// A generated puzzle.
inline std::unique_ptr<Board> MakePuzzle(int gridSize, int startSideTag)
{
    auto board = std::make_unique<Board>();
    board->GridSize = gridSize;
    BuildPuzzle(*board, startSideTag, kPictureWidth);
    return board;
}

inline OutputOptions DefaultOptions()
{
    OutputOptions options;
    options.NodeShape = 2;
    options.GridLineWidth = 1;
    options.PrintLineWidth = 6;
    options.pictureWidth = kPictureWidth;
    options.pictureHeight = kPictureWidth;
    return options;
}

} // namespace tallyon::testing
