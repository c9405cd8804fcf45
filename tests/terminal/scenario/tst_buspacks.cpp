#include <scenario/buspacks.h>

#include <bus/busjournal.h>
#include <bus/inprocessbus.h>
#include <payments/outbox.h>

#include <QSignalSpy>
#include <QTest>

class TestBusPacks : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessBus> m_bus;
    std::unique_ptr<BusJournal> m_journal;

    static QVariantMap operation(const QVariant &moneyType, const QVariant &sum)
    {
        return {{QStringLiteral("moneyType"), moneyType}, {QStringLiteral("sum"), sum}};
    }

    static QVariantMap pack(const QVariant &id, const QVariantList &sums,
                            const QVariantList &operations)
    {
        QVariantList payments;
        for (const QVariant &sum : sums)
            payments.append(QVariantMap{{QStringLiteral("summ"), sum}});
        return {{QStringLiteral("id"), id},
                {QStringLiteral("payments"), payments},
                {QStringLiteral("operations"), operations}};
    }

    void send(const QVariant &data) { m_bus->sendMessage(Outbox::PACK_DESTINATION, data); }

    QString found(qint64 moment = 0) const
    {
        QStringList texts;
        const BusPacks packs = BusPacks::since(*m_journal, moment);
        for (const BusPacks::Pack &each : packs.packs())
            texts.append(QStringLiteral("%1: %2 = %3 + %4")
                             .arg(QString::number(each.id), QString::number(each.amount),
                                  QString::number(each.cash), QString::number(each.card)));
        return (texts + packs.problems()).join(QStringLiteral("; "));
    }

private slots:
    void init()
    {
        m_bus = std::make_unique<InProcessBus>();
        m_bus->serve(Outbox::PACK_DESTINATION,
                     [](const QVariantMap &) { return InProcessBus::Outcome(); });
        m_journal = std::make_unique<BusJournal>();
        m_journal->follow(*m_bus);
    }

    void readsWhatWasSent_data()
    {
        QTest::addColumn<QVariantMap>("sent");
        QTest::addColumn<QString>("expected");
        const QString unreadable = QStringLiteral("Пачка на шине не читается.");
        const auto text = [](const char *digits) { return QVariant(QLatin1String(digits)); };

        QTest::newRow("cash and card")
            << pack(text("7"), {150050}, {operation(1, 80050), operation(2, 70000)})
            << "7: 150050 = 80050 + 70000";
        QTest::newRow("several payments and charges")
            << pack(text("7"), {100, 250}, {operation(2, 100), operation(2, 250)})
            << "7: 350 = 0 + 350";
        QTest::newRow("sums as text")
            << pack(text("9223372036854775807"), {text("9007199254740993")},
                    {operation(1, text("9007199254740993"))})
            << "9223372036854775807: 9007199254740993 = 9007199254740993 + 0";
        QTest::newRow("parts that do not add up are told as they are")
            << pack(text("7"), {150050}, {operation(1, 150049)}) << "7: 150050 = 150049 + 0";
        QTest::newRow("no id") << pack(QVariant(), {100}, {operation(1, 100)}) << unreadable;
        QTest::newRow("no payments") << pack(text("7"), {}, {operation(1, 100)}) << unreadable;
        QTest::newRow("a sum that is none")
            << pack(text("7"), {100}, {operation(1, text("1.00 р."))}) << unreadable;
        QTest::newRow("a kind of money that is none")
            << pack(text("7"), {100}, {operation(3, 100)}) << unreadable;
    }

    void readsWhatWasSent()
    {
        QFETCH(QVariantMap, sent);
        QFETCH(QString, expected);
        send(sent);
        QCOMPARE(found(), expected);
    }

    void aPackThatIsSentAgainCountsOnce()
    {
        const QVariantMap first = pack(QStringLiteral("7"), {100}, {operation(1, 100)});
        send(first);
        send(first);
        send(pack(QStringLiteral("8"), {50}, {operation(1, 50)}));
        QCOMPARE(found(), QStringLiteral("7: 100 = 100 + 0; 8: 50 = 50 + 0"));
        const BusPacks packs = BusPacks::since(*m_journal, 0);
        QCOMPARE(packs.amount(), qint64(150));
        QVERIFY(packs.find(7) && packs.find(8) && !packs.find(9));
    }

    void aPackThatChangedUnderItsIdIsNamed()
    {
        send(pack(QStringLiteral("7"), {100}, {operation(1, 100)}));
        send(pack(QStringLiteral("7"), {101}, {operation(1, 101)}));
        QCOMPARE(
            found(),
            QStringLiteral("7: 100 = 100 + 0; Пачка № 7 ушла по шине дважды с разными суммами: "
                           "1,00 и 1,01."));
    }

    void onlyPacksSinceTheMoment()
    {
        send(pack(QStringLiteral("7"), {100}, {operation(1, 100)}));
        const qint64 moment = BusPacks::moment(*m_journal);
        QCOMPARE(found(moment), QString());
        m_bus->sendMessage(QStringLiteral("/app/elsewhere"),
                           pack(QStringLiteral("9"), {1}, {operation(1, 1)}));
        send(pack(QStringLiteral("8"), {50}, {operation(1, 50)}));
        QCOMPARE(found(moment), QStringLiteral("8: 50 = 50 + 0"));
    }

    void aRefusedPackDidNotCross()
    {
        m_bus->setConnected(false);
        QSignalSpy refused(m_bus.get(), &MessageBus::refused);
        send(pack(QStringLiteral("7"), {100}, {operation(1, 100)}));
        QTRY_COMPARE(refused.size(), 1);
        QCOMPARE(found(), QString());
    }

    void messagesThatTheJournalLostAreTold()
    {
        m_journal = std::make_unique<BusJournal>(1);
        m_journal->follow(*m_bus);
        send(pack(QStringLiteral("7"), {100}, {operation(1, 100)}));
        send(pack(QStringLiteral("8"), {50}, {operation(1, 50)}));
        QCOMPARE(found(),
                 QStringLiteral("8: 50 = 50 + 0; Журнал шины хранит не все сообщения: "
                                "первых уже нет."));
        QCOMPARE(found(1), QStringLiteral("8: 50 = 50 + 0"));
    }
};

QTEST_GUILESS_MAIN(TestBusPacks)
#include "tst_buspacks.moc"
