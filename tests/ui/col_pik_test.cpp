// The colour picker: swatches set the bars and the chosen colour; the bars set the preview.
#include "kit_test_support.h"
#include "ui/col_pik.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest>

using namespace tallyon;

class ColPikTest : public QObject {
    Q_OBJECT

private slots:
    void swatchClickSetsBarsAndColour()
    {
        ColPik picker;
        picker.show();
        QVERIFY(QTest::qWaitForWindowExposed(&picker));
        // Maroon, silver, aqua.
        const struct {
            int swatch, red, green, blue;
        } swatches[] = {{1, 128, 0, 0}, {7, 192, 192, 192}, {14, 0, 255, 255}};
        for (const auto& s : swatches) {
            QSignalSpy changed(&picker, &ColPik::ColourChanged);
            QTest::mouseClick(picker.Swatch(s.swatch), Qt::LeftButton);
            QCOMPARE((QList<int>{picker.Bar(0)->value(), picker.Bar(1)->value(), picker.Bar(2)->value()}),
                     (QList<int>{s.red, s.green, s.blue}));
            QCOMPARE(picker.SelectedColour(), RGB(s.red, s.green, s.blue));
            QCOMPARE(changed.count(), 1); // one change for the whole swatch, not one per bar
        }
    }

    void barsUpdatePreviewAndValues()
    {
        ColPik picker;
        picker.SetSelectedColour(RGB(10, 20, 30));
        QSignalSpy changed(&picker, &ColPik::ColourChanged);
        picker.Bar(1)->setValue(200);
        QCOMPARE(picker.SelectedColour(), RGB(10, 200, 30));
        QCOMPARE(picker.Preview()->palette().color(QPalette::Window), QColor(10, 200, 30));
        QCOMPARE(picker.findChild<QLabel*>("value1")->text(), QString("200"));
        QCOMPARE(changed.count(), 1);
    }

    void screenshot()
    {
        ColPik picker;
        picker.SetColours(RGB(236, 233, 216), RGB(245, 244, 234));
        picker.SetSelectedColour(RGB(20, 120, 200));
        picker.show();
        QVERIFY(QTest::qWaitForWindowExposed(&picker));
        QCOMPARE(picker.size(), QSize(300, 150));
        tallyon::test::SaveShot(picker.grab(), "col_pik");
        // The preview shows the selected colour; the picker's ground is the back colour.
        const QImage preview = picker.Preview()->grab().toImage();
        QCOMPARE(preview.pixelColor(preview.width() / 2, preview.height() / 2), QColor(20, 120, 200));
        const QImage whole = picker.grab().toImage();
        QCOMPARE(whole.pixelColor(1, whole.height() - 2), QColor(236, 233, 216));
    }
};

QTEST_MAIN(ColPikTest)
#include "col_pik_test.moc"
