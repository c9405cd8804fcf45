#include "individual/sripaymentpage.h"

#include "sampleproviders.h"
#include "testrecords.h"
#include "wizardbench.h"

#include <molvacore/cardchargelog.h>
#include <molvacore/onlinekktprofilemanager.h>
#include <molvacore/paypack.h>

#include <QCheckBox>
#include <QDateTime>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using TestRecords::service;

namespace {

const QString notSaved = QStringLiteral("Ошибка сохранения платежа");
const QString sentOn = QStringLiteral("Платеж отправлен на проведение");
const QString noProfile = QStringLiteral("Не настроен профиль онлайн касс на agent.molva.example");

QSharedPointer<SRAccount> owing(WizardBench::Kind kind, const QString &amount)
{
    const QList<SrService> services{service(QStringLiteral("Вода"), amount, amount, amount)};
    if (kind == WizardBench::Individual)
        return TestRecords::personalAccount(services);
    return TestRecords::legalAccount(
        {TestRecords::document(QStringLiteral("Д-1"), amount, amount, services)});
}

/// "c" or "m" and the sum of every operation: card, cash.
QString operations(const PayPack &pack)
{
    QStringList list;
    for (const PayPackOperation &operation : pack.operations())
        list << (operation.moneyType() == MoneyType::Card ? QStringLiteral("card ")
                                                          : QStringLiteral("cash "))
                + operation.sum().toString();
    return list.join(QLatin1String(", "));
}

} // namespace

/// Finish: receipt, pay pack, message to the bus, and what becomes of the page when one of them
/// fails.
class TestSrIPaymentPageFinish : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void wholePayment_data();
    void wholePayment();
    void everyStepInItsOrder();
    void documentNumberIsTimeAndAccount();
    void cardComesBeforeCash_data();
    void cardComesBeforeCash();
    void registerDataOfTheProvider();
    void powerOfAttorneyOnlyForLegalEntities_data();
    void powerOfAttorneyOnlyForLegalEntities();
    void wizardIsDisabledUntilTheReceiptIsPrinted();

    void withoutAnAccountTheWizardStaysDisabled();
    void withoutAProfileTheWizardStaysDisabled_data();
    void withoutAProfileTheWizardStaysDisabled();

    void notPrinted_data();
    void notPrinted();
    void notPrintedIsTriedAnew();
    void anotherAttemptKeepsTheNumberOfItsReceipt_data();
    void anotherAttemptKeepsTheNumberOfItsReceipt();
    void notPrintedBehindACardCharge();
    void registerThatIsGone();

    void notSavedIsSavedByTheNextFinish();
    void notSavedLocksThePage();
    void withoutAController();
    void notHandedOnAtOnce();
    void handOnRefused();

    void nextPaymentInTheSameWizard();
    void wizardDestroyedBehindTheMessages_data();
    void wizardDestroyedBehindTheMessages();

private:
    void open(WizardBench::Kind kind, const QString &amount,
              HostDatabase::Parts leftOut = HostDatabase::Parts());
    bool finish() const { return m_bench->paymentPage()->validatePage(); }
    /// "title|text" of every box so far.
    QStringList boxes() const;
    bool enabled(QWizard::WizardButton which) const { return m_bench->button(which)->isEnabled(); }

    std::unique_ptr<WizardBench> m_bench;
};

void TestSrIPaymentPageFinish::open(WizardBench::Kind kind, const QString &amount,
                                    HostDatabase::Parts leftOut)
{
    CardChargeLog::clear();
    m_bench = std::make_unique<WizardBench>(kind, leftOut, 1);
    m_bench->openPayment(owing(kind, amount));
}

void TestSrIPaymentPageFinish::cleanup()
{
    const QString leftovers = m_bench->leftovers({QStringLiteral("SrIPaymentPage::")});
    m_bench.reset();
    QCOMPARE(leftovers, QString());
}

QStringList TestSrIPaymentPageFinish::boxes() const
{
    QStringList list;
    for (const ModalAnswers::Seen &seen : m_bench->answers.seen())
        list << seen.title + QLatin1Char('|') + seen.text;
    return list;
}

