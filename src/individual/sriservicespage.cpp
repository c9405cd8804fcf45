#include "sriservicespage.h"

#include "selmarindividualwizard.h"
#include "srcounteritemdelegate.h"
#include "srcountersmodel.h"
#include "srfiscalreadiness.h"
#include "srmessagebox.h"
#include "srpagetransfer.h"
#include "srservicesmodel.h"
#include "srsumitemdelegate.h"
#include "srtablecolumns.h"
#include "srwizardcontext.h"
#include "srwizardheader.h"
#include "ui_sriservicespage.h"

#include <QDebug>

SrIServicesPage::SrIServicesPage(QWizard *wizard)
    : QWizardPage(wizard),
      m_wizard(wizard),
      m_ui(std::make_unique<Ui_SrIServicesPage>()),
      m_services(new SRServicesModel(this)),
      m_counters(new SrCountersModel(this))
{
    m_ui->setupUi(this);
    srSetTableModel(m_ui->tvServices, m_services);
    srSetTableModel(m_ui->tvCounters, m_counters);
    srPrepareTable(m_ui->tvServices);
    srPrepareTable(m_ui->tvCounters);

    // The table is never editable, so these editors do not open: amounts change only through the
    // two buttons.
    for (const int column : {SRServicesModel::ChargeColumn, SRServicesModel::ToPayColumn,
                             SRServicesModel::DistributedColumn})
        m_ui->tvServices->setItemDelegateForColumn(column, new SrSumItemDelegate(m_ui->tvServices));
    for (const int column : {SrCountersModel::LastValueColumn, SrCountersModel::CurValueColumn})
        m_ui->tvCounters->setItemDelegateForColumn(column,
                                                   new SrCounterItemDelegate(m_ui->tvServices));

    connect(m_services, &SRServicesModel::valueChanged, this, &SrIServicesPage::completeChanged);
    connect(m_counters, &SrCountersModel::valueChanged, this, &SrIServicesPage::completeChanged);
    connect(m_ui->pbByCharge, &QPushButton::released, m_services, &SRServicesModel::calcByCharge);
    connect(m_ui->pbByDebt, &QPushButton::released, m_services, &SRServicesModel::calcByDebt);
    m_ui->pbByCharge->setVisible(qobject_cast<SelmarIndividualWizard *>(m_wizard) != nullptr);
}

SrIServicesPage::~SrIServicesPage() = default;

void SrIServicesPage::initializePage()
{
    m_account = srAccountOfPreviousPage(m_wizard).dynamicCast<SrPersonalAccount>();
    const SrPersonalAccount account = m_account ? *m_account : SrPersonalAccount();
    m_services->setServices(account.services(), account.charge(), account.debt());
    m_counters->setCounters(account.counters());
    srShowPayer(this, account.fio(), account.address());
    srFitColumnsButLast(m_ui->tvServices);
    srFitColumnsButLast(m_ui->tvCounters);
    m_ui->gbCounters->setVisible(!account.counters().isEmpty());
}

bool SrIServicesPage::isComplete() const
{
    const bool base = QWizardPage::isComplete();
    const bool services = m_services->isReady();
    const bool counters = m_counters->isReady();
    qWarning() << Q_FUNC_INFO << base << services << counters;
    return base && services && counters;
}

bool SrIServicesPage::validatePage()
{
    const QString obstacle =
        SrFiscalReadiness::obstacle(SrWizardContext::of(m_wizard).fiscalRegister, this);
    if (!obstacle.isEmpty())
        showMsg(MsgError, obstacle);
    return obstacle.isEmpty();
}

QString SrIServicesPage::preview() const
{
    return {};
}

QSharedPointer<SRAccount> SrIServicesPage::outputData() const
{
    if (!m_account)
        return {};
    const auto account = m_account->clone().staticCast<SrPersonalAccount>();
    account->setServices(m_services->services());
    account->setCounters(m_counters->counters());
    return account;
}

void SrIServicesPage::showMsg(ISrIWizardPage::MsgType type, const QString &text)
{
    SrMessageBox::show(this, SrWizardContext::of(m_wizard).checkName(), type, text);
}
