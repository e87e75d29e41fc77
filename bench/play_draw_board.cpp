// Benchmark: a full board redraw (DrawBoard mode 0) of a 10x10 puzzle on a screen-sized image,
// the redraw of one move, a hint (its reasoning and its drawing), and one move with the save of
// the game that follows it (to a scratch state folder, with a history of a hundred moves).
#include "core/generator/generator.h"
#include "platform/qpainter_canvas.h"
#include "play/draw.h"
#include "play/hint.h"
#include "play/move.h"
#include "play/saved_game.h"
#include "shell/saved_game_file.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <vector>

namespace {

// The process's CPU time: the drawing thread does all the work.
double CpuMs() { return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// Times 200 runs of draw on a fresh painter over the image and prints the medians: wall time,
// and CPU time, which a busy machine does not inflate.
template <typename Draw>
void Report(const char* what, const char* target, QImage& image, Draw draw)
{
    std::vector<double> wall, cpu;
    for (int run = 0; run < 200; ++run) {
        const auto start = std::chrono::steady_clock::now();
        const double cpuStart = CpuMs();
        {
            QPainter painter(&image);
            tallyon::QPainterCanvas canvas(painter);
            draw(canvas, run);
        }
        cpu.push_back(CpuMs() - cpuStart);
        wall.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(wall.begin(), wall.end());
    std::sort(cpu.begin(), cpu.end());
    std::printf("%s, %zu runs: median %.3f ms wall (min %.3f), median %.3f ms CPU (target <= %s)\n", what, wall.size(),
                wall[wall.size() / 2], wall.front(), cpu[cpu.size() / 2], target);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    using namespace tallyon;

    constexpr int kWidth = 8400; // twips: 560 pixels at 96 dpi
    Board board;
    board.GridSize = 10;
    BuildPuzzle(board, kSideLeft, kWidth);
    for (std::size_t i = 0; i + 2 < board.List2.size() / 2; i += 2) { // half the path linked
        const int a = std::stoi(board.List2[i]), b = std::stoi(board.List2[i + 2]);
        board.UserRight(board.CellRow[a], board.CellCol[a]) = board.CellCol[b] > board.CellCol[a];
        board.UserDown(board.CellRow[a], board.CellCol[a]) = board.CellRow[b] > board.CellRow[a];
    }
    DrawStyle style;
    style.GridColour = style.ShapeColour = RGB(0, 0, 0);
    style.FontColour = style.Background = RGB(255, 255, 255);
    style.UserLineColour = RGB(128, 0, 0);

    QImage image(kWidth / kTwipsPerPixel, kWidth / kTwipsPerPixel, QImage::Format_RGB32);
    // The first path link, linked and unlinked in turn: what one move redraws.
    const int first = std::stoi(board.List2[0]), linkCell = std::stoi(board.List2[1]),
              second = std::stoi(board.List2[2]);
    const Move move{1,
                    board.CellRow[linkCell],
                    board.CellCol[linkCell],
                    board.CellRow[first],
                    board.CellCol[first],
                    board.CellRow[second],
                    board.CellCol[second]};
    Report("DrawBoard(0), GridSize 10, 560x560 px", "1 ms", image,
           [&](Canvas& canvas, int) { DrawBoard(canvas, board, style, kPuzzleMode); });
    Report("DrawMove, one link made or removed", "0.1 ms", image,
           [&](Canvas& canvas, int run) { DrawMove(canvas, board, style, run % 2 ? Reversed(move) : move); });

    Report("A hint's second press: FindHint and its drawing", "10 ms", image, [&](Canvas& canvas, int) {
        DrawHint(canvas, board, style, HintPictureOf(FindHint(board), HintStage::Second));
    });

    QTemporaryDir state;
    qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
    PlayState play;
    for (int i = 0; i < 100; ++i)
        play.undolist.push_back(MoveRecord(i % 2 ? Reversed(move) : move));
    Report("A move and the save of the game after it", "1 ms", image, [&](Canvas& canvas, int run) {
        const Move made = run % 2 ? Reversed(move) : move;
        ApplyMove(board, made, LinkEntries::Both);
        DrawMove(canvas, board, style, made);
        play.undolist.insert(play.undolist.begin(), MoveRecord(made));
        QString why;
        if (!WriteSavedGame(FormatSavedGame(board, play, {10, 1}, true, 0), &why))
            std::printf("the save failed: %s\n", qPrintable(why));
    });
    return 0;
}
