// Finding the print module: the file beside the program, or else the copy built into it.
//
// Contract: LoadPrintModule returns the module's TallyonSendPage, loading it on first use. It
// tries plugins/tallyon-print.so in the executable's folder, as installed, and then the copy of
// that module the program carries (a program copied without its plugins folder still prints).
// Either way Qt's print support is loaded only then, never at start-up. When neither loads,
// it returns null with a reason short enough for one line of the message box, naming a
// library that is missing. A module once loaded stays for the session.
#pragma once

#include "output/print_module/send_page.h"

#include <QString>

namespace tallyon {

using SendPageFunction = decltype(&TallyonSendPage);

struct PrintModule {
    SendPageFunction send = nullptr;
    QString problem; // why it could not be loaded, when send is null
};

PrintModule LoadPrintModule();

// The dynamic loader's message made short: a missing library named as such, any other reason
// cut to fit beside "Printing failed: " on one line of the message box.
QString ShortLoaderReason(const QString& reason);

} // namespace tallyon
