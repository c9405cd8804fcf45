#include <bus/inprocessbus.h>

#include <bus/crossedfields.h>
#include <bus/wiretext.h>

#include <QTimer>

#include <utility>

template<typename Call>
void InProcessBus::later(int milliseconds, Call &&call)
{
    // A posted event costs a fraction of a timer.
    if (milliseconds == 0)
        QMetaObject::invokeMethod(this, std::forward<Call>(call), Qt::QueuedConnection);
    else
        QTimer::singleShot(milliseconds, this, std::forward<Call>(call));
}

InProcessBus::InProcessBus(QObject *parent) : MessageBus(parent) {}

InProcessBus::~InProcessBus() = default;

void InProcessBus::serve(const QString &destination, Handler handler)
{
    m_handlers[destination] = std::move(handler);
}

void InProcessBus::withdraw(const QString &destination)
{
    m_handlers.remove(destination);
}

void InProcessBus::setDelay(int milliseconds)
{
    m_delay = qMax(0, milliseconds);
}

void InProcessBus::setConnected(bool connected)
{
    if (connected == m_connected)
        return;
    m_connected = connected;
    emit stateChanged(connected);
    if (!connected)
        return;
    const QVector<Answer> held = std::exchange(m_held, {});
    for (const Answer &late : held)
        later(0, [this, late] { answer(late); });
}

bool InProcessBus::connected() const
{
    return m_connected;
}

QString InProcessBus::stateText() const
{
    return m_connected ? QStringLiteral("Связь с процессингом есть (внутри программы)")
                       : QStringLiteral("Связи с процессингом нет");
}

void InProcessBus::sendMessage(const QString &destination, const QVariant &data)
{
    MessageBody body;
    QString error;
    if (const std::optional<QVariantMap> fields = CrossedFields::of(data))
        body = MessageBody::ofFields(*fields);
    else
        body = WireText::encode(data, &error).value_or(QByteArray());
    noteSent(destination, body);
    if (error.isEmpty())
        later(m_delay, [this, destination, data, body] { arrive(destination, data, body); });
    else
        later(0, [this, destination, data, error] { emit refused(destination, data, error); });
}

void InProcessBus::arrive(const QString &destination, const QVariant &data, const MessageBody &body)
{
    if (!m_connected) {
        emit refused(destination, data,
                     QStringLiteral("Связи с процессингом нет. Сообщение будет отправлено позже."));
        return;
    }
    const Handler handler = m_handlers.value(destination);
    if (!handler) {
        emit refused(destination, data,
                     QStringLiteral("Адрес «%1» никто не обслуживает. Обратитесь в поддержку.")
                         .arg(destination));
        return;
    }
    QString error;
    std::optional<QVariantMap> message = body.fields();
    if (!message)
        message = WireText::decode(body.bytes(), &error);
    if (!message) {
        emit refused(destination, data, error);
        return;
    }
    const Outcome outcome = handler(*message);
    if (outcome.refusal.isEmpty())
        emit accepted(destination, data);
    else
        emit refused(destination, data, outcome.refusal);
    if (outcome.answer)
        reply(*outcome.answer);
    for (const Answer &other : outcome.others)
        reply(other);
}

void InProcessBus::reply(const Answer &answer)
{
    later(m_delay + answer.delay, [this, answer] { this->answer(answer); });
}

void InProcessBus::answer(const Answer &answer)
{
    if (m_connected)
        deliver(answer.headers, answer.body);
    else
        m_held.append(answer);
}
