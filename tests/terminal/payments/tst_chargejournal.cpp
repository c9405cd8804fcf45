#include <payments/chargejournal.h>

#include <molvacore/cardreadersettings.h>
#include <molvacore/dbconnector.h>
#include <molvacore/sberposlibhandler.h>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

class tst_ChargeJournal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void isDurableBeforeTheTerminalAnswers();
    void keepsAnUnknownOutcome();
    void declinesAreNotCharges();
    void sameChargeOnce();
    void keepsWhatItCannotWriteForLater();
    void attachesOnce();
    void oneReceiptOneCharge();
    void refundsOnce();
    void refundsNothingWithAReceipt();
    void closedJournal();

private:
    static CardCharge charge(qint64 kopecks, const QString &rrn)
    {
        CardCharge result;
        result.time = QDateTime(QDate(2026, 11, 21), QTime(10, 0, 0, 250));
        result.amount = basix::FixNumber(100, kopecks);
        result.terminal = QStringLiteral("00000002");
        result.rrn = rrn;
        result.authCode = QStringLiteral("123456");
        return result;
    }
    bool pay(qint64 kopecks)
    {
        SberPosLibHandler terminal(nullptr);
        QString error;
        QStringList slip;
        return terminal.init(error) && terminal.pay(basix::FixNumber(100, kopecks), error, slip);
    }
    QString file() const { return m_folder->filePath(QStringLiteral("charges.sqlite")); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ChargeJournal> m_journal;
};

void tst_ChargeJournal::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    DbConnector::setDatabaseFile(m_folder->filePath(QStringLiteral("host.sqlite")));
    m_journal = std::make_unique<ChargeJournal>();
    QVERIFY2(m_journal->open(file()), qPrintable(m_journal->lastError()));
    m_journal->follow(*CardChargeLog::instance());
}

void tst_ChargeJournal::cleanup()
{
    m_journal.reset();
    m_folder.reset();
    CardChargeLog::clear();
}

void tst_ChargeJournal::isDurableBeforeTheTerminalAnswers()
{
    QSignalSpy noted(m_journal.get(), &ChargeJournal::noted);
    QVERIFY(pay(12300));
    QCOMPARE(noted.size(), 1);
    ChargeJournal other;
    QVERIFY(other.open(file()));
    const QVector<ChargeRecord> charges = other.charges(0, 10);
    QCOMPARE(charges.size(), 1);
    const CardCharge expected = CardChargeLog::charges().constFirst();
    QCOMPARE(charges.at(0).amount.value(), Q_INT64_C(12300));
    QCOMPARE(charges.at(0).rrn, expected.rrn);
    QCOMPARE(charges.at(0).authCode, expected.authCode);
    QCOMPARE(charges.at(0).terminal, expected.terminal);
    QCOMPARE(charges.at(0).time, expected.time);
    QVERIFY(charges.at(0).answered);
    QCOMPARE(other.chargedTotal(), Q_INT64_C(12300));
}

void tst_ChargeJournal::keepsAnUnknownOutcome()
{
    QVERIFY(!pay(12321));
    QCOMPARE(m_journal->count(), 1);
    QVERIFY(!m_journal->unexplained().constFirst().answered);
}

void tst_ChargeJournal::declinesAreNotCharges()
{
    QVERIFY(!pay(12305));
    QVERIFY(!pay(12320));
    QCOMPARE(m_journal->count(), 0);
}

void tst_ChargeJournal::sameChargeOnce()
{
    QVERIFY(m_journal->note(charge(100, QStringLiteral("1"))));
    QVERIFY(m_journal->note(charge(100, QStringLiteral("1"))));
    QVERIFY(m_journal->note(charge(100, QStringLiteral("2"))));
    QCOMPARE(m_journal->count(), 2);
}

