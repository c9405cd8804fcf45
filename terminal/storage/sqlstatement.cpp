#include <storage/sqlstatement.h>

#include <basixcore/sqlitedatabase.h>

#include <QSqlDatabase>
#include <QSqlError>

SqlStatement::SqlStatement(const basix::SqliteDatabase &database, const QString &sql)
    : m_query(database.connection())
{
    if (!database.isOpen()) {
        m_error = QStringLiteral("Файл данных не открыт. Перезапустите программу.");
        return;
    }
    m_query.setForwardOnly(true);
    m_prepared = m_query.prepare(sql);
    if (!m_prepared)
        m_error = QStringLiteral("Запрос к файлу данных не подготовлен: %1")
                      .arg(m_query.lastError().text());
}

SqlStatement &SqlStatement::bind(const QVariant &value)
{
    const bool nullText = value.type() == QVariant::String && value.isNull();
    m_query.addBindValue(nullText ? QVariant(QLatin1String("")) : value);
    return *this;
}

bool SqlStatement::run()
{
    if (!m_prepared)
        return false;
    m_error.clear();
    if (m_query.exec())
        return true;
    m_error = QStringLiteral(
                  "Файл данных не прочитан или не записан: %1. Проверьте место на диске и права.")
                  .arg(m_query.lastError().text());
    return false;
}

void SqlStatement::finish()
{
    m_query.finish();
}

bool SqlStatement::next()
{
    return m_query.next();
}

QVariant SqlStatement::value(int column) const
{
    return m_query.value(column);
}

QString SqlStatement::text(int column) const
{
    return m_query.value(column).toString();
}

qint64 SqlStatement::number(int column) const
{
    return m_query.value(column).toLongLong();
}

int SqlStatement::changedRows() const
{
    return m_query.numRowsAffected();
}
