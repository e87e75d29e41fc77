// The message box window: style keywords, layout in twips, and the answer buttons' keys.
#include "ui/msg_form.h"

#include "platform/answer_codes.h"
#include "platform/qt_colour.h"
#include "ui/fixed_window.h"
#include "ui/front_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPalette>
#include <QStringList>
#include <QWindow>

#include <initializer_list>

namespace tallyon {
namespace {

struct ButtonDef {
    const char* caption;
    int code;
};

struct Keyword {
    const char* word;
    int icon; // -1: none
    std::initializer_list<ButtonDef> buttons;
};

// Every keyword the style grammar knows. "vbcancelok" is another name for "vbokcancel", so
// its Ok comes first too; "vbnormal" shows an Ok that answers nothing, for a box that only
// informs; "Continue" answers Yes, so a caller that asks whether to go on needs one test.
const Keyword kKeywords[] = {
    {"vbquestion", 0, {}},
    {"vbexclamation", 1, {}},
    {"vbinformation", 2, {}},
    {"vberror", 3, {}},
    {"vbcritical", 4, {}},
    {"vbhappy", 5, {}},
    {"vbtrash", 6, {}},
    {"vbprint", 7, {}},
    {"vblighton", 8, {}},
    {"vbcustom", 10, {}},
    {"vbok", -1, {{"Ok", kAnswerOk}}},
    {"vbokonly", -1, {{"Ok", kAnswerOk}}},
    {"vbnormal", -1, {{"Ok", kAnswerNone}}},
    {"vbokcancel", -1, {{"Ok", kAnswerOk}, {"Cancel", kAnswerCancel}}},
    {"vbcancelok", -1, {{"Ok", kAnswerOk}, {"Cancel", kAnswerCancel}}},
    {"vbcancel", -1, {{"Cancel", kAnswerCancel}}},
    {"vbyes", -1, {{"Yes", kAnswerYes}}},
    {"vbno", -1, {{"No", kAnswerNo}}},
    {"vbyesno", -1, {{"Yes", kAnswerYes}, {"No", kAnswerNo}}},
    {"vbyesnocancel", -1, {{"Yes", kAnswerYes}, {"No", kAnswerNo}, {"Cancel", kAnswerCancel}}},
    {"vbretry", -1, {{"Retry", kAnswerRetry}}},
    {"vbretrycancel", -1, {{"Retry", kAnswerRetry}, {"Cancel", kAnswerCancel}}},
    {"vbabort", -1, {{"Abort", kAnswerAbort}}},
    {"vbignore", -1, {{"Ignore", kAnswerIgnore}}},
    {"vbabortretryignore", -1, {{"Abort", kAnswerAbort}, {"Retry", kAnswerRetry}, {"Ignore", kAnswerIgnore}}},
    {"vbcontinuecancel", 2, {{"Continue", kAnswerYes}, {"Cancel", kAnswerCancel}}},
};

constexpr int Px(int twips) { return twips / kTwipsPerPixel; }

// Carriage return + line feed, or either alone, starts a new line on screen.
// Lines beyond these are cut with "…": a message naming something huge (a damaged file's
// scheme name) would otherwise take minutes to lay out and fill no screen.
constexpr qsizetype kMaxShownLineChars = 200;
constexpr qsizetype kMaxShownLines = 30;

QString ScreenText(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.size() > kMaxShownLines) {
        lines = lines.mid(0, kMaxShownLines);
        lines.last() = QStringLiteral("\u2026");
    }
    for (QString& line : lines)
        if (line.size() > kMaxShownLineChars)
            line = line.left(kMaxShownLineChars - 1) + QStringLiteral("\u2026");
    return lines.join(QLatin1Char('\n'));
}

// X11 already keeps a dialog without a parent over the program's windows: Qt makes it
// transient for the program's window group. Naming the main window instead would let a window
// manager that attaches modal dialogs to their parent move the box, so X11 keeps that.
bool WindowSystemKeepsDialogsOver() { return QGuiApplication::platformName() == QLatin1String("xcb"); }

bool IsEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

bool IsArrow(int key)
{
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

} // namespace

MsgButton::MsgButton(QWidget* parent) : QPushButton(parent)
{
    setCheckable(true);
    setAutoDefault(false);
    setFocusPolicy(Qt::StrongFocus);
}

void MsgButton::focusInEvent(QFocusEvent* event)
{
    setChecked(false);
    QPushButton::focusInEvent(event);
}

void MsgButton::focusOutEvent(QFocusEvent* event)
{
    setChecked(false);
    QPushButton::focusOutEvent(event);
}

void MsgButton::keyPressEvent(QKeyEvent* event)
{
    setChecked(false);
    if (IsEnter(event->key())) {
        event->accept();
        emit Chosen(this);
    } else if (IsArrow(event->key())) {
        QPushButton::keyPressEvent(event); // moves the focus to the next or previous button
    } else {
        event->accept(); // any other key is swallowed, Escape included
    }
}

void MsgButton::keyReleaseEvent(QKeyEvent* event)
{
    setChecked(false);
    setChecked(false);
    event->accept();
}

void MsgButton::mousePressEvent(QMouseEvent* event)
{
    QPushButton::mousePressEvent(event);
    event->accept(); // every button, so its release comes back here
}

void MsgButton::mouseReleaseEvent(QMouseEvent* event)
{
    const bool over = rect().contains(event->position().toPoint());
    QPushButton::mouseReleaseEvent(event);
    setChecked(false);
    event->accept();
    if (over)
        emit Chosen(this);
}

MsgForm::MsgForm(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::MSWindowsFixedSizeDialogHint)
{
    setWindowTitle(QStringLiteral("Message"));
    setModal(true);
    back_ = FromQColor(palette().color(QPalette::Window));
    setFont(QFont(QStringLiteral("Arial"), 10));

    for (int i = 0; i < kMessageIconCount; ++i) {
        icons[i] = new QLabel(this);
        icons[i]->setGeometry(Px(kIconLeft), Px(kIconTop), Px(kIconSize), Px(kIconSize));
        icons[i]->hide();
    }
    Label1 = new QLabel(this);
    Label1->setTextFormat(Qt::PlainText);
    Label1->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Label1->setAutoFillBackground(true);
    Label1->move(Px(kLabelLeft), Px(kLabelTop));
    for (auto& button : cmd) {
        button = new MsgButton(this);
        button->resize(Px(kButtonWidth), Px(kButtonHeight));
        button->hide();
        connect(button, &MsgButton::Chosen, this, &MsgForm::Choose);
    }
    setAutoFillBackground(true);
    GuardFixedWindow(this, Minimize::Refused);
}

int MsgForm::Run(const QString& message, const QString& style)
{
    Prepare(message, style);
    QWidget* owner = QApplication::activeWindow();
    if (owner && owner != this)
        move(owner->frameGeometry().center() - rect().center());
    exec();
    return Result;
}

void MsgForm::Prepare(const QString& message, const QString& style)
{
    if (button_ == 0 && schemeSource_)
        button_ = schemeSource_();
    ApplyColours();
    Label1->setText(ScreenText(message));
    ApplyFonts();
    for (QLabel* icon : icons)
        icon->hide();
    LastButton = -1;
    ParseStyle(style);
    if (LastButton == -1)
        AddButton(QStringLiteral("Ok"), 1);
    LayOut();
}

void MsgForm::SetBackColour(Colour colour)
{
    back_ = colour;
    ApplyColours();
}

void MsgForm::SetForeColour(Colour colour)
{
    fore_ = colour;
    ApplyColours();
}

void MsgForm::SetFontName(const QString& name)
{
    QFont f = font();
    f.setFamily(name);
    setFont(f);
}

void MsgForm::SetFontSize(int points)
{
    QFont f = font();
    f.setPointSize(points);
    setFont(f);
}

void MsgForm::SetFontBold(bool bold)
{
    QFont f = font();
    f.setBold(bold);
    setFont(f);
}

void MsgForm::keyPressEvent(QKeyEvent* event)
{
    event->accept(); // Escape and Enter mean nothing to the window itself
}

void MsgForm::closeEvent(QCloseEvent* event)
{
    event->ignore(); // only a button answers: a close would return the previous answer
}

void MsgForm::reject() {}

void MsgForm::showEvent(QShowEvent* event)
{
    // Placed first as a box without a parent, as always; the window system's window is made
    // after this event, with its transient parent.
    QDialog::showEvent(event);
    // Before the main window is first shown it has no window of its own yet, and there is none
    // to be transient for.
    if (!WindowSystemKeepsDialogsOver() && windowHandle() != nullptr)
        windowHandle()->setTransientParent(owner_ != nullptr ? owner_->window()->windowHandle() : nullptr);
    if (ShownAnew(this))
        return; // the focus stays on the button that had it
    for (int i = 0; i < kMessageIconCount; ++i)
        icons[i]->setPixmap(MessageIconPixmap(i, Px(kIconSize), devicePixelRatioF()));
    cmd[0]->setFocus(Qt::OtherFocusReason);
    BringToFront(this);
}

void MsgForm::Choose(MsgButton* button)
{
    Result = button->Tag.toInt();
    hide(); // ends the modal wait
}

void MsgForm::ApplyColours()
{
    QPalette pal = palette();
    pal.setColor(QPalette::Window, ToQColor(back_));
    pal.setColor(QPalette::WindowText, ToQColor(fore_));
    setPalette(pal);
    Label1->setPalette(pal);
    // A black button colour stands for "not set yet"; the buttons keep the platform's face.
    for (MsgButton* button : cmd) {
        QPalette bp = button->palette();
        bp.setColor(QPalette::Button,
                    button_ == 0 ? QApplication::palette().color(QPalette::Button) : ToQColor(button_));
        button->setPalette(bp);
    }
}

void MsgForm::ApplyFonts()
{
    Label1->setFont(font());
    QFont small = font();
    small.setPointSize(qMax(1, font().pointSize() - 1));
    for (MsgButton* button : cmd)
        button->setFont(small);
}

void MsgForm::ParseStyle(const QString& style)
{
    const QStringList pieces = style.toLower().split(QLatin1Char('+'));
    for (const QString& raw : pieces) {
        const QString piece = raw.trimmed();
        for (const Keyword& k : kKeywords) {
            if (piece != QLatin1String(k.word))
                continue;
            if (k.icon >= 0)
                ShowIcon(k.icon);
            for (const ButtonDef& b : k.buttons)
                AddButton(QString::fromLatin1(b.caption), b.code);
            break;
        }
    }
}

void MsgForm::AddButton(const QString& caption, int code)
{
    // The box has three buttons; further ones in a style are ignored.
    if (LastButton >= static_cast<int>(cmd.size()) - 1)
        return;
    ++LastButton;
    cmd[LastButton]->setText(caption);
    cmd[LastButton]->Tag = QString::number(code);
}

void MsgForm::ShowIcon(int index)
{
    icons[index]->setPixmap(MessageIconPixmap(index, Px(kIconSize), devicePixelRatioF()));
    icons[index]->show();
}

void MsgForm::LayOut()
{
    Label1->adjustSize(); // the label's width follows its text
    const QFontMetrics metrics(Label1->font());
    const QRect textRect =
        metrics.boundingRect(QRect(0, 0, 1 << 20, 1 << 20), Qt::AlignLeft | Qt::AlignTop, Label1->text());
    const int textHeight = qMax(textRect.height(), metrics.height()) * kTwipsPerPixel;
    const int labelWidth = Label1->width() * kTwipsPerPixel;

    int width = kLabelLeft * 2 + labelWidth;
    if (kButtonWidth * 3 >= width)
        width = kButtonWidth * 3;
    const int labelHeight = textHeight + kGap;
    Label1->resize(Label1->width(), Px(labelHeight));
    const int buttonTop = kLabelTop + labelHeight + kGap;
    const int height = buttonTop + kButtonHeight + kFrameAllowance;

    for (MsgButton* button : cmd) {
        button->hide();
        button->setChecked(false);
    }
    const int used = LastButton + 1;
    int left = (width - used * kButtonWidth) / 2;
    for (int i = 0; i < used; ++i, left += kButtonWidth) {
        cmd[i]->setGeometry(Px(left), Px(buttonTop), Px(kButtonWidth), Px(kButtonHeight));
        cmd[i]->show();
    }
    widthTwips_ = width;
    heightTwips_ = height;
    setFixedSize(Px(width), Px(height - kTitleBarTwips));
}

} // namespace tallyon