void TestSrIPaymentPageFinish::wholePayment_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("account");
    QTest::newRow("individual") << int(WizardBench::Individual)
                                << QStringLiteral("Вода ФЛ|") + sentOn << QStringLiteral("4455");
    QTest::newRow("legal entity") << int(WizardBench::Legal) << QStringLiteral("Вода ЮЛ|") + sentOn
                                  << QStringLiteral("77/1");
}

void TestSrIPaymentPageFinish::wholePayment()
{
    QFETCH(int, kind);
    QFETCH(QString, box);
    QFETCH(QString, account);
    open(WizardBench::Kind(kind), QStringLiteral("100.00"));
    QSignalSpy accepted(m_bench->wizard(), &QDialog::accepted);
    m_bench->answers.ok();
    QTest::mouseClick(m_bench->button(QWizard::FinishButton), Qt::LeftButton);

    QCOMPARE(accepted.count(), 1);
    QCOMPARE(boxes(), QStringList{box});
    QCOMPARE(m_bench->answers.seen().first().icon, QMessageBox::Information);

    QCOMPARE(m_bench->fiscalRegister->receipts.size(), 1);
    const QVariantMap document = m_bench->fiscalRegister->receipts.first().document;
    QCOMPARE(document.value(QStringLiteral("1020")).toLongLong(), 10000);
    QCOMPARE(document.value(QStringLiteral("1031")).toLongLong(), 10000);
    QCOMPARE(document.value(QStringLiteral("1081")).toLongLong(), 0);
    QCOMPARE(document.value(QStringLiteral("electronic")).toBool(), false);
    QVERIFY(document.contains(QStringLiteral("printable")));

    QCOMPARE(m_bench->pays->packs.size(), 1);
    const PayPack pack = m_bench->pays->packs.first();
    QCOMPARE(m_bench->pays->complete, QVector<bool>{true});
    QCOMPARE(m_bench->pays->handedOn, QVector<qint64>{pack.id()});
    QCOMPARE(operations(pack), QStringLiteral("cash 100.00"));
    QCOMPARE(pack.payments().size(), 1);
    QCOMPARE(pack.payments().first().account(), account);
    QCOMPARE(pack.payments().first().summ().toString(), QStringLiteral("100.00"));
    QCOMPARE(pack.payments().first().currencyId(), qint64(643));
    QCOMPARE(pack.fiscDocument(), document);
    QCOMPARE(pack.fiscProps().size(), 1);
    QCOMPARE(pack.fiscProps().first().toMap().value(QStringLiteral("value")).toString(),
             m_bench->fiscalRegister->qrText);
    QCOMPARE(pack.fiscData(), (QVariantMap{{QStringLiteral("number"), 7}}));

    QCOMPARE(m_bench->pays->taken.size(), 1);
    QCOMPARE(m_bench->pays->taken.first().value(QStringLiteral("data")),
             QVariant(pack.fiscData())); // what the register answered
    QCOMPARE(m_bench->sent().size(), 1);
    QCOMPARE(m_bench->sent().first().destination, QStringLiteral("/app/add_pay_pack"));
    QCOMPARE(m_bench->sent().first().data.toMap(), m_bench->pays->message);
    QCOMPARE(m_bench->sent().first().data.userType(), int(QMetaType::QVariantMap));
}

void TestSrIPaymentPageFinish::everyStepInItsOrder()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    QStringList order;
    m_bench->fiscalRegister->whilePrinting = [&] {
        order << QStringLiteral("print %1").arg(m_bench->pays->packs.size());
    };
    m_bench->pays->whileSaving = [&] {
        order << QStringLiteral("save %1").arg(m_bench->pays->handedOn.size());
        order << QStringLiteral("sent %1").arg(m_bench->sent().size());
    };
    m_bench->answers.run([&](QDialog *box) {
        order << QStringLiteral("box %1 %2")
                     .arg(m_bench->pays->handedOn.size())
                     .arg(m_bench->sent().size());
        box->accept();
    });
    QVERIFY(finish());
    QCOMPARE(order,
             QStringList({QStringLiteral("print 0"), QStringLiteral("save 0"),
                          QStringLiteral("sent 0"), QStringLiteral("box 1 1")}));
    // The pack as it was saved is in the log, since the log is what is left when the database is
    // not.
    const QString id = QString::number(m_bench->pays->packs.first().id());
    QCOMPARE(m_bench->log.containing(QtWarningMsg, id).size(), 1);
}

