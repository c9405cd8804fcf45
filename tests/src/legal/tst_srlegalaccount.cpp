#include "billingsamples.h"
#include "legal/srlegalaccount.h"
#include "messagelog.h"

#include <QTest>

using namespace BillingSamples;

class TestSrLegalAccount : public QObject
{
    Q_OBJECT

private slots:
    void parsesDocuments();
    void documentsInsideTheValue();
    void answerWithServicesOnlyIsOneDocument();
    void answerWithoutDocumentsAndServices();
    void documentsWinOverServices();
    void documentWithoutParamListIsEmpty();
    void parsingAgainReplacesTheDocuments();
    void isValid_data();
    void isValid();
    void amount();
    void payParamsAreEmpty();
    void contractIsTrimmed();
    void receiptAddressIsNormalisedAndLogged();
    void cloneIsIndependent();
    void equality();
    void freshAccount();
};

static SrLegalAccount sample()
{
    SrLegalAccount account;
    account.setContract(QStringLiteral("А-17"));
    account.parseCheckList(legalAccount());
    account.setAccountNumber(QStringLiteral("Д-5"));
    account.setStartAmount(basix::FixNumber(100, 5000));
    account.setClientPhoneOrEmail(QStringLiteral("a@b.ru"));
    return account;
}

static QVariantList oneService()
{
    return service(1, QStringLiteral("Вода"), QStringLiteral("1"), QStringLiteral("2"),
                   QStringLiteral("3"));
}

void TestSrLegalAccount::freshAccount()
{
    SrLegalAccount account;
    QCOMPARE(account.startAmount().toString(), QStringLiteral("0.00"));
    QCOMPARE(account.amount().toString(), QStringLiteral("0.00"));
    QVERIFY(!account.isValid());
    account.setStartAmount(basix::FixNumber(100, 5));
    QCOMPARE(account.startAmount().toString(), QStringLiteral("0.05"));
}

void TestSrLegalAccount::parsesDocuments()
{
    const SrLegalAccount account = sample();
    QVERIFY(account.isLegal());
    QVERIFY(account.isValid());
    QCOMPARE(account.documents().size(), 2);
    QCOMPARE(account.documents().at(0).docNumber(), QStringLiteral("А-17"));
    QCOMPARE(account.documents().at(0).services().size(), 2);
    QCOMPARE(account.documents().at(1).docNumber(), QStringLiteral("А-18"));
    QCOMPARE(account.fio(), QStringLiteral("ООО \"Ромашка\""));
}

void TestSrLegalAccount::documentsInsideTheValue()
{
    const QVariantMap list =
        recordList(QStringLiteral("documents"), {document(1, QStringLiteral("7"), {oneService()})});
    SrLegalAccount account;
    account.parseCheckList({field(SrLegalAccount::FIELD_DOCUMENTS, list)});
    QCOMPARE(account.documents().size(), 1);
    QCOMPARE(account.documents().first().docNumber(), QStringLiteral("7"));
}

void TestSrLegalAccount::answerWithServicesOnlyIsOneDocument()
{
    SrLegalAccount account;
    account.setContract(QStringLiteral(" А-17 "));
    account.parseCheckList({field(SRAccount::FIELD_FIO, QStringLiteral("ООО")),
                            field(SRAccount::FIELD_DEBT, QStringLiteral("2.00")),
                            recordList(QStringLiteral("services"), {oneService()})});
    QCOMPARE(account.documents().size(), 1);
    const SrDocument document = account.documents().first();
    QCOMPARE(document.docNumber(), QStringLiteral("А-17"));
    QCOMPARE(document.topay().toString(), QStringLiteral("2.00"));
    QCOMPARE(document.services().size(), 1);
    QVERIFY(account.isValid());
    QCOMPARE(account.amount().toString(), QStringLiteral("3.00"));
}

void TestSrLegalAccount::answerWithoutDocumentsAndServices()
{
    SrLegalAccount account;
    account.setContract(QStringLiteral("1"));
    account.parseCheckList(header(QStringLiteral("ООО"), QStringLiteral("адрес")));
    QVERIFY(account.documents().isEmpty());
    QVERIFY(!account.isValid());
    QCOMPARE(account.fio(), QStringLiteral("ООО"));
}

void TestSrLegalAccount::documentsWinOverServices()
{
    SrLegalAccount account;
    account.parseCheckList({recordList(QStringLiteral("services"), {oneService()}),
                            recordList(QStringLiteral("documents"), {})});
    QVERIFY(account.documents().isEmpty());
}

