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

qint64 SrService::id() const
{
    return valueRead(FIELD_ID, SrValues::integer);
}

void SrService::setId(qint64 id)
{
    setValue(FIELD_ID, QString::number(id));
}

QString SrService::name() const
{
    return valueRead(FIELD_NAME, SrValues::text);
}

void SrService::setName(const QString &name)
{
    setValue(FIELD_NAME, name);
}

basix::FixNumber SrService::charge() const
{
    return valueRead(FIELD_CHARGE, SrValues::money);
}

QString SrService::chargeText() const
{
    return valueRead(FIELD_CHARGE, SrValues::moneyText);
}

void SrService::setCharge(const basix::FixNumber &charge)
{
    setValue(FIELD_CHARGE, charge.toString());
}

basix::FixNumber SrService::topay() const
{
    return valueRead(FIELD_TOPAY, SrValues::money);
}

QString SrService::topayText() const
{
    return valueRead(FIELD_TOPAY, SrValues::moneyText);
}

void SrService::setTopay(const basix::FixNumber &topay)
{
    setValue(FIELD_TOPAY, topay.toString());
}

basix::FixNumber SrService::distributed() const
{
    return valueRead(FIELD_DISTRIBUTED, SrValues::money);
}

QString SrService::distributedText() const
{
    return valueRead(FIELD_DISTRIBUTED, SrValues::moneyText);
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
        const qint64 distributed = service.distributed().value();
        anyDistributed = anyDistributed || distributed > 0;
        anyNegative = anyNegative || distributed < 0;
        anyDue = anyDue || service.topay().value() != 0;
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
