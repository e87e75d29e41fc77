// Line-end tolerant reading and atomic CR LF writing of small text files.
#include "shell/text_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <new>

namespace tallyon {

namespace {

std::optional<QByteArray> Fail(FileProblem* problem, FileProblem why)
{
    if (problem)
        *problem = why;
    return std::nullopt;
}

} // namespace

std::optional<QByteArray> ReadFileBytes(const QString& path, qint64 maxBytes, FileProblem* problem)
{
    if (problem)
        *problem = FileProblem::None;
    struct stat info {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return Fail(problem, errno == ENOENT || errno == ENOTDIR ? FileProblem::Missing : FileProblem::Unreadable);
    if (!S_ISREG(info.st_mode))
        return Fail(problem, FileProblem::NotAFile);
    if (info.st_size > maxBytes)
        return Fail(problem, FileProblem::TooBig);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Fail(problem, FileProblem::Unreadable);
    try {
        // One byte past the size found, to see a file that grew past the limit meanwhile.
        QByteArray bytes = file.read(std::min<qint64>(info.st_size, maxBytes) + 1);
        if (file.error() != QFileDevice::NoError)
            return Fail(problem, FileProblem::Unreadable);
        if (bytes.size() > maxBytes)
            return Fail(problem, FileProblem::TooBig);
        return bytes;
    } catch (const std::bad_alloc&) {
        return Fail(problem, FileProblem::Unreadable);
    }
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

std::optional<QStringList> ReadTextLines(const QString& path, qint64 maxBytes, FileProblem* problem)
{
    const auto bytes = ReadFileBytes(path, maxBytes, problem);
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
    // Unbuffered, so that a failed write (a full disk) shows in write() itself; a buffered
    // one surfaced only at commit, which renamed the short temporary file over the old one.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    if (file.write(bytes) != bytes.size() || file.error() != QFileDevice::NoError) {
        file.cancelWriting(); // the temporary file goes when `file` does
        return false;
    }
    return file.commit();
}

} // namespace tallyon
