#include "buses.h"

#include <broker/brokerprocess.h>

#include <billing/billingservice.h>

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr int LONG_MS = 60000;

QVariantMap request(const QString &uid, const QString &text = QString())
{
    return {{QStringLiteral("uid"), uid}, {QStringLiteral("text"), text}};
}

QVariantMap pack(int id)
{
    return {{QStringLiteral("id"), QString::number(id)}};
}

QByteArray json(const QVariantMap &map)
{
    return QJsonDocument(QJsonObject::fromVariantMap(map)).toJson(QJsonDocument::Compact);
}

Buses::Answer echo(const QVariantMap &message)
{
    return {QStringLiteral("checkPayStatus"), json(message)};
}

/// Everything that one terminal hears, in order.
class Ear : public QObject
{
public:
    explicit Ear(MessageBus &bus)
    {
        connect(&bus, &MessageBus::accepted, this, [this](const QString &, const QVariant &data) {
            note(QStringLiteral("accepted ") + nameOf(data.toMap()));
        });
        connect(&bus, &MessageBus::refused, this,
                [this](const QString &, const QVariant &data, const QString &reason) {
                    note(QStringLiteral("refused ") + nameOf(data.toMap()));
                    lastReason = reason;
                });
        connect(&bus, &MessageBus::incomingMessage, this,
                [this](const QVariantMap &headers, const QString &message) {
                    const auto map = QJsonDocument::fromJson(message.toUtf8()).object();
                    note(headers.value(MessageBus::MESSAGE_TYPE).toString() + QLatin1Char(' ')
                         + nameOf(map.toVariantMap()));
                    lastMessage = message;
                });
        connect(&bus, &MessageBus::paymentStatus, this, [this](const QVariant &status) {
            note(QStringLiteral("status ")
                 + status.toMap().value(QStringLiteral("packId")).toString());
        });
        connect(&bus, &MessageBus::traffic, this,
                [this](const BusMessage &message) { traffic.append(message); });
    }

    /// Sends and fails if anything is heard before sendMessage() is back.
    void send(MessageBus &bus, const QString &destination, const QVariantMap &data)
    {
        m_sending = true;
        bus.sendMessage(destination, data);
        m_sending = false;
    }

    int count(const QString &start) const
    {
        int found = 0;
        for (const QString &line : heard)
            found += line.startsWith(start) ? 1 : 0;
        return found;
    }

    QStringList heard;
    QString lastReason;
    QString lastMessage;
    QVector<BusMessage> traffic;
    bool reentered = false;

private:
    static QString nameOf(const QVariantMap &map)
    {
        return map.value(QStringLiteral("uid"), map.value(QStringLiteral("id"))).toString();
    }
    void note(const QString &line)
    {
        reentered = reentered || m_sending;
        heard.append(line);
    }

    bool m_sending = false;
};

} // namespace

class tst_MessageBusContract : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void requestGetsItsAnswer_data() { kinds(); }
    void requestGetsItsAnswer();
    void eachTerminalGetsItsOwn_data() { kinds(); }
    void eachTerminalGetsItsOwn();
    void packIsAcceptedOnceAndItsStatusComesAfter_data() { kinds(); }
    void packIsAcceptedOnceAndItsStatusComesAfter();
    void nobodyServesTheDestination_data() { kinds(); }
    void nobodyServesTheDestination();
    void silenceIsNoRefusal_data() { kinds(); }
    void silenceIsNoRefusal();
    void packsKeepTheirOrder_data() { kinds(); }
    void packsKeepTheirOrder();
    void bigMessagesCross_data() { kinds(); }
    void bigMessagesCross();
    void brokenAnswersHurtNobody_data() { kinds(); }
    void brokenAnswersHurtNobody();
    void valuesArriveAlike_data();
    void valuesArriveAlike();
    void unencodableDataIsRefused_data();
    void unencodableDataIsRefused();
    void trafficShowsEveryMessage_data() { kinds(); }
    void trafficShowsEveryMessage();

private:
    static void kinds();

    std::unique_ptr<BrokerProcess> m_broker;
    std::unique_ptr<Buses> m_buses;
};

void tst_MessageBusContract::kinds()
{
    QTest::addColumn<bool>("overBroker");
    QTest::newRow("in process") << false;
    QTest::newRow("over a broker") << true;
}

