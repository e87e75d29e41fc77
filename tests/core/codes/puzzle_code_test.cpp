// Puzzle codes: every size and start side comes back exactly, and anything but a code made by
// the program is refused with a reason, the board untouched.
#include "core/codes/puzzle_code.h"
#include "core/generator/decoy_fill.h"
#include "core/generator/generator.h"
#include "core/reasoning/chain_solver.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace tallyon::testing {
namespace {

constexpr int kWidth = 8400;

// Everything a built puzzle holds that play, drawing and verification read.
std::string Snapshot(const Board& b)
{
    std::string out = std::to_string(b.GridSize) + "/" + std::to_string(b.BoardSpan) + "/" +
                      std::to_string(b.StartSide) + "/" + std::to_string(b.CellPitch) + "|" + b.PathList + "|";
    for (int k : b.KeyNodes)
        out += std::to_string(k) + " ";
    out += std::to_string(b.StartNode) + " " + std::to_string(b.EndNode) + "|";
    for (const std::vector<std::string>* list : {&b.List2, &b.List3})
        for (const std::string& item : *list)
            out += item + ",";
    for (int r = 1; r <= b.BoardSpan; ++r)
        for (int c = 1; c <= b.BoardSpan; ++c)
            out += std::to_string(b.NodeValue(r, c)) + std::to_string(b.CellState(r, c) + 1) +
                   std::to_string(b.PathLeft(r, c)) + std::to_string(b.PathRight(r, c)) +
                   std::to_string(b.PathUp(r, c)) + std::to_string(b.PathDown(r, c));
    return out;
}

TEST(PuzzleCode, EverySizeAndSideComesBackExactly)
{
    TickingClock clock;
    for (int size = 4; size <= 10; ++size)
        for (int side : {kSideLeft, kSideTop, 3}) {
            Board built;
            built.GridSize = size;
            BuildPuzzle(built, side, kWidth);
            const std::string code = EncodePuzzleCode(built);
            ASSERT_EQ(code.rfind(kPuzzleCodePrefix, 0), 0u);
            EXPECT_LE(code.size(), kMaxPuzzleCodeLength);
            for (char c : code)
                EXPECT_TRUE(c > ' ' && c < 127) << code;
            Board back;
            back.UserRight(3, 3) = 1; // a puzzle in play before: nothing of it may remain
            const DecodeResult result = DecodePuzzleCode(" " + code + "\r\n", back, kWidth);
            ASSERT_TRUE(result.ok) << result.problem << " " << code;
            EXPECT_EQ(Snapshot(back), Snapshot(built)) << "size " << size << " side " << side;
            EXPECT_EQ(back.UserRight(3, 3), 0);
            EXPECT_EQ(EncodePuzzleCode(back), code);
        }
    EXPECT_EQ(EncodePuzzleCode(Board()), "");
}

// Each refusal names its reason and leaves the board as it was.
TEST(PuzzleCode, AnythingElseIsRefusedWithAReason)
{
    TickingClock clock;
    Board built;
    built.GridSize = 5;
    BuildPuzzle(built, kSideLeft, kWidth);
    const std::string code = EncodePuzzleCode(built);
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";

    const auto refused = [](const std::string& text) {
        Board board;
        const std::string before = Snapshot(board);
        const DecodeResult result = DecodePuzzleCode(text, board, kWidth);
        EXPECT_EQ(Snapshot(board), before);
        return result.ok ? std::string("accepted") : result.problem;
    };
    // Every single character changed, and every shorter or longer text, is caught.
    for (std::size_t i = 3; i < code.size(); ++i) {
        std::string damaged = code;
        damaged[i] = alphabet[(alphabet.find(code[i]) + 1 + i % 60) % alphabet.size()];
        EXPECT_NE(refused(damaged), "accepted") << i;
    }
    for (std::size_t n = 0; n < code.size(); ++n)
        EXPECT_NE(refused(code.substr(0, n)), "accepted") << n;
    EXPECT_EQ(refused(code + "A"), "It is damaged or incomplete.");
    EXPECT_EQ(refused("T2-" + code.substr(3)), "It was made by another version of Tallyon.");
    EXPECT_EQ(refused("hello"), "It is not a Tallyon puzzle code.");
    EXPECT_EQ(refused(code.substr(0, 10) + "*" + code.substr(11)), "It holds characters that no puzzle code has.");
    EXPECT_EQ(refused(code + std::string(400, 'A')), "It is longer than any puzzle code.");

    // Well-formed codes of boards the program never makes.
    Board odd = built;
    odd.GridSize = 11;
    odd.BoardSpan = 23;
    EXPECT_EQ(refused(EncodePuzzleCode(odd)), "It is for a board size Tallyon does not make.");
    odd = built;
    odd.PathCells.push_back(odd.PathCells[odd.PathCells.size() - 2]); // back to the node before End
    odd.PathCells.push_back(odd.PathCells[odd.PathCells.size() - 4]);
    EXPECT_EQ(refused(EncodePuzzleCode(odd)), "Its path leaves the board or crosses itself.");
    odd = built;
    const int link = odd.PathCells[1], a = odd.PathCells[0], b = odd.PathCells[2];
    odd.NodeValue(odd.CellRow[link], odd.CellCol[link]) = PickLinkDigit(
        odd.NodeValue(odd.CellRow[a], odd.CellCol[a]), odd.NodeValue(odd.CellRow[b], odd.CellCol[b]), false);
    EXPECT_EQ(refused(EncodePuzzleCode(odd)), "Its path has a link whose arithmetic is wrong.");
}

// The bytes a code carries after its prefix, CRC included (URL-safe base64, no padding).
std::vector<std::uint8_t> CodeBytes(const std::string& code)
{
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
    std::vector<std::uint8_t> bytes;
    unsigned held = 0, bits = 0;
    for (std::size_t i = std::string(kPuzzleCodePrefix).size(); i < code.size(); ++i) {
        held = held << 6 | static_cast<unsigned>(alphabet.find(code[i]));
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes.push_back(static_cast<std::uint8_t>(held >> bits));
            held &= (1U << bits) - 1;
        }
    }
    return bytes;
}

