#pragma once

#include "srwizardrecords.h"

#include <molvacore/ipaydialog.h>
#include <molvacore/payment.h>

#include <QVariantMap>
#include <QWizard>

#include <memory>

namespace Ui {
class SelmarIndividualWizard;
}

/// The dialog in which a cashier takes an individual's payment: account, services and meters,
/// payment.
///
/// The plugin's handler builds it on the host's window and fills it in this order: setProvider(),
/// setComProfile(), setPayCheckProfile(), createPages(), the three connecting operations,
/// setInfo(), setPcWrapper(), title, setFrHandler(). The host owns it, executes it and reads the
/// result. It holds no payment logic: it relays messages between host and pages and answers what
/// the pages ask of it.
class SelmarIndividualWizard final : public QWizard, public IPayDialog
{
    Q_OBJECT

public:
    SelmarIndividualWizard(const QFont &inputFont, const basix::Currency &currency,
                           const basix::FixNumber &prepay, QWidget *parent);
    ~SelmarIndividualWizard() override;

    // IPayDialog. The connecting operations return whether the connection was made; false for a
    // null object.

    /// Always empty: the payment page posts the pay pack itself.
    Payment payment() const override;
    bool immidiatlyPost() const override;
    qint64 providerId() const override;
    qint64 newProviderId() const override;
    bool needChangeProvider() const override;
    /// Runs the dialog; true when the payment was finished.
    bool execute() override;
    /// True whatever becomes of the connection.
    bool setTemplatesConnection(QObject *object, const char *member) override;
    bool setMessageReciever(QObject *object, const char *signal) override;
    bool setMessageSender(QObject *object, const char *member) override;
    bool setPayStatusReciever(QObject *object, const char *signal) override;
    bool paymentIsSended() const override;

    void setProvider(const Provider &provider) { m_records.setProvider(provider); }
    void setComProfile(const BoxComProfile &profile) { m_records.setComProfile(profile); }
    void setPayCheckProfile(const PaymentCheckProfile &profile)
    {
        m_records.setPayCheckProfile(profile);
    }
    /// Builds the three pages; `provider` gives them their title.
    void createPages(const Provider &provider);
    void setInfo(const BoxInfo &info) { m_records.info = info; }
    void setPcWrapper(const QSharedPointer<IPaysControllerWrapper> &wrapper)
    {
        m_records.pcWrapper = wrapper;
    }
    void setFrHandler(const QPointer<FrHandler> &handler) { m_records.fiscalRegister = handler; }

    QSharedPointer<Provider> provider() const { return m_records.provider; }
    BoxInfo info() const { return m_records.info; }
    QSharedPointer<basix::Currency> currency() const { return m_records.currency; }
    QPointer<FrHandler> frHandler() const { return m_records.fiscalRegister; }
    QSharedPointer<IPaysControllerWrapper> pcWrapper() const { return m_records.pcWrapper; }
    QSharedPointer<BoxComProfile> comProfile() const { return m_records.comProfile; }
    QSharedPointer<PaymentCheckProfile> payCheckProfile() const
    {
        return m_records.payCheckProfile;
    }
    QSharedPointer<basix::FixNumber> prepay() const { return m_records.prepay; }
    QFont inputFont() const { return m_records.inputFont; }
    QMap<QString, ProviderParameter> providerParams() const { return m_records.providerParams; }

    void setProviderParams(const QMap<QString, ProviderParameter> &params)
    {
        m_records.providerParams = params;
    }
    /// Replaces a known parameter; an unknown name adds nothing.
    void setParam(const QString &name, const ProviderParameter &parameter);
    /// Sets a known parameter's value; an unknown name adds nothing.
    void setParamValue(const QString &name, const QString &value);

signals:
    void incomingMessage(QVariantMap headers, QString message);
    void sendMessage(QString destination, QVariant data);
    /// The host's payment status; no page of this wizard listens to it.
    void paymentStatus(QVariant status);
    /// For the host's templates; never emitted, since the plugin forbids templates.
    void savePaymentAsTemplate(Payment);

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    std::unique_ptr<Ui::SelmarIndividualWizard> m_form;
    SrWizardRecords m_records;
};
