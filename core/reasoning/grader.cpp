// The grader's loop: the cheapest step that makes progress, then a look-ahead when none does.
#include "core/reasoning/grader.h"

#include <algorithm>

namespace tallyon {
namespace {

// Tries the possible links that are not yet forced, horizontal ones first, each in node order,
// and drops the first whose forcing leads to a contradiction; false when none does.
bool LookAhead(const ReasoningSteps& steps, Knowledge& k)
{
    for (const bool across : {true, false}) {
        const NodeSet undecided = across ? k.possible.h & ~k.forced.h : k.possible.v & ~k.forced.v;
        for (NodeSet rest = undecided; rest; rest &= rest - 1) {
            const NodeSet link = rest & (~rest + 1);
            Knowledge trial = k;
            (across ? trial.forced.h : trial.forced.v) |= link;
            if (steps.Settle(trial) != Outcome::Contradiction)
                continue;
            (across ? k.possible.h : k.possible.v) &= ~link;
            return true;
        }
    }
    return false;
}

Grade GradeOf(const GradeReport& r)
{
    if (r.lookAheads >= kHardLookAheads)
        return Grade::Hard;
    if (r.lookAheads > 0 || r.hardestStep >= kRegions)
        return Grade::Medium;
    return Grade::Easy;
}

} // namespace

GradeReport GradeChain(const LinkGraph& valid, int start, int hint, int end)
{
    const ReasoningSteps steps(valid.side, start, hint, end);
    GradeReport r;
    r.known = steps.Begin(valid);
    while (steps.Consistent(r.known)) {
        if (steps.Solved(r.known)) {
            r.solved = true;
            break;
        }
        Outcome o = Outcome::NoProgress;
        int step = kDeadEnds;
        for (; step <= kRegions && o == Outcome::NoProgress; ++step)
            o = steps.Apply(step, r.known);
        if (o == Outcome::Contradiction)
            break;
        if (o == Outcome::Progress) {
            r.hardestStep = std::max(r.hardestStep, step - 1);
            continue;
        }
        if (!LookAhead(steps, r.known))
            break;
        ++r.lookAheads;
        r.hardestStep = kLookAhead;
    }
    r.grade = GradeOf(r);
    return r;
}

GradeReport GradePuzzle(const Board& board)
{
    auto node = [&](int cell) { return NodeIndex(board.GridSize, board.CellRow[cell], board.CellCol[cell]); };
    return GradeChain(ValidLinkGraph(board), node(board.KeyNodes[0]), node(board.KeyNodes[1]), node(board.KeyNodes[2]));
}

const char* GradeName(Grade grade)
{
    switch (grade) {
    case Grade::Easy:
        return "Easy";
    case Grade::Medium:
        return "Medium";
    case Grade::Hard:
        return "Hard";
    }
    return "";
}

} // namespace tallyon
