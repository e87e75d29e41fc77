// Form1's controls, their layout and wiring, and the start-up sequence.
#include "shell/main_window/form1.h"

#include "core/generator/generator.h"
#include "platform/qt_colour.h"
#include "play/controls.h"
#include "play/draw.h"
#include "play/keyboard.h"
#include "play/linking.h"
#include "play/undo.h"
#include "play/verify.h"
#include "shell/config_file.h"
#include "shell/instructions.h"
#include "shell/main_window/board_keys.h"
#include "shell/main_window/picture_box.h"
#include "shell/options_form.h"
#include "shell/schemes.h"
#include "ui/box_control.h"
#include "ui/fixed_window.h"
#include "ui/message_box.h"
#include "ui/msg_form.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>

#include <initializer_list>

namespace tallyon {
namespace {

// Layout of the window in logical pixels.
constexpr int kMargin = 8;
constexpr int kBoardSide = 560; // 8400 twips
constexpr int kPanelLeft = kMargin + kBoardSide + kMargin;
constexpr int kPanelWidth = 196;
constexpr int kInnerLeft = kPanelLeft + 10;
constexpr int kInnerWidth = kPanelWidth - 20;
constexpr int kHalfWidth = (kInnerWidth - 8) / 2;
constexpr int kStatusTop = kMargin + kBoardSide + 6;
constexpr int kWindowWidth = kPanelLeft + kPanelWidth + kMargin;
constexpr int kWindowHeight = kStatusTop + 26 + kMargin;

QFont ControlFont(int points, bool bold = false)
{
    QFont font("Arial");
    font.setPointSize(points);
    font.setBold(bold);
    return font;
}

} // namespace

Form1::Form1(AppState& state, QWidget* parent) : QMainWindow(parent), state_(state)
{
    setObjectName("Form1");
    setWindowTitle("Tallyon");
    // The window keeps one size, so its title bar offers no maximize.
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    GuardFixedWindow(this, Minimize::Allowed);
    SetMessageOwner(this);
    BuildControls();
    BuildMenu();
    ConnectControls();
    LayoutControls();
    statusLog_ = qEnvironmentVariable("TALLYON_STATUS_FILE");
    new BoardKeys(*this, *this, board_, play_,
                  {[this] { PrintCommand(); }, [this] { menuBar()->setActiveAction(mnuzerosum->menuAction()); },
                   [this] { ResumeGame(); }, [this] { PasteCode(); }, [this] { CopyCode(); }});
    setAcceptDrops(true);
}

Form1::~Form1()
{
    if (MessageForm().Owner() == this)
        SetMessageOwner(nullptr);
}

BoxControl* Form1::MakeButton(const char* name, const QString& caption, const QString& tip)
{
    auto* button = new BoxControl(centralWidget());
    button->setObjectName(name);
    button->SetFont(ControlFont(10, true));
    button->SetCaption(caption);
    button->SetToolTipText(tip);
    return button;
}

QLabel* Form1::MakeLabel(const char* name, const QString& caption)
{
    auto* label = new QLabel(caption, centralWidget());
    label->setObjectName(name);
    label->setFont(ControlFont(9));
    label->setAutoFillBackground(true);
    return label;
}

void Form1::BuildControls()
{
    setCentralWidget(new QWidget(this));
    Picture4 = new PictureBox(centralWidget());
    Picture4->setObjectName("Picture4");
    Picture1 = new PictureBox(centralWidget());
    Picture1->setObjectName("Picture1");
    // The board's digits are drawn in this font, and print and clipboard borrow its name.
    Picture1->setFont(ControlFont(12, true));

    errorMarker = new QFrame(Picture1);
    errorMarker->setObjectName("errorMarker");
    errorMarker->setFrameShape(QFrame::Box);
    errorMarker->setLineWidth(2);
    errorMarker->setStyleSheet(
        QStringLiteral("QFrame { border: 2px solid %1; background: transparent; }").arg(ToQColor(fixed::Red).name()));
    errorMarker->setAttribute(Qt::WA_TransparentForMouseEvents);
    errorMarker->hide();

    cmdnew = MakeButton("cmdnew", "New Puzzle", "Create New Puzzle, rightclick for a random size");
    cmdverify = MakeButton("cmdverify", "Verify", "Verify if Solved");
    cmdshowsol = MakeButton("cmdshowsol", "Show Solution", "Show Solution");
    undoman = MakeButton("undoman", "Undo", "Undo Last Move; rightclick to reset");
    cmdhelp = MakeButton("cmdhelp", "Instructions", "Show instructions");

    Label3 = MakeLabel("Label3", "Grid Size      Start");
    Label4 = new ClickLabel(centralWidget());
    Label4->setObjectName("Label4");
    Label4->setToolTip("Grid Size; click to change");
    Label6 = new ClickLabel(centralWidget());
    Label6->setObjectName("Label6");
    Label6->setToolTip("Start chain location; click to change");
    Label6->setText("Left"); // the design-time caption, kept for path directions 3 and 4
    for (QLabel* label : {static_cast<QLabel*>(Label4), static_cast<QLabel*>(Label6)}) {
        label->setFont(ControlFont(12, true));
        label->setAlignment(Qt::AlignCenter);
        label->setAutoFillBackground(true);
        label->setFrameShape(QFrame::Panel);
        label->setFrameShadow(QFrame::Raised);
        label->setCursor(Qt::PointingHandCursor);
    }
    Label8 = MakeLabel("Label8", "");
    Label8->setToolTip("Green = all links have correct math");
    Label8->setFrameShape(QFrame::Panel);
    Label8->setFrameShadow(QFrame::Sunken);
    Label5 = MakeLabel("Label5", "% Completed");
    Label1 = MakeLabel("Label1", "");
    Label2 = MakeLabel("Label2", "");
    Label7 = MakeLabel("Label7", "");
    Label7->setFrameShape(QFrame::Panel);
    Label7->setFrameShadow(QFrame::Sunken);
    Label7->setFont(ControlFont(10));
    for (QLabel* label : {Label3, Label5, Label1, Label2})
        label->setAlignment(Qt::AlignCenter);

    Command2 = new QPushButton(centralWidget());
    Command2->setObjectName("Command2");
    Command2->hide();

    Timer2.setParent(this); // found by name, like the window's controls
    Timer2.setObjectName("Timer2");
    Timer2.setInterval(2000);
    Timer1.setObjectName("Timer1"); // drives nothing
}

void Form1::BuildMenu()
{
    mnuzerosum = menuBar()->addMenu("File");
    mnuzerosum->setObjectName("mnuzerosum");
    mnuopts = mnuzerosum->addAction("Options");
    mnuzerosum->addSeparator();
    mnuprint = mnuzerosum->addAction("Print");
    mnucopy = mnuzerosum->addMenu("Copy to Clipboard");
    mnuclippuz = mnucopy->addAction("Puzzle");
    mnuclipsol = mnucopy->addAction("Solution");
    mnuzerosum->addSeparator();
    can1 = mnuzerosum->addAction("Cancel"); // no action: choosing it just closes the menu
    mnuzerosum->addSeparator();
    mnuhelp = mnuzerosum->addAction("Help");
    mnuabout = mnuzerosum->addAction("About");
    mnuzerosum->addSeparator();
    cmdexit = mnuzerosum->addAction("Exit");

    mnucopy->setObjectName("mnucopy");
    const std::pair<QAction*, const char*> names[] = {
        {mnuopts, "mnuopts"}, {mnuprint, "mnuprint"}, {mnuclippuz, "mnuclippuz"}, {mnuclipsol, "mnuclipsol"},
        {can1, "can1"},       {mnuhelp, "mnuhelp"},   {mnuabout, "mnuabout"},     {cmdexit, "cmdexit"}};
    for (const auto& [action, name] : names)
        action->setObjectName(name);
}

void Form1::ConnectControls()
{
    connect(cmdnew, &BoxControl::MouseUp, this,
            [this](int button, int, float, float) { NewPuzzle(*this, board_, play_, button); });
    connect(cmdverify, &BoxControl::MouseDown, this, [this](int, int, float, float) { VerifyPress(*this, board_); });
    connect(cmdverify, &BoxControl::MouseUp, this, [this](int, int, float, float) { VerifyRelease(*this, board_); });
    connect(cmdshowsol, &BoxControl::MouseDown, this, [this](int, int, float, float) { ShowSolution(*this, board_); });
    connect(cmdshowsol, &BoxControl::MouseUp, this, [this](int, int, float, float) { HideSolution(*this, board_); });
    connect(undoman, &BoxControl::MouseUp, this,
            [this](int button, int, float, float) { UndoMove(*this, board_, play_, button); });
    connect(cmdhelp, &BoxControl::MouseUp, this, [](int, int, float, float) { ShowInstructions(); });
    connect(Picture1, &PictureBox::MouseMove, this, [this](int, int, float x, float y) {
        HideCursor(*this, board_, play_);
        HoverCell(*this, board_, play_, x, y);
    });
    connect(Picture1, &PictureBox::MouseUp, this,
            [this](int button, int, float, float) { MakeLink(*this, board_, play_, button); });
    connect(Label4, &ClickLabel::MouseUp, this, [this](int button) { StepGridSize(*this, button); });
    connect(Label6, &ClickLabel::MouseUp, this, [this](int button) { StepStartSide(*this, button); });
    connect(Command2, &QPushButton::clicked, this, [this] { RedrawBoard(*this, board_); });
    connect(&Timer2, &QTimer::timeout, this, [this] { Timer2Tick(*this, board_); });

    connect(mnuopts, &QAction::triggered, this, &Form1::ShowOptions);
    connect(mnuprint, &QAction::triggered, this, &Form1::PrintCommand);
    connect(mnuclippuz, &QAction::triggered, this, [this] { CopyCommand(0); });
    connect(mnuclipsol, &QAction::triggered, this, [this] { CopyCommand(1); });
    connect(mnuhelp, &QAction::triggered, this, &Form1::ShowHelp);
    connect(mnuabout, &QAction::triggered, this, &Form1::ShowAbout);
    connect(cmdexit, &QAction::triggered, this, &Form1::ExitCommand);
}

void Form1::LayoutControls()
{
    centralWidget()->setFixedSize(kWindowWidth, kWindowHeight);
    Picture1->setGeometry(kMargin, kMargin, kBoardSide, kBoardSide);
    Picture4->setGeometry(kPanelLeft, kMargin, kPanelWidth, kBoardSide);
    int top = kMargin + 12;
    for (BoxControl* button : {cmdnew, cmdverify, cmdshowsol, undoman, cmdhelp}) {
        button->setGeometry(kInnerLeft, top, kInnerWidth, 36);
        top += 46;
    }
    top += 8;
    Label3->setGeometry(kInnerLeft, top, kInnerWidth, 22);
    Label4->setGeometry(kInnerLeft, top + 26, kHalfWidth, 34);
    Label6->setGeometry(kInnerLeft + kHalfWidth + 8, top + 26, kHalfWidth, 34);
    Label8->setGeometry(kInnerLeft, top + 76, kInnerWidth, 24);
    Label5->setGeometry(kInnerLeft, top + 106, kInnerWidth, 22);
    Label1->setGeometry(kInnerLeft, kMargin + kBoardSide - 34, kHalfWidth, 22);
    Label2->setGeometry(kInnerLeft + kHalfWidth + 8, kMargin + kBoardSide - 34, kHalfWidth, 22);
    Label7->setGeometry(kMargin, kStatusTop, kWindowWidth - 2 * kMargin, 26);
    setFixedSize(sizeHint());
    // Tab runs down the buttons, then across the two labels.
    QWidget* previous = cmdnew;
    for (QWidget* next : std::initializer_list<QWidget*>{cmdverify, cmdshowsol, undoman, cmdhelp, Label4, Label6}) {
        setTabOrder(previous, next);
        previous = next;
    }
}

void Form1::Start()
{
    MsgForm& box = MessageForm();
    box.SetFontName("Arial");
    box.SetForeColour(RGB(0, 0, 0));
    box.SetTitle("Tallyon");
    box.SetSchemeSource([this] { return state_.SchemeColours[state_.ControlColourIndex]; });

    Settings& settings = state_.settings;
    settings.GridColour = fixed::DarkText;
    settings.FontColour = fixed::DarkText;
    settings.ShapeColour = Picture1->BackColour();
    ReadConfig(state_);

    FileProblem problem = FileProblem::None;
    const std::optional<QStringList> schemes = ListSchemes(state_, &problem);
    if (!schemes)
        FailMissingSchemes(SchemesFilePath(state_), problem);
    form6_ = new Form6(state_, this);
    form6_->SetSchemeNames(*schemes);
    connect(form6_, &Form6::RefreshMainWindow, Command2, &QPushButton::click);

    LoadSchemeAtStartup(state_, settings.SchemeFile);
    ApplyScheme();

    if (settings.GridSize < 4 || settings.GridSize >= 11)
        settings.GridSize = 7;
    SetNextPathDirection(settings.PathDirection);
    SetNextGridSize(settings.GridSize);
    board_.GridSize = settings.GridSize;

    ResetBoard(board_, PictureWidth());
    DrawGrid(*OpenBoardCanvas(), board_, Style());
    SetStatus("Click Create New Puzzle to create a new puzzle");
}

} // namespace tallyon
