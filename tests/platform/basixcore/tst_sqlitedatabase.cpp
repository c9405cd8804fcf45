#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqlitetransaction.h>

#include "messagelog.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>
#include <vector>

using basix::SqliteDatabase;
using basix::SqliteMigration;
using basix::SqliteSchema;

namespace {

constexpr qint32 ownId = 0x54455354;

SqliteSchema schema(int versions = 1)
{
    const QVector<SqliteMigration> steps{
        {1,
         {QStringLiteral("CREATE TABLE boxes (id INTEGER PRIMARY KEY, name TEXT NOT NULL)"),
          QStringLiteral(
              "CREATE TABLE notes (box INTEGER NOT NULL REFERENCES boxes (id), text TEXT)")}},
        {2, {QStringLiteral("ALTER TABLE boxes ADD COLUMN address TEXT NOT NULL DEFAULT ''")}},
        {3,
         {QStringLiteral("CREATE TABLE third (id INTEGER)"), QStringLiteral("NO SUCH STATEMENT")}},
    };
    SqliteSchema wanted;
    wanted.applicationId = ownId;
    wanted.title = QStringLiteral("Проверочная база");
    wanted.migrations = steps.mid(0, versions);
    return wanted;
}

bool execute(const SqliteDatabase &database, const QString &statement)
{
    QSqlQuery query(database.connection());
    if (query.exec(statement))
        return true;
    qInfo("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    return false;
}

QVariant value(const SqliteDatabase &database, const QString &statement)
{
    QSqlQuery query(database.connection());
    return query.exec(statement) && query.next() ? query.value(0) : QVariant();
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

/// A file of our own with enough rows for several pages.
void makeFilled(const QString &path, int rows = 2000)
{
    SqliteDatabase database;
    QVERIFY2(database.open(path, schema()), qPrintable(database.lastError()));
    QVERIFY(
        execute(database,
                QStringLiteral(
                    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                    "INSERT INTO boxes SELECT i, 'касса номер ' || i FROM n")
                    .arg(rows)));
}

void runPlain(const QString &path, const QStringList &statements)
{
    {
        QSqlDatabase db =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("plain"));
        db.setDatabaseName(path);
        QVERIFY(db.open());
        for (const QString &statement : statements) {
            QSqlQuery query(db);
            QVERIFY2(query.exec(statement), qPrintable(query.lastError().text()));
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("plain"));
}

QFile::Permissions others(const QString &path)
{
    return QFileInfo(path).permissions()
        & (QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
           | QFile::WriteOther | QFile::ExeOther);
}

} // namespace

class tst_SqliteDatabase : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void createsFileFolderAndSchema();
    void filesAreTheOwnersOnly();
    void existingModesStay();
    void connectionIsSafe();
    void reopeningKeepsTheData();
    void emptyFileCountsAsNew();
    void olderVersionIsBroughtUp();
    void failedStepIsUndoneAsAWhole();
    void stepThatIsGivenUpIsUndone();
    void refusedFileStaysAsItWas_data();
    void refusedFileStaysAsItWas();
    void uncheckedFileIsStillRefusedByItsHeader();
    void largeFileIsNotReadAsAWhole();
    void copyTakenWhileOpenIsRecovered();
    void damagedFileWithALogStaysAsItWas();
    void folderThatCannotBeMade();
    void folderInPlaceOfTheFile();
    void noFileName();
    void openingAgainClosesTheFirstFile();
    void closedObjectIsHarmless();
    void manyThreadsMeetAtAFreshFile();

private:
    QString path(const QString &name = QStringLiteral("test.sqlite")) const
    {
        return m_dir->filePath(name);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<MessageLog> m_log;
};

void tst_SqliteDatabase::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_log = std::make_unique<MessageLog>();
}

void tst_SqliteDatabase::cleanup()
{
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
    QCOMPARE(m_log->unexpectedWarnings({}), QStringList());
    m_log.reset();
    m_dir.reset();
}

void tst_SqliteDatabase::createsFileFolderAndSchema()
{
    const QString file = path(QStringLiteral("новая папка/глубже/база.sqlite"));
    SqliteDatabase database;
    QVERIFY2(database.open(file, schema(2)), qPrintable(database.lastError()));
    QVERIFY(database.isOpen());
    QVERIFY(database.lastError().isEmpty());
    QCOMPARE(database.fileName(), file);
    QVERIFY(QFileInfo(file).isFile());
    QCOMPARE(value(database, QStringLiteral("PRAGMA user_version")).toInt(), 2);
    QCOMPARE(value(database, QStringLiteral("PRAGMA application_id")).toInt(), ownId);
    QVERIFY(execute(database, QStringLiteral("INSERT INTO boxes VALUES (1, 'a', 'b')")));
}

void tst_SqliteDatabase::filesAreTheOwnersOnly()
{
    const QString file = path(QStringLiteral("own/test.sqlite"));
    SqliteDatabase database;
    QVERIFY(database.open(file, schema()));
    QVERIFY(execute(database, QStringLiteral("INSERT INTO boxes VALUES (1, 'a')")));
    for (const QString &suffix : {QString(), QStringLiteral("-wal"), QStringLiteral("-shm")}) {
        QVERIFY2(QFileInfo::exists(file + suffix), qPrintable(suffix));
        QCOMPARE(others(file + suffix), QFile::Permissions());
    }
    QCOMPARE(others(QFileInfo(file).path()), QFile::Permissions());
}

void tst_SqliteDatabase::existingModesStay()
{
    const QFile::Permissions shared = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    makeFilled(path(), 1);
    QVERIFY(QFile::setPermissions(path(), shared));
    SqliteDatabase database;
    QVERIFY(database.open(path(), schema()));
    QCOMPARE(others(path()), QFile::Permissions(QFile::ReadGroup));
}

void tst_SqliteDatabase::connectionIsSafe()
{
    SqliteDatabase database;
    QVERIFY(database.open(path(), schema()));
    QCOMPARE(value(database, QStringLiteral("PRAGMA foreign_keys")).toInt(), 1);
    QCOMPARE(value(database, QStringLiteral("PRAGMA journal_mode")).toString(),
             QStringLiteral("wal"));
    QCOMPARE(value(database, QStringLiteral("PRAGMA synchronous")).toInt(), 2);
    QCOMPARE(value(database, QStringLiteral("PRAGMA busy_timeout")).toInt(),
             SqliteDatabase::busyTimeoutMs);
    QVERIFY(!execute(database, QStringLiteral("INSERT INTO notes VALUES (77, 'no such box')")));
}

void tst_SqliteDatabase::reopeningKeepsTheData()
{
    makeFilled(path(), 10);
    SqliteDatabase database;
    QVERIFY2(database.open(path(), schema()), qPrintable(database.lastError()));
    QCOMPARE(value(database, QStringLiteral("SELECT count(*) FROM boxes")).toInt(), 10);
}

void tst_SqliteDatabase::emptyFileCountsAsNew()
{
    writeBytes(path(), QByteArray());
    SqliteDatabase database;
    QVERIFY2(database.open(path(), schema()), qPrintable(database.lastError()));
    QVERIFY(execute(database, QStringLiteral("INSERT INTO boxes VALUES (1, 'a')")));
}

void tst_SqliteDatabase::olderVersionIsBroughtUp()
{
    makeFilled(path(), 10);
    SqliteDatabase database;
    QVERIFY2(database.open(path(), schema(2)), qPrintable(database.lastError()));
    QCOMPARE(value(database, QStringLiteral("PRAGMA user_version")).toInt(), 2);
    QCOMPARE(
        value(database, QStringLiteral("SELECT count(*) FROM boxes WHERE address = ''")).toInt(),
        10);
}

void tst_SqliteDatabase::failedStepIsUndoneAsAWhole()
{
    makeFilled(path(), 10);
    SqliteDatabase database;
    QVERIFY(!database.open(path(), schema(3)));
    QVERIFY(!database.isOpen());
    QVERIFY(database.lastError().contains(QStringLiteral("Проверочная база")));
    QVERIFY(database.open(path(), schema(2)));
    QCOMPARE(value(database, QStringLiteral("PRAGMA user_version")).toInt(), 2);
    QCOMPARE(
        value(database, QStringLiteral("SELECT count(*) FROM sqlite_master WHERE name = 'third'"))
            .toInt(),
        0);
    QCOMPARE(value(database, QStringLiteral("SELECT count(*) FROM boxes")).toInt(), 10);
}

void tst_SqliteDatabase::stepThatIsGivenUpIsUndone()
{
    makeFilled(path(), 10);
    SqliteSchema given = schema(2);
    QVector<int> told;
    given.progress = [&told](int done, int total) {
        told.append(done);
        return done + 1 < total;
    };
    SqliteDatabase database;
    QVERIFY(!database.open(path(), given));
    QVERIFY2(database.lastError().contains(QStringLiteral("прерван")),
             qPrintable(database.lastError()));
    QVERIFY(told.size() > 1);
    QCOMPARE(told.constFirst(), 0);
    QVERIFY(database.open(path(), schema()));
    QCOMPARE(value(database, QStringLiteral("PRAGMA user_version")).toInt(), 1);
    given.progress = nullptr;
    QVERIFY2(database.open(path(), given), qPrintable(database.lastError()));
}

void tst_SqliteDatabase::refusedFileStaysAsItWas_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("text");
    for (const char *kind : {"text", "short", "half", "hole", "header only", "schema page"})
        QTest::newRow(kind) << QString::fromLatin1(kind) << QStringLiteral("повреждён");
    QTest::newRow("newer version")
        << QStringLiteral("newer") << QStringLiteral("более новой версией");
    QTest::newRow("other application")
        << QStringLiteral("other") << QStringLiteral("другой программе");
    QTest::newRow("no application but tables")
        << QStringLiteral("nobody") << QStringLiteral("другой программе");
}

