#include "qrdecoder.h"

#include <ui/receiptpicture.h>
#include <ui/receiptview.h>

#include <QLabel>
#include <QScrollBar>
#include <QTest>

class TestReceiptView : public QObject
{
    Q_OBJECT

private:
    const QString m_code =
        QStringLiteral("t=20261121T1200&s=1500.50&fn=9999078900004792&i=12&fp=3522207165&n=1");

private slots:
    void placeholderStandsInForAReceipt()
    {
        ReceiptView view;
        view.setReceipt(QImage(), QStringLiteral("Чека нет"));
        QCOMPARE(view.findChild<QLabel *>()->text(), QStringLiteral("Чека нет"));
        view.setReceipt(ReceiptPicture::draw(QStringLiteral("ЧЕК"), m_code), QString());
        QVERIFY(view.findChild<QLabel *>()->pixmap(Qt::ReturnByValue).height() > 100);
        view.setReceipt(QImage(), QStringLiteral("Снова нет"));
        QCOMPARE(view.findChild<QLabel *>()->text(), QStringLiteral("Снова нет"));
    }

    void endOfAReceiptCanBeRead_data()
    {
        QTest::addColumn<int>("lines");
        QTest::newRow("short") << 5;
        QTest::newRow("of several documents") << 200;
        QTest::newRow("of hundreds of documents") << 3000;
    }

    void endOfAReceiptCanBeRead()
    {
        QFETCH(int, lines);
        QString text;
        for (int i = 0; i < lines; ++i)
            text += QStringLiteral("строка %1\n").arg(i);
        ReceiptView view;
        view.resize(520, 700);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        view.setReceipt(ReceiptPicture::draw(text, m_code), QString());
        QTest::keyClick(&view, Qt::Key_PageDown);
        QTRY_VERIFY(lines < 10 || view.verticalScrollBar()->maximum() > 0);
        view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
        QCOMPARE(decodeQr(view.viewport()->grab().toImage()), m_code.toLatin1());
    }
};

QTEST_MAIN(TestReceiptView)
#include "tst_receiptview.moc"
