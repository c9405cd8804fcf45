#pragma once

#include <QSqlQuery>
#include <QString>
#include <QVariant>

namespace basix {
class SqliteDatabase;
}

/// One prepared statement on a store's connection: values are bound in order, every failure ends in
/// a Russian text.
///
/// It must be finished or gone before the transaction that it runs in commits, and gone before its
/// database closes.
class SqlStatement final
{
public:
    SqlStatement(const basix::SqliteDatabase &database, const QString &sql);

    /// A null string is stored as an empty one, so a column that must not be null takes it.
    SqlStatement &bind(const QVariant &value);
    bool isPrepared() const { return m_prepared; }
    /// False after a failure of preparing or running; error() says what. It can be run again with
    /// new values.
    bool run();
    /// Lets go of the rows.
    void finish();
    bool next();
    QVariant value(int column) const;
    QString text(int column) const;
    qint64 number(int column) const;
    int changedRows() const;
    QString error() const { return m_error; }

private:
    QSqlQuery m_query;
    QString m_error;
    bool m_prepared = false;
};
