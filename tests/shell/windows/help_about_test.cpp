// Tests of the instructions text, the help window Form4 and the about window AboutForm.
#include "shell/about_form.h"
#include "shell/help_form.h"
#include "shell/instructions.h"
#include "ui/message_box.h"

#include <QDir>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>

using namespace tallyon;

namespace {

QString HelpPage() { return QStringLiteral(TALLYON_DATA_DIR "/tallyon.htm"); }

void SaveScreenshot(QWidget& widget, const QString& name)
{
    QDir().mkpath(QStringLiteral(TALLYON_SCREENSHOT_DIR));
    QVERIFY(widget.grab().save(QStringLiteral(TALLYON_SCREENSHOT_DIR "/") + name));
}

AppState SchemeState()
{
    AppState state;
    state.SchemeColours[kSchemeBackground] = RGB(236, 233, 216);
    state.SchemeColours[kSchemeControl] = RGB(200, 210, 240);
    state.SchemeColours[kSchemeAbout] = RGB(180, 220, 180);
    return state;
}

// Follows an in-page link the way a click on it does: the anchor resolved against the page.
void FollowAnchor(Form4& form, const QString& anchor)
{
    QUrl url = form.WebBrowser1->source();
    url.setFragment(anchor);
    form.WebBrowser1->setSource(url);
}

} // namespace

class HelpAboutTest : public QObject {
    Q_OBJECT
private slots:
    void instructionLines();
    void instructionsShownAsInformation();
    void backForwardOnlyInsidePage();
    void missingHelpPageSaysSo();
    void helpWindowLayoutAndColours();
    void aboutTextLines_data();
    void aboutTextLines();
    void aboutClosesOn_data();
    void aboutClosesOn();
    void aboutColoursAndScreenshot();
};

void HelpAboutTest::instructionLines()
{
    const QString text = InstructionText();
    QVERIFY(text.endsWith(QStringLiteral("valid\r\n")));
    QVERIFY(!text.contains(QRegularExpression(QStringLiteral("\r(?!\n)|(?<!\r)\n"))));
    QStringList lines = text.split(QStringLiteral("\r\n"));
    QCOMPARE(lines.takeLast(), QString());
    QCOMPARE(lines.size(), 12);
    QCOMPARE(lines.count(QString()), 1);
    QCOMPARE(lines.indexOf(QString()), 8);
    QCOMPARE(lines[7], QStringLiteral("* Click Verify button to check the solution"));
    QCOMPARE(lines[9], QStringLiteral("* Puzzle is solved when Start and End nodes are linked"));
    QCOMPARE(lines[5], QStringLiteral("   cannot link 8,2 and 7 OR 1,3 and 9"));
    QCOMPARE(lines[6], QStringLiteral("   but can link 1,2 and 3 OR 9,3 and 3"));
    for (int i : {1, 4, 5, 6, 10, 11})
        QVERIFY2(lines[i].startsWith(QStringLiteral("   ")) && lines[i][3] != QLatin1Char(' '),
                 qPrintable(lines[i]));
    for (int i : {0, 2, 3, 7, 9})
        QVERIFY2(lines[i].startsWith(QStringLiteral("* ")), qPrintable(lines[i]));
}

void HelpAboutTest::instructionsShownAsInformation()
{
    QString shown, style;
    SetMessageInterceptor([&](const QString& message, const QString& s) {
        shown = message;
        style = s;
        return 1;
    });
    ShowInstructions();
    SetMessageInterceptor(nullptr);
    QCOMPARE(shown, InstructionText());
    QCOMPARE(style, QStringLiteral("vbok+vbinformation"));
}

void HelpAboutTest::backForwardOnlyInsidePage()
{
    AppState state = SchemeState();
    Form4 form(state);
    form.show();
    form.Navigate(HelpPage());
    const QString top = form.LocationURL();
    QVERIFY(top.endsWith(QStringLiteral("tallyon.htm")));
    QVERIFY(form.WebBrowser1->toPlainText().contains(QStringLiteral("Contents")));
    SaveScreenshot(form, QStringLiteral("help_window_top.png"));

    // A fresh page: neither button moves.
    form.Command1->click();
    QCOMPARE(form.LocationURL(), top);
    form.Command2->click();
    QCOMPARE(form.LocationURL(), top);

    FollowAnchor(form, QStringLiteral("goal"));
    FollowAnchor(form, QStringLiteral("rule"));
    QVERIFY(form.LocationURL().endsWith(QStringLiteral("#rule")));
    QVERIFY(form.WebBrowser1->verticalScrollBar()->value() > 0);
    SaveScreenshot(form, QStringLiteral("help_window_anchor.png"));

    form.Command1->click();
    QVERIFY(form.LocationURL().endsWith(QStringLiteral("#goal")));
    form.Command2->click();
    QVERIFY(form.LocationURL().endsWith(QStringLiteral("#rule")));
    form.Command1->click();
    form.Command1->click();
    QCOMPARE(form.LocationURL(), top);
    // Back at a location without "#": Forward is refused although history lies ahead.
    QVERIFY(form.WebBrowser1->isForwardAvailable());
    form.Command2->click();
    QCOMPARE(form.LocationURL(), top);

    form.Command3->click();
    QVERIFY(!form.isVisible());
}

