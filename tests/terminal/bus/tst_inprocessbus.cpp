#include <bus/inprocessbus.h>

#include <QSignalSpy>
#include <QtTest>

namespace {

InProcessBus::Outcome echo(const QVariantMap &message)
{
    InProcessBus::Outcome outcome;
    outcome.answer = InProcessBus::Answer{{{QStringLiteral("msgType"), QStringLiteral("echo")}},
                                          message.value(QStringLiteral("text")).toString().toUtf8(),
                                          0};
    return outcome;
}

QVariantMap text(const QString &value)
{
    return {{QStringLiteral("text"), value}};
}

/// What a plugin is given: an object that only knows signatures.
class Far : public QObject
{
    Q_OBJECT

public:
    QStringList messages;

signals:
    void post(QString destination, QVariant data);

public slots:
    void take(QVariantMap headers, QString message)
    {
        messages.append(headers.value(QStringLiteral("msgType")).toString() + QLatin1Char(' ')
                        + message);
    }
};

} // namespace

class tst_InProcessBus : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void answersFromTheEventLoop();
    void handsOutAllOfAMessage();
    void connectsBySignature();
    void refusesAnUnservedDestination();
    void refusesWhatJsonCannotCarry();
    void refusesWhatTheServiceRefuses();
    void keepsTheOrder();
    void typesCrossAsOnAWire();
    void holdsAnswersWhileDisconnected();
    void statusGoesItsOwnWay();
    void reportsTraffic();
    void deliversEveryAnswerOfAService();
    void serviceMaySendWhileItServes();

private:
    std::unique_ptr<InProcessBus> m_bus;
    std::unique_ptr<QSignalSpy> m_in;
    std::unique_ptr<QSignalSpy> m_accepted;
    std::unique_ptr<QSignalSpy> m_refused;
};

void tst_InProcessBus::init()
{
    m_bus = std::make_unique<InProcessBus>();
    m_bus->serve(QStringLiteral("/echo"), echo);
    m_in = std::make_unique<QSignalSpy>(m_bus.get(), &MessageBus::incomingMessage);
    m_accepted = std::make_unique<QSignalSpy>(m_bus.get(), &MessageBus::accepted);
    m_refused = std::make_unique<QSignalSpy>(m_bus.get(), &MessageBus::refused);
}

void tst_InProcessBus::cleanup()
{
    m_in.reset();
    m_accepted.reset();
    m_refused.reset();
    m_bus.reset();
}

void tst_InProcessBus::answersFromTheEventLoop()
{
    m_bus->sendMessage(QStringLiteral("/echo"), text(QStringLiteral("да")));
    QCOMPARE(m_accepted->size(), 0);
    QCOMPARE(m_in->size(), 0);
    QTRY_COMPARE(m_in->size(), 1);
    QCOMPARE(m_in->at(0).at(1).toString(), QStringLiteral("да"));
    QCOMPARE(m_accepted->size(), 1);
    QCOMPARE(m_accepted->at(0).at(0).toString(), QStringLiteral("/echo"));
    QCOMPARE(m_accepted->at(0).at(1).toMap(), text(QStringLiteral("да")));
    QCOMPARE(m_refused->size(), 0);
}

void tst_InProcessBus::handsOutAllOfAMessage()
{
    m_bus->serve(QStringLiteral("/null"), [](const QVariantMap &) {
        InProcessBus::Outcome outcome;
        outcome.answer = InProcessBus::Answer{{}, QByteArrayLiteral("{}\0rest"), 0};
        return outcome;
    });
    m_bus->sendMessage(QStringLiteral("/null"), text(QString()));
    QTRY_COMPARE(m_in->size(), 1);
    QCOMPARE(m_in->at(0).at(1).toString(), QStringLiteral("{}\0rest"));
}

