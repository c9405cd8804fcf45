#include "billinganswers.h"
#include "paymentflow.h"
#include "sampleproviders.h"

#include <molvacore/cardchargelog.h>
#include <molvacore/posactivity.h>

#include <QMetaEnum>
#include <QTest>

#include <memory>

/// The host's bus, which may go before the wizard; what crosses it reaches the recording host.
class PassingBus : public QObject
{
    Q_OBJECT

public:
    explicit PassingBus(FakeHost &host)
    {
        connect(&host, &FakeHost::incomingMessage, this, &PassingBus::incomingMessage);
        connect(&host, &FakeHost::paymentStatus, this, &PassingBus::paymentStatus);
        connect(this, &PassingBus::sent, &host, &FakeHost::sendMessage);
    }
    int listeners() const
    {
        return receivers(SIGNAL(incomingMessage(QVariantMap, QString)))
            + receivers(SIGNAL(paymentStatus(QVariant)));
    }

signals:
    void incomingMessage(QVariantMap headers, QString message);
    void paymentStatus(QVariant status);
    void sent(QString destination, QVariant data);

public slots:
    void sendMessage(QString destination, QVariant data) { emit sent(destination, data); }
};

/// Wizards that end in every state they can be in, however the host ends them.
class TestWizardLifetime : public QObject
{
    Q_OBJECT

public:
    enum State {
        Opened,
        WaitingForBilling,
        AccountShown,
        OnTheSecondPage,
        OnThePaymentPage,
        AskedForTheCardAmount,
        TerminalRefusedTheCard,
        TerminalAtWork,
        CardCharged,
        RefusedByBilling,
        WithoutARegister,
        Printing,
        ReceiptRefused,
        Saving,
        HandingOn,
        TellingThatItIsSent
    };
    Q_ENUM(State)
    enum End {
        WizardDestroyed,
        WindowDestroyed,
        WizardClosed,
        BusDestroyed,
        RegisterDestroyed,
        HandlerDestroyed,
        EverythingDestroyed
    };
    Q_ENUM(End)

private slots:
    void init();
    void cleanup();

    void everyEndInEveryState_data();
    void everyEndInEveryState();
    void aPackThatNobodyCanSaveIsInTheTrace();

private:
    static bool opensADialog(State state);
    /// Message boxes that still open when the host has done its worst.
    static int dialogsBehind(State state, End how);
    void goTo(State state, bool isLegal);
    void end(End how);
    void endInDialog(End how);

    std::unique_ptr<PaymentFlow> m_flow;
    std::unique_ptr<PassingBus> m_bus;
    std::unique_ptr<QObject> m_working; ///< ends what listens to the card terminal
    bool m_ended = false;
};

void TestWizardLifetime::init()
{
    CardChargeLog::clear();
    m_flow = std::make_unique<PaymentFlow>(1);
    m_bus = std::make_unique<PassingBus>(m_flow->host);
    IPayByProviderPlugin *plugin = m_flow->handler.get();
    plugin->setMessageReciever(m_bus.get(), SIGNAL(incomingMessage(QVariantMap, QString)));
    plugin->setMessageSender(m_bus.get(), SLOT(sendMessage(QString, QVariant)));
    plugin->setPayStatusReciever(m_bus.get(), SIGNAL(paymentStatus(QVariant)));
    m_working = std::make_unique<QObject>();
    PosActivity::setSlowTime(0);
    m_ended = false;
}

void TestWizardLifetime::cleanup()
{
    const QString problems = m_flow->problems();
    m_flow.reset();
    m_bus.reset();
    m_working.reset();
    QCOMPARE(problems, QString());
}

