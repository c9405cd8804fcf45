#include "hosttest.h"

#include <molvacore/cardchargelog.h>
#include <molvacore/cardreadersettings.h>
#include <molvacore/ingericolibhandler.h>
#include <molvacore/posactivity.h>
#include <molvacore/postestamount.h>
#include <molvacore/postestoutcome.h>
#include <molvacore/qeftposhandler.h>
#include <molvacore/sberposlibhandler.h>

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using basix::FixNumber;

namespace {

void force(const QString &outcome)
{
    CardReaderSettings settings;
    settings.setType(CardReaderSettings::SberPosLib);
    settings.setOutcome(outcome);
    QVERIFY(settings.save());
}

std::unique_ptr<PosHandler> handler(int type)
{
    switch (static_cast<CardReaderSettings::Type>(type)) {
    case CardReaderSettings::IngericoLib:
        return std::make_unique<IngericoLibHandler>();
    case CardReaderSettings::SberPosLib:
        return std::make_unique<SberPosLibHandler>();
    case CardReaderSettings::QEftPos:
        return std::make_unique<QEftPosHandler>();
    case CardReaderSettings::None:
        break;
    }
    return nullptr;
}

} // namespace

class tst_PosHandlers : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void approval_data();
    void approval();
    void headingsDiffer();
    void parentOwnsTheHandler();
    void tableRows_data();
    void tableRows();
    void tableIsInOrder();
    void everyOtherPairOfDigitsIsApproved();
    void payWithoutInit();
    void payAfterAFailedInit();
    void lostLinkNeedsInitAgain();
    void declineLeavesTheTerminalReady();
    void amountMustBeAboveZero_data();
    void amountMustBeAboveZero();
    void otherMultiplier();
    void forcedOutcome_data();
    void forcedOutcome();
    void everyForcedOutcomeHasItsRow();
    void slowTerminalIsBusyMeanwhile();
    void forcedOutcomeIsReadOnInit();
    void unknownForcedOutcome();

private:
    std::unique_ptr<HostTest> m_host;
    QString m_error;
    QStringList m_slip;
};

void tst_PosHandlers::init()
{
    m_host = std::make_unique<HostTest>();
    CardChargeLog::clear();
    m_error.clear();
    m_slip.clear();
}

void tst_PosHandlers::cleanup()
{
    QCOMPARE(m_host->unexpectedWarnings(), QStringList());
    m_host.reset();
}

void tst_PosHandlers::approval_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("type 1") << 1;
    QTest::newRow("type 2") << 2;
    QTest::newRow("type 3") << 3;
}

