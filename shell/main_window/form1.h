// Form1, the main window: the board, the play controls, the menu, start-up and exit.
//
// Contract: Form1 owns the Board and the PlayState and implements PlayHost for the play
// routines. Start() runs the start-up sequence (reading tallyon.cfg, loading the scheme, the
// empty board); it ends the program through FailMissingSchemes when all.col is missing. Only
// File > Exit saves the settings; closing the window any other way ends the program unsaved.
#pragma once

#include "core/board/board.h"
#include "play/play_host.h"
#include "shell/settings.h"

#include <QMainWindow>
#include <QTimer>

class QAction;
class QFrame;
class QLabel;
class QMenu;
class QPushButton;

namespace tallyon {

class AboutForm;
class BoardKeys;
class BoxControl;
class ClickLabel;
class Form4;
class Form6;
class PictureBox;

class Form1 : public QMainWindow, public PlayHost {
    Q_OBJECT
public:
    explicit Form1(AppState& state, QWidget* parent = nullptr);
    ~Form1() override;

    // The start-up sequence; no puzzle is made.
    void Start();
    // Re-applies the colour scheme to this window's controls.
    void ApplyScheme();
    // The File > Exit command: asks "Exit?", and on Yes saves and closes every window.
    void ExitCommand();
    // Builds and shows the puzzle a puzzle code names, as New Puzzle would; a code that cannot
    // be used is explained in a message box and leaves the board as it was. Blanks and line
    // ends around the code are ignored.
    bool LoadPuzzleCode(const QString& code);
    // Puts back the game kept by GameChanged: the puzzle, the player's links and marks, the undo
    // and redo history, the hints counted, the next puzzle's labels and grade, and the check's
    // indicator and timer. A saved game that
    // cannot be used is explained in a message box and moved aside as "game.bad"; the board
    // stays as it was. Returns whether the game was put back.
    bool ResumeGame();
    // The puzzle code on the clipboard (Ctrl+V), as LoadPuzzleCode; the current puzzle's code
    // onto the clipboard as text (Ctrl+C).
    void PasteCode();
    void CopyCode();

    Board& board() { return board_; }
    PlayState& playState() { return play_; }
    Form6* OptionsForm() const { return form6_; }

    // PlayHost.
    void SetStatus(const std::string& text) override;
    std::string Status() const override;
    void SetHoverCaptions(const std::string& row, const std::string& column) override;
    void SetIndicator(Colour colour) override;
    void SetCheckTimer(bool enabled) override;
    void ShowErrorMarker(int left, int top, int size) override;
    void HideErrorMarker() override;
    void SetBusy(bool busy) override;
    void SetBoardEnabled(bool enabled) override;
    NextPuzzle Next() const override;
    void SetNextGridSize(int size) override;
    void SetNextPathDirection(int direction) override;
    void SetNextGrade(std::optional<Grade> grade) override;
    int Ask(const std::string& message, const std::string& style) override;
    int PictureWidth() const override;
    std::unique_ptr<Canvas> OpenBoardCanvas() override;
    std::unique_ptr<Canvas> OpenOverlayCanvas() override;
    void ClearOverlay() override;
    DrawStyle Style() const override;
    void ApplyLayoutAndColours() override;
    // Writes the game to the saved-game file. A failure leaves the status line alone and is
    // told on standard error and in a message box, once a run.
    void GameChanged() override;
    // Why the last write of the game failed; empty while the game is kept. Status lines of the
    // window's own (never the captions that play sets) may add it for the player.
    const std::string& SaveProblem() const { return saveProblem_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    // A puzzle code dropped on the window as text is played as LoadPuzzleCode plays it.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildControls();
    void BuildMenu();
    void ConnectControls();
    void LayoutControls();
    BoxControl* MakeButton(const char* name, const QString& caption, const QString& tip);
    QLabel* MakeLabel(const char* name, const QString& caption);
    void ShowOptions();
    void PrintCommand();
    void CopyCommand(int mode);
    void ShowHelp();
    void ShowAbout();
    void CloseOtherWindows();

    AppState& state_;
    Board board_;
    PlayState play_;
    bool exiting_ = false;
    // TALLYON_STATUS_FILE: a file that every status line is appended to, for scripted runs.
    QString statusLog_;
    Colour indicator_ = 0;          // Label8's colour, as the saved game keeps it
    bool saveFailureShown_ = false; // a failed save is reported once a run
    std::string saveProblem_;       // why the last write of the game failed, or empty
    // The next puzzle's grade (the key G, --grade): a choice of the game in play, kept in the
    // saved game and never in tallyon.cfg.
    std::optional<Grade> nextGrade_;

    PictureBox* Picture1 = nullptr;
    PictureBox* Picture4 = nullptr;
    QFrame* errorMarker = nullptr;
    BoxControl* cmdnew = nullptr;
    BoxControl* cmdverify = nullptr;
    BoxControl* cmdshowsol = nullptr;
    BoxControl* undoman = nullptr;
    BoxControl* cmdhelp = nullptr;
    QLabel* Label1 = nullptr;
    QLabel* Label2 = nullptr;
    QLabel* Label3 = nullptr;
    ClickLabel* Label4 = nullptr;
    QLabel* Label5 = nullptr;
    ClickLabel* Label6 = nullptr;
    QLabel* Label7 = nullptr;
    QLabel* Label8 = nullptr;
    QPushButton* Command2 = nullptr;
    QTimer Timer1;
    QTimer Timer2;

    QMenu* mnuzerosum = nullptr;
    QAction* mnuopts = nullptr;
    QAction* mnuprint = nullptr;
    QMenu* mnucopy = nullptr;
    QAction* mnuclippuz = nullptr;
    QAction* mnuclipsol = nullptr;
    QAction* can1 = nullptr;
    QAction* mnuhelp = nullptr;
    QAction* mnuabout = nullptr;
    QAction* cmdexit = nullptr;

    Form4* form4_ = nullptr;
    Form6* form6_ = nullptr;
};

} // namespace tallyon
