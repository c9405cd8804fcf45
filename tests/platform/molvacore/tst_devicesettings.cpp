#include "hosttest.h"

#include <molvacore/cardreadersettings.h>
#include <molvacore/frsettings.h>

#include <QTest>

#include <memory>

class tst_DeviceSettings : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_host = std::make_unique<HostTest>(); }
    void cleanup() { m_host.reset(); }

    void freshDatabaseHasNone();
    void registerSettings();
    void cardReaderSettings();
    void anyTypeCountsAsConfigured();
    void earlierObjectsKeepWhatTheyRead();
    void closedDatabase();

private:
    std::unique_ptr<HostTest> m_host;
};

void tst_DeviceSettings::freshDatabaseHasNone()
{
    QVERIFY(FrSettings().cashboxInn().isEmpty());
    QVERIFY(FrSettings().cashboxRegNumber().isEmpty());
    QVERIFY(!CardReaderSettings().configured());
    QCOMPARE(CardReaderSettings().type(), 0);
    QCOMPARE(CardReaderSettings().outcome(), QString());
}

void tst_DeviceSettings::registerSettings()
{
    FrSettings settings;
    settings.setCashboxInn(QStringLiteral("0012345678"));
    settings.setCashboxRegNumber(QStringLiteral("0000000001012345"));
    QVERIFY(settings.save());
    QCOMPARE(FrSettings().cashboxInn(), QStringLiteral("0012345678"));
    QCOMPARE(FrSettings().cashboxRegNumber(), QStringLiteral("0000000001012345"));
    settings.setCashboxInn(QString());
    QVERIFY(settings.save());
    QCOMPARE(FrSettings(), settings);
    QCOMPARE(m_host->unexpectedWarnings(), QStringList());
}

void tst_DeviceSettings::cardReaderSettings()
{
    CardReaderSettings settings;
    settings.setType(CardReaderSettings::SberPosLib);
    settings.setOutcome(QStringLiteral("decline"));
    QVERIFY(settings.save());
    QVERIFY(CardReaderSettings().configured());
    QCOMPARE(CardReaderSettings().type(), 2);
    QCOMPARE(CardReaderSettings().outcome(), QStringLiteral("decline"));
    QCOMPARE(CardReaderSettings(), settings);
}

void tst_DeviceSettings::anyTypeCountsAsConfigured()
{
    CardReaderSettings settings;
    settings.setType(9);
    QVERIFY(settings.save());
    QVERIFY(CardReaderSettings().configured());
    settings.setType(CardReaderSettings::None);
    QVERIFY(settings.save());
    QVERIFY(!CardReaderSettings().configured());
}

void tst_DeviceSettings::earlierObjectsKeepWhatTheyRead()
{
    const CardReaderSettings before;
    CardReaderSettings settings;
    settings.setType(CardReaderSettings::QEftPos);
    QVERIFY(settings.save());
    QVERIFY(!before.configured());
    QVERIFY(before != CardReaderSettings());
}

void tst_DeviceSettings::closedDatabase()
{
    m_host->damage();
    FrSettings settings;
    QVERIFY(settings.cashboxInn().isEmpty());
    QVERIFY(!settings.save());
    CardReaderSettings reader;
    QVERIFY(!reader.configured());
    QVERIFY(!reader.save());
}

QTEST_GUILESS_MAIN(tst_DeviceSettings)
#include "tst_devicesettings.moc"
