// The box button: mouse events, the pressed look, deferred redraws, saved properties.
#include "kit_test_support.h"
#include "ui/box_control.h"
#include "ui/property_bag.h"

#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

using namespace tallyon;

namespace {

using Properties = QList<std::pair<const char*, QVariant>>;

QColor ToQColor(Colour c) { return QColor(RedOf(c), GreenOf(c), BlueOf(c)); }

void ExpectProperties(const BoxControl& box, const Properties& expected)
{
    for (const auto& [name, value] : expected)
        QVERIFY2(box.property(name) == value, name);
}

} // namespace

class BoxControlTest : public QObject {
    Q_OBJECT

private slots:
    void mouseEventsCarryCodesAndTwips()
    {
        const struct {
            Qt::MouseButton button;
            Qt::KeyboardModifiers modifiers;
            QPoint at;
            int code, shift;
        } cases[] = {{Qt::LeftButton, {}, {10, 4}, 1, 0},
                     {Qt::RightButton, Qt::ShiftModifier, {30, 20}, 2, 1},
                     {Qt::MiddleButton, Qt::ControlModifier | Qt::AltModifier, {79, 32}, 4, 6}};
        for (const auto& c : cases) {
            BoxControl box;
            box.resize(80, 33);
            QSignalSpy down(&box, &BoxControl::MouseDown);
            QSignalSpy up(&box, &BoxControl::MouseUp);
            QSignalSpy clicks(&box, &BoxControl::Click);
            const QList<QVariant> expected{c.code, c.shift, float(c.at.x() * 15), float(c.at.y() * 15)};
            QTest::mousePress(&box, c.button, c.modifiers, c.at);
            QCOMPARE(down, QList<QList<QVariant>>{expected});
            QCOMPARE(up.count(), 0);
            QTest::mouseRelease(&box, c.button, c.modifiers, c.at);
            QCOMPARE(up, QList<QList<QVariant>>{expected});
            QCOMPARE(clicks.count(), c.button == Qt::LeftButton ? 1 : 0);
        }
    }

    void faceRedrawsOnPressNotOnBackColor()
    {
        BoxControl box;
        box.resize(100, 30);
        box.SetBackColor(RGB(200, 200, 200));
        box.SetCaption("Verify");
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        bool pressedAtDown = false;
        connect(&box, &BoxControl::MouseDown, this, [&] { pressedAtDown = box.Pressed(); });

        const QImage raised = box.grab().toImage();
        QTest::mousePress(&box, Qt::LeftButton, {}, QPoint(50, 15));
        const QImage pressed = box.grab().toImage();
        QVERIFY2(pressedAtDown, "the pressed look comes before MouseDown");
        QTest::mouseRelease(&box, Qt::LeftButton, {}, QPoint(50, 15));
        QCOMPARE(box.grab().toImage(), raised);
        // The bevel is inverted: the top-left edge turns from light to dark.
        QVERIFY(raised.pixelColor(0, 0).lightness() > pressed.pixelColor(0, 0).lightness());

        box.SetBackColor(RGB(200, 0, 0));
        QCOMPARE(box.grab().toImage(), raised);
        box.SetFontBold(true); // a redrawing property shows the waiting colour
        QCOMPARE(box.grab().toImage().pixelColor(4, 15), QColor(200, 0, 0));
    }

    void savedPropertiesDefaultsAndRoundTrip()
    {
        QWidget holder;
        holder.setFont(QFont("Liberation Serif", 14));
        const QColor text = QApplication::palette().color(QPalette::ButtonText);
        const uint buttonText = RGB(text.red(), text.green(), text.blue());
        BoxControl fresh(&holder);
        fresh.SetCaption("Before");
        fresh.ReadProperties(PropertyBag());
        // clang-format off
        ExpectProperties(fresh, {{"Caption", "Before"}, {"ForeColor", buttonText}, {"BackColor", buttonText},
                                 {"FontSize", 8}, {"FontBold", false}, {"FontItalic", false}, {"BorderStyle", 0},
                                 {"Enabled", true}});
        QCOMPARE(fresh.Font().family(), QString("Liberation Serif"));
        PropertyBag defaults;
        fresh.WriteProperties(defaults); // defaults are not written; the caption and the size 8 font are
        QCOMPARE(defaults.Values().keys(), (QStringList{"Caption", "Font"}));

        const Properties values{{"Caption", "Create New Puzzle"}, {"ForeColor", uint(RGB(1, 2, 3))},
                                {"BackColor", uint(RGB(250, 240, 230))}, {"FontSize", 11}, {"FontBold", true},
                                {"FontItalic", true}, {"BorderStyle", 1}, {"Enabled", false}};
        // clang-format on
        BoxControl source(&holder);
        for (const auto& [name, value] : values)
            source.setProperty(name, value);
        QPixmap picture(8, 8);
        picture.fill(Qt::red);
        source.SetPicture(picture);
        PropertyBag bag;
        source.WriteProperties(bag);
        BoxControl copy(&holder);
        copy.ReadProperties(bag);
        ExpectProperties(copy, values);
        QCOMPARE(copy.Picture().size(), QSize(8, 8));
    }

    // An XP-like, a dark and a high-contrast scheme (window, control, text colours), each with
    // two faces, saved for review: a face shows its control colour near its left edge, held or
    // not, and looks different held.
    void schemeScreenshots()
    {
        const Colour schemes[3][3] = {{RGB(236, 233, 216), RGB(245, 244, 234), RGB(20, 20, 20)},
                                      {RGB(43, 43, 48), RGB(70, 72, 80), RGB(230, 230, 230)},
                                      {RGB(0, 0, 0), RGB(255, 255, 0), RGB(0, 0, 0)}};
        QWidget sheet;
        sheet.resize(290, 150);
        BoxControl* boxes[3][2];
        for (int r = 0; r < 3; ++r) {
            auto* row = new QWidget(&sheet); // the scheme's window colour behind its buttons
            row->setGeometry(0, 50 * r, 290, 50);
            row->setAutoFillBackground(true);
            QPalette palette;
            palette.setColor(QPalette::Window, ToQColor(schemes[r][0]));
            row->setPalette(palette);
            for (int b = 0; b < 2; ++b) {
                BoxControl* box = boxes[r][b] = new BoxControl(row);
                box->setGeometry(10 + 140 * b, 8, 130, 33);
                box->SetFont(QFont("Arial", 9));
                box->SetBackColor(schemes[r][1]);
                box->SetForeColor(schemes[r][2]);
                box->SetCaption(b ? "Verify" : "Create New Puzzle");
            }
        }
        sheet.show();
        QVERIFY(QTest::qWaitForWindowExposed(&sheet));
        tallyon::test::SaveShot(sheet.grab(), "box_control_schemes");
        for (int r = 0; r < 3; ++r) {
            QTest::mousePress(boxes[r][1], Qt::LeftButton, {}, QPoint(60, 16));
            const QImage held = boxes[r][1]->grab().toImage();
            QTest::mouseRelease(boxes[r][1], Qt::LeftButton, {}, QPoint(60, 16));
            const QImage up = boxes[r][1]->grab().toImage();
            QCOMPARE(up.pixelColor(6, 4), ToQColor(schemes[r][1]));
            QCOMPARE(held.pixelColor(6, 4), ToQColor(schemes[r][1]));
            QVERIFY(up != held);
        }
    }
};

QTEST_MAIN(BoxControlTest)
#include "box_control_test.moc"