void tst_SqliteDatabase::refusedFileStaysAsItWas()
{
    QFETCH(QString, kind);
    QFETCH(QString, text);
    if (kind == QLatin1String("nobody"))
        runPlain(path(), {QStringLiteral("CREATE TABLE theirs (id INTEGER)")});
    else
        makeFilled(path());
    const QByteArray whole = bytesOf(path());
    QVERIFY(whole.size() > 0);
    if (kind == QLatin1String("newer")) {
        runPlain(path(), {QStringLiteral("PRAGMA user_version=2")});
    } else if (kind == QLatin1String("other")) {
        runPlain(path(), {QStringLiteral("PRAGMA application_id=1")});
    } else if (kind == QLatin1String("text")) {
        writeBytes(path(),
                   "This is not a database, but somebody's notes, and they are dear to him.\n");
    } else if (kind == QLatin1String("short")) {
        writeBytes(path(), "SQL");
    } else if (kind == QLatin1String("half")) {
        writeBytes(path(), whole.left(whole.size() / 2));
    } else if (kind == QLatin1String("header only")) {
        writeBytes(path(), whole.left(100));
    } else if (kind == QLatin1String("hole")) {
        writeBytes(path(),
                   QByteArray(whole).replace(whole.size() / 2, 4096, QByteArray(4096, '\x5a')));
    } else if (kind == QLatin1String("schema page")) {
        writeBytes(path(), QByteArray(whole).replace(100, 2000, QByteArray(2000, '\x5a')));
    }
    const QByteArray before = bytesOf(path());

    SqliteDatabase database;
    QVERIFY(!database.open(path(), schema()));
    QVERIFY(!database.isOpen());
    QVERIFY(database.fileName().isEmpty());
    QVERIFY2(database.lastError().contains(text), qPrintable(database.lastError()));
    QVERIFY2(database.lastError().contains(path()), qPrintable(database.lastError()));
    QVERIFY(bytesOf(path()) == before);
}

