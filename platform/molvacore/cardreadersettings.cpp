#include <molvacore/cardreadersettings.h>

#include <molvacore/dbconnector.h>
#include <molvacore/hosttables.h>

#include <QSqlQuery>

CardReaderSettings::CardReaderSettings()
{
    DbConnector db;
    QSqlQuery query;
    if (HostTables::run(
            db, query,
            QStringLiteral("SELECT type, outcome FROM card_reader_settings WHERE id = 1"))
        && query.next()) {
        m_type = query.value(0).toInt();
        m_outcome = query.value(1).toString();
    }
}

bool CardReaderSettings::save()
{
    DbConnector db;
    return HostTables::run(
        db,
        QStringLiteral("INSERT INTO card_reader_settings (id, type, outcome) VALUES (1, ?, ?) "
                       "ON CONFLICT (id) DO UPDATE SET type = excluded.type, "
                       "outcome = excluded.outcome"),
        {m_type, HostTables::text(m_outcome)});
}
