// The short instructions that the main window's help button shows in the message box.
#include "shell/instructions.h"

#include "ui/message_box.h"

namespace tallyon {

QString InstructionText()
{
    const QString crlf = QStringLiteral("\r\n");
    QString text;
    text += "* Move mouse over a cell in the middle of two nodes and" + crlf;
    text += "   left click, the two nodes will be linked" + crlf;
    text += "* Right click on a link, the link will be undone" + crlf;
    text += "* Continue adding links to build a path" + crlf;
    text += "   Make sure that links are mathematically valid - like:" + crlf;
    text += "   cannot link 8,2 and 7 OR 1,3 and 9" + crlf;
    text += "   but can link 1,2 and 3 OR 9,3 and 3" + crlf;
    text += "* Click Verify button to check the solution" + crlf + crlf;
    text += "* Puzzle is solved when Start and End nodes are linked" + crlf;
    text += "   by a continuous path, the hint node is on the path" + crlf;
    text += "   and all links are mathematically valid" + crlf;
    return text;
}

void ShowInstructions() { ShowMessage(InstructionText(), QStringLiteral("vbok+vbinformation")); }

} // namespace tallyon
