// The print module: the only code that uses Qt's print support.
//
// The program loads it from the plugins folder beside it when a page is printed, so that
// the print support library and its relocations stay out of memory for a whole evening's
// play without printing. Tests link the same code as a static library.
//
// Contract of TallyonSendPage: sends the page to the system's default printer without a
// dialog, or, with no default printer, writes it as a PDF file at pdfPath. printerName
// receives the printer's name, or stays empty for the PDF. False when painting could not start
// or the document could not be finished.
#pragma once

#include "output/page_painter.h"

#include <QString>

class QPrinter;

namespace tallyon {

// The module, relative to the executable's folder.
inline constexpr char kPrintModuleFile[] = "plugins/tallyon-print.so";
inline constexpr char kSendPageSymbol[] = "TallyonSendPage";

// Begins a painter on the printer, lets the page paint, and ends the document.
bool PrintPage(QPrinter& printer, const PagePainter& page);

} // namespace tallyon

extern "C" bool TallyonSendPage(const tallyon::PagePainter& page, const QString& pdfPath, QString& printerName);
