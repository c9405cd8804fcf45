#include "sampleinfo.h"

#include <molvacore/onlinekkmprofile.h>

#include <QTest>

class tst_OnlineKkmProfile : public QObject
{
    Q_OBJECT

private slots:
    void lookupOrder_data();
    void lookupOrder();
    void emptyProfileGivesAnEmptyRecord();
    void changedCopyLeavesTheOriginal();
    void equality();
};

void tst_OnlineKkmProfile::lookupOrder_data()
{
    QTest::addColumn<qint64>("group");
    QTest::addColumn<qint64>("provider");
    QTest::addColumn<QString>("mark");
    QTest::newRow("provider before its group")
        << qint64(5) << qint64(18722) << QStringLiteral(" поставщик");
    QTest::newRow("provider of another group")
        << qint64(99) << qint64(18722) << QStringLiteral(" поставщик");
    QTest::newRow("group") << qint64(5) << qint64(18723) << QStringLiteral(" группа");
    QTest::newRow("neither") << qint64(6) << qint64(18723) << QString();
    QTest::newRow("ids are not mixed up") << qint64(18722) << qint64(5) << QString();
}

void tst_OnlineKkmProfile::lookupOrder()
{
    QFETCH(qint64, group);
    QFETCH(qint64, provider);
    QFETCH(QString, mark);
    OnlineKkmProfile profile;
    profile.setDefaultKkmInfo(sampleInfo());
    profile.setGroupKkmInfo(5, sampleInfo(QStringLiteral(" группа")));
    profile.setProviderKkmInfo(18722, sampleInfo(QStringLiteral(" поставщик")));
    QCOMPARE(profile.getKkmInfo(group, provider), sampleInfo(mark));
}

void tst_OnlineKkmProfile::emptyProfileGivesAnEmptyRecord()
{
    QVERIFY(!OnlineKkmProfile().isValid());
    QCOMPARE(OnlineKkmProfile().getKkmInfo(1, 2), OnlineKkmInfo());
    QCOMPARE(OnlineKkmInfo().agentSign(), AgentFlag::None);
}

void tst_OnlineKkmProfile::changedCopyLeavesTheOriginal()
{
    OnlineKkmProfile profile;
    profile.setId(1);
    profile.setProviderKkmInfo(18722, sampleInfo());
    OnlineKkmProfile copy = profile;
    copy.setProviderKkmInfo(18722, sampleInfo(QStringLiteral("!")));
    copy.setId(2);
    QCOMPARE(profile.getKkmInfo(0, 18722), sampleInfo());
    QCOMPARE(profile.id(), 1);
}

void tst_OnlineKkmProfile::equality()
{
    OnlineKkmProfile profile;
    QCOMPARE(profile, OnlineKkmProfile());
    OnlineKkmProfile other = profile;
    other.setGroupKkmInfo(0, OnlineKkmInfo());
    QVERIFY(profile != other);
    other = profile;
    other.setDefaultKkmInfo(sampleInfo());
    QVERIFY(profile != other);
}

QTEST_GUILESS_MAIN(tst_OnlineKkmProfile)
#include "tst_onlinekkmprofile.moc"
