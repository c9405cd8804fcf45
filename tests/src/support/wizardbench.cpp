#include "wizardbench.h"

#include "individual/selmarindividualwizard.h"
#include "individual/sripaymentpage.h"
#include "legal/selmarlegalwizard.h"
#include "sampleproviders.h"

#include <QTest>

namespace {

template<class Wizard>
std::unique_ptr<QWizard> filled(const Provider &provider, QVector<WizardBench::Sent> *sent)
{
    auto wizard = std::make_unique<Wizard>(QFont(), HostDatabase::box().currency(),
                                           basix::FixNumber(), nullptr);
    wizard->setProvider(provider);
    wizard->setComProfile(HostDatabase::commissionProfile());
    wizard->setPayCheckProfile(HostDatabase::receiptProfile());
    wizard->createPages(provider);
    wizard->setInfo(HostDatabase::box());
    QObject::connect(wizard.get(), &Wizard::sendMessage,
                     [sent](const QString &destination, const QVariant &data) {
                         sent->append({destination, data});
                     });
    return wizard;
}

} // namespace

WizardBench::WizardBench(Kind kind, HostDatabase::Parts leftOut, int cardTerminal,
                         const QString &cardOutcome)
    : database(leftOut),
      fiscalRegister(std::make_unique<FakeRegister>()),
      pays(QSharedPointer<FakePaysController::Record>::create()),
      m_first(new AccountPage)
{
    // The payment page reads the settings when it is made.
    database.setCardTerminal(cardTerminal, cardOutcome);
    m_wizard = kind == Individual
        ? filled<SelmarIndividualWizard>(SampleProviders::individuals(), &m_sent)
        : filled<SelmarLegalWizard>(SampleProviders::legalEntities(), &m_sent);
    QWizardPage *start = m_wizard->page(0);
    m_wizard->removePage(0);
    delete start;
    m_wizard->setPage(0, m_first);
    m_wizard->setStartId(0);
    setRegister(fiscalRegister.get());
    setController(QSharedPointer<FakePaysController>::create(pays));
}

WizardBench::~WizardBench() = default;

void WizardBench::setRegister(FrHandler *handler)
{
    if (auto *individual = qobject_cast<SelmarIndividualWizard *>(m_wizard.get()))
        individual->setFrHandler(handler);
    else if (auto *legal = qobject_cast<SelmarLegalWizard *>(m_wizard.get()))
        legal->setFr(handler);
}

void WizardBench::setController(const QSharedPointer<IPaysControllerWrapper> &controller)
{
    if (auto *individual = qobject_cast<SelmarIndividualWizard *>(m_wizard.get()))
        individual->setPcWrapper(controller);
    else if (auto *legal = qobject_cast<SelmarLegalWizard *>(m_wizard.get()))
        legal->setPcWrapper(controller);
}

SrIPaymentPage *WizardBench::paymentPage() const
{
    return qobject_cast<SrIPaymentPage *>(m_wizard->page(2));
}

void WizardBench::open(const QSharedPointer<SRAccount> &account, int next)
{
    m_first->account = account;
    m_first->next = next;
    if (!m_wizard->isVisible()) {
        m_wizard->show();
        QVERIFY(QTest::qWaitForWindowActive(m_wizard.get()));
    }
    m_wizard->next();
    QCOMPARE(m_wizard->currentId(), next);
}

void WizardBench::openServices(const QSharedPointer<SRAccount> &account)
{
    open(account, 1);
}

void WizardBench::openPayment(const QSharedPointer<SRAccount> &account)
{
    open(account, 2);
}

QString WizardBench::leftovers(const QStringList &expectedWarnings)
{
    m_wizard.reset();
    for (const QString &part : expectedWarnings)
        guard.expectWarning(part);
    return guard.problems().join(QLatin1Char('\n'));
}
