// Fuzz target: the saved game's reader. The input is the file's text, split at CR LF, LF or CR.
// Whatever is accepted must be a playable puzzle and write back to the very same lines; a file
// of the older format 1 is written in the current format, which must read back to itself.
#include "play/saved_game.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::vector<std::string> Written(const tallyon::SavedGame& game)
{
    tallyon::PlayState play;
    play.undolist = game.undolist;
    play.redolist = game.redolist;
    play.HintCount = game.hints;
    return tallyon::FormatSavedGame(*game.board, play, game.next, game.checkRunning, game.indicator);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tallyon;
    std::vector<std::string> lines;
    std::string line;
    for (std::size_t i = 0; i < size; ++i) {
        const char c = static_cast<char>(data[i]);
        if (c != '\r' && c != '\n') {
            line += c;
            continue;
        }
        lines.push_back(line);
        line.clear();
        if (c == '\r' && i + 1 < size && data[i + 1] == '\n')
            ++i;
    }
    if (!line.empty())
        lines.push_back(line);
    const SavedGameRead read = ParseSavedGame(lines, 8400);
    if (!read.game)
        return 0;
    const SavedGame& game = *read.game;
    if (game.board->List2.empty() || game.board->List2.size() % 2 != 1)
        std::abort();
    const std::vector<std::string> written = Written(game);
    if (lines.front() == kSavedGameFormat1) {
        const SavedGameRead again = ParseSavedGame(written, 8400);
        if (!again.game || Written(*again.game) != written)
            std::abort();
        return 0;
    }
    if (written != lines)
        std::abort();
    return 0;
}
