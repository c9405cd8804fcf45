#include "receipts.h"

#include <fiscal/fiscaldocumentchecker.h>

#include <molvacore/check.h>

#include <QtTest>

#include <algorithm>

using namespace Receipts;
using Severity = FiscalFinding::Severity;

class tst_FiscalDocumentChecker : public QObject
{
    Q_OBJECT

private slots:
    void accepts_data();
    void accepts();
    void findsErrors_data();
    void findsErrors();
    void findsWarnings_data();
    void findsWarnings();
    void textsSayWhere();
    void acceptsWhatACheckMakes();

private:
    const FiscalDocumentChecker m_checker{};
};

void tst_FiscalDocumentChecker::accepts_data()
{
    QTest::addColumn<QVariantMap>("document");
    QTest::newRow("two lines of an agent") << good();
    QTest::newRow("without an agent") << withLines({line(QStringLiteral("Вода"), 100)}, 100, 0);
    QTest::newRow("zero price") << withLines(
        {line(QStringLiteral("Вода"), 0), line(QStringLiteral("Сток"), 5)}, 5, 0);
    QTest::newRow("zero total") << withLines({line(QStringLiteral("Вода"), 0)}, 0, 0);
    QTest::newRow("Ё and №") << withLines({line(QStringLiteral("Ёмкость № 5 ёлка"), 100)}, 0, 100);
    QTest::newRow("128 letters") << withLines({line(QString(128, QChar(0x0416)), 100)}, 100, 0);
    QTest::newRow("e-mail") << with(good(), FiscalTag::ClientContact,
                                    QStringLiteral("a-b (c)@mail.ru"));
    QTest::newRow("no contact") << with(good(), FiscalTag::ClientContact, QVariant());
    QTest::newRow("no cashier") << with(good(), FiscalTag::Cashier, QVariant());
    QTest::newRow("no attribute") << with(good(), FiscalTag::UserAttribute, QVariant());
    QTest::newRow("12-digit INN") << with(good(), FiscalTag::UserInn,
                                          QStringLiteral("001200450104"));
    QTest::newRow("no INN at all")
        << with(good(), FiscalTag::BuyerInn, QStringLiteral("000000000000"));
    QTest::newRow("padded register number")
        << with(good(), FiscalTag::RegisterNumber, QStringLiteral("0004107000012345    "));

    QVariantMap advance = agentLine(QString(), 1000);
    advance.remove(key(FiscalTag::ItemName));
    advance.insert(key(FiscalTag::CalculationMethod), 3);
    advance.insert(key(FiscalTag::ItemType), 10);
    QTest::newRow("advance without a name") << withLines({advance}, 1000, 0);

    QVariantMap fraction = line(QStringLiteral("Вода"), 333);
    fraction.insert(key(FiscalTag::Quantity), QStringLiteral("1.500"));
    fraction.insert(key(FiscalTag::ItemCost), 500);
    QTest::newRow("half a kopeck of rounding") << withLines({fraction}, 500, 0);

    QVariantList many;
    for (int i = 0; i < 60; ++i)
        many.append(agentLine(QStringLiteral("Водоснабжение, точка учёта %1").arg(i), 100));
    QTest::newRow("sixty lines") << withLines(many, 6000, 0);
}

void tst_FiscalDocumentChecker::accepts()
{
    QFETCH(QVariantMap, document);
    const QVector<FiscalFinding> findings = m_checker.check(document);
    QVERIFY2(FiscalDocumentChecker::printable(findings),
             qUtf8Printable(FiscalDocumentChecker::errorText(findings)));
    QVERIFY2(findings.isEmpty(), findings.isEmpty() ? "" : qUtf8Printable(findings.first().text));
}

