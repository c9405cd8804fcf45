#include <bus/amqp/reconnectdelay.h>

#include <QRandomGenerator>

#include <utility>

ReconnectDelay::ReconnectDelay(std::function<double()> random) : m_random(std::move(random))
{
    if (!m_random)
        m_random = [] { return QRandomGenerator::global()->generateDouble(); };
}

int ReconnectDelay::next()
{
    const int step = m_step;
    m_step = qMin(m_step * 2, LONGEST_MS);
    return step / 2 + static_cast<int>(m_random() * (step - step / 2));
}
