#include "guitestguard.h"
#include "individualstartform.h"

#include <QTest>

#include <memory>

using Form = IndividualStartForm;

/// What the text of a payment code does to the individual's start page.
class TestSrIStartPageCode : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_guard = std::make_unique<GuiTestGuard>(); }
    void cleanup()
    {
        const QStringList problems = m_guard->problems();
        m_guard.reset();
        QCOMPARE(problems, QStringList());
    }

    void code_data();
    void code();
    void codeLeavesTheFormAlone_data();
    void codeLeavesTheFormAlone();
    void codeForAFutureMonth();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestSrIStartPageCode::code_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("account");
    QTest::addColumn<QString>("period"); // empty: left alone
    QTest::addColumn<QString>("amount"); // empty: left alone

    const QString none;
    const auto row = [](const char *name, const QString &code, const QString &account,
                        const QString &period, const QString &amount) {
        QTest::newRow(name) << code << account << period << amount;
    };
    row("everything", QStringLiteral("ST00012|Name=X|PersAcc=123|PaymPeriod=03.2024|Sum=150050"),
        QStringLiteral("123"), QStringLiteral("03-2024"), QStringLiteral("1500.50"));
    row("other encoding digit", QStringLiteral("ST00011|PersAcc=123"), QStringLiteral("123"), none,
        none);
    row("only the header", QStringLiteral("ST00012|"), none, none, none);
    row("period with a slash", QStringLiteral("ST00012|PaymPeriod=03/2024"), none,
        QStringLiteral("03-2024"), none);
    row("one-digit month", QStringLiteral("ST00012|PaymPeriod=3.2024"), none,
        QStringLiteral("03-2024"), none);
    row("December of a past year", QStringLiteral("ST00012|PaymPeriod=12.2023"), none,
        QStringLiteral("12-2023"), none);
    row("period without a month", QStringLiteral("ST00012|PaymPeriod=2024"), none, none, none);
    row("period of three pieces", QStringLiteral("ST00012|PaymPeriod=01.03.2024"), none, none,
        none);
    row("month 13", QStringLiteral("ST00012|PaymPeriod=13.2024"), none, none, none);
    row("month 0", QStringLiteral("ST00012|PaymPeriod=00.2024"), none, none, none);
    row("negative month", QStringLiteral("ST00012|PaymPeriod=-3.2024"), none, none, none);
    row("month as a word", QStringLiteral("ST00012|PaymPeriod=март.2024"), none, none, none);
    row("year before 2000", QStringLiteral("ST00012|PaymPeriod=03.1999"), none, none, none);
    row("year in the future", QStringLiteral("ST00012|PaymPeriod=03.9999"), none, none, none);
    row("two-digit year", QStringLiteral("ST00012|PaymPeriod=03.24"), none, none, none);
    row("empty period", QStringLiteral("ST00012|PaymPeriod="), none, none, none);
    row("one kopeck", QStringLiteral("ST00012|Sum=1"), none, none, QStringLiteral("0.01"));
    row("largest sum", QStringLiteral("ST00012|Sum=9999999999"), none, none,
        QStringLiteral("99999999.99"));
    row("sum of zero", QStringLiteral("ST00012|Sum=0"), none, none, QStringLiteral("0.00"));
    row("sum as a word", QStringLiteral("ST00012|Sum=abc"), none, none, none);
    row("negative sum", QStringLiteral("ST00012|Sum=-5"), none, none, none);
    row("sum with a sign", QStringLiteral("ST00012|Sum=+5"), none, none, none);
    row("sum with a comma", QStringLiteral("ST00012|Sum=1,5"), none, none, none);
    row("sum with a point", QStringLiteral("ST00012|Sum=1500.50"), none, none, none);
    row("sum with an exponent", QStringLiteral("ST00012|Sum=1e3"), none, none, none);
    row("sum in other digits", QStringLiteral("ST00012|Sum=\u0661\u0662"), none, none, none);
    row("sum beyond the field", QStringLiteral("ST00012|Sum=10000000000"), none, none, none);
    row("sum of 19 digits", QStringLiteral("ST00012|Sum=9223372036854775807"), none, none, none);
    row("sum of 30 digits", QStringLiteral("ST00012|Sum=123456789012345678901234567890"), none,
        none, none);
    row("empty sum", QStringLiteral("ST00012|Sum="), none, none, none);
    row("account twice: the later", QStringLiteral("ST00012|PersAcc=1|PersAcc=2"),
        QStringLiteral("2"), none, none);
    row("sum twice: the later", QStringLiteral("ST00012|Sum=100|Sum=200"), none, none,
        QStringLiteral("2.00"));
    row("rubbish behind a sum", QStringLiteral("ST00012|Sum=100|Sum=abc"), none, none,
        QStringLiteral("1.00"));
    row("equals sign in a value", QStringLiteral("ST00012|PersAcc=1=2|Sum=100"), none, none,
        QStringLiteral("1.00"));
    row("block without equals sign", QStringLiteral("ST00012|PersAcc|Sum=100"), none, none,
        QStringLiteral("1.00"));
    row("names in another case", QStringLiteral("ST00012|persacc=1|SUM=100|paymperiod=03.2024"),
        none, none, none);
    row("names of other fields",
        QStringLiteral("ST00012|PersonalAcc=40702810|BarCode=7|Contract=8"), none, none, none);
    row("trailing bar", QStringLiteral("ST00012|PersAcc=9|"), QStringLiteral("9"), none, none);
    row("account with markup", QStringLiteral("ST00012|PersAcc=<b>1</b>"),
        QStringLiteral("<b>1</b>"), none, none);
}

