#include "packs.h"
#include "seededbilling.h"

#include <billing/billingdatabase.h>

#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

using Payer = SampleAccount::Payer;
using Taking = BillingDatabase::Taking;

class tst_BillingDatabase : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void fillsAMissingFile();
    void seedsEverySample_data();
    void seedsEverySample();
    void samplesAddUp();
    void reopeningChangesNothing();
    void unknownNumber();
    void closedDatabase();
    void savesAnAccountBack();
    void takesAPack();
    void takesAPackOnce();
    void refusesAnotherPackUnderTheSameId();
    void refusesWhatItCannotAccountFor_data();
    void refusesWhatItCannotAccountFor();
    void keepsMoneyItCannotAllocate_data();
    void keepsMoneyItCannotAllocate();
    void linesWithOneId();
    void paysDocuments();
    void paidAdvanceIsNotOfferedAgain();
    void readings_data();
    void readings();

private:
    BillingAccount person(const QString &number)
    {
        const std::optional<BillingAccount> account =
            m_database->account(Payer::Individual, number);
        return account.value_or(BillingAccount());
    }
    BillingAccount firm(const QString &number)
    {
        const std::optional<BillingAccount> account = m_database->account(Payer::Legal, number);
        return account.value_or(BillingAccount());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;
    std::unique_ptr<BillingDatabase> m_database;
};

void tst_BillingDatabase::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_file = m_folder->filePath(QStringLiteral("биллинг с пробелом/billing.sqlite"));
    QVERIFY(copySeededBilling(m_file));
    m_database = std::make_unique<BillingDatabase>();
    QVERIFY2(m_database->open(m_file), qPrintable(m_database->lastError()));
}

void tst_BillingDatabase::cleanup()
{
    m_database.reset();
    m_folder.reset();
}

void tst_BillingDatabase::fillsAMissingFile()
{
    BillingDatabase fresh;
    QVERIFY2(fresh.open(m_folder->filePath(QStringLiteral("new/billing.sqlite"))),
             qPrintable(fresh.lastError()));
    QVERIFY(fresh.account(Payer::Individual, SampleNumber::ORDINARY));
    QCOMPARE(fresh.packCount(), 0);
}

void tst_BillingDatabase::seedsEverySample_data()
{
    QTest::addColumn<int>("index");
    const QVector<SampleAccount> &samples = sampleAccounts();
    for (int i = 0; i < samples.size(); ++i)
        QTest::newRow(qUtf8Printable(samples.at(i).number)) << i;
}

void tst_BillingDatabase::seedsEverySample()
{
    QFETCH(int, index);
    const SampleAccount sample = sampleAccounts().at(index);
    QVERIFY(!sample.description.isEmpty());
    const std::optional<BillingAccount> account = m_database->account(sample.payer, sample.number);
    const bool known =
        sample.number != SampleNumber::UNKNOWN && sample.number != SampleNumber::LEGAL_UNKNOWN;
    QCOMPARE(account.has_value(), known);
    if (!known)
        return;
    QCOMPARE(account->behaviour, sample.behaviour);
    QVERIFY(!account->fio.isEmpty());
    QCOMPARE(account->services.isEmpty(), sample.payer == Payer::Legal);
    QCOMPARE(account->documents.isEmpty(), sample.payer == Payer::Individual);
    const bool hasDocument = std::any_of(
        account->documents.begin(), account->documents.end(),
        [&](const BillingDocument &document) { return document.number == sample.document; });
    QVERIFY(sample.document.isEmpty() || hasDocument);
}

