#pragma once

#include <bus/busmessage.h>
#include <bus/terminalexport.h>

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QVariantMap>

/// The workstation's connection to the processing centre. Nothing outside the bus knows which
/// implementation runs.
///
/// A plugin is given two members of this object by their signatures: the slot
/// sendMessage(QString,QVariant) and the signal incomingMessage(QVariantMap,QString); a third,
/// paymentStatus(QVariant), tells it about payments.
///
/// Every message handed to sendMessage() is answered by exactly one of accepted() and refused(),
/// from the event loop and never before sendMessage() has returned. A refused message has left no
/// trace on the far side as far as this side knows; whoever must not lose it keeps it and sends it
/// again.
class TERMINAL_EXPORT MessageBus : public QObject
{
    Q_OBJECT

public:
    /// "msgType" of an answer that goes to paymentStatus() instead of incomingMessage().
    static const QString PAYMENT_STATUS;
    /// Name of the header that tells the kind of an incoming message.
    static const QString MESSAGE_TYPE;

    explicit MessageBus(QObject *parent = nullptr);
    ~MessageBus() override;

    virtual bool connected() const = 0;
    /// The state of the connection for the person at the workstation.
    virtual QString stateText() const = 0;

    /// Delivers an incoming message once more, byte for byte, as if the far side had repeated it:
    /// for trying what a late or repeated answer does.
    void replay(const BusMessage &message);

public slots:
    virtual void sendMessage(const QString &destination, const QVariant &data) = 0;

signals:
    /// `headers` holds "msgType"; `message` is JSON text.
    void incomingMessage(const QVariantMap &headers, const QString &message);
    /// A map: the body of a message of the type PAYMENT_STATUS.
    void paymentStatus(const QVariant &status);
    /// The far side, or a broker that keeps the message durably, has taken responsibility for it.
    void accepted(const QString &destination, const QVariant &data);
    /// Nobody took the message; `reason` is a Russian text.
    void refused(const QString &destination, const QVariant &data, const QString &reason);
    void traffic(const BusMessage &message);
    void stateChanged(bool connected);

protected:
    /// Reports a sent message as traffic.
    void noteSent(const QString &destination, const MessageBody &body);
    /// Reports an arrived message as traffic and hands it to incomingMessage() or paymentStatus()
    /// by its type.
    void deliver(const QVariantMap &headers, const QByteArray &body);

private:
    /// A bus that nobody watches does not look at the clock.
    bool isWatched() const;
    void handOut(const QVariantMap &headers, const QByteArray &body, bool replayed);
};
