#include <fiscal/fiscaljournal.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

using Form = FiscalRecord::Form;

class tst_FiscalJournal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void newStorage();
    void appendsInOrder();
    void refusesAnotherNumber();
    void twoWritersNeverShareANumber();
    void shifts();
    void findsAndLists();
    void cannotBeChanged();
    void closedJournal();

private:
    FiscalRecord receipt(qint64 number, const QString &documentNumber = QString(),
                         qint64 total = 100) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;
    std::unique_ptr<FiscalJournal> m_journal;
};

void tst_FiscalJournal::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_file = m_folder->filePath(QStringLiteral("fiscal.sqlite"));
    m_journal = std::make_unique<FiscalJournal>();
    QVERIFY2(m_journal->open(m_file), qPrintable(m_journal->lastError()));
}

void tst_FiscalJournal::cleanup()
{
    m_journal.reset();
    m_folder.reset();
}

FiscalRecord tst_FiscalJournal::receipt(qint64 number, const QString &documentNumber,
                                        qint64 total) const
{
    FiscalRecord record;
    record.number = number;
    record.shift = 1;
    record.receipt = int(number);
    record.time = QDateTime(QDate(2026, 11, 21), QTime(9, 30, 15));
    record.sign = QStringLiteral("0000000042");
    record.documentNumber = documentNumber;
    record.total = total;
    record.qr = QStringLiteral("t=20261121T0930");
    record.document = {{QStringLiteral("1020"), total}};
    record.result = {{QStringLiteral("data"), QVariantMap{{QStringLiteral("fd"), number}}}};
    return record;
}

void tst_FiscalJournal::newStorage()
{
    const QString number = m_journal->storageNumber();
    QVERIFY(QRegularExpression(QStringLiteral("^\\d{16}$")).match(number).hasMatch());
    QCOMPARE(m_journal->nextNumber(), Q_INT64_C(1));
    FiscalJournal again;
    QVERIFY(again.open(m_file));
    QCOMPARE(again.storageNumber(), number);
    FiscalJournal other;
    QVERIFY(other.open(m_folder->filePath(QStringLiteral("other.sqlite"))));
    QVERIFY(other.storageNumber() != number);
}

void tst_FiscalJournal::appendsInOrder()
{
    FiscalRecord record = receipt(1, QStringLiteral("1700000000 7001"), Q_INT64_C(281474976710655));
    record.answered = false;
    QVERIFY2(m_journal->append(record), qPrintable(m_journal->lastError()));
    QVERIFY(m_journal->append(receipt(2)));
    QCOMPARE(m_journal->nextNumber(), Q_INT64_C(3));
    FiscalJournal again;
    QVERIFY(again.open(m_file));
    const std::optional<FiscalRecord> back = again.record(1);
    QVERIFY(back);
    QCOMPARE(back->documentNumber, record.documentNumber);
    QCOMPARE(back->total, record.total);
    QCOMPARE(back->time, record.time);
    QCOMPARE(back->sign, record.sign);
    QCOMPARE(back->qr, record.qr);
    QCOMPARE(back->storage, again.storageNumber());
    QCOMPARE(back->document.value(QStringLiteral("1020")).toLongLong(), record.total);
    QCOMPARE(back->result.value(QStringLiteral("data")).toMap().value(QStringLiteral("fd")).toInt(),
             1);
    QVERIFY(!back->answered);
    QVERIFY(again.record(2)->answered);
    QVERIFY(!again.record(3));
}

void tst_FiscalJournal::refusesAnotherNumber()
{
    QVERIFY(!m_journal->append(receipt(2)));
    QVERIFY(m_journal->lastError().contains(QStringLiteral("2")));
    QVERIFY(m_journal->append(receipt(1)));
    QVERIFY(!m_journal->append(receipt(1)));
    QCOMPARE(m_journal->receiptCount(), 1);
}

void tst_FiscalJournal::twoWritersNeverShareANumber()
{
    FiscalJournal other;
    QVERIFY(other.open(m_file));
    const FiscalRecord mine = receipt(m_journal->nextNumber());
    const FiscalRecord theirs = receipt(other.nextNumber());
    QVERIFY(m_journal->append(mine));
    QVERIFY(!other.append(theirs));
    QVERIFY(other.append(receipt(other.nextNumber())));
    QCOMPARE(m_journal->receiptCount(), 2);
}

void tst_FiscalJournal::shifts()
{
    QVERIFY(!m_journal->openShift());
    FiscalRecord open = receipt(1);
    open.form = Form::OpenShift;
    open.receipt = 0;
    QVERIFY(m_journal->append(open));
    QVERIFY(m_journal->openShift());
    QVERIFY(m_journal->append(receipt(2)));
    QVERIFY(m_journal->append(receipt(3)));
    QCOMPARE(m_journal->lastReceiptInShift(1), 3);
    QCOMPARE(m_journal->lastReceiptInShift(2), 0);
    FiscalRecord close = receipt(4);
    close.form = Form::CloseShift;
    QVERIFY(m_journal->append(close));
    QVERIFY(!m_journal->openShift());
    QCOMPARE(m_journal->lastShift(), 1);
    QCOMPARE(m_journal->receiptCount(), 2);
    QCOMPARE(m_journal->receiptTotal(), Q_INT64_C(200));
}

void tst_FiscalJournal::findsAndLists()
{
    QVERIFY(m_journal->append(receipt(1, QStringLiteral("a"))));
    QVERIFY(m_journal->append(receipt(2, QStringLiteral("b"))));
    QVERIFY(m_journal->append(receipt(3, QStringLiteral("a"))));
    QCOMPARE(m_journal->findByDocumentNumber(QStringLiteral("a"))->number, Q_INT64_C(3));
    QVERIFY(!m_journal->findByDocumentNumber(QStringLiteral("c")));
    const QVector<FiscalRecord> page = m_journal->receipts(1, 2);
    QCOMPARE(page.size(), 2);
    QCOMPARE(page.at(0).number, Q_INT64_C(2));
    QCOMPARE(page.at(1).number, Q_INT64_C(1));
}

void tst_FiscalJournal::cannotBeChanged()
{
    QVERIFY(m_journal->append(receipt(1)));
    const QString name = QStringLiteral("intruder");
    {
        QSqlDatabase direct = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        direct.setDatabaseName(m_file);
        QVERIFY(direct.open());
        QSqlQuery query(direct);
        QVERIFY(!query.exec(QStringLiteral("UPDATE documents SET total = 1")));
        QVERIFY(!query.exec(QStringLiteral("DELETE FROM documents")));
    }
    QSqlDatabase::removeDatabase(name);
    QCOMPARE(m_journal->receiptTotal(), Q_INT64_C(100));
}

void tst_FiscalJournal::closedJournal()
{
    FiscalJournal closed;
    QVERIFY(!closed.isOpen());
    QVERIFY(!closed.append(receipt(1)));
    QVERIFY(!closed.lastError().isEmpty());
    QCOMPARE(closed.receiptCount(), 0);
    QVERIFY(!closed.openShift());
    QVERIFY(closed.receipts(0, 10).isEmpty());
}

QTEST_GUILESS_MAIN(tst_FiscalJournal)
#include "tst_fiscaljournal.moc"
