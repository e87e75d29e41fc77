// Board drawing on the recording canvas: geometry, erasing, draw order and the marks.
#include "play/draw.h"

#include "play_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace tallyon::test {
namespace {

using Kind = CanvasOp::Kind;

// Index of the first and last op matching a predicate, -1 when none.
template <typename Pred>
std::pair<int, int> SpanOf(const std::vector<CanvasOp>& ops, Pred pred)
{
    int first = -1, last = -1;
    for (int i = 0; i < static_cast<int>(ops.size()); ++i) {
        if (pred(ops[static_cast<std::size_t>(i)])) {
            first = first < 0 ? i : first;
            last = i;
        }
    }
    return {first, last};
}

class DrawGeometry : public ::testing::TestWithParam<int> {};

TEST_P(DrawGeometry, NodesDigitsAndGridSitOnTheLattice)
{
    const int n = GetParam();
    Board board;
    MakeRowPuzzle(board, n);
    RecordingCanvas canvas;
    const DrawStyle style = TestStyle();
    DrawBoard(canvas, board, style, 0);

    const int pitch = 4 * (134 - 11 * (n - 6));
    ASSERT_EQ(board.CellPitch, pitch);
    std::set<std::pair<int, int>> expected, drawn;
    for (int row = 1; row <= board.BoardSpan; row += 2)
        for (int col = 1; col <= board.BoardSpan; col += 2)
            expected.insert({(col - 1) * pitch + board.BoardLeft, (row - 1) * pitch + board.BoardTop});
    for (const CanvasOp& op : canvas.OpsOf(Kind::Circle))
        if (op.filled && op.fill == style.ShapeColour)
            drawn.insert({op.x1, op.y1});
    EXPECT_EQ(drawn, expected);

    // Grid: a line through every row and column of nodes, from the first node to the last.
    const std::vector<CanvasOp> lines = canvas.OpsOf(Kind::Line);
    ASSERT_EQ(static_cast<int>(lines.size()), 2 * (n + 1));
    const int first = board.BoardLeft, last = board.BoardLeft + 2 * n * pitch;
    for (const CanvasOp& line : lines) {
        EXPECT_TRUE(expected.count({line.x1, line.y1}) && expected.count({line.x2, line.y2}));
        EXPECT_TRUE((line.x1 == first && line.x2 == last) || (line.y1 == first && line.y2 == last));
        EXPECT_EQ(line.colour, style.GridColour);
        EXPECT_EQ(line.penWidth, style.GridLineWidth);
    }

    // Every node and link cell shows its digit centred on its position, at the board's size.
    const int cells = (n + 1) * (n + 1) + 2 * n * (n + 1);
    int digits = 0;
    for (const CanvasOp& text : canvas.OpsOf(Kind::Text)) {
        if (text.text == "X")
            continue;
        ++digits;
        EXPECT_DOUBLE_EQ(text.font.points, board.FontSize);
        const TextSize size = canvas.MeasureText(text.text, text.font);
        const int cx = text.x1 + size.width / 2 - board.BoardLeft;
        const int cy = text.y1 + size.height / 2 - board.BoardTop;
        EXPECT_LE(cx % pitch, 1);
        EXPECT_LE(cy % pitch, 1);
    }
    EXPECT_EQ(digits, cells);
}

INSTANTIATE_TEST_SUITE_P(GridSizes, DrawGeometry, ::testing::Values(4, 10));

TEST(DrawCell, ShapesAndPatchesFollowTheStyle)
{
    Board board;
    MakeRowPuzzle(board, 6);
    DrawStyle style = TestStyle();
    style.NodeShape = 1;
    RecordingCanvas canvas;
    DrawCellAsNode(canvas, board, style, 5, 7);
    const int x = board.CellX(5, 7), y = board.CellY(5, 7), q = board.QuarterPitch;
    ASSERT_EQ(canvas.OpsOf(Kind::FilledBox).size(), 1u);
    const CanvasOp fill = canvas.OpsOf(Kind::FilledBox)[0];
    EXPECT_EQ(std::vector<int>({fill.x1, fill.y1, fill.x2, fill.y2}), std::vector<int>({x - q, y - q, x + q, y + q}));
    EXPECT_EQ(fill.fill, style.ShapeColour);
    EXPECT_EQ(canvas.OpsOf(Kind::Text)[0].colour, style.FontColour);

    // A link cell blanks the grid line under its digit with the background.
    canvas.Reset();
    DrawCellAsLink(canvas, board, style, 5, 8);
    ASSERT_EQ(canvas.Ops().size(), 2u);
    const CanvasOp patch = canvas.Ops()[0];
    EXPECT_EQ(patch.kind, Kind::FilledBox);
    EXPECT_EQ(patch.fill, style.Background);
    EXPECT_LT(patch.x1, board.CellX(5, 8));
    EXPECT_GT(patch.x2, board.CellX(5, 8));
    EXPECT_LT(patch.y1, board.CellY(5, 8) - 3 * style.GridLineWidth);
    EXPECT_EQ(canvas.Ops()[1].text, "5");
    EXPECT_EQ(canvas.Ops()[1].colour, style.GridColour);

    // Gaps draw nothing.
    canvas.Reset();
    DrawCellAsLink(canvas, board, style, 4, 4);
    EXPECT_TRUE(canvas.Ops().empty());
}

TEST(DrawLink, MakesAWideLineAndErasingRestoresTheGridLine)
{
    Board board;
    MakeRowPuzzle(board, 7);
    const DrawStyle style = TestStyle();
    RecordingCanvas canvas;
    DrawLink(canvas, board, style, 1, 5, 5, 5, 7);
    DrawLink(canvas, board, style, 0, 5, 5, 7, 5);
    const std::vector<CanvasOp> lines = canvas.OpsOf(Kind::Line);
    ASSERT_EQ(lines.size(), 3u);
    const int ax = board.CellX(5, 5), ay = board.CellY(5, 5);
    EXPECT_EQ(std::vector<int>({lines[0].x1, lines[0].y1, lines[0].x2, lines[0].y2}),
              std::vector<int>({ax, ay, board.CellX(5, 7), ay}));
    EXPECT_EQ(lines[0].colour, style.UserLineColour);
    EXPECT_EQ(lines[0].penWidth, 3 * style.GridLineWidth);
    EXPECT_EQ(lines[1].colour, style.Background);
    EXPECT_EQ(lines[1].penWidth, 3 * style.GridLineWidth);
    EXPECT_EQ(lines[2].colour, style.GridColour);
    EXPECT_EQ(lines[2].penWidth, style.GridLineWidth);
    EXPECT_EQ(std::vector<int>({lines[2].x1, lines[2].y1, lines[2].x2, lines[2].y2}),
              std::vector<int>({ax, ay, ax, board.CellY(7, 5)}));
}

TEST(DrawBoard, DrawsGridThenCellsThenLinksThenMarks)
{
    Board board;
    MakeRowPuzzle(board, 5);
    board.UserRight(5, 1) = board.UserLeft(5, 3) = 1;
    board.UserDown(7, 7) = board.UserUp(9, 7) = 1;
    const DrawStyle style = TestStyle();
    RecordingCanvas canvas;
    DrawBoard(canvas, board, style, 0);
    const auto& ops = canvas.Ops();
    ASSERT_EQ(ops.front().kind, Kind::Clear);
    EXPECT_EQ(ops.front().colour, style.Background);

    const auto grid = SpanOf(ops, [&](const CanvasOp& op) {
        return op.kind == Kind::Line && op.colour == style.GridColour;
    });
    const auto nodes = SpanOf(ops, [](const CanvasOp& op) { return op.kind == Kind::Circle && op.filled; });
    const auto links = SpanOf(ops, [&](const CanvasOp& op) {
        return op.kind == Kind::Line && op.colour == style.UserLineColour;
    });
    const auto marks = SpanOf(ops, [](const CanvasOp& op) {
        return (op.kind == Kind::Circle && !op.filled) || op.text == "X";
    });
    EXPECT_LT(grid.second, nodes.first);
    EXPECT_LT(nodes.first + 36 * 2, links.first); // all 36 nodes (shape and digit) come first
    EXPECT_LT(links.second, marks.first);
    EXPECT_EQ(marks.second, static_cast<int>(ops.size()) - 1);
    ASSERT_EQ(LinesIn(canvas, style.UserLineColour).size(), 2u); // each user link once

    // After each line its ends and its link cell are drawn again, so their digits stay on top.
    for (int i = 0; i < static_cast<int>(ops.size()); ++i) {
        if (ops[static_cast<std::size_t>(i)].colour != style.UserLineColour)
            continue;
        std::vector<std::string> after;
        for (int k = i + 1; k < static_cast<int>(ops.size()) && after.size() < 3; ++k)
            if (ops[static_cast<std::size_t>(k)].kind == Kind::Text)
                after.push_back(ops[static_cast<std::size_t>(k)].text);
        EXPECT_EQ(after, std::vector<std::string>({"1", "1", "5"}));
    }
}

TEST(DrawBoard, ModeOneDrawsThePathInsteadOfTheUserLinks)
{
    Board board;
    MakeRowPuzzle(board, 4);
    board.UserDown(5, 5) = board.UserUp(7, 5) = 1;
    RecordingCanvas canvas;
    DrawBoard(canvas, board, TestStyle(), 1);
    const std::vector<CanvasOp> lines = LinesIn(canvas, TestStyle().UserLineColour);
    ASSERT_EQ(lines.size(), board.List2.size() - 1);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].y1, board.CellY(3, 1));
        EXPECT_EQ(lines[i].y2, board.CellY(3, 1));
        EXPECT_EQ(lines[i].x1, board.CellX(3, static_cast<int>(i) + 1));
        EXPECT_EQ(lines[i].x2, board.CellX(3, static_cast<int>(i) + 2));
    }
}

