#include <modalanswers.h>

#include <billing/billingdatabase.h>
#include <bills/paymentcodereader.h>
#include <scanner/codereader.h>
#include <ui/billspage.h>
#include <ui/billspreview.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class TestBillsPage : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<BillingDatabase> m_billing;
    std::unique_ptr<BillsPage> m_page;

    template<class Type>
    Type *child(const char *name) const
    {
        return m_page->findChild<Type *>(QLatin1String(name));
    }

    void choose(const char *box, const QString &data)
    {
        auto *combo = child<QComboBox>(box);
        const int row = combo->findData(data);
        QVERIFY2(row >= 0, qPrintable(data));
        combo->setCurrentIndex(row);
    }

    void click(const char *button)
    {
        QTest::mouseClick(child<QPushButton>(button), Qt::LeftButton);
    }

    QString text() const { return child<QPlainTextEdit>("pteBillText")->toPlainText(); }

    /// Answers the file dialog with `file`; what stood in its name field goes to `offered`.
    void chooseFile(ModalAnswers &answers, const QString &file, QString *offered = nullptr)
    {
        answers.run([file, offered](QDialog *dialog) {
            auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            if (!name)
                return;
            if (offered)
                *offered = name->text();
            name->setText(file);
            QTest::keyClick(name, Qt::Key_Return);
        });
    }

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_billing = std::make_unique<BillingDatabase>();
        QVERIFY2(m_billing->open(m_folder->filePath(QStringLiteral("billing.sqlite"))),
                 qPrintable(m_billing->lastError()));
        m_page = std::make_unique<BillsPage>(*m_billing);
        m_page->resize(1000, 640);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    void cleanup()
    {
        m_page.reset();
        m_billing.reset();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void previewHoldsTheCode()
    {
        QVERIFY(text().startsWith(QStringLiteral("ST00012|Name=АО «Селмар Ривенхолд»|")));
        const QVector<CodeReader::Code> codes =
            CodeReader::read(child<BillsPreview>("saBillPreview")->picture());
        QCOMPARE(codes.size(), 1);
        QCOMPARE(codes.constFirst().bytes, m_page->code());
        QCOMPARE(QString::fromUtf8(m_page->code()), text());
        QVERIFY(!child<QComboBox>("cbBillDocument")->isVisible());
    }

    void encodingIsChosen()
    {
        auto *encoding = child<QComboBox>("cbBillEncoding");
        encoding->setFocus();
        QTest::keyClick(encoding, Qt::Key_Home);
        QVERIFY(text().startsWith(QStringLiteral("ST00011|")));
        QCOMPARE(PaymentCodeReader::read(m_page->code()).encoding, CodeEncoding::Windows1251);
        QTest::keyClick(encoding, Qt::Key_End);
        QVERIFY(text().startsWith(QStringLiteral("ST00013|Name=АО \"Селмар Ривенхолд\"|")));
    }

    void sumIsChosen()
    {
        auto *choice = child<QComboBox>("cbBillSum");
        auto *sum = child<QDoubleSpinBox>("dsbBillSum");
        QVERIFY(!sum->isEnabled());
        QVERIFY(text().contains(QStringLiteral("|Sum=150050|")));
        choice->setCurrentIndex(1);
        QVERIFY(sum->isEnabled());
        sum->setValue(1.15);
        QVERIFY2(text().contains(QStringLiteral("|Sum=115|")), qPrintable(text()));
        choice->setCurrentIndex(2);
        QVERIFY(!sum->isEnabled());
        QVERIFY(!text().contains(QStringLiteral("|Sum=")));
    }

    void periodIsChosen()
    {
        child<QDateEdit>("deBillPeriod")->setDate(QDate(2025, 2, 1));
        QVERIFY(text().contains(QStringLiteral("|PaymPeriod=02.2025|")));
    }

    void documentOfAContractIsChosen()
    {
        choose("cbBillAccount", SampleNumber::LEGAL_SEVERAL);
        QVERIFY(child<QComboBox>("cbBillDocument")->isVisible());
        QCOMPARE(child<QComboBox>("cbBillDocument")->count(), 5);
        choose("cbBillDocument", QStringLiteral("2026/0203"));
        QVERIFY(text().contains(QStringLiteral("|BarCode=2026/0203|")));
        choose("cbBillAccount", SampleNumber::ORDINARY);
        QVERIFY(!child<QComboBox>("cbBillDocument")->isVisible());
        QVERIFY(text().contains(QStringLiteral("|PersAcc=7001000101|")));
    }

    void unknownAccountIsExplained()
    {
        choose("cbBillAccount", SampleNumber::UNKNOWN);
        QVERIFY(child<QLabel>("lBillPicture")
                    ->text()
                    .contains(QStringLiteral("Биллинг не знает «7009999999»")));
        QVERIFY(m_page->code().isEmpty());
        for (const char *button : {"pbBillSave", "pbBillSend", "pbBillCopy"})
            QVERIFY(!child<QPushButton>(button)->isEnabled());
        choose("cbBillAccount", SampleNumber::ORDINARY);
        QVERIFY(child<QPushButton>("pbBillSave")->isEnabled());
    }

    void everySampleCanBeChosen()
    {
        auto *accounts = child<QComboBox>("cbBillAccount");
        QCOMPARE(accounts->count(), sampleAccounts().size());
        for (int i = 0; i < accounts->count(); ++i) {
            accounts->setCurrentIndex(i);
            const QString number = accounts->currentData().toString();
            const bool unknown =
                number == SampleNumber::UNKNOWN || number == SampleNumber::LEGAL_UNKNOWN;
            QCOMPARE(m_page->code().isEmpty(), unknown);
        }
    }

    void problemOfTheCodeIsShown()
    {
        auto account = m_billing->account(SampleAccount::Payer::Individual, SampleNumber::ORDINARY);
        QVERIFY(account);
        account->number = SampleNumber::UNKNOWN;
        account->address = QStringLiteral("|#;:^_~{}!$%&()*+,/@");
        QVERIFY2(m_billing->saveAccount(*account), qPrintable(m_billing->lastError()));
        choose("cbBillAccount", SampleNumber::UNKNOWN);
        QVERIFY(child<QLabel>("lBillProblems")->isVisible());
        QVERIFY(child<QLabel>("lBillProblems")->text().contains(QStringLiteral("разделители")));
        QVERIFY(!child<QPushButton>("pbBillSave")->isEnabled());
    }

    void separatorThatThePluginDoesNotKnowIsTold()
    {
        QVERIFY(!child<QLabel>("lBillProblems")->isVisible());
        auto account = m_billing->account(SampleAccount::Payer::Individual, SampleNumber::ORDINARY);
        QVERIFY(account);
        account->number = SampleNumber::UNKNOWN;
        account->address = QStringLiteral("ул. Садовая, 1|2");
        QVERIFY2(m_billing->saveAccount(*account), qPrintable(m_billing->lastError()));
        choose("cbBillAccount", SampleNumber::UNKNOWN);
        QVERIFY2(text().startsWith(QStringLiteral("ST00012#Name=")), qPrintable(text()));
        QVERIFY(child<QLabel>("lBillProblems")->isVisible());
        QVERIFY(child<QLabel>("lBillProblems")
                    ->text()
                    .contains(QStringLiteral("разделены знаком «#»")));
        // The bill itself is in order.
        QVERIFY(child<QPushButton>("pbBillSave")->isEnabled());
        choose("cbBillAccount", SampleNumber::ORDINARY);
        QVERIFY(!child<QLabel>("lBillProblems")->isVisible());
    }

    void balancesAreReadAgainWhenThePageIsShown()
    {
        auto account = m_billing->account(SampleAccount::Payer::Individual, SampleNumber::ORDINARY);
        QVERIFY(account);
        m_page->hide();
        const auto services = account->services;
        account->services = {services.constFirst()};
        account->number = SampleNumber::UNKNOWN;
        choose("cbBillAccount", SampleNumber::UNKNOWN);
        QVERIFY(m_billing->saveAccount(*account));
        QVERIFY(m_page->code().isEmpty());
        m_page->show();
        QVERIFY(text().contains(QStringLiteral("|Sum=48260|")));
    }

    void textIsCopied()
    {
        click("pbBillCopy");
        QCOMPARE(QApplication::clipboard()->text(), text());
    }

    void codeIsSentToTheScanner()
    {
        QSignalSpy sent(m_page.get(), &BillsPage::sentToScanner);
        click("pbBillSend");
        QCOMPARE(sent.count(), 1);
        QCOMPARE(sent.constFirst().constFirst().toByteArray(), m_page->code());
    }

    void savedAsAsked_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("written");
        QTest::newRow("PDF") << QStringLiteral("счёт.pdf") << QStringLiteral("счёт.pdf");
        QTest::newRow("PNG") << QStringLiteral("bill.png") << QStringLiteral("bill.png");
        QTest::newRow("no ending") << QStringLiteral("bill") << QStringLiteral("bill.pdf");
    }

    void savedAsAsked()
    {
        QFETCH(QString, name);
        QFETCH(QString, written);
        ModalAnswers answers;
        QString offered;
        chooseFile(answers, m_folder->filePath(name), &offered);
        click("pbBillSave");
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(offered, QStringLiteral("квитанция-7001000101.pdf"));
        QVERIFY(QFileInfo(m_folder->filePath(written)).size() > 5000);
    }

    void documentNumberMakesAUsableFileName()
    {
        choose("cbBillAccount", SampleNumber::LEGAL_ONE_DOCUMENT);
        ModalAnswers answers;
        QString offered;
        answers.run([&offered](QDialog *dialog) {
            offered = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text();
            QTest::keyClick(dialog, Qt::Key_Escape);
        });
        click("pbBillSave");
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(offered, QStringLiteral("счёт-50101-2026-0101.pdf"));
        QCOMPARE(QDir(m_folder->path()).entryList({QStringLiteral("*.pdf")}), QStringList());
    }

    void failedSaveIsTold()
    {
        ModalAnswers answers;
        chooseFile(answers, m_folder->filePath(QStringLiteral("bill.docx")));
        answers.ok();
        click("pbBillSave");
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(answers.pending(), 0);
        QVERIFY(answers.seen().constLast().text.contains(QStringLiteral(".pdf или .png")));
    }

    void tabReachesEverything()
    {
        auto *account = child<QComboBox>("cbBillAccount");
        account->setFocus();
        QStringList order;
        for (int i = 0; i < 12; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            order.append(QApplication::focusWidget()->objectName());
        }
        for (const char *name : {"deBillPeriod", "cbBillSum", "cbBillEncoding", "pteBillText",
                                 "pbBillCopy", "pbBillSave", "pbBillSend", "saBillPreview"})
            QVERIFY2(order.contains(QLatin1String(name)),
                     qPrintable(QLatin1String(name) + QStringLiteral(" not in ")
                                + order.join(QLatin1Char(' '))));
    }
};

QTEST_MAIN(TestBillsPage)
#include "tst_billspage.moc"
