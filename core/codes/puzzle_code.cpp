// Puzzle codes: the puzzle packed into bytes, checked by a CRC, written in base64.
#include "core/codes/puzzle_code.h"

#include "core/board/lattice.h"
#include "core/board/link_rule.h"
#include "core/generator/generator.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tallyon {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
constexpr std::size_t kHeaderBytes = 4; // size, side, path nodes, Start
constexpr std::size_t kCrcBytes = 2;
constexpr int kMinGridSize = 4, kMaxGridSize = 10;

// The four steps between neighbouring nodes, in cells, by their two-bit code.
constexpr std::array<std::pair<int, int>, 4> kSteps = {{{0, 2}, {2, 0}, {0, -2}, {-2, 0}}};

std::string ToBase64(const Bytes& bytes)
{
    std::string text;
    std::uint32_t bits = 0;
    int held = 0;
    for (const std::uint8_t byte : bytes) {
        bits = (bits << 8) | byte;
        held += 8;
        while (held >= 6) {
            held -= 6;
            text += kAlphabet[(bits >> held) & 63U];
        }
    }
    if (held > 0)
        text += kAlphabet[(bits << (6 - held)) & 63U];
    return text;
}

std::optional<Bytes> FromBase64(std::string_view text)
{
    Bytes bytes;
    std::uint32_t bits = 0;
    int held = 0;
    for (const char c : text) {
        const std::size_t value = kAlphabet.find(c);
        if (value == std::string_view::npos)
            return std::nullopt;
        bits = (bits << 6) | static_cast<std::uint32_t>(value);
        held += 6;
        if (held >= 8) {
            held -= 8;
            bytes.push_back(static_cast<std::uint8_t>((bits >> held) & 255U));
        }
    }
    // The last character's unused low bits are 0 in every code made, so that each puzzle has
    // exactly one code.
    if ((bits & ((1U << static_cast<unsigned>(held)) - 1U)) != 0)
        return std::nullopt;
    return bytes;
}

// CRC-16/CCITT: polynomial 0x1021, starting from 0xFFFF. Any one changed character changes it.
std::uint16_t Crc16(const Bytes& bytes, std::size_t count)
{
    std::uint32_t crc = 0xFFFF;
    for (std::size_t i = 0; i < count; ++i) {
        crc ^= static_cast<std::uint32_t>(bytes[i]) << 8;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 0x8000U) != 0 ? ((crc << 1) ^ 0x1021U) & 0xFFFFU : (crc << 1) & 0xFFFFU;
    }
    return static_cast<std::uint16_t>(crc);
}

// The node and link cells of a board of the given span, row by row.
std::vector<std::pair<int, int>> DigitCells(int span)
{
    std::vector<std::pair<int, int>> cells;
    for (int row = 1; row <= span; ++row)
        for (int col = 1; col <= span; ++col)
            if (IsNode(row, col) || IsLinkCell(row, col))
                cells.emplace_back(row, col);
    return cells;
}

std::size_t ExpectedBytes(int gridSize, int pathNodes)
{
    const std::size_t steps = static_cast<std::size_t>(pathNodes - 1);
    const std::size_t digits = DigitCells(2 * gridSize + 1).size();
    return kHeaderBytes + (steps + 3) / 4 + (digits + 1) / 2 + kCrcBytes;
}

// Packs values of `bits` bits each (2 or 4), the first in the high bits of its byte.
void Pack(Bytes& bytes, const std::vector<int>& values, int bits)
{
    const int perByte = 8 / bits;
    for (std::size_t i = 0; i < values.size(); i += static_cast<std::size_t>(perByte)) {
        unsigned byte = 0;
        for (int k = 0; k < perByte; ++k) {
            const std::size_t at = i + static_cast<std::size_t>(k);
            const unsigned value = at < values.size() ? static_cast<unsigned>(values[at]) : 0U;
            byte |= value << static_cast<unsigned>(8 - bits * (k + 1));
        }
        bytes.push_back(static_cast<std::uint8_t>(byte));
    }
}

