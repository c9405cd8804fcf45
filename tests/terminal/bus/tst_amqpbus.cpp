#include <broker/brokerprocess.h>
#include <broker/cutproxy.h>
#include <broker/farside.h>

#include <billing/billingservice.h>
#include <bus/amqp/amqpbus.h>
#include <bus/amqp/billingqueues.h>
#include <bus/amqp/brokeraddress.h>
#include <bus/amqp/messagecheck.h>
#include <messagelog.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr int LONG_MS = 60000;
constexpr int RESTART_MS = 90000;

QVariantMap request(const QString &uid)
{
    return {{QStringLiteral("uid"), uid}};
}

QVariantMap pack(int id)
{
    return {{QStringLiteral("id"), QString::number(id)}};
}

QStringList idsOf(const QSignalSpy &spy)
{
    QStringList ids;
    for (const QList<QVariant> &arguments : spy)
        ids.append(arguments.at(1).toMap().value(QStringLiteral("id")).toString());
    return ids;
}

QSet<QString> setOf(const QStringList &list)
{
    return QSet<QString>(list.cbegin(), list.cend());
}

} // namespace

class tst_AmqpBus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void missingExchangeTakesNothing();
    void createRefusesABadAddress();
    void encryptedConnection();
    void cannotConnect_data();
    void cannotConnect();
    void silentPeerDoesNotBlock();
    void terminalsMayOnlySend();
    void onlyTheAnswerAskedForArrives();
    void lostConnectionHealsByItself();
    void unconfirmedPacksAreRefused();
    void blockedBrokerIsVisible();
    void confirmedPacksSurviveTheBroker();

private:
    std::unique_ptr<AmqpBus> bus(const QString &address) const;

    std::unique_ptr<MessageLog> m_log;
    std::unique_ptr<BrokerProcess> m_broker;
};

void tst_AmqpBus::initTestCase()
{
    m_log = std::make_unique<MessageLog>();
    m_broker = std::make_unique<BrokerProcess>(1, BrokerProcess::Tls::On);
    const QString problem = m_broker->start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void tst_AmqpBus::cleanup()
{
    // Neither as it is nor as it stands in an address.
    for (const QString &secret : {BrokerProcess::PASSWORD, QStringLiteral("7f3a")}) {
        for (const MessageLog::Message &message : m_log->messages())
            QVERIFY2(!message.text.contains(secret), qPrintable(message.text));
    }
    m_log->clear();
}

std::unique_ptr<AmqpBus> tst_AmqpBus::bus(const QString &address) const
{
    QString error;
    std::unique_ptr<AmqpBus> result = AmqpBus::create(address, &error);
    if (!result)
        qCritical("%s", qUtf8Printable(error));
    return result;
}

void tst_AmqpBus::missingExchangeTakesNothing()
{
    // Nobody has declared anything on the broker yet.
    const auto terminal = bus(m_broker->address(QStringLiteral("box1")));
    QSignalSpy accepted(terminal.get(), &MessageBus::accepted);
    QSignalSpy refused(terminal.get(), &MessageBus::refused);
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);
    terminal->sendMessage(BillingService::PACK_DESTINATION, pack(1));
    QTRY_COMPARE_WITH_TIMEOUT(refused.count(), 1, LONG_MS);
    QVERIFY2(refused.at(0).at(2).toString().contains(QStringLiteral("нет нужной очереди")),
             qPrintable(refused.at(0).at(2).toString()));
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);
    QCOMPARE(accepted.count(), 0);
    QCOMPARE(refused.count(), 1);
}

void tst_AmqpBus::createRefusesABadAddress()
{
    QString error;
    QVERIFY(!AmqpBus::create(QStringLiteral("mqtt://h"), &error));
    QVERIFY(!error.isEmpty());
}

