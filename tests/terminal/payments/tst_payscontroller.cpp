#include "../billing/seededbilling.h"

#include <billing/billingdatabase.h>
#include <billing/billingendpoint.h>
#include <billing/billingservice.h>
#include <bus/inprocessbus.h>
#include <payments/paymentsstore.h>
#include <payments/payscontroller.h>
#include <payments/payscontrollerwrapper.h>

#include <molvacore/paypack.h>

#include <QCoreApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

#include <csignal>
#include <cstdio>

namespace {

PayPack packFor(const QString &account, qint64 cash, qint64 card)
{
    Provider provider;
    provider.setId(18722);
    provider.setWorkProviderId(18722);
    provider.setCheckName(QStringLiteral("Водоканал ФЛ"));
    Payment payment;
    payment.setCreated(QDateTime::currentDateTime());
    payment.setProviderData(provider, true);
    payment.setAccount(account);
    payment.setCurrencyId(643);
    payment.setSumm(basix::FixNumber(100, cash + card));
    PayPack pack;
    pack.addPayment(payment);
    const basix::Currency rouble(643, QStringLiteral("RUB"), QStringLiteral("Рубль"));
    if (card > 0)
        pack.addCardOperations(basix::FixNumber(100, card), rouble, QString());
    if (cash > 0)
        pack.addCashOperations(basix::FixNumber(100, cash), rouble);
    static int document = 41;
    pack.setFiscData({{QStringLiteral("fn"), QStringLiteral("9960440300000001")},
                      {QStringLiteral("fd"), ++document}});
    return pack;
}

/// Saves packs until it is killed; names each on its output only after it was told that the pack is
/// safe.
int saveUntilKilled(const QString &file)
{
    PaymentsStore store;
    if (!store.open(file))
        return 1;
    PaysController controller(store, 4107);
    for (;;) {
        const PayPack pack = packFor(SampleNumber::ORDINARY, 100, 0);
        if (!controller.savePack(pack, true))
            return 2;
        std::printf("%lld\n", pack.id());
        std::fflush(stdout);
    }
}

} // namespace

class tst_PaysController : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void savesForTheJournal();
    void savesOnce();
    void refusesAnUnfinishedPack();
    void handsOnWhatWasSaved();
    void handsOnNothingUnknownOrPosted();
    void followsAPackToBilling();
    void keepsARefusedPack();
    void drainsInOrderAndOnce();
    void drainsAfterARestart();
    void repeatedPostingPaysOnce();
    void wrapperOutlivesTheController();
    void survivesBeingKilled();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;
    std::unique_ptr<PaymentsStore> m_store;
    std::unique_ptr<PaysController> m_controller;
    std::unique_ptr<BillingDatabase> m_billing;
    std::unique_ptr<BillingService> m_service;
    std::unique_ptr<InProcessBus> m_bus;
};

void tst_PaysController::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_file = m_folder->filePath(QStringLiteral("payments.sqlite"));
    m_store = std::make_unique<PaymentsStore>();
    QVERIFY(m_store->open(m_file));
    m_controller = std::make_unique<PaysController>(*m_store, 4107);
    m_billing = std::make_unique<BillingDatabase>();
    const QString billing = m_folder->filePath(QStringLiteral("billing.sqlite"));
    QVERIFY(copySeededBilling(billing));
    QVERIFY(m_billing->open(billing));
    m_service = std::make_unique<BillingService>(*m_billing);
    m_bus = std::make_unique<InProcessBus>();
    BillingEndpoint::attach(*m_bus, *m_service);
    m_controller->follow(*m_bus);
}

void tst_PaysController::cleanup()
{
    m_controller.reset();
    m_bus.reset();
    m_service.reset();
    m_billing.reset();
    m_store.reset();
    m_folder.reset();
}

void tst_PaysController::savesForTheJournal()
{
    QSignalSpy changed(m_controller.get(), &PaysController::changed);
    const PayPack pack = packFor(SampleNumber::ORDINARY, 50050, 100000);
    QVERIFY2(m_controller->savePack(pack, true), qPrintable(m_controller->lastError()));
    QCOMPARE(changed.size(), 1);
    const std::optional<PaymentRecord> record = m_store->record(pack.id());
    QVERIFY(record);
    QCOMPARE(record->account, SampleNumber::ORDINARY);
    QCOMPARE(record->providerId, Q_INT64_C(18722));
    QCOMPARE(record->providerName, QStringLiteral("Водоканал ФЛ"));
    QCOMPARE(record->sum.value(), Q_INT64_C(150050));
    QCOMPARE(record->cash.value(), Q_INT64_C(50050));
    QCOMPARE(record->card.value(), Q_INT64_C(100000));
    QCOMPARE(record->fiscalStorage, QStringLiteral("9960440300000001"));
    QCOMPARE(record->fiscalDocument, pack.fiscData().value(QStringLiteral("fd")).toString());
    QCOMPARE(record->state, PackState::Saved);
}

