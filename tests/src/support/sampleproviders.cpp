#include "sampleproviders.h"

namespace {

Provider provider(qint64 id, const QString &checkName)
{
    Provider record;
    record.setId(id);
    record.setWorkProviderId(id);
    record.setGroupId(15);
    record.setCheckName(checkName);
    record.setName(QStringLiteral("Водоканал"));
    record.setLegalName(QStringLiteral("ООО \"Водоканал\""));
    record.setInn(QStringLiteral("7700000003"));
    record.setPhones(QStringLiteral("+7 495 0000004, +7 495 0000005"));
    const QString names[] = {QStringLiteral("account"), QStringLiteral("paydata"),
                             QStringLiteral("qrcode"), QStringLiteral("numdoc"),
                             QStringLiteral("period")};
    for (const QString &name : names)
        record.addParameter(ProviderParameter(name, name.toUpper()));
    return record;
}

} // namespace

Provider SampleProviders::individuals()
{
    return provider(18722, QStringLiteral("Вода ФЛ"));
}

Provider SampleProviders::legalEntities()
{
    return provider(18723, QStringLiteral("Вода ЮЛ"));
}
