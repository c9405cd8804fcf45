#include "guitestguard.h"
#include "individualstartform.h"
#include "startpagefields.h"

#include <QJsonDocument>
#include <QTest>

#include <memory>

using Form = IndividualStartForm;

/// What the individual's start page asks of billing.
class TestSrIStartPageRequest : public QObject
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

    void requestBody();
    void requestSaysTheSameTwice();
    void requestParameters_data();
    void requestParameters();
    void requestAmount_data();
    void requestAmount();
    void requestNamesTheWorkingProvider();
    void identicalRequestsHaveDifferentUids();
    void pressingTheButtonByKeys_data();
    void pressingTheButtonByKeys();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestSrIStartPageRequest::requestBody()
{
    Form form;
    form.cbPeriod->setChecked(true);
    form.sbYear->setValue(2024);
    form.cbMonth->setCurrentIndex(2);
    form.cbAmount->setChecked(true);
    form.dsbAmount->setValue(1500.50);
    form.lePhone->setText(QStringLiteral("+7 (912) 345-67-89"));
    form.askFor(QStringLiteral(" 00123 "));

    QCOMPARE(form.host.sent().size(), 1);
    QCOMPARE(form.host.sent().first().destination, QStringLiteral("/app/box_plugin_check_pay"));
    const QVariantMap body = form.host.lastBody();
    QCOMPARE(StartPageFields::types(body).join(QStringLiteral(", ")),
             QStringLiteral(
                 "checkdata: QByteArray, code: QString, currencyId: int, params: QVariantMap, "
                 "providerId: qlonglong, summ: double, uid: QString"));
    QCOMPARE(body.value(QStringLiteral("code")).toString(), QStringLiteral("check"));
    QCOMPARE(body.value(QStringLiteral("currencyId")).toInt(), 643);
    QCOMPARE(body.value(QStringLiteral("providerId")).toLongLong(), qint64(18722));
    QCOMPARE(body.value(QStringLiteral("summ")).toDouble(), 1500.50);
    bool number = false;
    const qint64 uid = body.value(QStringLiteral("uid")).toString().toLongLong(&number);
    QVERIFY2(number && QString::number(uid) == form.host.lastUid(),
             "the uid is the text of a signed 64-bit number");

    const QVariantMap account{{QStringLiteral("name"), QStringLiteral("account")},
                              {QStringLiteral("value"), QStringLiteral("00123")}};
    const QVariantMap period{{QStringLiteral("name"), QStringLiteral("period")},
                             {QStringLiteral("value"), QStringLiteral("03-2024")}};
    const QVariantMap params{{QStringLiteral("payParamList"), QVariantList{account, period}}};
    QCOMPARE(body.value(QStringLiteral("params")).toMap(), params);
    QCOMPARE(body.value(QStringLiteral("checkdata")).toByteArray(),
             QByteArray("{\"payParamList\":[{\"name\":\"account\",\"value\":\"00123\"},"
                        "{\"name\":\"period\",\"value\":\"03-2024\"}]}"));
}

void TestSrIStartPageRequest::requestSaysTheSameTwice()
{
    Form form;
    form.askFor(QStringLiteral("Счёт \"7\" <&> %1 \\ \u2028"));
    const QVariantMap body = form.host.lastBody();
    QCOMPARE(body.value(QStringLiteral("checkdata")).toByteArray(),
             QJsonDocument::fromVariant(body.value(QStringLiteral("params")))
                 .toJson(QJsonDocument::Compact));
    QCOMPARE(
        QJsonDocument::fromJson(body.value(QStringLiteral("checkdata")).toByteArray()).toVariant(),
        body.value(QStringLiteral("params")));
}

void TestSrIStartPageRequest::requestParameters_data()
{
    QTest::addColumn<QString>("account");
    QTest::addColumn<bool>("period");
    QTest::addColumn<QString>("expected");
    QTest::newRow("account only") << "123" << false << "account=123";
    QTest::newRow("empty account, no period") << "" << false << "";
    QTest::newRow("empty account with period") << "" << true << "period=05-2023";
    QTest::newRow("account and period") << "123" << true << "account=123 period=05-2023";
    QTest::newRow("blanks around") << "  123\t" << false << "account=123";
    QTest::newRow("blanks only") << "   " << false << "account=";
    QTest::newRow("leading zeros") << "000123" << false << "account=000123";
}

void TestSrIStartPageRequest::requestParameters()
{
    QFETCH(const QString, account);
    QFETCH(const bool, period);
    QFETCH(const QString, expected);

    Form form;
    form.cbPeriod->setChecked(period);
    form.sbYear->setValue(2023);
    form.cbMonth->setCurrentIndex(4);
    form.lePhone->setText(QStringLiteral("not sent"));
    form.askFor(account);
    QStringList found;
    const QMap<QString, QString> parameters = form.lastParameters();
    for (auto parameter = parameters.cbegin(); parameter != parameters.cend(); ++parameter)
        found.append(parameter.key() + QLatin1Char('=') + parameter.value());
    QCOMPARE(found.join(QLatin1Char(' ')), expected);
}

void TestSrIStartPageRequest::requestAmount_data()
{
    QTest::addColumn<bool>("ticked");
    QTest::addColumn<double>("amount");
    QTest::addColumn<QVariant>("summ");
    QTest::newRow("zero") << true << 0.0 << QVariant();
    QTest::newRow("one kopeck") << true << 0.01 << QVariant(0.01);
    QTest::newRow("ordinary") << true << 1500.5 << QVariant(1500.5);
    QTest::newRow("not exact in binary") << true << 1.15 << QVariant(1.15);
    QTest::newRow("maximum") << true << 99999999.99 << QVariant(99999999.99);
    QTest::newRow("switched off") << false << 1500.5 << QVariant();
}

void TestSrIStartPageRequest::requestAmount()
{
    QFETCH(const bool, ticked);
    QFETCH(const double, amount);
    QFETCH(const QVariant, summ);
    Form form;
    form.cbAmount->setChecked(ticked);
    form.dsbAmount->setValue(amount);
    form.askFor(QStringLiteral("1"));
    QCOMPARE(form.host.lastBody().contains(QStringLiteral("summ")), summ.isValid());
    QCOMPARE(form.host.lastBody().value(QStringLiteral("summ")), summ);
}

void TestSrIStartPageRequest::requestNamesTheWorkingProvider()
{
    Provider provider = SampleProviders::individuals();
    provider.setId(900);
    StartPageForm<SelmarIndividualWizard> form(provider);
    form.open();
    form.ask();
    QCOMPARE(form.host.lastBody().value(QStringLiteral("providerId")), QVariant(qint64(18722)));
}

void TestSrIStartPageRequest::identicalRequestsHaveDifferentUids()
{
    Form form;
    QSet<QString> uids;
    for (int count = 0; count < 50; ++count) {
        form.start->getClientData();
        uids.insert(form.host.lastUid());
    }
    QCOMPARE(uids.size(), 50);
}

void TestSrIStartPageRequest::pressingTheButtonByKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Space") << int(Qt::Key_Space);
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Enter of the number block") << int(Qt::Key_Enter);
}

void TestSrIStartPageRequest::pressingTheButtonByKeys()
{
    QFETCH(const int, key);
    Form form;
    form.pbGetData->setFocus();
    QTest::keyClick(form.pbGetData, static_cast<Qt::Key>(key));
    QCOMPARE(form.host.sent().size(), 1);
}

QTEST_MAIN(TestSrIStartPageRequest)
#include "tst_sristartpagerequest.moc"
