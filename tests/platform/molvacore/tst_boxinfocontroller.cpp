#include "hosttest.h"

#include <molvacore/boxinfocontroller.h>

#include <QTest>

#include <memory>

namespace {

BoxInfo sample(qint64 id = 17)
{
    BoxInfo info;
    info.setBoxId(id);
    info.setName(QStringLiteral("Касса № 17"));
    info.setAddress(QStringLiteral("ул. Ленина, 1"));
    info.setCurrency(
        basix::Currency(643, QStringLiteral("RUB"), QStringLiteral("Российский рубль")));
    return info;
}

} // namespace

class tst_BoxInfoController : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_host = std::make_unique<HostTest>(); }
    void cleanup() { m_host.reset(); }

    void freshDatabaseHasNone();
    void roundTrip();
    void replacing();
    void cacheUntilReload();
    void defaultClears();
    void idBelowOneIsRefused();
    void closedDatabase();

private:
    std::unique_ptr<HostTest> m_host;
};

void tst_BoxInfoController::freshDatabaseHasNone()
{
    DbConnector db;
    BoxInfoController controller(db);
    QVERIFY(!controller.boxInfo(false).isValid());
    QVERIFY(!controller.boxInfo(true).isValid());
}

void tst_BoxInfoController::roundTrip()
{
    {
        DbConnector db;
        QVERIFY(BoxInfoController(db).setBoxInfo(sample()));
    }
    DbConnector db;
    QCOMPARE(BoxInfoController(db).boxInfo(false), sample());
    QCOMPARE(m_host->unexpectedWarnings(), QStringList());
}

void tst_BoxInfoController::replacing()
{
    DbConnector db;
    BoxInfoController controller(db);
    QVERIFY(controller.setBoxInfo(sample()));
    BoxInfo changed = sample();
    changed.setName(QStringLiteral("Касса «Новая» %1'; DROP TABLE boxes; --"));
    changed.setCurrency(basix::Currency(933, QStringLiteral("BYN"), QString()));
    QVERIFY(controller.setBoxInfo(changed));
    QCOMPARE(controller.boxInfo(true), changed);
    QVERIFY(controller.setBoxInfo(sample(18)));
    QCOMPARE(controller.boxInfo(true), sample(18));
}

void tst_BoxInfoController::cacheUntilReload()
{
    DbConnector db;
    BoxInfoController first(db);
    QVERIFY(first.setBoxInfo(sample()));
    QCOMPARE(first.boxInfo(false).boxId(), 17);
    QVERIFY(BoxInfoController(db).setBoxInfo(sample(18)));
    QCOMPARE(first.boxInfo(false).boxId(), 17);
    QCOMPARE(first.boxInfo(true).boxId(), 18);
}

void tst_BoxInfoController::defaultClears()
{
    DbConnector db;
    BoxInfoController controller(db);
    QVERIFY(controller.setBoxInfo(sample()));
    QVERIFY(controller.setBoxInfo(BoxInfo()));
    QVERIFY(!controller.boxInfo(false).isValid());
    QVERIFY(controller.setBoxInfo(sample()));
    QCOMPARE(controller.boxInfo(true), sample());
}

void tst_BoxInfoController::idBelowOneIsRefused()
{
    DbConnector db;
    BoxInfoController controller(db);
    QVERIFY(controller.setBoxInfo(sample()));
    QVERIFY(!controller.setBoxInfo(sample(0)));
    QVERIFY(!controller.setBoxInfo(sample(-1)));
    QCOMPARE(controller.boxInfo(true), sample());
}

void tst_BoxInfoController::closedDatabase()
{
    m_host->damage();
    DbConnector db;
    BoxInfoController controller(db);
    QVERIFY(!controller.setBoxInfo(sample()));
    QVERIFY(!controller.setBoxInfo(BoxInfo()));
    QVERIFY(!controller.boxInfo(true).isValid());
}

QTEST_GUILESS_MAIN(tst_BoxInfoController)
#include "tst_boxinfocontroller.moc"
