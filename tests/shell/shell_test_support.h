// Helpers for the settings-file tests: capturing message boxes and handling raw files.
#pragma once

#include "ui/message_box.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>
#include <QPair>
#include <QString>

namespace tallyon::testing {

// Records every ShowMessage call while alive; the box itself is never shown.
class MessageLog {
public:
    MessageLog()
    {
        SetMessageInterceptor([this](const QString& message, const QString& style) {
            calls.append({message, style});
            return 1;
        });
    }
    ~MessageLog() { SetMessageInterceptor(nullptr); }
    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    QList<QPair<QString, QString>> calls;
};

inline bool WriteBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QByteArray ReadBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The names in a directory, hidden ones included (a leftover temporary file shows up here).
inline QStringList DirectoryEntries(const QString& dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace tallyon::testing
