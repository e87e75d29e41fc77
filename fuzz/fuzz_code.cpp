// Fuzz target: puzzle codes. The first byte chooses between the input as the code's text and
// the input as its payload (CRC and base64 added), which reaches the checks behind the CRC.
// Whatever is accepted must be a puzzle whose path links are valid, and encode back to itself.
#include "core/codes/puzzle_code.h"
#include "core/reasoning/chain_solver.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tallyon;
    if (size == 0)
        return 0;
    const std::string code = (data[0] & 1) != 0 ? std::string(reinterpret_cast<const char*>(data + 1), size - 1)
                                                : PuzzleCodeFromBytes(std::vector<std::uint8_t>(data + 1, data + size));
    auto board = std::make_unique<Board>();
    if (!DecodePuzzleCode(code, *board, 8400).ok)
        return 0;
    if (CountBoardChains(*board, 1).chains < 1)
        std::abort(); // the path itself is a chain of valid links from Start through the Hint to End
    auto again = std::make_unique<Board>();
    if (!DecodePuzzleCode(EncodePuzzleCode(*board), *again, 8400).ok ||
        EncodePuzzleCode(*again) != EncodePuzzleCode(*board))
        std::abort();
    return 0;
}
