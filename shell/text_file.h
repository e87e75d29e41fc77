// Reading and writing the program's small text files (settings and colour schemes).
//
// Files are read as bytes and decoded as UTF-8; any of CR LF, LF or CR ends a line and no CR
// is ever kept. Files are written with CR LF line ends through a temporary file in the same
// directory that is renamed over the old file, so a reader never sees a half-written file.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace tallyon {

// The most a settings file or the schemes file may hold; a longer one counts as damaged and
// is not read into memory. The real files hold a few dozen and a few thousand bytes.
inline constexpr qint64 kMaxSettingsFileBytes = 1LL << 20;
inline constexpr qint64 kMaxSchemesFileBytes = 16LL << 20;

// What kept a file from being read.
enum class FileProblem { None, Missing, NotAFile, TooBig, Unreadable };

// The whole file, or nullopt, with the reason in *problem when given: the path names nothing
// (Missing); a directory, a FIFO or a device (NotAFile: such a file is never opened, since
// opening a FIFO would wait for a writer for ever); more than maxBytes (TooBig); no
// permission, a read error or no memory for it (Unreadable). Only the file's own size is
// allocated.
std::optional<QByteArray> ReadFileBytes(const QString& path, qint64 maxBytes, FileProblem* problem = nullptr);

// Splits a text at CR LF, LF or CR. A line end at the very end adds no empty line; an empty
// text has no lines.
QStringList SplitLines(const QString& text);

// ReadFileBytes, decoded as UTF-8 and split into lines.
std::optional<QStringList> ReadTextLines(const QString& path, qint64 maxBytes, FileProblem* problem = nullptr);

// True when path names an existing file or directory marked read-only: one with no write
// permission bit at all, or one the current user may not write. The bits are honoured even
// for a superuser, so a file marked read-only is never replaced.
bool IsMarkedReadOnly(const QString& path);

// Writes every line followed by CR LF, UTF-8 encoded, replacing the file atomically. Fails
// (false, old file untouched, no temporary left behind) when path is a directory, the file
// or its directory is marked read-only, or any step of the write fails.
bool WriteTextLines(const QString& path, const QStringList& lines);

} // namespace tallyon
