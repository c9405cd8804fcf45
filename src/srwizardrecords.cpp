#include "srwizardrecords.h"

SrWizardRecords::SrWizardRecords(const QFont &font, const basix::Currency &paymentCurrency,
                                 const basix::FixNumber &prepayAmount)
    : currency(QSharedPointer<basix::Currency>::create(paymentCurrency)),
      prepay(QSharedPointer<basix::FixNumber>::create(prepayAmount)),
      inputFont(font)
{
}

void SrWizardRecords::setProvider(const Provider &record)
{
    provider = QSharedPointer<Provider>::create(record);
    providerParams.clear();
    const auto parameters = provider->parameters();
    for (const QSharedPointer<ProviderParameter> &parameter : parameters)
        providerParams.insert(parameter->name(), *parameter);
}

void SrWizardRecords::setComProfile(const BoxComProfile &record)
{
    comProfile = QSharedPointer<BoxComProfile>::create(record);
}

void SrWizardRecords::setPayCheckProfile(const PaymentCheckProfile &record)
{
    payCheckProfile = QSharedPointer<PaymentCheckProfile>::create(record);
}

qint64 SrWizardRecords::providerId() const
{
    return provider ? provider->id() : -1;
}
