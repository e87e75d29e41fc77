// Tallyon's entry point: the application object, the main window and the event loop.
#include "core/board/random.h"
#include "core/reasoning/grader.h"
#include "shell/app_dir.h"
#include "shell/main_window/form1.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QIcon>
#include <QStyleFactory>

#include <cstdio>
#include <optional>

namespace {

// Lets the windows repaint while a puzzle is made, at most every 15 ms; clicks wait until the
// puzzle is done, so a second request cannot start inside the first.
void ProcessPendingEvents()
{
    static QElapsedTimer since;
    if (since.isValid() && since.elapsed() < 15)
        return;
    since.start();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

// What the command line asks for: an exit code when the program should end at once, else the
// puzzle code to start with (empty for none) or the saved game, and the next puzzle's grade.
struct CommandLine {
    std::optional<int> exitCode;
    QString puzzleCode;
    bool resume = false;
    std::optional<tallyon::Grade> grade = std::nullopt;
};

// Reads the command line before any window system is touched, so that --help and --version
// work without a display.
CommandLine HandleCommandLine(int argc, char* argv[])
{
    QCoreApplication probe(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tallyon"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TALLYON_VERSION));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Tallyon, a number-path puzzle: link the nodes from Start to End through the Hint,\n"
                       "each link's digits making a sum, difference, product or quotient.\n\n"
                       "Settings are kept in tallyon.cfg beside the program when that folder can be written\n"
                       "to, otherwise in $XDG_CONFIG_HOME/tallyon/ (~/.config/tallyon/). See tallyon(6)."));
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions); // -platform x
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption puzzle(QStringLiteral("puzzle"),
                                    QStringLiteral("Starts with the puzzle that CODE names (tallyon-gen --code, or the "
                                                   "text File > Copy to Clipboard puts beside the picture)."),
                                    QStringLiteral("CODE"));
    parser.addOption(puzzle);
    const QCommandLineOption resume(
        QStringLiteral("resume"), QStringLiteral("Starts with the game left last, as Ctrl+R puts it back: the puzzle, "
                                                 "its links and its undo and redo history. The game is kept in "
                                                 "$XDG_STATE_HOME/tallyon/game (~/.local/state/tallyon/game)."));
    parser.addOption(resume);
    const QCommandLineOption grade(
        QStringLiteral("grade"),
        QStringLiteral("Makes new puzzles of GRADE, easy, medium or hard, as the key G chooses in the game "
                       "(by default any grade, as they come). Easy needs dead ends and forced links only, "
                       "Medium also pockets, Hard also regions."),
        QStringLiteral("GRADE"));
    parser.addOption(grade);
    // The window system's own options, which QApplication takes later, are let through.
    for (const char* name :
         {"platform", "display", "style", "stylesheet", "geometry", "qwindowgeometry", "qwindowtitle", "qwindowicon",
          "session", "name", "title", "plugin", "platformpluginpath", "platformtheme"}) {
        QCommandLineOption option(QString::fromLatin1(name), QString(), QStringLiteral("value"));
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
    for (const char* name : {"reverse", "nograb", "dograb", "sync"}) {
        QCommandLineOption option(QString::fromLatin1(name));
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
    if (!parser.parse(QCoreApplication::arguments())) {
        std::fprintf(stderr, "tallyon: %s\nTry 'tallyon --help'.\n", qPrintable(parser.errorText()));
        return {2, {}};
    }
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "tallyon: unexpected argument '%s'\nTry 'tallyon --help'.\n",
                     qPrintable(parser.positionalArguments().first()));
        return {2, {}};
    }
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return {0, {}};
    }
    if (parser.isSet(QStringLiteral("version"))) {
        std::printf("tallyon %s\n", TALLYON_VERSION);
        return {0, {}};
    }
    if (parser.isSet(puzzle) && parser.isSet(resume)) {
        std::fputs("tallyon: --puzzle and --resume each name the game to start with: give one\nTry 'tallyon --help'.\n",
                   stderr);
        return {2, {}};
    }
    std::optional<tallyon::Grade> chosen;
    if (parser.isSet(grade)) {
        chosen = tallyon::GradeNamed(parser.value(grade).toStdString());
        if (!chosen) {
            std::fprintf(stderr, "tallyon: unknown grade '%s': use easy, medium or hard\nTry 'tallyon --help'.\n",
                         qPrintable(parser.value(grade)));
            return {2, {}};
        }
    }
    return {std::nullopt, parser.value(puzzle), parser.isSet(resume), chosen};
}

} // namespace

int main(int argc, char* argv[])
{
    const CommandLine command = HandleCommandLine(argc, argv);
    if (command.exitCode)
        return *command.exitCode;
    QApplication app(argc, argv);
    QApplication::setApplicationName("Tallyon");
    QApplication::setDesktopFileName(QStringLiteral(TALLYON_APP_ID));
    QApplication::setWindowIcon(QIcon(":/icons/tallyon.png"));
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    tallyon::SetPendingEventsHandler(ProcessPendingEvents);

    tallyon::AppState state;
    state.AppDir = tallyon::ApplicationDir();
    state.SettingsDir = tallyon::SettingsDir(state.AppDir);
    tallyon::Form1 window(state);
    window.Start();
    window.show();
    if (!command.puzzleCode.isEmpty())
        window.LoadPuzzleCode(command.puzzleCode);
    if (command.resume)
        window.ResumeGame();
    // Given on the command line, the grade wins over the one a resumed game kept.
    if (command.grade)
        window.SetNextGrade(command.grade);
    return QApplication::exec();
}
