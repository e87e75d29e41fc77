// Finds the running executable's directory.
#include "shell/app_dir.h"

#include "shell/text_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace tallyon {

namespace {

QString ExecutablePath()
{
    if (QCoreApplication::instance() != nullptr) {
        QString path = QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
        if (!path.isEmpty())
            return path;
    }
    return QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
}

} // namespace

QString SettingsDir(const QString& appDir)
{
    if (!IsMarkedReadOnly(appDir) && QFileInfo(appDir).isWritable())
        return appDir;
    QString dir = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/tallyon/");
    QDir().mkpath(dir);
    return dir;
}

QString ApplicationDir()
{
    const QString exe = ExecutablePath();
    QString dir = exe.isEmpty() ? QDir::currentPath() : QFileInfo(exe).absolutePath();
    if (!dir.endsWith(QLatin1Char('/')))
        dir += QLatin1Char('/');
    return dir;
}

} // namespace tallyon
