#include "hosttest.h"

#include <molvacore/providerscontroller.h>

#include <QTest>

#include <memory>

namespace {

Provider sample(qint64 id)
{
    Provider provider;
    provider.setId(id);
    provider.setWorkProviderId(id + 1);
    provider.setGroupId(5);
    provider.setCheckName(QStringLiteral("Водоканал"));
    provider.setName(QStringLiteral("Водоканал (ФЛ)"));
    provider.setLegalName(QStringLiteral("АО \"Водоканал\""));
    provider.setInn(QStringLiteral("0700000000"));
    provider.setPhones(QStringLiteral("84950000001"));
    for (const QString &name :
         {QStringLiteral("qrcode"), QStringLiteral("account"), QStringLiteral("account")})
        provider.addParameter(
            ProviderParameter(name, QStringLiteral("Параметр"), QStringLiteral("001")));
    return provider;
}

} // namespace

class tst_ProvidersController : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_host = std::make_unique<HostTest>(); }
    void cleanup() { m_host.reset(); }

    void roundTrip();
    void listedById();
    void savingAgainReplaces();
    void idBelowOneIsRefused();
    void unknownId();
    void closedDatabase();

private:
    std::unique_ptr<HostTest> m_host;
};

void tst_ProvidersController::roundTrip()
{
    {
        DbConnector db;
        QVERIFY(ProvidersController(db).saveProvider(sample(18722)));
    }
    DbConnector db;
    QCOMPARE(ProvidersController(db).provider(18722), sample(18722));
    QCOMPARE(m_host->unexpectedWarnings(), QStringList());
}

void tst_ProvidersController::listedById()
{
    DbConnector db;
    ProvidersController controller(db);
    QVERIFY(controller.providers().isEmpty());
    QVERIFY(controller.saveProvider(sample(18723)));
    QVERIFY(controller.saveProvider(sample(18722)));
    QCOMPARE(controller.providers(), (QList<Provider>{sample(18722), sample(18723)}));
}

void tst_ProvidersController::savingAgainReplaces()
{
    DbConnector db;
    ProvidersController controller(db);
    QVERIFY(controller.saveProvider(sample(18722)));
    Provider changed = sample(18722);
    changed.setName(QStringLiteral("Новое имя"));
    changed.setParameters(changed.parameters().mid(1, 1));
    QVERIFY(controller.saveProvider(changed));
    QCOMPARE(controller.providers(), QList<Provider>{changed});
}

void tst_ProvidersController::idBelowOneIsRefused()
{
    DbConnector db;
    QVERIFY(!ProvidersController(db).saveProvider(Provider()));
    QVERIFY(!ProvidersController(db).saveProvider(sample(-1)));
}

void tst_ProvidersController::unknownId()
{
    DbConnector db;
    QCOMPARE(ProvidersController(db).provider(1), Provider());
}

void tst_ProvidersController::closedDatabase()
{
    m_host->damage();
    DbConnector db;
    ProvidersController controller(db);
    QVERIFY(!controller.saveProvider(sample(18722)));
    QVERIFY(controller.providers().isEmpty());
    QCOMPARE(controller.provider(18722), Provider());
}

QTEST_GUILESS_MAIN(tst_ProvidersController)
#include "tst_providerscontroller.moc"
