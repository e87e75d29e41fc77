// Test support for the play routines: a fake main window over a recording canvas, and boards
// with a hand-laid path whose digits are known.
#include "play_fixture.h"

#include "play/linking.h"
#include "play/verify.h"

namespace tallyon::test {
namespace {

// Hands every call on to the host's one recording canvas.
class ForwardingCanvas : public Canvas {
public:
    explicit ForwardingCanvas(RecordingCanvas& target) : target_(target) {}
    void Clear(Colour background) override { target_.Clear(background); }
    void Line(int x1, int y1, int x2, int y2, Colour colour, int penWidth) override
    {
        target_.Line(x1, y1, x2, y2, colour, penWidth);
    }
    void Box(int x1, int y1, int x2, int y2, Colour colour, int penWidth) override
    {
        target_.Box(x1, y1, x2, y2, colour, penWidth);
    }
    void FilledBox(int x1, int y1, int x2, int y2, Colour fill) override
    {
        target_.FilledBox(x1, y1, x2, y2, fill);
    }
    void Circle(int cx, int cy, int radius, Colour outline, int penWidth,
                std::optional<Colour> fill) override
    {
        target_.Circle(cx, cy, radius, outline, penWidth, fill);
    }
    void Text(int x, int y, const std::string& text, const FontSpec& font, Colour colour) override
    {
        target_.Text(x, y, text, font, colour);
    }
    TextSize MeasureText(const std::string& text, const FontSpec& font) override
    {
        return target_.MeasureText(text, font);
    }

private:
    RecordingCanvas& target_;
};

} // namespace

DrawStyle TestStyle()
{
    DrawStyle style;
    style.GridColour = RGB(1, 2, 3);
    style.ShapeColour = RGB(4, 5, 6);
    style.FontColour = RGB(7, 8, 9);
    style.UserLineColour = RGB(128, 0, 0);
    style.Background = RGB(250, 251, 252);
    style.GridLineWidth = 2;
    style.NodeShape = 2;
    return style;
}

void FakeHost::SetHoverCaptions(const std::string& row, const std::string& column)
{
    rowCaption = row;
    columnCaption = column;
}

void FakeHost::ShowErrorMarker(int left, int top, int size)
{
    markerShown = true;
    markerLeft = left;
    markerTop = top;
    markerSize = size;
}

int FakeHost::Ask(const std::string& message, const std::string& style)
{
    asked.emplace_back(message, style);
    return answer;
}

std::unique_ptr<Canvas> FakeHost::OpenBoardCanvas()
{
    ++canvasOpens;
    return std::make_unique<ForwardingCanvas>(canvas);
}

void MakePlainBoard(Board& board, int gridSize)
{
    board.GridSize = gridSize;
    ResetBoard(board, kPictureWidth);
    for (int row = 1; row <= board.BoardSpan; ++row) {
        for (int col = 1; col <= board.BoardSpan; ++col) {
            board.NodeValue(row, col) = IsNode(row, col) ? 1 : (IsLinkCell(row, col) ? 5 : 0);
            board.CellState(row, col) = IsNode(row, col) ? kNodeCell : (IsLinkCell(row, col) ? kLinkCell : kNoCell);
        }
    }
}

void LayTestPath(Board& board, const std::vector<std::pair<int, int>>& nodes)
{
    board.PathList.clear();
    board.List2.clear();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const auto [row, col] = nodes[i];
        if (i > 0) {
            const auto [prevRow, prevCol] = nodes[i - 1];
            const int linkRow = (row + prevRow) / 2, linkCol = (col + prevCol) / 2;
            board.NodeValue(linkRow, linkCol) = 1;
            board.List2.push_back(std::to_string(board.CellNo(linkRow, linkCol)));
            if (row == prevRow) {
                (col > prevCol ? board.PathRight : board.PathLeft)(prevRow, prevCol) = 1;
                (col > prevCol ? board.PathLeft : board.PathRight)(row, col) = 1;
            } else {
                (row > prevRow ? board.PathDown : board.PathUp)(prevRow, prevCol) = 1;
                (row > prevRow ? board.PathUp : board.PathDown)(row, col) = 1;
            }
        }
        board.List2.push_back(std::to_string(board.CellNo(row, col)));
    }
    for (const std::string& cell : board.List2)
        board.PathList += cell + ",";
    const int count = static_cast<int>(board.List2.size());
    board.KeyNodes = {std::stoi(board.List2.front()),
                      std::stoi(board.List2[static_cast<std::size_t>(RoundHalfEven(count / 2.0))]),
                      std::stoi(board.List2.back())};
    board.StartNode = board.KeyNodes[0];
    board.EndNode = board.KeyNodes[2];
}

void MakeRowPuzzle(Board& board, int gridSize)
{
    MakePlainBoard(board, gridSize);
    std::vector<std::pair<int, int>> nodes;
    for (int col = 1; col <= board.BoardSpan; col += 2)
        nodes.emplace_back(3, col);
    LayTestPath(board, nodes);
    board.StartSide = kSideLeft;
}

void ClickCell(FakeHost& host, Board& board, PlayState& state, int row, int col, int button)
{
    HoverCell(host, board, state, static_cast<float>(board.CellX(row, col)),
              static_cast<float>(board.CellY(row, col)));
    MakeLink(host, board, state, button);
}

std::vector<CanvasOp> LinesIn(const RecordingCanvas& canvas, Colour colour)
{
    std::vector<CanvasOp> lines;
    for (const CanvasOp& op : canvas.OpsOf(CanvasOp::Kind::Line))
        if (op.colour == colour)
            lines.push_back(op);
    return lines;
}

std::string UserLinkMap(const Board& board)
{
    std::string map;
    for (int row = 1; row <= board.BoardSpan; row += 2) {
        for (int col = 1; col <= board.BoardSpan; col += 2) {
            const std::string letters = LinkLetters(board, row, col);
            if (!letters.empty())
                map += std::to_string(row) + "," + std::to_string(col) + ":" + letters + " ";
        }
    }
    return map;
}

} // namespace tallyon::test
