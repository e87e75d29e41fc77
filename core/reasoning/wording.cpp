// The words of the deductions: names of nodes, links and kinds, and whole sentences.
#include "core/reasoning/wording.h"

#include "core/reasoning/grader.h"

#include <algorithm>

namespace tallyon {
namespace {

std::string Num(int n) { return std::to_string(n); }

// "a", "a and b", "a, b and c".
std::string Listed(const std::vector<std::string>& items)
{
    std::string out;
    for (std::size_t i = 0; i < items.size(); ++i)
        out += (i == 0 ? "" : i + 1 == items.size() ? " and " : ", ") + items[i];
    return out;
}

} // namespace

std::vector<int> NodesOf(NodeSet nodes)
{
    std::vector<int> out;
    for (; nodes; nodes &= nodes - 1)
        out.push_back(LowestNode(nodes));
    return out;
}

Wording::Wording(const Board& board) : side_(board.GridSize + 1), board_(board) {}

int Wording::Digit(int node) const
{
    return board_.NodeValue(NodeRow(board_.GridSize, node), NodeCol(board_.GridSize, node));
}

int Wording::LinkDigit(int a, int b) const
{
    const CellAt cell = LinkCellBetween(board_.GridSize, a, b);
    return board_.NodeValue(cell.row, cell.col);
}

std::string Wording::Place(int node) const
{
    return "row " + Num(node / side_ + 1) + ", column " + Num(node % side_ + 1);
}

std::string Wording::Node(int node) const { return "the " + Num(Digit(node)) + " in " + Place(node); }

std::string Wording::Named(int node) const
{
    const std::array<int, 3> keys = KeyNodeIndexes(board_);
    const char* role = node == keys[0] ? " (Start)" : node == keys[2] ? " (End)" : node == keys[1] ? " (the Hint)" : "";
    return Node(node) + role;
}

std::string Wording::LinkPlace(int a, int b) const
{
    const int lo = std::min(a, b), hi = std::max(a, b);
    if (hi - lo == 1)
        return "between row " + Num(lo / side_ + 1) + ", columns " + Num(lo % side_ + 1) + " and " +
               Num(hi % side_ + 1);
    return "between rows " + Num(lo / side_ + 1) + " and " + Num(hi / side_ + 1) + " in column " + Num(lo % side_ + 1);
}

std::string Wording::LinkAt(int a, int b) const { return LinkPlace(a, b).substr(sizeof "between"); }

const char* Wording::Direction(int a, int b)
{
    return b == a - 1 ? "on its left" : b == a + 1 ? "on its right" : b < a ? "above it" : "below it";
}

std::string Wording::Ends(int a, int b) const { return Named(std::min(a, b)) + " and " + Named(std::max(a, b)); }

std::string Wording::Nodes(NodeSet nodes) const
{
    std::vector<std::string> names;
    for (const int v : NodesOf(nodes))
        names.push_back(Named(v));
    return Listed(names);
}

std::string Wording::Group(NodeSet nodes) const
{
    const int count = CountNodes(nodes);
    if (count == 1)
        return Node(LowestNode(nodes));
    return Num(count) + " nodes from " + Place(LowestNode(nodes));
}

std::string Wording::Links(const LinkSet& links) const
{
    std::vector<std::string> places;
    ForEachLink(links, side_, [&](int a, int b) { places.push_back(LinkAt(a, b)); });
    std::string out;
    for (std::size_t i = 0; i < places.size(); ++i)
        out += (i == 0 ? "" : "; ") + places[i];
    return out;
}

const char* Wording::KindName(Rule rule)
{
    switch (rule) {
    case Rule::DeadEnd:
        return "Dead end";
    case Rule::TakeLinks:
        return "Forced link";
    case Rule::DropRest:
        return "Full node";
    case Rule::Loop:
        return "Loop";
    case Rule::SkipHint:
        return "Skipping the Hint";
    case Rule::Pocket:
        return "Pocket";
    case Rule::Region:
    case Rule::EndsRegion:
        return "Region";
    case Rule::LookAhead:
        return "Look-ahead";
    }
    return "";
}

const char* Wording::KindReason(Rule rule)
{
    switch (rule) {
    case Rule::DeadEnd:
        return "a node with only one valid link left cannot be on the path";
    case Rule::TakeLinks:
        return "a node on the path with just the links it needs takes them";
    case Rule::DropRest:
        return "a node on the path with all its links can take no other";
    case Rule::Loop:
        return "a link between two nodes of one chain would close a loop";
    case Rule::SkipHint:
        return "joining Start's chain to End's would leave out the Hint";
    case Rule::Pocket:
        return "a group only one node joins to the rest can never be left";
    case Rule::Region:
        return "free nodes leading back into one chain cannot be on the path";
    case Rule::EndsRegion:
        return "nodes leading only to Start's and End's chains skip the Hint";
    case Rule::LookAhead:
        return "a link that leads to a contradiction is not on the path";
    }
    return "";
}

std::string Wording::Sentence(const Deduction& d) const
{
    const std::string out = std::string(KindName(d.rule)) + ": ";
    const std::string dropped = "; ruled out: " + Links(d.dropped) + ".";
    const int first = d.about ? LowestNode(d.about) : 0;
    switch (d.rule) {
    case Rule::DeadEnd:
        return out + Named(first) + " has one valid link left, so it is off the path" + dropped;
    case Rule::TakeLinks:
        return out + Named(first) + " is on the path and has just the links it needs; forced: " + Links(d.forced) + ".";
    case Rule::DropRest:
        return out + Named(first) + " has all the links it needs" + dropped;
    case Rule::Loop:
    case Rule::SkipHint:
    case Rule::LookAhead: {
        // These deductions are about one link each.
        const int a = d.dropped.h ? LowestNode(d.dropped.h) : LowestNode(d.dropped.v);
        const int b = d.dropped.h ? a + 1 : a + side_;
        const std::string link = "the link " + LinkPlace(a, b) + ", from " + Ends(a, b) + ",";
        if (d.rule == Rule::Loop)
            return out + link + " would close a loop in the chain through them; ruled out.";
        if (d.rule == Rule::SkipHint)
            return out + link + " would join Start's chain to End's without the Hint; ruled out.";
        return out + "making " + link + " leads to a contradiction; ruled out.";
    }
    case Rule::Pocket:
        if (!d.beside)
            return out + "Start cannot reach " + Nodes(d.about) + dropped;
        return out + "only " + Named(LowestNode(d.beside)) + " joins " + Nodes(d.about) + " to the rest" + dropped;
    case Rule::Region:
        if (!d.beside)
            return out + Nodes(d.about) + " lead nowhere" + dropped;
        return out + Nodes(d.about) + " lead only into the chain through " + Named(LowestNode(d.beside)) + dropped;
    case Rule::EndsRegion:
        return out + Nodes(d.about) + " lead only into Start's and End's chains, which would meet without the Hint" +
               dropped;
    }
    return out;
}

} // namespace tallyon
