#include <molvacore/boxinfocontroller.h>

#include <molvacore/dbconnector.h>
#include <molvacore/hosttables.h>

#include <basixcore/sqlitetransaction.h>

#include <QSqlQuery>

namespace {

bool store(const DbConnector &db, const BoxInfo &info)
{
    const basix::Currency currency = info.currency();
    return HostTables::run(
               db,
               QStringLiteral("INSERT INTO currencies (number3, code3, name) VALUES (?, ?, ?) "
                              "ON CONFLICT (number3) DO UPDATE SET code3 = excluded.code3, "
                              "name = excluded.name"),
               {currency.number3(), HostTables::text(currency.code3()),
                HostTables::text(currency.name())})
        && HostTables::run(
               db,
               QStringLiteral("INSERT INTO boxes (id, name, address, currency) VALUES (?, ?, ?, ?) "
                              "ON CONFLICT (id) DO UPDATE SET name = excluded.name, "
                              "address = excluded.address, currency = excluded.currency"),
               {info.boxId(), HostTables::text(info.name()), HostTables::text(info.address()),
                currency.number3()})
        && HostTables::setCurrent(db, QStringLiteral("box"), info.boxId());
}

} // namespace

BoxInfoController::BoxInfoController(DbConnector &db) : m_db(db) {}

BoxInfo BoxInfoController::boxInfo(bool reload)
{
    if (m_info.isValid() && !reload)
        return m_info;
    m_info = BoxInfo();
    QSqlQuery query;
    if (HostTables::run(
            m_db, query,
            QStringLiteral(
                "SELECT b.id, b.name, b.address, c.number3, c.code3, c.name FROM host_state s "
                "JOIN boxes b ON b.id = s.box JOIN currencies c ON c.number3 = b.currency"))
        && query.next()) {
        m_info.setBoxId(query.value(0).toLongLong());
        m_info.setName(query.value(1).toString());
        m_info.setAddress(query.value(2).toString());
        m_info.setCurrency(basix::Currency(query.value(3).toInt(), query.value(4).toString(),
                                           query.value(5).toString()));
    }
    return m_info;
}

bool BoxInfoController::setBoxInfo(const BoxInfo &info)
{
    m_info = BoxInfo();
    if (info == BoxInfo())
        return HostTables::setCurrent(m_db, QStringLiteral("box"), QVariant());
    if (!info.isValid())
        return false;
    basix::SqliteTransaction transaction(m_db.database());
    return transaction.isActive() && store(m_db, info) && transaction.commit();
}