void tst_FiscalDocumentChecker::findsErrors_data()
{
    QTest::addColumn<QVariantMap>("document");
    QTest::addColumn<int>("tag");
    const auto row = [](const char *name, int tag, const QVariantMap &document) {
        QTest::newRow(name) << document << tag;
    };
    row("empty document", FiscalTag::Item, {});
    row("no lines", FiscalTag::Item, withLines({}, 0, 0));
    for (int tag : {FiscalTag::SettlementSign, FiscalTag::TaxSystem, FiscalTag::UserInn,
                    FiscalTag::RegisterNumber, FiscalTag::Total})
        QTest::addRow("without %d", tag) << with(good(), tag, QVariant()) << tag;
    for (int tag : {FiscalTag::ItemName, FiscalTag::Price, FiscalTag::Quantity, FiscalTag::ItemCost,
                    FiscalTag::VatRate, FiscalTag::CalculationMethod, FiscalTag::ItemType,
                    FiscalTag::SupplierInn})
        QTest::addRow("line without %d", tag) << withInLine(good(), tag, QVariant()) << tag;

    row("settlement sign 5", FiscalTag::SettlementSign, with(good(), FiscalTag::SettlementSign, 5));
    row("two tax systems", FiscalTag::TaxSystem, with(good(), FiscalTag::TaxSystem, 3));
    row("VAT code 0", FiscalTag::VatRate, withInLine(good(), FiscalTag::VatRate, 0));
    row("VAT code 13", FiscalTag::VatRate, withInLine(good(), FiscalTag::VatRate, 13));
    row("item type 28", FiscalTag::ItemType, withInLine(good(), FiscalTag::ItemType, 28));
    row("method 8", FiscalTag::CalculationMethod,
        withInLine(good(), FiscalTag::CalculationMethod, 8));
    row("agent ordinal 6", FiscalTag::ItemAgentSign,
        withInLine(good(), FiscalTag::ItemAgentSign, 6));
    row("kind as text", FiscalTag::ItemType,
        withInLine(good(), FiscalTag::ItemType, QStringLiteral("4")));

    row("INN of 10 unpadded", FiscalTag::UserInn,
        with(good(), FiscalTag::UserInn, QStringLiteral("0012003454")));
    row("INN of 11", FiscalTag::UserInn,
        with(good(), FiscalTag::UserInn, QStringLiteral("00120034541")));
    row("INN with a letter", FiscalTag::UserInn,
        with(good(), FiscalTag::UserInn, QStringLiteral("00120034O4  ")));
    row("INN with arabic digits", FiscalTag::UserInn,
        with(good(), FiscalTag::UserInn, QString(12, QChar(0x0661))));
    row("buyer's INN", FiscalTag::BuyerInn,
        with(good(), FiscalTag::BuyerInn, QStringLiteral("123")));
    row("supplier's INN", FiscalTag::SupplierInn,
        withInLine(good(), FiscalTag::SupplierInn, QStringLiteral("0012003461")));
    row("register number", FiscalTag::RegisterNumber,
        with(good(), FiscalTag::RegisterNumber, QStringLiteral("41070000123")));

    row("name of 129", FiscalTag::ItemName,
        withInLine(good(), FiscalTag::ItemName, QString(129, QChar(0x0416))));
    row("blank name", FiscalTag::ItemName,
        withInLine(good(), FiscalTag::ItemName, QStringLiteral("  ")));
    row("cashier of 65", FiscalTag::Cashier,
        with(good(), FiscalTag::Cashier, QString(65, QChar(0x0416))));
    row("buyer of 257", FiscalTag::Buyer,
        with(good(), FiscalTag::Buyer, QString(257, QChar(0x0416))));
    row("contact of 65", FiscalTag::ClientContact,
        with(good(), FiscalTag::ClientContact,
             QString(60, QLatin1Char('a')) + QStringLiteral("@b.ru")));
    row("phone without a plus", FiscalTag::ClientContact,
        with(good(), FiscalTag::ClientContact, QStringLiteral("79123456789")));
    row("phone with brackets", FiscalTag::ClientContact,
        with(good(), FiscalTag::ClientContact, QStringLiteral("+7(912)3456789")));
    row("attribute without a value", FiscalTag::UserAttributeValue,
        with(good(), FiscalTag::UserAttribute,
             QVariantMap{{key(FiscalTag::UserAttributeName), QStringLiteral("Терминал")}}));

    row("negative price", FiscalTag::Price,
        withLines({line(QStringLiteral("Вода"), -100), line(QStringLiteral("Сток"), 200)}, 100, 0));
    row("price as a fraction", FiscalTag::Price, withInLine(good(), FiscalTag::Price, 1000.5));
    row("price as text", FiscalTag::Price,
        withInLine(good(), FiscalTag::Price, QStringLiteral("100050")));
    row("sum beyond six bytes", FiscalTag::Total,
        with(good(), FiscalTag::Total, Q_INT64_C(281474976710656)));
    row("cost off by two kopecks", FiscalTag::ItemCost,
        withInLine(good(), FiscalTag::ItemCost, Q_INT64_C(100052)));
    row("quantity 0", FiscalTag::Quantity,
        withInLine(good(), FiscalTag::Quantity, QStringLiteral("0.000")));
    row("quantity with a comma", FiscalTag::Quantity,
        withInLine(good(), FiscalTag::Quantity, QStringLiteral("1,000")));
    row("negative quantity", FiscalTag::Quantity,
        withInLine(good(), FiscalTag::Quantity, QStringLiteral("-1.000")));
    row("total below the lines", FiscalTag::Total,
        with(good(), FiscalTag::Total, Q_INT64_C(150049)));
    row("paid too little", FiscalTag::Total, with(good(), FiscalTag::CashSum, Q_INT64_C(50049)));
    row("paid too much", FiscalTag::Total, with(good(), FiscalTag::CashlessSum, Q_INT64_C(100001)));
    row("not paid", FiscalTag::Total,
        with(with(good(), FiscalTag::CashSum, QVariant()), FiscalTag::CashlessSum, QVariant()));

    row("supplier without a sign", FiscalTag::SupplierInn,
        withInLine(good(), FiscalTag::ItemAgentSign, QVariant()));
    row("supplier without a name", FiscalTag::SupplierName,
        inside(good(), FiscalTag::SupplierData, FiscalTag::SupplierName, QVariant()));
    row("supplier's phone", FiscalTag::SupplierPhone,
        inside(good(), FiscalTag::SupplierData, FiscalTag::SupplierPhone,
               QStringList{QStringLiteral("8 800")}));
    row("bank's operation of a payment agent", FiscalTag::BankAgentOperation,
        inside(good(), FiscalTag::AgentData, FiscalTag::BankAgentOperation,
               QStringLiteral("Перевод")));
    row("bank agent without an operator", FiscalTag::TransferOperatorInn,
        withInLine(good(), FiscalTag::ItemAgentSign, 1));
    QVariantMap huge = agentLine(QString(128, QChar(0x0416)), 100);
    QVariantMap supplier = huge.value(key(FiscalTag::SupplierData)).toMap();
    QStringList phones;
    for (int i = 0; i < 50; ++i)
        phones.append(QStringLiteral("+780010018720%1").arg(100 + i));
    supplier.insert(key(FiscalTag::SupplierPhone), phones);
    huge.insert(key(FiscalTag::SupplierData), supplier);
    row("line beyond 1024 bytes", FiscalTag::Item, withLines({huge}, 100, 0));
    QVariantList many;
    for (int i = 0; i < 200; ++i)
        many.append(agentLine(QStringLiteral("Водоснабжение, точка учёта %1").arg(i), 100));
    row("document beyond 32768 bytes", 0, withLines(many, 20000, 0));
}

