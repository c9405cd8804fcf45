#include "fakehost.h"

void FakeHost::sendMessage(QString destination, QVariant data)
{
    m_sent.append({destination, data});
}

void FakeHost::saveTemplate(Payment payment)
{
    m_templates.append(payment);
}
