// Form4, "Tallyon Help": the help page tallyon.htm in a browser with Back, Forward and Exit.
#include "shell/help_form.h"

#include "platform/canvas.h"
#include "shell/window_paint.h"
#include "ui/front_window.h"

#include <QEvent>
#include <QFileInfo>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>

namespace tallyon {

namespace {

// Window and button sizes in twips.
constexpr int kFormWidth = 10500;
constexpr int kFormHeight = 8400;
constexpr int kMargin = 120;
constexpr int kButtonWidth = 1200;
constexpr int kButtonHeight = 420;

int Px(int twips) { return twips / kTwipsPerPixel; }

} // namespace

Form4::Form4(AppState& state, QWidget* parent) : QWidget(parent, Qt::Window), state_(state)
{
    setObjectName(QStringLiteral("Form4"));
    setWindowTitle(QStringLiteral("Tallyon Help"));
    WebBrowser1 = new QTextBrowser(this);
    WebBrowser1->setObjectName(QStringLiteral("WebBrowser1"));
    WebBrowser1->setOpenLinks(true);
    WebBrowser1->setOpenExternalLinks(false);
    Command1 = MakeButton(QStringLiteral("Back"));
    Command1->setObjectName(QStringLiteral("Command1"));
    Command2 = MakeButton(QStringLiteral("Forward"));
    Command2->setObjectName(QStringLiteral("Command2"));
    Command3 = MakeButton(QStringLiteral("Exit"));
    Command3->setObjectName(QStringLiteral("Command3"));
    connect(Command1, &QPushButton::clicked, this, &Form4::Command1Click);
    connect(Command2, &QPushButton::clicked, this, &Form4::Command2Click);
    connect(Command3, &QPushButton::clicked, this, &QWidget::close);
    setMinimumSize(Px(4 * kButtonWidth + 5 * kMargin), Px(3000));
    resize(Px(kFormWidth), Px(kFormHeight));
    LayoutControls();
}

QPushButton* Form4::MakeButton(const QString& caption)
{
    auto* button = new QPushButton(caption, this);
    QFont font(QStringLiteral("Arial"));
    font.setPointSize(9);
    button->setFont(font);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

void Form4::Navigate(const QString& path)
{
    const int hash = path.indexOf(QLatin1Char('#'));
    const QString file = hash < 0 ? path : path.left(hash);
    if (!QFileInfo::exists(file)) {
        WebBrowser1->clearHistory();
        WebBrowser1->setHtml(QStringLiteral("<p style=\"font-family: Arial\">The help page %1 was "
                                            "not found.</p>")
                                 .arg(file.toHtmlEscaped()));
        return;
    }
    QUrl url = QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath());
    if (hash >= 0)
        url.setFragment(path.mid(hash + 1));
    WebBrowser1->setSource(url);
}

QString Form4::LocationURL() const { return WebBrowser1->source().toString(); }

void Form4::Command1Click()
{
    if (LocationURL().contains(QLatin1Char('#')))
        WebBrowser1->backward();
}

void Form4::Command2Click()
{
    if (LocationURL().contains(QLatin1Char('#')))
        WebBrowser1->forward();
}

void Form4::ApplyColours()
{
    windowpaint::SetBackground(this, state_.SchemeColours[kSchemeBackground]);
    const Colour control = state_.SchemeColours[state_.ControlColourIndex];
    for (QPushButton* button : {Command1, Command2, Command3})
        windowpaint::SetButtonColour(button, control);
}

// The browser fills the client area above the button row; the buttons sit in a row at the
// bottom, Exit at the right.
void Form4::LayoutControls()
{
    const int margin = Px(kMargin);
    const int buttonW = Px(kButtonWidth);
    const int buttonH = Px(kButtonHeight);
    const int buttonTop = height() - margin - buttonH;
    WebBrowser1->setGeometry(0, 0, width(), qMax(0, buttonTop - margin));
    Command1->setGeometry(margin, buttonTop, buttonW, buttonH);
    Command2->setGeometry(2 * margin + buttonW, buttonTop, buttonW, buttonH);
    Command3->setGeometry(width() - margin - buttonW, buttonTop, buttonW, buttonH);
}

void Form4::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    LayoutControls();
}

void Form4::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    ApplyColours();
    BringToFront(this);
}

void Form4::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        ApplyColours();
}

} // namespace tallyon