void tst_FiscalDocumentChecker::findsErrors()
{
    QFETCH(QVariantMap, document);
    QFETCH(int, tag);
    const QVector<FiscalFinding> findings = m_checker.check(document);
    QVERIFY(!FiscalDocumentChecker::printable(findings));
    const bool found =
        std::any_of(findings.begin(), findings.end(), [tag](const FiscalFinding &finding) {
            return finding.tag == tag && finding.severity == Severity::Error;
        });
    QVERIFY2(found, qUtf8Printable(FiscalDocumentChecker::errorText(findings)));
}

void tst_FiscalDocumentChecker::findsWarnings_data()
{
    QTest::addColumn<QVariantMap>("document");
    QTest::addColumn<int>("tag");
    QTest::newRow("emoji") << withInLine(good(), FiscalTag::ItemName, QString::fromUtf8("Вода 💧"))
                           << FiscalTag::ItemName;
    QTest::newRow("rouble sign") << withInLine(good(), FiscalTag::ItemName,
                                               QString::fromUtf8("Вода 5 ₽"))
                                 << FiscalTag::ItemName;
    QTest::newRow("check digit") << with(good(), FiscalTag::BuyerInn,
                                         QStringLiteral("0012003455  "))
                                 << FiscalTag::BuyerInn;
    QTest::newRow("second check digit")
        << with(good(), FiscalTag::BuyerInn, QStringLiteral("001200450105")) << FiscalTag::BuyerInn;
    QTest::newRow("no phone of the agent")
        << inside(good(), FiscalTag::AgentData, FiscalTag::PayAgentPhone, QVariant())
        << FiscalTag::PayAgentPhone;
    QTest::newRow("no phone of the supplier")
        << inside(good(), FiscalTag::SupplierData, FiscalTag::SupplierPhone, QVariant())
        << FiscalTag::SupplierPhone;
}

