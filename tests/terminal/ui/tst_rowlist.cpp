#include <ui/rowlist.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>

#include <memory>

class TestRowList : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QWidget> m_window;
    QTableWidget *m_table = nullptr;
    QLineEdit *m_next = nullptr;

    void click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::mouseClick(m_table->viewport(), Qt::LeftButton, modifiers,
                          m_table->visualItemRect(m_table->item(row, 0)).center());
    }

    QVector<int> chosenRows() const
    {
        QVector<int> rows;
        for (const QModelIndex &index : m_table->selectionModel()->selectedRows())
            rows.append(index.row());
        return rows;
    }

private slots:
    void init()
    {
        m_window = std::make_unique<QWidget>();
        auto *layout = new QHBoxLayout(m_window.get());
        m_table = new QTableWidget(2, 2);
        m_next = new QLineEdit;
        layout->addWidget(m_table);
        layout->addWidget(m_next);
        RowList::prepare(*m_table);
        RowList::put(*m_table, 0, {QStringLiteral("7001"), QStringLiteral("Вода")});
        RowList::put(*m_table, 1, {QStringLiteral("7002"), QStringLiteral("Сток")});
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void oneWholeRowIsChosen()
    {
        click(0);
        QCOMPARE(chosenRows(), QVector<int>{0});
        click(1, Qt::ControlModifier);
        QCOMPARE(chosenRows(), QVector<int>{1});
    }

    void tabLeavesTheTable()
    {
        click(0);
        m_table->setFocus();
        QTest::keyClick(m_table, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), m_next);
        QTest::keyClick(m_next, Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), m_table);
        QCOMPARE(m_table->currentIndex(), m_table->model()->index(0, 0));
    }

    void nothingIsEditedInPlace()
    {
        click(0);
        QTest::keyClick(m_table, Qt::Key_F2);
        QTest::keyClick(m_table, Qt::Key_5);
        QTest::mouseDClick(m_table->viewport(), Qt::LeftButton, Qt::NoModifier,
                           m_table->visualItemRect(m_table->item(0, 0)).center());
        QVERIFY(!m_table->viewport()->findChild<QLineEdit *>());
        QCOMPARE(m_table->item(0, 0)->text(), QStringLiteral("7001"));
    }

    void headsKeepStill()
    {
        QVERIFY(m_table->verticalHeader()->isHidden());
        QVERIFY(!m_table->horizontalHeader()->highlightSections());
    }

    void textsAreBoundedAndNoMarkup_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("tip");
        QTest::newRow("ordinary") << QStringLiteral("Вода") << QStringLiteral("Вода")
                                  << QStringLiteral("Вода");
        QTest::newRow("markup") << QStringLiteral("<b>7") << QStringLiteral("<b>7")
                                << QStringLiteral("&lt;b&gt;7");
        QTest::newRow("turned round")
            << QStringLiteral("7\u202e1") << QStringLiteral("7 1") << QStringLiteral("7 1");
    }

    void textsAreBoundedAndNoMarkup()
    {
        QFETCH(QString, text);
        QFETCH(QString, cell);
        QFETCH(QString, tip);
        RowList::put(*m_table, 1, {QString(), text});
        QCOMPARE(m_table->item(1, 1)->text(), cell);
        QCOMPARE(m_table->item(1, 1)->toolTip(), tip);
        RowList::put(*m_table, 1, {text.repeated(1024 * 1024)});
        QVERIFY(m_table->item(1, 0)->text().size() < 1000);
        QVERIFY(m_table->item(1, 0)->toolTip().size() < 5000);
    }
};

QTEST_MAIN(TestRowList)
#include "tst_rowlist.moc"
