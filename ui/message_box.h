// The program's message box: ShowMessage(message, style) -> answer code (platform/answer_codes.h).
//
// The style is keywords joined by "+" ("vbyesno+vbquestion"), case-insensitive. The box is
// created on first use and kept; its Result survives between calls.
#pragma once

#include "platform/colour.h"

#include <QString>

#include <functional>

class QWidget;

namespace tallyon {

class MsgForm;

// Shows the message box modally and returns the chosen button's result code.
int ShowMessage(const QString& message, const QString& style);

// The one message box, created on first use.
MsgForm& MessageForm();

// The main window, which the box is kept over while it exists (null when it goes); see
// MsgForm::SetOwner.
void SetMessageOwner(QWidget* owner);

// Test seam: when set, ShowMessage calls it instead of showing the box and returns its value.
using MessageInterceptor = std::function<int(const QString& message, const QString& style)>;
void SetMessageInterceptor(MessageInterceptor interceptor);

} // namespace tallyon
