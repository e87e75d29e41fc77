// The box button: mouse and key events, the pressed look, deferred redraws, saved properties.
#include "ui/box_control.h"
#include "ui/property_bag.h"
#include "kit_test_support.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

using namespace tallyon;
using tallyon::test::SaveShot;

namespace {

Colour SystemButtonText()
{
    const QColor c = QApplication::palette().color(QPalette::ButtonText);
    return RGB(c.red(), c.green(), c.blue());
}

// Grabbing a hidden widget sends it a resize (and so a redraw) each time; grab it shown.
QImage Face(BoxControl& box)
{
    if (!box.isVisible()) {
        box.show();
        if (!QTest::qWaitForWindowExposed(&box))
            return {};
    }
    return box.grab().toImage();
}

QColor Middle(const QImage& image, int dx = 0) { return image.pixelColor(4 + dx, image.height() / 2); }

} // namespace

class BoxControlTest : public QObject {
    Q_OBJECT

private slots:
    void mouseEventsCarryCodesAndTwips_data();
    void mouseEventsCarryCodesAndTwips();
    void keysPassedOn();
    void pressedLookWhileHeld();
    void deferredPropertiesWaitForRedraw();
    void savedPropertiesDefaultsAndRoundTrip();
    void schemeScreenshots();
};

void BoxControlTest::mouseEventsCarryCodesAndTwips_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("shift");
    QTest::addColumn<bool>("click");

    QTest::newRow("left") << Qt::LeftButton << Qt::KeyboardModifiers() << QPoint(10, 4) << 1 << 0 << true;
    QTest::newRow("right shift") << Qt::RightButton << Qt::KeyboardModifiers(Qt::ShiftModifier) << QPoint(30, 20)
                                 << 2 << 1 << false;
    QTest::newRow("middle ctrl alt") << Qt::MiddleButton
                                     << Qt::KeyboardModifiers(Qt::ControlModifier | Qt::AltModifier)
                                     << QPoint(1, 1) << 4 << 6 << false;
    QTest::newRow("left all") << Qt::LeftButton
                              << Qt::KeyboardModifiers(Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier)
                              << QPoint(79, 32) << 1 << 7 << true;
}

void BoxControlTest::mouseEventsCarryCodesAndTwips()
{
    QFETCH(Qt::MouseButton, button);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(QPoint, at);
    QFETCH(int, code);
    QFETCH(int, shift);
    QFETCH(bool, click);

    BoxControl box;
    box.resize(80, 33);
    QSignalSpy down(&box, &BoxControl::MouseDown);
    QSignalSpy up(&box, &BoxControl::MouseUp);
    QSignalSpy clicks(&box, &BoxControl::Click);
    bool pressedAtDown = false;
    connect(&box, &BoxControl::MouseDown, this, [&] { pressedAtDown = box.Pressed(); });

    QTest::mousePress(&box, button, modifiers, at);
    QCOMPARE(down.count(), 1);
    QVERIFY2(pressedAtDown, "the pressed look comes before MouseDown");
    const QList<QVariant> args = down.takeFirst();
    QCOMPARE(args.at(0).toInt(), code);
    QCOMPARE(args.at(1).toInt(), shift);
    QCOMPARE(args.at(2).toFloat(), float(at.x() * 15));
    QCOMPARE(args.at(3).toFloat(), float(at.y() * 15));
    QCOMPARE(up.count(), 0);

    QTest::mouseRelease(&box, button, modifiers, at);
    QCOMPARE(up.count(), 1);
    QVERIFY(!box.Pressed());
    QCOMPARE(up.first().at(0).toInt(), code);
    QCOMPARE(up.first().at(1).toInt(), shift);
    QCOMPARE(up.first().at(2).toFloat(), float(at.x() * 15));
    QCOMPARE(clicks.count(), click ? 1 : 0);
}