void tst_MessageBusContract::initTestCase()
{
    m_broker = BrokerProcess::shared(QStringLiteral("contract"));
    const QString problem = m_broker->start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void tst_MessageBusContract::init()
{
    QFETCH(bool, overBroker);
    QString error;
    m_buses = overBroker ? Buses::overBroker(*m_broker, &error) : Buses::inProcess();
    QVERIFY2(m_buses, qPrintable(error));
    for (int i : {0, 1}) {
        QTRY_VERIFY_WITH_TIMEOUT(m_buses->terminal(i).connected(), LONG_MS);
        QVERIFY(!m_buses->terminal(i).stateText().isEmpty());
    }
}

void tst_MessageBusContract::cleanup()
{
    m_buses.reset();
}

void tst_MessageBusContract::requestGetsItsAnswer()
{
    MessageBus &bus = m_buses->terminal(0);
    Ear ear(bus);
    m_buses->serve([](const QString &, const QVariantMap &message) { return echo(message); });
    const QString text = QStringLiteral("Иванов № 7 «ё» ₽ \"\\");
    ear.send(bus, BillingService::REQUEST_DESTINATION, request(QStringLiteral("-42"), text));
    QTRY_COMPARE_WITH_TIMEOUT(
        ear.heard,
        (QStringList{QStringLiteral("accepted -42"), QStringLiteral("checkPayStatus -42")}),
        LONG_MS);
    QVERIFY(!ear.reentered);
    QCOMPARE(QJsonDocument::fromJson(ear.lastMessage.toUtf8()).object().toVariantMap(),
             request(QStringLiteral("-42"), text));
}

void tst_MessageBusContract::eachTerminalGetsItsOwn()
{
    MessageBus &first = m_buses->terminal(0);
    MessageBus &second = m_buses->terminal(1);
    Ear firstEar(first);
    Ear secondEar(second);
    m_buses->serve([](const QString &, const QVariantMap &message) { return echo(message); });
    // The same id at both: it is the terminal that counts.
    for (const QString &uid : {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}) {
        firstEar.send(first, BillingService::REQUEST_DESTINATION,
                      request(uid, QStringLiteral("first")));
        secondEar.send(second, BillingService::REQUEST_DESTINATION,
                       request(uid, QStringLiteral("second")));
    }
    QTRY_COMPARE_WITH_TIMEOUT(firstEar.count(QStringLiteral("checkPayStatus")), 3, LONG_MS);
    QTRY_COMPARE_WITH_TIMEOUT(secondEar.count(QStringLiteral("checkPayStatus")), 3, LONG_MS);
    for (const BusMessage &message : qAsConst(firstEar.traffic))
        QVERIFY2(!message.body.bytes().contains("second"), message.body.bytes().constData());
    for (const BusMessage &message : qAsConst(secondEar.traffic))
        QVERIFY2(!message.body.bytes().contains("first"), message.body.bytes().constData());
    QCOMPARE(firstEar.heard.size(), 6);
    QCOMPARE(secondEar.heard.size(), 6);
}

void tst_MessageBusContract::packIsAcceptedOnceAndItsStatusComesAfter()
{
    MessageBus &bus = m_buses->terminal(0);
    Ear ear(bus);
    m_buses->serve([](const QString &, const QVariantMap &message) {
        return Buses::Answer{
            MessageBus::PAYMENT_STATUS,
            json({{QStringLiteral("packId"), message.value(QStringLiteral("id"))}})};
    });
    ear.send(bus, BillingService::PACK_DESTINATION, pack(7));
    QTRY_COMPARE_WITH_TIMEOUT(
        ear.heard, (QStringList{QStringLiteral("accepted 7"), QStringLiteral("status 7")}),
        LONG_MS);
    QVERIFY(!ear.reentered);
}

void tst_MessageBusContract::nobodyServesTheDestination()
{
    MessageBus &bus = m_buses->terminal(0);
    Ear ear(bus);
    ear.send(bus, QStringLiteral("/app/nobody"), request(QStringLiteral("5")));
    QTRY_COMPARE_WITH_TIMEOUT(ear.heard, QStringList{QStringLiteral("refused 5")}, LONG_MS);
    QVERIFY(!ear.lastReason.isEmpty());
    QVERIFY(!ear.reentered);
    // The bus goes on as before.
    m_buses->serve([](const QString &, const QVariantMap &message) { return echo(message); });
    ear.send(bus, BillingService::REQUEST_DESTINATION, request(QStringLiteral("6")));
    QTRY_COMPARE_WITH_TIMEOUT(ear.count(QStringLiteral("checkPayStatus 6")), 1, LONG_MS);
}

void tst_MessageBusContract::silenceIsNoRefusal()
{
    MessageBus &bus = m_buses->terminal(0);
    Ear ear(bus);
    m_buses->serve([](const QString &, const QVariantMap &message) {
        return message.value(QStringLiteral("uid")) == QLatin1String("1") ? Buses::Answer()
                                                                          : echo(message);
    });
    ear.send(bus, BillingService::REQUEST_DESTINATION, request(QStringLiteral("1")));
    ear.send(bus, BillingService::REQUEST_DESTINATION, request(QStringLiteral("2")));
    QTRY_COMPARE_WITH_TIMEOUT(ear.count(QStringLiteral("checkPayStatus 2")), 1, LONG_MS);
    QCOMPARE(ear.count(QStringLiteral("accepted")), 2);
    QCOMPARE(ear.heard.size(), 3);
}

void tst_MessageBusContract::packsKeepTheirOrder()
{
    constexpr int COUNT = 200;
    MessageBus &bus = m_buses->terminal(0);
    Ear ear(bus);
    QStringList arrived;
    m_buses->serve([&arrived](const QString &, const QVariantMap &message) {
        arrived.append(message.value(QStringLiteral("id")).toString());
        return Buses::Answer();
    });
    QStringList sent;
    for (int i = 1; i <= COUNT; ++i) {
        ear.send(bus, BillingService::PACK_DESTINATION, pack(i));
        sent.append(QString::number(i));
    }
    QTRY_COMPARE_WITH_TIMEOUT(arrived.size(), COUNT, LONG_MS);
    QCOMPARE(arrived, sent);
    QTRY_COMPARE_WITH_TIMEOUT(ear.count(QStringLiteral("accepted")), COUNT, LONG_MS);
    QCOMPARE(ear.heard.size(), COUNT);
    m_buses->serve({[](const QString &, const QVariantMap &) { return Buses::Answer(); }});
}

void tst_MessageBusContract::bigMessagesCross()
{
    MessageBus &bus = m_buses->terminal(0);
    Ear ear(bus);
    m_buses->serve([](const QString &, const QVariantMap &message) { return echo(message); });
    const QString text = QStringLiteral("Щ1").repeated(1024 * 1024);
    ear.send(bus, BillingService::REQUEST_DESTINATION, request(QStringLiteral("9"), text));
    QTRY_COMPARE_WITH_TIMEOUT(ear.count(QStringLiteral("checkPayStatus 9")), 1, LONG_MS);
    const QJsonObject back = QJsonDocument::fromJson(ear.lastMessage.toUtf8()).object();
    QVERIFY(back.value(QStringLiteral("text")).toString() == text);
}

void tst_MessageBusContract::brokenAnswersHurtNobody()
{
    MessageBus &bus = m_buses->terminal(0);
    Ear ear(bus);
    m_buses->serve([](const QString &destination, const QVariantMap &message) {
        if (destination == BillingService::PACK_DESTINATION)
            return Buses::Answer{MessageBus::PAYMENT_STATUS, "{\"packId\":"};
        if (message.value(QStringLiteral("uid")) == QLatin1String("1"))
            return Buses::Answer{QStringLiteral("checkPayStatus"), "{\"uid\":\"1"};
        return echo(message);
    });
    ear.send(bus, BillingService::PACK_DESTINATION, pack(3));
    ear.send(bus, BillingService::REQUEST_DESTINATION, request(QStringLiteral("1")));
    ear.send(bus, BillingService::REQUEST_DESTINATION, request(QStringLiteral("2")));
    QTRY_COMPARE_WITH_TIMEOUT(ear.count(QStringLiteral("checkPayStatus 2")), 1, LONG_MS);
    QCOMPARE(ear.count(QStringLiteral("accepted")), 3);
    QCOMPARE(ear.count(QStringLiteral("status")), 0);
    QCOMPARE(ear.count(QStringLiteral("checkPayStatus 1")), 0);
}

void tst_MessageBusContract::valuesArriveAlike_data()
{
    QTest::addColumn<bool>("overBroker");
    QTest::addColumn<QVariant>("sent");
    QTest::addColumn<QVariant>("arrived");
    const auto big = Q_INT64_C(9007199254740993);
    const auto row = [](const char *name, const QVariant &sent, const QVariant &arrived) {
        for (const bool overBroker : {false, true})
            QTest::addRow("%s, %s", name, overBroker ? "over a broker" : "in process")
                << overBroker << sent << arrived;
    };
    row("text", QStringLiteral("ё"), QStringLiteral("ё"));
    row("null text", QString(), QStringLiteral(""));
    row("nothing", QVariant(), QVariant::fromValue(nullptr));
    row("yes", true, true);
    row("int", 643, qlonglong(643));
    row("beyond 2^53", big, QString::number(big));
    row("whole floating point", 2.0, qlonglong(2));
    row("floating point", 0.01, 0.01);
    row("bytes", QByteArray("ё"), QStringLiteral("ё"));
    row("date", QDate(2026, 11, 21), QStringLiteral("2026-11-21"));
    row("texts", QStringList{QStringLiteral("a")}, QVariantList{QStringLiteral("a")});
    row("hash", QVariantHash{{QStringLiteral("a"), 1}},
        QVariantMap{{QStringLiteral("a"), qlonglong(1)}});
    row("nested", QVariantList{QVariantMap{{QStringLiteral("a"), 1}}, QVariantList{}},
        QVariantList{QVariantMap{{QStringLiteral("a"), qlonglong(1)}}, QVariantList{}});
}

void tst_MessageBusContract::valuesArriveAlike()
{
    QFETCH(QVariant, sent);
    QFETCH(QVariant, arrived);
    MessageBus &bus = m_buses->terminal(0);
    QVariant got;
    m_buses->serve([&got](const QString &, const QVariantMap &message) {
        got = message.value(QStringLiteral("v"));
        return Buses::Answer();
    });
    QSignalSpy accepted(&bus, &MessageBus::accepted);
    bus.sendMessage(BillingService::REQUEST_DESTINATION,
                    QVariantMap{{QStringLiteral("uid"), QStringLiteral("1")},
                                {QStringLiteral("v"), sent}});
    QTRY_VERIFY_WITH_TIMEOUT(accepted.size() == 1 && got.isValid(), LONG_MS);
    QCOMPARE(got.userType(), arrived.userType());
    QCOMPARE(got.isNull(), arrived.isNull());
    QCOMPARE(got, arrived);
    m_buses->serve([](const QString &, const QVariantMap &) { return Buses::Answer(); });
}

void tst_MessageBusContract::unencodableDataIsRefused_data()
{
    QTest::addColumn<bool>("overBroker");
    QTest::addColumn<QVariant>("sum");
    for (const bool overBroker : {false, true}) {
        const char *where = overBroker ? "over a broker" : "in process";
        QTest::addRow("infinity, %s", where) << overBroker << QVariant(qInf());
        QTest::addRow("half a character, %s", where)
            << overBroker << QVariant(QString(QChar(0xd83d)));
        QTest::addRow("bytes that are no text, %s", where)
            << overBroker << QVariant(QByteArray("\xff"));
    }
}

void tst_MessageBusContract::unencodableDataIsRefused()
{
    QFETCH(QVariant, sum);
    MessageBus &bus = m_buses->terminal(0);
    Ear ear(bus);
    ear.send(bus, BillingService::PACK_DESTINATION,
             {{QStringLiteral("id"), QStringLiteral("8")}, {QStringLiteral("sum"), sum}});
    QTRY_COMPARE_WITH_TIMEOUT(ear.heard, QStringList{QStringLiteral("refused 8")}, LONG_MS);
    QVERIFY2(ear.lastReason.contains(QStringLiteral("sum")), qPrintable(ear.lastReason));
    QVERIFY(!ear.reentered);
}

void tst_MessageBusContract::trafficShowsEveryMessage()
{
    MessageBus &bus = m_buses->terminal(0);
    Ear ear(bus);
    m_buses->serve([](const QString &destination, const QVariantMap &message) {
        if (destination == BillingService::PACK_DESTINATION)
            return Buses::Answer{
                MessageBus::PAYMENT_STATUS,
                json({{QStringLiteral("packId"), message.value(QStringLiteral("id"))}})};
        return echo(message);
    });
    ear.send(bus, BillingService::REQUEST_DESTINATION, request(QStringLiteral("1")));
    QTRY_COMPARE_WITH_TIMEOUT(ear.traffic.size(), 2, LONG_MS);
    ear.send(bus, BillingService::PACK_DESTINATION, pack(2));
    QTRY_COMPARE_WITH_TIMEOUT(ear.traffic.size(), 4, LONG_MS);

    QStringList shown;
    for (const BusMessage &message : qAsConst(ear.traffic)) {
        QVERIFY(message.time.isValid());
        QVERIFY(QJsonDocument::fromJson(message.body.bytes()).isObject());
        shown.append((message.direction == BusMessage::Direction::Outgoing ? QStringLiteral("> ")
                                                                           : QStringLiteral("< "))
                     + message.address);
    }
    QCOMPARE(shown,
             (QStringList{QStringLiteral("> /app/box_plugin_check_pay"),
                          QStringLiteral("< checkPayStatus"), QStringLiteral("> /app/add_pay_pack"),
                          QStringLiteral("< payPackStatus")}));
    QCOMPARE(ear.traffic.at(1).headers.value(MessageBus::MESSAGE_TYPE).toString(),
             QStringLiteral("checkPayStatus"));
}

QTEST_GUILESS_MAIN(tst_MessageBusContract)
#include "tst_messagebuscontract.moc"
