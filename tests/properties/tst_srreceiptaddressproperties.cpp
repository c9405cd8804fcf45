#include "generators.h"
#include "property.h"

#include "srreceiptaddress.h"

class TestSrReceiptAddressProperties : public QObject
{
    Q_OBJECT

private slots:
    void telephone();
    void email();
};

void TestSrReceiptAddressProperties::telephone()
{
    CHECK_PROPERTY("a number keeps its digits and nothing else", [] {
        const auto digits = *rc::gen::container<std::string>(rc::gen::inRange('0', ':'));
        QString written;
        for (const char digit : digits) {
            written += QString::fromLatin1(
                *rc::gen::element<const char *>("", "", "", " ", "-", "(", ")", ") ", " ("));
            written += QLatin1Char(digit);
        }
        const QString plain = QString::fromStdString(digits);
        const QString number =
            *rc::gen::arbitrary<bool>() ? QStringLiteral(" +") + written : written;
        RC_ASSERT(SrReceiptAddress::normalized(number) == plain);
        RC_ASSERT(SrReceiptAddress::normalized(plain) == plain);
    });
}

void TestSrReceiptAddressProperties::email()
{
    CHECK_PROPERTY("an e-mail address stays as it was typed",
                   [](const QString &name, const QString &host) {
                       const QString address = name + QLatin1Char('@') + host;
                       RC_ASSERT(SrReceiptAddress::normalized(address) == address);
                   });
}

QTEST_GUILESS_MAIN(TestSrReceiptAddressProperties)
#include "tst_srreceiptaddressproperties.moc"
