#include "billingsamples.h"
#include "individual/srpersonalaccount.h"
#include "sraccount.h"

#include <QTest>

using namespace BillingSamples;

/// The header that both kinds of account share, seen through the simpler of the two.
class TestSrAccount : public QObject
{
    Q_OBJECT

private slots:
    void readsHeader();
    void changesHeader();
    void readOnlyHeader();
    void headerOfNumbers();
    void accountNumberIsTrimmed();
    void equalityComparesFieldsAndNumber();
    void fieldNames();
};

static SrPersonalAccount sample(Edit edit = Edit::Allowed)
{
    SrPersonalAccount account;
    QVariantList list;
    for (const QString &name :
         {SRAccount::FIELD_FIO, SRAccount::FIELD_ADDRESS, SRAccount::FIELD_INN})
        list.append(field(name, name.toUpper(), edit));
    for (const QString &name : {SRAccount::FIELD_CHARGE, SRAccount::FIELD_DEBT,
                                SRAccount::FIELD_REMAINDER, SRAccount::FIELD_TAX})
        list.append(field(name, QStringLiteral("%1.5").arg(name.size()), edit));
    account.parseCheckList(list);
    return account;
}

void TestSrAccount::readsHeader()
{
    const SrPersonalAccount personal = sample();
    const SRAccount &account = personal;
    QCOMPARE(account.fio(), QStringLiteral("FIO"));
    QCOMPARE(account.address(), QStringLiteral("ADDRESS"));
    QCOMPARE(account.inn(), QStringLiteral("INN"));
    QCOMPARE(account.charge().toString(), QStringLiteral("6.50"));
    QCOMPARE(account.debt().toString(), QStringLiteral("4.50"));
    QCOMPARE(account.remainder().toString(), QStringLiteral("9.50"));
    QCOMPARE(account.tax().toString(), QStringLiteral("3.50"));
}

static void changeAll(SRAccount &account)
{
    account.setFio(QStringLiteral("ф"));
    account.setAddress(QStringLiteral("а"));
    account.setInn(QStringLiteral("и"));
    account.setCharge(basix::FixNumber(100, 1));
    account.setDebt(basix::FixNumber(100, -2));
    account.setRemainder(basix::FixNumber(100, 3));
    account.setTax(basix::FixNumber(100, 4));
}

void TestSrAccount::changesHeader()
{
    SrPersonalAccount account = sample();
    changeAll(account);
    QCOMPARE(account.fio(), QStringLiteral("ф"));
    QCOMPARE(account.address(), QStringLiteral("а"));
    QCOMPARE(account.inn(), QStringLiteral("и"));
    QCOMPARE(account.getValue(SRAccount::FIELD_CHARGE), QVariant(QStringLiteral("0.01")));
    QCOMPARE(account.getValue(SRAccount::FIELD_DEBT), QVariant(QStringLiteral("-0.02")));
    QCOMPARE(account.getValue(SRAccount::FIELD_REMAINDER), QVariant(QStringLiteral("0.03")));
    QCOMPARE(account.getValue(SRAccount::FIELD_TAX), QVariant(QStringLiteral("0.04")));
}

void TestSrAccount::readOnlyHeader()
{
    SrPersonalAccount account = sample(Edit::Refused);
    const SrPersonalAccount before = account;
    changeAll(account);
    QVERIFY(account == before);

    SrPersonalAccount empty;
    changeAll(empty);
    QVERIFY(empty == SrPersonalAccount());
}

void TestSrAccount::headerOfNumbers()
{
    SrPersonalAccount account;
    account.parseCheckList(
        {field(SRAccount::FIELD_INN, 770712345678.0), field(SRAccount::FIELD_REMAINDER, 1e6)});
    QCOMPARE(account.inn(), QStringLiteral("770712345678"));
    QCOMPARE(account.remainder().toString(), QStringLiteral("1000000.00"));
}

void TestSrAccount::accountNumberIsTrimmed()
{
    SrPersonalAccount account;
    account.setAccountNumber(QStringLiteral("\t 0012 345 \n"));
    QCOMPARE(account.accountNumber(), QStringLiteral("0012 345"));
}

void TestSrAccount::equalityComparesFieldsAndNumber()
{
    const SrPersonalAccount personal = sample();
    SrPersonalAccount other = personal;
    const SRAccount &a = personal;
    const SRAccount &b = other;
    QVERIFY(a == b);
    other.setAccountNumber(QStringLiteral("1"));
    QVERIFY(a != b);
    other = personal;
    other.setFio(QStringLiteral("другой"));
    QVERIFY(a != b);
}

void TestSrAccount::fieldNames()
{
    QCOMPARE(SRAccount::FIELD_SERVICES, QStringLiteral("services"));
    QCOMPARE(SRAccount::FIELD_COUNTERS, QStringLiteral("counters"));
    QCOMPARE(SRAccount::FIELD_FIO, QStringLiteral("fio"));
    QCOMPARE(SRAccount::FIELD_ADDRESS, QStringLiteral("address"));
    QCOMPARE(SRAccount::FIELD_CHARGE, QStringLiteral("charge"));
    QCOMPARE(SRAccount::FIELD_DEBT, QStringLiteral("debt"));
    QCOMPARE(SRAccount::FIELD_REMAINDER, QStringLiteral("remainder"));
    QCOMPARE(SRAccount::FIELD_INN, QStringLiteral("inn"));
    QCOMPARE(SRAccount::FIELD_TAX, QStringLiteral("tax"));
}

QTEST_GUILESS_MAIN(TestSrAccount)
#include "tst_sraccount.moc"
