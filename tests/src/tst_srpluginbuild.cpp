#include "srpluginbuild.h"

#include <QDateTime>
#include <QLocale>
#include <QTest>

class TestSrPluginBuild : public QObject
{
    Q_OBJECT

private slots:
    void moment_data();
    void moment();
    void momentDoesNotDependOnTheLocale();
    void thisBuildHasAMoment();
};

void TestSrPluginBuild::moment_data()
{
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("expected");

    QTest::newRow("two-digit day") << "Mar 31 2023"
                                   << "15:40:19"
                                   << "2023-03-31T15:40:19";
    QTest::newRow("one-digit day padded with a blank") << "Mar  5 2023"
                                                       << "10:00:00"
                                                       << "2023-03-05T10:00:00";
    QTest::newRow("first second of a year") << "Jan  1 2026"
                                            << "00:00:00"
                                            << "2026-01-01T00:00:00";
    QTest::newRow("last second of a year") << "Dec 31 2026"
                                           << "23:59:59"
                                           << "2026-12-31T23:59:59";
    QTest::newRow("leap day") << "Feb 29 2024"
                              << "01:02:03"
                              << "2024-02-29T01:02:03";
    QTest::newRow("one-digit day without its blank") << "Mar 5 2023"
                                                     << "10:00:00"
                                                     << "";
    QTest::newRow("a digit too many") << "Mar 31 20231"
                                      << "10:00:00"
                                      << "";
    QTest::newRow("no such day") << "Feb 30 2024"
                                 << "01:02:03"
                                 << "";
    QTest::newRow("month in another language") << "Мар 31 2023"
                                               << "15:40:19"
                                               << "";
    QTest::newRow("between two months") << "anF  5 2026"
                                        << "10:00:00"
                                        << "";
    QTest::newRow("no such hour") << "Mar 31 2023"
                                  << "24:00:01"
                                  << "";
    QTest::newRow("nothing") << ""
                             << ""
                             << "";
    const QString months[] = {QStringLiteral("Jan"), QStringLiteral("Feb"), QStringLiteral("Mar"),
                              QStringLiteral("Apr"), QStringLiteral("May"), QStringLiteral("Jun"),
                              QStringLiteral("Jul"), QStringLiteral("Aug"), QStringLiteral("Sep"),
                              QStringLiteral("Oct"), QStringLiteral("Nov"), QStringLiteral("Dec")};
    int number = 0;
    for (const QString &month : months) {
        ++number;
        QTest::newRow(qPrintable(month))
            << month + QStringLiteral("  9 2026") << "12:00:00"
            << QStringLiteral("2026-%1-09T12:00:00").arg(number, 2, 10, QLatin1Char('0'));
    }
}

void TestSrPluginBuild::moment()
{
    QFETCH(const QString, date);
    QFETCH(const QString, time);
    QFETCH(const QString, expected);
    QCOMPARE(srBuildMoment(date, time), expected);
}

void TestSrPluginBuild::momentDoesNotDependOnTheLocale()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
    const QString russian =
        srBuildMoment(QStringLiteral("Mar 31 2023"), QStringLiteral("15:40:19"));
    QLocale::setDefault(before);
    QCOMPARE(russian, QStringLiteral("2023-03-31T15:40:19"));
}

void TestSrPluginBuild::thisBuildHasAMoment()
{
    const QDateTime build = QDateTime::fromString(srPluginBuild(), Qt::ISODate);
    QVERIFY2(build.isValid(), qPrintable(srPluginBuild()));
    QCOMPARE(srPluginBuild().size(), 19);
}

QTEST_GUILESS_MAIN(TestSrPluginBuild)
#include "tst_srpluginbuild.moc"
