#include "generators.h"
#include "property.h"

#include "srpaymentqr.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 maximumSum = 9999999999;

/// What a field of a code can hold: the standard has no escaping.
QString fieldText(const QString &text)
{
    QString plain = text;
    plain.remove(QLatin1Char('|')).remove(QLatin1Char('='));
    return plain;
}

} // namespace

class TestSrPaymentQrProperties : public QObject
{
    Q_OBJECT

private slots:
    void fieldsAndBack();
    void anyText();
    void sum();
    void sumOfOtherText();
    void period();
    void periodOfOtherText();
};

void TestSrPaymentQrProperties::fieldsAndBack()
{
    CHECK_PROPERTY("the fields of a code in their order",
                   [](const std::vector<std::pair<QString, QString>> &fields) {
                       QString code = QStringLiteral("ST00012");
                       for (const auto &[name, value] : fields)
                           code += QLatin1Char('|') + fieldText(name) + QLatin1Char('=')
                               + fieldText(value);
                       const QVector<SrPaymentQr::Pair> pairs = SrPaymentQr::pairs(code);
                       RC_ASSERT(pairs.size() == static_cast<int>(fields.size()));
                       for (int i = 0; i < pairs.size(); ++i) {
                           const auto &[name, value] = fields.at(static_cast<std::size_t>(i));
                           RC_ASSERT(pairs.at(i).name == fieldText(name));
                           RC_ASSERT(pairs.at(i).value == fieldText(value));
                       }
                   });
}

void TestSrPaymentQrProperties::anyText()
{
    CHECK_PROPERTY("whatever is scanned is read or left alone", [](const QString &text) {
        for (const QString &code : {text, QStringLiteral("ST00012|") + text}) {
            const QVector<SrPaymentQr::Pair> pairs = SrPaymentQr::pairs(code);
            RC_ASSERT(SrPaymentQr::isPaymentCode(code) || pairs.isEmpty());
            for (const SrPaymentQr::Pair &pair : pairs) {
                RC_ASSERT(code.contains(pair.name + QLatin1Char('=') + pair.value));
                const auto sum = SrPaymentQr::sum(pair.value);
                RC_ASSERT(!sum || (sum->value() >= 0 && sum->value() <= maximumSum));
                const auto period = SrPaymentQr::period(pair.value, 2030);
                RC_ASSERT(!period
                          || (period->month >= 1 && period->month <= 12 && period->year >= 2000
                              && period->year <= 2030));
            }
        }
    });
}

void TestSrPaymentQrProperties::sum()
{
    CHECK_PROPERTY("kopecks up to the limit, to the kopeck", [] {
        const qint64 kopecks = *rc::gen::weightedOneOf<qint64>(
            {{4, rc::gen::inRange<qint64>(0, maximumSum + 1)},
             {1, rc::gen::inRange<qint64>(maximumSum - 2, maximumSum + 3)},
             {1, rc::gen::inRange<qint64>(0, 200)}});
        const QString digits = QString::number(kopecks);
        const QString zeros(*rc::gen::inRange(0, 5), QLatin1Char('0'));
        const auto sum = SrPaymentQr::sum(zeros + digits);
        RC_ASSERT(sum.has_value() == (kopecks <= maximumSum));
        RC_ASSERT(!sum || sum->isIdentical(basix::FixNumber(100, kopecks)));
    });
}

void TestSrPaymentQrProperties::sumOfOtherText()
{
    CHECK_PROPERTY("a sum with anything but digits is no sum", [](const QString &noise) {
        bool digits = true;
        for (const QChar c : noise.trimmed())
            digits = digits && c >= QLatin1Char('0') && c <= QLatin1Char('9');
        RC_PRE(!digits);
        RC_ASSERT(!SrPaymentQr::sum(noise));
        RC_ASSERT(!SrPaymentQr::sum(QStringLiteral("1") + noise + QStringLiteral("0")));
    });
}

void TestSrPaymentQrProperties::period()
{
    CHECK_PROPERTY("a month of the years that the field can hold", [] {
        const int month = *rc::gen::inRange(0, 15);
        const int year = *rc::gen::inRange(1990, 2110);
        const int lastYear = *rc::gen::inRange(2000, 2100);
        const QString separator = *rc::gen::element(QStringLiteral("."), QStringLiteral("/"));
        const QString text =
            QStringLiteral("%1%2%3").arg(QString::number(month).rightJustified(2, QLatin1Char('0')),
                                         separator, QString::number(year));
        const auto period = SrPaymentQr::period(text, lastYear);
        RC_ASSERT(period.has_value()
                  == (month >= 1 && month <= 12 && year >= 2000 && year <= lastYear));
        RC_ASSERT(!period || (period->month == month && period->year == year));
    });
}

void TestSrPaymentQrProperties::periodOfOtherText()
{
    CHECK_PROPERTY("no sign but the one separator is part of a period", [] {
        const QString valid = QStringLiteral("%1.2024").arg(*rc::gen::inRange(1, 13));
        const QString noise = *rc::gen::suchThat<QString>([](const QString &text) {
            return std::any_of(text.cbegin(), text.cend(), [](QChar c) {
                return !c.isSpace() && (c < QLatin1Char('0') || c > QLatin1Char('9'));
            });
        });
        QString text = valid;
        text.insert(*rc::gen::inRange(0, valid.size() + 1), noise);
        RC_ASSERT(!SrPaymentQr::period(text));
    });
}

QTEST_GUILESS_MAIN(TestSrPaymentQrProperties)
#include "tst_srpaymentqrproperties.moc"
