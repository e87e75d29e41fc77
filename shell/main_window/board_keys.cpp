// The main window's keys, mapped to play commands and carried out.
#include "shell/main_window/board_keys.h"

#include "play/controls.h"
#include "play/draw.h"
#include "play/hint.h"
#include "play/keyboard.h"
#include "play/undo.h"
#include "play/verify.h"
#include "shell/instructions.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

#include <utility>

namespace tallyon {
namespace {

// The direction of an arrow key, or false for any other key.
bool ArrowDirection(int key, int& dRow, int& dCol)
{
    dRow = key == Qt::Key_Up ? -1 : key == Qt::Key_Down ? 1 : 0;
    dCol = key == Qt::Key_Left ? -1 : key == Qt::Key_Right ? 1 : 0;
    return dRow != 0 || dCol != 0;
}

KeyAction ForRelease(int key, Qt::KeyboardModifiers modifiers)
{
    if (modifiers != Qt::NoModifier && modifiers != Qt::KeypadModifier)
        return {};
    if (key == Qt::Key_V)
        return {KeyCommand::VerifyRelease};
    if (key == Qt::Key_S)
        return {KeyCommand::SolutionRelease};
    if (key == Qt::Key_H)
        return {KeyCommand::HintRelease};
    return {};
}

} // namespace

KeyAction ActionForKey(int key, Qt::KeyboardModifiers modifiers, bool release, bool autoRepeat)
{
    if (release)
        return autoRepeat ? KeyAction{} : ForRelease(key, modifiers);
    modifiers &= ~Qt::KeyboardModifiers(Qt::KeypadModifier); // the keypad's arrows too
    int dRow = 0, dCol = 0;
    if (ArrowDirection(key, dRow, dCol)) {
        if (modifiers == Qt::NoModifier)
            return {KeyCommand::MoveCursor, dRow, dCol};
        if (modifiers == Qt::ShiftModifier)
            return {KeyCommand::Link, dRow, dCol};
        if (modifiers == Qt::ControlModifier)
            return {KeyCommand::Unlink, dRow, dCol};
        if (modifiers == Qt::AltModifier && !autoRepeat)
            return {KeyCommand::Mark, dRow, dCol};
        return {};
    }
    if (modifiers == Qt::ControlModifier) {
        switch (key) {
        case Qt::Key_Z:
            return {KeyCommand::Undo};
        case Qt::Key_Y:
            return {KeyCommand::Redo};
        case Qt::Key_N:
            return {KeyCommand::NewPuzzle};
        case Qt::Key_P:
            return {KeyCommand::Print};
        case Qt::Key_R:
            return {KeyCommand::Resume};
        case Qt::Key_V:
            return {KeyCommand::PasteCode};
        case Qt::Key_C:
            return {KeyCommand::CopyCode};
        default:
            return {};
        }
    }
    if (modifiers == (Qt::ControlModifier | Qt::ShiftModifier) && key == Qt::Key_Z)
        return {KeyCommand::Redo};
    if (modifiers == Qt::AltModifier && key == Qt::Key_F)
        return {KeyCommand::FileMenu};
    if (modifiers != Qt::NoModifier)
        return {};
    if (key == Qt::Key_F1)
        return {KeyCommand::Instructions};
    if (autoRepeat)
        return {};
    if (key == Qt::Key_V)
        return {KeyCommand::VerifyPress};
    if (key == Qt::Key_S)
        return {KeyCommand::SolutionPress};
    if (key == Qt::Key_H)
        return {KeyCommand::HintPress};
    if (key == Qt::Key_G)
        return {KeyCommand::Grade};
    return {};
}

BoardKeys::BoardKeys(QWidget& window, PlayHost& host, Board& board, PlayState& state, WindowCommands commands)
    : QObject(&window), window_(window), host_(host), board_(board), state_(state), commands_(std::move(commands))
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool BoardKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || widget->window() != &window_ || !window_.isEnabled())
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const KeyAction action =
        ActionForKey(key->key(), key->modifiers(), event->type() == QEvent::KeyRelease, key->isAutoRepeat());
    if (action.command == KeyCommand::None)
        return false;
    Run(action);
    return true;
}

void BoardKeys::Run(const KeyAction& a)
{
    switch (a.command) {
    case KeyCommand::MoveCursor:
        MoveCursor(host_, board_, state_, a.dRow, a.dCol);
        return;
    case KeyCommand::Link:
    case KeyCommand::Unlink:
        KeyLink(host_, board_, state_, a.dRow, a.dCol, a.command == KeyCommand::Link ? 1 : 2);
        return;
    case KeyCommand::Mark:
        ToggleMark(host_, board_, state_, a.dRow, a.dCol);
        return;
    case KeyCommand::Undo:
        UndoMove(host_, board_, state_, 1);
        RedrawWhole();
        return;
    case KeyCommand::Redo:
        RedoMove(host_, board_, state_);
        RedrawWhole();
        return;
    case KeyCommand::NewPuzzle:
        NewPuzzle(host_, board_, state_, 1);
        return;
    case KeyCommand::VerifyPress:
        VerifyPress(host_, board_);
        return;
    case KeyCommand::VerifyRelease:
        VerifyRelease(host_, board_);
        return;
    case KeyCommand::SolutionPress:
        ShowSolution(host_, board_);
        return;
    case KeyCommand::SolutionRelease:
        HideSolution(host_, board_);
        break;
    case KeyCommand::HintPress:
        HintPress(host_, board_, state_);
        return;
    case KeyCommand::HintRelease:
        HintRelease(host_, state_);
        return;
    case KeyCommand::Grade:
        StepGrade(host_, board_);
        return;
    case KeyCommand::Instructions:
        ShowInstructions();
        return;
    case KeyCommand::Print:
        commands_.print();
        return;
    case KeyCommand::FileMenu:
        commands_.openFileMenu();
        return;
    case KeyCommand::Resume:
        commands_.resume();
        return;
    case KeyCommand::PasteCode:
        commands_.pasteCode();
        return;
    case KeyCommand::CopyCode:
        commands_.copyCode();
        return;
    case KeyCommand::None:
        return;
    }
    // The end of the solution redraws the board without the cursor's ring.
    ShowCursor(host_, board_, state_);
}

// Undo redraws the Start, Hint and End marks over themselves, which darkens their smoothed
// edges a shade each time; from the keyboard, where undo and redo come in quick runs, the
// whole board is drawn afresh instead, so that Ctrl+Z then Ctrl+Y gives back the same picture.
void BoardKeys::RedrawWhole()
{
    if (board_.List2.empty())
        return;
    DrawBoard(host_, board_, kPuzzleMode);
    ShowCursor(host_, board_, state_);
}

} // namespace tallyon
