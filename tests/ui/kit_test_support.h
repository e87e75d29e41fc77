// Helpers shared by the interface kit's tests: screenshots and acting inside modal loops.
#pragma once

#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <QtTest>

#include <functional>

namespace tallyon::test {

// Saves `picture` as <screenshot dir>/<name>.png.
inline void SaveShot(const QPixmap& picture, const QString& name)
{
    const QString file = QStringLiteral(TALLYON_SCREENSHOT_DIR "/") + name + QStringLiteral(".png");
    QVERIFY2(picture.save(file), qPrintable(file));
}

// Runs `action` once `widget()` is visible, from inside the modal loop about to start.
inline void WhenShown(std::function<QWidget*()> widget, std::function<void()> action)
{
    auto* timer = new QTimer;
    timer->setInterval(5);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, widget, action] {
        QWidget* w = widget();
        if (!w || !w->isVisible())
            return;
        timer->stop();
        timer->deleteLater();
        action();
    });
    timer->start();
}

} // namespace tallyon::test
