#pragma once

#include <QString>
#include <QVariantList>

QT_BEGIN_NAMESPACE
class QSqlQuery;
QT_END_NAMESPACE

class DbConnector;

/// What the managers share in reading and writing the host's tables. A failed statement is logged
/// with its reason.
namespace HostTables {

/// A record of a table that has only an id and a name.
struct NamedRecord
{
    qint64 id = 0;
    QString name;
};

/// Runs one prepared statement on the connector's connection; false on a closed database.
bool run(const DbConnector &db, QSqlQuery &query, const QString &statement,
         const QVariantList &values = {});
/// The same for a statement whose rows nobody reads.
bool run(const DbConnector &db, const QString &statement, const QVariantList &values = {});

/// Makes the record with `id` the current one in a column of `host_state`; a null value leaves none
/// current.
bool setCurrent(const DbConnector &db, const QString &column, const QVariant &id);

/// The current record of `table`; id 0 when there is none. The column of `host_state` that points
/// at it is `column`.
NamedRecord currentRecord(const DbConnector &db, const QString &table, const QString &column);
/// Stores the record and makes it the current one; id 0 with an empty name leaves none current, any
/// other id of zero or less is refused.
bool setCurrentRecord(DbConnector &db, const QString &table, const QString &column,
                      const NamedRecord &record);

/// An empty text instead of a null one, which the tables refuse.
QString text(const QString &value);

} // namespace HostTables
