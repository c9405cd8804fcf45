#include <faults/faultrun.h>

#include <app/terminalcontext.h>
#include <billing/billingendpoint.h>
#include <ui/recoverydialog.h>

#include <QAbstractItemModel>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

using State = PaymentCase::State;

namespace {

/// Longer than the outbox gets before what it has not posted is shown.
constexpr int LONG_MS = 60000;

enum class Billing {
    Inside,
    Away,     ///< inside, and the bus is away until it is connected
    Elsewhere ///< behind another bus, where it cannot be asked, and away as well
};

} // namespace

Q_DECLARE_METATYPE(PaymentCase::State)
Q_DECLARE_METATYPE(Billing)

/// A workstation that died in the middle of a payment is started again: the list is there by
/// itself, says what happened, and its button brings the payment to an end.
class tst_RecoveryAtStart : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void everyInterruptedStateHasItsWayOut_data();
    void everyInterruptedStateHasItsWayOut();
    void whatTheOutboxFinishesByItselfIsNotShown();
    void aPostponedPaymentIsThereAtTheNextStart();

private:
    /// Kills a station there and opens its folder here.
    void dieAndStart(const QString &faultPoint, Billing billing);
    void startAgain(Billing billing);
    RecoveryDialog *dialog() const { return m_window->findChild<RecoveryDialog *>(); }
    template<typename Widget>
    Widget *find(const char *name) const
    {
        return dialog()->findChild<Widget *>(QLatin1String(name));
    }
    int open() const
    {
        return m_context->reconciler().reconcile(PaymentReconciler::Scope::Open).open;
    }

    std::unique_ptr<FaultRun> m_run;
    BillingDatabase m_far;
    BillingService m_farService{m_far};
    InProcessBus *m_bus = nullptr;
    std::unique_ptr<TerminalContext> m_context;
    std::unique_ptr<QWidget> m_window;
};

void tst_RecoveryAtStart::initTestCase()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    QApplication::setFont(font);
}

void tst_RecoveryAtStart::cleanup()
{
    m_window.reset();
    m_context.reset();
    m_run.reset();
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_RecoveryAtStart::dieAndStart(const QString &faultPoint, Billing billing)
{
    m_run = std::make_unique<FaultRun>();
    QVERIFY(m_run->isReady());
    QVERIFY(m_run->run({QStringLiteral("pay"), QStringLiteral("1")}, faultPoint).killed);
    startAgain(billing);
}

void tst_RecoveryAtStart::startAgain(Billing billing)
{
    m_window.reset();
    m_context.reset();
    std::unique_ptr<InProcessBus> elsewhere;
    if (billing == Billing::Elsewhere) {
        QVERIFY(m_far.open(QDir(m_run->folder()).filePath(QStringLiteral("billing.sqlite"))));
        elsewhere = std::make_unique<InProcessBus>();
        BillingEndpoint::attach(*elsewhere, m_farService);
    }
    m_bus = elsewhere.get();
    if (m_bus)
        m_bus->setConnected(false);
    QString error;
    m_context = TerminalContext::open(m_run->folder(), &error, std::move(elsewhere));
    QVERIFY2(m_context, qPrintable(error));
    if (!m_bus)
        m_bus = &m_context->ownBus();
    m_bus->setConnected(billing == Billing::Inside);
    m_window = std::make_unique<QWidget>();
    m_window->resize(1000, 640);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    RecoveryDialog::offerAtStart(*m_context, m_window.get());
}

void tst_RecoveryAtStart::everyInterruptedStateHasItsWayOut_data()
{
    QTest::addColumn<QString>("faultPoint");
    QTest::addColumn<Billing>("billing");
    QTest::addColumn<State>("state");
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("asks");

    QTest::newRow("charged, no receipt")
        << QStringLiteral("charge.after-commit") << Billing::Inside << State::ChargedNotFiscalised
        << QStringLiteral("pbRefund") << true;
    QTest::newRow("receipt, not saved")
        << QStringLiteral("receipt.after-commit") << Billing::Inside << State::FiscalisedNotSaved
        << QStringLiteral("pbSaveByReceipt") << true;
    QTest::newRow("saved, not posted")
        << QStringLiteral("pack.after-commit") << Billing::Away << State::SavedNotPosted
        << QStringLiteral("pbPost") << false;
    QTest::newRow("posted, not confirmed")
        << QStringLiteral("posted.after-commit") << Billing::Elsewhere
        << State::PostedNotAcknowledged << QStringLiteral("pbPost") << false;
}

void tst_RecoveryAtStart::everyInterruptedStateHasItsWayOut()
{
    QFETCH(QString, faultPoint);
    QFETCH(Billing, billing);
    QFETCH(State, state);
    QFETCH(QString, button);
    QFETCH(bool, asks);
    dieAndStart(faultPoint, billing);
    QTRY_VERIFY_WITH_TIMEOUT(dialog() && dialog()->isVisible(), LONG_MS);
    QCOMPARE(dialog()->openCount(), 1);
    const auto *model = find<QTableView>("tvRecovery")->model();
    QCOMPARE(model->index(0, 3).data().toString(), PaymentCase::stateText(state));
    QVERIFY(!find<QLabel>("lRecoveryDetails")->text().isEmpty());
    for (const char *name : {"pbSaveByReceipt", "pbPost", "pbRefund"})
        QCOMPARE(find<QPushButton>(name)->isEnabled(), button == QLatin1String(name));

    m_bus->setConnected(true);
    if (asks) {
        QTimer::singleShot(0, dialog(), [] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            QVERIFY(box);
            QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
        });
    }
    QTest::mouseClick(find<QPushButton>(button.toLatin1().constData()), Qt::LeftButton);
    // The outbox posts what was saved by the receipt.
    QTRY_COMPARE_WITH_TIMEOUT(open(), 0, LONG_MS);
    QTRY_COMPARE(dialog()->openCount(), 0);
    dialog()->close();
    m_window.reset();
    m_context.reset();
    QCOMPARE(m_run->run({QStringLiteral("recover")}).code, 0);
    QVERIFY2(m_run->disagreement().isEmpty(), qPrintable(m_run->disagreement()));
}

void tst_RecoveryAtStart::whatTheOutboxFinishesByItselfIsNotShown()
{
    dieAndStart(QStringLiteral("pack.after-commit"), Billing::Inside);
    QTRY_COMPARE_WITH_TIMEOUT(open(), 0, LONG_MS);
    // The offer is over when its timer is gone.
    QTRY_VERIFY_WITH_TIMEOUT(m_window->findChild<QTimer *>() == nullptr, LONG_MS);
    QTRY_VERIFY(dialog() == nullptr);
}

void tst_RecoveryAtStart::aPostponedPaymentIsThereAtTheNextStart()
{
    dieAndStart(QStringLiteral("receipt.after-commit"), Billing::Inside);
    QTRY_VERIFY_WITH_TIMEOUT(dialog() && dialog()->isVisible(), LONG_MS);
    QTest::mouseClick(find<QPushButton>("pbPostpone"), Qt::LeftButton);
    QTRY_VERIFY(dialog() == nullptr);
    QCOMPARE(open(), 1);
    startAgain(Billing::Inside);
    QTRY_VERIFY_WITH_TIMEOUT(dialog() && dialog()->isVisible(), LONG_MS);
    QCOMPARE(dialog()->openCount(), 1);
}

QTEST_MAIN(tst_RecoveryAtStart)
#include "tst_recoveryatstart.moc"
