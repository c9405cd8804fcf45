#include "srservice.h"

#include "srparamlist.h"
#include "srvalues.h"

const QString SrService::FIELD_ID = QStringLiteral("id");
const QString SrService::FIELD_NAME = QStringLiteral("name");
const QString SrService::FIELD_CHARGE = QStringLiteral("charge");
const QString SrService::FIELD_TOPAY = QStringLiteral("topay");
const QString SrService::FIELD_DISTRIBUTED = QStringLiteral("distributed");

namespace {

// Fixed here: no descriptor tells a penalty from a service.
constexpr qint64 peniServiceId = 3924990;

} // namespace

QList<SrService> SrService::read(const QVariantList &wrappedServices)
{
    // While a record has just been parsed its fields are at hand; later each would be looked for in
    // memory again.
    return SrParamList::records<SrService>(wrappedServices,
                                           [](const SrService &service) { service.values(); });
}

const SrService::Values &SrService::values() const
{
    if (m_values.stamp != stamp()) {
        m_values.id = SrValues::integer(getValue(FIELD_ID));
        m_values.name = SrValues::text(getValue(FIELD_NAME));
        m_values.charge = Amount(SrValues::money(getValue(FIELD_CHARGE)));
        m_values.topay = Amount(SrValues::money(getValue(FIELD_TOPAY)));
        m_values.distributed = Amount(SrValues::money(getValue(FIELD_DISTRIBUTED)));
        m_values.stamp = stamp();
    }
    return m_values;
}

qint64 SrService::id() const
{
    return values().id;
}

void SrService::setId(qint64 id)
{
    setValue(FIELD_ID, QString::number(id));
}

QString SrService::name() const
{
    return values().name;
}

void SrService::setName(const QString &name)
{
    setValue(FIELD_NAME, name);
}

basix::FixNumber SrService::charge() const
{
    return values().charge.number;
}

QString SrService::chargeText() const
{
    return values().charge.text;
}

void SrService::setCharge(const basix::FixNumber &charge)
{
    setValue(FIELD_CHARGE, charge.toString());
}

basix::FixNumber SrService::topay() const
{
    return values().topay.number;
}

QString SrService::topayText() const
{
    return values().topay.text;
}

void SrService::setTopay(const basix::FixNumber &topay)
{
    setValue(FIELD_TOPAY, topay.toString());
}

basix::FixNumber SrService::distributed() const
{
    return values().distributed.number;
}

QString SrService::distributedText() const
{
    return values().distributed.text;
}

void SrService::setDistributed(const basix::FixNumber &distributed)
{
    setValue(FIELD_DISTRIBUTED, distributed.toString());
}

bool SrService::areReadyToPay(const QList<SrService> &services)
{
    bool anyDistributed = false;
    bool anyNegative = false;
    bool anyDue = false;
    for (const SrService &service : services) {
        const Values &values = service.values();
        const qint64 distributed = values.distributed.number.value();
        anyDistributed = anyDistributed || distributed > 0;
        anyNegative = anyNegative || distributed < 0;
        anyDue = anyDue || values.topay.number.value() != 0;
    }
    return (anyDistributed || !anyDue) && !anyNegative;
}

bool SrService::isPeni() const
{
    return id() == peniServiceId;
}

QVariantMap SrService::toParamMap() const
{
    return SrParamList::wrapped(QStringLiteral("service"), toPayParamsList());
}

QMap<QString, QString> SrService::titles() const
{
    return {{FIELD_ID, getTitle(FIELD_ID)},
            {FIELD_NAME, getTitle(FIELD_NAME)},
            {FIELD_CHARGE, getTitle(FIELD_CHARGE)},
            {FIELD_TOPAY, getTitle(FIELD_TOPAY)},
            {FIELD_DISTRIBUTED, getTitle(FIELD_DISTRIBUTED)}};
}
