#include <bus/inprocessbus.h>

#include <bus/wiretext.h>

#include <QTimer>

#include <utility>

InProcessBus::InProcessBus(QObject *parent) : MessageBus(parent) {}

InProcessBus::~InProcessBus() = default;

void InProcessBus::serve(const QString &destination, Handler handler)
{
    m_handlers.insert(destination, std::move(handler));
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
    QString error;
    const std::optional<QByteArray> body = WireText::encode(data, &error);
    emit traffic({BusMessage::Direction::Outgoing,
                  QDateTime::currentDateTime(),
                  destination,
                  {},
                  body.value_or(QByteArray())});
    if (!body) {
        later(0, [=] { emit refused(destination, data, error); });
        return;
    }
    later(m_delay, [this, destination, data, text = *body] { arrive(destination, data, text); });
}

void InProcessBus::later(int milliseconds, std::function<void()> call)
{
    // A posted event costs a fraction of a timer.
    if (milliseconds == 0)
        QMetaObject::invokeMethod(this, std::move(call), Qt::QueuedConnection);
    else
        QTimer::singleShot(milliseconds, this, std::move(call));
}

void InProcessBus::arrive(const QString &destination, const QVariant &data, const QByteArray &body)
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
    const std::optional<QVariantMap> message = WireText::decode(body, &error);
    if (!message) {
        emit refused(destination, data, error);
        return;
    }
    const Outcome outcome = handler(*message);
    if (outcome.refusal.isEmpty())
        emit accepted(destination, data);
    else
        emit refused(destination, data, outcome.refusal);
    QVector<Answer> answers = outcome.others;
    if (outcome.answer)
        answers.prepend(*outcome.answer);
    for (const Answer &reply : qAsConst(answers))
        later(m_delay + reply.delay, [this, reply] { answer(reply); });
}

void InProcessBus::answer(const Answer &answer)
{
    if (m_connected)
        deliver(answer.headers, answer.body);
    else
        m_held.append(answer);
}
