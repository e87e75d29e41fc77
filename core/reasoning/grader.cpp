// The grader's loop: each grade's deductions in turn, the cheapest step that makes progress
// first, then a look-ahead when the hardest grade's steps stall.
#include "core/reasoning/grader.h"

#include <algorithm>
#include <cctype>

namespace tallyon {
namespace {

// How hard each step is, by its place in the order a player tries them; the look-ahead last.
int Rank(int step)
{
    const auto at = std::find(kStepOrder.begin(), kStepOrder.end(), step);
    return at == kStepOrder.end() ? static_cast<int>(kStepOrder.size()) : static_cast<int>(at - kStepOrder.begin());
}

// Applies the grade's steps, the first that makes progress each time, until none does, the
// path is found or a contradiction shows; counts the progress in the report. False on a
// contradiction.
bool SettleWithin(const ReasoningSteps& steps, const std::vector<int>& order, GradeReport& r)
{
    for (std::size_t i = 0; i < order.size() && !steps.Solved(r.known);) {
        if (!steps.Consistent(r.known))
            return false;
        const Outcome o = steps.Apply(order[i], r.known);
        if (o == Outcome::Contradiction)
            return false;
        if (o == Outcome::NoProgress) {
            ++i;
            continue;
        }
        ++r.progress[static_cast<std::size_t>(order[i])];
        if (Rank(order[i]) > Rank(r.hardestStep) || r.hardestStep == 0)
            r.hardestStep = order[i];
        i = 0;
    }
    return steps.Consistent(r.known);
}

} // namespace

const std::vector<int>& GradeSteps(Grade grade)
{
    static const std::vector<int> easy = {kDeadEnds, kForcedLinks};
    static const std::vector<int> medium = {kDeadEnds, kForcedLinks, kPockets};
    static const std::vector<int> hard(kStepOrder.begin(), kStepOrder.end());
    return grade == Grade::Easy ? easy : grade == Grade::Medium ? medium : hard;
}

GradeReport GradeChain(const LinkGraph& valid, int start, int hint, int end)
{
    const ReasoningSteps steps(valid.side, start, hint, end);
    GradeReport r;
    r.known = steps.Begin(valid);
    for (const Grade grade : {Grade::Easy, Grade::Medium, Grade::Hard}) {
        if (!SettleWithin(steps, GradeSteps(grade), r))
            return r;
        if (steps.Solved(r.known)) {
            r.solved = true;
            r.grade = grade;
            return r;
        }
    }
    for (std::optional<Deduction> ahead; (ahead = steps.LookAhead(r.known));) {
        ReasoningSteps::Take(*ahead, r.known);
        ++r.lookAheads;
        ++r.progress[kLookAhead];
        r.hardestStep = kLookAhead;
        if (!SettleWithin(steps, GradeSteps(Grade::Hard), r))
            return r;
        if (steps.Solved(r.known)) {
            r.solved = true;
            return r;
        }
    }
    return r;
}

Settled SettleWithin(Grade grade, const LinkGraph& valid, int start, int hint, int end)
{
    const ReasoningSteps steps(valid.side, start, hint, end);
    GradeReport r;
    r.known = steps.Begin(valid);
    // Knowledge that contradicts itself is never solved, so whether the settling ended on a
    // contradiction needs no telling apart here.
    SettleWithin(steps, GradeSteps(grade), r);
    return {r.known, steps.Solved(r.known)};
}

bool SolvedWithin(Grade grade, const LinkGraph& valid, int start, int hint, int end)
{
    return SettleWithin(grade, valid, start, hint, end).solved;
}

std::array<int, 3> KeyNodeIndexes(const Board& board)
{
    std::array<int, 3> nodes{};
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const int cell = board.KeyNodes[i];
        nodes[i] = NodeIndex(board.GridSize, board.CellRow[cell], board.CellCol[cell]);
    }
    return nodes;
}

GradeReport GradePuzzle(const Board& board)
{
    const std::array<int, 3> keys = KeyNodeIndexes(board);
    return GradeChain(ValidLinkGraph(board), keys[0], keys[1], keys[2]);
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

std::optional<Grade> GradeNamed(std::string_view name)
{
    for (const Grade g : {Grade::Easy, Grade::Medium, Grade::Hard}) {
        const std::string_view known = GradeName(g);
        if (name.size() == known.size() && std::equal(name.begin(), name.end(), known.begin(), [](char a, char b) {
                return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
            }))
            return g;
    }
    return std::nullopt;
}

} // namespace tallyon
