#include "receipts.h"

#include <fiscal/emulatedregister.h>
#include <fiscal/fiscaljournal.h>

#include <molvacore/fsstatus.h>

#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

using namespace Receipts;
using Condition = EmulatedRegister::Condition;

class tst_EmulatedRegister : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void printsAReceipt();
    void resultHoldsWhatWasRegistered();
    void numbersGoOn();
    void refusesABadDocument();
    void conditions_data();
    void conditions();
    void conditionOnce();
    void failsAfterPrinting();
    void answersTheSameReceiptAgain_data();
    void answersTheSameReceiptAgain();
    void answersAgainInAnotherProcess();
    void answersAgainWhateverItsCondition();
    void refusesAnotherReceiptUnderTheSameNumber_data();
    void refusesAnotherReceiptUnderTheSameNumber();
    void anEmptyNumberIdentifiesNothing();
    void printsNothingWhenItsMemoryCannotBeRead();
    void shiftEndsAfterADay();
    void closesTheShift();
    void everyConditionHasAText();

private:
    /// Another payment each time, unless `number` says that it is the same.
    bool print(const QString &number = QString())
    {
        const QString next = QStringLiteral("170000000%1 7001").arg(m_prints++);
        return m_register->doReceipt(good(), number.isEmpty() ? next : number, m_result, m_error);
    }
    QVariantMap data() const { return m_result.value(QStringLiteral("data")).toMap(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FiscalJournal> m_journal;
    std::unique_ptr<EmulatedRegister> m_register;
    QDateTime m_now;
    int m_prints = 0;
    QVariantMap m_result;
    QString m_error;
};

void tst_EmulatedRegister::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_journal = std::make_unique<FiscalJournal>();
    QVERIFY(m_journal->open(m_folder->filePath(QStringLiteral("fiscal.sqlite"))));
    m_now = QDateTime(QDate(2026, 11, 21), QTime(9, 5, 59));
    m_register = std::make_unique<EmulatedRegister>(*m_journal, [this] { return m_now; });
    m_prints = 0;
    m_result = {{QStringLiteral("old"), 1}};
    m_error = QStringLiteral("old");
}

void tst_EmulatedRegister::cleanup()
{
    m_register.reset();
    m_journal.reset();
    m_folder.reset();
}

void tst_EmulatedRegister::printsAReceipt()
{
    QSignalSpy registered(m_register.get(), &EmulatedRegister::receiptRegistered);
    QVERIFY2(print(), qPrintable(m_error));
    QVERIFY(m_error.isEmpty());
    QCOMPARE(m_result.keys(),
             (QStringList{QStringLiteral("data"), QStringLiteral("document"),
                          QStringLiteral("fiscprops")}));
    QCOMPARE(m_result.value(QStringLiteral("document")).toMap(), good());
    QCOMPARE(data().value(FiscalData::STORAGE).toString(), m_journal->storageNumber());
    // The report that opened the shift is the first document.
    QCOMPARE(data().value(FiscalData::NUMBER).toInt(), 2);
    QCOMPARE(data().value(FiscalData::SHIFT).toInt(), 1);
    QCOMPARE(data().value(FiscalData::RECEIPT).toInt(), 1);
    QCOMPARE(data().value(FiscalData::TIME).toString(), QStringLiteral("2026-11-21T09:05:59"));
    const QString sign = data().value(FiscalData::SIGN).toString();
    QVERIFY(QRegularExpression(QStringLiteral("^\\d{10}$")).match(sign).hasMatch());
    QCOMPARE(data().value(FiscalData::QR).toString(),
             QStringLiteral("t=20261121T0905&s=1500.50&fn=%1&i=2&fp=%2&n=1")
                 .arg(m_journal->storageNumber(), sign));
    QCOMPARE(registered.size(), 1);
    const std::optional<FiscalRecord> record = m_journal->record(2);
    QVERIFY(record);
    QCOMPARE(record->documentNumber, QStringLiteral("1700000000 7001"));
    QCOMPARE(record->total, Q_INT64_C(150050));
    QCOMPARE(record->qr, data().value(FiscalData::QR).toString());
    QVERIFY(record->answered);
}

