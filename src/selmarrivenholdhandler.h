#pragma once

#include <basixcore/currency.h>
#include <basixcore/fixnumber.h>
#include <molvacore/boxinfo.h>
#include <molvacore/frhandler.h>
#include <molvacore/ipaybyproviderplugin.h>
#include <molvacore/ipayscontrollerwrapper.h>

#include <QByteArray>
#include <QFont>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QSharedPointer>

class BoxComProfile;
class PaymentCheckProfile;

/// The object that a host gets when it loads the plugin: tells who the plugin is and opens a wizard
/// per payment.
///
/// The host creates one instance through its plugin loader, hands it its objects in any order, and
/// may then start any number of payments. All operations run on the GUI thread. The handler keeps
/// nothing of a running wizard. Every operation leaves the trace mark "#_#" in the log, the ones
/// that change something once before and once after the change.
class SelmarRivenholdHandler final : public QObject, public IPayByProviderPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IPayByProviderPlugin_iid)
    Q_INTERFACES(IPayByProviderPlugin)

public:
    static const QString SR_PLUGIN_VERSION;
    /// Moment of the build in ISO 8601.
    static const QString SR_PLUGIN_BUILD;
    /// Providers of the host's catalogue: 18722 individuals, 18723 legal entities.
    static const QSet<qint64> SUPPORTED_PROVIDERS;

    explicit SelmarRivenholdHandler(QObject *parent = nullptr);
    ~SelmarRivenholdHandler() override;

    QString pluginVersion() const override;
    QString pluginBuild() const override;
    QString pluginName() const override;
    QString pluginCaption() const override;
    /// HTML; its title holds a "%1" that is never filled in.
    QString pluginDescription() const override;
    QSet<qint64> supportedProviders() const override;
    bool providerIsSupported(qint64 id) const override;
    bool providerIsSupported(const Provider &provider) const override;

    void setInputFont(const QFont &font) override;
    /// The host's signal that brings bus messages. Objects are guarded and may be null; signatures
    /// are kept as passed. True.
    bool setMessageReciever(QObject *object, const char *signal) override;
    /// The host's member that sends bus messages.
    bool setMessageSender(QObject *object, const char *member) override;
    /// The host's signal that announces payment states.
    bool setPayStatusReciever(QObject *object, const char *signal) override;
    /// Not used by this plugin; true.
    bool setPayChecStatusReciever(QObject *object, const char *member) override;

    /// Opens a payment: a wizard on `parent`, which owns it, or null after a message box that says
    /// what is missing.
    IPayDialog *start(const basix::FixNumber &prepay, const Provider &provider,
                      QWidget *parent) override;
    void printCheckCopy(const Payment &payment, bool &printed, QWidget *parent) override;
    bool postProcessPayment(const Payment &payment, QWidget *parent) override;

    bool hasSettingsPage() const override;
    IPluginSettingsPage *settingsPage() override;
    bool enablePayEditing(const Provider &provider) const override;
    bool disablePayTemplateSaving(const Provider &provider) const override;

    /// Takes over `wrapper`: it is deleted when the handler and every wizard that got it have let
    /// go.
    void setPaysControllerWrapper(IPaysControllerWrapper *wrapper) override;
    /// `handler` becomes a child of this object; it must be alive.
    void setFrHandler(FrHandler *handler) override;
    void startWorkers(const BoxInfo &info, const basix::Currency &currency) override;
    void stopWorkers() override;

    QSharedPointer<IPaysControllerWrapper> pcWrapper() const { return m_pcWrapper; }
    /// Shows why a payment could not be started.
    void showErrorMessage(const QString &text, QWidget *parent);

private:
    /// A host object and the signature of its signal or slot, in the form of the string-based
    /// connect.
    struct Endpoint
    {
        QPointer<QObject> object;
        QByteArray member;
    };

    template<class Wizard>
    Wizard *createWizard(const basix::FixNumber &prepay, const Provider &provider,
                         const BoxComProfile &comProfile, const PaymentCheckProfile &checkProfile,
                         QWidget *parent) const;

    QFont m_inputFont;
    Endpoint m_messageSender;
    Endpoint m_messageReceiver;
    Endpoint m_payStatusReceiver;
    BoxInfo m_boxInfo;
    QSharedPointer<IPaysControllerWrapper> m_pcWrapper;
    QPointer<FrHandler> m_frHandler;
};
