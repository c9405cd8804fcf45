#include <ui/journalpage.h>

#include <payments/paymentsstore.h>
#include <temporaryterminal.h>
#include <ui/journalmodel.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QTest>

class TestJournalPage : public QObject
{
    Q_OBJECT

private:
    TemporaryTerminal m_context;
    std::unique_ptr<JournalPage> m_page;

    QTableView *table() const
    {
        return m_page->findChild<QTableView *>(QStringLiteral("tvJournal"));
    }
    QComboBox *order() const
    {
        return m_page->findChild<QComboBox *>(QStringLiteral("cbJournalOrder"));
    }

    QStringList sums() const
    {
        QStringList texts;
        for (int row = 0; row < table()->model()->rowCount(); ++row)
            texts.append(table()->model()->index(row, JournalModel::Sum).data().toString());
        return texts;
    }

    void clickHead(int column) const
    {
        const QHeaderView *header = table()->horizontalHeader();
        QTest::mouseClick(
            header->viewport(), Qt::LeftButton, Qt::NoModifier,
            QPoint(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                   header->height() / 2));
    }

    /// {column, order} that the head of the table points at.
    QPair<int, int> indicated() const
    {
        for (int column = 0; column < JournalModel::ColumnCount; ++column) {
            const QString title = table()->model()->headerData(column, Qt::Horizontal).toString();
            if (title.endsWith(QChar(0x25bc)))
                return {column, int(Qt::DescendingOrder)};
            if (title.endsWith(QChar(0x25b2)))
                return {column, int(Qt::AscendingOrder)};
        }
        return {-1, -1};
    }

private slots:
    void init()
    {
        QVERIFY2(m_context.open(), qPrintable(m_context.error()));
        int id = 0;
        for (const qint64 sum : {200, 300, 100}) {
            PaymentRecord record;
            record.packId = ++id;
            record.created = QDateTime(QDate(2026, 11, 20), QTime(10, id));
            record.account = QStringLiteral("7001");
            record.sum = record.cash = basix::FixNumber(100, sum);
            QVERIFY(m_context->payments().save(record, {{QStringLiteral("id"), id}}));
        }
        m_page = std::make_unique<JournalPage>(*m_context);
        m_page->resize(1000, 600);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    void cleanup()
    {
        m_page.reset();
        m_context.close();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void clickOnAHeadSortsAndTheNextOneTurnsTheOrder()
    {
        const QStringList byTime{QStringLiteral("1.00"), QStringLiteral("3.00"),
                                 QStringLiteral("2.00")};
        QCOMPARE(sums(), byTime);
        QCOMPARE(indicated(), qMakePair(int(JournalModel::Time), int(Qt::DescendingOrder)));
        const QStringList descending{QStringLiteral("3.00"), QStringLiteral("2.00"),
                                     QStringLiteral("1.00")};
        clickHead(JournalModel::Sum);
        QCOMPARE(sums(), descending);
        QCOMPARE(indicated(), qMakePair(int(JournalModel::Sum), int(Qt::DescendingOrder)));
        QCOMPARE(order()->currentText(), QStringLiteral("сумма, сначала большие"));
        clickHead(JournalModel::Sum);
        QCOMPARE(sums(), QStringList(descending.crbegin(), descending.crend()));
        QCOMPARE(indicated(), qMakePair(int(JournalModel::Sum), int(Qt::AscendingOrder)));
        clickHead(JournalModel::Time);
        QCOMPARE(sums(), byTime);
    }

    void everyOrderIsChosenByKeyboard()
    {
        order()->setFocus();
        QVector<QPair<int, int>> seen{indicated()};
        for (int step = 1; step < order()->count(); ++step) {
            QTest::keyClick(order(), Qt::Key_Down);
            QVERIFY2(!seen.contains(indicated()), qPrintable(order()->currentText()));
            seen.append(indicated());
        }
        QCOMPARE(seen.size(), 2 * int(JournalModel::ColumnCount));
    }

    void theNewestIsShownWhateverTheOrderWas()
    {
        clickHead(JournalModel::Sum);
        m_page->showNewest();
        QCOMPARE(indicated(), qMakePair(int(JournalModel::Time), int(Qt::DescendingOrder)));
        QCOMPARE(table()->currentIndex().row(), 0);
        QCOMPARE(sums().constFirst(), QStringLiteral("1.00"));
    }
};

QTEST_MAIN(TestJournalPage)
#include "tst_journalpage.moc"