std::vector<int> Unpack(const Bytes& bytes, std::size_t from, std::size_t count, int bits)
{
    const std::size_t perByte = static_cast<std::size_t>(8 / bits);
    const unsigned mask = (1U << static_cast<unsigned>(bits)) - 1U;
    std::vector<int> values;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned byte = bytes[from + i / perByte];
        const unsigned shift = static_cast<unsigned>(8 - bits * static_cast<int>(i % perByte + 1));
        values.push_back(static_cast<int>((byte >> shift) & mask));
    }
    return values;
}

DecodeResult Refuse(std::string problem) { return {false, std::move(problem)}; }

// Where a step of the path was laid before a puzzle from the top was turned: the quarter turn
// took (r, c) to (c, span + 1 - r).
std::pair<int, int> BeforeTurn(const Board& board, int row, int col)
{
    if (board.StartSide != kSideTop)
        return {row, col};
    return {board.BoardSpan + 1 - col, row};
}

// The path flags of a step from one node to the next, as the walk sets them. A puzzle from the
// top keeps the flags of the path as it was laid, before the turn.
void SetLaidStepFlags(Board& board, std::pair<int, int> from, std::pair<int, int> to)
{
    const auto [r1, c1] = BeforeTurn(board, from.first, from.second);
    const auto [r2, c2] = BeforeTurn(board, to.first, to.second);
    const char dir = c2 > c1 ? 'R' : c2 < c1 ? 'L' : r2 > r1 ? 'D' : 'U';
    SetStepFlags(board, r1, c1, r2, c2, dir);
}

// The path's nodes from Start and the steps between them; empty when a step leaves the lattice
// or comes back to a node already on the path.
std::vector<std::pair<int, int>> WalkSteps(int gridSize, int start, const std::vector<int>& steps)
{
    const int side = gridSize + 1, span = 2 * gridSize + 1;
    std::vector<std::pair<int, int>> nodes{{NodeRow(gridSize, start), NodeCol(gridSize, start)}};
    std::vector<bool> seen(static_cast<std::size_t>(side * side), false);
    seen[static_cast<std::size_t>(start)] = true;
    for (const int step : steps) {
        const auto [row, col] = nodes.back();
        const int r = row + kSteps[static_cast<std::size_t>(step)].first;
        const int c = col + kSteps[static_cast<std::size_t>(step)].second;
        if (r < 1 || r > span || c < 1 || c > span)
            return {};
        const std::size_t node = static_cast<std::size_t>(NodeIndex(gridSize, r, c));
        if (seen[node])
            return {};
        seen[node] = true;
        nodes.emplace_back(r, c);
    }
    return nodes;
}

// Puts the puzzle together on `board`; false when a path link's arithmetic is wrong, which no
// puzzle Tallyon makes has.
bool Assemble(Board& board, int side, const std::vector<std::pair<int, int>>& nodes, const std::vector<int>& digits)
{
    const std::vector<std::pair<int, int>> cells = DigitCells(board.BoardSpan);
    for (std::size_t i = 0; i < cells.size(); ++i)
        board.NodeValue(cells[i].first, cells[i].second) = digits[i];
    board.StartSide = side;
    auto append = [&board](int row, int col) { AppendPathCell(board, board.CellNo(row, col)); };
    append(nodes.front().first, nodes.front().second);
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        const auto [r1, c1] = nodes[i - 1];
        const auto [r2, c2] = nodes[i];
        if (!IsValidTriple(board.NodeValue(r1, c1), board.NodeValue((r1 + r2) / 2, (c1 + c2) / 2),
                           board.NodeValue(r2, c2)))
            return false;
        append((r1 + r2) / 2, (c1 + c2) / 2);
        append(r2, c2);
        SetLaidStepFlags(board, nodes[i - 1], nodes[i]);
    }
    FinishRestoredPuzzle(board);
    return true;
}

} // namespace

