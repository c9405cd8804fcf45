#include <molvacore/onlinekktprofilemanager.h>

#include <molvacore/dbconnector.h>
#include <molvacore/hosttables.h>

#include <basixcore/sqlitetransaction.h>

#include <QSqlQuery>

namespace {

/// Whom a record of the profile is for; `online_profile_infos.scope`.
enum class Scope : int { Default = 0, Group = 1, Provider = 2 };

OnlineKkmInfo infoOf(const QSqlQuery &query)
{
    OnlineKkmInfo info;
    info.setAdditionalProp(query.value(2).toString());
    info.setAdditionalPropValue(query.value(3).toString());
    info.setTaxSystem(static_cast<FDTax>(query.value(4).toInt()));
    info.setTaxRate(static_cast<unsigned char>(query.value(5).toUInt()));
    info.setDefaultCalcType(static_cast<PaymentMethod>(query.value(6).toInt()));
    info.setAgentSign(static_cast<AgentFlag>(query.value(7).toInt()));
    info.setPayAgentOp(query.value(8).toString());
    info.setPayAgentPhone(query.value(9).toString());
    info.setPayOperatorPhone(query.value(10).toString());
    info.setTransferOperatorAddress(query.value(11).toString());
    info.setTransferOperatorInn(query.value(12).toString());
    info.setTransferOperatorName(query.value(13).toString());
    info.setTransferOperatorPhone(query.value(14).toString());
    return info;
}

void addInfo(OnlineKkmProfile &profile, Scope scope, qint64 subject, const OnlineKkmInfo &info)
{
    switch (scope) {
    case Scope::Default:
        profile.setDefaultKkmInfo(info);
        break;
    case Scope::Group:
        profile.setGroupKkmInfo(subject, info);
        break;
    case Scope::Provider:
        profile.setProviderKkmInfo(subject, info);
        break;
    }
}

bool storeInfo(const DbConnector &db, qint64 profile, Scope scope, qint64 subject,
               const OnlineKkmInfo &info)
{
    using HostTables::text;
    return HostTables::run(db,
                           QStringLiteral("INSERT INTO online_profile_infos VALUES "
                                          "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                           {profile, static_cast<int>(scope), subject, text(info.additionalProp()),
                            text(info.additionalPropValue()), static_cast<int>(info.taxSystem()),
                            static_cast<uint>(info.taxRate()),
                            static_cast<int>(info.defaultCalcType()),
                            static_cast<int>(info.agentSign()), text(info.payAgentOp()),
                            text(info.payAgentPhone()), text(info.payOperatorPhone()),
                            text(info.transferOperatorAddress()), text(info.transferOperatorInn()),
                            text(info.transferOperatorName()), text(info.transferOperatorPhone())});
}

bool storeInfos(const DbConnector &db, const OnlineKkmProfile &profile)
{
    bool done = storeInfo(db, profile.id(), Scope::Default, 0, profile.defaultKkmInfo());
    const QMap<qint64, OnlineKkmInfo> groups = profile.groupKkmInfos();
    for (auto it = groups.cbegin(); done && it != groups.cend(); ++it)
        done = storeInfo(db, profile.id(), Scope::Group, it.key(), it.value());
    const QMap<qint64, OnlineKkmInfo> providers = profile.providerKkmInfos();
    for (auto it = providers.cbegin(); done && it != providers.cend(); ++it)
        done = storeInfo(db, profile.id(), Scope::Provider, it.key(), it.value());
    return done;
}

} // namespace

OnlineKktProfileManager::OnlineKktProfileManager(basix::BaseSqliteDbConnector::ConnectionMode mode,
                                                 QObject *parent)
    : QObject(parent), m_db(new DbConnector(mode, this))
{
}

OnlineKktProfileManager::~OnlineKktProfileManager() = default;

OnlineKkmProfile OnlineKktProfileManager::getCurrentProfile()
{
    const HostTables::NamedRecord record = HostTables::currentRecord(
        *m_db, QStringLiteral("online_profiles"), QStringLiteral("online_profile"));
    OnlineKkmProfile profile;
    QSqlQuery query;
    // A profile whose records cannot be read is no profile: its receipts would carry the wrong
    // taxes.
    if (record.id <= 0
        || !HostTables::run(
            *m_db, query,
            QStringLiteral(
                "SELECT scope, subject, additional_prop, additional_prop_value, tax_system, "
                "tax_rate, calc_type, agent_sign, pay_agent_op, pay_agent_phone, "
                "pay_operator_phone, transfer_operator_address, transfer_operator_inn, "
                "transfer_operator_name, transfer_operator_phone "
                "FROM online_profile_infos WHERE profile = ?"),
            {record.id}))
        return profile;
    profile.setId(record.id);
    profile.setName(record.name);
    while (query.next())
        addInfo(profile, static_cast<Scope>(query.value(0).toInt()), query.value(1).toLongLong(),
                infoOf(query));
    return profile;
}

bool OnlineKktProfileManager::setCurrentProfile(const OnlineKkmProfile &profile)
{
    if (profile == OnlineKkmProfile())
        return HostTables::setCurrent(*m_db, QStringLiteral("online_profile"), QVariant());
    if (!profile.isValid())
        return false;
    basix::SqliteTransaction transaction(m_db->database());
    return transaction.isActive()
        && HostTables::run(*m_db,
                           QStringLiteral("INSERT INTO online_profiles (id, name) VALUES (?, ?) "
                                          "ON CONFLICT (id) DO UPDATE SET name = excluded.name"),
                           {profile.id(), HostTables::text(profile.name())})
        && HostTables::run(*m_db,
                           QStringLiteral("DELETE FROM online_profile_infos WHERE profile = ?"),
                           {profile.id()})
        && storeInfos(*m_db, profile)
        && HostTables::setCurrent(*m_db, QStringLiteral("online_profile"), profile.id())
        && transaction.commit();
}