void tst_EmulatedRegister::resultHoldsWhatWasRegistered()
{
    QVERIFY(print());
    QHash<int, QVariantList> properties;
    const QVariantList list = m_result.value(QStringLiteral("fiscprops")).toList();
    for (const QVariant &entry : list) {
        const QVariantMap property = entry.toMap();
        QCOMPARE(property.size(), 2);
        properties[int(property.value(QStringLiteral("tag")).toUInt())].append(
            property.value(QStringLiteral("value")));
    }
    QCOMPARE(properties.value(FiscalTag::QrText).size(), 1);
    QVERIFY(properties.value(FiscalTag::QrText)
                .first()
                .toString()
                .startsWith(QStringLiteral("t=20261121T0905&")));
    QCOMPARE(properties.value(FiscalTag::Total).first().toLongLong(), Q_INT64_C(150050));
    QCOMPARE(properties.value(FiscalTag::Item).size(), 2);
    QCOMPARE(properties.value(FiscalTag::DocumentNumber).first().toInt(), 2);
    QCOMPARE(properties.value(FiscalTag::FiscalStorageNumber).first().toString(),
             m_journal->storageNumber());
    QCOMPARE(properties.value(FiscalTag::DateTime).first().toLongLong(),
             QDateTime(m_now.date(), m_now.time(), Qt::UTC).toSecsSinceEpoch());
    const QVariantMap name = properties.value(FiscalTag::Item).first().toList().first().toMap();
    QVERIFY(name.contains(QStringLiteral("tag")));
}

void tst_EmulatedRegister::numbersGoOn()
{
    QVERIFY(print());
    const QString first = data().value(FiscalData::SIGN).toString();
    QVERIFY(print());
    QCOMPARE(data().value(FiscalData::NUMBER).toInt(), 3);
    QCOMPARE(data().value(FiscalData::RECEIPT).toInt(), 2);
    QVERIFY(data().value(FiscalData::SIGN).toString() != first);
    // Another register on the same storage, as after the plugin was loaded anew.
    m_register = std::make_unique<EmulatedRegister>(*m_journal, [this] { return m_now; });
    QVERIFY(print());
    QCOMPARE(data().value(FiscalData::NUMBER).toInt(), 4);
    QCOMPARE(data().value(FiscalData::RECEIPT).toInt(), 3);
    QCOMPARE(data().value(FiscalData::SHIFT).toInt(), 1);
}

void tst_EmulatedRegister::refusesABadDocument()
{
    QSignalSpy checked(m_register.get(), &EmulatedRegister::checked);
    const QVariantMap bad = with(good(), FiscalTag::CashSum, Q_INT64_C(1));
    QVERIFY(!m_register->doReceipt(bad, QStringLiteral("1"), m_result, m_error));
    QVERIFY2(m_error.contains(QStringLiteral("1500.50")), qPrintable(m_error));
    QVERIFY(m_error.contains(QStringLiteral("не пробит")));
    QVERIFY(m_result.isEmpty());
    QCOMPARE(m_journal->nextNumber(), Q_INT64_C(1));
    QCOMPARE(checked.size(), 1);
}

void tst_EmulatedRegister::conditions_data()
{
    QTest::addColumn<Condition>("condition");
    QTest::addColumn<bool>("answers");
    QTest::addColumn<bool>("ready");
    QTest::addColumn<int>("receipts");
    QTest::newRow("no connection") << Condition::NoConnection << false << false << 0;
    QTest::newRow("not ready") << Condition::NotReady << true << false << 0;
    QTest::newRow("shift expired") << Condition::ShiftExpired << true << false << 0;
    QTest::newRow("paper out") << Condition::PaperOut << true << false << 0;
    QTest::newRow("fails while printing") << Condition::FailsWhilePrinting << true << true << 0;
    QTest::newRow("fails after printing") << Condition::FailsAfterPrinting << true << true << 1;
    QTest::newRow("storage full") << Condition::StorageFull << true << false << 0;
}

