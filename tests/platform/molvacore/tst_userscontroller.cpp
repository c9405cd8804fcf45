#include "hosttest.h"

#include <molvacore/appsession.h>
#include <molvacore/userscontroller.h>

#include <QTest>

#include <memory>

class tst_UsersController : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_host = std::make_unique<HostTest>(); }
    void cleanup() { m_host.reset(); }

    void knownUser();
    void unknownUserLeavesTheNameAlone();
    void emptyNameIsNoName();
    void nobody();
    void closedDatabase();

private:
    std::unique_ptr<HostTest> m_host;
};

void tst_UsersController::knownUser()
{
    QString name;
    DbConnector db;
    UsersController users(db);
    QVERIFY(users.setUserFullName(AppSession(4), QStringLiteral("Кассир Иванова А. Б.")));
    QVERIFY(users.getUserFullName(AppSession(4), name));
    QCOMPARE(name, QStringLiteral("Кассир Иванова А. Б."));
    QVERIFY(users.setUserFullName(AppSession(4), QStringLiteral("Кассир Петрова")));
    QVERIFY(UsersController(db).getUserFullName(AppSession(4), name));
    QCOMPARE(name, QStringLiteral("Кассир Петрова"));
}

void tst_UsersController::unknownUserLeavesTheNameAlone()
{
    QString name = QStringLiteral("прежнее");
    DbConnector db;
    QVERIFY(!UsersController(db).getUserFullName(AppSession(5), name));
    QCOMPARE(name, QStringLiteral("прежнее"));
}

void tst_UsersController::emptyNameIsNoName()
{
    QString name = QStringLiteral("прежнее");
    DbConnector db;
    QVERIFY(UsersController(db).setUserFullName(AppSession(4), QString()));
    QVERIFY(!UsersController(db).getUserFullName(AppSession(4), name));
    QCOMPARE(name, QStringLiteral("прежнее"));
}

void tst_UsersController::nobody()
{
    QString name;
    DbConnector db;
    QVERIFY(!UsersController(db).setUserFullName(AppSession(), QStringLiteral("Никто")));
    QVERIFY(!UsersController(db).getUserFullName(AppSession(), name));
}

void tst_UsersController::closedDatabase()
{
    m_host->damage();
    QString name;
    DbConnector db;
    QVERIFY(!UsersController(db).setUserFullName(AppSession(4), QStringLiteral("Кассир")));
    QVERIFY(!UsersController(db).getUserFullName(AppSession(4), name));
}

QTEST_GUILESS_MAIN(tst_UsersController)
#include "tst_userscontroller.moc"