void TestSrIPaymentPageFinish::documentNumberIsTimeAndAccount()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->answers.ok();
    const qint64 before = QDateTime::currentSecsSinceEpoch();
    QVERIFY(finish());
    const QString number = m_bench->fiscalRegister->receipts.first().number;
    QVERIFY2(number.endsWith(QStringLiteral("4455")), qPrintable(number));
    const qint64 seconds = number.left(number.size() - 4).toLongLong();
    QVERIFY2(seconds >= before && seconds <= QDateTime::currentSecsSinceEpoch(),
             qPrintable(number));
}

void TestSrIPaymentPageFinish::cardComesBeforeCash_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("amount");
    QTest::addColumn<double>("card");
    QTest::addColumn<int>("cashKopecks");
    QTest::addColumn<int>("cardKopecks");
    QTest::addColumn<QString>("operations");
    for (const int kind : {WizardBench::Individual, WizardBench::Legal}) {
        const auto row = [kind](const char *name) -> QTestData & {
            return QTest::newRow(
                       (QByteArray(kind == WizardBench::Individual ? "individual, " : "legal, ")
                        + name)
                           .constData())
                << kind;
        };
        row("all in cash") << QStringLiteral("100.00") << 0.0 << 10000 << 0
                           << QStringLiteral("cash 100.00");
        row("both") << QStringLiteral("100.00") << 30.25 << 6975 << 3025
                    << QStringLiteral("card 30.25, cash 69.75");
        row("all by card") << QStringLiteral("100.00") << 100.0 << 0 << 10000
                           << QStringLiteral("card 100.00");
        // One hundredth is no operation and no payment of its own; the receipt's total still has
        // it.
        row("one hundredth by card")
            << QStringLiteral("100.00") << 0.01 << 10000 << 0 << QStringLiteral("cash 99.99");
        row("one hundredth in cash")
            << QStringLiteral("100.00") << 99.99 << 1 << 9999 << QStringLiteral("card 99.99");
        row("two hundredths by card") << QStringLiteral("100.00") << 0.02 << 9998 << 2
                                      << QStringLiteral("card 0.02, cash 99.98");
        row("one hundredth in all") << QStringLiteral("0.01") << 0.0 << 1 << 0 << QString();
    }
}

void TestSrIPaymentPageFinish::cardComesBeforeCash()
{
    QFETCH(int, kind);
    QFETCH(QString, amount);
    QFETCH(double, card);
    QFETCH(int, cashKopecks);
    QFETCH(int, cardKopecks);
    QFETCH(QString, operations);
    open(WizardBench::Kind(kind), amount);
    m_bench->child<QDoubleSpinBox>("dsbCard")->setValue(card);
    m_bench->answers.ok();
    QVERIFY(finish());
    const QVariantMap document = m_bench->fiscalRegister->receipts.first().document;
    QCOMPARE(document.value(QStringLiteral("1031")).toInt(), cashKopecks);
    QCOMPARE(document.value(QStringLiteral("1081")).toInt(), cardKopecks);
    QCOMPARE(::operations(m_bench->pays->packs.first()), operations);
}

