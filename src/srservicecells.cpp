#include "srservicecells.h"

#include <basixcore/fixnumber.h>

namespace {

basix::FixNumber rubles(const QVariant &value)
{
    return basix::FixNumber(100, value.toDouble());
}

} // namespace

const QString &SrServiceCells::field(int cell)
{
    static const QString none;
    switch (cell) {
    case Name:
        return SrService::FIELD_NAME;
    case Charge:
        return SrService::FIELD_CHARGE;
    case ToPay:
        return SrService::FIELD_TOPAY;
    case Distributed:
        return SrService::FIELD_DISTRIBUTED;
    }
    return none;
}

QVariant SrServiceCells::text(const SrService &service, int cell)
{
    switch (cell) {
    case Name:
        return service.name();
    case Charge:
        return service.chargeText();
    case ToPay:
        return service.topayText();
    case Distributed:
        return service.distributedText();
    }
    return {};
}

QVariant SrServiceCells::value(const SrService &service, int cell)
{
    switch (cell) {
    case Name:
        return service.name();
    case Charge:
        return service.charge().toDouble();
    case ToPay:
        return service.topay().toDouble();
    case Distributed:
        return service.distributed().toDouble();
    }
    return {};
}

bool SrServiceCells::edit(SrService &service, int cell, const QVariant &value)
{
    switch (cell) {
    case Name:
        service.setName(value.toString());
        return true;
    case Charge:
        service.setCharge(rubles(value));
        return true;
    case ToPay:
        service.setTopay(rubles(value));
        return true;
    case Distributed:
        service.setDistributed(rubles(value));
        return true;
    }
    return false;
}
