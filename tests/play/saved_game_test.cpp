// The saved game: a game read back is the game written, and a damaged text is refused with
// its reason; every change of the game asks the host to keep it.
#include "core/board/random.h"
#include "core/codes/puzzle_code.h"
#include "play/hint.h"
#include "play/keyboard.h"
#include "play/saved_game.h"
#include "play/undo.h"
#include "play_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace tallyon::test {
namespace {

// Plays a game that leaves every part of the file something to hold: links made and removed
// at random, an undo of a removal (which leaves one NodeLinks entry of a pair), redo and undo,
// marks toggled from the keyboard, hints shown and a grade chosen.
void PlayAWhile(FakeHost& host, Board& board, PlayState& state)
{
    for (int i = 0; i < 30; ++i) {
        const int row = 2 * RandomInt(board.BoardSpan / 2, 0) + 1 + RandomInt(2, 0);
        const int col = 2 * RandomInt(board.BoardSpan / 2, 0) + 1 + (row % 2 == 0 ? 0 : 1);
        ClickCell(host, board, state, row, col, RandomInt(3, 0) == 0 ? 2 : 1);
    }
    for (int i = 0; i < 3; ++i)
        UndoMove(host, board, state, 1);
    RedoMove(host, board, state);
    ResetCursor(board, state);
    for (int i = 0; i < 12; ++i) {
        const bool across = RandomInt(2, 0) == 0;
        ToggleMark(host, board, state, across ? 0 : 1, across ? 1 : 0);
        MoveCursor(host, board, state, across ? 0 : 1, across ? 1 : 0);
    }
    HintPress(host, board, state);
    HintRelease(host, state);
    host.next = {9, 2, Grade::Medium};
}

// The marked link cells, row by row.
std::string Marks(const Board& b)
{
    std::string out;
    for (int row = 1; row <= b.BoardSpan; ++row)
        for (int col = 1; col <= b.BoardSpan; ++col)
            if (b.UserMark(row, col) == 1)
                out += std::to_string(row) + "," + std::to_string(col) + " ";
    return out;
}

// Every field the file keeps, as text, to compare two games.
std::string Everything(const Board& b, const std::vector<std::string>& undo, const std::vector<std::string>& redo)
{
    std::string out = EncodePuzzleCode(b) + "|" + UserLinkMap(b) + "|" + Marks(b) + "|";
    b.NodeLinks.ForEachStored([&](int x, int y, int v) {
        out += std::to_string(x) + "," + std::to_string(y) + "=" + std::to_string(v) + " ";
    });
    for (const auto* list : {&undo, &redo})
        for (const std::string& record : *list)
            out += record + ";";
    return out;
}

TEST(SavedGame, ReadsBackEveryPartOfTheGameAtEverySizeAndSide)
{
    TickingClock clock;
    for (int size : {4, 7, 10})
        for (int side : {kSideLeft, kSideTop}) {
            SCOPED_TRACE("size " + std::to_string(size) + " side " + std::to_string(side));
            FakeHost host;
            Board board;
            PlayState state;
            board.GridSize = size;
            BuildPuzzle(board, side, kPictureWidth);
            PlayAWhile(host, board, state);
            ASSERT_FALSE(state.undolist.empty() || state.redolist.empty() || board.NodeLinks.Stored() == 0);
            ASSERT_FALSE(Marks(board).empty() || state.HintCount == 0);
            const auto lines = FormatSavedGame(board, state, host.next, true, RGB(10, 200, 10));
            EXPECT_EQ(lines.front(), "Tallyon saved game, format 2");
            const SavedGameRead read = ParseSavedGame(lines, kPictureWidth);
            ASSERT_TRUE(read.game.has_value()) << read.problem;
            const SavedGame& game = *read.game;
            EXPECT_EQ(Everything(*game.board, game.undolist, game.redolist),
                      Everything(board, state.undolist, state.redolist));
            EXPECT_EQ(game.board->List2, board.List2);
            EXPECT_EQ(game.board->StartSide, board.StartSide);
            EXPECT_TRUE(game.next.GridSize == 9 && game.next.PathDirection == 2 && game.next.grade == Grade::Medium);
            EXPECT_TRUE(game.checkRunning && game.indicator == RGB(10, 200, 10));
            EXPECT_EQ(game.hints, state.HintCount);
            PlayState back;
            back.undolist = game.undolist;
            back.redolist = game.redolist;
            back.HintCount = game.hints;
            EXPECT_EQ(FormatSavedGame(*game.board, back, game.next, game.checkRunning, game.indicator), lines);
        }
}

// One line of a good game changed, and the reason the text is then refused.
TEST(SavedGame, RefusesDamagedTextsSayingWhy)
{
    TickingClock clock;
    FakeHost host;
    Board board;
    PlayState state;
    board.GridSize = 5;
    BuildPuzzle(board, kSideLeft, kPictureWidth);
    PlayAWhile(host, board, state);
    const std::vector<std::string> good = FormatSavedGame(board, state, host.next, false, 0);
    const auto at = [&](const std::string& keyword) {
        for (std::size_t i = 0; i < good.size(); ++i)
            if (good[i].rfind(keyword, 0) == 0)
                return i;
        return good.size();
    };
    ASSERT_GE(std::stoi(good[at("marks")].substr(6)), 2);
    using Change = std::function<void(std::vector<std::string>&)>;
    const auto set = [&](const std::string& keyword, std::string text) -> Change {
        return [=](std::vector<std::string>& l) { l[at(keyword)] = text; };
    };
    const std::string code = good[1].substr(5);
    const struct {
        const char* name;
        Change change;
        const char* why;
    } cases[] = {
        {"empty", [](auto& l) { l.clear(); }, "the file is empty"},
        {"binary", [](auto& l) { l = {std::string("\x7f\x45LF\x02\x01\x01", 7)}; }, "not a saved game"},
        {"another version", set("Tallyon saved game", "Tallyon saved game, format 3"), "saved in format 3"},
        {"truncated", [](auto& l) { l.resize(l.size() / 2); }, "cut short"},
        {"no end", [](auto& l) { l.pop_back(); }, "cut short"},
        {"after the end", [](auto& l) { l.push_back("end"); }, "nothing may follow"},
        {"refused code", set("code", "code " + code.substr(0, code.size() - 2) + "AA"), "puzzle code is refused"},
        {"no code", set("code", "code"), "damaged"},
        {"code and a tab", set("code", "code " + code + "\t"), "blanks around it"},
        {"next size 11", set("next", "next 11 0 any"), "from 4 to 10"},
        {"next direction 5", set("next", "next 7 5 any"), "from 0 to 4"},
        {"leading zero", set("next", "next 07 1 any"), "\"07\" is not a number"},
        {"no grade", set("next", "next 7 1"), "3 values"},
        {"grade in capitals", set("next", "next 7 1 Hard"), "one of any, easy, medium and hard"},
        {"hints below 0", set("hints", "hints -1"), "from 0 to"},
        {"no hints line", [&](auto& l) { l.erase(l.begin() + static_cast<long>(at("hints"))); }, "\"hints\""},
        {"mark on a node", [&](auto& l) { l[at("marks") + 1] = "1 1"; }, "on link cells"},
        {"mark off the board", [&](auto& l) { l[at("marks") + 1] = "1 12"; }, "from 1 to 11"},
        {"marks out of order", [&](auto& l) { std::swap(l[at("marks") + 1], l[at("marks") + 2]); }, "row by row"},
        {"mark with a third value", [&](auto& l) { l[at("marks") + 1] += " 1"; }, "row and column"},
        {"check", set("check", "check maybe 0"), "\"on\" or \"off\""},
        {"colour", set("check", "check on 16777216"), "from 0 to 16777215"},
        {"count past the end", set("undo", "undo 99999"), "cut short"},
        {"link letters out of order", [&](auto& l) { l[at("links") + 1] = "1 1 RD"; }, "in that order"},
        {"link to one end only",
         [&](auto& l) {
             l.erase(l.begin() + static_cast<long>(at("links")), l.begin() + static_cast<long>(at("pairs"))),
                 l.insert(l.begin() + static_cast<long>(at("links")), {"links 1", "1 1 R"});
         },
         "only one of its ends"},
        {"pair off the board", [&](auto& l) { l[at("pairs") + 1] = "500 1 1"; }, "from 1 to 121"},
        {"pair value", [&](auto& l) { l[at("pairs") + 1] += "0"; }, "from 1 to 1"},
        {"record", [&](auto& l) { l[at("undo") + 1] = "1,2,3"; }, "seven whole numbers"},
        {"record with a blank", [&](auto& l) { l[at("undo") + 1] = " " + l[at("undo") + 1]; }, "seven whole numbers"},
        {"CR kept", [&](auto& l) { l[at("check")] += "\r"; }, "damaged"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> lines = good;
        c.change(lines);
        const SavedGameRead read = ParseSavedGame(lines, kPictureWidth);
        EXPECT_FALSE(read.game.has_value()) << c.name;
        EXPECT_NE(read.problem.find(c.why), std::string::npos) << c.name << ": " << read.problem;
    }
}

// A game kept before grades, hints and marks existed reads as one of any grade, with no hints
// and no marks, and is written back in the current format.
TEST(SavedGame, ReadsTheFormatBeforeHintsAndMarks)
{
    TickingClock clock;
    FakeHost host;
    Board board;
    PlayState state;
    board.GridSize = 6;
    BuildPuzzle(board, kSideTop, kPictureWidth);
    PlayAWhile(host, board, state);
    std::vector<std::string> lines = FormatSavedGame(board, state, host.next, false, 0);
    std::vector<std::string> old;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].rfind("marks ", 0) == 0) {
            i += static_cast<std::size_t>(std::stoi(lines[i].substr(6)));
            continue;
        }
        if (lines[i].rfind("hints ", 0) != 0)
            old.push_back(lines[i]);
    }
    old[0] = "Tallyon saved game, format 1";
    old[2] = "next 9 2";
    const SavedGameRead read = ParseSavedGame(old, kPictureWidth);
    ASSERT_TRUE(read.game.has_value()) << read.problem;
    const SavedGame& game = *read.game;
    EXPECT_FALSE(game.next.grade.has_value());
    EXPECT_EQ(game.hints, 0);
    EXPECT_EQ(Marks(*game.board), "");
    EXPECT_EQ(UserLinkMap(*game.board), UserLinkMap(board));
    PlayState back;
    back.undolist = game.undolist;
    back.redolist = game.redolist;
    const std::vector<std::string> again = FormatSavedGame(*game.board, back, game.next, false, 0);
    EXPECT_EQ(again[0], "Tallyon saved game, format 2");
    EXPECT_EQ(again[2], "next 9 2 any");
    EXPECT_EQ(std::count(again.begin(), again.end(), "marks 0"), 1);
}

