// Tests of the options window Form6: samples, swatches, Apply and the scheme preview.
#include "shell/options_form.h"
#include "shell/options_samples.h"
#include "shell/schemes.h"
#include "ui/box_control.h"
#include "ui/col_pik.h"
#include "ui/message_box.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace tallyon;

namespace {

AppState StartState()
{
    AppState state;
    Settings& s = state.settings;
    s.GridSize = 7;
    s.NodeShape = 1;
    s.GridLineWidth = 1;
    s.ShapeColour = RGB(255, 255, 255);
    s.GridColour = RGB(20, 20, 20);
    s.FontColour = RGB(20, 20, 20);
    s.UserLineColour = RGB(0, 0, 255);
    s.PrintLineWidth = 2;
    s.SchemeFile = QStringLiteral("xp.col");
    state.SchemeColours[kSchemeBackground] = RGB(236, 233, 216);
    state.SchemeColours[kSchemeControl] = RGB(255, 255, 255);
    return state;
}

// The window shown (which runs activation), with a path-direction tag of its own.
struct OptionsFixture {
    AppState state = StartState();
    QString pathTag = QStringLiteral("1");
    Form6 form{state};

    OptionsFixture()
    {
        form.SetPathDirectionTag([this] { return pathTag; },
                                 [this](const QString& text) { pathTag = text; });
        form.show();
    }
    void Apply() { QTest::mouseClick(form.command1, Qt::LeftButton); }
};

void ClickListItem(QListWidget* list, const QString& text)
{
    const auto items = list->findItems(text, Qt::MatchExactly);
    QVERIFY(!items.isEmpty());
    list->scrollToItem(items.first());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(items.first()).center());
}

// Clicks an option button or check box on its indicator.
void ClickIndicator(QWidget* button)
{
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(7, button->height() / 2));
}

QColor Q(Colour c) { return QColor(RedOf(c), GreenOf(c), BlueOf(c)); }

} // namespace

class OptionsWindowTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void activationFillsSamples();
    void gridRightClickStepsWidth_data();
    void gridRightClickStepsWidth();
    void swatchesTakePickerColour();
    void shapeOptions_data();
    void shapeOptions();
    void printLine_data();
    void printLine();
    void pathDirectionTagAndRefresh_data();
    void pathDirectionTagAndRefresh();
    void schemePreviewAndApply();
    void closeEndsModalRun();

private:
    QTemporaryDir schemesDir_;
    QString oldCurrent_;
};

void OptionsWindowTest::initTestCase()
{
    // The preview reads "all.col" from the current directory.
    QVERIFY(schemesDir_.isValid());
    QVERIFY(QFile::copy(QStringLiteral(TALLYON_DATA_DIR "/all.col"),
                        schemesDir_.filePath(QStringLiteral("all.col"))));
    oldCurrent_ = QDir::currentPath();
    QVERIFY(QDir::setCurrent(schemesDir_.path()));
    SetMessageInterceptor([](const QString& message, const QString&) {
        qWarning("unexpected message: %s", qPrintable(message));
        return 1;
    });
}

void OptionsWindowTest::cleanupTestCase()
{
    SetMessageInterceptor(nullptr);
    QDir::setCurrent(oldCurrent_);
}

void OptionsWindowTest::activationFillsSamples()
{
    OptionsFixture f;
    Form6& form = f.form;
    QCOMPARE(form.windowTitle(), QStringLiteral("Tallyon Options"));
    QCOMPARE(form.shape2->BorderColor(), RGB(20, 20, 20));
    QCOMPARE(form.shape2->BorderWidth(), 1);
    QCOMPARE(form.Shape1->FillColor(), RGB(255, 255, 255));
    QCOMPARE(form.Shape3->FillColor(), RGB(0, 0, 255));
    QCOMPARE(form.Label4->palette().color(QPalette::WindowText), QColor(20, 20, 20));
    QCOMPARE(form.Frame1->title(), QStringLiteral("xp.col"));
    QVERIFY(form.Option1->isChecked());
    QVERIFY(form.Option5[1]->isChecked());
    QCOMPARE(form.Text1->text(), QStringLiteral("2"));
    QCOMPARE(form.Text1->font().family(), QStringLiteral("Courier New"));
    QCOMPARE(form.Option5[1]->text(), QStringLiteral("Left toRight"));
    QCOMPARE(form.Label5->toolTip(), QStringLiteral("Click to set Grid colour, select colour first"));
    QCOMPARE(form.palette().color(QPalette::Window), QColor(236, 233, 216));
    QCOMPARE(form.Frame3->palette().color(QPalette::Window), QColor(236, 233, 216));
    for (QWidget* filled : {static_cast<QWidget*>(form.Option5[0]), static_cast<QWidget*>(form.Check1),
                            static_cast<QWidget*>(form.Label2)})
        QCOMPARE(filled->palette().color(filled->backgroundRole()), QColor(236, 233, 216));
    QCOMPARE(form.Text1->palette().color(QPalette::Base), QColor(255, 255, 255));
    QCOMPARE(form.command1->Caption(), QStringLiteral("Apply"));

    // Hidden and shown again: activation overwrites changed samples from the settings, and a
    // shape setting that is neither 1 nor 2 selects no shape.
    form.Shape1->SetFillColor(RGB(1, 2, 3));
    QTest::mouseClick(form.command2, Qt::LeftButton);
    QVERIFY(!form.isVisible());
    f.state.settings.NodeShape = 0;
    form.show();
    QCOMPARE(form.Shape1->FillColor(), RGB(255, 255, 255));
    for (QRadioButton* option : {form.Option1, form.Option2, form.Option3, form.Option4})
        QVERIFY(!option->isChecked());
}

