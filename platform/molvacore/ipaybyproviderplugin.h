#pragma once

#include <molvacore/molvacore_global.h>

#include <QObject>
#include <QSet>
#include <QString>

QT_BEGIN_NAMESPACE
class QFont;
class QWidget;
QT_END_NAMESPACE

namespace basix {
class Currency;
class FixNumber;
} // namespace basix
class BoxInfo;
class FrHandler;
class IPayDialog;
class IPaysControllerWrapper;
class IPluginSettingsPage;
class Payment;
class Provider;

/// What a plugin offers that takes payments for certain providers. The host creates one object per
/// plugin, hands it its own objects by the setters in any order, and then starts payments; all of
/// it in the GUI thread.
class MOLVACORE_EXPORT IPayByProviderPlugin
{
public:
    virtual ~IPayByProviderPlugin();

    virtual QString pluginVersion() const = 0;
    /// Date and time of the build in ISO 8601.
    virtual QString pluginBuild() const = 0;
    virtual QString pluginName() const = 0;
    virtual QString pluginCaption() const = 0;
    /// HTML.
    virtual QString pluginDescription() const = 0;
    virtual QSet<qint64> supportedProviders() const = 0;
    virtual bool providerIsSupported(qint64 providerId) const = 0;
    virtual bool providerIsSupported(const Provider &provider) const = 0;

    virtual void setInputFont(const QFont &font) = 0;
    /// The host's object and signal of incoming bus messages, (QVariantMap, QString). The plugin
    /// does not own the objects of this and the next three.
    virtual bool setMessageReciever(QObject *object, const char *member) = 0;
    /// The host's object and member for outgoing bus messages, (QString, QVariant).
    virtual bool setMessageSender(QObject *object, const char *member) = 0;
    /// The host's object and signal of payment states, (QVariant).
    virtual bool setPayStatusReciever(QObject *object, const char *member) = 0;
    virtual bool setPayChecStatusReciever(QObject *object, const char *member) = 0;

    /// Opens a payment with the amount that the host proposes. The dialog is a child of `parent`;
    /// null after an error that the plugin has shown.
    virtual IPayDialog *start(const basix::FixNumber &prepay, const Provider &provider,
                              QWidget *parent) = 0;
    virtual void printCheckCopy(const Payment &payment, bool &printed, QWidget *parent) = 0;
    virtual bool postProcessPayment(const Payment &payment, QWidget *parent) = 0;

    virtual bool hasSettingsPage() const = 0;
    virtual IPluginSettingsPage *settingsPage() = 0;
    virtual bool enablePayEditing(const Provider &provider) const = 0;
    virtual bool disablePayTemplateSaving(const Provider &provider) const = 0;

    /// The plugin becomes the owner of the wrapper.
    virtual void setPaysControllerWrapper(IPaysControllerWrapper *wrapper) = 0;
    /// The plugin becomes the QObject parent, and so the owner, of a live handler.
    virtual void setFrHandler(FrHandler *handler) = 0;

    virtual void startWorkers(const BoxInfo &box, const basix::Currency &currency) = 0;
    virtual void stopWorkers() = 0;
};

#define IPayByProviderPlugin_iid "org.molva.plugins.paybyproviderplugin"
Q_DECLARE_INTERFACE(IPayByProviderPlugin, IPayByProviderPlugin_iid)
