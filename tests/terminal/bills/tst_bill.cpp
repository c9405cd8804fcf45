#include "samplebills.h"

#include <QTest>

class TestBill : public QObject
{
    Q_OBJECT

private slots:
    void personsCode()
    {
        QCOMPARE(
            personBill().code(CodeEncoding::Utf8).toText(CodeEncoding::Utf8),
            QStringLiteral(
                "ST00012|Name=АО «Селмар Ривенхолд»|PersonalAcc=40702810000000004107|"
                "BankName=АО «Приреченский Банк», г. Приреченск|BIC=040000999|"
                "CorrespAcc=30101810000000000999|PayeeINN=0012003461|KPP=001201001|Sum=150050|"
                "PersAcc=7001000101|PaymPeriod=10.2026|LastName=Кравцова|FirstName=Мария|"
                "MiddleName=Петровна|PayerAddress=г. Приреченск, ул. Набережная, д. 12, кв. 34|"
                "Purpose=Оплата за воду по счёту 7001000101 за октябрь 2026|TechCode=02"));
    }

    void documentsCode()
    {
        const PaymentCode code = firmBill().code(CodeEncoding::Utf8);
        QCOMPARE(code.field(QStringLiteral("PersAcc")), SampleNumber::LEGAL_ONE_DOCUMENT);
        QCOMPARE(code.field(QStringLiteral("BarCode")), SampleNumber::LEGAL_ONE_DOCUMENT_NUMBER);
        QCOMPARE(code.field(QStringLiteral("Sum")), QStringLiteral("3955050"));
        QCOMPARE(code.field(QStringLiteral("PayerINN")), QStringLiteral("0012005010"));
        QCOMPARE(code.field(QStringLiteral("PaymPeriod")), QString());
    }

    void everySampleHasAValidCode_data()
    {
        QTest::addColumn<int>("digit");
        for (const CodeEncoding encoding : CodeEncodings::all())
            QTest::newRow(qPrintable(CodeEncodings::name(encoding))) << int(encoding);
    }

    void everySampleHasAValidCode()
    {
        QFETCH(int, digit);
        const auto encoding = CodeEncoding(digit);
        for (const BillingAccount &account : SampleCatalogue::accounts()) {
            const Bill bill = account.payer == SampleAccount::Payer::Individual
                ? Bill::forPerson(account, wishFor(2026, 1))
                : Bill::forDocument(account, account.documents.constLast(), wishFor(2026, 1));
            const PaymentCode code = bill.code(encoding);
            QCOMPARE(code.problems(encoding), QStringList());
            QVERIFY(code.toText(encoding).startsWith(QStringLiteral("ST0001%1|").arg(digit)));
        }
    }

    void linesAddUp_data()
    {
        QTest::addColumn<QString>("number");
        QTest::addColumn<qint64>("total");
        QTest::newRow("ordinary") << SampleNumber::ORDINARY << qint64(150050);
        QTest::newRow("debt of six months") << SampleNumber::DEBT << qint64(900300);
        QTest::newRow("overpaid") << SampleNumber::OVERPAID << qint64(-75025);
    }

    void linesAddUp()
    {
        QFETCH(QString, number);
        const Bill bill = personBill(number);
        QTEST(bill.total(), "total");
        qint64 sum = 0;
        for (const Bill::Line &line : bill.lines()) {
            QCOMPARE(line.charge + line.debt, line.topay);
            sum += line.topay;
        }
        QCOMPARE(sum, bill.total());
    }

    void sumOfTheCode_data()
    {
        QTest::addColumn<QString>("number");
        QTest::addColumn<qint64>("own"); // 0: not given
        QTest::addColumn<bool>("without");
        QTest::addColumn<QString>("expected");
        QTest::newRow("what is due")
            << SampleNumber::ORDINARY << qint64(0) << false << QStringLiteral("150050");
        QTest::newRow("another sum")
            << SampleNumber::ORDINARY << qint64(100) << false << QStringLiteral("100");
        QTest::newRow("none") << SampleNumber::ORDINARY << qint64(0) << true << QString();
        QTest::newRow("none beats another")
            << SampleNumber::ORDINARY << qint64(100) << true << QString();
        QTest::newRow("overpaid") << SampleNumber::OVERPAID << qint64(0) << false << QString();
        QTest::newRow("paid in advance")
            << SampleNumber::OVERPAID << qint64(5000) << false << QStringLiteral("5000");
    }

    void sumOfTheCode()
    {
        QFETCH(QString, number);
        QFETCH(qint64, own);
        Bill::Wish wish = wishFor(2026, 3);
        QFETCH(bool, without);
        wish.withoutSum = without;
        if (own > 0)
            wish.sum = own;
        QTEST(Bill::forPerson(sampleAccount(number), wish)
                  .code(CodeEncoding::Utf8)
                  .field(QStringLiteral("Sum")),
              "expected");
    }

    void signsThatTheEncodingLacksAreReplaced()
    {
        const PaymentCode koi = firmBill().code(CodeEncoding::Koi8R);
        QCOMPARE(koi.field(QStringLiteral("Name")), QStringLiteral("АО \"Селмар Ривенхолд\""));
        const PaymentCode windows = firmBill().code(CodeEncoding::Windows1251);
        QCOMPARE(windows.field(QStringLiteral("Name")), QStringLiteral("АО «Селмар Ривенхолд»"));
    }

    void payerThatIsNoPersonKeepsItsName()
    {
        const PaymentCode code = personBill(SampleNumber::LARGE).code(CodeEncoding::Utf8);
        QCOMPARE(code.field(QStringLiteral("LastName")), QStringLiteral("Общежитие «Приречное»"));
        QCOMPARE(code.field(QStringLiteral("FirstName")), QString());
    }

    void periodText()
    {
        const BillingAccount account = sampleAccount(SampleNumber::ORDINARY);
        QCOMPARE(Bill::forPerson(account, wishFor(2026, 1)).periodText(),
                 QStringLiteral("январь 2026"));
        QCOMPARE(Bill::forPerson(account, wishFor(2025, 12)).periodText(),
                 QStringLiteral("декабрь 2025"));
    }

    void aNameWithTheSeparatorGetsAnotherOne()
    {
        BillingAccount account = sampleAccount(SampleNumber::ORDINARY);
        account.address += QStringLiteral(" | корпус %1");
        const PaymentCode code =
            Bill::forPerson(account, wishFor(2026, 1)).code(CodeEncoding::Utf8);
        QCOMPARE(code.problems(CodeEncoding::Utf8), QStringList());
        QVERIFY(code.toText(CodeEncoding::Utf8).startsWith(QStringLiteral("ST00012#")));
        QCOMPARE(code.field(QStringLiteral("PayerAddress")), account.address);
    }
};

QTEST_GUILESS_MAIN(TestBill)
#include "tst_bill.moc"
