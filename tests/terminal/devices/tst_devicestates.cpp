#include <devices/devicestates.h>

#include <fiscal/emulatedregister.h>

#include <molvacore/postestoutcome.h>

#include <QRegularExpression>
#include <QtTest>

class tst_DeviceStates : public QObject
{
    Q_OBJECT

private slots:
    void namesAreUniqueAndComplete_data();
    void namesAreUniqueAndComplete();
    void registerHasEveryCondition();
    void cardHasEveryOutcome();
    void declinesSayTheirText();
    void firstStateIsSound();
    void unknownKeyIsNotFound();
    void documentNamesEveryState();
};

void tst_DeviceStates::namesAreUniqueAndComplete_data()
{
    QTest::addColumn<int>("device");
    for (const Device device : DeviceStates::devices())
        QTest::newRow(qPrintable(DeviceStates::option(device))) << int(device);
}

void tst_DeviceStates::namesAreUniqueAndComplete()
{
    QFETCH(int, device);
    const QRegularExpression key(QStringLiteral("\\A[a-z][a-z0-9-]*\\z"));
    QSet<QString> keys;
    QSet<QString> phrases;
    QSet<QString> titles;
    const QVector<DeviceState> states = DeviceStates::of(Device(device));
    for (const DeviceState &state : states) {
        QVERIFY2(key.match(state.key).hasMatch(), qPrintable(state.key));
        QCOMPARE(state.phrase, state.phrase.simplified().toLower());
        QVERIFY2(!state.phrase.isEmpty() && !state.title.isEmpty() && !state.effect.isEmpty(),
                 qPrintable(state.key));
        QVERIFY2(state.effect.endsWith(QLatin1Char('.')), qPrintable(state.effect));
        keys.insert(state.key);
        phrases.insert(state.phrase);
        titles.insert(state.title);
        QCOMPARE(DeviceStates::find(Device(device), state.key),
                 &DeviceStates::of(Device(device)).at(keys.size() - 1));
    }
    QCOMPARE(keys.size(), states.size());
    QCOMPARE(phrases.size(), states.size());
    QCOMPARE(titles.size(), states.size());
    QCOMPARE(DeviceStates::keys(Device(device)).size(), states.size());
    QVERIFY(!DeviceStates::title(Device(device)).isEmpty());
    QVERIFY(!DeviceStates::word(Device(device)).isEmpty());
}

void tst_DeviceStates::registerHasEveryCondition()
{
    QVector<int> values;
    for (const DeviceState &state : DeviceStates::of(Device::Register))
        values.append(state.value);
    QVector<int> conditions;
    for (const EmulatedRegister::Condition condition : EmulatedRegister::conditions())
        conditions.append(int(condition));
    QCOMPARE(values, conditions);
}

void tst_DeviceStates::cardHasEveryOutcome()
{
    QStringList names;
    for (const PosTestOutcome &outcome : PosTestOutcome::table())
        names.append(outcome.name);
    QCOMPARE(DeviceStates::keys(Device::Card).mid(1), names);
}

void tst_DeviceStates::declinesSayTheirText()
{
    for (const PosTestAmount &row : PosTestAmount::table()) {
        if (row.outcome != PosTestAmount::Outcome::Decline)
            continue;
        bool found = false;
        for (const DeviceState &state : DeviceStates::of(Device::Card))
            found = found || state.title == row.text;
        QVERIFY2(found, qPrintable(row.text));
    }
}

void tst_DeviceStates::firstStateIsSound()
{
    QCOMPARE(DeviceStates::of(Device::Register).constFirst().key, QStringLiteral("ready"));
    QCOMPARE(DeviceStates::of(Device::Card).constFirst().key, QStringLiteral("by-amount"));
    QCOMPARE(DeviceStates::of(Device::Billing).constFirst().key, QStringLiteral("normal"));
}

void tst_DeviceStates::unknownKeyIsNotFound()
{
    QVERIFY(!DeviceStates::find(Device::Register, QStringLiteral("decline")));
    QVERIFY(!DeviceStates::find(Device::Card, QString()));
}

void tst_DeviceStates::documentNamesEveryState()
{
    QFile file(QStringLiteral(SELMAR_DOCS "/scenarios.md"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    for (const Device device : DeviceStates::devices()) {
        for (const DeviceState &state : DeviceStates::of(device)) {
            const QString row = QStringLiteral("| `%1 %2` | `--%3 %4` |")
                                    .arg(DeviceStates::word(device), state.phrase,
                                         DeviceStates::option(device), state.key);
            QVERIFY2(text.contains(row), qPrintable(row));
        }
    }
}

QTEST_GUILESS_MAIN(tst_DeviceStates)
#include "tst_devicestates.moc"
