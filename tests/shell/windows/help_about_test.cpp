// Tests of the help window Form4 and the about window AboutForm.
#include "shell/about_form.h"
#include "shell/help_form.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>

#include <functional>

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
    void backForwardOnlyInsidePage()
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

    // The help page as the build lays it beside the program: each of its pictures is found
    // beside it and shows, in the section on hints.
    void everyPictureOfTheHelpPageLiesBesideIt()
    {
        AppState state = SchemeState();
        Form4 form(state);
        form.resize(720, 900);
        form.show();
        form.Navigate(QStringLiteral(TALLYON_BIN_DIR "/tallyon.htm"));
        QStringList pictures;
        for (QTextBlock block = form.WebBrowser1->document()->begin(); block.isValid(); block = block.next())
            for (auto it = block.begin(); !it.atEnd(); ++it)
                if (it.fragment().charFormat().isImageFormat())
                    pictures << it.fragment().charFormat().toImageFormat().name();
        QCOMPARE(pictures,
                 QStringList({"hint-dead-end.png", "hint-forced-link.png", "hint-pocket.png", "hint-region.png"}));
        for (const QString& name : pictures) {
            const QVariant loaded = form.WebBrowser1->loadResource(QTextDocument::ImageResource, QUrl(name));
            QVERIFY2(!QImage::fromData(loaded.toByteArray()).isNull(), qPrintable(name));
        }
        FollowAnchor(form, QStringLiteral("hints"));
        SaveScreenshot(form, QStringLiteral("help_window_hints.png"));
    }

    // OK, Esc on the text or on the window, or a click on the text each close the about window.
    void aboutCloses()
    {
        AppState state = SchemeState();
        AboutForm form(state);
        const std::function<void()> ways[] = {
            [&] { form.AboutOk->click(); },
            [&] { QTest::keyClick(form.AboutText, Qt::Key_Escape); },
            [&] { QTest::keyClick(&form, Qt::Key_Escape); },
            [&] { QTest::mouseClick(form.AboutText->viewport(), Qt::LeftButton, {}, QPoint(20, 20)); },
        };
        for (const auto& close : ways) {
            form.show();
            QVERIFY(QTest::qWaitForWindowExposed(&form));
            SaveScreenshot(form, QStringLiteral("about_window.png"));
            close();
            QVERIFY(!form.isVisible());
        }
    }
};

QTEST_MAIN(HelpAboutTest)
#include "help_about_test.moc"
