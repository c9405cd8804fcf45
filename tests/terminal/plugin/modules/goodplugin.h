#pragma once

#include <molvacore/ipaybyproviderplugin.h>
#include <molvacore/ipayscontrollerwrapper.h>

#include <QByteArray>
#include <QFont>
#include <QObject>
#include <QPointer>
#include <QtPlugin>

#include <memory>

class FrHandler;

/// Serves provider 7 and refuses every other. What it is given it notes in its property "calls".
class GoodPlugin final : public QObject, public IPayByProviderPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IPayByProviderPlugin_iid)
    Q_INTERFACES(IPayByProviderPlugin)

public:
    QString pluginVersion() const override { return QStringLiteral("1.2.3"); }
    QString pluginBuild() const override { return QStringLiteral("2026-01-02T03:04:05"); }
    QString pluginName() const override { return QStringLiteral("good"); }
    QString pluginCaption() const override { return QStringLiteral("Образцовый"); }
    QString pluginDescription() const override { return QStringLiteral("<b>Образцовый</b>"); }
    QSet<qint64> supportedProviders() const override { return {7}; }
    bool providerIsSupported(qint64 providerId) const override { return providerId == 7; }
    bool providerIsSupported(const Provider &provider) const override;
    void setInputFont(const QFont &font) override;
    bool setMessageReciever(QObject *object, const char *member) override;
    bool setMessageSender(QObject *object, const char *member) override;
    bool setPayStatusReciever(QObject *object, const char *member) override;
    bool setPayChecStatusReciever(QObject *, const char *) override { return true; }
    IPayDialog *start(const basix::FixNumber &prepay, const Provider &provider,
                      QWidget *parent) override;
    void printCheckCopy(const Payment &, bool &, QWidget *) override {}
    bool postProcessPayment(const Payment &, QWidget *) override { return true; }
    bool hasSettingsPage() const override { return false; }
    IPluginSettingsPage *settingsPage() override { return nullptr; }
    bool enablePayEditing(const Provider &) const override { return false; }
    bool disablePayTemplateSaving(const Provider &) const override { return true; }
    void setPaysControllerWrapper(IPaysControllerWrapper *wrapper) override;
    void setFrHandler(FrHandler *handler) override;
    void startWorkers(const BoxInfo &box, const basix::Currency &currency) override;
    void stopWorkers() override { note(QStringLiteral("stopWorkers")); }

private:
    void note(const QString &call);

    QPointer<QObject> m_receiver;
    QByteArray m_receiverMember;
    QPointer<QObject> m_sender;
    QByteArray m_senderMember;
    std::unique_ptr<IPaysControllerWrapper> m_wrapper;
};