void tst_SqliteDatabase::uncheckedFileIsStillRefusedByItsHeader()
{
    SqliteSchema fast = schema();
    fast.checkWholeFile = false;
    writeBytes(path(), "not a database at all, whatever its name says");
    SqliteDatabase database;
    QVERIFY(!database.open(path(), fast));
    makeFilled(path(QStringLiteral("good.sqlite")));
    QVERIFY(database.open(path(QStringLiteral("good.sqlite")), fast));
}

void tst_SqliteDatabase::largeFileIsNotReadAsAWhole()
{
    makeFilled(path());
    const QByteArray whole = bytesOf(path());
    writeBytes(path(), QByteArray(whole).replace(whole.size() / 2, 4096, QByteArray(4096, '\x5a')));
    SqliteSchema limited = schema();
    limited.wholeFileLimit = whole.size();
    SqliteDatabase database;
    QVERIFY(!database.open(path(), limited));
    limited.wholeFileLimit = whole.size() - 1;
    QVERIFY2(database.open(path(), limited), qPrintable(database.lastError()));
}

void tst_SqliteDatabase::copyTakenWhileOpenIsRecovered()
{
    const QString copy = path(QStringLiteral("copy.sqlite"));
    SqliteDatabase database;
    QVERIFY(database.open(path(), schema()));
    QVERIFY(execute(database, QStringLiteral("INSERT INTO boxes VALUES (1, 'a')")));
    QVERIFY(QFile::copy(path(), copy));
    QVERIFY(QFile::copy(path() + QStringLiteral("-wal"), copy + QStringLiteral("-wal")));

    SqliteDatabase second;
    QVERIFY2(second.open(copy, schema()), qPrintable(second.lastError()));
    QCOMPARE(value(second, QStringLiteral("SELECT count(*) FROM boxes")).toInt(), 1);
}

