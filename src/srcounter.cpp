#include "srcounter.h"

#include "srparamlist.h"
#include "srvalues.h"

const QString SrCounter::FIELD_ID = QStringLiteral("id");
const QString SrCounter::FIELD_NAME = QStringLiteral("name");
const QString SrCounter::FIELD_LAST_VALUE = QStringLiteral("lastvalue");
const QString SrCounter::FIELD_CUR_VALUE = QStringLiteral("currvalue");

qint64 SrCounter::id() const
{
    return valueRead(FIELD_ID, SrValues::integer);
}

void SrCounter::setId(qint64 id)
{
    setValue(FIELD_ID, QString::number(id));
}

QString SrCounter::name() const
{
    return valueRead(FIELD_NAME, SrValues::text);
}

void SrCounter::setName(const QString &name)
{
    setValue(FIELD_NAME, name);
}

qint64 SrCounter::lastValue() const
{
    return valueRead(FIELD_LAST_VALUE, SrValues::integer);
}

void SrCounter::setLastValue(qint64 value)
{
    setValue(FIELD_LAST_VALUE, QString::number(value));
}

qint64 SrCounter::curValue() const
{
    return valueRead(FIELD_CUR_VALUE, SrValues::integer);
}

void SrCounter::setCurValue(qint64 value)
{
    setValue(FIELD_CUR_VALUE, QString::number(value));
}

QVariantMap SrCounter::toParamsMap() const
{
    return SrParamList::wrapped(QStringLiteral("counter"), toPayParamsList());
}

QMap<QString, QString> SrCounter::titles() const
{
    return {{FIELD_ID, getTitle(FIELD_ID)},
            {FIELD_NAME, getTitle(FIELD_NAME)},
            {FIELD_LAST_VALUE, getTitle(FIELD_LAST_VALUE)},
            {FIELD_CUR_VALUE, getTitle(FIELD_CUR_VALUE)}};
}