void TestSrIPaymentPageFinish::registerDataOfTheProvider()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    const Provider provider = SampleProviders::individuals();
    OnlineKkmProfile profile = HostDatabase::registerProfile();
    OnlineKkmInfo info = profile.defaultKkmInfo();
    info.setTaxRate(1);
    profile.setGroupKkmInfo(provider.groupId(), info);
    info.setTaxRate(2);
    profile.setProviderKkmInfo(provider.id(), info);
    // Decoys for ids in each other's place.
    info.setTaxRate(3);
    profile.setGroupKkmInfo(provider.id(), info);
    info.setTaxRate(4);
    profile.setProviderKkmInfo(provider.groupId(), info);
    QVERIFY(OnlineKktProfileManager(basix::BaseSqliteDbConnector::SharedConnection, nullptr)
                .setCurrentProfile(profile));
    m_bench->answers.ok();
    QVERIFY(finish());
    const QVariantMap line = m_bench->fiscalRegister->receipts.first()
                                 .document.value(QStringLiteral("1059"))
                                 .toList()
                                 .first()
                                 .toMap();
    QCOMPARE(line.value(QStringLiteral("1199")).toInt(), 2);
}

void TestSrIPaymentPageFinish::powerOfAttorneyOnlyForLegalEntities_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("ticked");
    QTest::addColumn<QString>("buyer");
    QTest::newRow("legal entity, ticked")
        << int(WizardBench::Legal) << true << QStringLiteral("ООО «Ручей»");
    QTest::newRow("legal entity, not ticked") << int(WizardBench::Legal) << false << QString();
    QTest::newRow("individual, hidden box ticked")
        << int(WizardBench::Individual) << true << QString();
}

void TestSrIPaymentPageFinish::powerOfAttorneyOnlyForLegalEntities()
{
    QFETCH(int, kind);
    QFETCH(bool, ticked);
    QFETCH(QString, buyer);
    open(WizardBench::Kind(kind), QStringLiteral("100.00"));
    m_bench->child<QCheckBox>("cbAttornayDoc")->setChecked(ticked);
    m_bench->answers.ok();
    QVERIFY(finish());
    const QVariantMap document = m_bench->fiscalRegister->receipts.first().document;
    QCOMPARE(document.value(QStringLiteral("1227")).toString(), buyer);
    QCOMPARE(document.contains(QStringLiteral("1228")), !buyer.isEmpty());
}

void TestSrIPaymentPageFinish::wizardIsDisabledUntilTheReceiptIsPrinted()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    bool whilePrinting = true;
    bool whileSaving = false;
    m_bench->fiscalRegister->whilePrinting = [&] {
        whilePrinting = m_bench->wizard()->isEnabled();
    };
    m_bench->pays->whileSaving = [&] { whileSaving = m_bench->wizard()->isEnabled(); };
    m_bench->answers.ok();
    QVERIFY(finish());
    QCOMPARE(whilePrinting, false);
    QCOMPARE(whileSaving, true);
    QVERIFY(m_bench->wizard()->isEnabled());
}

void TestSrIPaymentPageFinish::withoutAnAccountTheWizardStaysDisabled()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->wizard()->back();
    m_bench->openPayment({});
    QVERIFY(!finish());
    QVERIFY(!m_bench->wizard()->isEnabled());
    QVERIFY(boxes().isEmpty());
    QVERIFY(m_bench->fiscalRegister->receipts.isEmpty());
    QVERIFY(m_bench->pays->packs.isEmpty());
}

void TestSrIPaymentPageFinish::withoutAProfileTheWizardStaysDisabled_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("title");
    QTest::newRow("individual") << int(WizardBench::Individual) << QStringLiteral("Ошибка Вода ФЛ");
    QTest::newRow("legal entity") << int(WizardBench::Legal) << QStringLiteral("Ошибка Вода ЮЛ");
}

void TestSrIPaymentPageFinish::withoutAProfileTheWizardStaysDisabled()
{
    QFETCH(int, kind);
    QFETCH(QString, title);
    open(WizardBench::Kind(kind), QStringLiteral("100.00"), HostDatabase::RegisterProfile);
    m_bench->answers.ok();
    QTest::mouseClick(m_bench->button(QWizard::FinishButton), Qt::LeftButton);
    QCOMPARE(boxes(), QStringList{title + QLatin1Char('|') + noProfile});
    // The box of a disabled wizard can be answered.
    QVERIFY(m_bench->answers.seen().first().enabled);
    QCOMPARE(m_bench->answers.seen().first().icon, QMessageBox::Critical);
    QVERIFY(m_bench->wizard()->isVisible());
    QVERIFY(!m_bench->wizard()->isEnabled());
    QVERIFY(m_bench->fiscalRegister->receipts.isEmpty());
    QVERIFY(m_bench->pays->packs.isEmpty());
    QVERIFY(m_bench->sent().isEmpty());
}