void TestWizardLifetime::everyEndInEveryState_data()
{
    QTest::addColumn<State>("state");
    QTest::addColumn<End>("how");
    QTest::addColumn<bool>("isLegal");
    const auto states = QMetaEnum::fromType<State>();
    const auto ends = QMetaEnum::fromType<End>();
    for (const bool isLegal : {false, true}) {
        for (int state = 0; state < states.keyCount(); ++state) {
            for (int how = 0; how < ends.keyCount(); ++how) {
                // A register does not destroy itself while it prints.
                if (state == Printing
                    && (how == RegisterDestroyed || how == HandlerDestroyed
                        || how == EverythingDestroyed))
                    continue;
                QTest::addRow("%s %s %s", isLegal ? "legal" : "individual", states.key(state),
                              ends.key(how))
                    << State(state) << End(how) << isLegal;
            }
        }
    }
}

bool TestWizardLifetime::opensADialog(State state)
{
    return state == AskedForTheCardAmount || state == TerminalRefusedTheCard
        || state == RefusedByBilling || state == WithoutARegister || state == ReceiptRefused
        || state == TellingThatItIsSent;
}

void TestWizardLifetime::goTo(State state, bool isLegal)
{
    if (state == Opened)
        return;
    m_flow->tabTo("leAccount")
        .type(QStringLiteral("77"))
        .tabTo("pbGetData")
        .pause()
        .press(Qt::Key_Space);
    const auto asked = [this] { return !m_flow->host.sent().isEmpty(); };
    if (state == WaitingForBilling) {
        m_flow->step([] {}, asked);
        return;
    }
    if (state == RefusedByBilling) {
        m_flow->step(
            [this] {
                emit m_flow->host.incomingMessage(
                    BillingAnswers::headers(),
                    BillingAnswers::innerError(m_flow->host.lastUid(), QStringLiteral("Нет")));
            },
            asked);
        return;
    }
    // An only document is ticked from the start.
    const QVariantMap service = BillingAnswers::service(
        1, QStringLiteral("Вода"), QStringLiteral("100.00"), QStringLiteral("100.00"));
    m_flow->billingAnswers(isLegal ? BillingAnswers::legal(
                               {BillingAnswers::document(1, QStringLiteral("ВК-1"), {service})})
                                   : BillingAnswers::individual());
    if (state == AccountShown)
        return;
    m_flow->tabTo(QWizard::NextButton).press(Qt::Key_Space);
    if (state == OnTheSecondPage)
        return;
    m_flow->tabTo("pbByDebt").press(Qt::Key_Space);
    if (state == WithoutARegister)
        m_flow->fiscalRegister->ready = false;
    m_flow->tabTo(QWizard::NextButton).press(Qt::Key_Space);
    if (state == OnThePaymentPage || state == WithoutARegister)
        return;
    if (state == TerminalRefusedTheCard || state == TerminalAtWork || state == CardCharged
        || state == AskedForTheCardAmount) {
        if (state == TerminalRefusedTheCard)
            m_flow->database.setCardTerminal(1, QStringLiteral("decline"));
        if (state == TerminalAtWork)
            m_flow->database.setCardTerminal(1, QStringLiteral("slow"));
        m_flow->tabTo("pbCard").press(Qt::Key_Space);
        if (state != AskedForTheCardAmount)
            m_flow->enterInDialog(QStringLiteral("50.00"));
        return;
    }
    if (state == ReceiptRefused)
        m_flow->fiscalRegister->printError = QStringLiteral("Нет бумаги");
    m_flow->tabTo(QWizard::FinishButton).press(Qt::Key_Space);
}

void TestWizardLifetime::end(End how)
{
    m_ended = true;
    switch (how) {
    case WizardDestroyed:
        delete m_flow->wizard();
        break;
    case WindowDestroyed:
        m_flow->window.reset();
        break;
    case WizardClosed:
        m_flow->wizard()->reject();
        break;
    case BusDestroyed:
        m_bus.reset();
        break;
    case RegisterDestroyed:
        delete m_flow->fiscalRegister;
        break;
    case HandlerDestroyed:
        m_flow->handler.reset();
        break;
    case EverythingDestroyed:
        m_bus.reset();
        m_flow->handler.reset();
        m_flow->window.reset();
        break;
    }
}

