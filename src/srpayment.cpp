#include "srpayment.h"

#include <molvacore/providerparameter.h>

#include <QDateTime>
#include <QSharedPointer>

void SrPayment::fillParameters(Provider &provider, const QMap<QString, QString> &values)
{
    const QList<QSharedPointer<ProviderParameter>> parameters = provider.parameters();
    for (const QSharedPointer<ProviderParameter> &parameter : parameters) {
        const auto value = values.constFind(parameter->name());
        if (value != values.constEnd())
            parameter->setValue(*value);
    }
}

Payment SrPayment::create(const Provider &provider, const QString &account,
                          const basix::Currency &currency, const basix::FixNumber &sum)
{
    Payment payment;
    payment.setCreated(QDateTime::currentDateTime());
    payment.setProviderData(provider, true);
    payment.setAccount(account);
    payment.setCurrencyId(currency.number3());
    payment.setSumm(sum);
    return payment;
}
