#include "selmarrivenholdhandler.h"

#include "individual/selmarindividualwizard.h"
#include "legal/selmarlegalwizard.h"
#include "srmessagebox.h"
#include "srpluginbuild.h"

#include <molvacore/boxinfocontroller.h>
#include <molvacore/comissionsmanager.h>
#include <molvacore/dbconnector.h>
#include <molvacore/paycheckprofilemanager.h>

#include <QDebug>

namespace {

constexpr qint64 individualsProviderId = 18722;
constexpr qint64 legalEntitiesProviderId = 18723;

} // namespace

/// A macro, so that a line carries the file, line and function of the operation that leaves it.
#define SR_TRACE_MARK() qWarning("#_#")

const QString SelmarRivenholdHandler::SR_PLUGIN_VERSION = QStringLiteral("0.8.25");
const QString SelmarRivenholdHandler::SR_PLUGIN_BUILD = srPluginBuild();
const QSet<qint64> SelmarRivenholdHandler::SUPPORTED_PROVIDERS = {individualsProviderId,
                                                                  legalEntitiesProviderId};

SelmarRivenholdHandler::SelmarRivenholdHandler(QObject *parent) : QObject(parent)
{
    qWarning("CREATE");
}

SelmarRivenholdHandler::~SelmarRivenholdHandler()
{
    qWarning() << "DESTROY 1 " << m_pcWrapper;
    if (const auto *object = dynamic_cast<QObject *>(m_pcWrapper.data()))
        qWarning() << object->parent();
    m_pcWrapper.reset();
    qWarning("DESTROY 2");
}

QString SelmarRivenholdHandler::pluginVersion() const
{
    SR_TRACE_MARK();
    return SR_PLUGIN_VERSION;
}

QString SelmarRivenholdHandler::pluginBuild() const
{
    SR_TRACE_MARK();
    return SR_PLUGIN_BUILD;
}

QString SelmarRivenholdHandler::pluginName() const
{
    SR_TRACE_MARK();
    return QStringLiteral("selmarrivenhold");
}

QString SelmarRivenholdHandler::pluginCaption() const
{
    SR_TRACE_MARK();
    return tr("Селмар Ривенхолд");
}

QString SelmarRivenholdHandler::pluginDescription() const
{
    SR_TRACE_MARK();
    const QString provider = QStringLiteral("<div align=\"left\">[<b>%1</b>] %2</div>");
    const QStringList lines = {
        // The title's "%1" stays as it is: hosts get the text so.
        QStringLiteral("<html><title>%1</title><head><meta http-equiv=\"Content-Type\" "
                       "content=\"text/html; charset=UTF-8\"></head><body>"),
        QStringLiteral("<p align=\"center\"><b>%1</b></p>").arg(tr("Plugin for providers")),
        provider.arg(QString::number(individualsProviderId), tr("[ГК Тавран ФЛ]")),
        provider.arg(QString::number(legalEntitiesProviderId), tr("[ГК Тавран ЮЛ]")),
        QStringLiteral("</body></html>"),
    };
    return lines.join(QLatin1Char('\n'));
}

QSet<qint64> SelmarRivenholdHandler::supportedProviders() const
{
    SR_TRACE_MARK();
    return SUPPORTED_PROVIDERS;
}

bool SelmarRivenholdHandler::providerIsSupported(qint64 id) const
{
    SR_TRACE_MARK();
    return SUPPORTED_PROVIDERS.contains(id);
}

bool SelmarRivenholdHandler::providerIsSupported(const Provider &provider) const
{
    SR_TRACE_MARK();
    // By id(), although start() chooses the wizard by workProviderId(): hosts clone providers under
    // ids of their own.
    return SUPPORTED_PROVIDERS.contains(provider.id());
}

void SelmarRivenholdHandler::setInputFont(const QFont &font)
{
    SR_TRACE_MARK();
    m_inputFont = font;
    SR_TRACE_MARK();
}

bool SelmarRivenholdHandler::setMessageReciever(QObject *object, const char *signal)
{
    SR_TRACE_MARK();
    m_messageReceiver = {object, signal};
    SR_TRACE_MARK();
    return true;
}

bool SelmarRivenholdHandler::setMessageSender(QObject *object, const char *member)
{
    SR_TRACE_MARK();
    m_messageSender = {object, member};
    SR_TRACE_MARK();
    return true;
}

bool SelmarRivenholdHandler::setPayStatusReciever(QObject *object, const char *signal)
{
    SR_TRACE_MARK();
    m_payStatusReceiver = {object, signal};
    SR_TRACE_MARK();
    return true;
}

