#include <storage/writecheck.h>

#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqliteschema.h>
#include <basixcore/sqlitetransaction.h>

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr uid_t NOBODY = 65534;

basix::SqliteSchema schema()
{
    basix::SqliteSchema result;
    result.applicationId = 0x53524357;
    result.title = QStringLiteral("Проба");
    result.migrations = {{1, {QStringLiteral("CREATE TABLE marks (id INTEGER PRIMARY KEY)")}}};
    return result;
}

/// The superuser may write everything: while this lives, the process is somebody else.
class NotTheSuperuser final
{
public:
    NotTheSuperuser() : m_changed(::geteuid() == 0 && ::seteuid(NOBODY) == 0) {}
    ~NotTheSuperuser() { end(); }
    bool end()
    {
        const bool was = m_changed;
        m_changed = false;
        return !was || ::seteuid(0) == 0;
    }
    NotTheSuperuser(const NotTheSuperuser &) = delete;
    NotTheSuperuser &operator=(const NotTheSuperuser &) = delete;

private:
    bool m_changed;
};

} // namespace

/// Opening a database does not tell whether it can be written; this does, before money is taken.
class tst_WriteCheck : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aWritableFileIsFineAndUnchanged();
    void aFileWithoutTheRightToWriteIsNamed();
    void aFileThatAnotherConnectionHoldsIsNamed();
    void aStoreIsOpenedForWriting();
    void aFileOfAnotherProgramStaysClosed();

private:
    QString file() const { return m_folder->filePath(QStringLiteral("probe.sqlite")); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_WriteCheck::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_WriteCheck::aWritableFileIsFineAndUnchanged()
{
    basix::SqliteDatabase database;
    QVERIFY2(database.open(file(), schema()), qPrintable(database.lastError()));
    QCOMPARE(writeProblem(database), QString());
    QSqlQuery query(database.connection());
    QVERIFY(query.exec(QStringLiteral("PRAGMA user_version")) && query.next());
    QCOMPARE(query.value(0).toInt(), 1);
    query.finish();
    // It leaves no transaction behind.
    const basix::SqliteTransaction transaction(database);
    QVERIFY2(transaction.isActive(), qPrintable(transaction.lastError()));
}

void tst_WriteCheck::aFileWithoutTheRightToWriteIsNamed()
{
    {
        basix::SqliteDatabase database;
        QVERIFY(database.open(file(), schema()));
    }
    QCOMPARE(::chmod(qPrintable(m_folder->path()), 0755), 0);
    QVERIFY(QFile::setPermissions(
        file(), QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther));
    if (::geteuid() == 0) {
        // The side files of a write-ahead log can be made by whoever owns the folder.
        QCOMPARE(::chown(qPrintable(m_folder->path()), NOBODY, NOBODY), 0);
        QCOMPARE(::chown(qPrintable(file()), NOBODY, NOBODY), 0);
    }
    NotTheSuperuser nobody;
    basix::SqliteDatabase database;
    QVERIFY2(database.open(file(), schema()), qPrintable(database.lastError()));
    const QString problem = writeProblem(database);
    database.close();
    basix::SqliteDatabase wanted;
    const QString refusal = openForWriting(wanted, file(), schema());
    QVERIFY(nobody.end());
    QCOMPARE(refusal, problem);
    QVERIFY(!wanted.isOpen());
    QVERIFY2(problem.contains(QStringLiteral("probe.sqlite")), qPrintable(problem));
    QVERIFY2(problem.contains(QStringLiteral("не записывается")), qPrintable(problem));
}

void tst_WriteCheck::aFileThatAnotherConnectionHoldsIsNamed()
{
    basix::SqliteDatabase holder;
    basix::SqliteDatabase database;
    QVERIFY(holder.open(file(), schema()) && database.open(file(), schema()));
    QSqlQuery impatient(database.connection());
    QVERIFY(impatient.exec(QStringLiteral("PRAGMA busy_timeout=0")));
    basix::SqliteTransaction held(holder);
    QVERIFY(held.isActive());
    QVERIFY(writeProblem(database).contains(QStringLiteral("probe.sqlite")));
    held.rollback();
    QCOMPARE(writeProblem(database), QString());
}

void tst_WriteCheck::aStoreIsOpenedForWriting()
{
    basix::SqliteDatabase database;
    QCOMPARE(openForWriting(database, file(), schema()), QString());
    QVERIFY(database.isOpen());
    const basix::SqliteTransaction transaction(database);
    QVERIFY2(transaction.isActive(), qPrintable(transaction.lastError()));
}

void tst_WriteCheck::aFileOfAnotherProgramStaysClosed()
{
    {
        basix::SqliteDatabase database;
        QVERIFY(database.open(file(), schema()));
    }
    basix::SqliteSchema other = schema();
    other.applicationId = 1;
    basix::SqliteDatabase database;
    const QString problem = openForWriting(database, file(), other);
    QVERIFY2(problem.contains(QStringLiteral("другой программе")), qPrintable(problem));
    QVERIFY(!database.isOpen());
}

QTEST_GUILESS_MAIN(tst_WriteCheck)
#include "tst_writecheck.moc"
