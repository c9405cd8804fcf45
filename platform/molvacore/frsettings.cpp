#include <molvacore/frsettings.h>

#include <molvacore/dbconnector.h>
#include <molvacore/hosttables.h>

#include <QSqlQuery>

FrSettings::FrSettings()
{
    DbConnector db;
    QSqlQuery query;
    if (HostTables::run(
            db, query,
            QStringLiteral("SELECT inn, reg_number FROM fiscal_register_settings WHERE id = 1"))
        && query.next()) {
        m_cashboxInn = query.value(0).toString();
        m_cashboxRegNumber = query.value(1).toString();
    }
}

bool FrSettings::save()
{
    DbConnector db;
    return HostTables::run(
        db,
        QStringLiteral(
            "INSERT INTO fiscal_register_settings (id, inn, reg_number) VALUES (1, ?, ?) "
            "ON CONFLICT (id) DO UPDATE SET inn = excluded.inn, "
            "reg_number = excluded.reg_number"),
        {HostTables::text(m_cashboxInn), HostTables::text(m_cashboxRegNumber)});
}