void tst_PosHandlers::approval()
{
    QFETCH(int, type);
    const std::unique_ptr<PosHandler> terminal = handler(type);
    QVERIFY(terminal->init(m_error));
    m_slip.append(QStringLiteral("прежняя строка"));
    QVERIFY(terminal->pay(FixNumber(100, 123400), m_error, m_slip));
    QVERIFY(m_error.isEmpty());
    const QVector<CardCharge> charges = CardChargeLog::charges();
    QCOMPARE(charges.size(), 1);
    QCOMPARE(charges.first().amount.toString(), QStringLiteral("1234.00"));
    QVERIFY(charges.first().answered);
    QCOMPARE(charges.first().rrn.size(), 12);
    QCOMPARE(charges.first().authCode.size(), 6);
    const QString slip = m_slip.join(QLatin1Char('\n'));
    for (const QString &part :
         {QStringLiteral("1234.00"), charges.first().rrn, charges.first().authCode,
          charges.first().terminal, QStringLiteral("**** 0018"), QStringLiteral("ИМИТАЦИЯ"),
          charges.first().time.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"))})
        QVERIFY2(slip.contains(part), qPrintable(part));
    QVERIFY(!slip.contains(QStringLiteral("прежняя строка")));
}

void tst_PosHandlers::headingsDiffer()
{
    QSet<QString> headings;
    QSet<QString> terminals;
    for (int type = 1; type <= 3; ++type) {
        const std::unique_ptr<PosHandler> terminal = handler(type);
        QVERIFY(terminal->init(m_error));
        QVERIFY(terminal->pay(FixNumber(100, 100), m_error, m_slip));
        headings.insert(m_slip.first());
        terminals.insert(CardChargeLog::charges().last().terminal);
    }
    QCOMPARE(headings.size(), 3);
    QCOMPARE(terminals.size(), 3);
}

void tst_PosHandlers::parentOwnsTheHandler()
{
    QObject parent;
    QCOMPARE((new IngericoLibHandler(&parent))->parent(), &parent);
    QCOMPARE((new SberPosLibHandler(&parent))->parent(), &parent);
    QCOMPARE((new QEftPosHandler(&parent))->parent(), &parent);
}

void tst_PosHandlers::tableRows_data()
{
    QTest::addColumn<int>("digits");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("charged");
    QTest::addColumn<bool>("readyAfter");
    const auto row = [](int digits, const QString &text, bool charged, bool readyAfter) {
        QTest::newRow(qPrintable(QString::number(digits)))
            << digits << text << charged << readyAfter;
    };
    row(5, QStringLiteral("Отказ банка-эмитента"), false, true);
    row(20, QStringLiteral("Потеряна связь с терминалом, карта не списана"), false, false);
    row(21, QStringLiteral("неизвестно, списаны ли деньги"), true, false);
    row(22, QStringLiteral("Карта не поднесена"), false, true);
    row(23, QStringLiteral("отменена покупателем"), false, true);
    row(51, QStringLiteral("Недостаточно средств"), false, true);
    row(54, QStringLiteral("Срок действия карты истёк"), false, true);
    row(55, QStringLiteral("Неверный ПИН-код"), false, true);
    row(65, QStringLiteral("Превышен лимит"), false, true);
    row(75, QStringLiteral("число попыток ввода ПИН-кода"), false, true);
    row(91, QStringLiteral("Банк-эмитент недоступен"), false, true);
}

void tst_PosHandlers::tableRows()
{
    QFETCH(int, digits);
    QFETCH(QString, text);
    QFETCH(bool, charged);
    QFETCH(bool, readyAfter);
    for (int type = 1; type <= 3; ++type) {
        CardChargeLog::clear();
        const std::unique_ptr<PosHandler> terminal = handler(type);
        QVERIFY(terminal->init(m_error));
        QVERIFY(!terminal->pay(FixNumber(100, 4200 + digits), m_error, m_slip));
        QVERIFY2(m_error.contains(text), qPrintable(m_error));
        QVERIFY2(m_error.endsWith(
                     QStringLiteral(
                         "(Имитация: так терминал отвечает на сумму, у которой в копейках %1.)")
                         .arg(digits, 2, 10, QLatin1Char('0'))),
                 qPrintable(m_error));
        QVERIFY(m_slip.isEmpty());
        QCOMPARE(CardChargeLog::charges().size(), charged ? 1 : 0);
        if (charged)
            QVERIFY(!CardChargeLog::charges().first().answered);
        QCOMPARE(terminal->pay(FixNumber(100, 4200), m_error, m_slip), readyAfter);
    }
}

void tst_PosHandlers::tableIsInOrder()
{
    int previous = 0;
    const QVector<PosTestAmount> table = PosTestAmount::table();
    QCOMPARE(table.size(), 12);
    for (const PosTestAmount &row : table) {
        QVERIFY(row.digits > previous && row.digits < 100);
        QVERIFY(row.outcome != PosTestAmount::Outcome::Approve);
        QCOMPARE(row.text.isEmpty(), row.outcome == PosTestAmount::Outcome::ApproveSlowly);
        previous = row.digits;
    }
}

void tst_PosHandlers::everyOtherPairOfDigitsIsApproved()
{
    SberPosLibHandler terminal;
    QSet<int> listed;
    for (const PosTestAmount &row : PosTestAmount::table())
        listed.insert(row.digits);
    QVERIFY(terminal.init(m_error));
    for (int digits = 0; digits < 100; ++digits) {
        if (!listed.contains(digits))
            QVERIFY2(terminal.pay(FixNumber(100, 100 + digits), m_error, m_slip),
                     qPrintable(m_error));
    }
    QCOMPARE(CardChargeLog::charges().size(), 100 - listed.size());
}

void tst_PosHandlers::payWithoutInit()
{
    SberPosLibHandler terminal;
    QVERIFY(!terminal.pay(FixNumber(100, 100), m_error, m_slip));
    QVERIFY(!m_error.isEmpty());
    QVERIFY(CardChargeLog::charges().isEmpty());
}

void tst_PosHandlers::payAfterAFailedInit()
{
    SberPosLibHandler terminal;
    QVERIFY(terminal.init(m_error));
    force(QStringLiteral("init-failed"));
    QVERIFY(!terminal.init(m_error));
    QVERIFY(!terminal.pay(FixNumber(100, 100), m_error, m_slip));
    QVERIFY(CardChargeLog::charges().isEmpty());
}

void tst_PosHandlers::lostLinkNeedsInitAgain()
{
    SberPosLibHandler terminal;
    QVERIFY(terminal.init(m_error));
    QVERIFY(!terminal.pay(FixNumber(100, 120), m_error, m_slip));
    QVERIFY(!terminal.pay(FixNumber(100, 100), m_error, m_slip));
    QVERIFY(terminal.init(m_error));
    QVERIFY(terminal.pay(FixNumber(100, 100), m_error, m_slip));
}

void tst_PosHandlers::declineLeavesTheTerminalReady()
{
    QEftPosHandler terminal;
    QVERIFY(terminal.init(m_error));
    QVERIFY(!terminal.pay(FixNumber(100, 151), m_error, m_slip));
    QVERIFY(terminal.pay(FixNumber(100, 150), m_error, m_slip));
    QVERIFY(m_error.isEmpty());
    QCOMPARE(CardChargeLog::total().toString(), QStringLiteral("1.50"));
}

void tst_PosHandlers::amountMustBeAboveZero_data()
{
    QTest::addColumn<FixNumber>("amount");
    QTest::newRow("zero") << FixNumber(100, 0);
    QTest::newRow("negative") << FixNumber(100, -100);
    QTest::newRow("less than half a kopeck") << FixNumber(1000, 4);
    QTest::newRow("lowest") << FixNumber(100, std::numeric_limits<qint64>::min());
}

void tst_PosHandlers::amountMustBeAboveZero()
{
    QFETCH(FixNumber, amount);
    force(QStringLiteral("approve"));
    IngericoLibHandler terminal;
    QVERIFY(terminal.init(m_error));
    QVERIFY(!terminal.pay(amount, m_error, m_slip));
    QVERIFY(m_error.contains(QStringLiteral("больше нуля")));
    QVERIFY(CardChargeLog::charges().isEmpty());
}

void tst_PosHandlers::otherMultiplier()
{
    IngericoLibHandler terminal;
    QVERIFY(terminal.init(m_error));
    QVERIFY(!terminal.pay(FixNumber(1000, 10510), m_error, m_slip));
    QVERIFY(m_error.contains(QStringLiteral("Недостаточно средств")));
    QVERIFY(terminal.pay(FixNumber(1, 7), m_error, m_slip));
    QCOMPARE(CardChargeLog::total().toString(), QStringLiteral("7.00"));
}

void tst_PosHandlers::forcedOutcome_data()
{
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<qint64>("kopecks");
    QTest::addColumn<bool>("initialised");
    QTest::addColumn<bool>("paid");
    QTest::addColumn<bool>("charged");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *outcome, bool initialised, bool paid, bool charged,
                        const QString &text) {
        // An amount that the table would answer otherwise: the forced outcome goes before it.
        const qint64 kopecks = paid ? 151 : 100;
        QTest::newRow(outcome) << QString::fromLatin1(outcome) << kopecks << initialised << paid
                               << charged << text;
    };
    row("approve", true, true, true, QString());
    row("slow", true, true, true, QString());
    row("decline", true, false, false, QStringLiteral("Отказ банка"));
    for (const PosTestAmount &decline : PosTestAmount::table()) {
        if (decline.outcome == PosTestAmount::Outcome::Decline && decline.digits != 5)
            row(qPrintable(QStringLiteral("decline-%1").arg(decline.digits)), true, false, false,
                decline.text);
    }
    row("timeout", true, false, false, QStringLiteral("Карта не поднесена"));
    row("connection-lost", true, false, false,
        QStringLiteral("Потеряна связь с терминалом, карта не списана"));
    row("connection-lost-after", true, false, true,
        QStringLiteral("неизвестно, списаны ли деньги"));
    row("init-failed", false, false, false, QStringLiteral("не отвечает"));
}

void tst_PosHandlers::forcedOutcome()
{
    QFETCH(QString, outcome);
    QFETCH(qint64, kopecks);
    QFETCH(bool, initialised);
    QFETCH(bool, paid);
    QFETCH(bool, charged);
    QFETCH(QString, text);
    PosActivity::setSlowTime(1);
    force(outcome);
    SberPosLibHandler terminal;
    QCOMPARE(terminal.init(m_error), initialised);
    if (initialised)
        QCOMPARE(terminal.pay(FixNumber(100, kopecks), m_error, m_slip), paid);
    QCOMPARE(CardChargeLog::charges().size(), charged ? 1 : 0);
    if (!paid) {
        QVERIFY2(m_error.contains(text), qPrintable(m_error));
        QVERIFY2(
            m_error.endsWith(QStringLiteral("(Имитация: исход «%1» задан в настройках терминала.)")
                                 .arg(outcome)),
            qPrintable(m_error));
    }
}

void tst_PosHandlers::everyForcedOutcomeHasItsRow()
{
    QStringList names;
    for (const PosTestOutcome &outcome : PosTestOutcome::table()) {
        QVERIFY2(!names.contains(outcome.name), qPrintable(outcome.name));
        names.append(outcome.name);
        QVERIFY(PosTestOutcome::named(outcome.name));
    }
    // As many as forcedOutcome() tries.
    QCOMPARE(names.size(), 14);
    QVERIFY(!PosTestOutcome::named(QString()));
}

void tst_PosHandlers::slowTerminalIsBusyMeanwhile()
{
    PosActivity::setSlowTime(50);
    QSignalSpy busy(PosActivity::instance(), &PosActivity::busyChanged);
    int ticks = 0;
    bool busyThen = false;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        ++ticks;
        busyThen = PosActivity::busy() && CardChargeLog::charges().isEmpty();
    });
    timer.start(1);
    SberPosLibHandler terminal;
    QVERIFY(terminal.init(m_error));
    QVERIFY(terminal.pay(FixNumber(100, 130), m_error, m_slip));
    QVERIFY(ticks > 0);
    QVERIFY(busyThen);
    QVERIFY(!PosActivity::busy());
    QCOMPARE(busy.count(), 2);
    QCOMPARE(busy.at(0).at(0).toBool(), true);
    QCOMPARE(busy.at(1).at(0).toBool(), false);
    QCOMPARE(CardChargeLog::charges().size(), 1);
}

void tst_PosHandlers::forcedOutcomeIsReadOnInit()
{
    SberPosLibHandler terminal;
    QVERIFY(terminal.init(m_error));
    force(QStringLiteral("decline"));
    QVERIFY(terminal.pay(FixNumber(100, 100), m_error, m_slip));
    QVERIFY(terminal.init(m_error));
    QVERIFY(!terminal.pay(FixNumber(100, 100), m_error, m_slip));
}

void tst_PosHandlers::unknownForcedOutcome()
{
    force(QStringLiteral("aprove"));
    SberPosLibHandler terminal;
    QVERIFY(!terminal.init(m_error));
    QVERIFY2(m_error.contains(QStringLiteral("«aprove»")), qPrintable(m_error));
}

QTEST_GUILESS_MAIN(tst_PosHandlers)
#include "tst_poshandlers.moc"