void TestSrIPaymentPageFinish::notPrinted_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("title");
    QTest::newRow("individual") << int(WizardBench::Individual)
                                << QStringLiteral("Ошибка Вода ФЛ|");
    QTest::newRow("legal entity") << int(WizardBench::Legal) << QStringLiteral("Ошибка Вода ЮЛ|");
}

void TestSrIPaymentPageFinish::notPrinted()
{
    QFETCH(int, kind);
    QFETCH(QString, title);
    open(WizardBench::Kind(kind), QStringLiteral("100.00"));
    m_bench->fiscalRegister->printError = QStringLiteral("Нет бумаги");
    QVector<bool> enabledBehindABox;
    for (int box = 0; box < 2; ++box)
        m_bench->answers.run([&](QDialog *dialog) {
            enabledBehindABox << m_bench->wizard()->isEnabled();
            dialog->accept();
        });
    m_bench->log.clear();
    m_bench->button(QWizard::FinishButton)->setFocus();
    QTest::keyClick(m_bench->button(QWizard::FinishButton), Qt::Key_Space);

    QCOMPARE(boxes(), QStringList({title + QStringLiteral("Нет бумаги"), title + notSaved}));
    for (const ModalAnswers::Seen &seen : m_bench->answers.seen())
        QCOMPARE(seen.icon, QMessageBox::Critical);
    const auto logged =
        m_bench->log.containing(QtWarningMsg, QStringLiteral("SrIPaymentPage::print"));
    QCOMPARE(logged.size(), 1);
    QVERIFY(logged.first().text.contains(QStringLiteral("1059")));
    QVERIFY(m_bench->wizard()->isVisible());
    QVERIFY(m_bench->wizard()->isEnabled());
    QCOMPARE(enabledBehindABox, QVector<bool>({true, true}));
    // The next key tries again.
    QCOMPARE(m_bench->wizard()->focusWidget(), m_bench->button(QWizard::FinishButton));
    QVERIFY(enabled(QWizard::BackButton) && enabled(QWizard::CancelButton)
            && enabled(QWizard::FinishButton));
    QVERIFY(m_bench->pays->packs.isEmpty());
    QVERIFY(m_bench->sent().isEmpty());
}

void TestSrIPaymentPageFinish::notPrintedIsTriedAnew()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->fiscalRegister->printError = QStringLiteral("Нет бумаги");
    m_bench->answers.ok().ok().ok();
    QVERIFY(!finish());
    m_bench->fiscalRegister->printError.clear();
    // The cashier may divide the amount anew, since nothing was printed.
    m_bench->child<QDoubleSpinBox>("dsbCard")->setValue(25.0);
    QVERIFY(finish());
    QCOMPARE(m_bench->fiscalRegister->receipts.size(), 2);
    QCOMPARE(m_bench->pays->packs.size(), 1);
    QCOMPARE(operations(m_bench->pays->packs.first()), QStringLiteral("card 25.00, cash 75.00"));
}

void TestSrIPaymentPageFinish::anotherAttemptKeepsTheNumberOfItsReceipt_data()
{
    QTest::addColumn<double>("card");
    QTest::addColumn<bool>("same");
    QTest::newRow("the same receipt") << 0.0 << true;
    QTest::newRow("divided anew") << 25.0 << false;
}

