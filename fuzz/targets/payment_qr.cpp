// The text of a payment code, as a scanner types it into the account field.
#include "fuzztarget.h"

#include "srpaymentqr.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

void checkPairs(const QString &text)
{
    const QVector<SrPaymentQr::Pair> pairs = SrPaymentQr::pairs(text);
    const bool isCode =
        text.startsWith(QStringLiteral("ST0001")) && text.contains(QLatin1Char('|'));
    FUZZ_REQUIRE(SrPaymentQr::isPaymentCode(text) == isCode,
                 QStringLiteral("taken for a payment code, or not: %1").arg(text));
    QStringList expected;
    const QStringList blocks = isCode ? text.split(QLatin1Char('|')) : QStringList();
    for (const QString &block : blocks) {
        if (block.count(QLatin1Char('=')) == 1)
            expected.append(block);
    }
    FUZZ_REQUIRE(pairs.size() == expected.size(),
                 QStringLiteral("fields lost or made up: %1").arg(text));
    for (int i = 0; i < pairs.size(); ++i) {
        FUZZ_REQUIRE(pairs.at(i).name + QLatin1Char('=') + pairs.at(i).value == expected.at(i),
                     QStringLiteral("field %1 was changed: %2").arg(QString::number(i), text));
    }
}

void checkPeriod(const QString &value)
{
    static const QRegularExpression form(
        QStringLiteral(R"(^\s*0*(1[0-2]|[1-9])\s*[./]\s*0*(2\d{3}|\d{4,5})\s*$)"));
    const auto period = SrPaymentQr::period(value, 2100);
    if (!period)
        return;
    FUZZ_REQUIRE(period->month >= 1 && period->month <= 12 && period->year >= 2000
                     && period->year <= 2100,
                 QStringLiteral("no such period: %1").arg(value));
    const QRegularExpressionMatch match = form.match(value);
    FUZZ_REQUIRE(match.hasMatch() && match.captured(1).toInt() == period->month
                     && match.captured(2).toInt() == period->year,
                 QStringLiteral("a period was read from %1").arg(value));
}

void checkSum(const QString &value)
{
    static const QRegularExpression form(QStringLiteral(R"(^\s*([0-9]+)\s*$)"));
    const auto sum = SrPaymentQr::sum(value);
    if (!sum)
        return;
    FUZZ_REQUIRE(sum->multiplier() == 100 && sum->value() >= 0 && sum->value() <= 9999999999,
                 QStringLiteral("an amount beyond the field from %1").arg(value));
    QString digits = form.match(value).captured(1);
    while (digits.size() > 1 && digits.startsWith(QLatin1Char('0')))
        digits.remove(0, 1);
    FUZZ_REQUIRE(digits == QString::number(sum->value()),
                 QStringLiteral("%1 kopecks read as %2").arg(value, sum->toString()));
}

} // namespace

FUZZ_TARGET(payment_qr)
{
    const QString text = QString::fromUtf8(input.constData(), input.size());
    checkPairs(text);
    checkPeriod(text);
    checkSum(text);
    for (const SrPaymentQr::Pair &pair : SrPaymentQr::pairs(text)) {
        checkPeriod(pair.value);
        checkSum(pair.value);
    }
}
