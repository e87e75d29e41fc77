// The hint: the player's first wrong link or mark, or else the deductions that lead to the next
// link, in the player's words.
#include "core/reasoning/hint.h"

#include "core/reasoning/walkthrough.h"
#include "core/reasoning/wording.h"

#include <algorithm>
#include <cctype>

namespace tallyon {
namespace {

// The place of each rule in the order a player tries them; the look-ahead last.
int Rank(Rule rule)
{
    const auto at = std::find(kRuleOrder.begin(), kRuleOrder.end(), rule);
    return static_cast<int>(at - kRuleOrder.begin());
}

// Deductions that rule out groups of nodes: what they rule out is worth following back.
bool RulesOutNodes(Rule rule)
{
    return rule == Rule::DeadEnd || rule == Rule::Pocket || rule == Rule::Region || rule == Rule::EndsRegion ||
           rule == Rule::LookAhead;
}

std::string Capitalized(std::string text)
{
    if (!text.empty())
        text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    return text;
}

// The first link of a set, as its two nodes.
std::pair<int, int> FirstLink(const LinkSet& links, int side)
{
    const int a = links.h ? LowestNode(links.h) : LowestNode(links.v);
    return {a, links.h ? a + 1 : a + side};
}

class HintMaker {
public:
    explicit HintMaker(const Board& board)
        : board_(board), words_(board), side_(board.GridSize + 1), steps_(StepsOf(board))
    {
    }

    Hint Make()
    {
        const LinkSet path = PathLinkSet(board_), user = UserLinkSet(board_), marks = MarkedLinkSet(board_);
        const LinkSet wrong = user.Without(path);
        if (!wrong.Empty())
            return WrongLink(FirstLink(wrong, side_));
        if (!(marks & path).Empty())
            return WrongMark(FirstLink(marks & path, side_));
        if (path.Without(user).Empty())
            return Solved();
        return NextDeduction(path, user, marks);
    }

private:
    CellAt NodeCell(int v) const { return {NodeRow(board_.GridSize, v), NodeCol(board_.GridSize, v)}; }
    CellAt LinkCell(int a, int b) const { return LinkCellBetween(board_.GridSize, a, b); }
    LinkSet LinksAt(NodeSet nodes) const { return {nodes | (nodes >> 1), nodes | (nodes >> side_)}; }

    Hint Shown(HintKind kind, std::pair<int, int> link, const std::string& text)
    {
        Hint h;
        h.kind = kind;
        h.link = LinkCell(link.first, link.second);
        h.look = {NodeCell(link.first), NodeCell(link.second)};
        h.first = h.second = text;
        return h;
    }

    Hint WrongLink(std::pair<int, int> l)
    {
        const auto [a, b] = l;
        const int x = words_.Digit(a), y = words_.LinkDigit(a, b), z = words_.Digit(b);
        if (!IsValidLink(board_, a, b))
            return Shown(HintKind::WrongLink, l,
                         "Wrong link " + words_.LinkPlace(a, b) + ": " + std::to_string(x) + " and " +
                             std::to_string(y) + " cannot make " + std::to_string(z));
        return Shown(HintKind::WrongLink, l,
                     "The link " + words_.LinkPlace(a, b) + " is right, but it leads nowhere: it is not on the path");
    }

    Hint WrongMark(std::pair<int, int> l)
    {
        return Shown(HintKind::WrongMark, l,
                     "The cross " + words_.LinkPlace(l.first, l.second) + " is wrong: that link is on the path");
    }

    Hint Solved()
    {
        Hint h;
        h.kind = HintKind::Solved;
        h.first = h.second = "Your links are the whole path: nothing is left to find";
        return h;
    }

    Hint NextDeduction(const LinkSet& path, const LinkSet& user, const LinkSet& marks)
    {
        Knowledge k{ToLinkSet(ValidLinkGraph(board_)).Without(marks), user};
        std::vector<Deduction> taken;
        const WalkEnd end = Walk(steps_, k, [&](const Deduction& d) {
            taken.push_back(d);
            return d.forced.Empty();
        });
        if (end != WalkEnd::Stopped || !(taken.back().forced.Without(path)).Empty())
            return NextPathLink(path.Without(user));
        return FromDeductions(taken);
    }

    // Where no deduction finds it: the path's next link, Start's end first.
    Hint NextPathLink(const LinkSet& missing)
    {
        int a = 0, b = 0;
        for (std::size_t i = 0; i + 2 < board_.PathCells.size(); i += 2) {
            const auto node = [&](std::size_t at) {
                const int cell = board_.PathCells[at];
                return NodeIndex(board_.GridSize, board_.CellRow[cell], board_.CellCol[cell]);
            };
            if (!(LinkBetween(node(i), node(i + 2)) & missing).Empty()) {
                a = node(i), b = node(i + 2);
                break;
            }
        }
        Hint h = Shown(HintKind::NextLink, {a, b}, "No deduction finds the next link here: look at " + words_.Node(a));
        h.look = {NodeCell(a)};
        h.second = "The path links " + words_.Node(a) + " to the " + std::to_string(words_.Digit(b)) + " " +
                   Wording::Direction(a, b);
        return h;
    }