void BoxControlTest::keysPassedOn()
{
    BoxControl box;
    QSignalSpy down(&box, &BoxControl::KeyDown);
    QSignalSpy press(&box, &BoxControl::KeyPress);
    QSignalSpy up(&box, &BoxControl::KeyUp);
    QTest::keyClick(&box, Qt::Key_A);
    QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClick(&box, Qt::Key_Left, Qt::ControlModifier);
    // The modifier keys themselves come as keys too (16 shift, 17 ctrl).
    QCOMPARE(down.count(), 5);
    QCOMPARE(down.at(0), (QList<QVariant>{65, 0}));
    QCOMPARE(down.at(1), (QList<QVariant>{16, 1}));
    QCOMPARE(down.at(2), (QList<QVariant>{13, 1}));
    QCOMPARE(down.at(3), (QList<QVariant>{17, 2}));
    QCOMPARE(down.at(4), (QList<QVariant>{37, 2}));
    QCOMPARE(press.count(), 2);  // only A and Enter carry a character
    QCOMPARE(press.at(0).at(0).toInt(), int('a'));
    QCOMPARE(press.at(1).at(0).toInt(), 13);
    QCOMPARE(up.count(), 5);
    QCOMPARE(up.at(3), (QList<QVariant>{37, 2}));
}

void BoxControlTest::pressedLookWhileHeld()
{
    BoxControl box;
    box.resize(100, 30);
    box.SetBackColor(RGB(200, 200, 200));
    box.SetForeColor(RGB(0, 0, 0));
    box.SetCaption("Verify");
    const QImage raised = Face(box);
    QTest::mousePress(&box, Qt::LeftButton, {}, QPoint(50, 15));
    const QImage pressed = Face(box);
    QTest::mouseRelease(&box, Qt::LeftButton, {}, QPoint(50, 15));
    QVERIFY2(pressed != raised, "held button must look different");
    QCOMPARE(Face(box), raised);
    // The bevel is inverted: the top-left edge turns from light to dark.
    QVERIFY(raised.pixelColor(0, 0).lightness() > pressed.pixelColor(0, 0).lightness());

    QTest::mousePress(&box, Qt::RightButton, {}, QPoint(5, 5));
    QCOMPARE(Face(box), pressed);
    QTest::mouseRelease(&box, Qt::RightButton, {}, QPoint(5, 5));
}

void BoxControlTest::deferredPropertiesWaitForRedraw()
{
    BoxControl box;
    box.resize(90, 30);
    box.SetBackColor(RGB(255, 255, 255));
    box.SetCaption("New");
    const QImage before = Face(box);
    QCOMPARE(Middle(before), QColor(255, 255, 255));

    QSignalSpy changed(&box, &BoxControl::PropertyChanged);
    box.SetBackColor(RGB(200, 0, 0));
    QCOMPARE(Face(box), before);
    box.SetBorderStyle(1);
    QCOMPARE(Face(box), before);
    box.SetEnabled(false);
    QCOMPARE(Face(box), before);
    QCOMPARE(box.property("BackColor").toUInt(), RGB(200, 0, 0));

    box.setProperty("BackColor", uint(RGB(0, 0, 200)));
    QCOMPARE(Face(box), before);
    box.SetFontBold(true);
    QCOMPARE(Middle(Face(box)), QColor(0, 0, 200));
    box.SetBackColor(RGB(0, 150, 0));
    box.resize(95, 30);
    QCOMPARE(Middle(Face(box)), QColor(0, 150, 0));

    QStringList names;
    for (const QList<QVariant>& args : changed)
        names << args.at(0).toString();
    QCOMPARE(names, (QStringList{"BackColor", "BorderStyle", "Enabled", "BackColor", "FontBold", "BackColor"}));
}