void tst_AmqpBus::encryptedConnection()
{
    FarSide far;
    QCOMPARE(
        far.open(m_broker->encryptedAddress(QStringLiteral("worker"), m_broker->authorityFile())),
        QString());
    far.setHandler([&far](const AmqpDelivery &delivery) {
        far.answer(delivery, QStringLiteral("checkPayStatus"), delivery.body);
    });
    const auto terminal =
        bus(m_broker->encryptedAddress(QStringLiteral("box1"), m_broker->authorityFile()));
    QSignalSpy incoming(terminal.get(), &MessageBus::incomingMessage);
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);
    QVERIFY(terminal->stateText().contains(QStringLiteral("есть")));
    QVariantMap large = request(QStringLiteral("5"));
    large.insert(QStringLiteral("text"), QStringLiteral("ю").repeated(500000));
    terminal->sendMessage(BillingService::REQUEST_DESTINATION, large);
    QTRY_COMPARE_WITH_TIMEOUT(incoming.count(), 1, LONG_MS);
    QVERIFY(incoming.at(0).at(1).toString().size() > 500000);
}

void tst_AmqpBus::cannotConnect_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("part");

    const QString plain = m_broker->address(QStringLiteral("box1"));
    const QString encrypted =
        m_broker->encryptedAddress(QStringLiteral("box1"), m_broker->authorityFile());
    const QString secret = QString::fromLatin1(QUrl::toPercentEncoding(BrokerProcess::PASSWORD));
    QTest::newRow("foreign authority")
        << m_broker->encryptedAddress(QStringLiteral("box1"), m_broker->foreignAuthorityFile())
        << QStringLiteral("сертификат");
    QTest::newRow("certificate of another host")
        << QString(encrypted).replace(QLatin1String("localhost"), QLatin1String("127.0.0.1"))
        << QStringLiteral("сертификат выдан не этому");
    QTest::newRow("encryption where there is none") << QString(encrypted).replace(
        QString::number(m_broker->tlsPort()), QString::number(m_broker->port()))
                                                    << QStringLiteral("защищённое соединение");
    QTest::newRow("wrong password") << QString(plain).replace(secret, QStringLiteral("Other-7f3a"))
                                    << QStringLiteral("имя или пароль");
    QTest::newRow("unknown user") << QString(plain).replace(QLatin1String("box1"),
                                                            QLatin1String("box9"))
                                  << QStringLiteral("имя или пароль");
    QTest::newRow("unknown virtual host")
        << QString(plain).replace(QLatin1String("/selmar"), QLatin1String("/other"))
        << QStringLiteral("раздел");
    QTest::newRow("nobody listens")
        << m_broker->addressAt(1, QStringLiteral("box1")) << QStringLiteral("недоступен");
}

void tst_AmqpBus::cannotConnect()
{
    QFETCH(QString, address);
    QFETCH(QString, part);
    const auto terminal = bus(address);
    QVERIFY(terminal);
    QSignalSpy refused(terminal.get(), &MessageBus::refused);
    QTRY_VERIFY2_WITH_TIMEOUT(terminal->stateText().contains(part),
                              qPrintable(terminal->stateText()), LONG_MS);
    QVERIFY(terminal->stateText().contains(QStringLiteral("Повторное подключение через")));
    QVERIFY(!terminal->connected());
    QVERIFY2(!terminal->stateText().contains(QLatin1String("7f3a")),
             qPrintable(terminal->stateText()));
    terminal->sendMessage(BillingService::PACK_DESTINATION, pack(1));
    QTRY_COMPARE_WITH_TIMEOUT(refused.count(), 1, LONG_MS);
    QVERIFY(refused.at(0).at(2).toString().contains(part));
}

void tst_AmqpBus::silentPeerDoesNotBlock()
{
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    auto terminal = bus(m_broker->addressAt(silent.serverPort(), QStringLiteral("box1")));
    QSignalSpy refused(terminal.get(), &MessageBus::refused);
    terminal->sendMessage(BillingService::PACK_DESTINATION, pack(1));
    // The event loop of this thread turns while the other waits for the peer's first word.
    int turns = 0;
    QTimer turn;
    connect(&turn, &QTimer::timeout, this, [&] {
        if (silent.hasPendingConnections()
            && terminal->stateText().contains(QStringLiteral("Соединение")))
            ++turns;
    });
    turn.start(0);
    QTRY_VERIFY_WITH_TIMEOUT(turns > 20, LONG_MS);
    turn.stop();
    QTRY_VERIFY2_WITH_TIMEOUT(terminal->stateText().contains(QStringLiteral("не отвечает")),
                              qPrintable(terminal->stateText()), LONG_MS);
    QTRY_COMPARE(refused.count(), 1);
    // Ends although the peer never says a word.
    terminal.reset();
}

