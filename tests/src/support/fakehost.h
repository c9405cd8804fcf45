#pragma once

#include <molvacore/payment.h>

#include <QObject>
#include <QString>
#include <QVariant>
#include <QVector>

/// The host's side of the bus: what it sends to a plugin are signals, what it takes from one are
/// recorded.
class FakeHost : public QObject
{
    Q_OBJECT

public:
    struct Sent
    {
        QString destination;
        QVariant data;
    };

    using QObject::QObject;

    QVector<Sent> sent() const { return m_sent; }
    QVector<Payment> templates() const { return m_templates; }
    /// Body of the message sent last; empty when there is none.
    QVariantMap lastBody() const
    {
        return m_sent.isEmpty() ? QVariantMap() : m_sent.last().data.toMap();
    }
    QString lastUid() const { return lastBody().value(QStringLiteral("uid")).toString(); }
    void clear() { m_sent.clear(); }
    /// Connections to the host's signals.
    int listeners() const
    {
        return receivers(SIGNAL(incomingMessage(QVariantMap, QString)))
            + receivers(SIGNAL(paymentStatus(QVariant)));
    }

signals:
    void incomingMessage(QVariantMap headers, QString message);
    void paymentStatus(QVariant status);

public slots:
    void sendMessage(QString destination, QVariant data);
    void saveTemplate(Payment payment);

private:
    QVector<Sent> m_sent;
    QVector<Payment> m_templates;
};
