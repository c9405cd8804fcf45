#include <ui/paymentdetails.h>

#include "../fiscal/receipts.h"

#include <temporaryterminal.h>
#include <ui/receiptview.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

#include <memory>

/// The receipt and the pack of one payment, and what is said when they are not there.
class TestPaymentDetails : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nothingChosen();
    void receipt();
    void receiptOfAnotherStorage();
    void receiptThatCannotBeRead();
    void packThatIsNotThere();

private:
    template<class Widget>
    Widget *child(const char *name) const
    {
        return m_page->findChild<Widget *>(QLatin1String(name));
    }
    /// What stands in the receipt's place; empty when the receipt does.
    QString placeholder() const
    {
        const auto *view = m_page->findChild<ReceiptView *>();
        return view->receipt().isNull() ? qobject_cast<QLabel *>(view->widget())->text()
                                        : QString();
    }

    TemporaryTerminal m_context;
    std::unique_ptr<PaymentDetails> m_page;
    PaymentRecord m_payment;
};

void TestPaymentDetails::init()
{
    QVERIFY2(m_context.open(), qPrintable(m_context.error()));
    m_page = std::make_unique<PaymentDetails>(*m_context);

    QVariantMap result;
    QString error;
    const QVariantMap document =
        Receipts::withLines({Receipts::line(QStringLiteral("Вода"), 15050)}, 15050, 0);
    QVERIFY2(m_context->fiscalRegister().doReceipt(document, QStringLiteral("1"), result, error),
             qPrintable(error));
    m_payment = PaymentRecord();
    m_payment.packId = 1;
    m_payment.fiscalStorage = m_context->fiscalJournal().storageNumber();
    m_payment.fiscalDocument =
        QString::number(m_context->fiscalJournal().receipts(0, 1).constFirst().number);
}

void TestPaymentDetails::cleanup()
{
    m_page.reset();
    m_context.close();
}

void TestPaymentDetails::nothingChosen()
{
    QVERIFY(placeholder().contains(QStringLiteral("Выберите платёж")));
    QVERIFY(!child<QPushButton>("pbSaveReceipt")->isEnabled());
    QVERIFY(!child<QPushButton>("pbSavePack")->isEnabled());
}

void TestPaymentDetails::receipt()
{
    m_page->setPayment(m_payment);
    QCOMPARE(placeholder(), QString());
    QVERIFY(
        child<QPlainTextEdit>("pteReceiptText")->toPlainText().contains(QStringLiteral("150.50")));
    QVERIFY(child<QPushButton>("pbSaveReceipt")->isEnabled());
}

void TestPaymentDetails::receiptOfAnotherStorage()
{
    m_page->setPayment(m_payment);
    m_payment.fiscalStorage = QStringLiteral("9999000000000001");
    m_page->setPayment(m_payment);
    QVERIFY(placeholder().contains(QStringLiteral("в журнале кассы нет")));
    QCOMPARE(child<QPlainTextEdit>("pteReceiptText")->toPlainText(), QString());
    QVERIFY(!child<QPushButton>("pbSaveReceipt")->isEnabled());
}

void TestPaymentDetails::receiptThatCannotBeRead()
{
    const QString name = QStringLiteral("other");
    {
        QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        other.setDatabaseName(m_context.file(QStringLiteral("fiscal.sqlite")));
        QVERIFY(other.open());
        QVERIFY(QSqlQuery(other).exec(QStringLiteral("ALTER TABLE documents RENAME TO lost")));
    }
    QSqlDatabase::removeDatabase(name);
    m_page->setPayment(m_payment);
    QVERIFY2(placeholder().contains(QStringLiteral("прочитать не удалось")),
             qPrintable(placeholder()));
    QVERIFY(!placeholder().contains(QStringLiteral("в журнале кассы нет")));
    QVERIFY(!child<QPushButton>("pbSaveReceipt")->isEnabled());
}

void TestPaymentDetails::packThatIsNotThere()
{
    m_page->setPayment(m_payment);
    QVERIFY(
        child<QPlainTextEdit>("ptePack")->toPlainText().contains(QStringLiteral("не прочитана")));
    QVERIFY(!child<QPushButton>("pbSavePack")->isEnabled());
}

QTEST_MAIN(TestPaymentDetails)
#include "tst_paymentdetails.moc"
