#include <ui/lazypage.h>

#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

#include <memory>

class TestLazyPage : public QObject
{
    Q_OBJECT

private:
    int m_made = 0;

    LazyPage<QLineEdit> *makePage(QWidget *parent = nullptr)
    {
        return new LazyPage<QLineEdit>(
            [this](QWidget *owner) {
                ++m_made;
                return new QLineEdit(owner);
            },
            parent);
    }

private slots:
    void init() { m_made = 0; }

    void madeOnceWhenShown()
    {
        const std::unique_ptr<LazyPage<QLineEdit>> lazy(makePage());
        QCOMPARE(m_made, 0);
        lazy->hide();
        QCOMPARE(m_made, 0);
        lazy->show();
        QCOMPARE(m_made, 1);
        QVERIFY(lazy->page().isVisible());
        lazy->hide();
        lazy->show();
        QCOMPARE(m_made, 1);
    }

    void madeWhenAskedForBeforeItIsShown()
    {
        const std::unique_ptr<LazyPage<QLineEdit>> lazy(makePage());
        QLineEdit &page = lazy->page();
        QCOMPARE(page.parentWidget(), lazy.get());
        lazy->show();
        QCOMPARE(&lazy->page(), &page);
        QCOMPARE(m_made, 1);
    }

    void fillsItsPlaceAndTakesTheFocusOfTheTabBefore()
    {
        QTabWidget tabs;
        auto *before = new QLineEdit(&tabs);
        tabs.addTab(before, QStringLiteral("before"));
        auto *lazy = makePage(&tabs);
        tabs.addTab(lazy, QStringLiteral("lazy"));
        tabs.show();
        QVERIFY(QTest::qWaitForWindowActive(&tabs));
        QCOMPARE(m_made, 0);
        before->setFocus();
        tabs.setCurrentIndex(1);
        QCOMPARE(m_made, 1);
        QVERIFY(lazy->page().hasFocus());
        QCOMPARE(lazy->page().width(), lazy->width());
    }
};

QTEST_MAIN(TestLazyPage)
#include "tst_lazypage.moc"
