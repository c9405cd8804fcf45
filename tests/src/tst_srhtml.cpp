#include "billingsamples.h"
#include "individual/srpersonalaccount.h"
#include "srhtml.h"

#include <QTest>

namespace {

QStringList servicesTable(const QList<SrService> &services)
{
    QString document = QStringLiteral("above");
    SrHtml::appendServices(document, services);
    return document.split(QLatin1Char('\n')).mid(1);
}

QStringList countersTable(const QList<SrCounter> &counters)
{
    QString document = QStringLiteral("above");
    SrHtml::appendCounters(document, counters);
    return document.split(QLatin1Char('\n')).mid(1);
}

} // namespace

class TestSrHtml : public QObject
{
    Q_OBJECT

private slots:
    void escaped_data();
    void escaped();
    void namesStayNames_data();
    void namesStayNames();
    void noTableForNoRecords();
    void headerCellsComeFromTheFirstService();
    void missingTitles();
    void counterRowsAreIntegers();
    void linesStandOneBelowTheOther();
};

void TestSrHtml::escaped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("markup") << QStringLiteral("<b>Я & \"ты\"</b>")
                            << QStringLiteral("&lt;b&gt;Я &amp; \"ты\"&lt;/b&gt;");
    QTest::newRow("company in quotes")
        << QStringLiteral("ООО \"Ромашка\"") << QStringLiteral("ООО \"Ромашка\"");
    QTest::newRow("apostrophe") << QStringLiteral("Д'Артаньян") << QStringLiteral("Д'Артаньян");
    QTest::newRow("entity") << QStringLiteral("&lt;") << QStringLiteral("&amp;lt;");
    QTest::newRow("less") << QStringLiteral("до < 5 м") << QStringLiteral("до &lt; 5 м");
    QTest::newRow("greater") << QStringLiteral("от > 5 м") << QStringLiteral("от &gt; 5 м");
    QTest::newRow("and") << QStringLiteral("Ромашка & Ко") << QStringLiteral("Ромашка &amp; Ко");
    QTest::newRow("empty") << QString() << QString();
}

void TestSrHtml::escaped()
{
    QFETCH(QString, text);
    QTEST(SrHtml::escaped(text), "expected");
}

void TestSrHtml::namesStayNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("placeholders") << QStringLiteral("100%2 вода %1 %L3")
                                  << QStringLiteral("100%2 вода %1 %L3");
    QTest::newRow("markup") << QStringLiteral("</td><img src=x>")
                            << QStringLiteral("&lt;/td&gt;&lt;img src=x&gt;");
    QTest::newRow("quotes") << QStringLiteral("\"Вода\"") << QStringLiteral("\"Вода\"");
}

void TestSrHtml::namesStayNames()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    SrService service;
    service.parseCheckList(BillingSamples::service(1, name, QStringLiteral("1"),
                                                   QStringLiteral("2"), QStringLiteral("3")));
    QCOMPARE(servicesTable({service}).at(2),
             QStringLiteral("<tr><td align=\"left\">") + shown
                 + QStringLiteral("</td><td align=\"right\">1.00</td><td align=\"right\">2.00</td>"
                                  "<td align=\"right\">3.00</td></tr>"));
    QCOMPARE(SrHtml::heading(name),
             QStringLiteral("<H4 align=\"center\">") + shown + QStringLiteral("</H4>"));
    QCOMPARE(SrHtml::payerName(name),
             QStringLiteral("<H1 align=\"center\">") + shown + QStringLiteral("</H1>"));
    QVERIFY(SrHtml::totalToPay(name, basix::FixNumber(100, 5))
                .contains(shown + QStringLiteral("</b>")));
}

void TestSrHtml::noTableForNoRecords()
{
    QCOMPARE(servicesTable({}), QStringList());
    QCOMPARE(countersTable({}), QStringList());
}

void TestSrHtml::headerCellsComeFromTheFirstService()
{
    SrService first;
    first.parseCheckList(BillingSamples::service(1, QStringLiteral("a"), QStringLiteral("1"),
                                                 QStringLiteral("1"), QStringLiteral("1")));
    SrService second;
    second.parseCheckList(
        {BillingSamples::field(SrService::FIELD_NAME, QStringLiteral("b"),
                               BillingSamples::Edit::Allowed, QStringLiteral("Иное"))});
    const QStringList lines = servicesTable({first, second});
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.first(),
             QStringLiteral("<table width=\"90%\" border=1 align=\"center\"><tbody>"));
    QCOMPARE(lines.at(1),
             QStringLiteral(
                 "<tr><th align=\"center\">Услуга</th><th align=\"center\">Начислено</th>"
                 "<th align=\"center\">К оплате</th><th align=\"center\">Распределено</th></tr>"));
    QVERIFY(!lines.join(QString()).contains(QStringLiteral("Иное")));
    QCOMPARE(lines.last(), QStringLiteral("</tbody></table>"));
}

void TestSrHtml::missingTitles()
{
    QCOMPARE(
        servicesTable({SrService()}).at(1),
        QStringLiteral(
            "<tr><th align=\"center\"></th><th align=\"center\"></th><th align=\"center\"></th>"
            "<th align=\"center\"></th></tr>"));
    QVERIFY(SrHtml::totals(SrPersonalAccount())
                .contains(QStringLiteral("<td align=\"left\">: 0.00</td>")));
}

void TestSrHtml::counterRowsAreIntegers()
{
    SrCounter counter;
    counter.parseCheckList(BillingSamples::counter(
        1, QStringLiteral("ХВС"), QStringLiteral("1200000"), QStringLiteral("-5")));
    QCOMPARE(countersTable({counter}).at(2),
             QStringLiteral("<tr><td align=\"left\">ХВС</td><td align=\"right\">1200000</td>"
                            "<td align=\"right\">-5</td></tr>"));
}

void TestSrHtml::linesStandOneBelowTheOther()
{
    QString document;
    SrHtml::appendLine(document, QStringLiteral("a"));
    SrHtml::appendLine(document, QStringLiteral("b"));
    QCOMPARE(document, QStringLiteral("a\nb"));
    QString table;
    SrHtml::appendServices(table, {SrService()});
    QVERIFY(table.startsWith(QStringLiteral("<table ")));
}

QTEST_GUILESS_MAIN(TestSrHtml)
#include "tst_srhtml.moc"
