// The hint: what a player who is stuck should look at next, worked out from the board as they
// left it: their links, their marks and the valid links.
//
// Contract: a wrong link (not on the path) comes first, then a wrong mark (on a link of the
// path); then, when the player's links are the whole path, the hint says so. Otherwise the
// deductions, one at a time in the order a player tries them, start from the valid links
// less the marked ones, with the player's links as known, and go on until one forces a link
// the player has not made; the hint shows that link and the deductions that led to it. Where
// the deductions stall (a puzzle from a code that was not made by the generator may allow
// more than one chain), it shows the path's next link instead. Every text names nodes by
// their digit and place and fits the status line after "Hint 99: ".
#pragma once

#include "core/board/board.h"
#include "core/board/lattice.h"
#include "core/reasoning/deductions.h"

#include <string>
#include <vector>

namespace tallyon {

enum class HintKind {
    None,      // no puzzle
    WrongLink, // a link of the player's is not on the path
    WrongMark, // a mark of the player's lies on the path
    Deduction, // a deduction that forces a link
    NextLink,  // the deductions stall: the path's next link
    Solved,    // the player's links are the whole path
};

struct Hint {
    HintKind kind = HintKind::None;
    Rule rule = Rule::TakeLinks;  // the kind of deduction shown
    std::vector<CellAt> look;     // the node cells it is about: where to look
    std::vector<CellAt> ruledOut; // the link cells it rules out, shown on the next press
    CellAt link{0, 0};            // the link cell it forces, or the wrong link or mark
    std::string first;            // the words of the first press: the kind and where to look
    std::string second;           // the words of the next press: what it rules out and forces
};

Hint FindHint(const Board& board);

// The longest a hint's words may be after "Hint 99: ": what the status line shows in full.
inline constexpr std::size_t kHintTextLimit = 104;

} // namespace tallyon
