#include <bills/paymentcode.h>

#include <QTest>

Q_DECLARE_METATYPE(CodeEncoding)

namespace {

PaymentCode mandatory()
{
    PaymentCode code;
    code.setField(QStringLiteral("Name"), QStringLiteral("ООО Вода"));
    code.setField(QStringLiteral("PersonalAcc"), QStringLiteral("40702810000000004107"));
    code.setField(QStringLiteral("BankName"), QStringLiteral("Банк"));
    code.setField(QStringLiteral("BIC"), QStringLiteral("040000999"));
    code.setField(QStringLiteral("CorrespAcc"), QStringLiteral("30101810000000000999"));
    return code;
}

const QString block =
    QStringLiteral("Name=ООО Вода|PersonalAcc=40702810000000004107|BankName=Банк|BIC=040000999|"
                   "CorrespAcc=30101810000000000999");

QString digits(int count)
{
    return QString(count, QLatin1Char('7'));
}

} // namespace

class TestPaymentCode : public QObject
{
    Q_OBJECT

private slots:
    void bytesOfEachEncoding_data()
    {
        QTest::addColumn<CodeEncoding>("encoding");
        QTest::addColumn<QByteArray>("header");
        QTest::newRow("windows-1251") << CodeEncoding::Windows1251 << QByteArrayLiteral("ST00011|");
        QTest::newRow("UTF-8") << CodeEncoding::Utf8 << QByteArrayLiteral("ST00012|");
        QTest::newRow("KOI8-R") << CodeEncoding::Koi8R << QByteArrayLiteral("ST00013|");
    }

    void bytesOfEachEncoding()
    {
        QFETCH(CodeEncoding, encoding);
        QFETCH(QByteArray, header);
        PaymentCode code = mandatory();
        code.setField(QStringLiteral("Sum"), QStringLiteral("150050"));
        QCOMPARE(code.problems(encoding), QStringList());
        QCOMPARE(code.toBytes(encoding),
                 header + CodeEncodings::encode(block + QStringLiteral("|Sum=150050"), encoding));
    }

    void mandatoryBlockComesFirst()
    {
        PaymentCode code;
        code.setField(QStringLiteral("PersAcc"), QStringLiteral("1"));
        for (const PaymentCode::Field &field : mandatory().fields())
            code.setField(field.name, field.value);
        QCOMPARE(code.toText(CodeEncoding::Utf8),
                 QStringLiteral("ST00012|") + block + QStringLiteral("|PersAcc=1"));
    }

    void aFieldIsReplacedAndTakenOut()
    {
        PaymentCode code = mandatory();
        code.setField(QStringLiteral("Sum"), QStringLiteral("1"));
        code.setField(QStringLiteral("Sum"), QStringLiteral("2"));
        QCOMPARE(code.field(QStringLiteral("Sum")), QStringLiteral("2"));
        QCOMPARE(code.fields().size(), 6);
        code.setField(QStringLiteral("Sum"), QString());
        QCOMPARE(code.fields().size(), 5);
        QCOMPARE(code.field(QStringLiteral("Sum")), QString());
    }

    void aCopyIsIndependent()
    {
        const PaymentCode original = mandatory();
        PaymentCode copy = original;
        QVERIFY(copy == original);
        copy.setField(QStringLiteral("BIC"), QStringLiteral("040000111"));
        QVERIFY(copy != original);
        QCOMPARE(original.field(QStringLiteral("BIC")), QStringLiteral("040000999"));
    }

    void correspondentAccountMayBeMissing()
    {
        PaymentCode code = mandatory();
        code.setField(QStringLiteral("CorrespAcc"), QString());
        QCOMPARE(code.problems(CodeEncoding::Utf8), QStringList());
        QVERIFY(code.toText(CodeEncoding::Utf8).endsWith(QStringLiteral("|CorrespAcc=")));
    }

