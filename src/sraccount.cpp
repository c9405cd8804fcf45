#include "sraccount.h"

#include "srjson.h"
#include "srvalues.h"

const QString SRAccount::FIELD_SERVICES = QStringLiteral("services");
const QString SRAccount::FIELD_COUNTERS = QStringLiteral("counters");
const QString SRAccount::FIELD_FIO = QStringLiteral("fio");
const QString SRAccount::FIELD_ADDRESS = QStringLiteral("address");
const QString SRAccount::FIELD_CHARGE = QStringLiteral("charge");
const QString SRAccount::FIELD_DEBT = QStringLiteral("debt");
const QString SRAccount::FIELD_REMAINDER = QStringLiteral("remainder");
const QString SRAccount::FIELD_INN = QStringLiteral("inn");
const QString SRAccount::FIELD_TAX = QStringLiteral("tax");

QString SRAccount::fio() const
{
    return valueRead(FIELD_FIO, SrValues::text);
}

void SRAccount::setFio(const QString &fio)
{
    setValue(FIELD_FIO, fio);
}

QString SRAccount::address() const
{
    return valueRead(FIELD_ADDRESS, SrValues::text);
}

void SRAccount::setAddress(const QString &address)
{
    setValue(FIELD_ADDRESS, address);
}

basix::FixNumber SRAccount::charge() const
{
    return valueRead(FIELD_CHARGE, SrValues::money);
}

void SRAccount::setCharge(const basix::FixNumber &charge)
{
    setValue(FIELD_CHARGE, charge.toString());
}

basix::FixNumber SRAccount::debt() const
{
    return valueRead(FIELD_DEBT, SrValues::money);
}

void SRAccount::setDebt(const basix::FixNumber &debt)
{
    setValue(FIELD_DEBT, debt.toString());
}

basix::FixNumber SRAccount::remainder() const
{
    return valueRead(FIELD_REMAINDER, SrValues::money);
}

void SRAccount::setRemainder(const basix::FixNumber &remainder)
{
    setValue(FIELD_REMAINDER, remainder.toString());
}

basix::FixNumber SRAccount::tax() const
{
    return valueRead(FIELD_TAX, SrValues::money);
}

void SRAccount::setTax(const basix::FixNumber &tax)
{
    setValue(FIELD_TAX, tax.toString());
}

QString SRAccount::inn() const
{
    return valueRead(FIELD_INN, SrValues::text);
}

void SRAccount::setInn(const QString &inn)
{
    setValue(FIELD_INN, inn);
}

QString SRAccount::toJsonParamsList() const
{
    return QString::fromUtf8(SrJson::compact(toPayParamsList()));
}

bool SRAccount::operator==(const SRAccount &other) const
{
    return SrObject::operator==(other) && m_accountNumber == other.m_accountNumber;
}
