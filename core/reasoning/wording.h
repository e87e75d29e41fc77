// Deductions in a player's words: nodes by their digit and place on the board, links by the
// nodes they join, and each kind of deduction by its name and its reason.
//
// Contract: places count the rows of nodes from the top and their columns from the left,
// from 1, as a player sees them on the board; no internal number is ever named. The board
// must hold a built puzzle; node numbers are those of its lattice (lattice.h).
#pragma once

#include "core/board/board.h"
#include "core/reasoning/deductions.h"

#include <string>
#include <vector>

namespace tallyon {

class Wording {
public:
    explicit Wording(const Board& board);

    // "row 2, column 4".
    std::string Place(int node) const;
    // "the 7 in row 2, column 4".
    std::string Node(int node) const;
    // The same with the node's part, if any: "the 3 in row 4, column 1 (Start)".
    std::string Named(int node) const;
    // The digit of a node or of the link cell between two neighbouring nodes.
    int Digit(int node) const;
    int LinkDigit(int a, int b) const;
    // "between row 2, columns 3 and 4" or "between rows 2 and 3 in column 4".
    std::string LinkPlace(int a, int b) const;
    // The same without "between": "row 2, columns 3 and 4".
    std::string LinkAt(int a, int b) const;
    // Where b lies from a, its neighbour: "above it", "below it", "on its left", "on its right".
    static const char* Direction(int a, int b);
    // "the 3 in row 2, column 3 and the 5 in row 3, column 3".
    std::string Ends(int a, int b) const;
    // One node named, or several: "the 2 nodes the 7 in row 2, column 4 and the 1 in ...".
    std::string Nodes(NodeSet nodes) const;
    // A group summed up in a few words: its one node, or "4 nodes from row 2, column 4".
    std::string Group(NodeSet nodes) const;
    // The links of a set, each as "row 2, columns 3 and 4"-style places, joined by "; ".
    std::string Links(const LinkSet& links) const;

    // "Dead end", "Pocket", ...
    static const char* KindName(Rule rule);
    // The kind's reason in general: "a node with only one valid link left cannot be on the path".
    static const char* KindReason(Rule rule);

    // One deduction as a full sentence: its kind, the nodes it is about, and what it rules
    // out or forces.
    std::string Sentence(const Deduction& d) const;

private:
    int side_;
    const Board& board_;
};

// The nodes of a set, in order.
std::vector<int> NodesOf(NodeSet nodes);

} // namespace tallyon