/// A register that printed and whose answer was lost knows the receipt again by its number.
void TestSrIPaymentPageFinish::anotherAttemptKeepsTheNumberOfItsReceipt()
{
    QFETCH(const double, card);
    QFETCH(const bool, same);
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->fiscalRegister->printError = QStringLiteral("Нет связи");
    m_bench->answers.ok().ok().ok();
    QVERIFY(!finish());
    const qint64 first = QDateTime::currentSecsSinceEpoch();
    QTRY_VERIFY(QDateTime::currentSecsSinceEpoch() > first); // numbers are made of seconds
    m_bench->fiscalRegister->printError.clear();
    m_bench->child<QDoubleSpinBox>("dsbCard")->setValue(card);
    QVERIFY(finish());
    QCOMPARE(m_bench->fiscalRegister->receipts.size(), 2);
    const bool kept = m_bench->fiscalRegister->receipts.first().number
        == m_bench->fiscalRegister->receipts.last().number;
    QCOMPARE(kept, same);
}

void TestSrIPaymentPageFinish::notPrintedBehindACardCharge()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->fiscalRegister->printError = QStringLiteral("Нет бумаги");
    m_bench->answers.enter(QStringLiteral("40.00")).ok().ok().ok();
    m_bench->paymentPage()->payByCard();
    QVERIFY(!finish());
    QVERIFY(!enabled(QWizard::BackButton) && !enabled(QWizard::CancelButton)
            && enabled(QWizard::FinishButton));
    QCOMPARE(m_bench->child<QDoubleSpinBox>("dsbCard")->value(), 40.0);
    QVERIFY(!m_bench->child<QDoubleSpinBox>("dsbCard")->isEnabled());
    QVERIFY(!m_bench->child<QPushButton>("pbCard")->isEnabled());
    m_bench->fiscalRegister->printError.clear();
    QVERIFY(finish());
    QCOMPARE(CardChargeLog::charges().size(), 1);
    QCOMPARE(operations(m_bench->pays->packs.first()), QStringLiteral("card 40.00, cash 60.00"));
}

void TestSrIPaymentPageFinish::registerThatIsGone()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->fiscalRegister.reset();
    m_bench->answers.ok().ok();
    QVERIFY(!finish());
    QCOMPARE(boxes(),
             QStringList({QStringLiteral("Ошибка Вода ФЛ|ККТ не доступна"),
                          QStringLiteral("Ошибка Вода ФЛ|") + notSaved}));
    QVERIFY(m_bench->wizard()->isEnabled());
    QVERIFY(m_bench->pays->packs.isEmpty());
}

void TestSrIPaymentPageFinish::notSavedIsSavedByTheNextFinish()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->pays->saves = false;
    m_bench->answers.ok().ok().ok();
    QVERIFY(!finish());
    QVERIFY(m_bench->wizard()->isEnabled());
    QVERIFY(!finish());
    QVERIFY(m_bench->wizard()->isEnabled());
    QCOMPARE(boxes(),
             QStringList({QStringLiteral("Ошибка Вода ФЛ|") + notSaved,
                          QStringLiteral("Ошибка Вода ФЛ|") + notSaved}));
    QVERIFY(m_bench->pays->handedOn.isEmpty());
    QVERIFY(m_bench->sent().isEmpty());
    m_bench->pays->saves = true;
    QVERIFY(finish());
    QCOMPARE(m_bench->fiscalRegister->receipts.size(), 1);
    QCOMPARE(m_bench->pays->packs.size(), 3);
    QCOMPARE(m_bench->pays->packs.at(1), m_bench->pays->packs.first());
    QCOMPARE(m_bench->pays->packs.at(2), m_bench->pays->packs.first());
    QCOMPARE(m_bench->sent().size(), 1);
}

void TestSrIPaymentPageFinish::notSavedLocksThePage()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->pays->saves = false;
    m_bench->answers.ok();
    QTest::mouseClick(m_bench->button(QWizard::FinishButton), Qt::LeftButton);
    QVERIFY(m_bench->wizard()->isVisible());
    QVERIFY(m_bench->wizard()->isEnabled());
    QVERIFY(!enabled(QWizard::BackButton));
    QVERIFY(!enabled(QWizard::CancelButton));
    QVERIFY(enabled(QWizard::FinishButton));
    QTest::keyClick(m_bench->wizard(), Qt::Key_Escape);
    QVERIFY(m_bench->wizard()->isVisible());
    // What the receipt says can no longer be changed.
    QVERIFY(!m_bench->child<QGroupBox>("groupBox_2")->isEnabled());
    emit m_bench->paymentPage()->completeChanged();
    QVERIFY(!enabled(QWizard::BackButton) && !enabled(QWizard::CancelButton));
}

