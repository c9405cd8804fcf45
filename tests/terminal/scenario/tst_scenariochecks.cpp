#include <scenario/scenariochecks.h>

#include <payments/outbox.h>
#include <temporaryterminal.h>
#include <ui/journalmodel.h>

#include <molvacore/payment.h>
#include <molvacore/paypack.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

using Verb = ScenarioCommand::Verb;

class TestScenarioChecks : public QObject
{
    Q_OBJECT

private:
    TemporaryTerminal m_context;
    std::unique_ptr<ScenarioChecks> m_checks;
    PayPack m_saved;

    ScenarioChecks::Found found(Verb verb, const QStringList &arguments)
    {
        ScenarioCommand command;
        command.verb = verb;
        command.arguments = arguments;
        return m_checks->checkOf(command)();
    }
    bool holds(Verb verb, const QStringList &arguments) { return found(verb, arguments).holds; }

    /// 12.50 in cash.
    void savePack()
    {
        Payment payment;
        payment.setProviderData(m_context->providers().constFirst(), true);
        payment.setAccount(SampleNumber::ORDINARY);
        payment.setSumm(basix::FixNumber(100, 1250));
        PayPack pack;
        pack.addPayment(payment);
        pack.addCashOperations(payment.summ(), m_context->box().currency());
        m_saved = pack;
        QVERIFY(m_context->paysController().savePack(pack, true));
    }

    void arrive(const QByteArray &body)
    {
        BusMessage message;
        message.direction = BusMessage::Direction::Incoming;
        message.body = body;
        m_context->bus().replay(message);
    }

private slots:
    void init()
    {
        QVERIFY2(m_context.open(), qPrintable(m_context.error()));
        m_checks = std::make_unique<ScenarioChecks>(*m_context);
        m_checks->begin();
    }

