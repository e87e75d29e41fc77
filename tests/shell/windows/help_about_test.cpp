// Tests of the help window Form4 and the about window AboutForm.
#include "shell/about_form.h"
#include "shell/help_form.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBrowser>

using namespace tallyon;

namespace {

void SaveScreenshot(QWidget& widget, const QString& name)
{
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
    void backForwardOnlyInsidePage();
    void aboutClosesOn_data();
    void aboutClosesOn();
};

void HelpAboutTest::backForwardOnlyInsidePage()
{
    AppState state = SchemeState();
    Form4 form(state);
    form.show();
    form.Navigate(QStringLiteral(TALLYON_DATA_DIR "/tallyon.htm"));
    const QString top = form.LocationURL();
    QVERIFY(top.endsWith(QStringLiteral("tallyon.htm")));
    SaveScreenshot(form, QStringLiteral("help_window_top.png"));

    // A fresh page: neither button moves.
    form.Command1->click();
    QCOMPARE(form.LocationURL(), top);
    form.Command2->click();
    QCOMPARE(form.LocationURL(), top);

    FollowAnchor(form, QStringLiteral("goal"));
    FollowAnchor(form, QStringLiteral("rule"));
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
    form.Command2->click();
    QCOMPARE(form.LocationURL(), top);

    form.Command3->click();
    QVERIFY(!form.isVisible());
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
    if (how == QLatin1String("ok")) {
        SaveScreenshot(form, QStringLiteral("about_window.png"));
        form.AboutOk->click();
    } else if (how == QLatin1String("esc-text")) {
        QTest::keyClick(form.AboutText, Qt::Key_Escape);
    } else if (how == QLatin1String("esc-window")) {
        QTest::keyClick(&form, Qt::Key_Escape);
    } else {
        QTest::mouseClick(form.AboutText->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    }
    QVERIFY(!form.isVisible());
}

QTEST_MAIN(HelpAboutTest)
#include "help_about_test.moc"
