// Fixed-size windows where the title bar offers maximize and minimize whatever the window asks
// (Qt's own title bars on Wayland), and the message box kept over the main window there.
#include "kit_test_support.h"
#include "ui/fixed_window.h"
#include "ui/message_box.h"
#include "ui/msg_form.h"

#include <QDialog>
#include <QSignalSpy>
#include <QWindow>
#include <QtTest>

using namespace tallyon;

namespace {

// Asks for `state` as a title bar's button does, on the window system's window, and waits
// until the window has been hidden and shown again, normal.
void AskFor(QWidget& window, Qt::WindowState state)
{
    QSignalSpy shown(window.windowHandle(), &QWindow::visibleChanged);
    window.windowHandle()->setWindowStates(state);
    QTRY_VERIFY(shown.count() >= 2);
    QTRY_VERIFY(window.isVisible() && window.windowHandle()->isVisible());
    QCOMPARE(window.windowHandle()->windowStates(), Qt::WindowStates(Qt::WindowNoState));
}

} // namespace

class FixedWindowTest : public QObject {
    Q_OBJECT

private slots:
    // A modal dialog asked to maximize, go full screen or minimize comes back at its size, and
    // its modal wait goes on until it is answered.
    void modalDialogStaysNormalAndWaiting()
    {
        QDialog dialog;
        dialog.setFixedSize(300, 200);
        KeepWindowNormal(&dialog, Minimize::Refused);
        bool checked = false;
        test::WhenShown(
            [&] { return &dialog; },
            [&] {
                for (const Qt::WindowState state : {Qt::WindowMaximized, Qt::WindowFullScreen, Qt::WindowMinimized}) {
                    AskFor(dialog, state);
                    QCOMPARE(dialog.size(), QSize(300, 200));
                }
                checked = true;
                dialog.done(42);
            });
        QCOMPARE(dialog.exec(), 42);
        QVERIFY(checked);
    }

    // A main window may be minimized; maximized it comes back at its size.
    void mainWindowMayBeMinimized()
    {
        QWidget window;
        window.setFixedSize(320, 240);
        KeepWindowNormal(&window, Minimize::Allowed);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.windowHandle()->setWindowStates(Qt::WindowMinimized);
        QTest::qWait(50);
        QCOMPARE(window.windowHandle()->windowStates(), Qt::WindowStates(Qt::WindowMinimized));
        window.windowHandle()->setWindowStates(Qt::WindowNoState);
        AskFor(window, Qt::WindowMaximized);
        QCOMPARE(window.size(), QSize(320, 240));
    }

    // Shown while the main window is on screen, the box is transient for it, so that the
    // window system keeps it over the main window; with no main window it stands alone.
    void messageBoxIsKeptOverTheMainWindow()
    {
        QWidget main;
        main.show();
        QVERIFY(QTest::qWaitForWindowExposed(&main));
        SetMessageOwner(&main);
        QWindow* over = nullptr;
        test::WhenShown([] { return &MessageForm(); },
                        [&] {
                            over = MessageForm().windowHandle()->transientParent();
                            emit MessageForm().cmd[1]->Chosen(MessageForm().cmd[1]);
                        });
        QCOMPARE(ShowMessage("Exit?", "vbyesno+vbquestion"), 7);
        QCOMPARE(over, main.windowHandle());

        SetMessageOwner(nullptr);
        test::WhenShown([] { return &MessageForm(); },
                        [&] {
                            over = MessageForm().windowHandle()->transientParent();
                            emit MessageForm().cmd[0]->Chosen(MessageForm().cmd[0]);
                        });
        QCOMPARE(ShowMessage("Done", "vbok"), 1);
        QCOMPARE(over, nullptr);
    }
};

QTEST_MAIN(FixedWindowTest)
#include "fixed_window_test.moc"
