#include "station.h"

#include "hoststation.h"

#include <molvacore/dbconnector.h>
#include <molvacore/fiscaltypes.h>

namespace {

void ensureDatabase()
{
    static const HostStation station;
    static const DbConnector held;
}

} // namespace

basix::Currency Station::roubles()
{
    return HostStation::roubles();
}

QSharedPointer<Provider> Station::provider()
{
    ensureDatabase();
    return HostStation::provider();
}

OnlineKkmInfo Station::profile(quint64 choice)
{
    constexpr int signs[] = {0, 1, 2, 4, 8, 16, 32, 64, 3};
    OnlineKkmInfo info = HostStation::profile();
    info.setAgentSign(static_cast<AgentFlag>(signs[choice % (sizeof(signs) / sizeof(signs[0]))]));
    return info;
}

QVariantList Station::fiscalProperties()
{
    const auto property = [](int tag, const QString &value) {
        return QVariantMap{{QStringLiteral("tag"), tag}, {QStringLiteral("value"), value}};
    };
    return {property(1012, QStringLiteral("2026-01-15T10:30:00")),
            property(1196,
                     QStringLiteral("t=20260115T1030&s=1500.00&fn=0000000000000001&i=42"
                                    "&fp=1234567890&n=1"))};
}

QString Station::parameter(const Payment &payment, const QString &name)
{
    const auto parameters = payment.providerData().parameters();
    for (const QSharedPointer<ProviderParameter> &parameter : parameters) {
        if (parameter->name() == name)
            return parameter->value();
    }
    return {};
}