void OptionsWindowTest::gridRightClickStepsWidth_data()
{
    QTest::addColumn<int>("clicks");
    QTest::addColumn<int>("width");
    QTest::newRow("one") << 1 << 2;
    QTest::newRow("five") << 5 << 6;
    QTest::newRow("six wraps") << 6 << 1;
    QTest::newRow("eight") << 8 << 3;
}

void OptionsWindowTest::gridRightClickStepsWidth()
{
    QFETCH(int, clicks);
    QFETCH(int, width);
    OptionsFixture f;
    f.form.ColPik1->SetSelectedColour(RGB(200, 0, 0));
    for (int i = 0; i < clicks; ++i)
        QTest::mouseClick(f.form.Label2, Qt::RightButton);
    QCOMPARE(f.form.shape2->BorderWidth(), width);
    QCOMPARE(f.form.shape2->BorderColor(), RGB(20, 20, 20));   // right clicks leave the colour
    f.Apply();
    QCOMPARE(f.state.settings.GridLineWidth, width);
}

void OptionsWindowTest::swatchesTakePickerColour()
{
    OptionsFixture f;
    Form6& form = f.form;
    const Colour red = RGB(255, 0, 0), green = RGB(0, 128, 0), teal = RGB(0, 128, 128);
    form.ColPik1->SetSelectedColour(red);
    QTest::mouseClick(form.Label1, Qt::LeftButton);
    QTest::mouseClick(form.Label4, Qt::LeftButton);   // the font sample itself does nothing
    form.ColPik1->SetSelectedColour(green);
    QTest::mouseClick(form.Label3, Qt::LeftButton);
    QTest::mouseClick(form.Label5, Qt::RightButton);  // a right click on a colour swatch: nothing
    form.ColPik1->SetSelectedColour(teal);
    QTest::mouseClick(form.Label2, Qt::LeftButton);
    QTest::mouseClick(form.Label5, Qt::LeftButton);
    QCOMPARE(form.Shape1->FillColor(), red);
    QCOMPARE(form.Label4->palette().color(QPalette::WindowText), Q(green));
    QCOMPARE(form.shape2->BorderColor(), teal);
    QCOMPARE(form.Shape3->FillColor(), teal);
    // Samples change no setting before Apply.
    QCOMPARE(f.state.settings.ShapeColour, RGB(255, 255, 255));
    f.Apply();
    const Settings& s = f.state.settings;
    QCOMPARE(s.ShapeColour, red);
    QCOMPARE(s.FontColour, green);
    QCOMPARE(s.GridColour, teal);
    QCOMPARE(s.UserLineColour, teal);
    QCOMPARE(s.GridLineWidth, 1);
}

void OptionsWindowTest::shapeOptions_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<QString>("choice");
    QTest::addColumn<bool>("fillBlack");
    QTest::addColumn<int>("after");
    QTest::newRow("circle") << 1 << "Circle" << false << 2;
    QTest::newRow("rectangle") << 2 << "Rectangle" << false << 1;
    QTest::newRow("oval keeps circle") << 2 << "Oval" << false << 2;
    QTest::newRow("rounded keeps rectangle") << 1 << "Rounded" << true << 1;
    QTest::newRow("nothing chosen keeps 0") << 0 << "" << true << 0;
}

void OptionsWindowTest::shapeOptions()
{
    QFETCH(int, before);
    QFETCH(QString, choice);
    QFETCH(bool, fillBlack);
    QFETCH(int, after);
    OptionsFixture f;
    f.state.settings.NodeShape = before;
    f.form.Activate();
    for (QRadioButton* option : {f.form.Option1, f.form.Option2, f.form.Option3, f.form.Option4}) {
        if (option->text() == choice)
            ClickIndicator(option);
    }
    if (fillBlack)
        ClickIndicator(f.form.Check1);
    QCOMPARE(f.form.Check1->isChecked(), fillBlack);
    f.Apply();
    QCOMPARE(f.state.settings.NodeShape, after);
}

