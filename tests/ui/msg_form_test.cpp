// The message box: style grammar, choosing by mouse and keys, Result, layout, screenshots.
#include "ui/message_box.h"
#include "ui/msg_form.h"
#include "kit_test_support.h"

#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QtTest>

using namespace tallyon;
using tallyon::test::SaveShot;
using tallyon::test::WhenShown;

namespace {

const QString kInstructions = QStringList{
    "* Move mouse over a cell in the middle of two nodes and",
    "   left click, the two nodes will be linked",
    "* Right click on a link, the link will be undone",
    "* Continue adding links to build a path",
    "   Make sure that links are mathematically valid - like:",
    "   cannot link 8,2 and 7 OR 1,3 and 9",
    "   but can link 1,2 and 3 OR 9,3 and 3",
    "* Click Verify button to check the solution",
    "",
    "* Puzzle is solved when Start and End nodes are linked",
    "   by a continuous path, the hint node is on the path",
    "   and all links are mathematically valid"}.join("\r\n");

QWidget* Box() { return &MessageForm(); }

QStringList VisibleCaptions(const MsgForm& form)
{
    QStringList captions;
    for (const MsgButton* b : form.cmd)
        if (b->isVisibleTo(&form))
            captions << b->text();
    return captions;
}

QList<int> VisibleIcons(const MsgForm& form)
{
    QList<int> shown;
    for (int i = 0; i < kMessageIconCount; ++i)
        if (form.icons[i]->isVisibleTo(&form))
            shown << i;
    return shown;
}

// Shows the box and, once it is up, runs `action` on it; returns ShowMessage's result.
int ShowAnd(const QString& message, const QString& style, std::function<void(MsgForm&)> action)
{
    WhenShown(Box, [action] { action(MessageForm()); });
    return ShowMessage(message, style);
}

void Press(QWidget* target, int key)
{
    QTest::keyClick(target, static_cast<Qt::Key>(key));
}

} // namespace

class MsgFormTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void styleGrammar_data();
    void styleGrammar();
    void keysMoveFocusAndOnlyEnterChooses();
    void resultKeptAndCloseBoxStoresNothing();
    void layoutFollowsText();
    void buttonColourFromScheme();
    void interceptorShowsNothing();
    void screenshots();
};

void MsgFormTest::initTestCase()
{
    MsgForm& form = MessageForm();
    form.SetBackColour(RGB(236, 233, 216));
    form.SetForeColour(RGB(20, 20, 20));
    form.SetSchemeSource([] { return RGB(245, 244, 234); });
}

void MsgFormTest::styleGrammar_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<QStringList>("captions");
    QTest::addColumn<QList<int>>("codes");
    QTest::addColumn<QList<int>>("icons");

    QTest::newRow("empty") << "" << QStringList{"Ok"} << QList<int>{1} << QList<int>{};
    QTest::newRow("icon only") << "vbquestion" << QStringList{"Ok"} << QList<int>{1} << QList<int>{0};
    QTest::newRow("case and blanks") << "  vbYesNo +  VBQUESTION " << QStringList{"Yes", "No"}
                                     << QList<int>{6, 7} << QList<int>{0};
    QTest::newRow("icon first") << "vbinformation+vbok" << QStringList{"Ok"} << QList<int>{1} << QList<int>{2};
    QTest::newRow("ok then cancel") << "vbok+vbcancel" << QStringList{"Ok", "Cancel"} << QList<int>{1, 2}
                                    << QList<int>{};
    QTest::newRow("cancelok keeps Ok first") << "vbcancelok" << QStringList{"Ok", "Cancel"} << QList<int>{1, 2}
                                             << QList<int>{};
    QTest::newRow("normal is 0") << "vbnormal" << QStringList{"Ok"} << QList<int>{0} << QList<int>{};
    QTest::newRow("continue is 6") << "vbcontinuecancel" << QStringList{"Continue", "Cancel"}
                                   << QList<int>{6, 2} << QList<int>{2};
    QTest::newRow("two icons") << "vbquestion+vbexclamation+vbok" << QStringList{"Ok"} << QList<int>{1}
                               << QList<int>{0, 1};
    QTest::newRow("unknown piece") << "vbok+vbwhatever+" << QStringList{"Ok"} << QList<int>{1} << QList<int>{};
    QTest::newRow("three buttons") << "vbyesnocancel" << QStringList{"Yes", "No", "Cancel"}
                                   << QList<int>{6, 7, 2} << QList<int>{};
    QTest::newRow("abort retry ignore") << "vbabortretryignore+vbcritical" << QStringList{"Abort", "Retry", "Ignore"}
                                        << QList<int>{3, 4, 5} << QList<int>{4};
    QTest::newRow("fourth button ignored") << "vbyesnocancel+vbok" << QStringList{"Yes", "No", "Cancel"}
                                           << QList<int>{6, 7, 2} << QList<int>{};
    QTest::newRow("retry and singles") << "vbretry+vbignore+vbabort+vbno" << QStringList{"Retry", "Ignore", "Abort"}
                                       << QList<int>{4, 5, 3} << QList<int>{};
    QTest::newRow("more icons") << "vberror+vbhappy+vbtrash+vbprint+vblighton+vbcustom+vbokonly"
                                << QStringList{"Ok"} << QList<int>{1} << QList<int>{3, 5, 6, 7, 8, 10};
}