void BoxControlTest::savedPropertiesDefaultsAndRoundTrip()
{
    QWidget holder;
    holder.setFont(QFont("Liberation Serif", 14));
    BoxControl fresh(&holder);
    QCOMPARE(fresh.BorderStyle(), 0);
    const QColor face = QApplication::palette().color(QPalette::Button);
    QCOMPARE(fresh.BackColor(), RGB(face.red(), face.green(), face.blue()));

    fresh.SetCaption("Before");
    fresh.ReadProperties(PropertyBag());
    QCOMPARE(fresh.ForeColor(), SystemButtonText());
    QCOMPARE(fresh.BackColor(), SystemButtonText());
    QCOMPARE(fresh.Caption(), QString("Before"));
    QCOMPARE(fresh.Font().family(), QString("Liberation Serif"));
    QCOMPARE(fresh.FontSize(), 8);
    QVERIFY(!fresh.FontBold() && !fresh.FontItalic() && fresh.Enabled());

    BoxControl source(&holder);
    source.SetCaption("Create New Puzzle");
    source.SetForeColor(RGB(1, 2, 3));
    source.SetBackColor(RGB(250, 240, 230));
    source.SetFontSize(11);
    source.SetFontBold(true);
    source.SetFontItalic(true);
    source.SetBorderStyle(1);
    source.SetEnabled(false);
    source.SetToolTipText("Makes a puzzle");
    QPixmap picture(8, 8);
    picture.fill(Qt::red);
    source.SetPicture(picture);
    PropertyBag bag;
    source.WriteProperties(bag);
    QCOMPARE(bag.Read("ToolTipText1", QString()).toString(), QString("Makes a puzzle"));
    QCOMPARE(bag.Read("FontBold", 0).toInt(), 1);

    BoxControl copy(&holder);
    copy.ReadProperties(bag);
    QCOMPARE(copy.Caption(), QString("Create New Puzzle"));
    QCOMPARE(copy.ForeColor(), RGB(1, 2, 3));
    QCOMPARE(copy.BackColor(), RGB(250, 240, 230));
    QCOMPARE(copy.FontSize(), 11);
    QVERIFY(copy.FontBold() && copy.FontItalic());
    QCOMPARE(copy.BorderStyle(), 1);
    QVERIFY(!copy.Enabled());
    QCOMPARE(copy.Picture().size(), QSize(8, 8));

    PropertyBag defaults;
    fresh.WriteProperties(defaults);  // at their defaults but the caption and the font's size
    QCOMPARE(defaults.Values().keys(), (QStringList{"Caption", "Font"}));
}

void BoxControlTest::schemeScreenshots()
{
    struct Scheme {
        const char* name;
        Colour window, control, text;
    };
    const Scheme schemes[] = {{"xp", RGB(236, 233, 216), RGB(245, 244, 234), RGB(20, 20, 20)},
                              {"dark", RGB(43, 43, 48), RGB(70, 72, 80), RGB(230, 230, 230)},
                              {"high contrast", RGB(0, 0, 0), RGB(255, 255, 0), RGB(0, 0, 0)}};
    QWidget sheet;
    auto* rows = new QVBoxLayout(&sheet);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    QList<BoxControl*> held;
    for (const Scheme& s : schemes) {
        auto* row = new QWidget;
        row->setAutoFillBackground(true);
        QPalette pal = row->palette();
        pal.setColor(QPalette::Window, QColor(RedOf(s.window), GreenOf(s.window), BlueOf(s.window)));
        pal.setColor(QPalette::WindowText, QColor(RedOf(s.text), GreenOf(s.text), BlueOf(s.text)));
        if (s.window == RGB(0, 0, 0))
            pal.setColor(QPalette::WindowText, Qt::white);
        row->setPalette(pal);
        auto* line = new QHBoxLayout(row);
        line->addWidget(new QLabel(QString::fromLatin1(s.name)));
        for (const char* caption : {"Create New Puzzle", "Verify"}) {
            auto* box = new BoxControl;
            box->setFixedSize(130, 33);
            box->SetFont(QFont("Arial"));
            box->SetFontSize(9);
            box->SetBackColor(s.control);
            box->SetForeColor(s.text);
            box->SetCaption(caption);
            line->addWidget(box);
            if (QByteArray(caption) == "Verify")
                held << box;
        }
        rows->addWidget(row);
    }
    sheet.resize(400, 150);
    sheet.show();
    QVERIFY(QTest::qWaitForWindowExposed(&sheet));
    for (BoxControl* box : held)
        QTest::mousePress(box, Qt::LeftButton, {}, QPoint(60, 16));
    SaveShot(sheet.grab(), "box_control_schemes");
    for (BoxControl* box : held)
        QTest::mouseRelease(box, Qt::LeftButton, {}, QPoint(60, 16));
}

QTEST_MAIN(BoxControlTest)
#include "box_control_test.moc"
