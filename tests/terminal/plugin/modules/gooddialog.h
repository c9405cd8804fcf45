#pragma once

#include <molvacore/ipaydialog.h>

#include <QDialog>

/// Sends one message as soon as it runs and accepts itself when the answer comes.
class GoodDialog final : public QDialog, public IPayDialog
{
    Q_OBJECT

public:
    GoodDialog(qint64 providerId, QWidget *parent);

    Payment payment() const override { return Payment(); }
    bool immidiatlyPost() const override { return true; }
    qint64 providerId() const override { return m_providerId; }
    qint64 newProviderId() const override { return m_providerId; }
    bool needChangeProvider() const override { return false; }
    bool execute() override;
    bool setTemplatesConnection(QObject *object, const char *member) override;
    bool setMessageReciever(QObject *object, const char *member) override;
    bool setMessageSender(QObject *object, const char *member) override;
    bool setPayStatusReciever(QObject *object, const char *member) override;
    bool paymentIsSended() const override { return true; }

signals:
    void incomingMessage(QVariantMap headers, QString message);
    void sendMessage(QString destination, QVariant data);
    void paymentStatus(QVariant status);

private:
    qint64 m_providerId;
};
