#include <bus/busjournal.h>
#include <bus/inprocessbus.h>

#include <QSignalSpy>
#include <QtTest>

using Relation = BusJournalEntry::Relation;

namespace {

const QString checkPay = QStringLiteral("/app/box_plugin_check_pay");
const QString addPack = QStringLiteral("/app/add_pay_pack");

QVariantMap request(const QString &uid)
{
    return {{QStringLiteral("uid"), uid}};
}

QVariantMap pack(const QString &id)
{
    return {{QStringLiteral("id"), id}};
}

/// A far side that answers when it is told to, whatever was asked.
class FarBus final : public MessageBus
{
    Q_OBJECT

public:
    bool connected() const override { return true; }
    QString stateText() const override { return QString(); }
    void arrive(const QByteArray &body, const QVariantMap &headers = {}) { deliver(headers, body); }
    void sendMessage(const QString &destination, const QVariant &data) override
    {
        emit traffic({BusMessage::Direction::Outgoing,
                      QDateTime::currentDateTime(),
                      destination,
                      {},
                      QJsonDocument::fromVariant(data).toJson(QJsonDocument::Compact)});
    }
};

} // namespace

class tst_BusJournal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void keepsMessagesInOrder();
    void matchesAnswers_data();
    void matchesAnswers();
    void secondAnswerIsRepeated();
    void answersOfOneIdGoToTheOldestOpenRequest();
    void roundTripIsTheSameInBoth();
    void settlesSentMessages();
    void replayedAnswerIsRepeated();
    void boundedByCount();
    void boundedByBytes();
    void fieldsCountBeforeAndAfterTheyAreText();
    void answerToADroppedRequestIsUnmatched();
    void clearForgetsRequestsAndKeepsNumbers();
    void tellsOfEveryChange();
    void followsARealBus();

private:
    const BusJournalEntry &last() const { return m_journal->at(m_journal->size() - 1); }

    std::unique_ptr<FarBus> m_bus;
    std::unique_ptr<BusJournal> m_journal;
};

void tst_BusJournal::init()
{
    m_bus = std::make_unique<FarBus>();
    m_journal = std::make_unique<BusJournal>(5, 1000);
    m_journal->follow(*m_bus);
}

void tst_BusJournal::keepsMessagesInOrder()
{
    m_bus->sendMessage(checkPay, request(QStringLiteral("-1")));
    m_bus->arrive(R"({"uid":"-1"})", {{MessageBus::MESSAGE_TYPE, QStringLiteral("t")}});
    QCOMPARE(m_journal->size(), 2);
    QCOMPARE(m_journal->at(0).number, qint64(1));
    QCOMPARE(m_journal->at(0).message.address, checkPay);
    QCOMPARE(m_journal->at(0).message.body.bytes(), QByteArray(R"({"uid":"-1"})"));
    QCOMPARE(m_journal->at(1).number, qint64(2));
    QCOMPARE(m_journal->at(1).message.address, QStringLiteral("t"));
    QVERIFY(m_journal->at(1).message.direction == BusMessage::Direction::Incoming);
    QCOMPARE(m_journal->find(2), &m_journal->at(1));
    QVERIFY(!m_journal->find(0));
    QVERIFY(!m_journal->find(3));
}

void tst_BusJournal::matchesAnswers_data()
{
    QTest::addColumn<QVariantMap>("sent");
    QTest::addColumn<QVariantMap>("headers");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("sentRelation");
    QTest::addColumn<int>("relation");
    QTest::addColumn<qint64>("partner");
    const auto row = [](const char *name, const QVariantMap &sent, const QByteArray &answer,
                        Relation relation, const QVariantMap &headers = {},
                        Relation sentRelation = Relation::Request) {
        QTest::newRow(name) << sent << headers << answer << int(sentRelation) << int(relation)
                            << qint64(relation == Relation::Answer ? 1 : 0);
    };
    const QVariantMap seven = request(QStringLiteral("7"));
    row("same uid", seven, R"({"uid":"7"})", Relation::Answer);
    row("negative uid", request(QStringLiteral("-7")), R"({"uid":"-7"})", Relation::Answer);
    row("uid in the headers", seven, R"({})", Relation::Answer, {{QStringLiteral("uid"), 7}});
    row("uid as a number", seven, R"({"uid":7})", Relation::Answer);
    row("another uid", seven, R"({"uid":"8"})", Relation::Unmatched);
    row("no uid", seven, R"({"result":0})", Relation::Unmatched);
    row("a list", seven, R"(["uid","7"])", Relation::Unmatched);
    row("cut", seven, R"({"uid":"7","desc)", Relation::Unreadable);
    row("empty", seven, "", Relation::Unreadable);
    row("pack", pack(QStringLiteral("55")), R"({"packId":"55"})", Relation::Answer);
    row("pack id as a number", pack(QStringLiteral("55")), R"({"packId":55})", Relation::Answer);
    row("a pack's id is no uid", pack(QStringLiteral("55")), R"({"uid":"55"})",
        Relation::Unmatched);
    row("a message without an id", {{QStringLiteral("text"), QStringLiteral("?")}}, R"({"uid":""})",
        Relation::Unmatched, {}, Relation::Notice);
}

