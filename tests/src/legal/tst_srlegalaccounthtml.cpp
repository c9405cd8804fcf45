#include "billingsamples.h"
#include "goldenfile.h"
#include "legal/srlegalaccount.h"

#include <QTest>

using namespace BillingSamples;

class TestSrLegalAccountHtml : public QObject
{
    Q_OBJECT

private slots:
    void documents_data();
    void documents();
    void accountNumberIsShownAsContract();
};

void TestSrLegalAccountHtml::documents_data()
{
    QTest::addColumn<QVariantList>("list");
    QTest::addColumn<QString>("accountNumber");
    QTest::addColumn<QString>("contract");
    QTest::newRow("legal-full") << legalAccount() << QStringLiteral("Д-5")
                                << QStringLiteral("А-17");
    QTest::newRow("legal-empty") << QVariantList() << QString() << QString();
    QTest::newRow("legal-single-document")
        << QVariantList{field(SRAccount::FIELD_FIO, QStringLiteral("ООО \"Ромашка\"")),
                        field(SRAccount::FIELD_DEBT, QStringLiteral("5.00"), Edit::Refused,
                              QStringLiteral("Долг")),
                        recordList(
                            QStringLiteral("services"),
                            {service(1, QStringLiteral("Вода <хол.> 100%7"), QStringLiteral("1"),
                                     QStringLiteral("5"), QStringLiteral("0"))})}
        << QStringLiteral("Д-5") << QStringLiteral("<А&17>");
}

void TestSrLegalAccountHtml::documents()
{
    QFETCH(QVariantList, list);
    QFETCH(QString, accountNumber);
    QFETCH(QString, contract);
    SrLegalAccount account;
    account.setContract(contract);
    account.parseCheckList(list);
    account.setAccountNumber(accountNumber);

    const QString name = QLatin1String(QTest::currentDataTag());
    const QString differences =
        GoldenFile::difference(name + QStringLiteral(".html"), account.toHtml())
        + GoldenFile::difference(name + QStringLiteral("-summary.html"), account.toSummaryHtml());
    QVERIFY2(differences.isEmpty(), qPrintable(differences));
}

void TestSrLegalAccountHtml::accountNumberIsShownAsContract()
{
    SrLegalAccount account;
    account.setContract(QStringLiteral("11"));
    account.setAccountNumber(QStringLiteral("22"));
    QVERIFY(account.toHtml().contains(
        QStringLiteral("Лицевой счет № 11</H4>\n<H4 align=\"center\">Договор № 22</H4>")));
}

QTEST_GUILESS_MAIN(TestSrLegalAccountHtml)
#include "tst_srlegalaccounthtml.moc"
