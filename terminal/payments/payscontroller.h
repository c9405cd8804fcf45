#pragma once

#include <payments/outbox.h>
#include <payments/paymentrecord.h>

#include <QObject>
#include <QString>
#include <QVariantMap>
#include <QVector>

class MessageBus;
class PayPack;
class PaymentsStore;

/// Keeps pay packs and follows them to billing. Owned by the terminal; plugins get a
/// PaysControllerWrapper on top of it.
///
/// A pack is saved before anything else happens to it, handed on at most once to whoever posts it,
/// and stays in the outbox until the bus has taken it. Billing takes a pack once, so sending it
/// again after a doubt is safe.
class PaysController final : public QObject
{
    Q_OBJECT

public:
    /// Where pay packs are posted to.
    static const QString &PACK_DESTINATION;
    /// Keys that a posted pack carries besides the pack's own map: decimal text.
    static const QString &BOX_ID;
    static const QString RECOVERED;

    /// `store` must be open and outlive the controller.
    PaysController(PaymentsStore &store, qint64 boxId, QObject *parent = nullptr);
    PaysController(PaymentsStore &store, qint64 boxId, const OutboxTiming &timing,
                   QObject *parent = nullptr);
    ~PaysController() override;

    /// Durable before it returns true; a pack that is saved already is true.
    bool savePack(const PayPack &pack, bool complete);
    /// Saves a pack that was made anew from its receipt; `note` goes along with it to billing under
    /// the key RECOVERED and must not change from one attempt to the next. The same again is true.
    bool saveRecovered(const PayPack &pack, const QVariantMap &note);
    bool handOnAtOnce() const;
    void setHandOnAtOnce(bool atOnce);
    /// Fills `message` with what is to be posted. False with a Russian text for a pack that is not
    /// saved or already posted.
    bool handOn(qint64 packId, QVariantMap &message, QString &error);

    bool markPosted(qint64 packId);
    bool markAcknowledged(qint64 packId);
    QVector<qint64> unposted();

    Outbox &outbox() { return m_outbox; }

    /// Follows what the bus and billing say about pay packs. The bus must outlive the controller or
    /// be destroyed in order.
    void follow(MessageBus &bus);
    /// Sends again, oldest first, what the bus has not taken and is not on its way; returns how
    /// many. Packs that wait because handOnAtOnce() is off are sent too.
    int drain(MessageBus &bus);

    QString lastError() const;

signals:
    /// A pack was saved or moved to another state.
    void changed(qint64 packId);
    void saved(qint64 packId);

private:
    bool store(const PaymentRecord &record, const QVariantMap &pack);
    void onAccepted(const QString &destination, const QVariant &data);
    void onRefused(const QString &destination, const QVariant &data, const QString &reason);
    void onStatus(const QVariant &status);

    PaymentsStore &m_store;
    bool m_handOnAtOnce = true;
    Outbox m_outbox;
    QString m_error;
};