void tst_BusJournal::matchesAnswers()
{
    QFETCH(QVariantMap, sent);
    QFETCH(QVariantMap, headers);
    QFETCH(QByteArray, answer);
    m_bus->sendMessage(addPack, sent);
    QTEST(int(last().relation), "sentRelation");
    m_bus->arrive(answer, headers);
    QTEST(int(last().relation), "relation");
    QTEST(last().partner, "partner");
    QCOMPARE(m_journal->at(0).partner,
             last().relation == Relation::Answer ? last().number : qint64(0));
}

void tst_BusJournal::secondAnswerIsRepeated()
{
    m_bus->sendMessage(checkPay, request(QStringLiteral("7")));
    m_bus->arrive(R"({"uid":"7"})");
    m_bus->arrive(R"({"uid":"7"})");
    QVERIFY(last().relation == Relation::Repeated);
    QCOMPARE(last().partner, qint64(1));
    QCOMPARE(last().roundTrip, qint64(-1));
    QCOMPARE(m_journal->at(0).partner, qint64(2));
}

void tst_BusJournal::answersOfOneIdGoToTheOldestOpenRequest()
{
    // A pack is posted again as long as nobody has confirmed it.
    m_bus->sendMessage(addPack, pack(QStringLiteral("55")));
    m_bus->sendMessage(addPack, pack(QStringLiteral("55")));
    m_bus->arrive(R"({"packId":"55"})");
    QCOMPARE(last().partner, qint64(1));
    m_bus->arrive(R"({"packId":"55"})");
    QCOMPARE(last().partner, qint64(2));
    QVERIFY(last().relation == Relation::Answer);
    m_bus->arrive(R"({"packId":"55"})");
    QVERIFY(last().relation == Relation::Repeated);
    QCOMPARE(last().partner, qint64(2));
}

void tst_BusJournal::roundTripIsTheSameInBoth()
{
    m_bus->sendMessage(checkPay, request(QStringLiteral("7")));
    QCOMPARE(last().roundTrip, qint64(-1));
    QElapsedTimer since;
    since.start();
    QTRY_VERIFY(since.elapsed() > 20);
    m_bus->arrive(R"({"uid":"7"})");
    QVERIFY(last().roundTrip >= 20);
    QCOMPARE(m_journal->at(0).roundTrip, last().roundTrip);
}

void tst_BusJournal::settlesSentMessages()
{
    const QVariantMap data = pack(QStringLiteral("55"));
    m_bus->sendMessage(addPack, data);
    m_bus->sendMessage(addPack, data);
    emit m_bus->refused(addPack, data, QStringLiteral("занято"));
    emit m_bus->accepted(addPack, data);
    QCOMPARE(m_journal->at(0).refusal, QStringLiteral("занято"));
    QVERIFY(!m_journal->at(0).accepted);
    QVERIFY(m_journal->at(1).accepted);
    QVERIFY(m_journal->at(1).refusal.isEmpty());
}

void tst_BusJournal::replayedAnswerIsRepeated()
{
    m_bus->sendMessage(checkPay, request(QStringLiteral("7")));
    m_bus->arrive(R"({ "uid" : "7" })", {{MessageBus::MESSAGE_TYPE, QStringLiteral("t")}});
    QSignalSpy incoming(m_bus.get(), &MessageBus::incomingMessage);
    m_bus->replay(last().message);
    QCOMPARE(incoming.count(), 1);
    QCOMPARE(incoming.at(0).at(1).toString(), QStringLiteral("{ \"uid\" : \"7\" }"));
    QVERIFY(last().relation == Relation::Repeated);
    QVERIFY(last().message.replayed);
    QVERIFY(!m_journal->at(1).message.replayed);
    m_bus->replay(m_journal->at(0).message);
    QCOMPARE(incoming.count(), 1);
}

void tst_BusJournal::boundedByCount()
{
    for (int i = 1; i <= 8; ++i)
        m_bus->sendMessage(checkPay, request(QString::number(i)));
    QCOMPARE(m_journal->size(), 5);
    QCOMPARE(m_journal->at(0).number, qint64(4));
    QCOMPARE(last().number, qint64(8));
    QVERIFY(!m_journal->find(3));
}

void tst_BusJournal::boundedByBytes()
{
    m_bus->arrive(QByteArray(400, 'a'));
    m_bus->arrive(QByteArray(400, 'b'));
    m_bus->arrive(QByteArray(300, 'c'));
    QCOMPARE(m_journal->size(), 2);
    QCOMPARE(m_journal->at(0).message.body.bytes().at(0), 'b');
    m_bus->arrive(QByteArray(5000, 'd'));
    QCOMPARE(m_journal->size(), 1);
    QCOMPARE(last().message.body.bytes().size(), 5000);
    m_bus->arrive("e");
    QCOMPARE(m_journal->size(), 1);
    QCOMPARE(last().message.body.bytes(), QByteArray("e"));
}

