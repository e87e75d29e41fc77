// Fixed-size windows kept at their size where the title bar offers maximize all the same.
#include "ui/fixed_window.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QTimer>
#include <QVariant>
#include <QWidget>
#include <QWindow>

namespace tallyon {
namespace {

constexpr char kShownAnew[] = "tallyonShownAnew";

// Watches one window's states; a child of the window, so it goes with it.
class StateGuard : public QObject {
public:
    StateGuard(QWidget* window, Minimize minimize) : QObject(window), window_(window), minimize_(minimize)
    {
        window->installEventFilter(this);
        Watch();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        // The window system's window is made when the widget is first shown, and anew when
        // its flags change.
        if (watched == window_ && (event->type() == QEvent::Show || event->type() == QEvent::WinIdChange))
            Watch();
        return false;
    }

private:
    void Watch()
    {
        QWindow* handle = window_->windowHandle();
        if (handle == nullptr || handle == watched_)
            return;
        watched_ = handle;
        connect(handle, &QWindow::windowStateChanged, this, &StateGuard::StateChanged);
    }

    void StateChanged(Qt::WindowState state)
    {
        const bool unwanted = state == Qt::WindowMaximized || state == Qt::WindowFullScreen ||
                              (state == Qt::WindowMinimized && minimize_ == Minimize::Refused);
        if (!unwanted || reshowing_)
            return;
        // Qt has sent the request but not yet flushed it. The window's own state goes back at
        // once; showing the window anew, as soon as the event that asked has been handled,
        // replaces the request's surface before the compositor's answer can be taken.
        watched_->setWindowStates(Qt::WindowNoState);
        reshowing_ = true;
        QTimer::singleShot(0, this, [this] { Reshow(); });
    }

    void Reshow()
    {
        reshowing_ = false;
        if (watched_ == nullptr || !watched_->isVisible())
            return;
        // The window system's window alone: a dialog's modal wait goes on through it.
        window_->setProperty(kShownAnew, true);
        watched_->hide();
        watched_->show();
        window_->setProperty(kShownAnew, false);
    }

    QWidget* window_;
    Minimize minimize_;
    QPointer<QWindow> watched_;
    bool reshowing_ = false;
};

} // namespace

bool ShownAnew(const QWidget* window) { return window->property(kShownAnew).toBool(); }

bool TitleBarsFollowHints() { return !QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

void KeepWindowNormal(QWidget* window, Minimize minimize) { new StateGuard(window, minimize); }

void GuardFixedWindow(QWidget* window, Minimize minimize)
{
    if (!TitleBarsFollowHints())
        KeepWindowNormal(window, minimize);
}

} // namespace tallyon
