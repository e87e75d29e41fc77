// Writing a game in play as text, and reading it back strictly.
#include "play/saved_game.h"

#include "core/codes/puzzle_code.h"
#include "play/move.h"
#include "play/verify.h"

#include <charconv>
#include <limits>
#include <utility>

namespace tallyon {
namespace {

constexpr Colour kMaxColour = 0xFFFFFF;
constexpr int kHighestDirection = 4;
constexpr long long kMostHints = std::numeric_limits<int>::max();

// The next puzzle's grade as the file writes it: none is "any".
struct GradeWord {
    const char* word;
    std::optional<Grade> grade;
};
constexpr GradeWord kGradeWords[] = {
    {"any", std::nullopt}, {"easy", Grade::Easy}, {"medium", Grade::Medium}, {"hard", Grade::Hard}};

const char* WordOf(std::optional<Grade> grade)
{
    for (const GradeWord& g : kGradeWords)
        if (g.grade == grade)
            return g.word;
    return kGradeWords[0].word;
}

// The four user flags of a node, in the order their letters stand.
struct Flag {
    char letter;
    CellArray<int> Board::*flags;
    int dRow, dCol;
    CellArray<int> Board::*back; // the same link's flag at the other end
};
constexpr Flag kFlags[] = {
    {'U', &Board::UserUp, -2, 0, &Board::UserDown},
    {'D', &Board::UserDown, 2, 0, &Board::UserUp},
    {'R', &Board::UserRight, 0, 2, &Board::UserLeft},
    {'L', &Board::UserLeft, 0, -2, &Board::UserRight},
};

std::string Text(long long n) { return std::to_string(n); }

std::vector<std::string> Words(const std::string& line)
{
    std::vector<std::string> words;
    std::size_t from = 0;
    for (std::size_t at; (at = line.find(' ', from)) != std::string::npos; from = at + 1)
        words.push_back(line.substr(from, at - from));
    words.push_back(line.substr(from));
    return words;
}

// Why a text is refused.
struct Refused {
    std::string why;
};

constexpr const char* kCutShort = "the file ends before the game does: it was cut short";

class Reader {
public:
    explicit Reader(const std::vector<std::string>& lines) : lines_(lines) {}

    // The next line's words, which must start with `keyword` and hold `values` more.
    std::vector<std::string> Expect(const char* keyword, std::size_t values)
    {
        std::vector<std::string> words = Words(Line());
        if (words.size() != values + 1 || words[0] != keyword)
            Damaged(std::string("\"") + keyword + "\" and " + Text(static_cast<long long>(values)) + " value" +
                    (values == 1 ? "" : "s") + " were expected");
        return words;
    }
    // The next line as it stands.
    const std::string& Line()
    {
        if (at_ >= lines_.size())
            throw Refused{kCutShort};
        return lines_[at_++];
    }
    // The number of lines a count may still cover.
    std::size_t Left() const { return lines_.size() - at_; }
    bool AtEnd() const { return at_ >= lines_.size(); }

    [[noreturn]] void Damaged(const std::string& what) const
    {
        throw Refused{"line " + Text(static_cast<long long>(at_)) + " is damaged: " + what};
    }

    // A whole decimal number from lo to hi, written as the game writes it: no sign but a minus,
    // no leading zero, so that every file read writes back the same.
    long long Number(const std::string& word, long long lo, long long hi) const
    {
        long long n = 0;
        const auto [end, ec] = std::from_chars(word.data(), word.data() + word.size(), n);
        if (ec != std::errc() || end != word.data() + word.size() || Text(n) != word || n < lo || n > hi)
            Damaged("\"" + word + "\" is not a number from " + Text(lo) + " to " + Text(hi));
        return n;
    }