// A code whose bytes say anything at all, its CRC made to fit: every header byte (size, side,
// path nodes, Start) at each of its 256 values, and every other byte at a spread of values.
// Each is refused, or is a puzzle to play: a path of valid links from Start to End through the
// Hint, all three on the board, that encodes back to the very code.
TEST(PuzzleCode, EveryByteChangedIsRefusedOrPlayable)
{
    TickingClock clock;
    for (int size : {4, 10}) {
        Board built;
        built.GridSize = size;
        BuildPuzzle(built, kSideTop, kWidth);
        std::vector<std::uint8_t> payload = CodeBytes(EncodePuzzleCode(built));
        payload.resize(payload.size() - 2); // the CRC, made again for each change
        const int lattice = (size + 1) * (size + 1);
        int accepted = 0;
        for (std::size_t at = 0; at < payload.size(); ++at)
            for (int value = 0; value < 256; value += at < 4 ? 1 : 37) {
                std::vector<std::uint8_t> changed = payload;
                changed[at] = static_cast<std::uint8_t>(value);
                const std::string code = PuzzleCodeFromBytes(changed);
                Board board;
                const DecodeResult result = DecodePuzzleCode(code, board, kWidth);
                if (!result.ok) {
                    // A side, a path length or a Start that no board of the size has is damage,
                    // whatever the bytes after it say.
                    const bool outside = at == 1   ? value < kSideLeft || value > 4
                                         : at == 2 ? value < 2 || value > lattice
                                                   : at == 3 && value >= lattice;
                    if (outside) {
                        EXPECT_EQ(result.problem, "It is damaged or incomplete.") << at << " = " << value;
                    }
                    continue;
                }
                ++accepted;
                SCOPED_TRACE("byte " + std::to_string(at) + " = " + std::to_string(value));
                ASSERT_TRUE(board.List2.size() >= 3 && board.List2.size() % 2 == 1);
                for (int key : board.KeyNodes)
                    ASSERT_TRUE(IsBoardCellNumber(board, key) && IsNode(board.CellRow[key], board.CellCol[key]));
                ASSERT_EQ(board.KeyNodes[0], std::stoi(board.List2.front()));
                ASSERT_EQ(board.KeyNodes[2], std::stoi(board.List2.back()));
                ASSERT_EQ(board.KeyNodes[1], std::stoi(board.List2[HintItemIndex(board.List2.size())]));
                ASSERT_GE(CountBoardChains(board, 1).chains, 1) << "the path is a chain of valid links";
                ASSERT_EQ(EncodePuzzleCode(board), code);
            }
        EXPECT_GT(accepted, 10); // the digits off the path may change freely
    }
}

} // namespace
} // namespace tallyon::testing