std::string EncodePuzzleCode(const Board& board)
{
    if (board.PathCells.empty())
        return "";
    std::vector<std::pair<int, int>> nodes;
    for (std::size_t i = 0; i < board.PathCells.size(); i += 2)
        nodes.emplace_back(board.CellRow[board.PathCells[i]], board.CellCol[board.PathCells[i]]);
    Bytes bytes{static_cast<std::uint8_t>(board.GridSize), static_cast<std::uint8_t>(board.StartSide),
                static_cast<std::uint8_t>(nodes.size()),
                static_cast<std::uint8_t>(NodeIndex(board.GridSize, nodes.front().first, nodes.front().second))};
    std::vector<int> steps;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        const std::pair<int, int> step{nodes[i].first - nodes[i - 1].first, nodes[i].second - nodes[i - 1].second};
        for (std::size_t k = 0; k < kSteps.size(); ++k)
            if (kSteps[k] == step)
                steps.push_back(static_cast<int>(k));
    }
    Pack(bytes, steps, 2);
    std::vector<int> digits;
    for (const auto& [row, col] : DigitCells(board.BoardSpan))
        digits.push_back(board.NodeValue(row, col));
    Pack(bytes, digits, 4);
    return PuzzleCodeFromBytes(std::move(bytes));
}

std::string PuzzleCodeFromBytes(std::vector<std::uint8_t> payload)
{
    const std::uint16_t crc = Crc16(payload, payload.size());
    payload.push_back(static_cast<std::uint8_t>(crc >> 8));
    payload.push_back(static_cast<std::uint8_t>(crc & 255U));
    return kPuzzleCodePrefix + ToBase64(payload);
}

DecodeResult DecodePuzzleCode(const std::string& code, Board& board, int pictureWidth)
{
    const std::size_t first = code.find_first_not_of(" \t\r\n");
    const std::size_t last = code.find_last_not_of(" \t\r\n");
    const std::string_view text =
        first == std::string::npos ? std::string_view() : std::string_view(code).substr(first, last - first + 1);
    if (text.size() > kMaxPuzzleCodeLength)
        return Refuse("It is longer than any puzzle code.");
    const std::string_view prefix = kPuzzleCodePrefix;
    if (text.substr(0, prefix.size()) != prefix) {
        const bool versioned = text.size() > 2 && text[0] == 'T' && text.find('-') != std::string_view::npos;
        return Refuse(versioned ? "It was made by another version of Tallyon." : "It is not a Tallyon puzzle code.");
    }
    if (text.find_first_not_of(kAlphabet, prefix.size()) != std::string_view::npos)
        return Refuse("It holds characters that no puzzle code has.");
    const std::optional<Bytes> bytes = FromBase64(text.substr(prefix.size()));
    const std::size_t size = bytes ? bytes->size() : 0;
    if (size < kHeaderBytes + kCrcBytes ||
        Crc16(*bytes, size - kCrcBytes) != ((*bytes)[size - 2] << 8 | (*bytes)[size - 1]))
        return Refuse("It is damaged or incomplete.");
    const int gridSize = (*bytes)[0], side = (*bytes)[1], pathNodes = (*bytes)[2], start = (*bytes)[3];
    if (gridSize < kMinGridSize || gridSize > kMaxGridSize)
        return Refuse("It is for a board size Tallyon does not make.");
    const int latticeNodes = (gridSize + 1) * (gridSize + 1);
    if (side < kSideLeft || side > 4 || pathNodes < 2 || pathNodes > latticeNodes || start >= latticeNodes ||
        size != ExpectedBytes(gridSize, pathNodes))
        return Refuse("It is damaged or incomplete.");
    const std::size_t stepCount = static_cast<std::size_t>(pathNodes - 1);
    const std::vector<int> steps = Unpack(*bytes, kHeaderBytes, stepCount, 2);
    const std::vector<std::pair<int, int>> nodes = WalkSteps(gridSize, start, steps);
    const std::vector<int> digits =
        Unpack(*bytes, kHeaderBytes + (stepCount + 3) / 4, DigitCells(2 * gridSize + 1).size(), 4);
    for (const int digit : digits)
        if (digit < 1 || digit > 9)
            return Refuse("It is damaged or incomplete.");
    if (nodes.empty())
        return Refuse("Its path leaves the board or crosses itself.");
    Board built;
    built.GridSize = gridSize;
    ResetBoard(built, pictureWidth);
    if (!Assemble(built, side, nodes, digits))
        return Refuse("Its path has a link whose arithmetic is wrong.");
    // Bits the puzzle does not use (past the last step, past the last digit) are 0 in every
    // code the program writes: one that sets them names a puzzle by a code it would not give.
    if (EncodePuzzleCode(built) != text)
        return Refuse("It is damaged or incomplete.");
    board = std::move(built);
    return {true, ""};
}

} // namespace tallyon