void TestSrLegalAccount::documentWithoutParamListIsEmpty()
{
    SrLegalAccount account;
    account.parseCheckList(
        {QVariantMap{{QStringLiteral("name"), QStringLiteral("documents")},
                     {QStringLiteral("paramList"), QVariantList{QVariantMap(), 5}}}});
    QCOMPARE(account.documents(), (QList<SrDocument>{SrDocument(), SrDocument()}));
    QVERIFY(!account.isValid());
}

void TestSrLegalAccount::parsingAgainReplacesTheDocuments()
{
    SrLegalAccount account = sample();
    account.parseCheckList({});
    QVERIFY(account.documents().isEmpty());
    QCOMPARE(account.contract(), QStringLiteral("А-17"));
    QCOMPARE(account.accountNumber(), QStringLiteral("Д-5"));
}

void TestSrLegalAccount::isValid_data()
{
    QTest::addColumn<QStringList>("numbers");
    QTest::addColumn<bool>("valid");
    QTest::newRow("no documents") << QStringList() << false;
    QTest::newRow("one") << QStringList{QStringLiteral("1")} << true;
    QTest::newRow("one of two is not")
        << QStringList{QStringLiteral("1"), QStringLiteral(" ")} << false;
}

void TestSrLegalAccount::isValid()
{
    QFETCH(QStringList, numbers);
    QVector<QVariantList> documents;
    for (const QString &number : numbers)
        documents.append(document(1, number, {oneService()}));
    SrLegalAccount account;
    account.parseCheckList({recordList(QStringLiteral("documents"), documents)});
    QTEST(account.isValid(), "valid");
}

void TestSrLegalAccount::amount()
{
    QCOMPARE(sample().amount().toString(), QStringLiteral("832.40"));
    QCOMPARE(SrLegalAccount().amount().toString(), QStringLiteral("0.00"));
}

void TestSrLegalAccount::payParamsAreEmpty()
{
    QCOMPARE(sample().toPayParamsList(), QVariantList());
    QCOMPARE(sample().toJsonParamsList(), QStringLiteral("[]"));
}

void TestSrLegalAccount::contractIsTrimmed()
{
    SrLegalAccount account;
    account.setContract(QStringLiteral("\t12 3 "));
    QCOMPARE(account.contract(), QStringLiteral("12 3"));
}

void TestSrLegalAccount::receiptAddressIsNormalisedAndLogged()
{
    SrLegalAccount account;
    MessageLog log;
    account.setClientPhoneOrEmail(QStringLiteral("+7 (912) 345-67-89"));
    QCOMPARE(account.clientPhoneOrEmail(), QStringLiteral("79123456789"));
    QCOMPARE(log.messages().size(), 1);
    const MessageLog::Message line = log.messages().constFirst();
    QCOMPARE(line.type, QtWarningMsg);
    QVERIFY(line.function.contains(QLatin1String("SrLegalAccount::setClientPhoneOrEmail")));
    QVERIFY(line.text.contains(QStringLiteral("SrLegalAccount::setClientPhoneOrEmail")));
    QVERIFY(line.text.indexOf(QStringLiteral("79123456789"))
            > line.text.indexOf(QStringLiteral("+7 (912) 345-67-89")));
    account.setClientPhoneOrEmail(QStringLiteral(" a (b)@c "));
    QCOMPARE(account.clientPhoneOrEmail(), QStringLiteral(" a (b)@c "));
}

void TestSrLegalAccount::cloneIsIndependent()
{
    const SrLegalAccount account = sample();
    const auto copy = account.clone().dynamicCast<SrLegalAccount>();
    QVERIFY(copy);
    QVERIFY(*copy == account);
    QList<SrDocument> documents = copy->documents();
    documents[0].cleanDebt();
    copy->setDocuments(documents);
    QCOMPARE(account.amount().toString(), QStringLiteral("832.40"));
    QCOMPARE(copy->amount().toString(), QStringLiteral("12.30"));
}

void TestSrLegalAccount::equality()
{
    const SrLegalAccount account = sample();
    QVERIFY(account == sample());
    SrLegalAccount other = account;
    other.setContract(QString());
    QVERIFY(other != account);
    other = account;
    other.setDocuments({});
    QVERIFY(other != account);
    other = account;
    other.setStartAmount(basix::FixNumber(100, 1));
    QVERIFY(other != account);
    other = account;
    other.setAccountNumber(QString());
    QVERIFY(other != account);
    other = account;
    other.setClientPhoneOrEmail(QString());
    QVERIFY(other != account);
}

QTEST_GUILESS_MAIN(TestSrLegalAccount)
#include "tst_srlegalaccount.moc"
