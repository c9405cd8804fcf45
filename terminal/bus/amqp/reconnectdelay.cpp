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
    const int half = step / 2;
    return half + static_cast<int>(m_random() * (step - half));
}