    // A count of the lines that follow, which must be there.
    std::size_t Count(const std::string& word) const
    {
        const auto n = static_cast<std::size_t>(Number(word, 0, std::numeric_limits<int>::max()));
        if (n > Left())
            throw Refused{kCutShort};
        return n;
    }

private:
    const std::vector<std::string>& lines_;
    std::size_t at_ = 0;
};

void ReadLinks(Reader& in, Board& b)
{
    const std::size_t n = in.Count(in.Expect("links", 1)[1]);
    long long last = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const std::vector<std::string> words = Words(in.Line());
        if (words.size() != 3)
            in.Damaged("a node's row, column and link letters were expected");
        const int row = static_cast<int>(in.Number(words[0], 1, b.BoardSpan));
        const int col = static_cast<int>(in.Number(words[1], 1, b.BoardSpan));
        const long long order = static_cast<long long>(row) * 100 + col;
        if (!IsNode(row, col) || order <= last)
            in.Damaged("nodes are listed once each, row by row");
        last = order;
        std::string want;
        for (const Flag& f : kFlags)
            if (words[2].find(f.letter) != std::string::npos) {
                if (!OnBoard(b, row + f.dRow, col + f.dCol))
                    in.Damaged(std::string("a link ") + f.letter + " leads off the board");
                (b.*f.flags)(row, col) = 1;
                want += f.letter;
            }
        if (words[2].empty() || words[2] != want)
            in.Damaged("the letters are some of U, D, R and L, in that order");
    }
    // Every link shows at both of its ends.
    for (int row = 1; row <= b.BoardSpan; row += 2)
        for (int col = 1; col <= b.BoardSpan; col += 2)
            for (const Flag& f : kFlags)
                if ((b.*f.flags)(row, col) == 1 && (b.*f.back)(row + f.dRow, col + f.dCol) != 1)
                    throw Refused{"the player's links do not join up: one shows at only one of its ends"};
}

void ReadPairs(Reader& in, Board& b)
{
    const std::size_t n = in.Count(in.Expect("pairs", 1)[1]);
    const long long cells = static_cast<long long>(b.BoardSpan) * b.BoardSpan;
    long long last = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const std::vector<std::string> words = Words(in.Line());
        if (words.size() != 3)
            in.Damaged("two cell numbers and a link value were expected");
        const int a = static_cast<int>(in.Number(words[0], 1, cells));
        const int c = static_cast<int>(in.Number(words[1], 1, cells));
        if (static_cast<long long>(a) * (NodePairArray::Hi + 1) + c <= last)
            in.Damaged("pairs are listed once each, in order");
        last = static_cast<long long>(a) * (NodePairArray::Hi + 1) + c;
        b.NodeLinks.Set(a, c, static_cast<int>(in.Number(words[2], 1, 1)));
    }
}

void ReadMarks(Reader& in, Board& b)
{
    const std::size_t n = in.Count(in.Expect("marks", 1)[1]);
    long long last = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const std::vector<std::string> words = Words(in.Line());
        if (words.size() != 2)
            in.Damaged("a link cell's row and column were expected");
        const int row = static_cast<int>(in.Number(words[0], 1, b.BoardSpan));
        const int col = static_cast<int>(in.Number(words[1], 1, b.BoardSpan));
        const long long order = static_cast<long long>(row) * 100 + col;
        if (!IsLinkCell(row, col) || order <= last)
            in.Damaged("marks are on link cells, listed once each, row by row");
        last = order;
        b.UserMark(row, col) = 1;
    }
}

std::optional<Grade> ReadGrade(const Reader& in, const std::string& word)
{
    for (const GradeWord& g : kGradeWords)
        if (word == g.word)
            return g.grade;
    in.Damaged("\"" + word + "\" is not one of any, easy, medium and hard");
}

std::vector<std::string> ReadRecords(Reader& in, const char* keyword)
{
    const std::size_t n = in.Count(in.Expect(keyword, 1)[1]);
    std::vector<std::string> records;
    records.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        const std::string& record = in.Line();
        // A record is read back only as the game writes it: seven whole numbers joined by commas.
        if (MoveRecord(ParseMoveRecord(record)) != record)
            in.Damaged("a record of seven whole numbers joined by commas was expected");
        records.push_back(record);
    }
    return records;
}

