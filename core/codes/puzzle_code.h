// Puzzle codes: one line of text that names a puzzle exactly, to share, replay or attach to a
// bug report.
//
// A code is "T1-" and then, in the URL-safe base64 alphabet without padding, the bytes:
// GridSize, StartSide, the number of path nodes, the row-major index of the Start node among
// the nodes, the path's steps two bits each (0 right, 1 down, 2 left, 3 up; four to a byte,
// first step in the high bits), every node and link cell's digit four bits each (row by row,
// two to a byte, high half first), and a CRC-16 of all of those. A 10x10 puzzle's code has
// under 300 characters. The "T1-" tells later formats apart.
//
// Contract: EncodePuzzleCode takes a board as BuildPuzzle (or DecodePuzzleCode) leaves it.
// DecodePuzzleCode accepts only what EncodePuzzleCode makes: any other text, damaged,
// truncated, of another version or of a size outside 4..10, is refused with a reason and
// leaves the board untouched. Decoding a code and encoding the board again gives the same code.
#pragma once

#include "core/board/board.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tallyon {

inline constexpr const char* kPuzzleCodePrefix = "T1-";
inline constexpr std::size_t kMaxPuzzleCodeLength = 400;

// "" for a board without a puzzle.
std::string EncodePuzzleCode(const Board& board);

// The code of a payload of bytes as described above: its CRC appended, written in base64 after
// the prefix. EncodePuzzleCode ends in it; fuzzing reaches past the CRC through it.
std::string PuzzleCodeFromBytes(std::vector<std::uint8_t> payload);

struct DecodeResult {
    bool ok = false;
    std::string problem; // why the code was refused, for a message box
};

// Builds the puzzle the code names on `board`, laid out for a picture pictureWidth twips
// wide, as New Puzzle would have left it.
DecodeResult DecodePuzzleCode(const std::string& code, Board& board, int pictureWidth);

} // namespace tallyon
