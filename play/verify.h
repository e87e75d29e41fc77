// Verification: the arithmetic of every user link, the shape of the user's chain, and whether
// it is exactly the generated path.
//
// Contract: CheckSolution, CheckMath, NodeDegree and LinkLetters only read. VerifyPress,
// VerifyRelease and Timer2Tick do nothing while there is no puzzle (List2 empty).
#pragma once

#include "core/board/board.h"
#include "play/play_host.h"

#include <string>

namespace tallyon {

inline constexpr int kStatusWrongMath = -1;
inline constexpr int kStatusStructure = 1;
inline constexpr int kStatusNotSolved = 0;
inline constexpr int kStatusSolved = 99;

struct CheckResult {
    std::string message;
    int row = 0; // the link cell of the first wrong link in scan order, else 0
    int column = 0;
    int status = 0; // kStatus...
};

// The verdict on the user's links, scanning nodes row by row.
CheckResult CheckSolution(const Board& board);

// Tests the triple a (node), b (link cell), c (node) in Verify's reading of the link rule
// (IsValidTripleAsVerified): 0 when it is valid, -1 when not.
int CheckMath(int a, int b, int c);

// The number of user links at a node.
int NodeDegree(const Board& board, int row, int col);

// The letters of the user links at a node in the order U, D, R, L; "" without links.
std::string LinkLetters(const Board& board, int row, int col);

// cmdverify held down: the verdict in the status line and the error marker on a wrong link.
void VerifyPress(PlayHost& host, const Board& board);
// cmdverify released: marker hidden, status line cleared.
void VerifyRelease(PlayHost& host, const Board& board);
// The periodic check: Label8 green, or red for a fault or a solved board.
void Timer2Tick(PlayHost& host, const Board& board);

} // namespace tallyon