void tst_BillingDatabase::samplesAddUp()
{
    for (const SampleAccount &sample : sampleAccounts()) {
        const std::optional<BillingAccount> account =
            m_database->account(sample.payer, sample.number);
        if (!account)
            continue;
        qint64 due = 0;
        for (const BillingServiceLine &line : account->services)
            due += line.topay;
        for (const BillingDocument &document : account->documents) {
            qint64 lines = 0;
            for (const BillingServiceLine &line : document.services)
                lines += line.topay;
            QCOMPARE(lines, document.topay);
            due += document.topay;
        }
        QVERIFY2(due == account->debt, qPrintable(sample.number));
    }
    QCOMPARE(person(SampleNumber::ORDINARY).debt, Q_INT64_C(150050));
    QCOMPARE(person(SampleNumber::LARGE).services.size(), 40);
    QCOMPARE(firm(SampleNumber::LEGAL_MANY).documents.size(), 300);
    QCOMPARE(person(SampleNumber::NO_METERS).meters.size(), 0);
    QVERIFY(!person(SampleNumber::READ_ONLY).distributedEditable);
    QVERIFY(person(SampleNumber::OVERPAID).debt < 0);
    QCOMPARE(person(SampleNumber::PENALTY).services.last().serviceId, Q_INT64_C(3924990));
}

void tst_BillingDatabase::reopeningChangesNothing()
{
    QCOMPARE(m_database->takePack(Packs::pack(
                 1, {Packs::payment(18722, SampleNumber::ORDINARY, 50,
                                    Packs::payData({{3924901, QStringLiteral("0.50")}}))})),
             Taking::Taken);
    m_database = std::make_unique<BillingDatabase>();
    QVERIFY(m_database->open(m_file));
    QCOMPARE(person(SampleNumber::ORDINARY).debt, Q_INT64_C(150000));
    QCOMPARE(m_database->fields(QStringLiteral("service")).size(), 5);
    QVERIFY(m_database->fields(QStringLiteral("service")).last().editable);
    QVERIFY(m_database->hasPack(QStringLiteral("1")));
}

void tst_BillingDatabase::unknownNumber()
{
    QVERIFY(!m_database->account(Payer::Legal, SampleNumber::ORDINARY));
    QVERIFY(m_database->lastError().isEmpty());
    QVERIFY(!m_database->account(Payer::Individual, QStringLiteral("' OR 1=1 --")));
    QVERIFY(m_database->lastError().isEmpty());
}

void tst_BillingDatabase::closedDatabase()
{
    BillingDatabase closed;
    QVERIFY(!closed.account(Payer::Individual, SampleNumber::ORDINARY));
    QVERIFY(!closed.lastError().isEmpty());
    QCOMPARE(closed.takePack(Packs::pack(1, {Packs::payment(18722, SampleNumber::ORDINARY, 1)})),
             Taking::Refused);
    QCOMPARE(closed.packCount(), 0);
}

void tst_BillingDatabase::savesAnAccountBack()
{
    BillingAccount account = person(SampleNumber::ORDINARY);
    account.number = QStringLiteral("0012345");
    account.fio = QStringLiteral("O'Нил «%1»");
    account.services = {{5, QStringLiteral("Полив"), 100, -200}};
    QVERIFY2(m_database->saveAccount(account), qPrintable(m_database->lastError()));
    QVERIFY(m_database->saveAccount(account));
    const BillingAccount back = person(QStringLiteral("0012345"));
    QCOMPARE(back.fio, account.fio);
    QCOMPARE(back.services.size(), 1);
    QCOMPARE(back.services.first().topay, Q_INT64_C(-200));
    QCOMPARE(back.meters.size(), account.meters.size());
}

void tst_BillingDatabase::takesAPack()
{
    const BillingAccount before = person(SampleNumber::ORDINARY);
    const qint64 meter = before.meters.first().meterId;
    const qint64 reading = before.meters.first().lastValue + 7;
    const QString data =
        Packs::payData({{3924901, QStringLiteral("482.60")}, {3924902, QStringLiteral("100.00")}},
                       {{meter, reading}});
    const QVariantMap pack =
        Packs::pack(Q_INT64_C(9223372036854775807),
                    {Packs::payment(18722, SampleNumber::ORDINARY, 58260, data)});
    QCOMPARE(m_database->takePack(pack), Taking::Taken);
    const BillingAccount after = person(SampleNumber::ORDINARY);
    QCOMPARE(after.debt, before.debt - 58260);
    QCOMPARE(after.services.at(0).topay, Q_INT64_C(0));
    QCOMPARE(after.services.at(1).topay, before.services.at(1).topay - 10000);
    QCOMPARE(after.services.at(2).topay, before.services.at(2).topay);
    QCOMPARE(after.meters.first().lastValue, reading);
    const QString id = QStringLiteral("9223372036854775807");
    QVERIFY(m_database->hasPack(id));
    QCOMPARE(m_database->takenPayments(id).size(), 1);
    QCOMPARE(m_database->takenPayments(id).first().sum, Q_INT64_C(58260));
    QVERIFY(m_database->takenPayments(id).first().allocated);
    QCOMPARE(m_database->takenReadings(id), (QVector<QPair<qint64, qint64>>{{meter, reading}}));
}

