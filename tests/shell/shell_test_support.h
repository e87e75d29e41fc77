// Helpers for the settings-file tests: the message log, raw files and scheme blocks.
#pragma once

#include "shell/settings.h"
#include "tests/support/message_log.h"

#include <QDir>
#include <QFile>

#include <sys/resource.h>

#include <csignal>

namespace tallyon::testing {

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

// Every name in a directory, hidden ones included (a leftover temporary file shows up here).
inline QStringList DirectoryEntries(const QString& dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

// An all.col block whose entry i is RGB(base + i, 10, 20), CR LF line ends.
inline QByteArray Block(const QByteArray& name, int base)
{
    QByteArray b = name + "\r\n";
    for (int i = 0; i < 13; ++i)
        b += QByteArray::number(base + i) + ";10;20\r\n";
    return b;
}

// While alive, no file may grow past a few bytes; writes beyond fail as on a full disk, even
// for the superuser, who may write to any folder.
struct FileSizeLimit {
    FileSizeLimit()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old);
        rlimit tiny = old;
        tiny.rlim_cur = 16;
        setrlimit(RLIMIT_FSIZE, &tiny);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &old); }
    rlimit old{};
};

// A scheme table no file holds, to see which entries a load changed.
inline SchemeTable Marked()
{
    SchemeTable t;
    for (int i = 0; i < 14; ++i)
        t[i] = RGB(0, 0, 200 + i);
    return t;
}

} // namespace tallyon::testing
