#pragma once

#include <molvacore/molvacore_global.h>
#include <molvacore/payment.h>

#include <QObject>

/// A dialog that takes one payment. A plugin makes it as a child of the host's widget; the host
/// runs it.
///
/// Members are named in the form that the string-based QObject::connect takes, SIGNAL(...) and
/// SLOT(...).
class MOLVACORE_EXPORT IPayDialog
{
public:
    virtual ~IPayDialog();

    /// The payment taken; empty when the plugin posts its payments itself.
    virtual Payment payment() const = 0;
    virtual bool immidiatlyPost() const = 0;
    /// Id of the provider the dialog was opened for; -1 for none.
    virtual qint64 providerId() const = 0;
    /// Id of the provider that the payment is to go to; -1 for none.
    virtual qint64 newProviderId() const = 0;
    virtual bool needChangeProvider() const = 0;
    /// Runs the dialog modally; true when the payment was taken.
    virtual bool execute() = 0;
    /// `member` receives (Payment) when the person wants a payment kept as a template.
    virtual bool setTemplatesConnection(QObject *object, const char *member) = 0;
    /// `member` is the signal (QVariantMap, QString) by which the host delivers bus messages.
    virtual bool setMessageReciever(QObject *object, const char *member) = 0;
    /// `member` receives (QString, QVariant): destination and data of a bus message to send.
    virtual bool setMessageSender(QObject *object, const char *member) = 0;
    /// `member` is the signal (QVariant) by which the host announces the state of a payment.
    virtual bool setPayStatusReciever(QObject *object, const char *member) = 0;
    /// The plugin has sent the payment on; the host must not.
    virtual bool paymentIsSended() const = 0;
};