void tst_AmqpBus::terminalsMayOnlySend()
{
    FarSide far;
    QCOMPARE(far.open(m_broker->address(QStringLiteral("worker"))), QString());
    QString error;
    const auto address = BrokerAddress::parse(m_broker->address(QStringLiteral("box1")), &error);
    AmqpConnection connection;
    const auto refuses = [&](const std::function<bool()> &operation) {
        return connection.open(*address, QStringLiteral("curious")) && !operation()
            && connection.lastError().contains(QStringLiteral("не дал права"));
    };
    QVERIFY(refuses([&] {
        return connection.consume(BillingQueues::PACKS, QStringLiteral("x"),
                                  AmqpConnection::Acknowledge::Manual);
    }));
    QVERIFY(refuses([&] { return connection.declareQueue(QStringLiteral("own"), {}); }));
    QVERIFY(refuses([&] {
        return connection.bindQueue(BillingQueues::PACKS, BillingQueues::EXCHANGE,
                                    QStringLiteral("x"));
    }));
    // Straight into somebody's queue or to somebody's reply address.
    QSignalSpy lost(&connection, &AmqpConnection::lost);
    QVERIFY(connection.open(*address, QStringLiteral("curious")));
    AmqpMessage message;
    message.routingKey = BillingQueues::PACKS;
    connection.publish(message);
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(lost.at(0).at(0).toString().contains(QStringLiteral("не дал права")));
    QVERIFY(far.packs().isEmpty());
}

void tst_AmqpBus::onlyTheAnswerAskedForArrives()
{
    FarSide far;
    QCOMPARE(far.open(m_broker->address(QStringLiteral("worker"))), QString());
    const QString type = QStringLiteral("checkPayStatus");
    far.setHandler([&far, type](const AmqpDelivery &delivery) {
        if (delivery.correlationId == QLatin1String("last")) {
            far.answer(delivery, type, "{\"n\":\"last\"}");
            return;
        }
        far.answerAs(QStringLiteral("foreign"), delivery, type, "{\"n\":1}");
        far.answerAs(QString(), delivery, type, "{\"n\":2}");
        far.answer(delivery, MessageBus::PAYMENT_STATUS, "{\"n\":3}");
        far.answer(delivery, QString(), "{\"n\":4}");
        far.answer(delivery, type, "{\"n\":\"\xcf\xf0\"}");
        far.answer(delivery, type, "{\"n\":" + QByteArray(100, '[') + QByteArray(100, ']') + "}");
        far.answer(delivery, type, "[5]");
        far.answer(delivery, type, "{\"n\":6,\"n\":7}");
        far.answer(delivery, type,
                   "{\"n\":\"" + QByteArray(MessageCheck::LARGEST_BYTES, 'x') + "\"}");
        far.answer(delivery, type, "{\"n\":\"right\"}");
        far.answer(delivery, type, "{\"n\":\"repeated\"}");
    });
    const auto terminal = bus(m_broker->address(QStringLiteral("box1")));
    QSignalSpy incoming(terminal.get(), &MessageBus::incomingMessage);
    QSignalSpy status(terminal.get(), &MessageBus::paymentStatus);
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);
    terminal->sendMessage(BillingService::REQUEST_DESTINATION, request(QStringLiteral("77")));
    QTRY_COMPARE_WITH_TIMEOUT(incoming.count(), 1, LONG_MS);
    terminal->sendMessage(BillingService::REQUEST_DESTINATION, request(QStringLiteral("last")));
    QTRY_COMPARE_WITH_TIMEOUT(incoming.count(), 2, LONG_MS);
    QCOMPARE(incoming.at(0).at(1).toString(), QStringLiteral("{\"n\":\"right\"}"));
    QCOMPARE(incoming.at(1).at(1).toString(), QStringLiteral("{\"n\":\"last\"}"));
    QCOMPARE(status.count(), 0);
    QCOMPARE(m_log->containing(QtWarningMsg, QStringLiteral("dropped")).size(), 10);
}

