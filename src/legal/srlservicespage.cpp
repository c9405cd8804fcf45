#include "srlservicespage.h"

#include "srdocumentsmodel.h"
#include "srfiscalreadiness.h"
#include "srlsumitemdelegate.h"
#include "srmessagebox.h"
#include "srpagetransfer.h"
#include "srtablecolumns.h"
#include "srwizardcontext.h"
#include "srwizardheader.h"

#include <QDebug>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

SrLServicesPage::SrLServicesPage(QWizard *wizard)
    : QWizardPage(wizard), m_wizard(wizard), m_documents(new SRDocumentsModel(this))
{
    buildForm();
    srSetTableModel(m_table, m_documents);
    srPrepareTable(m_table);
    // No cell is ever editable, so these editors do not open: amounts change only through ticks and
    // the button.
    for (const int column : {SRDocumentsModel::ChargeColumn, SRDocumentsModel::ToPayColumn,
                             SRDocumentsModel::DistributedColumn})
        m_table->setItemDelegateForColumn(column, new SrLSumItemDelegate(m_table));

    connect(m_documents, &SRDocumentsModel::valueChanged, this, &SrLServicesPage::completeChanged);
    // The model announces a tick by valueChanged() alone; box, subtotal, services and total all
    // have to follow at once.
    connect(m_documents, &SRDocumentsModel::valueChanged, m_table->viewport(),
            QOverload<>::of(&QWidget::update));
    connect(m_byDebt, &QPushButton::released, m_documents, &SRDocumentsModel::calcByDebt);
}

void SrLServicesPage::buildForm()
{
    setObjectName(QStringLiteral("SrLServicesPage"));
    resize(855, 532);
    setWindowTitle(tr("WizardPage"));

    auto *services = new QGroupBox(tr("Услуги"), this);
    services->setObjectName(QStringLiteral("gbServices"));

    auto *pageLayout = new QHBoxLayout(this);
    pageLayout->setObjectName(QStringLiteral("horizontalLayout_2"));
    pageLayout->setContentsMargins(3, 3, 3, 3);
    pageLayout->addWidget(services);

    m_byDebt = new QPushButton(tr("Распределить по сумме долга"), services);
    m_byDebt->setObjectName(QStringLiteral("pbByDebt"));
    m_table = new QTableView(services);
    m_table->setObjectName(QStringLiteral("tvServices"));

    auto *groupLayout = new QVBoxLayout(services);
    groupLayout->setObjectName(QStringLiteral("verticalLayout"));
    auto *buttons = new QHBoxLayout;
    buttons->setObjectName(QStringLiteral("horizontalLayout"));
    buttons->addSpacerItem(new QSpacerItem(40, 20, QSizePolicy::Expanding));
    buttons->addWidget(m_byDebt);
    groupLayout->addLayout(buttons);
    groupLayout->addWidget(m_table);
}

void SrLServicesPage::initializePage()
{
    m_account = srAccountOfPreviousPage(m_wizard).dynamicCast<SrLegalAccount>();
    const SrLegalAccount account = m_account ? *m_account : SrLegalAccount();
    m_documents->setDocuments(account.documents(), account.charge(), account.debt());
    srShowPayer(this, account.fio(), account.address());
    srFitColumnsButLast(m_table);
}

bool SrLServicesPage::isComplete() const
{
    const bool base = QWizardPage::isComplete();
    const bool documents = m_documents->isReady();
    qWarning() << Q_FUNC_INFO << base << documents;
    return base && documents;
}

bool SrLServicesPage::validatePage()
{
    const QString obstacle =
        SrFiscalReadiness::obstacle(SrWizardContext::of(m_wizard).fiscalRegister, this);
    if (!obstacle.isEmpty())
        showMsg(MsgError, obstacle);
    return obstacle.isEmpty();
}

QString SrLServicesPage::preview() const
{
    return {};
}

QSharedPointer<SRAccount> SrLServicesPage::outputData() const
{
    if (!m_account)
        return {};
    const auto account = m_account->clone().staticCast<SrLegalAccount>();
    account->setDocuments(m_documents->documents());
    return account;
}

void SrLServicesPage::showMsg(ISrIWizardPage::MsgType type, const QString &text)
{
    SrMessageBox::show(this, SrWizardContext::of(m_wizard).checkName(), type, text);
}
