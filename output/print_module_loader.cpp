// Finding the print module: the file beside the program, or else the copy built into it.
#include "output/print_module_loader.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>

// The module's bytes, stripped, made from the built module at build time.
extern "C" const unsigned char kTallyonPrintModuleImage[];
extern "C" const std::size_t kTallyonPrintModuleImageSize;

namespace tallyon {
namespace {

// A line of the message box holds 200 characters; "Printing failed: " takes the first 17.
constexpr qsizetype kMostReasonChars = 180;

struct Opened {
    SendPageFunction send = nullptr;
    QString error;
};

Opened OpenModule(const QByteArray& path)
{
    void* handle = dlopen(path.constData(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr)
        return {nullptr, QString::fromLocal8Bit(dlerror())};
    void* symbol = dlsym(handle, kSendPageSymbol);
    if (symbol == nullptr)
        return {nullptr, QString::fromLocal8Bit(dlerror())};
    return {reinterpret_cast<SendPageFunction>(symbol), {}};
}

bool WriteAll(int fd, const unsigned char* bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = write(fd, bytes, size);
        if (written <= 0)
            return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

// The built-in copy, loaded from an anonymous in-memory file: nothing is written to disk and
// nothing is left behind. The file is closed once loaded; the loader keeps its mapping.
Opened OpenBuiltInCopy()
{
    const int fd = memfd_create("tallyon-print.so", MFD_CLOEXEC);
    if (fd < 0)
        return {nullptr, QStringLiteral("the print module is missing beside the program (%1)").arg(kPrintModuleFile)};
    Opened opened;
    if (WriteAll(fd, kTallyonPrintModuleImage, kTallyonPrintModuleImageSize))
        opened = OpenModule(QByteArray("/proc/self/fd/") + QByteArray::number(fd));
    else
        opened.error = QStringLiteral("the print module could not be unpacked");
    close(fd);
    return opened;
}

} // namespace

QString ShortLoaderReason(const QString& reason)
{
    static const QRegularExpression missing(QStringLiteral("([^\\s:/]+\\.so[.0-9]*): cannot open shared object file"));
    const QRegularExpressionMatch found = missing.match(reason);
    if (found.hasMatch())
        return QStringLiteral("the print module needs %1, which is not installed").arg(found.captured(1));
    QString line = reason.simplified();
    if (line.size() <= kMostReasonChars)
        return line;
    return line.left(kMostReasonChars - 1) + QStringLiteral("\u2026");
}

PrintModule LoadPrintModule()
{
    static PrintModule loaded;
    if (loaded.send != nullptr)
        return loaded;
    const QString file = QCoreApplication::applicationDirPath() + QStringLiteral("/") + kPrintModuleFile;
    Opened opened;
    if (QFileInfo::exists(file))
        opened = OpenModule(QFile::encodeName(file));
    if (opened.send == nullptr)
        opened = OpenBuiltInCopy();
    loaded = {opened.send, opened.send == nullptr ? ShortLoaderReason(opened.error) : QString()};
    return loaded;
}

} // namespace tallyon
