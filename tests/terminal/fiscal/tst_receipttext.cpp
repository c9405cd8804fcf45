#include "receipts.h"

#include <fiscal/fiscalrecord.h>
#include <fiscal/receipttext.h>

#include <QtTest>

using namespace Receipts;

namespace {

QVariantMap fiscalData()
{
    return {
        {FiscalData::STORAGE, QStringLiteral("9960440300000001")},
        {FiscalData::NUMBER, 42},
        {FiscalData::SIGN, QStringLiteral("0123456789")},
        {FiscalData::SHIFT, 3},
        {FiscalData::RECEIPT, 7},
        {FiscalData::TIME, QStringLiteral("2026-11-21T09:05:59")},
        {FiscalData::QR,
         QStringLiteral("t=20261121T0905&s=1500.50&fn=9960440300000001&i=42&fp=0123456789&n=1")}};
}

} // namespace

class tst_ReceiptText : public QObject
{
    Q_OBJECT

private slots:
    void wholeReceipt();
    void everyLineFits_data();
    void everyLineFits();
    void unregisteredReceipt();
};

void tst_ReceiptText::wholeReceipt()
{
    const ReceiptText text(good(), fiscalData());
    const QString expected = QString::fromUtf8("                  КАССОВЫЙ ЧЕК\n"
                                               "                     ПРИХОД\n"
                                               "Терминал                                    4107\n"
                                               "г. Приреченск, ул. Набережная, д. 12, кв. 34\n"
                                               "Лицевой счет                          7001000101\n"
                                               "------------------------------------------------\n"
                                               "1. Холодное водоснабжение\n"
                                               "1.000 x 1000.50                         =1000.50\n"
                                               "  НДС не облагается\n"
                                               "  УСЛУГА, ПОЛНЫЙ РАСЧЕТ\n"
                                               "  ПЛ. АГЕНТ\n"
                                               "  ТЛФ. ПЛ. АГЕНТА                   +78001004107\n"
                                               "  ТЛФ. ОП. ПР. ПЛАТЕЖА              +78001004100\n"
                                               "  ПОСТАВЩИК                АО \"Селмар Ривенхолд\"\n"
                                               "  ТЛФ. ПОСТАВЩИКА                   +78001001872\n"
                                               "  ИНН ПОСТАВЩИКА                      0012003461\n"
                                               "2. Водоотведение\n"
                                               "1.000 x 500.00                           =500.00\n"
                                               "  НДС не облагается\n"
                                               "  УСЛУГА, ПОЛНЫЙ РАСЧЕТ\n"
                                               "  ПЛ. АГЕНТ\n"
                                               "  ТЛФ. ПЛ. АГЕНТА                   +78001004107\n"
                                               "  ТЛФ. ОП. ПР. ПЛАТЕЖА              +78001004100\n"
                                               "  ПОСТАВЩИК                АО \"Селмар Ривенхолд\"\n"
                                               "  ТЛФ. ПОСТАВЩИКА                   +78001001872\n"
                                               "  ИНН ПОСТАВЩИКА                      0012003461\n"
                                               "------------------------------------------------\n"
                                               "ИТОГ                                    =1500.50\n"
                                               "НАЛИЧНЫМИ                                =500.50\n"
                                               "БЕЗНАЛИЧНЫМИ                            =1000.00\n"
                                               "------------------------------------------------\n"
                                               "СНО                                          ОСН\n"
                                               "ТЛФ./ПОЧТА ПОКУПАТЕЛЯ               +79123456789\n"
                                               "КАССИР                   Фёдорова Вера Ильинична\n"
                                               "ИНН                                   0012003454\n"
                                               "РН ККТ                          0004107000012345\n"
                                               "СМЕНА 3                                    ЧЕК 7\n"
                                               "ДАТА                            21.11.2026 09:05\n"
                                               "ФН                              9960440300000001\n"
                                               "ФД                                            42\n"
                                               "ФП                                    0123456789");
    QCOMPARE(text.text().split(QLatin1Char('\n')), expected.split(QLatin1Char('\n')));
    QCOMPARE(text.qr(), fiscalData().value(FiscalData::QR).toString());
}

void tst_ReceiptText::everyLineFits_data()
{
    QTest::addColumn<QVariantMap>("document");
    QTest::newRow("long name") << withLines({line(QString(300, QChar(0x0416)), 100)}, 100, 0);
    QTest::newRow("long words") << withLines(
        {line(QString(100, QChar(0x0416)) + QStringLiteral(" вода"), 100)}, 100, 0);
    QTest::newRow("long buyer") << with(good(), FiscalTag::Buyer, QString(200, QChar(0x0416)));
    QTest::newRow("huge sum") << withLines(
        {line(QStringLiteral("Вода"), Q_INT64_C(281474976710655))}, Q_INT64_C(281474976710655), 0);
    QTest::newRow("line breaks") << withLines({line(QStringLiteral("a\nb\tc"), 100)}, 100, 0);
    QTest::newRow("nothing") << QVariantMap();
    QTest::newRow("many printable")
        << QVariantMap{{QStringLiteral("printable"),
                        QStringList{QString(200, QLatin1Char('x')),
                                    QStringLiteral("a\t") + QString(90, QLatin1Char('y')),
                                    QStringLiteral("\t"), QString()}}};
}

void tst_ReceiptText::everyLineFits()
{
    QFETCH(QVariantMap, document);
    const ReceiptText text(document, fiscalData());
    QVERIFY(text.lines().size() > 5);
    for (const QString &line : text.lines()) {
        QVERIFY2(line.size() <= ReceiptText::WIDTH, qUtf8Printable(line));
        QVERIFY(!line.contains(QLatin1Char('\n')) && !line.contains(QLatin1Char('\t')));
    }
}

void tst_ReceiptText::unregisteredReceipt()
{
    const ReceiptText text(good(), {});
    QVERIFY(text.qr().isEmpty());
    QVERIFY(!text.text().contains(QStringLiteral("ФН  ")));
    QVERIFY(text.text().contains(QStringLiteral("ИТОГ")));
}

QTEST_GUILESS_MAIN(tst_ReceiptText)
#include "tst_receipttext.moc"