void tst_InProcessBus::connectsBySignature()
{
    Far far;
    MessageBus *bus = m_bus.get();
    QVERIFY(
        connect(&far, SIGNAL(post(QString, QVariant)), bus, SLOT(sendMessage(QString, QVariant))));
    QVERIFY(connect(bus, SIGNAL(incomingMessage(QVariantMap, QString)), &far,
                    SLOT(take(QVariantMap, QString))));
    QVERIFY(bus->metaObject()->indexOfSignal("paymentStatus(QVariant)") >= 0);
    emit far.post(QStringLiteral("/echo"), text(QStringLiteral("1")));
    QTRY_COMPARE(far.messages, QStringList{QStringLiteral("echo 1")});
}

void tst_InProcessBus::refusesAnUnservedDestination()
{
    m_bus->sendMessage(QStringLiteral("/nobody"), text(QStringLiteral("x")));
    QCOMPARE(m_refused->size(), 0);
    QTRY_COMPARE(m_refused->size(), 1);
    QVERIFY(m_refused->at(0).at(2).toString().contains(QStringLiteral("/nobody")));
    QCOMPARE(m_accepted->size(), 0);
    m_bus->withdraw(QStringLiteral("/echo"));
    m_bus->sendMessage(QStringLiteral("/echo"), text(QStringLiteral("x")));
    QTRY_COMPARE(m_refused->size(), 2);
}

void tst_InProcessBus::refusesWhatJsonCannotCarry()
{
    m_bus->sendMessage(QStringLiteral("/echo"),
                       QVariantMap{{QStringLiteral("a"), QByteArray("\xff")}});
    QTRY_COMPARE(m_refused->size(), 1);
    QCOMPARE(m_in->size(), 0);
}

void tst_InProcessBus::refusesWhatTheServiceRefuses()
{
    m_bus->serve(QStringLiteral("/no"), [](const QVariantMap &) {
        InProcessBus::Outcome outcome;
        outcome.refusal = QStringLiteral("Не принято");
        return outcome;
    });
    m_bus->sendMessage(QStringLiteral("/no"), QVariantMap());
    QTRY_COMPARE(m_refused->size(), 1);
    QCOMPARE(m_refused->at(0).at(2).toString(), QStringLiteral("Не принято"));
    QCOMPARE(m_accepted->size(), 0);
}

void tst_InProcessBus::keepsTheOrder()
{
    m_bus->setDelay(3);
    QStringList sent;
    for (int i = 0; i < 50; ++i) {
        sent.append(QString::number(i));
        m_bus->sendMessage(QStringLiteral("/echo"), text(sent.last()));
    }
    QTRY_COMPARE(m_in->size(), 50);
    QStringList got;
    for (const QList<QVariant> &call : qAsConst(*m_in))
        got.append(call.at(1).toString());
    QCOMPARE(got, sent);
}

void tst_InProcessBus::typesCrossAsOnAWire()
{
    QVariantMap arrived;
    m_bus->serve(QStringLiteral("/types"), [&arrived](const QVariantMap &message) {
        arrived = message;
        return InProcessBus::Outcome();
    });
    m_bus->sendMessage(
        QStringLiteral("/types"),
        QVariantMap{{QStringLiteral("checkdata"), QByteArray(R"({"payParamList":[]})")},
                    {QStringLiteral("summ"), 0.01},
                    {QStringLiteral("providerId"), Q_INT64_C(18722)},
                    {QStringLiteral("currencyId"), 643}});
    QTRY_COMPARE(m_accepted->size(), 1);
    QCOMPARE(arrived.value(QStringLiteral("checkdata")).userType(), int(QMetaType::QString));
    QCOMPARE(arrived.value(QStringLiteral("checkdata")).toString(),
             QStringLiteral(R"({"payParamList":[]})"));
    QCOMPARE(arrived.value(QStringLiteral("summ")).toDouble(), 0.01);
    QCOMPARE(arrived.value(QStringLiteral("providerId")).toLongLong(), Q_INT64_C(18722));
    QCOMPARE(arrived.value(QStringLiteral("currencyId")).toInt(), 643);
    QCOMPARE(m_in->size(), 0);
}

