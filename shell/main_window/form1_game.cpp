// Form1's game kept between runs, and puzzle codes in the window: resume, paste, copy, drop.
#include "shell/main_window/form1.h"

#include "core/codes/puzzle_code.h"
#include "play/controls.h"
#include "play/draw.h"
#include "play/hint.h"
#include "play/keyboard.h"
#include "shell/saved_game_file.h"
#include "ui/message_box.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>

#include <cstdio>

namespace tallyon {

bool Form1::LoadPuzzleCode(const QString& code)
{
    return NewPuzzleFromCode(*this, board_, play_, code.trimmed().toStdString());
}

void Form1::GameChanged()
{
    if (board_.List2.empty())
        return;
    QString why;
    if (WriteSavedGame(FormatSavedGame(board_, play_, Next(), Timer2.isActive(), indicator_), &why)) {
        saveProblem_.clear();
        return;
    }
    saveProblem_ = "The game cannot be kept for a later resume: " + why.toStdString();
    if (saveFailureShown_)
        return;
    saveFailureShown_ = true;
    // The status line keeps the caption of what was just done ("Puzzle Created", "Use ... to
    // make ..."): the failure is told on standard error and in the message box, once a run.
    std::fprintf(stderr, "tallyon: %s (%s); play goes on\n", saveProblem_.c_str(), qPrintable(SavedGamePath()));
    ShowMessage(QString::fromStdString(saveProblem_) + QStringLiteral("\r\n") + SavedGamePath() +
                    QStringLiteral("\r\nPlay goes on; this is said once a run."),
                QStringLiteral("vbok+vbinformation"));
}

bool Form1::ResumeGame()
{
    SavedGameRead read = ReadSavedGame(PictureWidth());
    if (!read.game) {
        KeepSavedGameAside();
        ShowMessage(QStringLiteral("The saved game cannot be resumed:\r\n") + SavedGamePath() + QStringLiteral("\r\n") +
                        QString::fromStdString(read.problem),
                    QStringLiteral("vbok+vbinformation"));
        return false;
    }
    SavedGame& game = *read.game;
    SetCheckTimer(false);
    HideErrorMarker();
    ForgetHint(*this, play_);
    board_ = *game.board;
    play_ = PlayState{};
    play_.undolist = std::move(game.undolist);
    play_.redolist = std::move(game.redolist);
    play_.HintCount = game.hints;
    SetNextGridSize(game.next.GridSize);
    SetNextPathDirection(game.next.PathDirection);
    SetNextGrade(game.next.grade);
    ResetCursor(board_, play_);
    DrawBoard(*this, board_, kPuzzleMode);
    SetIndicator(game.indicator);
    SetCheckTimer(game.checkRunning);
    SetStatus("Puzzle resumed");
    return true;
}

void Form1::PasteCode() { LoadPuzzleCode(QGuiApplication::clipboard()->text()); }

void Form1::CopyCode()
{
    if (!board_.List2.empty())
        QGuiApplication::clipboard()->setText(QString::fromStdString(EncodePuzzleCode(board_)));
}

void Form1::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasText())
        event->acceptProposedAction();
}

void Form1::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    LoadPuzzleCode(event->mimeData()->text());
}

} // namespace tallyon
