#include "messagelog.h"

#include <QMutex>
#include <QMutexLocker>

namespace {

struct State
{
    QMutex mutex;
    QVector<MessageLog::Message> messages;
    QtMessageHandler previous = nullptr;
    bool active = false;
};

State &state()
{
    static State instance;
    return instance;
}

} // namespace

MessageLog::MessageLog()
{
    Q_ASSERT_X(!state().active, "MessageLog", "one log at a time");
    clear();
    state().active = true;
    state().previous = qInstallMessageHandler(&MessageLog::handle);
}

MessageLog::~MessageLog()
{
    qInstallMessageHandler(state().previous);
    state().active = false;
    clear();
}

void MessageLog::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    State &s = state();
    {
        QMutexLocker lock(&s.mutex);
        s.messages.append({type, text, QString::fromLatin1(context.category),
                           QString::fromUtf8(context.file), QString::fromUtf8(context.function),
                           context.line});
    }
    if (s.previous)
        s.previous(type, context, text);
}

QVector<MessageLog::Message> MessageLog::messages() const
{
    QMutexLocker lock(&state().mutex);
    return state().messages;
}

int MessageLog::count(QtMsgType type, const QString &text) const
{
    int found = 0;
    for (const Message &message : messages())
        found += message.type == type && message.text == text ? 1 : 0;
    return found;
}

QVector<MessageLog::Message> MessageLog::containing(QtMsgType type, const QString &part) const
{
    QVector<Message> found;
    for (const Message &message : messages()) {
        if (message.type == type && message.text.contains(part))
            found.append(message);
    }
    return found;
}

QStringList MessageLog::unexpectedWarnings(const QStringList &allowed) const
{
    QStringList unexpected;
    for (const Message &message : messages()) {
        if (message.type == QtDebugMsg || message.type == QtInfoMsg)
            continue;
        bool known = false;
        for (const QString &part : allowed)
            known = known || message.text.contains(part);
        if (!known)
            unexpected.append(message.text);
    }
    return unexpected;
}

void MessageLog::clear()
{
    QMutexLocker lock(&state().mutex);
    state().messages.clear();
}