void tst_InProcessBus::holdsAnswersWhileDisconnected()
{
    QSignalSpy state(m_bus.get(), &MessageBus::stateChanged);
    // The link breaks between the service and its answer.
    connect(m_bus.get(), &MessageBus::accepted, this, [this] { m_bus->setConnected(false); });
    m_bus->sendMessage(QStringLiteral("/echo"), text(QStringLiteral("late")));
    QTRY_COMPARE(m_accepted->size(), 1);
    QVERIFY(!m_bus->connected());
    m_bus->sendMessage(QStringLiteral("/echo"), text(QStringLiteral("lost")));
    QTRY_COMPARE(m_refused->size(), 1);
    QCOMPARE(m_in->size(), 0);
    m_bus->setConnected(true);
    QTRY_COMPARE(m_in->size(), 1);
    QCOMPARE(m_in->at(0).at(1).toString(), QStringLiteral("late"));
    QCOMPARE(state.size(), 2);
}

void tst_InProcessBus::statusGoesItsOwnWay()
{
    QSignalSpy status(m_bus.get(), &MessageBus::paymentStatus);
    m_bus->serve(QStringLiteral("/pack"), [](const QVariantMap &) {
        InProcessBus::Outcome outcome;
        outcome.answer = InProcessBus::Answer{
            {{MessageBus::MESSAGE_TYPE, MessageBus::PAYMENT_STATUS}}, R"({"packId":"7"})", 0};
        return outcome;
    });
    m_bus->sendMessage(QStringLiteral("/pack"), QVariantMap());
    QTRY_COMPARE(status.size(), 1);
    QCOMPARE(
        status.at(0).at(0).value<QVariant>().toMap().value(QStringLiteral("packId")).toString(),
        QStringLiteral("7"));
    QCOMPARE(m_in->size(), 0);
}

void tst_InProcessBus::reportsTraffic()
{
    QSignalSpy traffic(m_bus.get(), &MessageBus::traffic);
    m_bus->sendMessage(QStringLiteral("/echo"), text(QStringLiteral("v")));
    QTRY_COMPARE(traffic.size(), 2);
    const auto out = traffic.at(0).at(0).value<BusMessage>();
    const auto in = traffic.at(1).at(0).value<BusMessage>();
    QCOMPARE(out.direction, BusMessage::Direction::Outgoing);
    QCOMPARE(out.address, QStringLiteral("/echo"));
    QCOMPARE(out.body.bytes(), QByteArray(R"({"text":"v"})"));
    QCOMPARE(in.direction, BusMessage::Direction::Incoming);
    QCOMPARE(in.address, QStringLiteral("echo"));
    QCOMPARE(in.body.bytes(), QByteArray("v"));
    QVERIFY(in.time.isValid());
}

void tst_InProcessBus::deliversEveryAnswerOfAService()
{
    m_bus->serve(QStringLiteral("/app/many"), [](const QVariantMap &) {
        InProcessBus::Outcome outcome;
        outcome.others = {{{}, "later", 20}, {{}, "sooner", 0}};
        return outcome;
    });
    m_bus->sendMessage(QStringLiteral("/app/many"), text(QStringLiteral("?")));
    QTRY_COMPARE(m_in->count(), 2);
    QCOMPARE(m_in->at(0).at(1).toString(), QStringLiteral("sooner"));
    QCOMPARE(m_in->at(1).at(1).toString(), QStringLiteral("later"));
}

void tst_InProcessBus::serviceMaySendWhileItServes()
{
    int depth = 0;
    int deepest = 0;
    m_bus->serve(QStringLiteral("/chain"), [&](const QVariantMap &message) {
        deepest = qMax(deepest, ++depth);
        const int left = message.value(QStringLiteral("left")).toInt();
        if (left > 0)
            m_bus->sendMessage(QStringLiteral("/chain"),
                               QVariantMap{{QStringLiteral("left"), left - 1}});
        --depth;
        return InProcessBus::Outcome();
    });
    m_bus->sendMessage(QStringLiteral("/chain"), QVariantMap{{QStringLiteral("left"), 5}});
    QTRY_COMPARE(m_accepted->size(), 6);
    QCOMPARE(deepest, 1);
}

QTEST_GUILESS_MAIN(tst_InProcessBus)
#include "tst_inprocessbus.moc"