// Each change of the game asks the host to keep it, once; what changes nothing asks nothing.
TEST(SavedGame, EveryChangeOfTheGameIsKept)
{
    FakeHost host;
    Board board;
    PlayState state;
    MakeRowPuzzle(board, 4);
    const auto saves = [&] { return host.Requests("saved").size(); };
    const struct {
        const char* name;
        std::function<void()> act;
        std::size_t saved;
    } steps[] = {
        {"link", [&] { ClickCell(host, board, state, 3, 2); }, 1},
        {"lined already", [&] { ClickCell(host, board, state, 3, 2); }, 0},
        {"unlink", [&] { ClickCell(host, board, state, 3, 2, 2); }, 1},
        {"refused unlink", [&] { ClickCell(host, board, state, 3, 2, 2); }, 0},
        {"undo", [&] { UndoMove(host, board, state, 1); }, 1},
        {"redo", [&] { RedoMove(host, board, state); }, 1},
        {"reset answered No", [&] { host.answer = 7, UndoMove(host, board, state, 2); }, 0},
        {"reset", [&] { host.answer = 6, UndoMove(host, board, state, 2); }, 1},
        {"new puzzle", [&] { NewPuzzle(host, board, state, 1); }, 1},
        {"puzzle from a code", [&] { NewPuzzleFromCode(host, board, state, EncodePuzzleCode(board)); }, 1},
        {"damaged code", [&] { NewPuzzleFromCode(host, board, state, "T1-damaged"); }, 0},
        {"mark", [&] { ToggleMark(host, board, state, 0, 1); }, 1},
        {"grade", [&] { StepGrade(host, board); }, 1},
        {"hint counted", [&] { HintPress(host, board, state), HintRelease(host, state); }, 1},
        {"hint's second press", [&] { HintPress(host, board, state), HintRelease(host, state); }, 0},
    };
    for (const auto& step : steps) {
        const std::size_t before = saves();
        step.act();
        EXPECT_EQ(saves() - before, step.saved) << step.name;
    }
}

} // namespace
} // namespace tallyon::test
