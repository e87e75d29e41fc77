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

// The colour most pixels of the widget have: its background.
QColor Background(QWidget* widget, const QString& screenshot = {})
{
    const QImage image = widget->grab().toImage();
    if (!screenshot.isEmpty())
        image.save(QStringLiteral(TALLYON_SCREENSHOT_DIR "/") + screenshot);
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y) & 0xFFFFFF];
    return QColor(std::max_element(counts.cbegin(), counts.cend()).key());
}

// Within rounding (a menu's colour passes through a lighter/darker pair).
bool Near(const QColor& a, const QColor& b)
{
    return qAbs(a.red() - b.red()) <= 2 && qAbs(a.green() - b.green()) <= 2 && qAbs(a.blue() - b.blue()) <= 2;
}

} // namespace

class SchemePaintTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(QStyleFactory::create("Fusion")); }

    void menuBarAndMenusTakeTheColour()
    {
        const QColor sand = ToQColor(RGB(236, 200, 150));
        QMainWindow window;
        QMenuBar* bar = window.menuBar();
        QMenu* file = bar->addMenu("File");
        file->addAction("Options");
        QMenu* copy = file->addMenu("Copy to Clipboard");
        copy->addAction("Puzzle");
        file->addAction("Exit");
        window.resize(360, 160);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        SetMenuColour(bar, RGB(236, 200, 150));
        QCOMPARE(Background(bar, "shell_menubar_sand.png"), sand);
        file->popup(window.mapToGlobal(QPoint(0, bar->height())));
        QVERIFY(QTest::qWaitForWindowExposed(file));
        QVERIFY(Near(Background(file, "shell_menu_sand.png"), sand));
        QCOMPARE(copy->palette().color(QPalette::Window), sand); // submenus too
        file->hide();
    }

    void messageBoxTakesTheScheme()
    {
        AppState state;
        state.SchemeColours[kSchemeBackground] = RGB(200, 220, 245);
        state.SchemeColours[kSchemeControl] = RGB(225, 236, 252);
        ApplySchemeToMessageBox(state);
        MsgForm& box = MessageForm();
        QCOMPARE(box.ButtonColour(), RGB(225, 236, 252));
        QCOMPARE(box.ForeColour(), fixed::DarkText);
        box.Prepare("Exit?", "vbYesNo+vbquestion");
        QCOMPARE(Background(&box, "shell_message_box_scheme.png"), ToQColor(RGB(200, 220, 245)));
    }
};

QTEST_MAIN(SchemePaintTest)
#include "scheme_paint_test.moc"