void MsgFormTest::styleGrammar()
{
    QFETCH(QString, style);
    QFETCH(QStringList, captions);
    QFETCH(QList<int>, codes);
    QFETCH(QList<int>, icons);

    for (int i = 0; i < codes.size(); ++i) {
        QStringList seenCaptions;
        QList<int> seenIcons;
        const int byMouse = ShowAnd("Message text", style, [&](MsgForm& form) {
            seenCaptions = VisibleCaptions(form);
            seenIcons = VisibleIcons(form);
            QTest::mouseClick(form.cmd[i], Qt::LeftButton);
        });
        QCOMPARE(seenCaptions, captions);
        QCOMPARE(seenIcons, icons);
        QCOMPARE(byMouse, codes[i]);
        QVERIFY(!MessageForm().isVisible());

        const int byEnter = ShowAnd("Message text", style, [&](MsgForm& form) {
            form.cmd[i]->setFocus();
            Press(form.cmd[i], i % 2 ? Qt::Key_Enter : Qt::Key_Return);
        });
        QCOMPARE(byEnter, codes[i]);
    }
}

void MsgFormTest::keysMoveFocusAndOnlyEnterChooses()
{
    QStringList focusTrail;
    bool stayedOpen = false;
    bool everChecked = false;
    const int result = ShowAnd("Keys", "vbyesnocancel", [&](MsgForm& form) {
        QApplication::setActiveWindow(&form);
        auto trail = [&] {
            focusTrail << (QApplication::focusWidget() ? qobject_cast<QPushButton*>(QApplication::focusWidget())->text()
                                                       : QString());
        };
        trail();
        Press(form.cmd[0], Qt::Key_Tab);
        trail();
        Press(form.cmd[1], Qt::Key_Right);
        trail();
        Press(form.cmd[2], Qt::Key_Left);
        trail();
        for (int key : {int(Qt::Key_Space), int(Qt::Key_Escape), int(Qt::Key_A), int(Qt::Key_Y)}) {
            Press(QApplication::focusWidget(), key);
            for (const MsgButton* b : form.cmd)
                everChecked = everChecked || b->isChecked();
        }
        stayedOpen = form.isVisible();
        Press(QApplication::focusWidget(), Qt::Key_Return);
    });
    QCOMPARE(focusTrail, (QStringList{"Yes", "No", "Cancel", "No"}));
    QVERIFY2(stayedOpen, "Space, Escape and letters must not close the box");
    QVERIFY(!everChecked);
    QCOMPARE(result, 7);
}

void MsgFormTest::resultKeptAndCloseBoxStoresNothing()
{
    MsgForm fresh;
    WhenShown([&] { return &fresh; }, [&] { fresh.close(); });
    QCOMPARE(fresh.Run("Closed at once", "vbyesno"), 0);

    QCOMPARE(ShowAnd("Exit?", "vbYesNo+vbquestion", [](MsgForm& f) { QTest::mouseClick(f.cmd[0], Qt::LeftButton); }), 6);
    QCOMPARE(ShowAnd("Closed", "vbok", [](MsgForm& f) { f.close(); }), 6);
    QCOMPARE(MessageForm().Result, 6);
    QCOMPARE(ShowAnd("No", "vbyesno", [](MsgForm& f) { QTest::mouseClick(f.cmd[1], Qt::RightButton); }), 7);
    QCOMPARE(ShowAnd("Closed again", "vbok", [](MsgForm& f) { f.close(); }), 7);
}

