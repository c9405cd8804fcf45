#include "srwizardheader.h"

#include "canary.h"
#include "guitestguard.h"

#include <QLabel>
#include <QTest>
#include <QWizard>
#include <QWizardPage>

#include <memory>

namespace {

constexpr QChar zeroWidthSpace(0x200b);

} // namespace

class TestSrWizardHeader : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void ordinaryNameIsTheTitle();
    void namesAreNeverMarkup();
    void onlyTheTitleIsWrapped();
    void whatTwoLinesHold_data();
    void whatTwoLinesHold();
    void longTitleWrapsAndKeepsTheWindowsWidth_data();
    void longTitleWrapsAndKeepsTheWindowsWidth();

private:
    QLabel *labelWith(const QString &text) const;

    std::unique_ptr<GuiTestGuard> m_guard;
    std::unique_ptr<QWizard> m_wizard;
    QWizardPage *m_page = nullptr;
};

void TestSrWizardHeader::init()
{
    m_guard = std::make_unique<GuiTestGuard>();
    m_wizard = std::make_unique<QWizard>();
    m_wizard->setWizardStyle(QWizard::ModernStyle);
    auto *first = new QWizardPage;
    first->setTitle(QStringLiteral("Вода"));
    first->setSubTitle(QStringLiteral("Ввод данных"));
    m_wizard->addPage(first);
    m_page = new QWizardPage;
    m_wizard->addPage(m_page);
    srPrepareHeader(m_wizard.get());
    m_wizard->resize(800, 600);
    m_wizard->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_wizard.get()));
}

void TestSrWizardHeader::cleanup()
{
    m_wizard.reset();
    const QStringList problems = m_guard->problems();
    m_guard.reset();
    QCOMPARE(problems, QStringList());
}

QLabel *TestSrWizardHeader::labelWith(const QString &text) const
{
    const QList<QLabel *> labels = m_wizard->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (label->text() == text)
            return label;
    }
    return nullptr;
}

void TestSrWizardHeader::ordinaryNameIsTheTitle()
{
    srShowPayer(m_page, QStringLiteral("ООО «Ручей»"), QStringLiteral("ул. Речная, 1"));
    QCOMPARE(m_page->title(), QStringLiteral("ООО «Ручей»"));
    QCOMPARE(m_page->subTitle(), QStringLiteral("ул. Речная, 1"));
    m_wizard->next();
    QVERIFY(labelWith(QStringLiteral("ООО «Ручей»")));
    QVERIFY(labelWith(QStringLiteral("ул. Речная, 1")));
}

void TestSrWizardHeader::namesAreNeverMarkup()
{
    Canary canary;
    for (const QString &address : canary.addresses()) {
        const QString name = QStringLiteral("<img src=\"%1\">").arg(address).left(150);
        srShowPayer(m_page, name, name);
        m_wizard->next();
        m_wizard->grab();
        m_wizard->back();
    }
    QVERIFY2(canary.untouched(), qPrintable(canary.report()));

    srShowPayer(m_page, QStringLiteral("<b>а</b>"), QStringLiteral("<i>б</i>"));
    m_wizard->next();
    QVERIFY(labelWith(QStringLiteral("<b>а</b>")));
    QCOMPARE(labelWith(QStringLiteral("<b>а</b>"))->textFormat(), Qt::PlainText);
    QVERIFY(labelWith(QStringLiteral("<i>б</i>")));
    QCOMPARE(labelWith(QStringLiteral("<i>б</i>"))->textFormat(), Qt::PlainText);
}

void TestSrWizardHeader::onlyTheTitleIsWrapped()
{
    const QString name = QStringLiteral("ООО «Ручей»");
    auto *same = new QLabel(name, m_page);
    auto *other = new QLabel(QStringLiteral("Долг"), m_page);
    auto *elsewhere = new QLabel(QStringLiteral("Счёт"), m_wizard->page(0));
    srShowPayer(m_page, name, QStringLiteral("ул. Речная, 1"));
    m_wizard->next();
    QVERIFY2(!same->wordWrap(), "a page's own label, whatever it says");
    QVERIFY(!other->wordWrap());
    QVERIFY(!elsewhere->wordWrap());
    int titles = 0;
    for (const QLabel *label : m_wizard->findChildren<QLabel *>())
        titles += label != same && label->text() == name && label->wordWrap();
    QCOMPARE(titles, 1);
}

void TestSrWizardHeader::whatTwoLinesHold_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("wholeTitle");
    QTest::addColumn<bool>("wholeSubtitle");
    const auto words = [](int letters) {
        return QStringLiteral("вода ").repeated(letters).left(letters);
    };
    QTest::newRow("150 letters") << words(150) << true << true;
    QTest::newRow("151 letters") << words(151) << false << true;
    QTest::newRow("170 letters") << words(170) << false << true;
    QTest::newRow("171 letters") << words(171) << false << false;
    QTest::newRow("a word of 25 letters") << QString(25, QChar(u'Щ')) << true << true;
    // Whole as well, but with a place to break it.
    QTest::newRow("a word of 26 letters") << QString(26, QChar(u'Щ')) << false << false;
}

void TestSrWizardHeader::whatTwoLinesHold()
{
    QFETCH(const QString, name);
    QFETCH(const bool, wholeTitle);
    QFETCH(const bool, wholeSubtitle);
    srShowPayer(m_page, name, name);
    QCOMPARE(m_page->title() == name, wholeTitle);
    QCOMPARE(m_page->subTitle() == name, wholeSubtitle);
}

void TestSrWizardHeader::longTitleWrapsAndKeepsTheWindowsWidth_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("institution") << QStringLiteral(
        "Муниципальное бюджетное дошкольное образовательное учреждение детский "
        "сад комбинированного вида № 15 «Солнышко» города Ривенхолда");
    QTest::newRow("a megabyte of words") << QStringLiteral("вода ").repeated(200 * 1024);
    QTest::newRow("a word of a megabyte") << QString(1024 * 1024, QChar(0x0429));
    QTest::newRow("surrogate pairs") << QStringLiteral("\U0001F4A7").repeated(1000);
    QTest::newRow("lines") << QString(1000, QLatin1Char('\n'));
}

void TestSrWizardHeader::longTitleWrapsAndKeepsTheWindowsWidth()
{
    QFETCH(const QString, name);
    const int height = m_wizard->height();
    srShowPayer(m_page, name, name);
    m_wizard->next();
    m_wizard->grab();
    QCOMPARE(m_wizard->width(), 800);
    QCOMPARE(m_wizard->height(), height);
    QVERIFY(!m_page->title().contains(QChar(0xfffd)));
    const QString title = QString(m_page->title()).remove(zeroWidthSpace);
    QVERIFY(title.size() <= 150);
    if (name.size() <= 150)
        QCOMPARE(title, name);
    QLabel *label = labelWith(m_page->title());
    QVERIFY(label);
    QVERIFY(label->wordWrap());
}

QTEST_MAIN(TestSrWizardHeader)
#include "tst_srwizardheader.moc"
