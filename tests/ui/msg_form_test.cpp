// The message box: style grammar, choosing by mouse and keys, Result, layout, screenshots.
#include "kit_test_support.h"
#include "platform/qt_colour.h"
#include "ui/message_box.h"
#include "ui/msg_form.h"

#include <QApplication>
#include <QLabel>
#include <QtTest>

using namespace tallyon;

namespace {

// Shows the shared box and, once it is up, runs `action` on it; returns ShowMessage's result.
int ShowAnd(const QString& message, const QString& style, std::function<void(MsgForm&)> action)
{
    tallyon::test::WhenShown([] { return &MessageForm(); }, [action] { action(MessageForm()); });
    return ShowMessage(message, style);
}

} // namespace

class MsgFormTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        MsgForm& form = MessageForm();
        form.SetBackColour(RGB(236, 233, 216));
        form.SetForeColour(RGB(20, 20, 20));
        form.SetSchemeSource([] { return RGB(245, 244, 234); });
    }

    void styleGrammar_data()
    {
        using Ints = QList<int>;
        QTest::addColumn<QString>("style");
        QTest::addColumn<QString>("captions");
        QTest::addColumn<Ints>("codes");
        QTest::addColumn<Ints>("icons");

        const auto row = [](const char* style, const char* captions, Ints codes, Ints icons) {
            QTest::newRow(style) << QString(style) << QString(captions) << codes << icons;
        };
        row("", "Ok", {1}, {});
        row("vbquestion", "Ok", {1}, {0});
        row("  vbYesNo +  VBQUESTION ", "Yes No", {6, 7}, {0}); // case and blanks
        row("vbok+vbcancel", "Ok Cancel", {1, 2}, {});
        row("vbnormal", "Ok", {0}, {});
        row("vbcontinuecancel", "Continue Cancel", {6, 2}, {2});
        row("vbquestion+vbexclamation+vbok", "Ok", {1}, {0, 1});
        row("vbok+vbwhatever+", "Ok", {1}, {});                                          // an unknown piece
        row("vbabortretryignore+vbcritical+vbok", "Abort Retry Ignore", {3, 4, 5}, {4}); // a fourth button ignored
    }

    // Every button of the style, chosen once by mouse and once by Enter, returns its code.
    void styleGrammar()
    {
        QFETCH(QString, style);
        QFETCH(QString, captions);
        QFETCH(QList<int>, codes);
        QFETCH(QList<int>, icons);

        for (int i = 0; i < codes.size(); ++i) {
            QStringList seenCaptions;
            QList<int> seenIcons;
            const int byMouse = ShowAnd("Message text", style, [&](MsgForm& form) {
                for (const MsgButton* b : form.cmd)
                    if (b->isVisibleTo(&form))
                        seenCaptions << b->text();
                for (int k = 0; k < kMessageIconCount; ++k)
                    if (form.icons[k]->isVisibleTo(&form))
                        seenIcons << k;
                QTest::mouseClick(form.cmd[i], Qt::LeftButton);
            });
            QCOMPARE(seenCaptions.join(' '), captions);
            QCOMPARE(seenIcons, icons);
            QCOMPARE(byMouse, codes[i]);
            QVERIFY(!MessageForm().isVisible());

            const int byEnter = ShowAnd("Message text", style, [&](MsgForm& form) {
                form.cmd[i]->setFocus();
                QTest::keyClick(form.cmd[i], i % 2 ? Qt::Key_Enter : Qt::Key_Return);
            });
            QCOMPARE(byEnter, codes[i]);
        }
    }

    void keysMoveFocusAndOnlyEnterChooses()
    {
        QStringList focusTrail;
        bool stayedOpen = false;
        bool everChecked = false;
        const int result = ShowAnd("Keys", "vbyesnocancel", [&](MsgForm& form) {
            QApplication::setActiveWindow(&form);
            auto trail = [&] {
                auto* focused = qobject_cast<QPushButton*>(QApplication::focusWidget());
                focusTrail << (focused ? focused->text() : QString());
            };
            trail();
            for (Qt::Key key : {Qt::Key_Tab, Qt::Key_Right, Qt::Key_Left}) {
                QTest::keyClick(QApplication::focusWidget(), key);
                trail();
            }
            for (Qt::Key key : {Qt::Key_Space, Qt::Key_Escape, Qt::Key_A, Qt::Key_Y}) {
                QTest::keyClick(QApplication::focusWidget(), key);
                for (const MsgButton* b : form.cmd)
                    everChecked = everChecked || b->isChecked();
            }
            stayedOpen = form.isVisible();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        });
        QCOMPARE(focusTrail, (QStringList{"Yes", "No", "Cancel", "No"}));
        QVERIFY2(stayedOpen, "Space, Escape and letters must not close the box");
        QVERIFY(!everChecked);
        QCOMPARE(result, 7);
    }

    // The frame has no close control, and a close asked for in another way is refused: after an
    // earlier "Yes", a closed "Exit?" box must not answer "Yes" again.
    void onlyAButtonEndsTheBox()
    {
        QVERIFY(!(MessageForm().windowFlags() & Qt::WindowCloseButtonHint));
        QCOMPARE(ShowAnd("Exit?", "vbYesNo", [](MsgForm& f) { QTest::mouseClick(f.cmd[0], Qt::LeftButton); }), 6);
        bool stayedOpen = false;
        const int answer = ShowAnd("Exit?", "vbYesNo", [&](MsgForm& f) {
            f.close();
            QTest::keyClick(&f, Qt::Key_Escape);
            stayedOpen = f.isVisible();
            QTest::mouseClick(f.cmd[1], Qt::LeftButton);
        });
        QVERIFY(stayedOpen);
        QCOMPARE(answer, 7);
    }

    void layoutFollowsText()
    {
        MsgForm form;
        const int px = kTwipsPerPixel;

        form.Prepare("Exit?", "vbyesno");
        const int oneLineButtons = form.cmd[0]->y();

        form.Prepare(QString(120, QChar('W')), "vbok");
        QVERIFY(form.Label1->width() * px > 3 * MsgForm::kButtonWidth);
        QCOMPARE(form.width(), 2 * form.Label1->x() + form.Label1->width());
        QVERIFY(qAbs(form.cmd[0]->geometry().center().x() - form.width() / 2) <= 1);

        form.Prepare("one\r\ntwo\r\nthree", "vbok");
        const int lineHeight = QFontMetrics(form.Label1->font()).lineSpacing();
        QVERIFY(qAbs(form.cmd[0]->y() - oneLineButtons - 2 * lineHeight) <= 2);
        QVERIFY(form.cmd[0]->y() > form.Label1->geometry().bottom());
        QVERIFY2(form.Label1->text().count('\n') == 2 && !form.Label1->text().contains('\r'), "CR LF starts new lines");

        // A huge name in a message (a damaged settings file's scheme) is cut with "…", and so is a
        // run of lines that no screen could hold.
        form.Prepare("Colour Scheme: " + QString(8 << 20, QChar('n')) + " not found", "vbok");
        QVERIFY(form.Label1->text().size() <= 200 && form.Label1->text().endsWith(QChar(0x2026)));
        form.Prepare(QString("line\r\n").repeated(1000), "vbok");
        QVERIFY(form.Label1->text().count('\n') < 40 && form.Label1->text().endsWith(QChar(0x2026)));
        QVERIFY(form.height() < 2000);
    }

    // A box for every icon that has a keyword, saved for review: the box's own ground in its
    // corner, and its icon drawn in the icon's place.
    void screenshots()
    {
        const char* keywords[] = {"vbquestion", "vbexclamation", "vbinformation", "vberror", "vbcritical", "vbhappy",
                                  "vbtrash",    "vbprint",       "vblighton",     nullptr,   "vbcustom"};
        for (int k = 0; k < kMessageIconCount; ++k) {
            if (!keywords[k])
                continue; // the spare slot
            const QString name = QString("msg_icon_%1").arg(k, 2, 10, QChar('0'));
            ShowAnd("Configuration file:\r\n/some/dir/tallyon.cfg\r\ncould not be accessed, options not saved",
                    QString("vbyesnocancel+") + keywords[k], [&](MsgForm& form) {
                        const QPixmap picture = form.grab();
                        tallyon::test::SaveShot(picture, name);
                        const QImage image = picture.toImage().scaled(form.size());
                        const QColor ground = ToQColor(form.BackColour());
                        QCOMPARE(image.pixelColor(2, image.height() - 2), ground);
                        const QRect icon = form.icons[static_cast<std::size_t>(k)]->geometry();
                        int inked = 0;
                        for (int y = icon.top(); y <= icon.bottom(); ++y)
                            for (int x = icon.left(); x <= icon.right(); ++x)
                                inked += image.pixelColor(x, y) != ground;
                        QVERIFY2(inked > icon.width() * icon.height() / 10, qPrintable(name));
                        QTest::mouseClick(form.cmd[0], Qt::LeftButton);
                    });
        }
    }
};

QTEST_MAIN(MsgFormTest)
#include "msg_form_test.moc"