void tst_SqliteDatabase::damagedFileWithALogStaysAsItWas()
{
    const QString copy = path(QStringLiteral("copy.sqlite"));
    const QString log = copy + QStringLiteral("-wal");
    makeFilled(path());
    SqliteDatabase database;
    QVERIFY(database.open(path(), schema()));
    QVERIFY(execute(database, QStringLiteral("INSERT INTO boxes VALUES (100000, 'a')")));
    const QByteArray whole = bytesOf(path());
    writeBytes(copy, QByteArray(whole).replace(4096 * 3, 4096, QByteArray(4096, '\x5a')));
    QVERIFY(QFile::copy(path() + QStringLiteral("-wal"), log));
    const QByteArray before = bytesOf(copy);
    const QByteArray logBefore = bytesOf(log);
    QVERIFY(!logBefore.isEmpty());

    SqliteDatabase second;
    QVERIFY(!second.open(copy, schema()));
    QVERIFY2(second.lastError().contains(QStringLiteral("повреждён")),
             qPrintable(second.lastError()));
    QVERIFY(bytesOf(copy) == before);
    QVERIFY(bytesOf(log) == logBefore);
}

void tst_SqliteDatabase::folderThatCannotBeMade()
{
    writeBytes(path(QStringLiteral("file")), "x");
    SqliteDatabase database;
    QVERIFY(!database.open(path(QStringLiteral("file/test.sqlite")), schema()));
    QVERIFY2(database.lastError().contains(QStringLiteral("создать папку")),
             qPrintable(database.lastError()));
}

void tst_SqliteDatabase::folderInPlaceOfTheFile()
{
    QVERIFY(QDir().mkpath(path()));
    SqliteDatabase database;
    QVERIFY(!database.open(path(), schema()));
    QVERIFY2(database.lastError().contains(path()), qPrintable(database.lastError()));
}

void tst_SqliteDatabase::noFileName()
{
    SqliteDatabase database;
    QVERIFY(!database.open(QString(), schema()));
    QVERIFY(!database.lastError().isEmpty());
}

void tst_SqliteDatabase::openingAgainClosesTheFirstFile()
{
    SqliteDatabase database;
    QVERIFY(database.open(path(), schema()));
    QVERIFY(database.open(path(QStringLiteral("other.sqlite")), schema()));
    QCOMPARE(database.fileName(), path(QStringLiteral("other.sqlite")));
    QCOMPARE(QSqlDatabase::connectionNames().size(), 1);
    QVERIFY(!database.open(QString(), schema()));
    QVERIFY(!database.isOpen());
    QCOMPARE(QSqlDatabase::connectionNames().size(), 0);
}

void tst_SqliteDatabase::closedObjectIsHarmless()
{
    SqliteDatabase database;
    QVERIFY(!database.isOpen());
    QVERIFY(!database.connection().isValid());
    database.close();
    basix::SqliteTransaction transaction(database);
    QVERIFY(!transaction.isActive());
    QVERIFY(!transaction.commit());
    QVERIFY(!transaction.lastError().isEmpty());
}

void tst_SqliteDatabase::manyThreadsMeetAtAFreshFile()
{
    const QString file = path();
    QAtomicInt opened;
    std::vector<std::unique_ptr<QThread>> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back(QThread::create([file, i, &opened] {
            SqliteDatabase database;
            if (database.open(file, schema(2))
                && execute(database,
                           QStringLiteral("INSERT INTO boxes VALUES (%1, 'a', 'b')").arg(i)))
                ++opened;
            else
                qWarning("%s", qPrintable(database.lastError()));
        }));
        threads.back()->start();
    }
    for (const std::unique_ptr<QThread> &thread : threads)
        QVERIFY(thread->wait(60000));
    QCOMPARE(opened.loadRelaxed(), 8);
    SqliteDatabase database;
    QVERIFY(database.open(file, schema(2)));
    QCOMPARE(value(database, QStringLiteral("SELECT count(*) FROM boxes")).toInt(), 8);
}

QTEST_GUILESS_MAIN(tst_SqliteDatabase)
#include "tst_sqlitedatabase.moc"
