#include <molvacore/providerscontroller.h>

#include <molvacore/dbconnector.h>
#include <molvacore/hosttables.h>

#include <basixcore/sqlitetransaction.h>

#include <QSqlQuery>

namespace {

const auto providerColumns =
    QLatin1String("id, work_provider_id, group_id, check_name, name, legal_name, inn, phones");

Provider providerOf(const QSqlQuery &query)
{
    Provider provider;
    provider.setId(query.value(0).toLongLong());
    provider.setWorkProviderId(query.value(1).toLongLong());
    provider.setGroupId(query.value(2).toLongLong());
    provider.setCheckName(query.value(3).toString());
    provider.setName(query.value(4).toString());
    provider.setLegalName(query.value(5).toString());
    provider.setInn(query.value(6).toString());
    provider.setPhones(query.value(7).toString());
    return provider;
}

/// False: the parameters could not be read. A provider with half of its parameters would lose data
/// of its payments.
bool readParameters(const DbConnector &db, Provider &provider)
{
    QSqlQuery query;
    if (!HostTables::run(
            db, query,
            QStringLiteral("SELECT name, title, value FROM provider_parameters WHERE provider = ? "
                           "ORDER BY position"),
            {provider.id()}))
        return false;
    while (query.next()) {
        provider.addParameter(ProviderParameter(
            query.value(0).toString(), query.value(1).toString(), query.value(2).toString()));
    }
    return true;
}

bool storeParameters(const DbConnector &db, const Provider &provider)
{
    int position = 0;
    const auto parameters = provider.parameters();
    for (const QSharedPointer<ProviderParameter> &parameter : parameters) {
        if (!HostTables::run(
                db, QStringLiteral("INSERT INTO provider_parameters VALUES (?, ?, ?, ?, ?)"),
                {provider.id(), position++, HostTables::text(parameter->name()),
                 HostTables::text(parameter->title()), HostTables::text(parameter->value())}))
            return false;
    }
    return true;
}

} // namespace

ProvidersController::ProvidersController(DbConnector &db) : m_db(db) {}

QList<Provider> ProvidersController::providers()
{
    QList<Provider> list;
    QSqlQuery query;
    if (!HostTables::run(
            m_db, query,
            QStringLiteral("SELECT %1 FROM providers ORDER BY id").arg(providerColumns)))
        return list;
    while (query.next()) {
        Provider provider = providerOf(query);
        if (readParameters(m_db, provider))
            list.append(provider);
    }
    return list;
}

Provider ProvidersController::provider(qint64 id)
{
    QSqlQuery query;
    if (!HostTables::run(
            m_db, query,
            QStringLiteral("SELECT %1 FROM providers WHERE id = ?").arg(providerColumns), {id})
        || !query.next())
        return Provider();
    Provider provider = providerOf(query);
    return readParameters(m_db, provider) ? provider : Provider();
}

bool ProvidersController::saveProvider(const Provider &provider)
{
    using HostTables::text;
    if (provider.id() <= 0)
        return false;
    basix::SqliteTransaction transaction(m_db.database());
    return transaction.isActive()
        && HostTables::run(
               m_db,
               QStringLiteral(
                   "INSERT INTO providers VALUES (?, ?, ?, ?, ?, ?, ?, ?) "
                   "ON CONFLICT (id) DO UPDATE SET work_provider_id = excluded.work_provider_id, "
                   "group_id = excluded.group_id, check_name = excluded.check_name, "
                   "name = excluded.name, legal_name = excluded.legal_name, "
                   "inn = excluded.inn, phones = excluded.phones"),
               {provider.id(), provider.workProviderId(), provider.groupId(),
                text(provider.checkName()), text(provider.name()), text(provider.legalName()),
                text(provider.inn()), text(provider.phones())})
        && HostTables::run(m_db,
                           QStringLiteral("DELETE FROM provider_parameters WHERE provider = ?"),
                           {provider.id()})
        && storeParameters(m_db, provider) && transaction.commit();
}
