// Fuzz target: the message box's style string and its layout of any text. Input: the style,
// a NUL byte, then the message. The box always offers one to three buttons and a size that
// fits a screen.
#include "ui/msg_form.h"

#include <QApplication>

#include <cstdint>
#include <cstdlib>
#include <memory>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static std::unique_ptr<QApplication> app(new QApplication(*argc, *argv));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tallyon;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const qsizetype split = bytes.indexOf('\0');
    const QString style = QString::fromUtf8(split < 0 ? bytes : bytes.left(split));
    const QString message = split < 0 ? QString() : QString::fromUtf8(bytes.mid(split + 1));
    static MsgForm form;
    form.Prepare(message, style);
    if (form.LastButton < 0 || form.LastButton > 2 || form.width() > 20000 || form.height() > 20000)
        std::abort();
    return 0;
}
