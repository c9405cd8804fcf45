#include <bus/amqp/brokersession.h>

#include <utility>

BrokerSession::BrokerSession(const BrokerAddress &address, const QString &name, Setup setup,
                             QObject *parent)
    : QObject(parent), m_address(address), m_name(name), m_setup(std::move(setup))
{
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &BrokerSession::attempt);
    connect(&m_connection, &AmqpConnection::lost, this, &BrokerSession::onLost);
}

void BrokerSession::start()
{
    m_retry.start(0);
}

void BrokerSession::attempt()
{
    emit connecting();
    if (!m_connection.open(m_address, m_name) || !m_setup(m_connection)) {
        const QString reason = m_connection.lastError();
        m_connection.close();
        wait(reason);
        return;
    }
    m_up = true;
    m_upSince.start();
    qInfo("Message broker %s: connected", qUtf8Printable(m_address.toDisplayString()));
    emit up();
}

void BrokerSession::onLost(const QString &reason)
{
    // A failure during the setup is the setup's own result.
    if (!m_up)
        return;
    m_up = false;
    if (m_upSince.hasExpired(PROVEN_MS))
        m_delay.reset();
    wait(reason);
}

void BrokerSession::wait(const QString &reason)
{
    const int pause = m_delay.next();
    qWarning("Message broker %s: %s; next attempt in %d ms",
             qUtf8Printable(m_address.toDisplayString()), qUtf8Printable(reason), pause);
    m_retry.start(pause);
    emit down(reason, pause);
}
