// Giving the message box the active scheme's colours.
#include "shell/scheme_paint.h"

#include "ui/message_box.h"
#include "ui/msg_form.h"

namespace tallyon {

void ApplySchemeToMessageBox(const AppState& state)
{
    MsgForm& box = MessageForm();
    box.SetBackColour(state.SchemeColours[kSchemeBackground]);
    box.SetButtonColour(state.SchemeColours[kSchemeControl]);
    box.SetForeColour(fixed::DarkText);
}

} // namespace tallyon
