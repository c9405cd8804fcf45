#include "srrequest.h"

#include <molvacore/paymenti64idgenerator.h>

#include <QDataStream>
#include <QDateTime>
#include <QIODevice>

const QString SRRequest::DESTINATION = QStringLiteral("/app/box_plugin_check_pay");
const QString SRRequest::REPLY = QStringLiteral("checkPayStatus");
const QString SRRequest::GET_DATA = QStringLiteral("check");

bool SRRequest::isValid() const
{
    return m_type != NoRequest && !m_function.isEmpty() && !m_uid.isEmpty();
}

void SRRequest::generateUid(qint64 boxId)
{
    QByteArray seed;
    QDataStream stream(&seed, QIODevice::WriteOnly);
    // The time tells apart two requests with the same contents.
    stream << m_function.toUtf8() << static_cast<qint32>(m_type) << m_data << m_providerId
           << m_sum.toString() << QDateTime::currentDateTime();
    m_uid =
        QString::number(PaymentI64IdGenerator::generate(static_cast<unsigned int>(boxId), seed));
}

QVariantMap SRRequest::toMap() const
{
    QVariantMap body = m_data;
    body.insert(QStringLiteral("code"), m_function);
    body.insert(QStringLiteral("uid"), m_uid);
    body.insert(QStringLiteral("currencyId"), m_currencyId);
    body.insert(QStringLiteral("providerId"), m_providerId);
    if (m_sum.value() > 0)
        body.insert(QStringLiteral("summ"), m_sum.toDouble());
    return body;
}

bool SRRequest::operator==(const SRRequest &other) const
{
    return m_type == other.m_type && m_function == other.m_function && m_uid == other.m_uid
        && m_data == other.m_data && m_currencyId == other.m_currencyId
        && m_providerId == other.m_providerId && m_sum == other.m_sum;
}
