#include "hosttest.h"

#include <molvacore/appsession.h>
#include <molvacore/userscontroller.h>

#include <basixcore/sqlitedatabase.h>

#include <QFileInfo>
#include <QSqlDatabase>
#include <QStandardPaths>
#include <QTest>
#include <QThread>

#include <memory>

class tst_DbConnector : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_host = std::make_unique<HostTest>(); }
    void cleanup();

    void modes();
    void createsTheFile();
    void defaultFile();
    void sharedConnectionIsOne();
    void sharedConnectionClosesWithTheLast();
    void privateConnectionsAreTheirOwn();
    void everyThreadHasItsOwn();
    void anotherFileIsAnotherConnection();
    void damagedFileLeavesItClosed();
    void repairedFileOpensAgain();

private:
    std::unique_ptr<HostTest> m_host;
};

void tst_DbConnector::cleanup()
{
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
    QCOMPARE(m_host->unexpectedWarnings({QStringLiteral("host database:")}), QStringList());
    m_host.reset();
}

void tst_DbConnector::modes()
{
    QCOMPARE(int(basix::BaseSqliteDbConnector::SharedConnection), 0);
    QCOMPARE(int(basix::BaseSqliteDbConnector::PrivateConnection), 1);
    QObject parent;
    auto *db = new DbConnector(DbConnector::PrivateConnection, &parent);
    QCOMPARE(db->parent(), &parent);
    QCOMPARE(db->connectionMode(), DbConnector::PrivateConnection);
    QCOMPARE(DbConnector().connectionMode(), DbConnector::SharedConnection);
}

void tst_DbConnector::createsTheFile()
{
    QVERIFY(!QFileInfo::exists(m_host->file()));
    const DbConnector db;
    QVERIFY2(db.isOpen(), qPrintable(db.lastError()));
    QVERIFY(db.lastError().isEmpty());
    QVERIFY(QFileInfo::exists(m_host->file()));
}

void tst_DbConnector::defaultFile()
{
    DbConnector::setDatabaseFile(QString());
    QCOMPARE(DbConnector::databaseFile(),
             QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                 + QStringLiteral("/host.sqlite"));
}

void tst_DbConnector::sharedConnectionIsOne()
{
    DbConnector first;
    DbConnector second;
    QCOMPARE(&first.database(), &second.database());
    QCOMPARE(QSqlDatabase::connectionNames().size(), 1);
}

void tst_DbConnector::sharedConnectionClosesWithTheLast()
{
    auto first = std::make_unique<DbConnector>();
    auto second = std::make_unique<DbConnector>();
    first.reset();
    QVERIFY(second->isOpen());
    QVERIFY(UsersController(*second).setUserFullName(AppSession(1), QStringLiteral("Кассир")));
    second.reset();
    QCOMPARE(QSqlDatabase::connectionNames().size(), 0);
    DbConnector third;
    QString name;
    QVERIFY(UsersController(third).getUserFullName(AppSession(1), name));
}

void tst_DbConnector::privateConnectionsAreTheirOwn()
{
    DbConnector shared;
    DbConnector own(DbConnector::PrivateConnection);
    DbConnector other(DbConnector::PrivateConnection);
    QVERIFY(&shared.database() != &own.database());
    QVERIFY(&own.database() != &other.database());
    QCOMPARE(QSqlDatabase::connectionNames().size(), 3);
    QString name;
    QVERIFY(UsersController(own).setUserFullName(AppSession(1), QStringLiteral("Кассир")));
    QVERIFY(UsersController(shared).getUserFullName(AppSession(1), name));
}

void tst_DbConnector::everyThreadHasItsOwn()
{
    DbConnector here;
    const basix::SqliteDatabase *there = nullptr;
    bool worked = false;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        DbConnector db;
        there = &db.database();
        worked = UsersController(db).setUserFullName(AppSession(2), QStringLiteral("Кассир"));
    }));
    thread->start();
    QVERIFY(thread->wait(30000));
    QVERIFY(worked);
    QVERIFY(there != &here.database());
    QString name;
    QVERIFY(UsersController(here).getUserFullName(AppSession(2), name));
}

void tst_DbConnector::anotherFileIsAnotherConnection()
{
    DbConnector first;
    const QString other = m_host->file() + QStringLiteral(".other");
    DbConnector::setDatabaseFile(other);
    DbConnector second;
    QVERIFY(&first.database() != &second.database());
    QCOMPARE(second.database().fileName(), other);
}

void tst_DbConnector::damagedFileLeavesItClosed()
{
    m_host->damage();
    QFile file(m_host->file());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    const DbConnector db;
    QVERIFY(!db.isOpen());
    QVERIFY2(db.lastError().contains(QStringLiteral("повреждён")), qPrintable(db.lastError()));
    file.seek(0);
    QCOMPARE(file.readAll(), before);
}

void tst_DbConnector::repairedFileOpensAgain()
{
    m_host->damage();
    const DbConnector closed;
    QVERIFY(!closed.isOpen());
    QVERIFY(QFile::remove(m_host->file()));
    const DbConnector open;
    QVERIFY(open.isOpen());
    QVERIFY(!closed.isOpen());
}

QTEST_GUILESS_MAIN(tst_DbConnector)
#include "tst_dbconnector.moc"