// Positions of the two "X" marks, relative to Start and End.
std::vector<int> CrossOffsets(const Board& board, const RecordingCanvas& canvas, int startRow,
                              int startCol, int endRow, int endCol)
{
    std::vector<int> out;
    const std::vector<CanvasOp> texts = canvas.OpsOf(Kind::Text);
    RecordingCanvas measure;
    const std::pair<int, int> anchors[] = {{startRow, startCol}, {endRow, endCol}};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const TextSize size = measure.MeasureText("X", texts[i].font);
        const auto [row, col] = anchors[std::min<std::size_t>(i, 1)];
        out.push_back(texts[i].x1 + size.width / 2 - board.CellX(row, col));
        out.push_back(texts[i].y1 + size.height / 2 - board.CellY(row, col));
    }
    return out;
}

TEST(DrawMarks, RingsKeyNodesAndCrossesTheStartSide)
{
    Board board;
    MakeRowPuzzle(board, 4);
    RecordingCanvas canvas;
    DrawMarks(canvas, board, TestStyle());
    const int p = board.CellPitch;
    EXPECT_EQ(CrossOffsets(board, canvas, 3, 1, 3, 9), std::vector<int>({-p, 0, p, 0}));
    const std::vector<CanvasOp> rings = canvas.OpsOf(Kind::Circle);
    ASSERT_EQ(rings.size(), 3u);
    EXPECT_EQ(rings[0].colour, kHintMarkColour); // the Hint: node 5 of 9 path cells, (3,5)
    EXPECT_EQ(rings[0].x1, board.CellX(3, 5));
    EXPECT_EQ(rings[1].colour, kEndMarkColour);
    EXPECT_EQ(rings[1].x1, board.CellX(3, 1));
    EXPECT_EQ(rings[2].x1, board.CellX(3, 9));

    // A puzzle from the top: the crosses stand above Start and below End.
    MakePlainBoard(board, 4);
    LayTestPath(board, {{1, 3}, {3, 3}, {3, 5}, {5, 5}, {7, 5}, {9, 5}});
    board.StartSide = kSideTop;
    canvas.Reset();
    DrawMarks(canvas, board, TestStyle());
    EXPECT_EQ(CrossOffsets(board, canvas, 1, 3, 9, 5), std::vector<int>({0, -p, 0, p}));

    // Label6 stepped to another side after the puzzle was made: the crosses stay put.
    board.StartSide = kSideRandom;
    canvas.Reset();
    DrawMarks(canvas, board, TestStyle());
    EXPECT_EQ(CrossOffsets(board, canvas, 1, 3, 9, 5), std::vector<int>({0, -p, 0, p}));

    // No puzzle: no marks.
    Board empty;
    MakePlainBoard(empty, 4);
    canvas.Reset();
    DrawMarks(canvas, empty, TestStyle());
    EXPECT_TRUE(canvas.Ops().empty());
}

} // namespace
} // namespace tallyon::test
