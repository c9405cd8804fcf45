#include <ui/storeupgrade.h>

#include <modalanswers.h>

#include <basixcore/sqlitedatabase.h>

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

class TestStoreUpgrade : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;

    static basix::SqliteSchema schema(int version)
    {
        basix::SqliteSchema result;
        result.applicationId = 4107;
        result.title = QStringLiteral("Журнал");
        result.migrations = {{1, {QStringLiteral("CREATE TABLE first (value)")}}};
        if (version > 1)
            result.migrations.append({2, {QStringLiteral("CREATE TABLE second (value)")}});
        return result;
    }

    /// A second version whose step does not end before the person looks at it.
    static basix::SqliteSchema longSchema()
    {
        basix::SqliteSchema result = schema(1);
        QStringList steps;
        for (int i = 0; i < 2000; ++i)
            steps.append(QStringLiteral(
                "INSERT INTO first WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                "WHERE i < 100000) SELECT max(i) FROM n"));
        result.migrations.append({2, steps});
        return result;
    }

    QByteArray content() const
    {
        QFile file(m_file);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_file = m_folder->filePath(QStringLiteral("store.sqlite"));
    }

    void cleanup() { QVERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void onlyAnEarlierVersionIsBroughtUp_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("version");
        QTest::addColumn<bool>("needed");
        QTest::newRow("missing") << QByteArray() << 0 << false;
        QTest::newRow("not a database") << QByteArray(200, 'x') << 0 << false;
        QTest::newRow("cut short") << QByteArray("SQLite format 3") << 0 << false;
        QTest::newRow("earlier version") << QByteArray() << 1 << true;
        QTest::newRow("this version") << QByteArray() << 2 << false;
    }

    void onlyAnEarlierVersionIsBroughtUp()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, version);
        QFETCH(bool, needed);
        if (version > 0) {
            basix::SqliteDatabase database;
            QVERIFY(database.open(m_file, schema(version)));
        } else if (!bytes.isEmpty()) {
            QFile file(m_file);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(bytes);
        }
        QCOMPARE(StoreUpgrade::isNeeded(m_file, schema(2)), needed);
        const QByteArray before = content();
        QString error;
        QVERIFY2(StoreUpgrade::run(m_file, schema(2), &error), qPrintable(error));
        QCOMPARE(content() == before, !needed);
        QVERIFY(!StoreUpgrade::isNeeded(m_file, schema(2)));
    }

    void personStopsIt()
    {
        {
            basix::SqliteDatabase database;
            QVERIFY(database.open(m_file, schema(1)));
        }
        ModalAnswers answers;
        QString shown;
        answers.run([&shown](QDialog *dialog) {
            shown = dialog->findChild<QLabel *>()->text();
            QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
        });
        QString error;
        QVERIFY(!StoreUpgrade::run(m_file, longSchema(), &error));
        QCOMPARE(answers.pending(), 0);
        QVERIFY2(shown.contains(QStringLiteral("Журнал: данные переводятся")), qPrintable(shown));
        QVERIFY2(error.contains(QStringLiteral("прерван"))
                     && error.contains(QStringLiteral("Данные не изменены")),
                 qPrintable(error));
        // As if nothing had happened.
        QVERIFY(StoreUpgrade::isNeeded(m_file, schema(2)));
        QVERIFY2(StoreUpgrade::run(m_file, schema(2), &error), qPrintable(error));
    }

    void reasonOfAFailureIsTold()
    {
        {
            basix::SqliteDatabase database;
            QVERIFY(database.open(m_file, schema(1)));
        }
        basix::SqliteSchema wrong = schema(1);
        wrong.migrations.append({2, {QStringLiteral("DROP TABLE absent")}});
        QString error;
        QVERIFY(!StoreUpgrade::run(m_file, wrong, &error));
        QVERIFY2(error.contains(QStringLiteral("absent")), qPrintable(error));
        QVERIFY(StoreUpgrade::isNeeded(m_file, wrong));
    }
};

QTEST_MAIN(TestStoreUpgrade)
#include "tst_storeupgrade.moc"
