// Tests of putting a scheme on widgets: the menu bar with its menus, and the message box.
#include "shell/scheme_paint.h"
#include "ui/message_box.h"
#include "ui/msg_form.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStyleFactory>
#include <QtTest>

using namespace tallyon;

namespace {

struct MenuWindow {
    QMainWindow window;
    QMenu* file = nullptr;
    QMenu* copy = nullptr;

    MenuWindow()
    {
        file = window.menuBar()->addMenu("File");
        file->addAction("Options");
        file->addSeparator();
        file->addAction("Print");
        copy = file->addMenu("Copy to Clipboard");
        copy->addAction("Puzzle");
        copy->addAction("Solution");
        file->addSeparator();
        file->addAction("Exit");
        window.setWindowTitle("Tallyon");
        window.resize(360, 160);
    }
};

void Save(const QImage& image, const QString& name)
{
    QVERIFY(image.save(QStringLiteral(TALLYON_SCREENSHOT_DIR "/") + name));
}

// The colour most pixels of the image have: the background.
QColor MostCommon(const QImage& image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y) & 0xFFFFFF];
    QRgb best = 0;
    int most = -1;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        if (it.value() > most) {
            most = it.value();
            best = it.key();
        }
    return QColor(best);
}

// Within rounding of each other (a menu's colour passes through a lighter/darker pair).
bool Near(const QColor& a, const QColor& b)
{
    return qAbs(a.red() - b.red()) <= 2 && qAbs(a.green() - b.green()) <= 2
        && qAbs(a.blue() - b.blue()) <= 2;
}

} // namespace

class SchemePaintTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(QStyleFactory::create("Fusion")); }

    void menuBarAndMenusTakeTheColour_data()
    {
        QTest::addColumn<Colour>("colour");
        QTest::newRow("sand") << RGB(236, 200, 150);
        QTest::newRow("white") << RGB(255, 255, 255);
        QTest::newRow("yellow") << RGB(255, 255, 0);
        QTest::newRow("slate") << RGB(122, 130, 144);
    }

    void menuBarAndMenusTakeTheColour()
    {
        QFETCH(Colour, colour);
        const Colour wanted = colour;
        const QString tag = QTest::currentDataTag();
        MenuWindow w;
        w.window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w.window));
        QMenuBar* bar = w.window.menuBar();
        SetMenuColour(bar, wanted);

        QCOMPARE(bar->palette().color(QPalette::Base), ToQColor(wanted));
        for (QWidget* widget : {static_cast<QWidget*>(bar), static_cast<QWidget*>(w.file),
                                static_cast<QWidget*>(w.copy)}) {
            for (auto role : {QPalette::Window, QPalette::Button})
                QCOMPARE(widget->palette().color(role), ToQColor(wanted));
            QVERIFY(widget->autoFillBackground());
        }
        const QImage barImage = bar->grab().toImage();
        Save(barImage, "shell_menubar_" + tag + ".png");
        QCOMPARE(MostCommon(barImage), ToQColor(wanted));

        w.file->popup(w.window.mapToGlobal(QPoint(0, bar->height())));
        QVERIFY(QTest::qWaitForWindowExposed(w.file));
        const QImage menuImage = w.file->grab().toImage();
        Save(menuImage, "shell_menu_" + tag + ".png");
        QVERIFY(Near(MostCommon(menuImage), ToQColor(wanted)));
        w.copy->popup(w.window.mapToGlobal(QPoint(w.file->width(), bar->height())));
        QVERIFY(QTest::qWaitForWindowExposed(w.copy));
        QVERIFY(Near(MostCommon(w.copy->grab().toImage()), ToQColor(wanted)));
        w.copy->hide();
        w.file->hide();

        RestoreMenuColour(bar);
        const QColor platform = QApplication::palette(bar).color(QPalette::Window);
        QCOMPARE(bar->palette().color(QPalette::Window), platform);
        QCOMPARE(w.copy->palette().color(QPalette::Base), QApplication::palette(w.copy).color(QPalette::Base));
        QCOMPARE(MostCommon(bar->grab().toImage()), platform);
    }

    void messageBoxTakesTheScheme()
    {
        AppState state;
        state.SchemeColours[kSchemeBackground] = RGB(200, 220, 245);
        state.SchemeColours[kSchemeControl] = RGB(225, 236, 252);
        ApplySchemeToMessageBox(state);
        MsgForm& box = MessageForm();
        QCOMPARE(box.BackColour(), RGB(200, 220, 245));
        QCOMPARE(box.ButtonColour(), RGB(225, 236, 252));
        QCOMPARE(box.ForeColour(), fixed::DarkText);
        box.Prepare("Exit?", "vbYesNo+vbquestion");
        const QImage image = box.grab().toImage();
        Save(image, "shell_message_box_scheme.png");
        QCOMPARE(MostCommon(image), ToQColor(RGB(200, 220, 245)));
    }
};

QTEST_MAIN(SchemePaintTest)
#include "scheme_paint_test.moc"