void OptionsWindowTest::printLine_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("width");
    QTest::newRow("0") << "0" << 1;
    QTest::newRow("empty") << "" << 1;
    QTest::newRow("abc") << "abc" << 1;
    QTest::newRow("negative") << "-4" << 1;
    QTest::newRow("2.6") << "2.6" << 3;
    QTest::newRow("2.5 to even") << "2.5" << 2;
    QTest::newRow("3.5 to even") << "3.5" << 4;
    QTest::newRow("leading number") << "  5 px" << 5;
    QTest::newRow("fraction only") << ".9" << 1;
    QTest::newRow("trailing point") << "3." << 3;
    QTest::newRow("exponent") << "1e1" << 10;
    QTest::newRow("huge") << "1e40" << 1;
}

void OptionsWindowTest::printLine()
{
    QFETCH(QString, entry);
    QFETCH(int, width);
    OptionsFixture f;
    f.form.Text1->setText(entry);
    f.Apply();
    QCOMPARE(f.state.settings.PrintLineWidth, width);
}

void OptionsWindowTest::pathDirectionTagAndRefresh_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<int>("choose");   // -1: leave the selection
    QTest::addColumn<int>("selected");
    QTest::addColumn<QString>("written");
    QTest::newRow("tag 3, choose 2") << "3" << 2 << 2 << "2";
    QTest::newRow("tag 4 kept") << "4" << -1 << 4 << "4";
    QTest::newRow("tag 0, choose 1") << "0" << 1 << 1 << "1";
    QTest::newRow("tag out of range") << "7" << -1 << -1 << "7";
}

void OptionsWindowTest::pathDirectionTagAndRefresh()
{
    QFETCH(QString, tag);
    QFETCH(int, choose);
    QFETCH(int, selected);
    QFETCH(QString, written);
    OptionsFixture f;
    f.pathTag = tag;
    f.form.Activate();
    if (choose >= 0)
        ClickIndicator(f.form.Option5[choose]);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(f.form.Option5[i]->isChecked(), i == selected);
    QSignalSpy refresh(&f.form, &Form6::RefreshMainWindow);
    f.Apply();
    QCOMPARE(refresh.count(), 1);
    QCOMPARE(f.pathTag, written);
    QCOMPARE(f.state.settings.PathDirection, written.toInt());
    QVERIFY(f.form.isVisible());   // Apply leaves the window open
}

void OptionsWindowTest::schemePreviewAndApply()
{
    OptionsFixture f;
    Form6& form = f.form;
    for (const QString& name : {QStringLiteral("xp"), QStringLiteral("Blue"), QStringLiteral("Rose")})
        form.List1->addItem(name);
    QDir().mkpath(QStringLiteral(TALLYON_SCREENSHOT_DIR));

    // Apply with no scheme selected keeps SchemeFile.
    f.Apply();
    QCOMPARE(f.state.settings.SchemeFile, QStringLiteral("xp.col"));

    AppState expected = f.state;
    for (const QString& name : {QStringLiteral("xp"), QStringLiteral("Rose")}) {
        ClickListItem(form.List1, name);
        QVERIFY(LoadSchemePreview(expected, name + QStringLiteral(".col")) != 0);
        QCOMPARE(f.state.SchemeColours, expected.SchemeColours);
        QCOMPARE(form.Frame1->title(), name);
        const Colour back = expected.SchemeColours[kSchemeBackground];
        QCOMPARE(form.palette().color(QPalette::Window), Q(back));
        QCOMPARE(form.List1->palette().color(QPalette::Base), Q(back));
        QCOMPARE(form.Text1->palette().color(QPalette::Base),
                 Q(expected.SchemeColours[kSchemeControl]));
        QVERIFY(form.grab().save(QStringLiteral(TALLYON_SCREENSHOT_DIR "/options_window_%1.png")
                                     .arg(name.toLower())));
    }

    // Closed without Apply: the previewed table stays, SchemeFile does not change.
    QTest::mouseClick(form.command2, Qt::LeftButton);
    QVERIFY(!form.isVisible());
    QCOMPARE(f.state.settings.SchemeFile, QStringLiteral("xp.col"));
    QCOMPARE(f.state.SchemeColours, expected.SchemeColours);

    // Shown again with Rose still selected: Apply takes it.
    form.show();
    f.Apply();
    QCOMPARE(f.state.settings.SchemeFile, QStringLiteral("Rose.col"));
}

void OptionsWindowTest::closeEndsModalRun()
{
    AppState state = StartState();
    Form6 form(state);
    QTimer::singleShot(0, &form, [&form] { QTest::mouseClick(form.command2, Qt::LeftButton); });
    form.exec();
    QVERIFY(!form.isVisible());
    QVERIFY(form.Option1->isChecked());   // activation ran when the modal run began
}

QTEST_MAIN(OptionsWindowTest)
#include "options_window_test.moc"
