#include "selmarlegalwizard.h"

#include "srlservicespage.h"
#include "srlstartpage.h"
#include "srwizardwiring.h"
#include "ui_selmarlegalwizard.h"

#include <QCloseEvent>
#include <QEvent>

SelmarLegalWizard::SelmarLegalWizard(const QFont &inputFont, const basix::Currency &currency,
                                     const basix::FixNumber &prepay, QWidget *parent)
    : QWizard(parent),
      m_form(std::make_unique<Ui::SelmarLegalWizard>()),
      m_records(inputFont, currency, prepay)
{
}

SelmarLegalWizard::~SelmarLegalWizard() = default;

Payment SelmarLegalWizard::payment() const
{
    return {};
}

bool SelmarLegalWizard::immidiatlyPost() const
{
    return true;
}

qint64 SelmarLegalWizard::providerId() const
{
    return m_records.providerId();
}

qint64 SelmarLegalWizard::newProviderId() const
{
    return m_records.providerId();
}

bool SelmarLegalWizard::needChangeProvider() const
{
    return false;
}

bool SelmarLegalWizard::execute()
{
    return exec() == QDialog::Accepted;
}

bool SelmarLegalWizard::setTemplatesConnection(QObject *object, const char *member)
{
    SrHostWiring::connectToHost(this, SIGNAL(savePaymentAsTemplate(Payment)), object, member);
    return true;
}

bool SelmarLegalWizard::setMessageReciever(QObject *object, const char *signal)
{
    return SrHostWiring::connectFromHost(object, signal, this,
                                         SIGNAL(incomingMessage(QVariantMap, QString)));
}

bool SelmarLegalWizard::setMessageSender(QObject *object, const char *member)
{
    return SrHostWiring::connectToHost(this, SIGNAL(sendMessage(QString, QVariant)), object,
                                       member);
}

bool SelmarLegalWizard::setPayStatusReciever(QObject *object, const char *signal)
{
    return SrHostWiring::connectFromHost(object, signal, this, SIGNAL(paymentStatus(QVariant)));
}

bool SelmarLegalWizard::paymentIsSended() const
{
    return true;
}

void SelmarLegalWizard::createPages(const Provider &provider)
{
    m_form->setupUi(this);
    srAddPages(this, new SrLStartPage(this), new SrLServicesPage(this), provider.checkName(),
               tr("Ввод данных абонента"), tr("Оплата услуг"));
}

void SelmarLegalWizard::changeEvent(QEvent *event)
{
    QWizard::changeEvent(event);
    // The form's own title takes the place of the provider's name; hosts that switch languages rely
    // on it.
    if (event->type() == QEvent::LanguageChange)
        m_form->retranslateUi(this);
}

void SelmarLegalWizard::closeEvent(QCloseEvent *event)
{
    QWizard::closeEvent(event);
}