void TestSrIPaymentPageFinish::withoutAController()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->setController({});
    m_bench->answers.ok().ok();
    QVERIFY(!finish());
    QCOMPARE(boxes(), QStringList{QStringLiteral("Ошибка Вода ФЛ|") + notSaved});
    m_bench->setController(QSharedPointer<FakePaysController>::create(m_bench->pays));
    QVERIFY(finish());
    QCOMPARE(m_bench->fiscalRegister->receipts.size(), 1);
    QCOMPARE(m_bench->pays->packs.size(), 1);
}

void TestSrIPaymentPageFinish::notHandedOnAtOnce()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->pays->atOnce = false;
    m_bench->answers.ok();
    QVERIFY(finish());
    QVERIFY(m_bench->pays->handedOn.isEmpty());
    QVERIFY(m_bench->sent().isEmpty());
    QCOMPARE(boxes(), QStringList{QStringLiteral("Вода ФЛ|") + sentOn});
}

void TestSrIPaymentPageFinish::handOnRefused()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->pays->handsOn = false;
    m_bench->answers.ok();
    QVERIFY(finish());
    QCOMPARE(m_bench->pays->handedOn.size(), 1);
    QVERIFY(m_bench->sent().isEmpty());
    QCOMPARE(boxes(), QStringList{QStringLiteral("Вода ФЛ|") + sentOn});
    QCOMPARE(m_bench->log.containing(QtWarningMsg, m_bench->pays->handOnError).size(), 1);
}

void TestSrIPaymentPageFinish::nextPaymentInTheSameWizard()
{
    open(WizardBench::Individual, QStringLiteral("100.00"));
    m_bench->answers.ok().ok();
    QVERIFY(finish());
    m_bench->wizard()->restart();
    m_bench->openPayment(owing(WizardBench::Individual, QStringLiteral("70.00")));
    QVERIFY(finish());
    QCOMPARE(m_bench->fiscalRegister->receipts.size(), 2);
    QCOMPARE(m_bench->pays->packs.size(), 2);
    QCOMPARE(operations(m_bench->pays->packs.last()), QStringLiteral("cash 70.00"));
}

void TestSrIPaymentPageFinish::wizardDestroyedBehindTheMessages_data()
{
    QTest::addColumn<QString>("printError");
    QTest::addColumn<bool>("saves");
    QTest::addColumn<bool>("profile");
    QTest::addColumn<int>("answered");
    QTest::newRow("register's error") << QStringLiteral("Нет бумаги") << true << true << 0;
    QTest::newRow("second box of a failed receipt")
        << QStringLiteral("Нет бумаги") << true << true << 1;
    QTest::newRow("not saved") << QString() << false << true << 0;
    QTest::newRow("finished") << QString() << true << true << 0;
    QTest::newRow("no profile") << QString() << true << false << 0;
}

void TestSrIPaymentPageFinish::wizardDestroyedBehindTheMessages()
{
    QFETCH(QString, printError);
    QFETCH(bool, saves);
    QFETCH(bool, profile);
    QFETCH(int, answered);
    open(WizardBench::Individual, QStringLiteral("100.00"),
         profile ? HostDatabase::Parts() : HostDatabase::RegisterProfile);
    m_bench->fiscalRegister->printError = printError;
    m_bench->pays->saves = saves;
    for (int i = 0; i < answered; ++i)
        m_bench->answers.ok();
    m_bench->answers.run([this](QDialog *) { m_bench->destroyWizard(); });
    m_bench->wizard()->accept();
    QVERIFY(!m_bench->wizard());
    QCOMPARE(m_bench->answers.seen().size(), answered + 1);
}

QTEST_MAIN(TestSrIPaymentPageFinish)
#include "tst_sripaymentpagefinish.moc"