SavedGame Read(const std::vector<std::string>& lines, int pictureWidth)
{
    Reader in(lines);
    if (lines.empty())
        throw Refused{"the file is empty"};
    const std::string& first = in.Line();
    const bool format1 = first == kSavedGameFormat1;
    if (first != kSavedGameFormat && !format1) {
        if (first.rfind(kSavedGameHeading, 0) == 0)
            throw Refused{"it was saved in " + first.substr(first.find("format")) +
                          ", which this version of Tallyon does not read"};
        throw Refused{"it is not a saved game of Tallyon"};
    }
    SavedGame game;
    game.board = std::make_unique<Board>();
    const std::string code = in.Expect("code", 1)[1];
    const DecodeResult decoded = DecodePuzzleCode(code, *game.board, pictureWidth);
    if (!decoded.ok)
        throw Refused{"its puzzle code is refused: " + decoded.problem};
    // The code reader forgives blanks around a code, as a pasted one may have; a file holds
    // the code as the game writes it.
    if (EncodePuzzleCode(*game.board) != code)
        in.Damaged("the puzzle code has blanks around it");
    const std::vector<std::string> next = in.Expect("next", format1 ? 2 : 3);
    game.next.GridSize = static_cast<int>(in.Number(next[1], 4, 10));
    game.next.PathDirection = static_cast<int>(in.Number(next[2], 0, kHighestDirection));
    if (!format1)
        game.next.grade = ReadGrade(in, next[3]);
    const std::vector<std::string> check = in.Expect("check", 2);
    if (check[1] != "on" && check[1] != "off")
        in.Damaged("\"on\" or \"off\" was expected");
    game.checkRunning = check[1] == "on";
    game.indicator = static_cast<Colour>(in.Number(check[2], 0, kMaxColour));
    if (!format1)
        game.hints = static_cast<int>(in.Number(in.Expect("hints", 1)[1], 0, kMostHints));
    ReadLinks(in, *game.board);
    ReadPairs(in, *game.board);
    if (!format1)
        ReadMarks(in, *game.board);
    game.undolist = ReadRecords(in, "undo");
    game.redolist = ReadRecords(in, "redo");
    in.Expect("end", 0);
    if (!in.AtEnd())
        in.Damaged("nothing may follow \"end\"");
    return game;
}

void WriteRecords(std::vector<std::string>& out, const char* keyword, const std::vector<std::string>& records)
{
    out.push_back(std::string(keyword) + " " + Text(static_cast<long long>(records.size())));
    out.insert(out.end(), records.begin(), records.end());
}

} // namespace

std::vector<std::string> FormatSavedGame(const Board& board, const PlayState& play, const NextPuzzle& next,
                                         bool checkRunning, Colour indicator)
{
    std::vector<std::string> out{
        kSavedGameFormat, "code " + EncodePuzzleCode(board),
        "next " + Text(next.GridSize) + " " + Text(next.PathDirection) + " " + WordOf(next.grade),
        std::string("check ") + (checkRunning ? "on " : "off ") + Text(indicator), "hints " + Text(play.HintCount)};
    std::vector<std::string> links;
    for (int row = 1; row <= board.BoardSpan; row += 2)
        for (int col = 1; col <= board.BoardSpan; col += 2)
            if (const std::string letters = LinkLetters(board, row, col); !letters.empty())
                links.push_back(Text(row) + " " + Text(col) + " " + letters);
    WriteRecords(out, "links", links);
    std::vector<std::string> pairs;
    board.NodeLinks.ForEachStored(
        [&](int a, int b, int value) { pairs.push_back(Text(a) + " " + Text(b) + " " + Text(value)); });
    WriteRecords(out, "pairs", pairs);
    std::vector<std::string> marks;
    for (int row = 1; row <= board.BoardSpan; ++row)
        for (int col = 1; col <= board.BoardSpan; ++col)
            if (IsLinkCell(row, col) && board.UserMark(row, col) == 1)
                marks.push_back(Text(row) + " " + Text(col));
    WriteRecords(out, "marks", marks);
    WriteRecords(out, "undo", play.undolist);
    WriteRecords(out, "redo", play.redolist);
    out.emplace_back("end");
    return out;
}

SavedGameRead ParseSavedGame(const std::vector<std::string>& lines, int pictureWidth)
{
    try {
        return {Read(lines, pictureWidth), {}};
    } catch (const Refused& refused) {
        return {std::nullopt, refused.why};
    }
}

} // namespace tallyon
