// Shaping the decoy links towards a grade: which off-path links stay valid decides which
// deductions a puzzle cannot be solved without (reasoning/grader.h).
//
// Contract: `open` holds a choice of valid links in which the path (pathNodes, Start first,
// the Hint at place `hint`) is the only chain from Start through the Hint to End. Only links
// off the path are opened or closed, and every change keeps the path the only chain: a change
// is kept only when the grade's deductions still solve the puzzle, which proves that. Shape
// makes the puzzle of the grade asked for: solved by that grade's deductions and, above Easy,
// not by the grade below. Where the deductions stall, the groups of free nodes that hold them
// up are cut back (for Easy, to trees that dead ends peel from their one road; for Medium, to
// pockets joined on at one node); where the grade below already solves it, links are opened
// one at a time, at random, while the grade's deductions still solve it.
#pragma once

#include "core/board/lattice.h"
#include "core/reasoning/grader.h"

#include <optional>
#include <utility>
#include <vector>

namespace tallyon {

class GradeShaper {
public:
    // Without a grade, any puzzle that the deductions of all grades solve will do.
    GradeShaper(LinkGraph& open, const std::vector<int>& pathNodes, int hint, std::optional<Grade> grade);

    // True when the links make a puzzle of the grade.
    bool HasGrade() const;
    // Changes links until the puzzle is of the grade; false when the bound runs out first.
    bool Shape();
    // Opens every link off the path, one at a time in random order, that leaves the puzzle of
    // its grade: a grade that cut back side roads gets back what it allows.
    void Enrich();
    // Gives side roads back to path nodes (End aside) that have none, in random order, until
    // `percent` of them have one: for each, the first of its closed links, in random order,
    // whose opening leaves the puzzle of its grade.
    void AddRoads(int percent);
    // Opens links off the path, one at a time in random order, each kept while the puzzle
    // stays of its grade, until more than `percent` of the links off the path are valid;
    // false when it cannot get there.
    bool RaiseValidShare(int percent);
    // The links off the path that are valid, and all of them.
    int ValidOffPath() const;
    int OffPath() const { return offPath_; }

private:
    bool Simplify();
    bool OpenRoad(int p, int q);
    bool Complicate();
    bool SolvedBy(Grade grade) const;
    // Cuts back the free nodes behind the link from path node p to x, as the grade needs.
    void CutBack(const Knowledge& known, int p, int x);
    // The two ways of cutting back a group of free nodes; SplitGroup is false where no path
    // node but p touches the group.
    bool SplitGroup(const LinkGraph& possible, NodeSet group, int p, int x);
    void TrimToTree(const LinkGraph& possible, NodeSet group, int p, int x);
    bool OnPath(int v) const { return (path_ & NodeBit(v)) != 0; }
    bool IsPathLink(int a, int b) const;

    std::vector<std::pair<int, int>> ClosedLinks() const;

    LinkGraph& open_;
    const std::vector<int>& pathNodes_;
    std::optional<Grade> wanted_;
    Grade grade_; // the grade asked for, or Hard for any
    int offPath_ = 0;
    int start_, hint_, end_;
    NodeSet path_ = 0;
    std::vector<int> place_; // each node's place on the path, or -1
};

} // namespace tallyon