void tst_FiscalDocumentChecker::findsWarnings()
{
    QFETCH(QVariantMap, document);
    QFETCH(int, tag);
    const QVector<FiscalFinding> findings = m_checker.check(document);
    QVERIFY(FiscalDocumentChecker::printable(findings));
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().tag, tag);
    QCOMPARE(findings.first().severity, Severity::Warning);
}

void tst_FiscalDocumentChecker::textsSayWhere()
{
    const QVector<FiscalFinding> findings =
        m_checker.check(withInLine(good(), FiscalTag::ItemName, QString(130, QChar(0x0416))));
    QCOMPARE(findings.size(), 1);
    QCOMPARE(
        findings.first().text,
        QStringLiteral("Строка 1: реквизит «наименование» длиннее 128 знаков: 130 (тег 1030)."));
}

void tst_FiscalDocumentChecker::acceptsWhatACheckMakes()
{
    CheckOperation operation;
    operation.setItemName(QStringLiteral("Водоотведение"));
    operation.setPrice(basix::FixNumber(100, 12345));
    operation.setTaxNumber(6);
    operation.setMethod(PaymentMethod::FullPayment);
    operation.setItemType(PaymentItemType::Service);
    operation.setAgentFlag(AgentFlag::PayAgent);
    operation.setProvider(
        ProviderData(QStringLiteral("АО «Селмар Ривенхолд»"), {QStringLiteral("+78001001872")}));
    operation.setProviderInn(QStringLiteral("0012003461"));
    AgentData agent;
    agent.setPaymentAgengPhone(QStringLiteral("+78001004107"));
    agent.setPaymentOperatorPhone(QStringLiteral("+78001004100"));
    operation.setAgent(agent);
    Check check;
    check.setTax(FDTax::General);
    check.setType(PaymentType::Income);
    check.setCheckType(CheckType::Sale);
    check.addOperation(operation);
    check.setUserInn(QStringLiteral("0012003454"));
    check.setRegNumber(QStringLiteral("0004107000012345"));
    check.setClientPhone(QStringLiteral("89123456789"));
    CheckPayment payment;
    payment.setMoneyType(MoneyType::Card);
    payment.setSum(basix::FixNumber(100, 12345));
    check.addPayment(payment);
    const QVector<FiscalFinding> findings =
        m_checker.check(check.toDocument(false, MoneyType::Cash, true));
    QVERIFY2(findings.isEmpty(), findings.isEmpty() ? "" : qUtf8Printable(findings.first().text));
}

QTEST_GUILESS_MAIN(tst_FiscalDocumentChecker)
#include "tst_fiscaldocumentchecker.moc"
