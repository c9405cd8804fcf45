#include <bills/paymentcodereader.h>

#include <QTest>

namespace {

const QString fields =
    QStringLiteral("Name=АО «Вода»|PersonalAcc=40702810000000004107|BankName=Банк Приреченский|"
                   "BIC=040000999|CorrespAcc=30101810000000000999|Sum=150050|PersAcc=7001000101|"
                   "PaymPeriod=10.2026");

QString textOf(const ReadCode &code)
{
    QStringList pairs;
    for (const PaymentCode::Field &field : code.fields)
        pairs.append(field.name + QLatin1Char('=') + field.value);
    return pairs.join(QLatin1Char('|'));
}

QByteArray utf8(const QString &text)
{
    return text.toUtf8();
}

QByteArray windows(const QString &text)
{
    return CodeEncodings::encode(text, CodeEncoding::Windows1251);
}

} // namespace

class TestPaymentCodeReader : public QObject
{
    Q_OBJECT

private slots:
    void inOrder_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("UTF-8") << utf8(QStringLiteral("ST00012|") + fields);
        QTest::newRow("windows-1251") << windows(QStringLiteral("ST00011|") + fields);
        QTest::newRow("trailing separator")
            << utf8(QStringLiteral("ST00012|") + fields + QLatin1Char('|'));
        QTest::newRow("trailing line end")
            << utf8(QStringLiteral("ST00012|") + fields + QStringLiteral("|\r\n"));
    }

    void inOrder()
    {
        QFETCH(QByteArray, bytes);
        const ReadCode code = PaymentCodeReader::read(bytes);
        QCOMPARE(code.kind, ReadCode::Kind::Payment);
        QCOMPARE(code.warnings, QStringList());
        QCOMPARE(textOf(code), fields);
        QCOMPARE(code.field(QStringLiteral("Sum")), QStringLiteral("150050"));
        QCOMPARE(code.separator, QChar(QLatin1Char('|')));
    }

    void roundTrip_data()
    {
        QTest::addColumn<int>("digit");
        for (const CodeEncoding encoding : CodeEncodings::all())
            QTest::newRow(qPrintable(CodeEncodings::name(encoding))) << int(encoding);
    }

    void roundTrip()
    {
        QFETCH(int, digit);
        const auto encoding = CodeEncoding(digit);
        PaymentCode code;
        for (const QString &pair :
             QString(fields).remove(QChar(0xab)).remove(QChar(0xbb)).split(QLatin1Char('|')))
            code.setField(pair.section(QLatin1Char('='), 0, 0), pair.section(QLatin1Char('='), 1));
        const ReadCode read = PaymentCodeReader::read(code.toBytes(encoding));
        QCOMPARE(read.encoding, encoding);
        QCOMPARE(read.text, code.toText(encoding));
        QVERIFY(read.fields == code.fields());
        QCOMPARE(read.warnings, QStringList());
    }

    void deviations_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("warning");
        const QString head = QStringLiteral("ST00012|");
        const auto row = [](const char *title, const QByteArray &bytes, const QString &expected,
                            const char16_t *warning) {
            QTest::newRow(title) << bytes << expected << QString::fromUtf16(warning);
        };
        row("says 1251, is UTF-8", utf8(QStringLiteral("ST00011|") + fields), fields,
            u"обещает windows-1251, а текст записан в UTF-8");
        row("says UTF-8, is 1251", windows(head + fields), fields,
            u"обещает UTF-8, а текст записан в windows-1251");
        row("says KOI8-R, is 1251", windows(QStringLiteral("ST00013|") + fields), fields,
            u"обещает KOI8-R, а текст записан в windows-1251");
        row("digit 7", utf8(QStringLiteral("ST00017|") + fields), fields, u"не 1, 2 и не 3");
        row("header ST0011", utf8(QStringLiteral("ST0011|") + fields), fields,
            u"Заголовок с ошибкой");
        row("header of another version", utf8(QStringLiteral("ST00022|") + fields), fields,
            u"Заголовок с ошибкой");
        row("header in small letters", utf8(QStringLiteral("st00012|") + fields), fields,
            u"Заголовок с ошибкой");
        row("stray prefix", utf8(QStringLiteral("X1") + head + fields), fields,
            u"лишние знаки (2)");
        row("byte order mark", QByteArrayLiteral("\xef\xbb\xbf") + utf8(head + fields), fields,
            u"лишние знаки");
        row("look-alike letters in a name",
            utf8(head
                 + QString(fields).replace(QStringLiteral("PersAcc"), QStringLiteral("РеrsАсс"))),
            fields, u"русские буквы вместо латинских");
        row("name in another case",
            utf8(head
                 + QString(fields).replace(QStringLiteral("PersAcc"), QStringLiteral("PERSACC"))),
            fields, u"Имя поля «PERSACC» пишется PersAcc");
        row("blanks around",
            utf8(head
                 + QString(fields).replace(QStringLiteral("Sum=150050"),
                                           QStringLiteral(" Sum = 150050 "))),
            fields, u"");
        row("other separator",
            utf8(QStringLiteral("ST00012#")
                 + QString(fields).replace(QLatin1Char('|'), QLatin1Char('#'))),
            fields, u"разделены знаком «#»");
        row("other separator for the first block only",
            utf8(QStringLiteral("ST00012#")
                 + fields.left(fields.indexOf(QStringLiteral("|Sum")))
                       .replace(QLatin1Char('|'), QLatin1Char('#'))
                 + fields.mid(fields.indexOf(QStringLiteral("|Sum")))),
            fields, u"вместо объявленного «#»");
        row("encoded twice",
            utf8(CodeEncodings::decode(utf8(head + fields), CodeEncoding::Windows1251)), fields,
            u"закодирован дважды");
        row("sum in roubles",
            utf8(head
                 + QString(fields).replace(QStringLiteral("150050"), QStringLiteral("1500.50"))),
            QString(fields).replace(QStringLiteral("150050"), QStringLiteral("1500.50")),
            u"целое число копеек");
        row("sum of 19 digits",
            utf8(
                head
                + QString(fields).replace(QStringLiteral("150050"), QString(19, QLatin1Char('9')))),
            QString(fields).replace(QStringLiteral("150050"), QString(19, QLatin1Char('9'))),
            u"не больше 18");
        row("period MMYYYY",
            utf8(head
                 + QString(fields).replace(QStringLiteral("10.2026"), QStringLiteral("102026"))),
            QString(fields).replace(QStringLiteral("10.2026"), QStringLiteral("102026")),
            u"месяц и год");
        row("repeated name", utf8(head + fields + QStringLiteral("|Sum=1")),
            fields + QStringLiteral("|Sum=1"), u"Поле Sum повторяется");
        row("line break in a value", utf8(head + fields + QStringLiteral("|Purpose=a\nb")),
            fields + QStringLiteral("|Purpose=a\nb"), u"управляющий знак");
        row("sign of equality in a value", utf8(head + fields + QStringLiteral("|Purpose=a=b=c")),
            fields + QStringLiteral("|Purpose=a=b=c"), u"внутри значения есть «=»");
        row("byte order mark in a value",
            utf8(head
                 + QString(fields).replace(QStringLiteral("=7001000101"),
                                           QStringLiteral("=\ufeff7001000101"))),
            fields, u"метка порядка байтов");
        row("word null", utf8(head + fields + QStringLiteral("|Flat=null")),
            fields + QStringLiteral("|Flat="), u"записано слово null");
        row("empty name", utf8(head + fields + QStringLiteral("|=5")), fields, u"Поле без имени");
        row("block without a value", utf8(head + QStringLiteral("oops|") + fields), fields,
            u"без знака «=»");
        row("decomposed letter",
            utf8(head + fields
                 + QStringLiteral("|LastName=Зайцев").normalized(QString::NormalizationForm_D)),
            fields + QStringLiteral("|LastName=Зайцев"), u"");
        row("cut inside a letter",
            utf8(head + fields + QStringLiteral("|LastName=Зайцев")).chopped(1),
            fields + QStringLiteral("|LastName=Зайце\ufffd"), u"знаков повреждена");
        row("no bank", utf8(head + QString(fields).remove(QStringLiteral("BIC=040000999|"))),
            QString(fields).remove(QStringLiteral("BIC=040000999|")),
            u"Нет обязательного поля БИК (BIC)");
        row("no account of the payer",
            utf8(head + QString(fields).remove(QStringLiteral("PersAcc=7001000101|"))),
            QString(fields).remove(QStringLiteral("PersAcc=7001000101|")),
            u"Нет лицевого счёта плательщика");
        row("account under the wrong name",
            utf8(head
                 + QString(fields).replace(QStringLiteral("PersAcc="),
                                           QStringLiteral("PersonalAccount="))),
            QString(fields).replace(QStringLiteral("PersAcc="), QStringLiteral("PersonalAccount=")),
            u"записан в PersonalAccount");
        row("quotes around the name",
            utf8(head
                 + QString(fields).replace(QStringLiteral("АО «Вода»"),
                                           QStringLiteral("\"АО \"\"Вода\"\"\""))),
            QString(fields).replace(QStringLiteral("АО «Вода»"),
                                    QStringLiteral("\"АО \"\"Вода\"\"\"")),
            u"");
        row("missing sum is legal",
            utf8(head + QString(fields).remove(QStringLiteral("Sum=150050|"))),
            QString(fields).remove(QStringLiteral("Sum=150050|")), u"");
    }

    void deviations()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, warning);
        const ReadCode code = PaymentCodeReader::read(bytes);
        QCOMPARE(code.kind, ReadCode::Kind::Payment);
        QTEST(textOf(code), "expected");
        if (warning.isEmpty()) {
            QCOMPARE(code.warnings, QStringList());
        } else {
            const QString all = code.warnings.join(QLatin1Char('\n'));
            // A second separator is told after the first.
            QCOMPARE(code.warnings.size(),
                     all.contains(QStringLiteral("вместо объявленного")) ? 2 : 1);
            QVERIFY2(all.contains(warning), qPrintable(all));
        }
    }

    void textStaysAsItIs()
    {
        const QString text =
            QStringLiteral("ST00012#PERSACC= 1 |") + QChar(0x0421) + QStringLiteral("um=5");
        QCOMPARE(PaymentCodeReader::read(utf8(text)).text, text);
    }

    void otherKinds_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("kind");
        const auto row = [](const char *title, const QByteArray &bytes, ReadCode::Kind kind) {
            QTest::newRow(title) << bytes << int(kind);
        };
        row("receipt",
            QByteArrayLiteral(
                "t=20261121T1200&s=1500.50&fn=9999078900004792&i=12&fp=3522207165&n=1"),
            ReadCode::Kind::Receipt);
        row("receipt with seconds",
            QByteArrayLiteral(
                "t=20261121T120005&s=1500.50&fn=9999078900004792&i=12&fp=3522207165&n=1"),
            ReadCode::Kind::Receipt);
        row("link", QByteArrayLiteral("https://example.org/?ST00012|x=1"), ReadCode::Kind::Link);
        row("article", QByteArrayLiteral("4600000000008"), ReadCode::Kind::Number);
        row("goods mark",
            QByteArrayLiteral("010460000000000821abcdefghijklm\x1d"
                              "91EE06"),
            ReadCode::Kind::GoodsMark);
        row("goods mark without separators", QByteArrayLiteral("010460000000000821abcdefghijklm"),
            ReadCode::Kind::GoodsMark);
        row("words", utf8(QStringLiteral("просто текст")), ReadCode::Kind::Unknown);
        row("header inside a text", QByteArrayLiteral("see ST123| for more"),
            ReadCode::Kind::Unknown);
        row("header without a separator", QByteArrayLiteral("ST00012"), ReadCode::Kind::Unknown);
        row("typed under the Russian layout", utf8(QStringLiteral("ЫЕ00012/ЗукыФсс=1")),
            ReadCode::Kind::Unknown);
        row("empty", QByteArray(), ReadCode::Kind::Empty);
    }

    void otherKinds()
    {
        QFETCH(QByteArray, bytes);
        const ReadCode code = PaymentCodeReader::read(bytes);
        QTEST(int(code.kind), "kind");
        QVERIFY(code.fields.isEmpty());
        QVERIFY(!ReadCode::kindText(code.kind).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestPaymentCodeReader)
#include "tst_paymentcodereader.moc"
