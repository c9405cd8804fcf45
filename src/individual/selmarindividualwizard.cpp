#include "selmarindividualwizard.h"

#include "sriservicespage.h"
#include "sristartpage.h"
#include "srwizardwiring.h"
#include "ui_selmarindividualwizard.h"

#include <QCloseEvent>
#include <QEvent>

SelmarIndividualWizard::SelmarIndividualWizard(const QFont &inputFont,
                                               const basix::Currency &currency,
                                               const basix::FixNumber &prepay, QWidget *parent)
    : QWizard(parent),
      m_form(std::make_unique<Ui::SelmarIndividualWizard>()),
      m_records(inputFont, currency, prepay)
{
}

SelmarIndividualWizard::~SelmarIndividualWizard() = default;

Payment SelmarIndividualWizard::payment() const
{
    return {};
}

bool SelmarIndividualWizard::immidiatlyPost() const
{
    return true;
}

qint64 SelmarIndividualWizard::providerId() const
{
    return m_records.providerId();
}

qint64 SelmarIndividualWizard::newProviderId() const
{
    return m_records.providerId();
}

bool SelmarIndividualWizard::needChangeProvider() const
{
    return false;
}

bool SelmarIndividualWizard::execute()
{
    return exec() == QDialog::Accepted;
}

bool SelmarIndividualWizard::setTemplatesConnection(QObject *object, const char *member)
{
    SrHostWiring::connectToHost(this, SIGNAL(savePaymentAsTemplate(Payment)), object, member);
    return true;
}

bool SelmarIndividualWizard::setMessageReciever(QObject *object, const char *signal)
{
    return SrHostWiring::connectFromHost(object, signal, this,
                                         SIGNAL(incomingMessage(QVariantMap, QString)));
}

bool SelmarIndividualWizard::setMessageSender(QObject *object, const char *member)
{
    return SrHostWiring::connectToHost(this, SIGNAL(sendMessage(QString, QVariant)), object,
                                       member);
}

bool SelmarIndividualWizard::setPayStatusReciever(QObject *object, const char *signal)
{
    return SrHostWiring::connectFromHost(object, signal, this, SIGNAL(paymentStatus(QVariant)));
}

bool SelmarIndividualWizard::paymentIsSended() const
{
    return true;
}

void SelmarIndividualWizard::createPages(const Provider &provider)
{
    m_form->setupUi(this);
    srAddPages(this, new SrIStartPage(this), new SrIServicesPage(this), provider.checkName(),
               tr("Ввод данных абонента"), tr("Оплата услуг"));
}

void SelmarIndividualWizard::setParam(const QString &name, const ProviderParameter &parameter)
{
    const auto known = m_records.providerParams.find(name);
    if (known != m_records.providerParams.end())
        *known = parameter;
}

void SelmarIndividualWizard::setParamValue(const QString &name, const QString &value)
{
    const auto known = m_records.providerParams.find(name);
    if (known != m_records.providerParams.end())
        known->setValue(value);
}

void SelmarIndividualWizard::changeEvent(QEvent *event)
{
    QWizard::changeEvent(event);
    // The form's own title takes the place of the provider's name; hosts that switch languages rely
    // on it.
    if (event->type() == QEvent::LanguageChange)
        m_form->retranslateUi(this);
}

void SelmarIndividualWizard::closeEvent(QCloseEvent *event)
{
    QWizard::closeEvent(event);
}