void tst_EmulatedRegister::conditions()
{
    QFETCH(Condition, condition);
    QFETCH(bool, answers);
    QFETCH(bool, ready);
    QFETCH(int, receipts);
    m_register->setCondition(condition);
    QSharedPointer<FsStatus> status;
    QCOMPARE(m_register->getFiscalStatus(status), answers);
    QCOMPARE(!status.isNull(), answers);
    QCOMPARE(status && status->readyForReceipts(), ready);
    QVERIFY(!print());
    QVERIFY(m_result.isEmpty());
    QVERIFY2(m_error.contains(QStringLiteral("эмулятор")), qPrintable(m_error));
    QCOMPARE(m_journal->receiptCount(), receipts);
    QCOMPARE(m_register->condition(), condition);
    m_register->setCondition(Condition::Ready);
    QVERIFY(m_register->getFiscalStatus(status));
    QVERIFY(status->readyForReceipts());
    QVERIFY(print());
    QCOMPARE(m_journal->receiptCount(), receipts + 1);
}

void tst_EmulatedRegister::conditionOnce()
{
    QSignalSpy changed(m_register.get(), &EmulatedRegister::conditionChanged);
    m_register->setCondition(Condition::PaperOut, true);
    QVERIFY(!print());
    QCOMPARE(m_register->condition(), Condition::Ready);
    QVERIFY(print());
    QCOMPARE(changed.size(), 2);
}

void tst_EmulatedRegister::failsAfterPrinting()
{
    m_register->setCondition(Condition::FailsAfterPrinting, true);
    QVERIFY(!print(QStringLiteral("doubtful")));
    const std::optional<FiscalRecord> record =
        m_journal->findByDocumentNumber(QStringLiteral("doubtful"));
    QVERIFY(record);
    QVERIFY(!record->answered);
    QVERIFY(!record->result.value(QStringLiteral("fiscprops")).toList().isEmpty());
    QVERIFY2(m_error.contains(QStringLiteral("чек № 1 смены 1")), qPrintable(m_error));
}

void tst_EmulatedRegister::answersTheSameReceiptAgain_data()
{
    QTest::addColumn<bool>("answerLost");
    QTest::addColumn<QVariantMap>("second");
    QTest::newRow("after an answer") << false << good();
    QTest::newRow("after a lost answer") << true << good();
    QTest::newRow("at another time")
        << true << with(good(), FiscalTag::DateTime, QStringLiteral("2026-11-21T09:07:00"));
    QTest::newRow("by another numeric type") << true << with(good(), FiscalTag::Total, 150050.0);
}

void tst_EmulatedRegister::answersTheSameReceiptAgain()
{
    QFETCH(bool, answerLost);
    QFETCH(QVariantMap, second);
    const QString number = QStringLiteral("17000000007001");
    QSignalSpy registered(m_register.get(), &EmulatedRegister::receiptRegistered);
    if (answerLost)
        m_register->setCondition(Condition::FailsAfterPrinting, true);
    QCOMPARE(m_register->doReceipt(good(), number, m_result, m_error), !answerLost);
    m_now = m_now.addSecs(60);
    QVERIFY2(m_register->doReceipt(second, number, m_result, m_error), qPrintable(m_error));
    QVERIFY(m_error.isEmpty());
    QCOMPARE(m_journal->receiptCount(), 1);
    QCOMPARE(registered.size(), 1);
    QCOMPARE(m_result, m_journal->findByDocumentNumber(number)->result);
    QCOMPARE(data().value(FiscalData::TIME).toString(), QStringLiteral("2026-11-21T09:05:59"));
    QVERIFY(!m_result.value(QStringLiteral("fiscprops")).toList().isEmpty());
}

void tst_EmulatedRegister::answersAgainInAnotherProcess()
{
    QVERIFY(print(QStringLiteral("doubtful")));
    const QVariantMap first = data();
    m_register.reset();
    m_journal = std::make_unique<FiscalJournal>();
    QVERIFY(m_journal->open(m_folder->filePath(QStringLiteral("fiscal.sqlite"))));
    m_register = std::make_unique<EmulatedRegister>(*m_journal, [this] { return m_now; });
    QVERIFY(print(QStringLiteral("doubtful")));
    QCOMPARE(data(), first);
    QCOMPARE(m_journal->receiptCount(), 1);
}

void tst_EmulatedRegister::answersAgainWhateverItsCondition()
{
    QVERIFY(print(QStringLiteral("doubtful")));
    for (const Condition condition : EmulatedRegister::conditions()) {
        m_register->setCondition(condition);
        // Only a register that cannot be reached does not answer.
        QCOMPARE(print(QStringLiteral("doubtful")), condition != Condition::NoConnection);
    }
    QCOMPARE(m_journal->receiptCount(), 1);
}

