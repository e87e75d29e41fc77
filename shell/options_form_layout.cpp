// Form6's controls: frames, swatch labels, samples, options, the scheme list and buttons.
#include "shell/options_form.h"

#include "shell/options_samples.h"
#include "ui/box_control.h"
#include "ui/col_pik.h"
#include "ui/fixed_window.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

namespace tallyon {

namespace {

// Frame geometry in pixels: three columns.
constexpr int kColumnA = 8;
constexpr int kColumnB = 336;
constexpr int kColumnC = 488;
constexpr int kTopRow = 6;
constexpr int kLowerRow = 164;
constexpr int kFormWidth = 688;
constexpr int kFormHeight = 352;
constexpr int kRowStep = 24;
constexpr int kFirstRow = 22; // first control inside a frame, below its caption

} // namespace

QGroupBox* Form6::MakeFrame(const QString& caption, const QRect& geometry)
{
    auto* frame = new QGroupBox(caption, this);
    frame->setGeometry(geometry);
    return frame;
}

QLabel* Form6::MakeSwatch(QGroupBox* frame, const QString& caption, const QString& tip, int top)
{
    auto* label = new QLabel(caption, frame);
    label->setToolTip(tip);
    label->setFrameStyle(QFrame::Panel | QFrame::Raised);
    label->setAlignment(Qt::AlignCenter);
    label->setCursor(Qt::PointingHandCursor);
    label->setGeometry(10, top, 84, 22);
    label->installEventFilter(this);
    return label;
}

QRadioButton* Form6::MakeOption(QGroupBox* frame, const QString& caption, int top)
{
    auto* option = new QRadioButton(caption, frame);
    option->setGeometry(10, top, frame->width() - 16, 20);
    return option;
}

void Form6::BuildColours()
{
    Frame2 = MakeFrame(QStringLiteral("Colours"), QRect(kColumnA, kTopRow, 320, 150));
    Label1 = MakeSwatch(Frame2, QStringLiteral("Shape"),
                        QStringLiteral("Click to set Shape colour, select colour first"), kFirstRow);
    Label2 =
        MakeSwatch(Frame2, QStringLiteral("Grid"),
                   QStringLiteral("Left click to set Grid colour, Right click to set Grid Line Width"), kFirstRow + 30);
    Label5 = MakeSwatch(Frame2, QStringLiteral("User Line"),
                        QStringLiteral("Click to set Grid colour, select colour first"), kFirstRow + 60);
    Label3 = MakeSwatch(Frame2, QStringLiteral("Number"),
                        QStringLiteral("Click to set Number colour, select colour first"), kFirstRow + 90);

    Shape1 = new SampleShape(SampleShape::Kind::Filled, Frame2);
    Shape1->setGeometry(110, kFirstRow + 2, 60, 18);
    shape2 = new SampleShape(SampleShape::Kind::Line, Frame2);
    shape2->setGeometry(110, kFirstRow + 30, 190, 22);
    Shape3 = new SampleShape(SampleShape::Kind::Filled, Frame2);
    Shape3->setGeometry(110, kFirstRow + 62, 190, 18);
    Label4 = new QLabel(QStringLiteral("1 2 3 4 5 6 7 8 9"), Frame2);
    Label4->setToolTip(QStringLiteral("Click to set Font colour, select colour first"));
    QFont bold = Label4->font();
    bold.setBold(true);
    bold.setPointSize(11);
    Label4->setFont(bold);
    Label4->setGeometry(110, kFirstRow + 90, 200, 22);
}

void Form6::BuildSelector()
{
    Frame4 = MakeFrame(QStringLiteral("Colour Selector"), QRect(kColumnA, kLowerRow, 320, 180));
    ColPik1 = new ColPik(Frame4);
    ColPik1->move(10, kFirstRow);
}

void Form6::BuildShape()
{
    Frame3 = MakeFrame(QStringLiteral("Shape"), QRect(kColumnB, kTopRow, 144, 150));
    Option1 = MakeOption(Frame3, QStringLiteral("Rectangle"), kFirstRow);
    Option2 = MakeOption(Frame3, QStringLiteral("Circle"), kFirstRow + kRowStep);
    Option3 = MakeOption(Frame3, QStringLiteral("Rounded"), kFirstRow + 2 * kRowStep);
    Option4 = MakeOption(Frame3, QStringLiteral("Oval"), kFirstRow + 3 * kRowStep);
    Check1 = new QCheckBox(QStringLiteral("Fill Black"), Frame3);
    Check1->setGeometry(10, kFirstRow + 4 * kRowStep + 2, 120, 20);
}

void Form6::BuildSizeAndPrintLine()
{
    Frame6 = MakeFrame(QStringLiteral("Size"), QRect(kColumnB, kLowerRow, 144, 54));
    Check2 = new QCheckBox(QStringLiteral("Adjust"), Frame6);
    Check2->setGeometry(10, kFirstRow + 2, 120, 20);

    Frame7 = MakeFrame(QStringLiteral("Print Line"), QRect(kColumnB, kLowerRow + 62, 144, 60));
    Text1 = new QLineEdit(Frame7);
    Text1->setToolTip(QStringLiteral("Grid line width when printing a puzzle"));
    QFont courier(QStringLiteral("Courier New"));
    courier.setPointSize(10);
    Text1->setFont(courier);
    Text1->setGeometry(10, kFirstRow + 2, 60, 26);
}

void Form6::BuildPathDirection()
{
    Frame5 = MakeFrame(QStringLiteral("Path Direction"), QRect(kColumnC, kTopRow, 192, 150));
    static const char* const kCaptions[5] = {"Random", "Left toRight", "Top to Bottom", "Right to Left", "Down to Top"};
    for (int i = 0; i < 5; ++i) {
        Option5[i] = MakeOption(Frame5, QString::fromLatin1(kCaptions[i]), kFirstRow + i * kRowStep);
        Option5[i]->setObjectName(QStringLiteral("Option5_%1").arg(i));
    }
}

void Form6::BuildScheme()
{
    Frame1 = MakeFrame(QStringLiteral("Colour Scheme"), QRect(kColumnC, kLowerRow, 192, 180));
    List1 = new QListWidget(Frame1);
    List1->setGeometry(10, kFirstRow, 172, 104);
    connect(List1, &QListWidget::itemClicked, this, [this] { List1Click(); });

    command1 = new BoxControl(Frame1);
    command1->setGeometry(10, kFirstRow + 114, 80, 34);
    command1->SetCaption(QStringLiteral("Apply"));
    connect(command1, &BoxControl::Click, this, &Form6::command1Click);
    command2 = new BoxControl(Frame1);
    command2->setGeometry(102, kFirstRow + 114, 80, 34);
    command2->SetCaption(QStringLiteral("Close"));
    connect(command2, &BoxControl::Click, this, &Form6::command2Click);
    for (BoxControl* button : {command1, command2}) {
        QFont arial(QStringLiteral("Arial"));
        arial.setPointSize(9);
        button->SetFont(arial);
    }
}

Form6::Form6(AppState& state, QWidget* parent) : QDialog(parent), state_(state)
{
    setObjectName(QStringLiteral("Form6"));
    setWindowTitle(QStringLiteral("Tallyon Options"));
    QFont arial(QStringLiteral("Arial"));
    arial.setPointSize(9);
    setFont(arial);
    setFixedSize(kFormWidth, kFormHeight);
    GuardFixedWindow(this, Minimize::Refused); // modal: minimized, it could not be found again
}

void Form6::SetSchemeNames(const QStringList& names)
{
    schemeNames_ = names;
    if (built_) {
        List1->clear();
        List1->addItems(names);
    }
}

void Form6::EnsureBuilt()
{
    if (built_)
        return;
    built_ = true;
    BuildColours();
    BuildSelector();
    BuildShape();
    BuildSizeAndPrintLine();
    BuildPathDirection();
    BuildScheme();
    List1->addItems(schemeNames_);
}

} // namespace tallyon
