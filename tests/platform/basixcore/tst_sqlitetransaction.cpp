#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqlitetransaction.h>

#include "messagelog.h"

#include <QCoreApplication>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>

using basix::SqliteDatabase;
using basix::SqliteTransaction;

namespace {

basix::SqliteSchema schema()
{
    basix::SqliteSchema wanted;
    wanted.applicationId = 7;
    wanted.title = QStringLiteral("Проверочная база");
    wanted.migrations = {
        {1,
         {QStringLiteral("CREATE TABLE sums (id INTEGER PRIMARY KEY, kopecks INTEGER NOT NULL)"),
          QStringLiteral("CREATE TABLE parts (sum INTEGER NOT NULL REFERENCES sums (id) "
                         "DEFERRABLE INITIALLY DEFERRED)")}}};
    return wanted;
}

bool insert(const SqliteDatabase &database, int id)
{
    return QSqlQuery(database.connection())
        .exec(QStringLiteral("INSERT INTO sums VALUES (%1, 100)").arg(id));
}

int count(const SqliteDatabase &database)
{
    QSqlQuery query(database.connection());
    return query.exec(QStringLiteral("SELECT count(*) FROM sums")) && query.next()
        ? query.value(0).toInt()
        : -1;
}

/// The life of the child process: one transaction committed, the next one open when the process is
/// killed.
int dieInsideATransaction(const QString &file)
{
    SqliteDatabase database;
    if (!database.open(file, schema()))
        return 1;
    SqliteTransaction first(database);
    if (!insert(database, 1) || !first.commit())
        return 2;
    SqliteTransaction second(database);
    if (!insert(database, 2))
        return 3;
    return std::raise(SIGKILL);
}

} // namespace

class tst_SqliteTransaction : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void commitKeeps();
    void destructionUndoes();
    void rollbackUndoes();
    void innerTransactionIsNotActive();
    void failedCommitUndoes();
    void anotherConnectionWaits();
    void killedProcessKeepsWhatItCommitted();

private:
    QString path() const { return m_dir->filePath(QStringLiteral("test.sqlite")); }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<MessageLog> m_log;
    std::unique_ptr<SqliteDatabase> m_database;
};

void tst_SqliteTransaction::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_log = std::make_unique<MessageLog>();
    m_database = std::make_unique<SqliteDatabase>();
    QVERIFY(m_database->open(path(), schema()));
}

void tst_SqliteTransaction::cleanup()
{
    m_database.reset();
    QCOMPARE(m_log->unexpectedWarnings({}), QStringList());
    m_log.reset();
    m_dir.reset();
}

void tst_SqliteTransaction::commitKeeps()
{
    SqliteTransaction transaction(*m_database);
    QVERIFY(transaction.isActive());
    QVERIFY(insert(*m_database, 1));
    QVERIFY(transaction.commit());
    QVERIFY(!transaction.isActive());
    QVERIFY(!transaction.commit());
    transaction.rollback();
    QCOMPARE(count(*m_database), 1);
}

void tst_SqliteTransaction::destructionUndoes()
{
    {
        SqliteTransaction transaction(*m_database);
        QVERIFY(insert(*m_database, 1));
        QCOMPARE(count(*m_database), 1);
    }
    QCOMPARE(count(*m_database), 0);
    SqliteTransaction next(*m_database);
    QVERIFY(next.isActive());
}

void tst_SqliteTransaction::rollbackUndoes()
{
    SqliteTransaction transaction(*m_database);
    QVERIFY(insert(*m_database, 1));
    transaction.rollback();
    QVERIFY(!transaction.isActive());
    QCOMPARE(count(*m_database), 0);
}

void tst_SqliteTransaction::innerTransactionIsNotActive()
{
    SqliteTransaction outer(*m_database);
    QVERIFY(insert(*m_database, 1));
    {
        SqliteTransaction inner(*m_database);
        QVERIFY(!inner.isActive());
        QVERIFY(!inner.lastError().isEmpty());
    }
    QVERIFY(outer.commit());
    QCOMPARE(count(*m_database), 1);
}

void tst_SqliteTransaction::failedCommitUndoes()
{
    SqliteTransaction transaction(*m_database);
    QVERIFY(insert(*m_database, 1));
    QVERIFY(
        QSqlQuery(m_database->connection()).exec(QStringLiteral("INSERT INTO parts VALUES (999)")));
    QVERIFY(!transaction.commit());
    QVERIFY(!transaction.lastError().isEmpty());
    QVERIFY(!transaction.isActive());
    QCOMPARE(count(*m_database), 0);
    SqliteTransaction next(*m_database);
    QVERIFY(next.isActive());
}

void tst_SqliteTransaction::anotherConnectionWaits()
{
    SqliteDatabase second;
    QVERIFY(second.open(path(), schema()));
    QVERIFY(QSqlQuery(second.connection()).exec(QStringLiteral("PRAGMA busy_timeout=50")));
    SqliteTransaction first(*m_database);
    QVERIFY(insert(*m_database, 1));
    QCOMPARE(count(second), 0);
    {
        SqliteTransaction refused(second);
        QVERIFY(!refused.isActive());
    }
    QVERIFY(first.commit());
    SqliteTransaction taken(second);
    QVERIFY(taken.isActive());
    QCOMPARE(count(second), 1);
}

void tst_SqliteTransaction::killedProcessKeepsWhatItCommitted()
{
    m_database->close();
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--die"), path()});
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    QVERIFY2(m_database->open(path(), schema()), qPrintable(m_database->lastError()));
    QCOMPARE(count(*m_database), 1);
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1) == QLatin1String("--die"))
        return dieInsideATransaction(arguments.at(2));
    tst_SqliteTransaction test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_sqlitetransaction.moc"