void tst_ChargeJournal::keepsWhatItCannotWriteForLater()
{
    ChargeJournal closed;
    closed.follow(*CardChargeLog::instance());
    QSignalSpy notKept(&closed, &ChargeJournal::notKept);
    QTest::ignoreMessage(QtCriticalMsg,
                         QRegularExpression(QStringLiteral("123.00.*not in the journal")));
    QVERIFY(pay(12300));
    QCOMPARE(notKept.size(), 1);
    QCOMPARE(closed.unkept(), 1);
    QVERIFY(!closed.storeUnkept());
    QVERIFY(closed.open(m_folder->filePath(QStringLiteral("late.sqlite"))));
    QVERIFY(closed.storeUnkept());
    QCOMPARE(closed.unkept(), 0);
    QCOMPARE(closed.chargedTotal(), Q_INT64_C(12300));
}

void tst_ChargeJournal::attachesOnce()
{
    const QString storage = QStringLiteral("9960440300000001");
    QVERIFY(m_journal->note(charge(100, QStringLiteral("1"))));
    const qint64 id = m_journal->unexplained().constFirst().id;
    QVERIFY(m_journal->attachReceipt(id, storage, 7));
    QVERIFY(m_journal->attachReceipt(id, storage, 7));
    QVERIFY(!m_journal->attachReceipt(id, storage, 8));
    QVERIFY(m_journal->unexplained().isEmpty());
    QCOMPARE(m_journal->withoutPack().size(), 1);
    QVERIFY(m_journal->attachPack(id, 55));
    QVERIFY(!m_journal->attachPack(id, 56));
    QVERIFY(m_journal->withoutPack().isEmpty());
    QCOMPARE(m_journal->chargeOfReceipt(storage, 7)->packId, Q_INT64_C(55));
}

void tst_ChargeJournal::oneReceiptOneCharge()
{
    const QString storage = QStringLiteral("9960440300000001");
    QVERIFY(m_journal->note(charge(100, QStringLiteral("1"))));
    QVERIFY(m_journal->note(charge(100, QStringLiteral("2"))));
    QVERIFY(m_journal->attachReceipt(1, storage, 7));
    QVERIFY(!m_journal->attachReceipt(2, storage, 7));
    QCOMPARE(m_journal->unexplained().size(), 1);
}

void tst_ChargeJournal::refundsOnce()
{
    QVERIFY(m_journal->note(charge(100, QStringLiteral("1"))));
    const QDateTime when(QDate(2026, 11, 22), QTime(9, 0));
    QVERIFY(m_journal->refund(1, when));
    const QString reference = m_journal->charge(1)->refundRrn;
    QCOMPARE(reference.size(), 12);
    QVERIFY(!m_journal->refund(1, when.addDays(1)));
    QVERIFY2(m_journal->lastError().contains(reference), qPrintable(m_journal->lastError()));
    QCOMPARE(m_journal->charge(1)->refunded, when);
    QCOMPARE(m_journal->refundedTotal(), Q_INT64_C(100));
    QVERIFY(!m_journal->attachReceipt(1, QStringLiteral("9960440300000001"), 7));
    QVERIFY(!m_journal->refund(99, when));
}

void tst_ChargeJournal::refundsNothingWithAReceipt()
{
    QVERIFY(m_journal->note(charge(100, QStringLiteral("1"))));
    QVERIFY(m_journal->attachReceipt(1, QStringLiteral("9960440300000001"), 7));
    QVERIFY(!m_journal->refund(1, QDateTime::currentDateTime()));
    QVERIFY(m_journal->lastError().contains(QStringLiteral("чек возврата")));
    QCOMPARE(m_journal->refundedTotal(), Q_INT64_C(0));
}

void tst_ChargeJournal::closedJournal()
{
    ChargeJournal closed;
    QVERIFY(!closed.note(charge(100, QStringLiteral("1"))));
    QVERIFY(!closed.lastError().isEmpty());
    QVERIFY(closed.unexplained().isEmpty());
    QVERIFY(!closed.attachReceipt(1, QString(), 1));
    QVERIFY(!closed.attachPack(1, 1));
    QVERIFY(!closed.refund(1, QDateTime::currentDateTime()));
    QCOMPARE(closed.count(), 0);
}

QTEST_GUILESS_MAIN(tst_ChargeJournal)
#include "tst_chargejournal.moc"
