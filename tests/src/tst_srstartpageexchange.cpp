#include "srrequest.h"
#include "srstartpageexchange.h"

#include <QJsonDocument>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWizard>
#include <QWizardPage>

/// The exchange is the same for both wizards; what they do with an answer is tested with their
/// pages.
class TestSrStartPageExchange : public QObject
{
    Q_OBJECT

private slots:
    void onlyTheCurrentPageListens();
    void pageOutsideAWizardHearsNothing();
    void waitRunsOut();
};

namespace {

QString refusalOf(const QVariantMap &request)
{
    const QVariantMap answer{{QStringLiteral("uid"), request.value(QStringLiteral("uid"))},
                             {QStringLiteral("error"), true},
                             {QStringLiteral("description"), QStringLiteral("нет такого счёта")}};
    return QString::fromUtf8(QJsonDocument::fromVariant(answer).toJson());
}

const QVariantMap &headers()
{
    static const QVariantMap map{{QStringLiteral("msgType"), SRRequest::REPLY}};
    return map;
}

} // namespace

void TestSrStartPageExchange::onlyTheCurrentPageListens()
{
    QWizard wizard;
    auto *start = new QWizardPage;
    wizard.addPage(start);
    wizard.addPage(new QWizardPage);
    wizard.restart();
    QTimer timer;
    QProgressBar bar;
    SrStartPageExchange exchange(start, &timer, &bar);
    const QVariantMap request = exchange.begin({}, basix::FixNumber());
    QVERIFY(timer.isActive());

    wizard.next();
    QCOMPARE(wizard.currentId(), 1);
    QVERIFY(!exchange.receive(headers(), refusalOf(request)).matched);
    QVERIFY(timer.isActive());
    wizard.back();
    const SrAnswer answer = exchange.receive(headers(), refusalOf(request));
    QVERIFY(answer.matched);
    QCOMPARE(answer.failureText, QStringLiteral("нет такого счёта"));
    QVERIFY(!timer.isActive());
}

void TestSrStartPageExchange::pageOutsideAWizardHearsNothing()
{
    QWidget window;
    auto *page = new QWizardPage(&window);
    QTimer timer;
    QProgressBar bar;
    SrStartPageExchange exchange(page, &timer, &bar);
    const QVariantMap request = exchange.begin({}, basix::FixNumber());
    QVERIFY(!exchange.receive(headers(), refusalOf(request)).matched);
    QVERIFY(timer.isActive());
}

void TestSrStartPageExchange::waitRunsOut()
{
    QWizard wizard;
    auto *page = new QWizardPage;
    wizard.addPage(page);
    wizard.restart();
    QTimer timer;
    QProgressBar bar;
    SrStartPageExchange exchange(page, &timer, &bar);
    // A range that holds two steps of half a second.
    bar.setRange(0, 1000);
    const QVariantMap request = exchange.begin({}, basix::FixNumber());
    QVERIFY(!exchange.ranOut());
    QVERIFY(timer.isActive());
    QVERIFY(exchange.ranOut());
    QVERIFY(!timer.isActive());
    QVERIFY(bar.isHidden());
    // What comes too late belongs to nothing.
    QVERIFY(!exchange.receive(headers(), refusalOf(request)).matched);
}

QTEST_MAIN(TestSrStartPageExchange)
#include "tst_srstartpageexchange.moc"
