// Writing out the deductions that solve a puzzle, as text lines or as JSON.
#include "core/reasoning/explain.h"

#include "core/reasoning/walkthrough.h"
#include "core/reasoning/wording.h"

namespace tallyon {
namespace {

std::vector<int> PathNodes(const Board& board)
{
    std::vector<int> nodes;
    for (std::size_t i = 0; i < board.PathCells.size(); i += 2) {
        const int cell = board.PathCells[i];
        nodes.push_back(NodeIndex(board.GridSize, board.CellRow[cell], board.CellCol[cell]));
    }
    return nodes;
}

std::string Quoted(const std::string& text)
{
    std::string out = "\"";
    for (const char c : text)
        out += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    return out + "\"";
}

const char* RuleKey(Rule rule)
{
    switch (rule) {
    case Rule::DeadEnd:
        return "DeadEnd";
    case Rule::TakeLinks:
        return "TakeLinks";
    case Rule::DropRest:
        return "DropRest";
    case Rule::Loop:
        return "Loop";
    case Rule::SkipHint:
        return "SkipHint";
    case Rule::Pocket:
        return "Pocket";
    case Rule::Region:
        return "Region";
    case Rule::EndsRegion:
        return "EndsRegion";
    case Rule::LookAhead:
        return "LookAhead";
    }
    return "";
}

class JsonWriter {
public:
    JsonWriter(const Board& board, const Wording& words) : side_(board.GridSize + 1), words_(words) {}

    // [row, column, digit] of each node.
    std::string Nodes(const std::vector<int>& nodes) const
    {
        std::string out = "[";
        for (std::size_t i = 0; i < nodes.size(); ++i)
            out += (i ? ",[" : "[") + std::to_string(nodes[i] / side_ + 1) + "," +
                   std::to_string(nodes[i] % side_ + 1) + "," + std::to_string(words_.Digit(nodes[i])) + "]";
        return out + "]";
    }
    // [row, column, row, column] of each link's two nodes.
    std::string Links(const LinkSet& links) const
    {
        std::string out;
        ForEachLink(links, side_, [&](int a, int b) {
            out += (out.empty() ? "[" : ",[") + std::to_string(a / side_ + 1) + "," + std::to_string(a % side_ + 1) +
                   "," + std::to_string(b / side_ + 1) + "," + std::to_string(b % side_ + 1) + "]";
        });
        return "[" + out + "]";
    }

private:
    int side_;
    const Wording& words_;
};

} // namespace

Explanation ExplainPuzzle(const Board& board)
{
    Explanation e;
    const ReasoningSteps steps = StepsOf(board);
    Knowledge k = steps.Begin(ValidLinkGraph(board));
    e.solved = Walk(steps, k, [&](const Deduction& d) {
                   e.steps.push_back(d);
                   return true;
               }) == WalkEnd::Solved;
    return e;
}

std::vector<std::string> ExplanationLines(const Board& board, const Explanation& explanation)
{
    const Wording words(board);
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < explanation.steps.size(); ++i)
        lines.push_back(std::to_string(i + 1) + ". " + words.Sentence(explanation.steps[i]));
    if (!explanation.solved)
        lines.emplace_back("The deductions stop here: more than one chain is left, and only the path below is the "
                           "solution.");
    std::string path = "Path: ";
    const std::vector<int> nodes = PathNodes(board);
    for (std::size_t i = 0; i < nodes.size(); ++i)
        path += (i ? ", " : "") + words.Named(nodes[i]);
    lines.push_back(path + ".");
    return lines;
}

std::string ExplanationJson(const Board& board, const Explanation& explanation)
{
    const Wording words(board);
    const JsonWriter json(board, words);
    std::string out = "{\"Steps\":[";
    for (std::size_t i = 0; i < explanation.steps.size(); ++i) {
        const Deduction& d = explanation.steps[i];
        out += std::string(i ? "," : "") + "{\"Number\":" + std::to_string(i + 1) +
               ",\"Kind\":" + Quoted(Wording::KindName(d.rule)) + ",\"Rule\":" + Quoted(RuleKey(d.rule)) +
               ",\"Nodes\":" + json.Nodes(NodesOf(d.about)) + ",\"Beside\":" + json.Nodes(NodesOf(d.beside)) +
               ",\"RulesOut\":" + json.Links(d.dropped) + ",\"Forces\":" + json.Links(d.forced) +
               ",\"Text\":" + Quoted(words.Sentence(d)) + "}";
    }
    out += std::string("],\"Solved\":") + (explanation.solved ? "true" : "false") +
           ",\"Path\":" + json.Nodes(PathNodes(board)) + "}";
    return out;
}

} // namespace tallyon
