// ShowMessage: the one message box of the program, created on first use and kept.
#include "ui/message_box.h"

#include "ui/msg_form.h"

namespace tallyon {
namespace {

MessageInterceptor& Interceptor()
{
    static MessageInterceptor interceptor;
    return interceptor;
}

} // namespace

MsgForm& MessageForm()
{
    // Kept for the whole run; it is never destroyed so that no call outlives it.
    static MsgForm* form = new MsgForm();
    return *form;
}

void SetMessageOwner(QWidget* owner) { MessageForm().SetOwner(owner); }

int ShowMessage(const QString& message, const QString& style)
{
    if (Interceptor())
        return Interceptor()(message, style);
    return MessageForm().Run(message, style);
}

void SetMessageInterceptor(MessageInterceptor interceptor) { Interceptor() = std::move(interceptor); }

} // namespace tallyon
