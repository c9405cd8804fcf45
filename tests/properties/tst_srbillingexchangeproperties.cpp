#include "generators.h"
#include "property.h"

#include "srbillingexchange.h"

#include <QJsonDocument>

#include <vector>

namespace {

QVariantMap reply()
{
    return {{QStringLiteral("msgType"), SRRequest::REPLY}};
}

QString json(const QVariantMap &map)
{
    return QString::fromUtf8(QJsonDocument::fromVariant(map).toJson(QJsonDocument::Compact));
}

/// Billing's answer to request number `number`, good or bad.
QString answerTo(const QString &uid, int number, bool good)
{
    const QString inner = json({{QStringLiteral("isError"), !good},
                                {QStringLiteral("statusDescription"), QString::number(number)},
                                {QStringLiteral("number"), number}});
    return json({{QStringLiteral("uid"), uid},
                 {QStringLiteral("error"), false},
                 {QStringLiteral("result"), 0},
                 {QStringLiteral("description"), inner}});
}

struct Request
{
    QString uid;
    bool pending = true;
};

} // namespace

class TestSrBillingExchangeProperties : public QObject
{
    Q_OBJECT

private slots:
    void answersInAnyOrder();
    void anyText();
};

void TestSrBillingExchangeProperties::answersInAnyOrder()
{
    CHECK_PROPERTY("late, lost, repeated and foreign answers", [] {
        SrBillingExchange exchange;
        SrBillingExchange stranger; // another workstation, or this one before a restart
        std::vector<Request> requests;
        const int steps = *rc::gen::inRange(0, 30);
        for (int step = 0; step < steps; ++step) {
            const int count = static_cast<int>(requests.size());
            switch (
                *rc::gen::weightedElement<int>({{4, 0}, {8, 1}, {2, 2}, {1, 3}, {1, 4}, {1, 5}})) {
            case 0:
                requests.push_back({exchange.compose({1, 643, 18722}, {}).uid()});
                break;
            case 1:
                if (count > 0) {
                    const int number = *rc::gen::inRange(0, count);
                    Request &request = requests.at(static_cast<std::size_t>(number));
                    const bool good = *rc::gen::arbitrary<bool>();
                    const SrAnswer answer =
                        exchange.read(reply(), answerTo(request.uid, number, good));
                    RC_ASSERT(answer.matched == request.pending);
                    if (!request.pending) {
                        RC_ASSERT(answer.outcome == SrAnswer::Outcome::NotForUs);
                    } else if (good) {
                        RC_ASSERT(answer.outcome == SrAnswer::Outcome::Data);
                        RC_ASSERT(answer.data.value(QStringLiteral("number")).toInt() == number);
                    } else {
                        RC_ASSERT(answer.outcome == SrAnswer::Outcome::Failure);
                        RC_ASSERT(answer.failureText == QString::number(number));
                    }
                    request.pending = false;
                }
                break;
            case 2: {
                const QString uid = stranger.compose({2, 643, 18722}, {}).uid();
                RC_ASSERT(exchange.read(reply(), answerTo(uid, 0, true)).outcome
                          == SrAnswer::Outcome::NotForUs);
                break;
            }
            case 3:
                RC_ASSERT(!exchange.read(reply(), QStringLiteral("{\"uid\":")).matched);
                break;
            case 4:
                if (count > 0) {
                    const QVariantMap other{
                        {QStringLiteral("msgType"), QStringLiteral("payPackStatus")}};
                    RC_ASSERT(
                        !exchange.read(other, answerTo(requests.back().uid, 0, true)).matched);
                }
                break;
            case 5:
                exchange.clear();
                for (Request &request : requests)
                    request.pending = false;
                break;
            }
            int pending = 0;
            for (const Request &request : requests) {
                RC_ASSERT(exchange.pending().contains(request.uid) == request.pending);
                pending += request.pending ? 1 : 0;
            }
            RC_ASSERT(exchange.pending().size() == pending);
        }
    });
}

void TestSrBillingExchangeProperties::anyText()
{
    CHECK_PROPERTY("no text settles a request that it does not name", [](const QString &text) {
        SrBillingExchange exchange;
        const QString uid = exchange.compose({1, 643, 18722}, {}).uid();
        RC_PRE(!text.contains(uid));
        RC_ASSERT(!exchange.read(reply(), text).matched);
        RC_ASSERT(!exchange.read(reply(), json({{QStringLiteral("uid"), text}})).matched);
        RC_ASSERT(exchange.pending().contains(uid));
    });
}

QTEST_GUILESS_MAIN(TestSrBillingExchangeProperties)
#include "tst_srbillingexchangeproperties.moc"
