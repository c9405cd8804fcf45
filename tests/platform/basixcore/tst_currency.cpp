#include <basixcore/currency.h>

#include <QTest>
#include <QVariant>

class tst_Currency : public QObject
{
    Q_OBJECT

private slots:
    void defaultIsNone();
    void fields();
    void equality();
    void variantsCompare();
};

void tst_Currency::defaultIsNone()
{
    const basix::Currency currency;
    QCOMPARE(currency.number3(), 0);
    QVERIFY(currency.code3().isEmpty());
    QVERIFY(currency.name().isEmpty());
}

void tst_Currency::fields()
{
    basix::Currency currency(643, QStringLiteral("RUB"), QStringLiteral("Российский рубль"));
    QCOMPARE(currency.number3(), 643);
    QCOMPARE(currency.code3(), QStringLiteral("RUB"));
    QCOMPARE(currency.name(), QStringLiteral("Российский рубль"));
    currency.setNumber3(840);
    currency.setCode3(QStringLiteral("USD"));
    currency.setName(QStringLiteral("Доллар США"));
    QCOMPARE(currency, basix::Currency(840, QStringLiteral("USD"), QStringLiteral("Доллар США")));
}

void tst_Currency::equality()
{
    const basix::Currency rouble(643, QStringLiteral("RUB"), QStringLiteral("рубль"));
    QVERIFY(rouble == basix::Currency(643, QStringLiteral("RUB"), QStringLiteral("рубль")));
    QVERIFY(rouble != basix::Currency(644, QStringLiteral("RUB"), QStringLiteral("рубль")));
    QVERIFY(rouble != basix::Currency(643, QStringLiteral("RUR"), QStringLiteral("рубль")));
    QVERIFY(rouble != basix::Currency(643, QStringLiteral("RUB"), QStringLiteral("рубли")));
}

void tst_Currency::variantsCompare()
{
    const basix::Currency rouble(643, QStringLiteral("RUB"), QStringLiteral("рубль"));
    QCOMPARE(QVariant::fromValue(rouble), QVariant::fromValue(basix::Currency(rouble)));
    QVERIFY(QVariant::fromValue(rouble) != QVariant::fromValue(basix::Currency()));
}

QTEST_GUILESS_MAIN(tst_Currency)
#include "tst_currency.moc"