bool SelmarRivenholdHandler::setPayChecStatusReciever(QObject *, const char *)
{
    SR_TRACE_MARK();
    SR_TRACE_MARK();
    return true;
}

template<class Wizard>
Wizard *
SelmarRivenholdHandler::createWizard(const basix::FixNumber &prepay, const Provider &provider,
                                     const BoxComProfile &comProfile,
                                     const PaymentCheckProfile &checkProfile, QWidget *parent) const
{
    auto *wizard = new Wizard(m_inputFont, m_boxInfo.currency(), prepay, parent);
    wizard->setProvider(provider);
    wizard->setComProfile(comProfile);
    wizard->setPayCheckProfile(checkProfile);
    wizard->createPages(provider);
    wizard->setMessageReciever(m_messageReceiver.object, m_messageReceiver.member.constData());
    wizard->setMessageSender(m_messageSender.object, m_messageSender.member.constData());
    wizard->setPayStatusReciever(m_payStatusReceiver.object,
                                 m_payStatusReceiver.member.constData());
    wizard->setInfo(m_boxInfo);
    wizard->setPcWrapper(m_pcWrapper);
    wizard->setWindowTitle(provider.checkName());
    return wizard;
}

IPayDialog *SelmarRivenholdHandler::start(const basix::FixNumber &prepay, const Provider &provider,
                                          QWidget *parent)
{
    SR_TRACE_MARK();
    DbConnector db(basix::BaseSqliteDbConnector::SharedConnection, nullptr);
    m_boxInfo = BoxInfoController(db).boxInfo(false);
    if (!m_boxInfo.isValid()) {
        showErrorMessage(tr("BoxInfo loading error"), parent);
        return nullptr;
    }
    const BoxComProfile comProfile = ComissionsManager(db).getCurrentProfile();
    if (!comProfile.isValid()) {
        showErrorMessage(tr("Commission profile loading error"), parent);
        return nullptr;
    }
    const PaymentCheckProfile checkProfile = PayCheckProfileManager(db).getCurrentProfile();

    // Whatever is not the individuals' provider is a legal entity's, an unknown working id
    // included.
    if (provider.workProviderId() == individualsProviderId) {
        auto *wizard = createWizard<SelmarIndividualWizard>(prepay, provider, comProfile,
                                                            checkProfile, parent);
        wizard->setFrHandler(m_frHandler);
        return wizard;
    }
    auto *wizard =
        createWizard<SelmarLegalWizard>(prepay, provider, comProfile, checkProfile, parent);
    wizard->setFr(m_frHandler);
    return wizard;
}

void SelmarRivenholdHandler::printCheckCopy(const Payment &, bool &, QWidget *)
{
    SR_TRACE_MARK();
}

bool SelmarRivenholdHandler::postProcessPayment(const Payment &, QWidget *)
{
    SR_TRACE_MARK();
    return true;
}

bool SelmarRivenholdHandler::hasSettingsPage() const
{
    SR_TRACE_MARK();
    return false;
}

IPluginSettingsPage *SelmarRivenholdHandler::settingsPage()
{
    SR_TRACE_MARK();
    return nullptr;
}

bool SelmarRivenholdHandler::enablePayEditing(const Provider &) const
{
    SR_TRACE_MARK();
    return false;
}

bool SelmarRivenholdHandler::disablePayTemplateSaving(const Provider &) const
{
    SR_TRACE_MARK();
    return true;
}

void SelmarRivenholdHandler::setPaysControllerWrapper(IPaysControllerWrapper *wrapper)
{
    SR_TRACE_MARK();
    m_pcWrapper = QSharedPointer<IPaysControllerWrapper>(wrapper);
    SR_TRACE_MARK();
}

void SelmarRivenholdHandler::setFrHandler(FrHandler *handler)
{
    SR_TRACE_MARK();
    m_frHandler = handler;
    handler->setParent(this);
    SR_TRACE_MARK();
}

void SelmarRivenholdHandler::startWorkers(const BoxInfo &, const basix::Currency &)
{
    SR_TRACE_MARK();
}

void SelmarRivenholdHandler::stopWorkers()
{
    SR_TRACE_MARK();
}

void SelmarRivenholdHandler::showErrorMessage(const QString &text, QWidget *parent)
{
    SR_TRACE_MARK();
    SrMessageBox::showError(parent, tr("Selmar Rivenhold plugin starting error"), text);
    SR_TRACE_MARK();
}