void tst_BusJournal::fieldsCountBeforeAndAfterTheyAreText()
{
    const QVariantMap heavy{{QStringLiteral("text"), QString(180, QLatin1Char('v'))}};
    const auto send = [&] {
        emit m_bus->traffic({BusMessage::Direction::Outgoing,
                             QDateTime::currentDateTime(),
                             checkPay,
                             {},
                             MessageBody::ofFields(heavy)});
    };
    send();
    const qint64 weight = last().weight;
    QCOMPARE(weight, last().message.body.weight());
    QVERIFY(weight > 360);
    QVERIFY(last().message.body.fields());
    send();
    QCOMPARE(m_journal->size(), 2);
    // Looking at a message makes it lighter; what the journal reckons with stays.
    QVERIFY(last().message.body.bytes().size() < weight);
    send();
    QCOMPARE(m_journal->size(), 2);
    m_journal->clear();
    for (int i = 0; i < 3; ++i)
        send();
    QCOMPARE(m_journal->size(), 2);
}

void tst_BusJournal::answerToADroppedRequestIsUnmatched()
{
    m_bus->sendMessage(checkPay, request(QStringLiteral("7")));
    for (int i = 0; i < 5; ++i)
        m_bus->arrive("[]");
    m_bus->arrive(R"({"uid":"7"})");
    QVERIFY(last().relation == Relation::Unmatched);
    // Not even when the answer itself is what drops the request.
    m_bus->sendMessage(checkPay, request(QStringLiteral("8")));
    for (int i = 0; i < 4; ++i)
        m_bus->arrive("[]");
    m_bus->arrive(R"({"uid":"8"})");
    QVERIFY(last().relation == Relation::Unmatched);
}

void tst_BusJournal::clearForgetsRequestsAndKeepsNumbers()
{
    m_bus->sendMessage(checkPay, request(QStringLiteral("7")));
    QSignalSpy dropped(m_journal.get(), &BusJournal::dropped);
    m_journal->clear();
    QCOMPARE(m_journal->size(), 0);
    QCOMPARE(dropped.count(), 1);
    QCOMPARE(dropped.at(0).at(0).toInt(), 1);
    m_bus->arrive(R"({"uid":"7"})");
    QVERIFY(last().relation == Relation::Unmatched);
    QCOMPARE(last().number, qint64(2));
}

void tst_BusJournal::tellsOfEveryChange()
{
    QStringList told;
    connect(m_journal.get(), &BusJournal::appended, this,
            [&] { told.append(QStringLiteral("added %1").arg(last().number)); });
    connect(m_journal.get(), &BusJournal::dropped, this,
            [&](int count) { told.append(QStringLiteral("dropped %1").arg(count)); });
    connect(m_journal.get(), &BusJournal::changed, this,
            [&](qint64 number) { told.append(QStringLiteral("changed %1").arg(number)); });
    const QVariantMap seven = request(QStringLiteral("7"));
    m_bus->sendMessage(checkPay, seven);
    emit m_bus->accepted(checkPay, seven);
    m_bus->arrive(R"({"uid":"7"})");
    for (int i = 0; i < 4; ++i)
        m_bus->arrive("[]");
    QCOMPARE(told.join(QStringLiteral(", ")),
             QStringLiteral("added 1, changed 1, added 2, changed 1, added 3, added 4, added 5, "
                            "dropped 1, added 6"));
}

void tst_BusJournal::followsARealBus()
{
    InProcessBus bus;
    BusJournal journal;
    journal.follow(bus);
    bus.serve(checkPay, [](const QVariantMap &message) {
        InProcessBus::Outcome outcome;
        outcome.answer =
            InProcessBus::Answer{{{MessageBus::MESSAGE_TYPE, QStringLiteral("checkPayStatus")}},
                                 QJsonDocument(QJsonObject::fromVariantMap(message)).toJson(),
                                 0};
        return outcome;
    });
    bus.sendMessage(checkPay, request(QStringLiteral("7")));
    QVERIFY(journal.at(0).relation == Relation::Request);
    QVERIFY(journal.at(0).message.body.fields());
    bus.sendMessage(QStringLiteral("/nowhere"), request(QStringLiteral("8")));
    QTRY_COMPARE(journal.size(), 3);
    QVERIFY(journal.at(0).accepted);
    QVERIFY(journal.at(1).refusal.contains(QStringLiteral("/nowhere")));
    QVERIFY(journal.at(2).relation == Relation::Answer);
    QCOMPARE(journal.at(2).partner, qint64(1));
}

QTEST_GUILESS_MAIN(tst_BusJournal)
#include "tst_busjournal.moc"
