// Fuzz target: the numeric text fields (a label's tag, the print line entry, colour channels).
#include "play/play_text.h"
#include "shell/options_form.h"
#include "shell/schemes.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tallyon;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    (void)NumberFromText(bytes);
    const QString text = QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
    if (PrintLineWidthFromText(text) < 1)
        std::abort();
    if (std::isnan(LeadingValue(text)))
        std::abort();
    const int channel = SchemeChannelValue(text);
    if (channel < 0 || channel > 255)
        std::abort();
    return 0;
}
