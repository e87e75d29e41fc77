// Line-end tolerant reading and atomic CR LF writing of small text files.
#include "shell/text_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace tallyon {

std::optional<QByteArray> ReadFileBytes(const QString& path)
{
    QFile file(path);
    if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.read(kMaxTextFileBytes + 1);
    if (file.error() != QFileDevice::NoError || bytes.size() > kMaxTextFileBytes)
        return std::nullopt;
    return bytes;
}

QStringList SplitLines(const QString& text)
{
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text.at(i);
        if (c != QLatin1Char('\r') && c != QLatin1Char('\n'))
            continue;
        lines.append(text.mid(start, i - start));
        if (c == QLatin1Char('\r') && i + 1 < n && text.at(i + 1) == QLatin1Char('\n'))
            ++i;
        start = i + 1;
    }
    if (start < n)
        lines.append(text.mid(start));
    return lines;
}

std::optional<QStringList> ReadTextLines(const QString& path)
{
    const auto bytes = ReadFileBytes(path);
    if (!bytes)
        return std::nullopt;
    return SplitLines(QString::fromUtf8(*bytes));
}

bool IsMarkedReadOnly(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return false;
    const auto anyWrite = QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    return !(info.permissions() & anyWrite) || !info.isWritable();
}

bool WriteTextLines(const QString& path, const QStringList& lines)
{
    const QFileInfo info(path);
    if (info.isDir() || IsMarkedReadOnly(path) || IsMarkedReadOnly(info.absolutePath()))
        return false;
    QByteArray bytes;
    for (const QString& line : lines) {
        bytes += line.toUtf8();
        bytes += "\r\n";
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();   // the temporary file goes when `file` does
        return false;
    }
    return file.commit();
}

} // namespace tallyon
