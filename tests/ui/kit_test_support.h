// Helpers shared by the interface kit's tests: screenshots and acting inside modal loops.
#pragma once

#include <QDir>
#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <QtTest>

#include <functional>

namespace tallyon::test {

// Saves `picture` as <screenshot dir>/<name>.png.
inline void SaveShot(const QPixmap& picture, const QString& name)
{
    const QString dir = QStringLiteral(TALLYON_SCREENSHOT_DIR);
    QDir().mkpath(dir);
    QVERIFY2(picture.save(dir + QLatin1Char('/') + name + QStringLiteral(".png")), qPrintable(name));
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