void tst_AmqpBus::lostConnectionHealsByItself()
{
    FarSide far;
    QCOMPARE(far.open(m_broker->address(QStringLiteral("worker"))), QString());
    far.setHandler([&far](const AmqpDelivery &delivery) {
        far.answer(delivery, QStringLiteral("checkPayStatus"), "{}");
    });
    CutProxy proxy(m_broker->port());
    const auto terminal = bus(m_broker->addressAt(proxy.port(), QStringLiteral("box1")));
    QSignalSpy state(terminal.get(), &MessageBus::stateChanged);
    QSignalSpy refused(terminal.get(), &MessageBus::refused);
    QSignalSpy accepted(terminal.get(), &MessageBus::accepted);
    QSignalSpy incoming(terminal.get(), &MessageBus::incomingMessage);
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);

    proxy.refuse(true);
    proxy.cut();
    QTRY_VERIFY_WITH_TIMEOUT(!terminal->connected(), LONG_MS);
    QTRY_VERIFY2_WITH_TIMEOUT(
        terminal->stateText().contains(QStringLiteral("Повторное подключение через")),
        qPrintable(terminal->stateText()), LONG_MS);
    terminal->sendMessage(BillingService::PACK_DESTINATION, pack(1));
    QTRY_COMPARE_WITH_TIMEOUT(refused.count(), 1, LONG_MS);
    const int before = proxy.connections();
    QTRY_VERIFY_WITH_TIMEOUT(proxy.connections() >= before + 2, LONG_MS);

    proxy.refuse(false);
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);
    QCOMPARE(state.constLast().at(0).toBool(), true);
    terminal->sendMessage(BillingService::REQUEST_DESTINATION, request(QStringLiteral("1")));
    QTRY_COMPARE_WITH_TIMEOUT(incoming.count(), 1, LONG_MS);
    QCOMPARE(accepted.count(), 1);
    QVERIFY(far.packs().isEmpty());
}

void tst_AmqpBus::unconfirmedPacksAreRefused()
{
    constexpr int COUNT = 20;
    FarSide far;
    QCOMPARE(far.open(m_broker->address(QStringLiteral("worker"))), QString());
    CutProxy proxy(m_broker->port());
    const auto terminal = bus(m_broker->addressAt(proxy.port(), QStringLiteral("box1")));
    QSignalSpy refused(terminal.get(), &MessageBus::refused);
    QSignalSpy accepted(terminal.get(), &MessageBus::accepted);
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);

    proxy.muteBroker(true);
    for (int i = 1; i <= COUNT; ++i)
        terminal->sendMessage(BillingService::PACK_DESTINATION, pack(i));
    // The broker has them all and says so, but nobody here hears it.
    QTRY_COMPARE_WITH_TIMEOUT(far.packs().size(), COUNT, LONG_MS);
    QCOMPARE(accepted.count(), 0);
    QSignalSpy state(terminal.get(), &MessageBus::stateChanged);
    proxy.cut();
    QTRY_COMPARE_WITH_TIMEOUT(refused.count(), COUNT, LONG_MS);
    QCOMPARE(setOf(idsOf(refused)).size(), COUNT);
    // The loss itself is told after the packs it took along; until then connected() is the old one's.
    QTRY_VERIFY_WITH_TIMEOUT(!state.isEmpty(), LONG_MS);

    proxy.muteBroker(false);
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);
    terminal->sendMessage(BillingService::PACK_DESTINATION, pack(1));
    QTRY_COMPARE_WITH_TIMEOUT(accepted.count(), 1, LONG_MS);
    QCOMPARE(refused.count(), COUNT);
}

