// The colour picker: swatches set the bars and the chosen colour; the bars set the preview.
#include "ui/col_pik.h"
#include "kit_test_support.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest>

using namespace tallyon;
using tallyon::test::SaveShot;

class ColPikTest : public QObject {
    Q_OBJECT

private slots:
    void swatchClickSetsBarsAndColour_data();
    void swatchClickSetsBarsAndColour();
    void barsUpdatePreviewAndValues();
    void screenshot();
};

void ColPikTest::swatchClickSetsBarsAndColour_data()
{
    QTest::addColumn<int>("swatch");
    QTest::addColumn<int>("red");
    QTest::addColumn<int>("green");
    QTest::addColumn<int>("blue");
    QTest::newRow("maroon") << 1 << 128 << 0 << 0;
    QTest::newRow("navy") << 4 << 0 << 0 << 128;
    QTest::newRow("silver") << 7 << 192 << 192 << 192;
    QTest::newRow("red") << 9 << 255 << 0 << 0;
    QTest::newRow("aqua") << 14 << 0 << 255 << 255;
    QTest::newRow("white") << 15 << 255 << 255 << 255;
}

void ColPikTest::swatchClickSetsBarsAndColour()
{
    QFETCH(int, swatch);
    QFETCH(int, red);
    QFETCH(int, green);
    QFETCH(int, blue);

    ColPik picker;
    picker.show();
    QVERIFY(QTest::qWaitForWindowExposed(&picker));
    QSignalSpy changed(&picker, &ColPik::ColourChanged);
    QTest::mouseClick(picker.Swatch(swatch), Qt::LeftButton);
    QCOMPARE(picker.Bar(0)->value(), red);
    QCOMPARE(picker.Bar(1)->value(), green);
    QCOMPARE(picker.Bar(2)->value(), blue);
    QCOMPARE(picker.SelectedColour(), RGB(red, green, blue));
    QCOMPARE(picker.property("SelectedColour").toUInt(), RGB(red, green, blue));
    QCOMPARE(changed.count(), 1);  // one change for the whole swatch, not one per bar
    QCOMPARE(changed.first().first().toUInt(), RGB(red, green, blue));
}

void ColPikTest::barsUpdatePreviewAndValues()
{
    ColPik picker;
    picker.SetSelectedColour(RGB(10, 20, 30));
    QSignalSpy changed(&picker, &ColPik::ColourChanged);
    picker.Bar(1)->setValue(200);
    QCOMPARE(picker.SelectedColour(), RGB(10, 200, 30));
    QCOMPARE(picker.Preview()->palette().color(QPalette::Window), QColor(10, 200, 30));
    QCOMPARE(picker.findChild<QLabel*>("value1")->text(), QString("200"));
    QCOMPARE(picker.findChild<QLabel*>("value0")->text(), QString("10"));
    QCOMPARE(changed.count(), 1);

    picker.Bar(2)->triggerAction(QAbstractSlider::SliderPageStepAdd);
    QCOMPARE(BlueOf(picker.SelectedColour()), 30 + picker.Bar(2)->pageStep());
    picker.Bar(0)->setValue(999);
    QCOMPARE(RedOf(picker.SelectedColour()), 255);
}

void ColPikTest::screenshot()
{
    ColPik picker;
    picker.SetColours(RGB(236, 233, 216), RGB(245, 244, 234));
    picker.SetSelectedColour(RGB(20, 120, 200));
    picker.show();
    QVERIFY(QTest::qWaitForWindowExposed(&picker));
    QCOMPARE(picker.size(), QSize(300, 150));
    SaveShot(picker.grab(), "col_pik");
}

QTEST_MAIN(ColPikTest)
#include "col_pik_test.moc"
