// Fuzz target: the tallyon.cfg parser. Whatever it accepts must read back unchanged after it
// is written out again.
#include "shell/config_file.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tallyon;
    const auto settings = ParseConfig(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (!settings)
        return 0;
    const QStringList lines = FormatConfig(*settings);
    QByteArray written;
    for (const QString& line : lines)
        written += line.toUtf8() + "\r\n";
    const auto back = ParseConfig(written);
    if (!back || FormatConfig(*back) != lines)
        std::abort();
    return 0;
}
