// The main window's keys: which play command a key press or release stands for, and the
// filter that carries them out.
//
// Contract: ActionForKey is a pure mapping. Auto-repeated presses of the held keys (V, S, H)
// and every auto-repeated release give None, so holding a key acts once on press and once on
// release; so do those of G and Alt+arrow, which toggle; the other arrows and the shortcuts
// repeat while held. Keys that map to None (Tab, Space,
// Enter and the rest) go on to the focused control as before.
#pragma once

#include "core/board/board.h"
#include "play/play_host.h"

#include <QObject>
#include <Qt>

#include <functional>

class QWidget;

namespace tallyon {

enum class KeyCommand {
    None,
    MoveCursor,  // an arrow
    Link,        // Shift+arrow
    Unlink,      // Ctrl+arrow
    Mark,        // Alt+arrow
    Undo,        // Ctrl+Z
    Redo,        // Ctrl+Y, Ctrl+Shift+Z
    NewPuzzle,   // Ctrl+N
    VerifyPress, // V down
    VerifyRelease,
    SolutionPress, // S down
    SolutionRelease,
    HintPress, // H down
    HintRelease,
    Grade,        // G
    Instructions, // F1
    Print,        // Ctrl+P
    FileMenu,     // Alt+F
    Resume,       // Ctrl+R
    PasteCode,    // Ctrl+V
    CopyCode,     // Ctrl+C
};

struct KeyAction {
    KeyCommand command = KeyCommand::None;
    int dRow = 0; // the arrow's direction, for the cursor commands
    int dCol = 0;
};

KeyAction ActionForKey(int key, Qt::KeyboardModifiers modifiers, bool release, bool autoRepeat);

// Watches every key event of the application and carries out those that reach a control of
// `window` and stand for a command, whichever control has the focus.
class BoardKeys : public QObject {
public:
    // What the window does for the commands that are not play routines.
    struct WindowCommands {
        std::function<void()> print;
        std::function<void()> openFileMenu;
        std::function<void()> resume;
        std::function<void()> pasteCode;
        std::function<void()> copyCode;
    };
    BoardKeys(QWidget& window, PlayHost& host, Board& board, PlayState& state, WindowCommands commands);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Run(const KeyAction& action);
    void RedrawWhole();

    QWidget& window_;
    PlayHost& host_;
    Board& board_;
    PlayState& state_;
    WindowCommands commands_;
};

} // namespace tallyon