    void cleanup()
    {
        m_checks.reset();
        m_context.close();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void countsWhatCameSinceTheBeginning()
    {
        savePack();
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("saved"), QStringLiteral("1")}));
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("receipts"), QStringLiteral("0")}));
        QVERIFY(holds(Verb::CheckSum, {QStringLiteral("cash"), QStringLiteral("12,50")}));
        QVERIFY(holds(Verb::CheckSum, {QStringLiteral("card"), QStringLiteral("0")}));
        const auto wrong = found(Verb::CheckSum, {QStringLiteral("cash"), QStringLiteral("12,51")});
        QVERIFY(!wrong.holds);
        QCOMPARE(wrong.text, QStringLiteral("найдено 12,50"));
        m_checks->begin();
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("saved"), QStringLiteral("0")}));
        QVERIFY(holds(Verb::CheckSum, {QStringLiteral("cash"), QStringLiteral("0")}));
    }

    void countsAnswersThatNobodyWaitsFor()
    {
        arrive(R"({"uid":"1"})");
        arrive("{");
        m_context->bus().sendMessage(QStringLiteral("/app/nowhere"),
                                     QVariantMap{{QStringLiteral("uid"), QStringLiteral("2")}});
        arrive(R"({"uid":"2"})");
        arrive(R"({"uid":"2"})");
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("foreign"), QStringLiteral("2")}));
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("repeated"), QStringLiteral("1")}));
        m_checks->begin();
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("foreign"), QStringLiteral("0")}));
        QVERIFY(holds(Verb::CheckCount, {QStringLiteral("repeated"), QStringLiteral("0")}));
    }

    void looksAtTheWindowInFront()
    {
        QWizard wizard;
        auto *page = new QWizardPage;
        auto *layout = new QVBoxLayout(page);
        auto *field = new QLineEdit(QStringLiteral("7001"), page);
        field->setObjectName(QStringLiteral("leAccount"));
        layout->addWidget(field);
        wizard.addPage(page);
        QVERIFY(holds(Verb::CheckWizard, {QStringLiteral("0")}));
        QVERIFY(!holds(Verb::CheckButton,
                       {QString::number(QWizard::FinishButton), QStringLiteral("1")}));
        wizard.show();
        QVERIFY(QTest::qWaitForWindowActive(&wizard));
        QVERIFY(holds(Verb::CheckWizard, {QStringLiteral("1")}));
        const QString finish = QString::number(QWizard::FinishButton);
        QVERIFY(holds(Verb::CheckButton, {finish, QStringLiteral("1")}));
        QVERIFY(!holds(Verb::CheckButton, {finish, QStringLiteral("0")}));
        QVERIFY(holds(Verb::CheckText, {QStringLiteral("leAccount"), QStringLiteral("700")}));
        QVERIFY(!holds(Verb::CheckText, {QStringLiteral("leAccount"), QStringLiteral("702")}));
        const auto widget = [this](const char *what, const char *name) {
            return holds(Verb::CheckWidget, {QLatin1String(what), QLatin1String(name)});
        };
        QVERIFY(widget("enabled", "leAccount") && widget("shown", "leAccount"));
        QVERIFY(!widget("disabled", "leAccount") && !widget("hidden", "leAccount"));
        field->setEnabled(false);
        QVERIFY(widget("disabled", "leAccount") && widget("shown", "leAccount"));
        field->hide();
        QVERIFY(widget("hidden", "leAccount") && !widget("disabled", "leAccount"));
        QVERIFY(widget("hidden", "absent"));
    }

    void everyDisagreementIsNamed()
    {
        QCOMPARE(m_checks->disagreements(0, {}, false), QStringList());
        savePack();
        QCOMPARE(m_checks->disagreements(1250, {}, false),
                 QStringList({QStringLiteral("Суммы не сошлись, в журнале кассы: ожидалось 12,50, "
                                             "найдено 0,00"),
                              QStringLiteral("Суммы не сошлись, на шине: ожидалось 12,50, "
                                             "найдено 0,00"),
                              QStringLiteral("Суммы не сошлись, у биллинга: ожидалось 12,50, "
                                             "найдено 0,00")}));
        const QStringList expected{QStringLiteral("12,50"), QStringLiteral("0"),
                                   QStringLiteral("12.5"), QStringLiteral("0"),
                                   QStringLiteral("0")};
        QCOMPARE(m_checks->disagreements(1250, expected, false), QStringList());
        QCOMPARE(m_checks->disagreements(1251, expected, false).size(), 1);
    }

    void thePackOnTheBusIsComparedByItsId_data()
    {
        QTest::addColumn<int>("added"); ///< kopecks more on the bus than in the store
        QTest::addColumn<bool>("otherId");
        QTest::addColumn<QString>("expected");
        QTest::newRow("the same") << 0 << false << QString();
        QTest::newRow("a kopeck more")
            << 1 << false
            << "на шине 12,51 = 12,51 наличными + 0,00 картой, в хранилище 12,50 = 12,50 "
               "наличными + 0,00 картой.";
        QTest::newRow("another id") << 0 << true << "есть на шине, в хранилище её нет.";
    }

    void thePackOnTheBusIsComparedByItsId()
    {
        QFETCH(int, added);
        QFETCH(bool, otherId);
        QFETCH(QString, expected);
        savePack();
        PayPack pack = m_saved;
        Payment payment = pack.payments().constFirst();
        payment.setSumm(basix::FixNumber(100, 1250 + added));
        pack.setPayments({payment});
        pack.setOperations({});
        pack.addCashOperations(payment.summ(), m_context->box().currency());
        if (otherId)
            pack.setId(pack.id() + 1);
        m_context->bus().sendMessage(Outbox::PACK_DESTINATION, PayPack::packToFullMap(pack));
        const QString sum = added ? QStringLiteral("12,51") : QStringLiteral("12,50");
        const QStringList sums{QStringLiteral("12,50"), QStringLiteral("0"),
                               QStringLiteral("12,50"), sum, QStringLiteral("0")};
        const QStringList found = m_checks->disagreements(1250, sums, false);
        QCOMPARE(found.size(), expected.isEmpty() ? 0 : 1);
        if (!expected.isEmpty())
            QVERIFY2(found.constFirst().endsWith(expected), qPrintable(found.constFirst()));
        // Without sums of its own the scenario demands the bus to be as the screen.
        const QString onBus =
            QStringLiteral("Суммы не сошлись, на шине: ожидалось 12,50, найдено 12,51");
        QCOMPARE(m_checks->disagreements(1250, {}, false).contains(onBus), added == 1);
    }

    void aKopeckMovedBetweenPaymentsIsNamed_data()
    {
        QTest::addColumn<int>("moved");
        QTest::newRow("as stored") << 0;
        QTest::newRow("a kopeck") << 1;
    }

    void aKopeckMovedBetweenPaymentsIsNamed()
    {
        QFETCH(int, moved);
        const auto packOf = [this](qint64 first, qint64 second, const PayPack &base) {
            PayPack pack = base;
            QList<Payment> payments;
            for (const qint64 sum : {first, second}) {
                Payment payment;
                payment.setProviderData(m_context->providers().constFirst(), true);
                payment.setAccount(SampleNumber::ORDINARY);
                payment.setSumm(basix::FixNumber(100, sum));
                payments.append(payment);
            }
            pack.setPayments(payments);
            pack.setOperations({});
            pack.addCashOperations(basix::FixNumber(100, first + second),
                                   m_context->box().currency());
            return pack;
        };
        const PayPack saved = packOf(1000, 250, PayPack());
        QVERIFY(m_context->paysController().savePack(saved, true));
        m_context->bus().sendMessage(
            Outbox::PACK_DESTINATION,
            PayPack::packToFullMap(packOf(1000 + moved, 250 - moved, saved)));
        const QStringList sums{QStringLiteral("12,50"), QStringLiteral("0"),
                               QStringLiteral("12,50"), QStringLiteral("12,50"),
                               QStringLiteral("0")};
        const QStringList found = m_checks->disagreements(1250, sums, false);
        QCOMPARE(found.size(), moved);
        if (moved > 0)
            QVERIFY2(found.constFirst().endsWith(
                         QStringLiteral("(платежи 10,01 и 2,49), в хранилище 12,50 = 12,50 "
                                        "наличными + 0,00 картой (платежи 10,00 и 2,50).")),
                     qPrintable(found.constFirst()));
    }

    void aPostedPackThatNeverCrossedIsNamed()
    {
        savePack();
        const qint64 id = m_saved.id();
        QVERIFY(m_context->payments().advance(id, PackState::Posted));
        const QStringList sums{QStringLiteral("12,50"), QStringLiteral("0"),
                               QStringLiteral("12,50"), QStringLiteral("0"), QStringLiteral("0")};
        QCOMPARE(
            m_checks->disagreements(1250, sums, false),
            QStringList(QStringLiteral("Пачка № %1 проведена, а на шине её не было.").arg(id)));
    }

    void rowsOfTheJournalAreComparedWithTheStore_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("agrees");
        QTest::newRow("as stored") << int(JournalModel::Sum) << "12.50" << true;
        QTest::newRow("sum") << int(JournalModel::Sum) << "12.51" << false;
        QTest::newRow("cash") << int(JournalModel::Cash) << "0.00" << false;
        QTest::newRow("card") << int(JournalModel::Card) << "12.50" << false;
        QTest::newRow("account") << int(JournalModel::Account) << "7" << false;
        QTest::newRow("state") << int(JournalModel::State) << "проведён" << false;
    }

    void rowsOfTheJournalAreComparedWithTheStore()
    {
        QFETCH(int, column);
        QFETCH(QString, shown);
        QFETCH(bool, agrees);
        QWidget window;
        auto *table = new QTableView(&window);
        table->setObjectName(QStringLiteral("tvJournal"));
        auto *summary = new QLabel(&window);
        summary->setObjectName(QStringLiteral("lPaymentDetails"));
        QStandardItemModel rows(0, JournalModel::ColumnCount);
        table->setModel(&rows);
        QCOMPARE(m_checks->journalDisagreements(window), QStringList());
        savePack();
        QCOMPARE(m_checks->journalDisagreements(window).size(), 1);

        JournalModel journal(m_context->payments());
        QList<QStandardItem *> row;
        for (int each = 0; each < JournalModel::ColumnCount; ++each)
            row.append(new QStandardItem(
                each == column ? shown : journal.index(0, each).data().toString()));
        rows.appendRow(row);
        QCOMPARE(m_checks->journalDisagreements(window).size(), 1);
        summary->setText(QString::number(m_saved.id()));
        QCOMPARE(m_checks->journalDisagreements(window).isEmpty(), agrees);
    }
};

QTEST_MAIN(TestScenarioChecks)
#include "tst_scenariochecks.moc"
