#include <storage/sqlstatements.h>

#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqliteschema.h>
#include <basixcore/sqlitetransaction.h>

#include <QTemporaryDir>
#include <QTest>

#include <memory>

class tst_SqlStatements : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void keepsWhatItPrepared();
    void runsAgainWithOtherValues();
    void rowsAreGoneAfterUse();
    void statementInUseIsNotSharedTwice();
    void failureIsNotRemembered();
    void wrongStatementIsNotKept();
    void keepsABoundedNumber();
    void followsAChangeOfTheTable();

private:
    bool add(int id, const QString &text);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<basix::SqliteDatabase> m_database;
    std::unique_ptr<SqlStatements> m_statements;
};

namespace {

const QString ADD = QStringLiteral("INSERT INTO things (id, name) VALUES (?, ?)");
const QString FIND = QStringLiteral("SELECT name FROM things WHERE id >= ? ORDER BY id");

} // namespace

void tst_SqlStatements::init()
{
    basix::SqliteSchema schema;
    schema.applicationId = 7;
    schema.title = QStringLiteral("Проба");
    schema.migrations = {
        {1, {QStringLiteral("CREATE TABLE things (id INTEGER PRIMARY KEY, name TEXT NOT NULL)")}}};
    m_folder = std::make_unique<QTemporaryDir>();
    m_database = std::make_unique<basix::SqliteDatabase>();
    QVERIFY2(m_database->open(m_folder->filePath(QStringLiteral("things.sqlite")), schema),
             qPrintable(m_database->lastError()));
    m_statements = std::make_unique<SqlStatements>(*m_database);
}

void tst_SqlStatements::cleanup()
{
    m_statements.reset();
    m_database.reset();
    m_folder.reset();
}

bool tst_SqlStatements::add(int id, const QString &text)
{
    const auto insert = m_statements->use(ADD);
    return insert->bind(id).bind(text).run();
}

void tst_SqlStatements::keepsWhatItPrepared()
{
    const SqlStatement *first = &*m_statements->use(FIND);
    const SqlStatement *other = &*m_statements->use(ADD);
    QVERIFY(first != other);
    QCOMPARE(&*m_statements->use(FIND), first);
}

void tst_SqlStatements::runsAgainWithOtherValues()
{
    QVERIFY(add(1, QStringLiteral("a")));
    QVERIFY(add(2, QString()));
    for (const int from : {2, 1}) {
        const auto find = m_statements->use(FIND);
        QVERIFY(find->bind(from).run());
        QVERIFY(find->next());
        QCOMPARE(find->text(0), from == 1 ? QStringLiteral("a") : QString());
    }
}

void tst_SqlStatements::rowsAreGoneAfterUse()
{
    QVERIFY(add(1, QStringLiteral("a")));
    QVERIFY(add(2, QStringLiteral("b")));
    basix::SqliteTransaction transaction(*m_database);
    {
        // Left in the middle of its rows: it must not hold on to the file.
        const auto find = m_statements->use(FIND);
        QVERIFY(find->bind(1).run() && find->next());
    }
    QVERIFY2(transaction.commit(), qPrintable(transaction.lastError()));
    const auto find = m_statements->use(FIND);
    QVERIFY(!find->next());
    const auto journal = m_statements->use(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    QVERIFY(journal->run() && journal->next());
    QCOMPARE(journal->number(0), qint64(0)); // nobody reads what stands before it
}

void tst_SqlStatements::statementInUseIsNotSharedTwice()
{
    QVERIFY(add(1, QStringLiteral("a")));
    QVERIFY(add(2, QStringLiteral("b")));
    const auto outer = m_statements->use(FIND);
    QVERIFY(outer->bind(1).run() && outer->next());
    {
        const auto inner = m_statements->use(FIND);
        QVERIFY(inner->bind(2).run() && inner->next());
        QCOMPARE(inner->text(0), QStringLiteral("b"));
    }
    QVERIFY(outer->next());
    QCOMPARE(outer->text(0), QStringLiteral("b"));
    QVERIFY(!outer->next());
}

void tst_SqlStatements::failureIsNotRemembered()
{
    QVERIFY(add(1, QStringLiteral("a")));
    {
        const auto insert = m_statements->use(ADD);
        QVERIFY(!insert->bind(1).bind(QStringLiteral("again")).run());
        QVERIFY(!insert->error().isEmpty());
    }
    const auto insert = m_statements->use(ADD);
    QVERIFY(insert->bind(2).bind(QStringLiteral("b")).run());
    QVERIFY(insert->error().isEmpty());
    QCOMPARE(insert->changedRows(), 1);
}

void tst_SqlStatements::wrongStatementIsNotKept()
{
    const QString sql = QStringLiteral("SELECT colour FROM things");
    {
        const auto wrong = m_statements->use(sql);
        QVERIFY(!wrong->run());
        QVERIFY(!wrong->error().isEmpty());
    }
    QVERIFY(m_statements->use(QStringLiteral("ALTER TABLE things ADD COLUMN colour TEXT"))->run());
    QVERIFY(m_statements->use(sql)->run());
}

void tst_SqlStatements::keepsABoundedNumber()
{
    const SqlStatement *first = &*m_statements->use(FIND);
    const auto held = m_statements->use(FIND);
    QCOMPARE(&*held, first);
    for (int i = 0; i < 2 * SqlStatements::MOST; ++i)
        QVERIFY(m_statements->use(QStringLiteral("SELECT %1").arg(i))->run());
    // It was let go of, and another took its place; who holds it still can use it.
    QVERIFY(held->bind(1).run());
    QVERIFY(&*m_statements->use(FIND) != first);
}

void tst_SqlStatements::followsAChangeOfTheTable()
{
    QVERIFY(add(1, QStringLiteral("a")));
    QVERIFY(m_statements->use(QStringLiteral("CREATE INDEX by_name ON things (name)"))->run());
    QVERIFY(add(2, QStringLiteral("b")));
    const auto find = m_statements->use(FIND);
    QVERIFY(find->bind(2).run() && find->next());
    QCOMPARE(find->text(0), QStringLiteral("b"));
}

QTEST_GUILESS_MAIN(tst_SqlStatements)
#include "tst_sqlstatements.moc"
