#include "billingsamples.h"
#include "goldenfile.h"
#include "individual/srpersonalaccount.h"

#include <QTest>

using namespace BillingSamples;

class TestSrPersonalAccountHtml : public QObject
{
    Q_OBJECT

private slots:
    void documents_data();
    void documents();
};

void TestSrPersonalAccountHtml::documents_data()
{
    QTest::addColumn<QVariantList>("list");
    QTest::addColumn<QString>("accountNumber");
    QTest::addColumn<QString>("period");
    QTest::newRow("personal-full")
        << personalAccount() << QStringLiteral("0012345") << QStringLiteral("03-2024");
    QTest::newRow("personal-empty") << QVariantList() << QString() << QString();
    QTest::newRow("personal-without-counters")
        << QVariantList{field(SRAccount::FIELD_FIO, QStringLiteral("Петров")),
                        recordList(QStringLiteral("services"),
                                   {service(1, QStringLiteral("Вода"), QStringLiteral("1"),
                                            QStringLiteral("2"), QStringLiteral("3"))})}
        << QStringLiteral("1") << QString();
    QTest::newRow("personal-hostile")
        << QVariantList{field(SRAccount::FIELD_FIO, QStringLiteral("<b>%1 & \"Ко\"</b>")),
                        field(SRAccount::FIELD_ADDRESS, QStringLiteral("%2 <img src=x>")),
                        field(SRAccount::FIELD_CHARGE, 1e6, Edit::Allowed,
                              QStringLiteral("<u>%4</u>")),
                        recordList(QStringLiteral("services"),
                                   {service(1, QStringLiteral("</td>%3"), QStringLiteral("x"),
                                            QStringLiteral("-2"), QStringLiteral("3"))})}
        << QStringLiteral("<1>") << QStringLiteral("%1");
}

void TestSrPersonalAccountHtml::documents()
{
    QFETCH(QVariantList, list);
    QFETCH(QString, accountNumber);
    QFETCH(QString, period);
    SrPersonalAccount account;
    account.parseCheckList(list);
    account.setAccountNumber(accountNumber);
    account.setPeriod(period);

    const QString name = QLatin1String(QTest::currentDataTag());
    const QString differences =
        GoldenFile::difference(name + QStringLiteral(".html"), account.toHtml())
        + GoldenFile::difference(name + QStringLiteral("-summary.html"), account.toSummaryHtml());
    QVERIFY2(differences.isEmpty(), qPrintable(differences));
}

QTEST_GUILESS_MAIN(TestSrPersonalAccountHtml)
#include "tst_srpersonalaccounthtml.moc"
