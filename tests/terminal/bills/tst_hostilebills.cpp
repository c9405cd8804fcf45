#include <hostiletexts.h>
#include <modalanswers.h>

#include <billing/billingdatabase.h>
#include <bills/billhtml.h>
#include <scanner/codereader.h>
#include <ui/billspage.h>
#include <ui/billspreview.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>

#include <memory>

using Payer = SampleAccount::Payer;

/// Billing with hostile names, addresses and numbers: the bill is made without reading or fetching
/// anything, says what it has to, and the page stays usable.
class TestHostileBills : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Canary> m_canary;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<BillingDatabase> m_billing;
    std::unique_ptr<BillsPage> m_page;

    template<class Type>
    Type *child(const char *name) const
    {
        return m_page->findChild<Type *>(QLatin1String(name));
    }

    BillingAccount hostileAccount(Payer payer, const QString &hostile)
    {
        const bool legal = payer == Payer::Legal;
        BillingAccount account =
            m_billing
                ->account(payer, legal ? SampleNumber::LEGAL_ONE_DOCUMENT : SampleNumber::ORDINARY)
                .value_or(BillingAccount());
        account.number = legal ? SampleNumber::LEGAL_UNKNOWN : SampleNumber::UNKNOWN;
        account.fio = hostile;
        account.address = hostile;
        for (BillingServiceLine &service : account.services)
            service.name = hostile;
        for (BillingMeter &meter : account.meters)
            meter.name = hostile;
        for (BillingDocument &document : account.documents) {
            document.number = hostile;
            for (BillingServiceLine &service : document.services)
                service.name = hostile;
        }
        return account;
    }

private slots:
    void init()
    {
        m_canary = std::make_unique<Canary>();
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
        QVERIFY2(m_canary->untouched(), qPrintable(m_canary->report()));
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void pageStaysUsable_data()
    {
        QTest::addColumn<int>("payer");
        QTest::addColumn<QString>("text");
        QVector<HostileTexts::Named> texts = HostileTexts::all();
        texts.append({"the place of the code", BillHtml::codePlace()});
        texts.append({"a way out of the folder", QStringLiteral("../../..\\x:|?*\"<>")});
        texts.append({"special blanks", QStringLiteral("ул.\u00a0Садовая,\u202f1")});
        for (const HostileTexts::Named &text : qAsConst(texts)) {
            for (const Payer payer : {Payer::Individual, Payer::Legal})
                QTest::addRow("%s, %s", text.first, payer == Payer::Legal ? "legal" : "individual")
                    << int(payer) << text.second;
        }
    }

    void pageStaysUsable()
    {
        QFETCH(int, payer);
        QFETCH(QString, text);
        const QString hostile = HostileTexts::pointingAt(*m_canary, text);
        const BillingAccount account = hostileAccount(Payer(payer), hostile);
        QVERIFY2(m_billing->saveAccount(account), qPrintable(m_billing->lastError()));
        const auto stored = m_billing->account(Payer(payer), account.number);
        QVERIFY(stored);
        auto *accounts = child<QComboBox>("cbBillAccount");
        accounts->setCurrentIndex(accounts->findData(account.number));
        m_page->grab();
        QCOMPARE(m_page->size(), QSize(1000, 640));

        const QImage picture = child<BillsPreview>("saBillPreview")->picture();
        QVERIFY(!picture.isNull());
        QVERIFY2(picture.height() < 4 * picture.width(),
                 qPrintable(QString::number(picture.height())));
        const auto *documents = child<QComboBox>("cbBillDocument");
        for (int i = 0; i < documents->count(); ++i) {
            QVERIFY(documents->itemText(i).size() < 300);
            QCOMPARE(documents->itemData(i).toString(), stored->documents.at(i).number);
        }
        const auto *problems = child<QLabel>("lBillProblems");
        QCOMPARE(problems->textFormat(), Qt::PlainText);
        QVERIFY(problems->text().size() < 1000);

        const QVector<CodeReader::Code> codes = CodeReader::read(picture);
        QCOMPARE(codes.isEmpty(), m_page->code().isEmpty());
        QCOMPARE(child<QPushButton>("pbBillSave")->isEnabled(), !codes.isEmpty());
        if (codes.isEmpty()) {
            QVERIFY(problems->isVisible());
        } else {
            QCOMPARE(codes.constFirst().bytes, m_page->code());
            QTest::mouseClick(child<QPushButton>("pbBillCopy"), Qt::LeftButton);
            QCOMPARE(QApplication::clipboard()->text().toUtf8(), m_page->code());
            ModalAnswers answers;
            QString offered;
            answers.run([&offered](QDialog *dialog) {
                offered = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text();
                QTest::keyClick(dialog, Qt::Key_Escape);
            });
            QTest::mouseClick(child<QPushButton>("pbBillSave"), Qt::LeftButton);
            QCOMPARE(answers.problems(), QStringList());
            QCOMPARE(QFileInfo(offered).fileName(), offered);
            QVERIFY2(offered.toUtf8().size() < 256, qPrintable(offered));
        }
        accounts->setCurrentIndex(accounts->findData(QString(SampleNumber::ORDINARY)));
        QVERIFY(!problems->isVisible());
        QVERIFY(!m_page->code().isEmpty());
    }

    void everyTextStandsOnTheBillOnce()
    {
        const QString hostile = QStringLiteral("%1 %2 %4 <b>") + BillHtml::codePlace();
        Bill::Wish wish;
        wish.period = QDate(2026, 10, 1);
        const Bill bill = Bill::forPerson(hostileAccount(Payer::Individual, hostile), wish);
        const QString html = BillHtml::html(bill);
        QCOMPARE(html.count(BillHtml::codePlace()), 1);
        QTextDocument document;
        document.setHtml(html);
        const int places = 2 + bill.lines().size() + bill.meters().size();
        QCOMPARE(document.toPlainText().count(QStringLiteral("%1 %2 %4 <b>")), places);
    }
};

QTEST_MAIN(TestHostileBills)
#include "tst_hostilebills.moc"
