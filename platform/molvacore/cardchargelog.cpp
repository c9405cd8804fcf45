#include <molvacore/cardchargelog.h>

#include <QMutex>
#include <QMutexLocker>

namespace {

struct Charges
{
    QMutex mutex;
    QVector<CardCharge> list;
};

Charges &all()
{
    static Charges charges;
    return charges;
}

} // namespace

CardChargeLog *CardChargeLog::instance()
{
    static CardChargeLog log;
    return &log;
}

QVector<CardCharge> CardChargeLog::charges()
{
    QMutexLocker lock(&all().mutex);
    return all().list;
}

basix::FixNumber CardChargeLog::total()
{
    basix::FixNumber sum;
    const QVector<CardCharge> all = charges();
    for (const CardCharge &charge : all)
        sum += charge.amount;
    return sum;
}

void CardChargeLog::clear()
{
    QMutexLocker lock(&all().mutex);
    all().list.clear();
}

void CardChargeLog::append(const CardCharge &charge)
{
    {
        QMutexLocker lock(&all().mutex);
        all().list.append(charge);
    }
    emit instance()->charged(charge);
}