    // The last deduction forces a link; the ones before it that ruled out links at its node, or
    // at the nodes those ruled out, are its reasons, all shown as ruled out. The hardest kind
    // among those that ruled out a link at the node itself is the one named, with every reason
    // of that kind: a dead end behind a dead end is one dead-end road.
    Hint FromDeductions(const std::vector<Deduction>& taken)
    {
        const Deduction& forcing = taken.back();
        const int x = LowestNode(forcing.about);
        const auto [a, b] = FirstLink(forcing.forced, side_);
        const int y = a == x ? b : a;
        NodeSet traced = forcing.about;
        std::vector<const Deduction*> reasons;
        Hint h;
        h.kind = HintKind::Deduction;
        h.rule = Rule::TakeLinks;
        for (std::size_t i = taken.size() - 1; i-- > 0;) {
            const Deduction& d = taken[i];
            if ((d.dropped & LinksAt(traced)).Empty())
                continue;
            reasons.push_back(&d);
            const bool atX = !(d.dropped & LinksAt(forcing.about)).Empty();
            if (atX && (h.rule == Rule::TakeLinks || Rank(d.rule) > Rank(h.rule)))
                h.rule = d.rule;
            if (RulesOutNodes(d.rule))
                traced |= d.about;
        }
        // The named kind's reasons at the node, and those of the same kind that join on to them.
        const Deduction* shown = &forcing;
        NodeSet about = forcing.about;
        LinkSet ruledOut, shownLink;
        for (const Deduction* d : reasons) {
            ruledOut = ruledOut | d->dropped;
            if (shown == &forcing && d->rule == h.rule && !(d->dropped & LinksAt(forcing.about)).Empty()) {
                shown = d;
                about = d->about;
                shownLink = d->dropped;
            }
        }
        for (bool grown = shown != &forcing; grown;) {
            grown = false;
            for (const Deduction* d : reasons)
                if (d->rule == h.rule && (d->about & ~about) && !(d->dropped & LinksAt(about)).Empty()) {
                    about |= d->about;
                    grown = true;
                }
        }
        for (const int v : NodesOf(about | forcing.about))
            h.look.push_back(NodeCell(v));
        ForEachLink(ruledOut, side_, [&](int p, int q) { h.ruledOut.push_back(LinkCell(p, q)); });
        h.link = LinkCell(x, y);
        h.first = std::string(Wording::KindName(h.rule)) + ": " + Wording::KindReason(h.rule) + " (" +
                  Where(h.rule, about, shownLink) + ")";
        const std::string tail = "link " + (h.rule == Rule::TakeLinks ? std::string("it") : words_.Node(x)) +
                                 " to the " + std::to_string(words_.Digit(y)) + " " + Wording::Direction(x, y);
        h.second = Reason(*shown, about, shownLink) + ": " + tail;
        return h;
    }

    // Where to look, for the first press.
    std::string Where(Rule rule, NodeSet about, const LinkSet& link) const
    {
        if (rule == Rule::Loop || rule == Rule::SkipHint || rule == Rule::LookAhead) {
            const auto [p, q] = FirstLink(link, side_);
            return words_.LinkAt(p, q);
        }
        return words_.Group(about);
    }

    // Why, for the next press.
    std::string Reason(const Deduction& d, NodeSet about, const LinkSet& link) const
    {
        const std::string group = Capitalized(words_.Group(about));
        const bool one = CountNodes(about) == 1;
        switch (d.rule) {
        case Rule::DeadEnd:
            return group + (one ? " is a dead end" : " are dead ends");
        case Rule::TakeLinks:
            return group + " has just the links it needs";
        case Rule::DropRest:
            return group + (one ? " is full" : " are full");
        case Rule::Pocket:
            return group + (one ? " is a pocket" : " are a pocket");
        case Rule::Region:
            return group + (one ? " leads to one chain" : " lead to one chain");
        case Rule::EndsRegion:
            return group + (one ? " skips the Hint" : " skip the Hint");
        case Rule::Loop:
        case Rule::SkipHint:
        case Rule::LookAhead:
            break;
        }
        const auto [p, q] = FirstLink(link, side_);
        const std::string place = Capitalized(words_.LinkAt(p, q));
        return place + (d.rule == Rule::Loop       ? " would close a loop"
                        : d.rule == Rule::SkipHint ? " would skip the Hint"
                                                   : " cannot be linked");
    }

    const Board& board_;
    Wording words_;
    int side_;
    ReasoningSteps steps_;
};

} // namespace

Hint FindHint(const Board& board)
{
    if (board.List2.empty() || board.PathCells.empty())
        return {};
    return HintMaker(board).Make();
}

} // namespace tallyon