void MsgFormTest::layoutFollowsText()
{
    MsgForm form;
    const int px = MsgForm::kTwipsPerPixel;

    form.Prepare("Exit?", "vbyesno");
    QCOMPARE(form.WidthTwips(), 3 * MsgForm::kButtonWidth);
    QCOMPARE(form.width() * px, 3 * MsgForm::kButtonWidth);
    const int oneLineLabel = form.Label1->height();
    const int oneLineButtons = form.cmd[0]->y();
    // Two buttons side by side without a gap, centred.
    QCOMPARE(form.cmd[1]->x(), form.cmd[0]->x() + form.cmd[0]->width());
    QVERIFY(qAbs(form.cmd[0]->x() - (form.width() - form.cmd[1]->geometry().right() - 1)) <= 1);

    form.Prepare(QString(120, QChar('W')), "vbok");
    const int labelLeft = form.Label1->x() * px;
    const int labelWidth = form.Label1->width() * px;
    QVERIFY(labelWidth > 3 * MsgForm::kButtonWidth);
    QCOMPARE(form.WidthTwips(), 2 * labelLeft + labelWidth);
    QCOMPARE(form.width() * px, form.WidthTwips());
    QVERIFY(qAbs(form.cmd[0]->geometry().center().x() - form.width() / 2) <= 1);

    form.Prepare("one\r\ntwo\r\nthree", "vbok");
    const int lineHeight = QFontMetrics(form.Label1->font()).lineSpacing();
    QVERIFY(qAbs(form.Label1->height() - oneLineLabel - 2 * lineHeight) <= 2);
    QCOMPARE(form.Label1->height() * px,
             QFontMetrics(form.Label1->font()).boundingRect(QRect(0, 0, 9999, 9999), 0, "one\ntwo\nthree").height() * px +
                 MsgForm::kGap);
    QCOMPARE(form.cmd[0]->y() - oneLineButtons, form.Label1->height() - oneLineLabel);
    QCOMPARE(form.cmd[0]->y() * px, (form.Label1->y() + form.Label1->height()) * px + MsgForm::kGap);
    QCOMPARE(form.HeightTwips(), form.cmd[0]->y() * px + MsgForm::kButtonHeight + MsgForm::kFrameAllowance);
    QVERIFY2(form.Label1->text().count('\n') == 2 && !form.Label1->text().contains('\r'), "CR LF starts new lines");
}

void MsgFormTest::buttonColourFromScheme()
{
    MsgForm form;
    Colour scheme = RGB(10, 120, 200);
    form.SetSchemeSource([&] { return scheme; });
    form.Prepare("x", "vbok");
    QCOMPARE(form.ButtonColour(), RGB(10, 120, 200));
    QCOMPARE(form.cmd[0]->palette().color(QPalette::Button), QColor(10, 120, 200));
    scheme = RGB(1, 2, 3);  // a set (non-black) button colour is kept
    form.Prepare("x", "vbok");
    QCOMPARE(form.ButtonColour(), RGB(10, 120, 200));
    QCOMPARE(form.windowTitle(), QString("Message"));
    form.SetTitle("Tallyon");
    QCOMPARE(form.windowTitle(), QString("Message"));
}

void MsgFormTest::interceptorShowsNothing()
{
    QString seen;
    SetMessageInterceptor([&](const QString& message, const QString& style) {
        seen = message + "|" + style;
        return 42;
    });
    const int result = ShowMessage("Print Puzzle and its Solution?", "vbyesno+vbquestion");
    SetMessageInterceptor(nullptr);
    QCOMPARE(result, 42);
    QCOMPARE(seen, QString("Print Puzzle and its Solution?|vbyesno+vbquestion"));
    QVERIFY(!MessageForm().isVisible());
}

void MsgFormTest::screenshots()
{
    struct Shot {
        const char* name;
        QString message;
        const char* style;
    };
    const Shot shots[] = {
        {"msg_exit", "Exit?", "vbYesNo+vbquestion"},
        {"msg_instructions", kInstructions, "vbok+vbinformation"},
        {"msg_critical", "Configuration file:\r\n/some/dir/tallyon.cfg\r\ncould not be accessed, options not saved",
         "vbok+vbcritical"},
        {"msg_three_buttons", "Save the changes before leaving?", "vbyesnocancel+vbexclamation"},
    };
    for (const Shot& shot : shots)
        ShowAnd(shot.message, shot.style, [&](MsgForm& form) {
            SaveShot(form.grab(), shot.name);
            QTest::mouseClick(form.cmd[0], Qt::LeftButton);
        });

    static const char* const kKeywords[kMessageIconCount] = {
        "vbquestion", "vbexclamation", "vbinformation", "vberror", "vbcritical", "vbhappy",
        "vbtrash",    "vbprint",       "vblighton",     "",        "vbcustom"};
    MsgForm form;
    form.SetBackColour(RGB(236, 233, 216));
    form.SetSchemeSource([] { return RGB(245, 244, 234); });
    for (int i = 0; i < kMessageIconCount; ++i) {
        form.Prepare(QString("Icon slot %1 (%2)").arg(i).arg(kKeywords[i][0] ? kKeywords[i] : "spare"),
                     QString("vbok+") + kKeywords[i]);
        form.icons[i]->setPixmap(MessageIconPixmap(i, form.icons[i]->width(), form.devicePixelRatioF()));
        form.icons[i]->show();
        QCOMPARE(VisibleIcons(form), QList<int>{i});
        SaveShot(form.grab(), QString("msg_icon_%1").arg(i, 2, 10, QChar('0')));
    }

    QPixmap sheet(11 * 104, 104 + 104);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    for (int i = 0; i < kMessageIconCount; ++i) {
        PaintMessageIcon(painter, i, QRectF(i * 104 + 4, 4, 96, 96));
        painter.drawPixmap(i * 104 + 32, 130, MessageIconPixmap(i, 40, 1.0));
    }
    painter.end();
    SaveShot(sheet, "msg_icon_sheet");
}

QTEST_MAIN(MsgFormTest)
#include "msg_form_test.moc"