void TestSrIStartPageCode::code()
{
    QFETCH(const QString, code);
    QFETCH(const QString, account);
    QFETCH(const QString, period);
    QFETCH(const QString, amount);

    Form form;
    form.leAccount->setText(QStringLiteral("old"));
    form.lePhone->setText(QStringLiteral("8912"));
    form.start->parseQr(code);

    QCOMPARE(form.leAccount->text(), account.isEmpty() ? QStringLiteral("old") : account);
    QCOMPARE(form.lePhone->text(), QStringLiteral("8912"));
    QCOMPARE(form.cbPeriod->isChecked(), !period.isEmpty());
    const QString shown =
        monthAndYear(QDate(form.sbYear->value(), form.cbMonth->currentIndex() + 1, 1));
    QCOMPARE(shown, period.isEmpty() ? monthAndYear(QDate::currentDate()) : period);
    QCOMPARE(form.cbAmount->isChecked(), !amount.isEmpty());
    QCOMPARE(QString::number(form.dsbAmount->value(), 'f', 2),
             amount.isEmpty() ? QStringLiteral("0.00") : amount);

    QCOMPARE(form.host.sent().size(), 1);
    QVERIFY(form.waits());
    QCOMPARE(form.lastParameters().value(QStringLiteral("account")), form.leAccount->text());
    QCOMPARE(form.lastParameters().value(QStringLiteral("period")), period);
    const bool positive = !amount.isEmpty() && amount != QLatin1String("0.00");
    QCOMPARE(form.host.lastBody().contains(QStringLiteral("summ")), positive);
    if (positive)
        QCOMPARE(form.host.lastBody().value(QStringLiteral("summ")).toDouble(), amount.toDouble());
}

void TestSrIStartPageCode::codeLeavesTheFormAlone_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("no bar") << QStringLiteral("ST00012PersAcc=1");
    QTest::newRow("another prefix") << QStringLiteral("ST0002|PersAcc=1");
    QTest::newRow("prefix in lower case") << QStringLiteral("st00012|PersAcc=1");
    QTest::newRow("prefix not at the start") << QStringLiteral(" ST00012|PersAcc=1");
    QTest::newRow("account number") << QStringLiteral("100200300");
    QTest::newRow("receipt") << QStringLiteral("t=20261121T1000&s=1.00&fn=1&i=2&fp=3&n=1");
}

void TestSrIStartPageCode::codeLeavesTheFormAlone()
{
    QFETCH(const QString, text);
    Form form;
    form.askFor(QStringLiteral("123"));
    form.answerData();
    form.start->parseQr(text);
    QCOMPARE(form.host.sent().size(), 1);
    QCOMPARE(form.leAccount->text(), QStringLiteral("123"));
    QVERIFY(form.showsAccount());
}

void TestSrIStartPageCode::codeForAFutureMonth()
{
    const QDate today = QDate::currentDate();
    if (today.month() == 12)
        QSKIP("no month of this year is in the future");
    Form form;
    form.start->parseQr(QStringLiteral("ST00012|PersAcc=1|PaymPeriod=12.%1").arg(today.year()));
    QVERIFY(form.cbPeriod->isChecked());
    QCOMPARE(form.lastParameters().value(QStringLiteral("period")), monthAndYear(today));
}

QTEST_MAIN(TestSrIStartPageCode)
#include "tst_sristartpagecode.moc"