void tst_BillingDatabase::takesAPackOnce()
{
    const QVariantMap pack =
        Packs::pack(11, {Packs::payment(18722, SampleNumber::ORDINARY, 100,
                                        Packs::payData({{3924901, QStringLiteral("1.00")}}))});
    QCOMPARE(m_database->takePack(pack), Taking::Taken);
    const qint64 debt = person(SampleNumber::ORDINARY).debt;
    for (int i = 0; i < 3; ++i)
        QCOMPARE(m_database->takePack(pack), Taking::AlreadyTaken);
    QCOMPARE(person(SampleNumber::ORDINARY).debt, debt);
    QCOMPARE(m_database->packCount(), 1);
}

void tst_BillingDatabase::refusesAnotherPackUnderTheSameId()
{
    QCOMPARE(
        m_database->takePack(Packs::pack(11, {Packs::payment(18722, SampleNumber::ORDINARY, 100)})),
        Taking::Taken);
    const qint64 debt = person(SampleNumber::ORDINARY).debt;
    QCOMPARE(
        m_database->takePack(Packs::pack(11, {Packs::payment(18722, SampleNumber::ORDINARY, 200)})),
        Taking::Refused);
    QVERIFY(m_database->lastError().contains(QStringLiteral("11")));
    QCOMPARE(person(SampleNumber::ORDINARY).debt, debt);
}

void tst_BillingDatabase::refusesWhatItCannotAccountFor_data()
{
    QTest::addColumn<QVariantMap>("pack");
    const QVariantMap good = Packs::payment(18722, SampleNumber::ORDINARY, 100);
    QVariantMap noSum = good;
    noSum.remove(QStringLiteral("summ"));
    QVariantMap noProvider = good;
    noProvider.remove(QStringLiteral("workProviderId"));
    QTest::newRow("empty") << QVariantMap();
    QTest::newRow("no payments") << Packs::pack(5, {});
    QTest::newRow("zero id") << Packs::pack(0, {good});
    QTest::newRow("negative id") << Packs::pack(-5, {good});
    QTest::newRow("no sum") << Packs::pack(5, {noSum});
    QTest::newRow("no provider") << Packs::pack(5, {noProvider});
    QTest::newRow("negative sum") << Packs::pack(
        5, {Packs::payment(18722, SampleNumber::ORDINARY, -1)});
    QTest::newRow("second payment bad") << Packs::pack(5, {good, noSum});
}

void tst_BillingDatabase::refusesWhatItCannotAccountFor()
{
    QFETCH(QVariantMap, pack);
    QCOMPARE(m_database->takePack(pack), Taking::Refused);
    QVERIFY(!m_database->lastError().isEmpty());
    QCOMPARE(m_database->packCount(), 0);
    QCOMPARE(person(SampleNumber::ORDINARY).debt, Q_INT64_C(150050));
}

void tst_BillingDatabase::keepsMoneyItCannotAllocate_data()
{
    QTest::addColumn<QVariantMap>("payment");
    QTest::newRow("unknown account") << Packs::payment(18722, SampleNumber::UNKNOWN, 12345);
    QTest::newRow("unknown contract") << Packs::payment(18723, SampleNumber::LEGAL_UNKNOWN, 12345);
    QTest::newRow("unknown document") << Packs::payment(18723, SampleNumber::LEGAL_SEVERAL, 12345,
                                                        QString(), QStringLiteral("нет"));
}

