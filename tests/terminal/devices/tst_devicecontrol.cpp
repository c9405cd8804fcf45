#include <devices/devicecontrol.h>

#include <temporaryterminal.h>

#include <molvacore/cardreadersettings.h>

#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QtTest>

class tst_DeviceControl : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void everyStateCanBeSet_data();
    void everyStateCanBeSet();
    void registerPrintsOnceMore();
    void closedShiftIsNoticed();
    void stateReachesItsDevice();
    void unknownStateChangesNothing();
    void billingElsewhereIsNotControlled();
    void terminalTypeLeavesTheStateAlone();
    void resetMakesEverythingSound();
    void forgottenStatesDoNotSurviveARestart();
    void settingsThatCannotBeWrittenAreReported();

private:
    DeviceControl &control() { return m_context->devices(); }

    TemporaryTerminal m_context;
};

void tst_DeviceControl::init()
{
    QVERIFY2(m_context.open(), qPrintable(m_context.error()));
}

void tst_DeviceControl::cleanup()
{
    m_context.close();
}

void tst_DeviceControl::everyStateCanBeSet_data()
{
    QTest::addColumn<int>("device");
    for (const Device device : DeviceStates::devices())
        QTest::newRow(qPrintable(DeviceStates::option(device))) << int(device);
}

void tst_DeviceControl::everyStateCanBeSet()
{
    QFETCH(int, device);
    const Device wanted = Device(device);
    const QString sound = DeviceStates::keys(wanted).constFirst();
    for (const DeviceState &state : DeviceStates::of(wanted)) {
        QSignalSpy changed(&control(), &DeviceControl::changed);
        QVERIFY2(control().setState(wanted, state.key), qPrintable(control().error()));
        QVERIFY(changed.count() > 0);
        QCOMPARE(control().state(wanted), state.key);
        QCOMPARE(control().stateTitle(wanted), state.title);
        QCOMPARE(control().isFaulty(wanted), state.key != sound);
        for (const Device other : DeviceStates::devices())
            QVERIFY(other == wanted || !control().isFaulty(other));
    }
}

void tst_DeviceControl::registerPrintsOnceMore()
{
    QVERIFY(control().setState(Device::Register, QStringLiteral("paper-out"), true));
    QVariantMap result;
    QString error;
    QSignalSpy changed(&control(), &DeviceControl::changed);
    QVERIFY(!m_context->fiscalRegister().doReceipt({}, QString(), result, error));
    QCOMPARE(control().state(Device::Register), QStringLiteral("ready"));
    QCOMPARE(changed.count(), 1);
}

void tst_DeviceControl::closedShiftIsNoticed()
{
    QVERIFY(control().setState(Device::Register, QStringLiteral("shift-expired")));
    QSignalSpy changed(&control(), &DeviceControl::changed);
    m_context->fiscalRegister().setCondition(EmulatedRegister::Condition::Ready);
    QCOMPARE(changed.count(), 1);
    QVERIFY(!control().isFaulty(Device::Register));
}

void tst_DeviceControl::stateReachesItsDevice()
{
    QVERIFY(control().setState(Device::Register, QStringLiteral("storage-full")));
    QVERIFY(control().setState(Device::Card, QStringLiteral("decline-51")));
    QVERIFY(control().setState(Device::Billing, QStringLiteral("silence")));
    QCOMPARE(m_context->fiscalRegister().condition(), EmulatedRegister::Condition::StorageFull);
    QCOMPARE(CardReaderSettings().outcome(), QStringLiteral("decline-51"));
    QSignalSpy incoming(&m_context->bus(), &MessageBus::incomingMessage);
    QSignalSpy accepted(&m_context->bus(), &MessageBus::accepted);
    const QVariantMap request{{QStringLiteral("code"), QStringLiteral("check")},
                              {QStringLiteral("uid"), QStringLiteral("7")}};
    m_context->bus().sendMessage(BillingService::REQUEST_DESTINATION, request);
    QTRY_COMPARE(accepted.count(), 1);
    QVERIFY(control().setState(Device::Billing, QStringLiteral("normal")));
    m_context->bus().sendMessage(BillingService::REQUEST_DESTINATION, request);
    QTRY_COMPARE(incoming.count(), 1);
    QVERIFY(control().setState(Device::Card, QStringLiteral("by-amount")));
    QCOMPARE(CardReaderSettings().outcome(), QString());
}

