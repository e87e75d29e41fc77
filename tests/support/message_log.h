// A stand-in for the message box in tests: records every message and answers it.
#pragma once

#include "ui/message_box.h"

#include <QList>
#include <QPair>
#include <QStringList>

namespace tallyon::testing {

using Messages = QList<QPair<QString, QString>>; // (text, style) of each box

// Records every ShowMessage call while alive and answers it with `next`; the box itself is
// never shown.
struct MessageLog {
    explicit MessageLog(int answer = 1) : next(answer)
    {
        SetMessageInterceptor([this](const QString& text, const QString& style) {
            calls.append({text, style});
            return next;
        });
    }
    ~MessageLog() { SetMessageInterceptor(nullptr); }
    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    // The texts alone, in order.
    QStringList Texts() const
    {
        QStringList texts;
        for (const auto& call : calls)
            texts << call.first;
        return texts;
    }

    Messages calls;
    int next;
};

} // namespace tallyon::testing
