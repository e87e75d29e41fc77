// The short instructions that the main window's help button shows in the message box.
#pragma once

#include <QString>

namespace tallyon {

// The eleven instruction lines, each followed by CR LF, with one empty line after the
// "Click Verify" line.
QString InstructionText();

// Shows InstructionText() through ShowMessage with the style "vbok+vbinformation".
void ShowInstructions();

} // namespace tallyon