void tst_PaysController::savesOnce()
{
    const PayPack pack = packFor(SampleNumber::ORDINARY, 100, 0);
    QVERIFY(m_controller->savePack(pack, true));
    QVERIFY(m_controller->savePack(pack, true));
    QCOMPARE(m_store->count({}), 1);
}

void tst_PaysController::refusesAnUnfinishedPack()
{
    QVERIFY(!m_controller->savePack(packFor(SampleNumber::ORDINARY, 100, 0), false));
    QVERIFY(!m_controller->lastError().isEmpty());
    QCOMPARE(m_store->count({}), 0);
}

void tst_PaysController::handsOnWhatWasSaved()
{
    const PayPack pack = packFor(SampleNumber::ORDINARY, 100, 0);
    QVERIFY(m_controller->savePack(pack, true));
    QVariantMap message{{QStringLiteral("old"), 1}};
    QString error = QStringLiteral("old");
    QVERIFY(m_controller->handOn(pack.id(), message, error));
    QVERIFY(error.isEmpty());
    QCOMPARE(message.take(PaysController::BOX_ID).toString(), QStringLiteral("4107"));
    bool read = false;
    QCOMPARE(PayPack::packFromFullMap(message, &read).id(), pack.id());
    QVERIFY(read);
    QCOMPARE(m_store->record(pack.id())->state, PackState::HandedOn);
}

void tst_PaysController::handsOnNothingUnknownOrPosted()
{
    QVariantMap message{{QStringLiteral("untouched"), 1}};
    QString error;
    QVERIFY(!m_controller->handOn(5, message, error));
    QVERIFY(!error.isEmpty());
    const PayPack pack = packFor(SampleNumber::ORDINARY, 100, 0);
    QVERIFY(m_controller->savePack(pack, true));
    QVERIFY(m_controller->markPosted(pack.id()));
    QVERIFY(!m_controller->handOn(pack.id(), message, error));
    QVERIFY(error.contains(QString::number(pack.id())));
    QCOMPARE(message.size(), 1);
}

void tst_PaysController::followsAPackToBilling()
{
    const PayPack pack = packFor(SampleNumber::ORDINARY, 100, 0);
    QVERIFY(m_controller->savePack(pack, true));
    QVariantMap message;
    QString error;
    QVERIFY(m_controller->handOn(pack.id(), message, error));
    m_bus->sendMessage(QStringLiteral("/app/add_pay_pack"), message);
    QCOMPARE(m_store->record(pack.id())->state, PackState::HandedOn);
    QTRY_COMPARE(m_store->record(pack.id())->state, PackState::Acknowledged);
    QVERIFY(m_store->record(pack.id())->posted.isValid());
    QVERIFY(m_billing->hasPack(QString::number(pack.id())));
    QCOMPARE(m_billing->takenPayments(QString::number(pack.id())).first().sum, Q_INT64_C(100));
}

void tst_PaysController::keepsARefusedPack()
{
    const PayPack pack = packFor(SampleNumber::ORDINARY, 100, 0);
    QVERIFY(m_controller->savePack(pack, true));
    m_bus->setConnected(false);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("refused")));
    QCOMPARE(m_controller->drain(*m_bus), 1);
    QTRY_VERIFY(!m_store->record(pack.id())->lastError.isEmpty());
    QCOMPARE(m_controller->unposted(), QVector<qint64>{pack.id()});
    m_bus->setConnected(true);
    QCOMPARE(m_controller->drain(*m_bus), 1);
    QTRY_COMPARE(m_store->record(pack.id())->state, PackState::Acknowledged);
    QCOMPARE(m_billing->packCount(), 1);
}

