// tallyon-gen: builds puzzles with the game's generator and prints them as text or JSON.
#include "core/board/random.h"
#include "core/codes/puzzle_code.h"
#include "core/generator/generator.h"
#include "core/reasoning/explain.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

using namespace tallyon;

namespace {

constexpr int kPictureWidth = 8400; // twips, the board picture of the main window
// Puzzles built for each one asked for before giving up: the generator shapes each for the
// grade asked, so one that takes more has met a board it cannot shape.
constexpr int kBuildBound = 50;

struct Options {
    int size = 0;
    int sideTag = -1;
    int count = 1;
    bool json = false;
    bool code = false;   // one puzzle code per line instead
    bool trace = false;  // the generator describes each digit it lays, on standard error
    std::string decode;  // a puzzle code to print instead of building puzzles
    std::string explain; // a puzzle code whose solution to explain instead
    int grade = -1;      // keep only puzzles of this grade (Grade), or -1 for any
};

[[noreturn]] void Usage()
{
    std::fputs("usage: tallyon-gen --size N --side left|top|random [--count K] [--grade easy|medium|hard]\n"
               "                  [--json | --code] [--trace]\n"
               "       tallyon-gen --decode CODE [--json | --code]\n"
               "       tallyon-gen --explain CODE [--json]\n",
               stderr);
    std::exit(2);
}

int ToGrade(std::string_view name)
{
    if (const std::optional<Grade> grade = GradeNamed(name))
        return static_cast<int>(*grade);
    std::fprintf(stderr, "tallyon-gen: unknown grade \"%.*s\": use easy, medium or hard\n",
                 static_cast<int>(name.size()), name.data());
    std::exit(2);
}

int ToInt(const char* text)
{
    try {
        std::size_t used = 0;
        const int value = std::stoi(text, &used);
        if (used == std::string_view(text).size())
            return value;
    } catch (const std::exception&) {
    }
    Usage();
}

Options Parse(int argc, char** argv)
{
    Options o;
    for (int i = 1; i < argc; ++i) {
        const std::string_view flag = argv[i];
        if (flag == "--json" || flag == "--trace" || flag == "--code") {
            (flag == "--json" ? o.json : flag == "--code" ? o.code : o.trace) = true;
            continue;
        }
        if (i + 1 >= argc)
            Usage();
        const char* value = argv[++i];
        if (flag == "--size")
            o.size = ToInt(value);
        else if (flag == "--count")
            o.count = ToInt(value);
        else if (flag == "--decode")
            o.decode = value;
        else if (flag == "--explain")
            o.explain = value;
        else if (flag == "--grade")
            o.grade = ToGrade(value);
        else if (flag == "--side")
            o.sideTag = std::string_view(value) == "left"     ? kSideLeft
                        : std::string_view(value) == "top"    ? kSideTop
                        : std::string_view(value) == "random" ? kSideRandom
                                                              : -2;
        else
            Usage();
    }
    if (o.decode.empty() && o.explain.empty() && (o.size < 4 || o.size > 10 || o.sideTag < 0 || o.count < 1))
        Usage();
    return o;
}

const char* SideName(int side) { return side == kSideTop ? "Top" : "Left"; }

std::string Grid(const Board& b, const CellArray<int>& cells)
{
    std::string out = "[";
    for (int r = 1; r <= b.BoardSpan; ++r) {
        out += r > 1 ? ",[" : "[";
        for (int c = 1; c <= b.BoardSpan; ++c)
            out += (c > 1 ? "," : "") + std::to_string(cells(r, c));
        out += "]";
    }
    return out + "]";
}

void PrintJson(const Board& b, const PuzzleStats& stats)
{
    std::string list2;
    for (const std::string& item : b.List2)
        list2 += (list2.empty() ? "" : ",") + item;
    std::printf("{\"GridSize\":%d,\"BoardSpan\":%d,\"StartSide\":%d,\"KeyNodes\":[%d,%d,%d],"
                "\"StartNode\":%d,\"EndNode\":%d,\"PathList\":\"%s\",\"List2\":[%s],",
                b.GridSize, b.BoardSpan, b.StartSide, b.KeyNodes[0], b.KeyNodes[1], b.KeyNodes[2], b.StartNode,
                b.EndNode, b.PathList.c_str(), list2.c_str());
    std::printf("\"NodeValue\":%s,\"CellState\":%s,\"PathLeft\":%s,\"PathRight\":%s,\"PathUp\":%s,"
                "\"PathDown\":%s,\"Rounds\":%d,\"Grade\":\"%s\",\"LookAheads\":%d}\n",
                Grid(b, b.NodeValue).c_str(), Grid(b, b.CellState).c_str(), Grid(b, b.PathLeft).c_str(),
                Grid(b, b.PathRight).c_str(), Grid(b, b.PathUp).c_str(), Grid(b, b.PathDown).c_str(), stats.Rounds,
                GradeName(stats.Grading.grade), stats.Grading.lookAheads);
}

std::string GradeText(const GradeReport& r)
{
    if (!r.solved)
        return "not solvable by reasoning alone";
    return std::string(GradeName(r.grade)) + " (" + std::to_string(r.lookAheads) + " look-aheads)";
}

std::string Where(const Board& b, int cell)
{
    return std::to_string(cell) + " (row " + std::to_string(b.CellRow[cell]) + ", column " +
           std::to_string(b.CellCol[cell]) + ", digit " +
           std::to_string(b.NodeValue(b.CellRow[cell], b.CellCol[cell])) + ")";
}

void PrintText(const Board& b, const PuzzleStats& stats, int number)
{
    std::vector<bool> onPath(static_cast<std::size_t>(b.BoardSpan * b.BoardSpan + 1), false);
    for (const std::string& item : b.List2)
        onPath[static_cast<std::size_t>(std::stoi(item))] = true;
    std::printf("Puzzle %d: %s, start %s, %d path rounds%s, %s\n", number, GridSizeText(b.GridSize).c_str(),
                SideName(b.StartSide), stats.Rounds, stats.BoundHit ? " (longest path of the bound)" : "",
                GradeText(stats.Grading).c_str());
    std::printf("Legend: [d] path cell, {d} Start/Hint/End, blank: gap\n");
    for (int r = 1; r <= b.BoardSpan; ++r) {
        std::string line;
        for (int c = 1; c <= b.BoardSpan; ++c) {
            const int cell = b.CellNo(r, c);
            const int digit = b.NodeValue(r, c);
            const bool key = cell == b.KeyNodes[0] || cell == b.KeyNodes[1] || cell == b.KeyNodes[2];
            if (digit == 0)
                line += "   ";
            else if (key)
                line += "{" + std::to_string(digit) + "}";
            else if (onPath[static_cast<std::size_t>(cell)])
                line += "[" + std::to_string(digit) + "]";
            else
                line += " " + std::to_string(digit) + " ";
        }
        while (!line.empty() && line.back() == ' ')
            line.pop_back();
        std::printf("%s\n", line.c_str());
    }
    std::printf("Start %s\nHint  %s\nEnd   %s\n\n", Where(b, b.KeyNodes[0]).c_str(), Where(b, b.KeyNodes[1]).c_str(),
                Where(b, b.KeyNodes[2]).c_str());
}

void Print(const Options& o, const Board& board, const PuzzleStats& stats, int number)
{
    if (o.code)
        std::printf("%s\n", EncodePuzzleCode(board).c_str());
    else if (o.json)
        PrintJson(board, stats);
    else
        PrintText(board, stats, number);
}

// The deductions that solve the puzzle a code names, numbered, then its path.
int Explain(const Options& o, Board& board)
{
    const DecodeResult result = DecodePuzzleCode(o.explain, board, kPictureWidth);
    if (!result.ok) {
        std::fprintf(stderr, "tallyon-gen: the puzzle code cannot be used: %s\n", result.problem.c_str());
        return 1;
    }
    const Explanation explanation = ExplainPuzzle(board);
    if (o.json) {
        std::printf("%s\n", ExplanationJson(board, explanation).c_str());
        return 0;
    }
    for (const std::string& line : ExplanationLines(board, explanation))
        std::printf("%s\n", line.c_str());
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const Options o = Parse(argc, argv);
    if (o.trace)
        SetTraceHandler([](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); });
    auto board = std::make_unique<Board>();
    if (!o.explain.empty())
        return Explain(o, *board);
    if (!o.decode.empty()) {
        const DecodeResult result = DecodePuzzleCode(o.decode, *board, kPictureWidth);
        if (!result.ok) {
            std::fprintf(stderr, "tallyon-gen: the puzzle code cannot be used: %s\n", result.problem.c_str());
            return 1;
        }
        PuzzleStats stats;
        stats.Grading = GradePuzzle(*board);
        Print(o, *board, stats, 1);
        return 0;
    }
    SetBuildBound(kBuildBound);
    const std::optional<Grade> grade = o.grade < 0 ? std::nullopt : std::optional<Grade>(static_cast<Grade>(o.grade));
    for (int i = 1; i <= o.count; ++i) {
        board->GridSize = o.size;
        const PuzzleStats stats = BuildPuzzle(*board, o.sideTag, kPictureWidth, o.trace ? 1 : 0, grade);
        if (stats.GaveUp) {
            std::fprintf(stderr, "tallyon-gen: no %s puzzle at %s after %d builds\n",
                         grade ? GradeName(*grade) : "solvable", GridSizeText(o.size).c_str(), stats.Builds);
            return 1;
        }
        Print(o, *board, stats, i);
    }
    return 0;
}