void tst_AmqpBus::blockedBrokerIsVisible()
{
    FarSide far;
    QCOMPARE(far.open(m_broker->address(QStringLiteral("worker"))), QString());
    const auto terminal = bus(m_broker->address(QStringLiteral("box1")));
    QSignalSpy refused(terminal.get(), &MessageBus::refused);
    QSignalSpy accepted(terminal.get(), &MessageBus::accepted);
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);
    QCOMPARE(
        m_broker->control({QStringLiteral("set_vm_memory_high_watermark"), QStringLiteral("0")}),
        QString());
    // The alarm goes round a little later, and a connection hears of it when it publishes.
    int last = 0;
    const auto isBlocked = [&terminal] {
        return terminal->stateText().contains(QStringLiteral("временно"));
    };
    QElapsedTimer waiting;
    waiting.start();
    while (!isBlocked() && !waiting.hasExpired(LONG_MS)) {
        terminal->sendMessage(BillingService::PACK_DESTINATION, pack(++last));
        (void)QTest::qWaitFor(isBlocked, 300);
    }
    QVERIFY2(isBlocked(), qPrintable(terminal->stateText()));
    QVERIFY(!terminal->connected());
    const QString refusedId = QString::number(++last);
    terminal->sendMessage(BillingService::PACK_DESTINATION, pack(last));
    QTRY_VERIFY_WITH_TIMEOUT(idsOf(refused).contains(refusedId), LONG_MS);
    QCOMPARE(
        m_broker->control({QStringLiteral("set_vm_memory_high_watermark"), QStringLiteral("0.4")}),
        QString());
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);
    const QString acceptedId = QString::number(++last);
    terminal->sendMessage(BillingService::PACK_DESTINATION, pack(last));
    QTRY_VERIFY_WITH_TIMEOUT(idsOf(accepted).contains(acceptedId), LONG_MS);
    // What was on its way into the alarm waited for its end, or was refused if that took too long.
    QTRY_COMPARE_WITH_TIMEOUT(accepted.count() + refused.count(), last, LONG_MS);
    QVERIFY(!idsOf(accepted).contains(refusedId));
}

void tst_AmqpBus::confirmedPacksSurviveTheBroker()
{
    constexpr int COUNT = 100;
    {
        FarSide far;
        QCOMPARE(far.open(m_broker->address(QStringLiteral("worker"))), QString());
    }
    const auto terminal = bus(m_broker->address(QStringLiteral("box1")));
    QSignalSpy refused(terminal.get(), &MessageBus::refused);
    QSignalSpy accepted(terminal.get(), &MessageBus::accepted);
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), LONG_MS);
    for (int i = 1; i <= COUNT; ++i)
        terminal->sendMessage(BillingService::PACK_DESTINATION, pack(i));
    QTRY_VERIFY_WITH_TIMEOUT(accepted.count() > COUNT / 4, LONG_MS);
    m_broker->kill9();
    QTRY_VERIFY_WITH_TIMEOUT(!terminal->connected(), LONG_MS);
    QTRY_COMPARE_WITH_TIMEOUT(accepted.count() + refused.count(), COUNT, LONG_MS);
    QTRY_VERIFY2_WITH_TIMEOUT(
        terminal->stateText().contains(QStringLiteral("Повторное подключение через")),
        qPrintable(terminal->stateText()), LONG_MS);

    const QString problem = m_broker->restart();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    QTRY_VERIFY_WITH_TIMEOUT(terminal->connected(), RESTART_MS);
    FarSide far;
    QCOMPARE(far.open(m_broker->address(QStringLiteral("worker"))), QString());
    terminal->sendMessage(BillingService::PACK_DESTINATION, pack(COUNT + 1));
    QTRY_VERIFY_WITH_TIMEOUT(
        accepted.count() > 0 && idsOf(accepted).constLast() == QString::number(COUNT + 1), LONG_MS);
    const auto arrived = [&far] {
        QSet<QString> ids;
        for (const AmqpDelivery &delivery : far.packs())
            ids.insert(QString::fromUtf8(delivery.body));
        return ids;
    };
    QTRY_VERIFY_WITH_TIMEOUT(arrived().contains(QStringLiteral("{\"id\":\"%1\"}").arg(COUNT + 1)),
                             LONG_MS);
    for (const QString &id : idsOf(accepted))
        QVERIFY2(arrived().contains(QStringLiteral("{\"id\":\"%1\"}").arg(id)), qPrintable(id));
}

QTEST_GUILESS_MAIN(tst_AmqpBus)
#include "tst_amqpbus.moc"
