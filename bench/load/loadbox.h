#pragma once

#include "latencies.h"

#include <srbillingexchange.h>

#include <basixcore/currency.h>
#include <molvacore/onlinekkminfo.h>
#include <molvacore/provider.h>

#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <memory>

class MessageBus;

/// What all boxes of a run did.
struct LoadFigures
{
    Latencies request; ///< account request to answer
    Latencies confirm; ///< pay pack to its durable confirm
    Latencies taken;   ///< pay pack to billing's word that it has it
    int payments = 0;
    int failures = 0;
    QString lastFailure;
    /// Bytes of the last message of each kind.
    int requestBytes = 0;
    int answerBytes = 0;
    int packBytes = 0;

    void clear() { *this = LoadFigures(); }
};

/// One cash box without windows and devices: asks for an account, distributes a sum over its
/// services, makes receipt and pay pack with the plugin's own records, posts the pack, and begins
/// anew as soon as billing has it.
class LoadBox final : public QObject
{
    Q_OBJECT

public:
    /// What the host knows, the same for every box.
    struct Host
    {
        Provider provider;
        OnlineKkmInfo kkm;
        basix::Currency currency;
    };

    /// `figures` must outlive the box, `host` too.
    LoadBox(std::unique_ptr<MessageBus> bus, const Host &host, qint64 boxId, const QString &account,
            LoadFigures &figures, QObject *parent = nullptr);
    ~LoadBox() override;

    bool isConnected() const;
    bool isIdle() const { return !m_busy; }
    /// Pays for ever, from now on or from the next connection on.
    void start();
    /// The payment that is on its way is the last.
    void stop() { m_wanted = false; }

private:
    void ask();
    void onAnswer(const QVariantMap &headers, const QString &message);
    void pay(const SrAnswer &answer);
    void onAccepted(const QString &destination);
    void onStatus(const QVariant &status);
    void fail(const QString &reason);
    void next();

    std::unique_ptr<MessageBus> m_bus;
    const Host &m_host;
    qint64 m_boxId;
    QString m_account;
    LoadFigures &m_figures;
    SrBillingExchange m_exchange;
    QElapsedTimer m_clock;
    qint64 m_packId = 0;
    qint64 m_receipts = 0;
    bool m_wanted = false;
    bool m_busy = false;
};
