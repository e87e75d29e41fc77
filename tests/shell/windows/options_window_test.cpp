// Tests of the options window Form6: the grid sample's width, Apply and the scheme preview.
#include "platform/qt_colour.h"
#include "shell/options_form.h"
#include "shell/options_samples.h"
#include "shell/schemes.h"
#include "ui/box_control.h"
#include "ui/col_pik.h"
#include "ui/fixed_window.h"
#include "ui/message_box.h"

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
#include <QWindow>

using namespace tallyon;

namespace {

// The window shown (which runs activation) over the fresh-install settings (a circle node,
// scheme xp.col), with path direction 3, which only this window can set.
struct OptionsFixture {
    AppState state;
    Form6 form{state};

    OptionsFixture()
    {
        state.settings = FreshInstallSettings();
        state.settings.PathDirection = 3;
        state.StartSideTag = 3; // as the main window's start-up stores it
        form.show();
    }
    void Apply() { QTest::mouseClick(form.command1, Qt::LeftButton); }
};

// Clicks an option button on its indicator.
void ClickIndicator(QWidget* button) { QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(7, button->height() / 2)); }

} // namespace

class OptionsWindowTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir schemesDir_;

private slots:
    void initTestCase()
    {
        // The preview reads "all.col" from the current directory.
        QVERIFY(
            QFile::copy(QStringLiteral(TALLYON_DATA_DIR "/all.col"), schemesDir_.filePath(QStringLiteral("all.col"))));
        QVERIFY(QDir::setCurrent(schemesDir_.path()));
        SetMessageInterceptor([](const QString& message, const QString&) {
            qWarning("unexpected message: %s", qPrintable(message));
            return 1;
        });
    }

    void gridRightClicksWrapAfterSix()
    {
        OptionsFixture f;
        for (int i = 0; i < 5; ++i)
            QTest::mouseClick(f.form.Label2, Qt::RightButton);
        QCOMPARE(f.form.shape2->BorderWidth(), 6);
        QTest::mouseClick(f.form.Label2, Qt::RightButton);
        QCOMPARE(f.form.shape2->BorderWidth(), 1);
        QTest::mouseClick(f.form.Label2, Qt::RightButton);
        f.Apply();
        QCOMPARE(f.state.settings.GridLineWidth, 2);
    }

    // The print line's width: a number below 1 or no number is 1, fractions round.
    void printLine()
    {
        for (const auto& [entry, width] : {std::pair{"0", 1}, {"", 1}, {"abc", 1}, {"2.6", 3}}) {
            OptionsFixture f;
            f.form.Text1->setText(entry);
            f.Apply();
            QCOMPARE(f.state.settings.PrintLineWidth, width);
        }
    }

    // Apply stores the chosen direction and asks the main window to refresh; "Oval"
    // changes no setting, so the circle stays.
    void applyStoresPathDirectionAndKeepsShape()
    {
        OptionsFixture f;
        QVERIFY(f.form.Option5[3]->isChecked()); // from the setting
        ClickIndicator(f.form.Option5[2]);
        for (QRadioButton* option : {f.form.Option1, f.form.Option2, f.form.Option3, f.form.Option4})
            if (option->text() == QStringLiteral("Oval"))
                ClickIndicator(option);
        QSignalSpy refresh(&f.form, &Form6::RefreshMainWindow);
        f.Apply();
        QCOMPARE(refresh.count(), 1);
        QCOMPARE(f.state.settings.PathDirection, 2);
        QCOMPARE(f.state.settings.NodeShape, 2);
    }

    // Shown anew by its guard, as a maximize on Wayland does, the window keeps the choices
    // the player has not applied yet.
    void shownAnewKeepsUnappliedChoices()
    {
        OptionsFixture f;
        KeepWindowNormal(&f.form, Minimize::Refused);
        ClickIndicator(f.form.Option5[2]);
        f.form.Text1->setText(QStringLiteral("5"));
        QSignalSpy shown(f.form.windowHandle(), &QWindow::visibleChanged);
        f.form.windowHandle()->setWindowStates(Qt::WindowMaximized);
        QTRY_VERIFY(shown.count() >= 2 && f.form.isVisible());
        QVERIFY(f.form.Option5[2]->isChecked());
        QCOMPARE(f.form.Text1->text(), QStringLiteral("5"));
    }

    void schemePreviewAndApply()
    {
        OptionsFixture f;
        Form6& form = f.form;
        form.List1->addItems({QStringLiteral("xp"), QStringLiteral("Blue"), QStringLiteral("Rose")});

        // Apply with no scheme selected keeps SchemeFile.
        f.Apply();
        QCOMPARE(f.state.settings.SchemeFile, QStringLiteral("xp.col"));

        AppState expected = f.state;
        for (const QString& name : {QStringLiteral("xp"), QStringLiteral("Rose")}) {
            QListWidgetItem* item = form.List1->findItems(name, Qt::MatchExactly).value(0);
            QVERIFY(item);
            QTest::mouseClick(form.List1->viewport(), Qt::LeftButton, {}, form.List1->visualItemRect(item).center());
            QVERIFY(LoadSchemePreview(expected, name + QStringLiteral(".col")) != 0);
            QCOMPARE(f.state.SchemeColours, expected.SchemeColours);
            QCOMPARE(form.Frame1->title(), name);
            QCOMPARE(form.palette().color(QPalette::Window), ToQColor(expected.SchemeColours[kSchemeBackground]));
            QVERIFY(
                form.grab().save(QStringLiteral(TALLYON_SCREENSHOT_DIR "/options_window_%1.png").arg(name.toLower())));
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

    // Activation shows each setting on its own sample; a swatch click with a colour picked
    // changes that sample alone; Apply stores each sample in its own setting, and the node shape.
    void samplesLoadAndApplyEachToItsOwnSetting()
    {
        AppState state;
        state.settings = FreshInstallSettings();
        Settings& s = state.settings;
        s.GridColour = RGB(11, 12, 13);
        s.ShapeColour = RGB(21, 22, 23);
        s.FontColour = RGB(31, 32, 33);
        s.UserLineColour = RGB(41, 42, 43);
        s.GridLineWidth = 4;
        s.NodeShape = 1;
        Form6 form(state);
        form.show();
        QCOMPARE(form.shape2->BorderColor(), RGB(11, 12, 13));
        QCOMPARE(form.shape2->BorderWidth(), 4);
        QCOMPARE(form.Shape1->FillColor(), RGB(21, 22, 23));
        QCOMPARE(form.Label4->palette().color(QPalette::WindowText), QColor(31, 32, 33));
        QCOMPARE(form.Shape3->FillColor(), RGB(41, 42, 43));
        QVERIFY(form.Option1->isChecked() && !form.Option2->isChecked());

        // Label1 fills the node sample, Label2 the grid line, Label3 the digits, Label5 the link.
        const QList<Colour> picked{RGB(120, 0, 0), RGB(0, 120, 0), RGB(0, 0, 120), RGB(120, 120, 0)};
        const QList<QLabel*> swatches{form.Label1, form.Label2, form.Label3, form.Label5};
        for (int i = 0; i < 4; ++i) {
            form.ColPik1->SetSelectedColour(picked[i]);
            QTest::mouseClick(swatches[i], Qt::LeftButton);
        }
        QTest::mouseClick(form.Label2, Qt::RightButton); // a wider grid line
        ClickIndicator(form.Option2);                    // Circle
        QTest::mouseClick(form.command1, Qt::LeftButton);
        QCOMPARE((QList<Colour>{s.ShapeColour, s.GridColour, s.FontColour, s.UserLineColour}), picked);
        QCOMPARE(s.GridLineWidth, 5);
        QCOMPARE(s.NodeShape, 2);
        QVERIFY(form.grab().save(QStringLiteral(TALLYON_SCREENSHOT_DIR "/options_window_samples.png")));
        ClickIndicator(form.Option1); // back to boxes
        QTest::mouseClick(form.command1, Qt::LeftButton);
        QCOMPARE(s.NodeShape, 1);
    }
};

QTEST_MAIN(OptionsWindowTest)
#include "options_window_test.moc"
