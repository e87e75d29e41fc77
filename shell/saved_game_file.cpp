// The saved game's file under the user's state folder.
#include "shell/saved_game_file.h"

#include "shell/text_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tallyon {
namespace {

// Far more than any game: a 10x10 game of a hundred thousand moves takes about 2 MB.
constexpr qint64 kMaxSavedGameBytes = 64LL << 20;

QString StateHome()
{
    const QString set = qEnvironmentVariable("XDG_STATE_HOME");
    if (!set.isEmpty() && QDir::isAbsolutePath(set))
        return set;
    return QDir::homePath() + QStringLiteral("/.local/state");
}

std::string Why(FileProblem problem)
{
    switch (problem) {
    case FileProblem::Missing:
        return "there is no saved game yet: one is kept from the first new puzzle on";
    case FileProblem::NotAFile:
        return "it is not a file";
    case FileProblem::TooBig:
        return "it is larger than any saved game";
    default:
        return "it cannot be read";
    }
}

} // namespace

QString SavedGamePath() { return StateHome() + QStringLiteral("/tallyon/game"); }

bool WriteSavedGame(const std::vector<std::string>& lines, QString* why)
{
    const QString path = SavedGamePath();
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        *why = QStringLiteral("its folder cannot be made");
        return false;
    }
    QStringList text;
    text.reserve(static_cast<qsizetype>(lines.size()));
    for (const std::string& line : lines)
        text.append(QString::fromStdString(line));
    if (!WriteTextLines(path, text)) {
        *why = QStringLiteral("it cannot be written (a full disk, or a folder that may not be written to)");
        return false;
    }
    return true;
}

SavedGameRead ReadSavedGame(int pictureWidth)
{
    FileProblem problem = FileProblem::None;
    const auto text = ReadTextLines(SavedGamePath(), kMaxSavedGameBytes, &problem);
    if (!text)
        return {std::nullopt, Why(problem)};
    std::vector<std::string> lines;
    lines.reserve(static_cast<std::size_t>(text->size()));
    for (const QString& line : *text)
        lines.push_back(line.toStdString());
    return ParseSavedGame(lines, pictureWidth);
}

bool KeepSavedGameAside()
{
    const QString path = SavedGamePath();
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return false;
    const QString aside = path + QStringLiteral(".bad");
    QFile::remove(aside);
    return QFile::rename(path, aside);
}

} // namespace tallyon