void HelpAboutTest::missingHelpPageSaysSo()
{
    AppState state;
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("tallyon.htm"));
    Form4 form(state);
    form.Navigate(path);
    QCOMPARE(form.WebBrowser1->toPlainText().trimmed(),
             QStringLiteral("The help page %1 was not found.").arg(path));
}

void HelpAboutTest::helpWindowLayoutAndColours()
{
    AppState state = SchemeState();
    Form4 form(state);
    QCOMPARE(form.windowTitle(), QStringLiteral("Tallyon Help"));
    QCOMPARE(form.Command1->text(), QStringLiteral("Back"));
    QCOMPARE(form.Command2->text(), QStringLiteral("Forward"));
    QCOMPARE(form.Command3->text(), QStringLiteral("Exit"));
    QCOMPARE(form.Command1->font().family(), QStringLiteral("Arial"));
    form.show();
    for (QSize size : {QSize(500, 400), QSize(900, 700)}) {
        form.resize(size);
        QCoreApplication::processEvents();
        const QRect browser = form.WebBrowser1->geometry();
        QCOMPARE(browser.topLeft(), QPoint(0, 0));
        QCOMPARE(browser.width(), size.width());
        QVERIFY(browser.bottom() < form.Command1->geometry().top());
        QVERIFY(form.Command3->geometry().right() < size.width());
        QVERIFY(form.Command1->geometry().bottom() < size.height());
    }
    QCOMPARE(form.palette().color(QPalette::Window), QColor(236, 233, 216));
    QCOMPARE(form.Command2->palette().color(QPalette::Button), QColor(200, 210, 240));
}

void HelpAboutTest::aboutTextLines_data()
{
    QTest::addColumn<QString>("homepage");
    QTest::addColumn<QString>("contact");
    QTest::newRow("no homepage") << QString() << QStringLiteral("Contact: see README");
    QTest::newRow("homepage") << QStringLiteral("https://tallyon.example")
                              << QStringLiteral("Contact: https://tallyon.example");
}

void HelpAboutTest::aboutTextLines()
{
    QFETCH(QString, homepage);
    QFETCH(QString, contact);
    const QStringList lines =
        AboutTextFor(QStringLiteral("November 2026"), homepage).split(QStringLiteral("\r\n"));
    const QStringList expected = {
        QString(),
        QStringLiteral("Tallyon - November 2026"),
        QStringLiteral("Draw a path from Start to End using mathematical"),
        QStringLiteral("operations on given numbers"),
        QString(),
        contact,
        QString(),
        QStringLiteral("This progam is free to use and distribute as supplied"),
        QStringLiteral("for NON COMMERCIAL USE ONLY"),
        QStringLiteral("NO warranties whatsoever"),
    };
    QCOMPARE(lines, expected);
}

void HelpAboutTest::aboutClosesOn_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("OK") << QStringLiteral("ok");
    QTest::newRow("Esc on text") << QStringLiteral("esc-text");
    QTest::newRow("Esc on window") << QStringLiteral("esc-window");
    QTest::newRow("click on text") << QStringLiteral("click");
}

void HelpAboutTest::aboutClosesOn()
{
    QFETCH(QString, how);
    AppState state = SchemeState();
    AboutForm form(state);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    if (how == QLatin1String("ok"))
        form.AboutOk->click();
    else if (how == QLatin1String("esc-text"))
        QTest::keyClick(form.AboutText, Qt::Key_Escape);
    else if (how == QLatin1String("esc-window"))
        QTest::keyClick(&form, Qt::Key_Escape);
    else
        QTest::mouseClick(form.AboutText->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    QVERIFY(!form.isVisible());
}

void HelpAboutTest::aboutColoursAndScreenshot()
{
    AppState state = SchemeState();
    AboutForm form(state);
    QCOMPARE(form.windowTitle(), QStringLiteral("About Tallyon"));
    QVERIFY(form.AboutText->isReadOnly());
    QVERIFY(form.AboutText->toPlainText().contains(QStringLiteral("progam")));
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QCOMPARE(form.palette().color(QPalette::Window), QColor(236, 233, 216));
    QCOMPARE(form.AboutText->palette().color(QPalette::Base), QColor(236, 233, 216));
    QCOMPARE(form.AboutOk->palette().color(QPalette::Button), QColor(180, 220, 180));
    // Every line of the text fits without a horizontal scroll.
    QVERIFY(form.AboutText->document()->size().width() <= form.AboutText->viewport()->width());
    SaveScreenshot(form, QStringLiteral("about_window.png"));
}

QTEST_MAIN(HelpAboutTest)
#include "help_about_test.moc"