void tst_DeviceControl::unknownStateChangesNothing()
{
    QVERIFY(control().setState(Device::Card, QStringLiteral("timeout")));
    QVERIFY(!control().setState(Device::Card, QStringLiteral("%1 paper-out")));
    QVERIFY2(control().error().contains(QStringLiteral("«%1 paper-out»")),
             qPrintable(control().error()));
    QVERIFY(control().error().contains(QStringLiteral("decline-51")));
    QCOMPARE(control().state(Device::Card), QStringLiteral("timeout"));
}

void tst_DeviceControl::billingElsewhereIsNotControlled()
{
    DeviceControl other(m_context->fiscalRegister(), nullptr, nullptr);
    QVERIFY(!other.controls(Device::Billing));
    QVERIFY(other.controls(Device::Register));
    QVERIFY(other.controls(Device::Card));
    QVERIFY(!other.isFaulty(Device::Billing));
    QVERIFY(!other.setState(Device::Billing, QStringLiteral("silence")));
    QVERIFY(other.error().contains(QStringLiteral("за сервером сообщений")));
    QVERIFY(other.billingLink());
    other.setBillingLink(false);
    QVERIFY(m_context->ownBus().connected());
    QVERIFY(other.reset());
}

void tst_DeviceControl::terminalTypeLeavesTheStateAlone()
{
    QVERIFY(control().setState(Device::Card, QStringLiteral("timeout")));
    QVERIFY(control().setCardTerminal(CardReaderSettings::QEftPos));
    QCOMPARE(control().cardTerminal(), int(CardReaderSettings::QEftPos));
    QCOMPARE(control().state(Device::Card), QStringLiteral("timeout"));
    QVERIFY(control().setState(Device::Card, QStringLiteral("approve")));
    QCOMPARE(control().cardTerminal(), int(CardReaderSettings::QEftPos));
}

void tst_DeviceControl::resetMakesEverythingSound()
{
    for (const Device device : DeviceStates::devices())
        QVERIFY(control().setState(device, DeviceStates::keys(device).constLast()));
    QSignalSpy changed(&control(), &DeviceControl::changed);
    control().setBillingLink(false);
    QVERIFY(!control().billingLink());
    QCOMPARE(changed.count(), 1);
    QVERIFY(control().reset());
    for (const Device device : DeviceStates::devices())
        QVERIFY(!control().isFaulty(device));
    QVERIFY(control().billingLink());
}

void tst_DeviceControl::forgottenStatesDoNotSurviveARestart()
{
    QVERIFY(control().setState(Device::Card, QStringLiteral("decline")));
    QVERIFY(control().setCardTerminal(CardReaderSettings::IngericoLib));
    QVERIFY2(m_context.reopen(), qPrintable(m_context.error()));
    QVERIFY(!control().isFaulty(Device::Card));
    QCOMPARE(control().cardTerminal(), int(CardReaderSettings::IngericoLib));
}

void tst_DeviceControl::settingsThatCannotBeWrittenAreReported()
{
    {
        QSqlDatabase other =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
        other.setDatabaseName(m_context.file(QStringLiteral("host.sqlite")));
        QVERIFY(other.open());
        QVERIFY(QSqlQuery(other).exec(
            QStringLiteral("CREATE TRIGGER full BEFORE UPDATE ON card_reader_settings BEGIN "
                           "SELECT RAISE(FAIL, 'full'); END")));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("other"));
    QVERIFY(!control().setState(Device::Card, QStringLiteral("decline")));
    QVERIFY(!control().error().isEmpty());
    QVERIFY(!control().isFaulty(Device::Card));
    QVERIFY(!control().setCardTerminal(CardReaderSettings::QEftPos));
}

QTEST_GUILESS_MAIN(tst_DeviceControl)
#include "tst_devicecontrol.moc"