void TestWizardLifetime::endInDialog(End how)
{
    m_flow->guard.answers.run([this, how](QDialog *dialog) {
        const QPointer<QDialog> still(dialog);
        end(how);
        if (still)
            still->reject();
    });
}

int TestWizardLifetime::dialogsBehind(State state, End how)
{
    const bool wizardIsGone =
        how == WizardDestroyed || how == WindowDestroyed || how == EverythingDestroyed;
    if (wizardIsGone)
        return 0;
    // The second message of a failed receipt, and the last one of a payment that went through.
    return state == ReceiptRefused || state == Printing || state == Saving || state == HandingOn
        ? 1
        : 0;
}

void TestWizardLifetime::everyEndInEveryState()
{
    QFETCH(const State, state);
    QFETCH(const End, how);
    QFETCH(const bool, isLegal);
    goTo(state, isLegal);
    if (state == Printing)
        m_flow->fiscalRegister->whilePrinting = [this, how] { end(how); };
    else if (state == Saving)
        m_flow->pays->whileSaving = [this, how] { end(how); };
    else if (state == HandingOn)
        m_flow->pays->whileHandingOn = [this, how] { end(how); };
    else if (state == TerminalAtWork)
        connect(PosActivity::instance(), &PosActivity::busyChanged, m_working.get(),
                [this, how](bool busy) {
                    if (busy)
                        end(how);
                });
    else if (opensADialog(state))
        endInDialog(how);
    else
        m_flow->step([this, how] { end(how); });
    for (int i = 0; i < dialogsBehind(state, how); ++i)
        m_flow->enterInDialog();
    m_flow->step([this] { m_flow->wizard()->reject(); });
    m_flow->execute(isLegal ? SampleProviders::legalEntities() : SampleProviders::individuals());
    m_flow->dropSteps();
    QVERIFY(m_ended);

    // The host owns a dialog that it has not destroyed yet; whatever comes late finds nobody.
    const QString uid = m_flow->host.lastUid();
    const auto lateMessages = [&] {
        emit m_flow->host.incomingMessage(BillingAnswers::headers(),
                                          BillingAnswers::data(uid, BillingAnswers::individual()));
        emit m_flow->host.paymentStatus(1);
        QCoreApplication::sendPostedEvents();
    };
    lateMessages();
    delete m_flow->wizard();
    if (m_bus)
        QCOMPARE(m_bus->listeners(), 0);
    lateMessages();

    // A receipt that was printed has its pack, even when the window went while it was printed.
    const bool wasPrinted =
        state == Printing || state == Saving || state == HandingOn || state == TellingThatItIsSent;
    QCOMPARE(m_flow->pays->packs.size(), wasPrinted ? 1 : 0);
    // A terminal at work charges the card, whatever becomes of the window.
    QCOMPARE(CardChargeLog::charges().size(), state == CardCharged || state == TerminalAtWork);
}

/// The host closes the window while the register prints, and then the disk is full: nobody is there
/// to read a box, so the trace names the pack.
void TestWizardLifetime::aPackThatNobodyCanSaveIsInTheTrace()
{
    m_flow->pays->saves = false;
    goTo(Printing, false);
    m_flow->fiscalRegister->whilePrinting = [this] { end(WizardDestroyed); };
    m_flow->execute(SampleProviders::individuals());
    m_flow->dropSteps();
    QVERIFY(m_ended);
    QCOMPARE(m_flow->pays->packs.size(), 1);
    const QString id = QString::number(m_flow->pays->packs.first().id());
    // Once as it was made, once because it was not saved.
    QCOMPARE(m_flow->guard.log.containing(QtWarningMsg, id).size(), 2);
}

QTEST_MAIN(TestWizardLifetime)
#include "tst_wizardlifetime.moc"