void tst_PaysController::drainsInOrderAndOnce()
{
    m_controller->setHandOnAtOnce(false);
    QVERIFY(!m_controller->handOnAtOnce());
    QVector<qint64> ids;
    for (int i = 0; i < 5; ++i) {
        const PayPack pack = packFor(SampleNumber::ORDINARY, 100 + i, 0);
        QVERIFY(m_controller->savePack(pack, true));
        ids.append(pack.id());
    }
    QSignalSpy accepted(m_bus.get(), &MessageBus::accepted);
    QCOMPARE(m_controller->drain(*m_bus), 5);
    QCOMPARE(m_controller->drain(*m_bus), 0);
    QTRY_COMPARE(accepted.size(), 5);
    QVector<qint64> sent;
    for (const QList<QVariant> &call : qAsConst(accepted))
        sent.append(call.at(1).toMap().value(QStringLiteral("id")).toString().toLongLong());
    QCOMPARE(sent, ids);
    QCOMPARE(m_controller->drain(*m_bus), 0);
}

void tst_PaysController::drainsAfterARestart()
{
    const PayPack pack = packFor(SampleNumber::ORDINARY, 100, 0);
    QVERIFY(m_controller->savePack(pack, true));
    QVariantMap message;
    QString error;
    QVERIFY(m_controller->handOn(pack.id(), message, error));
    m_controller.reset();
    m_store = std::make_unique<PaymentsStore>();
    QVERIFY(m_store->open(m_file));
    m_controller = std::make_unique<PaysController>(*m_store, 4107);
    m_controller->follow(*m_bus);
    QCOMPARE(m_controller->drain(*m_bus), 1);
    QTRY_COMPARE(m_store->record(pack.id())->state, PackState::Acknowledged);
}

void tst_PaysController::repeatedPostingPaysOnce()
{
    const PayPack pack = packFor(SampleNumber::ORDINARY, 100, 0);
    QVERIFY(m_controller->savePack(pack, true));
    QVariantMap message;
    QString error;
    QVERIFY(m_controller->handOn(pack.id(), message, error));
    QSignalSpy accepted(m_bus.get(), &MessageBus::accepted);
    m_bus->sendMessage(QStringLiteral("/app/add_pay_pack"), message);
    m_bus->sendMessage(QStringLiteral("/app/add_pay_pack"), message);
    QTRY_COMPARE(accepted.size(), 2);
    QCOMPARE(m_billing->packCount(), 1);
    QCOMPARE(m_billing->account(SampleAccount::Payer::Individual, SampleNumber::ORDINARY)->debt,
             Q_INT64_C(150050 - 100));
}

void tst_PaysController::wrapperOutlivesTheController()
{
    const std::unique_ptr<IPaysControllerWrapper> wrapper =
        std::make_unique<PaysControllerWrapper>(m_controller.get());
    const PayPack pack = packFor(SampleNumber::ORDINARY, 100, 0);
    QVERIFY(wrapper->savePack(pack, true));
    QVERIFY(wrapper->handOnAtOnce());
    QVariantMap message;
    QString error;
    QVERIFY(wrapper->handOn(pack.id(), message, error));
    m_controller.reset();
    QVERIFY(!wrapper->savePack(pack, true));
    QVERIFY(!wrapper->handOnAtOnce());
    QVERIFY(!wrapper->handOn(pack.id(), message, error));
    QVERIFY(!error.isEmpty());
}

void tst_PaysController::survivesBeingKilled()
{
    const QString file = m_folder->filePath(QStringLiteral("killed.sqlite"));
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--save-until-killed"), file});
    QVERIFY(child.waitForStarted());
    QByteArray output;
    while (output.count('\n') < 5) {
        QVERIFY2(child.waitForReadyRead(20000), child.readAllStandardError().constData());
        output += child.readAllStandardOutput();
    }
    QCOMPARE(::kill(pid_t(child.processId()), SIGKILL), 0);
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    output += child.readAllStandardOutput();
    QList<QByteArray> promised = output.split('\n');
    promised.removeLast(); // nothing, or a line cut by the kill
    QVERIFY(promised.size() >= 5);
    PaymentsStore store;
    QVERIFY2(store.open(file), qPrintable(store.lastError()));
    for (const QByteArray &id : qAsConst(promised)) {
        QVERIFY2(store.record(id.toLongLong()), id.constData());
        QVERIFY(store.pack(id.toLongLong()));
    }
    const int stored = store.count({});
    QVERIFY(stored == promised.size() || stored == promised.size() + 1);
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() == 3 && arguments.at(1) == QLatin1String("--save-until-killed"))
        return saveUntilKilled(arguments.at(2));
    tst_PaysController test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_payscontroller.moc"