void tst_EmulatedRegister::refusesAnotherReceiptUnderTheSameNumber_data()
{
    QTest::addColumn<QVariantMap>("second");
    QTest::newRow("another sum") << withLines(
        {agentLine(QStringLiteral("Холодное водоснабжение"), 100)}, 100, 0);
    QTest::newRow("another split")
        << with(with(good(), FiscalTag::CashSum, 50000), FiscalTag::CashlessSum, 100050);
    QTest::newRow("another contact")
        << with(good(), FiscalTag::ClientContact, QStringLiteral("a@example.org"));
    QTest::newRow("another name") << withInLine(good(), FiscalTag::ItemName,
                                                QStringLiteral("Водоотведение"));
}

void tst_EmulatedRegister::refusesAnotherReceiptUnderTheSameNumber()
{
    QFETCH(QVariantMap, second);
    const QString number = QStringLiteral("17000000007001");
    QVERIFY(m_register->doReceipt(good(), number, m_result, m_error));
    QVERIFY(!m_register->doReceipt(second, number, m_result, m_error));
    QVERIFY(m_result.isEmpty());
    QVERIFY2(m_error.contains(number), qPrintable(m_error));
    QVERIFY2(m_error.contains(QStringLiteral("чек № 1 смены 1")), qPrintable(m_error));
    QCOMPARE(m_journal->receiptCount(), 1);
}

void tst_EmulatedRegister::anEmptyNumberIdentifiesNothing()
{
    QVERIFY(m_register->doReceipt(good(), QString(), m_result, m_error));
    QVERIFY(m_register->doReceipt(good(), QString(), m_result, m_error));
    QCOMPARE(m_journal->receiptCount(), 2);
}

void tst_EmulatedRegister::printsNothingWhenItsMemoryCannotBeRead()
{
    QVERIFY(print());
    {
        const QString name = QStringLiteral("breaker");
        QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        other.setDatabaseName(m_folder->filePath(QStringLiteral("fiscal.sqlite")));
        QVERIFY(other.open());
        QVERIFY(QSqlQuery(other).exec(QStringLiteral("ALTER TABLE documents RENAME TO lost")));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("breaker"));
    QVERIFY(!print(QStringLiteral("doubtful")));
    QVERIFY2(m_error.contains(QStringLiteral("не пробит")), qPrintable(m_error));
}

void tst_EmulatedRegister::shiftEndsAfterADay()
{
    QVERIFY(print());
    m_now = m_now.addSecs(24 * 3600 - 1);
    QVERIFY(print());
    m_now = m_now.addSecs(1);
    QSharedPointer<FsStatus> status;
    QVERIFY(m_register->getFiscalStatus(status));
    QVERIFY(!status->readyForReceipts());
    QVERIFY(!print());
    QVERIFY(m_error.contains(QStringLiteral("24")));
    QVERIFY(m_register->closeShift(m_error));
    QVERIFY(print());
    QCOMPARE(data().value(FiscalData::SHIFT).toInt(), 2);
    QCOMPARE(data().value(FiscalData::RECEIPT).toInt(), 1);
    // Two reports and three receipts of both shifts came before this receipt's shift report.
    QCOMPARE(data().value(FiscalData::NUMBER).toInt(), 6);
}

void tst_EmulatedRegister::closesTheShift()
{
    QVERIFY(!m_register->shiftIsOpen());
    QVERIFY(!m_register->closeShift(m_error));
    QVERIFY(!m_error.isEmpty());
    QVERIFY(print());
    QVERIFY(m_register->shiftIsOpen());
    m_register->setCondition(Condition::ShiftExpired);
    QVERIFY(m_register->closeShift(m_error));
    QVERIFY(m_error.isEmpty());
    QVERIFY(!m_register->shiftIsOpen());
    QCOMPARE(m_register->condition(), Condition::Ready);
}

void tst_EmulatedRegister::everyConditionHasAText()
{
    QStringList texts;
    for (Condition condition : EmulatedRegister::conditions()) {
        const QString text = EmulatedRegister::conditionText(condition);
        QVERIFY(!text.isEmpty());
        QVERIFY(!texts.contains(text));
        texts.append(text);
    }
    QCOMPARE(texts.size(), 8);
}

QTEST_GUILESS_MAIN(tst_EmulatedRegister)
#include "tst_emulatedregister.moc"
