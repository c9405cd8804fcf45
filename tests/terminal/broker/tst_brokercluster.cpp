#include "brokerprocess.h"
#include "farside.h"

#include <billing/billingservice.h>
#include <bus/amqp/amqpbus.h>

#include <QSet>
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr int LONG_MS = 60000;

QByteArray bodyOf(int id)
{
    return "{\"id\":\"" + QByteArray::number(id) + "\"}";
}

} // namespace

class tst_BrokerCluster : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void confirmedPacksSurviveTheLossOfANode();

private:
    std::unique_ptr<BrokerProcess> m_broker;
};

void tst_BrokerCluster::initTestCase()
{
    m_broker = std::make_unique<BrokerProcess>(3);
    const QString problem = m_broker->start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void tst_BrokerCluster::confirmedPacksSurviveTheLossOfANode()
{
    constexpr int BEFORE = 100;
    constexpr int TOTAL = 200;
    {
        // Whoever declares a queue leads it: the node that is killed below.
        FarSide declaring;
        QCOMPARE(declaring.open(m_broker->address(QStringLiteral("worker"), 0)), QString());
    }
    QString error;
    const auto terminal = AmqpBus::create(m_broker->address(QStringLiteral("box1"), 1), &error);
    QVERIFY2(terminal, qPrintable(error));
    QSet<int> confirmed;
    int refusals = 0;
    const auto send = [&terminal](int id) {
        terminal->sendMessage(BillingService::PACK_DESTINATION,
                              QVariantMap{{QStringLiteral("id"), QString::number(id)}});
    };
    connect(terminal.get(), &MessageBus::accepted, this,
            [&](const QString &, const QVariant &data) {
                confirmed.insert(data.toMap().value(QStringLiteral("id")).toInt());
            });
    // What a terminal's outbox does.
    connect(terminal.get(), &MessageBus::refused, this, [&](const QString &, const QVariant &data) {
        ++refusals;
        QTimer::singleShot(300, terminal.get(),
                           [=] { send(data.toMap().value(QStringLiteral("id")).toInt()); });
    });
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);
    for (int id = 1; id <= BEFORE; ++id)
        send(id);
    QTRY_VERIFY_WITH_TIMEOUT(confirmed.size() > BEFORE / 2, LONG_MS);
    m_broker->kill9(0);
    for (int id = BEFORE + 1; id <= TOTAL; ++id)
        send(id);
    QTRY_COMPARE_WITH_TIMEOUT(confirmed.size(), TOTAL, LONG_MS);

    FarSide far;
    QCOMPARE(far.open(m_broker->address(QStringLiteral("worker"), 2)), QString());
    const auto arrived = [&far] {
        QSet<QByteArray> bodies;
        for (const AmqpDelivery &delivery : far.packs())
            bodies.insert(delivery.body);
        return bodies;
    };
    QTRY_COMPARE_WITH_TIMEOUT(arrived().size(), TOTAL, LONG_MS);
    for (int id = 1; id <= TOTAL; ++id)
        QVERIFY2(arrived().contains(bodyOf(id)), bodyOf(id).constData());
    qInfo("refused and sent again: %d", refusals);
}

QTEST_GUILESS_MAIN(tst_BrokerCluster)
#include "tst_brokercluster.moc"