    void fieldLimits_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("problem"); // a part of the text; empty: none
        const auto row = [](const char *title, const char *name, const QString &value,
                            const QString &problem = QString()) {
            QTest::newRow(title) << QString::fromLatin1(name) << value << problem;
        };
        const QString exactly20 = QStringLiteral("ровно 20 цифр");
        row("Name of 160", "Name", QString(160, QLatin1Char('x')));
        row("Name of 161", "Name", QString(161, QLatin1Char('x')),
            QStringLiteral("161 знаков, а помещается 160"));
        row("no Name", "Name", QString(), QStringLiteral("Получатель (Name): не заполнено"));
        row("account of 19", "PersonalAcc", digits(19), exactly20);
        row("account of 21", "PersonalAcc", digits(21), exactly20);
        row("account with a letter", "PersonalAcc", digits(19) + QLatin1Char('O'), exactly20);
        row("account in Arabic digits", "PersonalAcc", QString(20, QChar(0x0661)), exactly20);
        row("no account", "PersonalAcc", QString(), QStringLiteral("(PersonalAcc): не заполнено"));
        row("BankName of 45", "BankName", QString(45, QLatin1Char('x')));
        row("BankName of 46", "BankName", QString(46, QLatin1Char('x')),
            QStringLiteral("помещается 45"));
        row("BIC of 8", "BIC", digits(8), QStringLiteral("ровно 9 цифр"));
        row("BIC of 10", "BIC", digits(10), QStringLiteral("ровно 9 цифр"));
        row("correspondent 0", "CorrespAcc", QStringLiteral("0"));
        row("correspondent of 19", "CorrespAcc", digits(19), exactly20);
        row("sum of 18 digits", "Sum", digits(18));
        row("sum of 19 digits", "Sum", digits(19), QStringLiteral("не больше 18 цифр"));
        row("sum in roubles with a point", "Sum", QStringLiteral("1500.50"),
            QStringLiteral("целое число копеек"));
        row("sum in roubles with a comma", "Sum", QStringLiteral("1500,50"),
            QStringLiteral("целое число копеек"));
        row("sum with a blank", "Sum", QStringLiteral("1 500"),
            QStringLiteral("целое число копеек"));
        row("negative sum", "Sum", QStringLiteral("-5"), QStringLiteral("целое число копеек"));
        row("sum 0", "Sum", QStringLiteral("0"), QStringLiteral("ноль"));
        row("one kopeck", "Sum", QStringLiteral("1"));
        row("Purpose of 210", "Purpose", QString(210, QLatin1Char('x')));
        row("Purpose of 211", "Purpose", QString(211, QLatin1Char('x')),
            QStringLiteral("помещается 210"));
        row("INN of 10", "PayeeINN", digits(10));
        row("INN of 12", "PayerINN", digits(12));
        row("INN of 11", "PayeeINN", digits(11), QStringLiteral("10 или 12 цифр"));
        row("KPP of 8", "KPP", digits(8), QStringLiteral("ровно 9 цифр"));
        row("CBC of 19", "CBC", digits(19), exactly20);
        row("OKTMO of 8", "OKTMO", digits(8));
        row("OKTMO of 12", "OKTMO", digits(12), QStringLiteral("не больше 11"));
        row("DocNo of 16", "DocNo", digits(16), QStringLiteral("помещается 15"));
        row("date", "DocDate", QStringLiteral("31.03.2026"));
        row("impossible date", "DocDate", QStringLiteral("31.02.2026"),
            QStringLiteral("нужна дата"));
        row("period", "PaymPeriod", QStringLiteral("12.2026"));
        row("period without a month", "PaymPeriod", QStringLiteral("2026"),
            QStringLiteral("месяц и год"));
        row("month 13", "PaymPeriod", QStringLiteral("13.2026"), QStringLiteral("месяц и год"));
        row("month 0", "PaymPeriod", QStringLiteral("00.2026"), QStringLiteral("месяц и год"));
        row("period with a slash", "PaymPeriod", QStringLiteral("03/2026"),
            QStringLiteral("месяц и год"));
        row("technical code", "TechCode", QStringLiteral("02"));
        row("technical code of one digit", "TechCode", QStringLiteral("2"),
            QStringLiteral("ровно 2"));
        row("name of one's own", "MyField", QStringLiteral("anything"));
        row("document number", "BarCode", QStringLiteral("2026/0101"));
        row("sign of equality in a value", "Purpose", QStringLiteral("a=b"));
        row("look-alike letter in a name", "Sum\xD1", QStringLiteral("1"),
            QStringLiteral("латинские буквы"));
        row("line break in a value", "Purpose", QStringLiteral("a\nb"),
            QStringLiteral("управляющий знак"));
        row("emoji in UTF-8", "Purpose", QStringLiteral("😀"));
    }

    void fieldLimits()
    {
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(QString, problem);
        PaymentCode code = mandatory();
        code.setField(name, value);
        const QStringList problems = code.problems(CodeEncoding::Utf8);
        if (problem.isEmpty()) {
            QCOMPARE(problems, QStringList());
            QVERIFY(!code.toBytes(CodeEncoding::Utf8).isEmpty());
        } else {
            QCOMPARE(problems.size(), 1);
            QVERIFY2(problems.constFirst().contains(problem), qPrintable(problems.constFirst()));
            QVERIFY(code.toBytes(CodeEncoding::Utf8).isEmpty());
        }
    }

    void anEmptyNameIsRefused()
    {
        PaymentCode code = mandatory();
        code.setField(QString(), QStringLiteral("x"));
        QCOMPARE(code.problems(CodeEncoding::Utf8).size(), 1);
    }

    void blockIsCountedInBytesOfTheEncoding()
    {
        PaymentCode code = mandatory();
        code.setField(QStringLiteral("Name"), QString(100, QChar(0x0429)));
        QCOMPARE(code.problems(CodeEncoding::Windows1251), QStringList());
        const QStringList problems = code.problems(CodeEncoding::Utf8);
        QCOMPARE(problems.size(), 1);
        QVERIFY2(problems.constFirst().contains(QStringLiteral("помещается 300")),
                 qPrintable(problems.constFirst()));
    }

    void optionalFieldsDoNotCountIntoTheBlock()
    {
        PaymentCode code = mandatory();
        code.setField(QStringLiteral("PayerAddress"), QString(500, QLatin1Char('x')));
        QCOMPARE(code.problems(CodeEncoding::Utf8), QStringList());
    }

    void wholeCodeFitsIntoAPicture()
    {
        PaymentCode code = mandatory();
        code.setField(QStringLiteral("PayerAddress"), QStringLiteral("x"));
        const int rest = PaymentCode::MAXIMUM_BYTES - code.toBytes(CodeEncoding::Utf8).size();
        code.setField(QStringLiteral("PayerAddress"), QString(rest + 1, QLatin1Char('x')));
        QCOMPARE(code.toBytes(CodeEncoding::Utf8).size(), PaymentCode::MAXIMUM_BYTES);
        code.setField(QStringLiteral("PayerAddress"), QString(rest + 2, QLatin1Char('x')));
        QCOMPARE(code.problems(CodeEncoding::Utf8).size(), 1);
    }

    void encodingLacksACharacter()
    {
        PaymentCode code = mandatory();
        code.setField(QStringLiteral("Name"), QStringLiteral("АО «Вода»"));
        QCOMPARE(code.problems(CodeEncoding::Windows1251), QStringList());
        const QStringList problems = code.problems(CodeEncoding::Koi8R);
        QCOMPARE(problems.size(), 1);
        QVERIFY2(problems.constFirst().contains(QStringLiteral("KOI8-R нет знаков ««»»")),
                 qPrintable(problems.constFirst()));
        QVERIFY(code.toBytes(CodeEncoding::Koi8R).isEmpty());
    }

    void anotherSeparatorIsFound()
    {
        PaymentCode code = mandatory();
        code.setField(QStringLiteral("Purpose"), QStringLiteral("a|b#c"));
        QCOMPARE(code.problems(CodeEncoding::Utf8), QStringList());
        QVERIFY(
            code.toText(CodeEncoding::Utf8).startsWith(QStringLiteral("ST00012;Name=ООО Вода;")));
    }

    void chosenSeparatorMustBeFree()
    {
        PaymentCode code = mandatory();
        code.setSeparator(QLatin1Char('/'));
        QCOMPARE(code.problems(CodeEncoding::Utf8), QStringList());
        code.setField(QStringLiteral("BarCode"), QStringLiteral("2026/0101"));
        const QStringList problems = code.problems(CodeEncoding::Utf8);
        QCOMPARE(problems.size(), 1);
        QVERIFY2(problems.constFirst().contains(QStringLiteral("Разделитель «/»")),
                 qPrintable(problems.constFirst()));
    }

    void noSeparatorIsLeft()
    {
        PaymentCode code = mandatory();
        code.setField(QStringLiteral("Purpose"), QStringLiteral("|#;:^_~{}!$%&()*+,/@"));
        QCOMPARE(code.problems(CodeEncoding::Utf8).size(), 1);
        QVERIFY(code.toBytes(CodeEncoding::Utf8).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestPaymentCode)
#include "tst_paymentcode.moc"
