#include "srpaymentqr.h"

#include <QStringList>

#include <algorithm>

const QString SrPaymentQr::PREFIX = QStringLiteral("ST0001");
const QString SrPaymentQr::NAME_ACCOUNT = QStringLiteral("PersAcc");
const QString SrPaymentQr::NAME_DOCUMENT = QStringLiteral("BarCode");
const QString SrPaymentQr::NAME_PERIOD = QStringLiteral("PaymPeriod");
const QString SrPaymentQr::NAME_SUM = QStringLiteral("Sum");

namespace {

constexpr QLatin1Char separator('|');
constexpr int firstYear = 2000;
constexpr qint64 maximumSum = 9999999999;

/// Digits only: QString's own conversion would also take a sign.
std::optional<qint64> number(const QString &text)
{
    const QString digits = text.trimmed();
    const bool plain = std::all_of(digits.cbegin(), digits.cend(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
    bool ok = false;
    const qint64 value = digits.toLongLong(&ok);
    if (!plain || !ok)
        return std::nullopt;
    return value;
}

} // namespace

bool SrPaymentQr::isPaymentCode(const QString &text)
{
    return text.startsWith(PREFIX) && text.contains(separator);
}

QVector<SrPaymentQr::Pair> SrPaymentQr::pairs(const QString &text)
{
    if (!isPaymentCode(text))
        return {};
    QVector<Pair> found;
    const QStringList blocks = text.split(separator);
    for (const QString &block : blocks) {
        const QStringList pieces = block.split(QLatin1Char('='));
        if (pieces.size() == 2)
            found.append({pieces.first(), pieces.last()});
    }
    return found;
}

std::optional<SrPaymentQr::Period> SrPaymentQr::period(const QString &value, int lastYear)
{
    QStringList pieces = value.split(QLatin1Char('.'));
    if (pieces.size() != 2)
        pieces = value.split(QLatin1Char('/'));
    if (pieces.size() != 2)
        return std::nullopt;
    const std::optional<qint64> month = number(pieces.first());
    const std::optional<qint64> year = number(pieces.last());
    // What is no number is less than every number.
    if (month < 1 || month > 12 || year < firstYear || year > lastYear)
        return std::nullopt;
    return Period{static_cast<int>(*month), static_cast<int>(*year)};
}

std::optional<basix::FixNumber> SrPaymentQr::sum(const QString &value)
{
    const std::optional<qint64> kopecks = number(value);
    if (!kopecks || *kopecks > maximumSum)
        return std::nullopt;
    return basix::FixNumber(100, *kopecks);
}
