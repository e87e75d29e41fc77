// Fuzz target: reading all.col. Lines end at CR LF, LF or CR and keep neither; every colour
// field reads as a channel from 0 to 255; the scheme names come from the lines holding ".col".
#include "shell/schemes.h"
#include "shell/text_file.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tallyon;
    const QStringList lines = SplitLines(QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)));
    for (const QString& line : lines) {
        if (line.contains(QLatin1Char('\r')) || line.contains(QLatin1Char('\n')))
            std::abort();
        for (const QString& field : line.split(QLatin1Char(';'))) {
            const int channel = SchemeChannelValue(field);
            if (channel < 0 || channel > 255)
                std::abort();
        }
    }
    if (SchemeNamesIn(lines).size() > lines.size())
        std::abort();
    return 0;
}
