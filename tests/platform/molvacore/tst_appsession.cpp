#include <molvacore/appsession.h>

#include <QTest>

class tst_AppSession : public QObject
{
    Q_OBJECT

private slots:
    void nobodyAtFirst();
    void currentSessionIsTheProcess();
};

void tst_AppSession::nobodyAtFirst()
{
    QVERIFY(!AppSession().isValid());
    QCOMPARE(AppSession::currentSession(), AppSession());
}

void tst_AppSession::currentSessionIsTheProcess()
{
    AppSession session(5);
    QVERIFY(session.isValid());
    AppSession::setCurrentSession(session);
    session.setUserId(6);
    QVERIFY(session != AppSession::currentSession());
    QCOMPARE(AppSession::currentSession().userId(), 5);
    AppSession::setCurrentSession(AppSession());
    QVERIFY(!AppSession::currentSession().isValid());
}

QTEST_GUILESS_MAIN(tst_AppSession)
#include "tst_appsession.moc"