void tst_BillingDatabase::keepsMoneyItCannotAllocate()
{
    QFETCH(QVariantMap, payment);
    const qint64 debt = firm(SampleNumber::LEGAL_SEVERAL).debt;
    QCOMPARE(m_database->takePack(Packs::pack(3, {payment})), Taking::Taken);
    const QVector<TakenPayment> taken = m_database->takenPayments(QStringLiteral("3"));
    QCOMPARE(taken.size(), 1);
    QVERIFY(!taken.first().allocated);
    QCOMPARE(taken.first().sum, Q_INT64_C(12345));
    QCOMPARE(firm(SampleNumber::LEGAL_SEVERAL).debt, debt);
}

void tst_BillingDatabase::linesWithOneId()
{
    BillingAccount account = person(SampleNumber::ORDINARY);
    account.number = QStringLiteral("77");
    account.services = {{5, QStringLiteral("Полив"), 100, 100},
                        {5, QStringLiteral("Полив"), 300, 300}};
    QVERIFY(m_database->saveAccount(account));
    const QString data = Packs::payData({{5, QStringLiteral("0.10")}, {5, QStringLiteral("3.00")}});
    QCOMPARE(
        m_database->takePack(Packs::pack(4, {Packs::payment(18722, account.number, 310, data)})),
        Taking::Taken);
    QCOMPARE(person(account.number).services.at(0).topay, Q_INT64_C(90));
    QCOMPARE(person(account.number).services.at(1).topay, Q_INT64_C(0));
}

void tst_BillingDatabase::paysDocuments()
{
    const BillingAccount before = firm(SampleNumber::LEGAL_SEVERAL);
    const QString first = Packs::payData(
        {{3924911, QStringLiteral("12500.00")}, {3924912, QStringLiteral("14800.50")}});
    const QString third = Packs::payData({{3924911, QStringLiteral("0.20")}});
    QCOMPARE(
        m_database->takePack(Packs::pack(
            6, {Packs::payment(18723, before.number, 2730050, first, before.documents.at(0).number),
                Packs::payment(18723, before.number, 20, third, before.documents.at(2).number)})),
        Taking::Taken);
    const BillingAccount after = firm(SampleNumber::LEGAL_SEVERAL);
    QCOMPARE(after.debt, before.debt - 2730070);
    QCOMPARE(after.documents.at(0).topay, Q_INT64_C(0));
    QCOMPARE(after.documents.at(0).services.at(1).topay, Q_INT64_C(0));
    QCOMPARE(after.documents.at(2).services.at(0).topay,
             before.documents.at(2).services.at(0).topay - 20);
    QCOMPARE(after.documents.at(4).topay, before.documents.at(4).topay);
}

void tst_BillingDatabase::paidAdvanceIsNotOfferedAgain()
{
    const BillingAccount before = person(SampleNumber::ADVANCE);
    QCOMPARE(before.remainder, Q_INT64_C(25000));
    QCOMPARE(m_database->takePack(Packs::pack(8, {Packs::payment(18722, before.number, 25000)})),
             Taking::Taken);
    QCOMPARE(person(SampleNumber::ADVANCE).remainder, Q_INT64_C(0));
    QCOMPARE(person(SampleNumber::ADVANCE).debt, before.debt - 25000);
}

void tst_BillingDatabase::readings_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("kept");
    QTest::addColumn<int>("moved");
    QTest::newRow("higher") << 5 << 1 << 5;
    QTest::newRow("same") << 0 << 0 << 0;
    QTest::newRow("lower is kept, not believed") << -3 << 1 << 0;
}

void tst_BillingDatabase::readings()
{
    QFETCH(int, step);
    QFETCH(int, kept);
    QFETCH(int, moved);
    const BillingMeter meter = person(SampleNumber::ORDINARY).meters.first();
    const QString data = Packs::payData({}, {{meter.meterId, meter.lastValue + step}});
    QCOMPARE(m_database->takePack(
                 Packs::pack(9, {Packs::payment(18722, SampleNumber::ORDINARY, 1, data)})),
             Taking::Taken);
    QCOMPARE(m_database->takenReadings(QStringLiteral("9")).size(), kept);
    QCOMPARE(person(SampleNumber::ORDINARY).meters.first().lastValue, meter.lastValue + moved);
}

QTEST_GUILESS_MAIN(tst_BillingDatabase)
#include "tst_billingdatabase.moc"
