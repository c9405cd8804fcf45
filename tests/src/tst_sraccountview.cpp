#include "sraccountview.h"

#include "canary.h"
#include "guitestguard.h"
#include "srhtml.h"

#include <QImage>
#include <QTest>
#include <QTextDocument>
#include <QUrl>

#include <memory>

class TestSrAccountView : public QObject
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

    void showsTheDocument();
    void nothingIsLoaded_data();
    void nothingIsLoaded();
    void somethingEmptyOfItsKindIsGiven();
    void aWordOfAMegabyteIsShownInPart();

private:
    std::unique_ptr<GuiTestGuard> m_guard;
};

void TestSrAccountView::showsTheDocument()
{
    SrAccountView view;
    view.showAccount(SrHtml::payerName(QStringLiteral("ООО «Ручей»")));
    QCOMPARE(view.toPlainText(), QStringLiteral("ООО «Ручей»"));
    view.showAccount(SrHtml::heading(QStringLiteral("Другой")));
    QCOMPARE(view.toPlainText(), QStringLiteral("Другой"));
}

void TestSrAccountView::nothingIsLoaded_data()
{
    QTest::addColumn<QString>("html");
    QTest::newRow("picture") << QStringLiteral("<p>a<img src=\"%1\">b</p>");
    QTest::newRow("background of a table")
        << QStringLiteral("<table background=\"%1\"><tr><td>a</td></tr></table>");
    QTest::newRow("style sheet") << QStringLiteral(
        "<html><head><link rel=\"stylesheet\" type=\"text/css\" "
        "href=\"%1\"></head><body>a</body></html>");
}

void TestSrAccountView::nothingIsLoaded()
{
    // Markup of the document's own, as if an escape had been forgotten: the second wall.
    QFETCH(const QString, html);
    Canary canary;
    SrAccountView view;
    view.resize(400, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    for (const QString &address : canary.addresses()) {
        view.showAccount(html.arg(address));
        view.grab();
    }
    QVERIFY2(canary.untouched(), qPrintable(canary.report()));

    // The same document in a plain viewer does read the file, so the canary sees it when it is
    // read.
    QTextBrowser plain;
    plain.setHtml(html.arg(canary.addresses().first()));
    plain.grab();
    QVERIFY(!canary.untouched());
}

void TestSrAccountView::somethingEmptyOfItsKindIsGiven()
{
    SrAccountView view;
    const QUrl anything(QStringLiteral("file:///etc/hostname"));
    const QVariant picture = view.loadResource(QTextDocument::ImageResource, anything);
    QCOMPARE(picture.value<QImage>().size(), QSize(1, 1));
    for (const int type : {QTextDocument::HtmlResource, QTextDocument::StyleSheetResource})
        QCOMPARE(view.loadResource(type, anything), QVariant(QByteArray("")));
}

void TestSrAccountView::aWordOfAMegabyteIsShownInPart()
{
    SrAccountView view;
    view.resize(400, 300);
    view.show();
    view.showAccount(SrHtml::payerName(QString(1024 * 1024, QLatin1Char('x'))));
    QCOMPARE(view.toPlainText().size(), 300);
    QVERIFY(view.document()->size().width() <= 400);
}

QTEST_MAIN(TestSrAccountView)
#include "tst_sraccountview.moc"
