#include "srreceiptaddress.h"

#include <QTest>

class TestSrReceiptAddress : public QObject
{
    Q_OBJECT

private slots:
    void normalized_data();
    void normalized();
};

void TestSrReceiptAddress::normalized_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("international phone")
        << QStringLiteral("+7 (912) 345-67-89") << QStringLiteral("79123456789");
    QTest::newRow("national phone")
        << QStringLiteral("8 912 345 67 89") << QStringLiteral("89123456789");
    QTest::newRow("space before plus") << QStringLiteral(" +7 912") << QStringLiteral("7912");
    QTest::newRow("tab after plus") << QStringLiteral("+\t7912\t") << QStringLiteral("7912");
    QTest::newRow("tab without plus") << QStringLiteral("\t7912") << QStringLiteral("\t7912");
    QTest::newRow("two plus signs") << QStringLiteral("++7") << QStringLiteral("+7");
    QTest::newRow("plus inside") << QStringLiteral("7+9") << QStringLiteral("7+9");
    QTest::newRow("e-mail") << QStringLiteral("a-b (c) d@e-f.ru")
                            << QStringLiteral("a-b (c) d@e-f.ru");
    QTest::newRow("e-mail with plus and blanks")
        << QStringLiteral(" +a@b ") << QStringLiteral(" +a@b ");
    QTest::newRow("not validated")
        << QStringLiteral("нет телефона") << QStringLiteral("неттелефона");
    QTest::newRow("empty") << QString() << QString();
}

void TestSrReceiptAddress::normalized()
{
    QFETCH(QString, text);
    QTEST(SrReceiptAddress::normalized(text), "expected");
}

QTEST_GUILESS_MAIN(TestSrReceiptAddress)
#include "tst_srreceiptaddress.moc"
