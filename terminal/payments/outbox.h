#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QVariantMap>
#include <QVector>

#include <functional>
#include <optional>

class MessageBus;
class PaymentsStore;

/// How the outbox takes its time; milliseconds.
struct OutboxTiming
{
    int first = 1000;
    int longest = 60000;
    /// How long whoever was handed a pack may take to post it before the outbox does.
    int grace = 30000;
    /// A connection that comes and goes has the packs that billing has not confirmed posted once
    /// more no oftener than this.
    int askAgain = 600000;
    /// Packs on their way at once.
    int window = 32;
    /// A clock that is never set back, and a number from 0 up to, not including, 1. Without them
    /// those of the machine.
    std::function<qint64()> now;
    std::function<double()> random;

    /// The wait before attempt number `attempts` + 1: doubling from first to longest, shortened by
    /// up to a quarter so that workstations which lost the bus together do not come back together.
    int delay(int attempts) const;
};

/// Posts the pay packs that are saved and not posted, oldest first, until the bus has taken each.
///
/// At least once: after a crash or a lost answer a pack is posted again; billing takes it once by
/// its id. A pack that the bus refuses waits longer after each refusal and does not hold up the
/// packs behind it; all waits end when the bus is connected again.
class Outbox final : public QObject
{
    Q_OBJECT

public:
    /// Where pay packs are posted to.
    static const QString PACK_DESTINATION;
    /// Key that a posted pack carries besides the pack's own map: decimal text.
    static const QString BOX_ID;

    /// `store` must be open and outlive the outbox.
    Outbox(PaymentsStore &store, qint64 boxId, OutboxTiming timing = {}, QObject *parent = nullptr);
    ~Outbox() override;

    /// From now on works by itself: posts at once what an earlier run left, also once more the
    /// packs that billing has not confirmed, and later whatever waits.
    void start(MessageBus &bus);
    /// Posts now, refused before or not, what is not on its way; returns how many.
    int drain(MessageBus &bus);
    /// Posts a pack whatever its state, for one that billing does not know. False with a Russian
    /// text when that is not possible.
    bool postAgain(qint64 packId, QString *error);

    /// Fills `map` with what is to be posted and moves the pack on; false with a Russian text
    /// for a pack that is not saved or is already posted.
    bool take(qint64 packId, QVariantMap &map, QString &error);

    /// What the controller tells: a pack was saved and is posted at once by somebody else or not;
    /// it was handed out for posting; the bus took or refused it.
    void packSaved(qint64 packId, bool postedByOthers);
    void packGiven(qint64 packId);
    void packAccepted(qint64 packId);
    void packRefused(qint64 packId);

    /// Posts what is due; called by the outbox's own timer.
    void wake();
    /// Milliseconds until something is due, or until a store that could not be read is tried again;
    /// -1 when nothing waits.
    qint64 untilNext();
    /// Nothing is on its way and nothing waits; false when that cannot be told.
    bool idle();

signals:
    /// A pack was moved on to be posted.
    void changed(qint64 packId);

private:
    struct Wait
    {
        int attempts = 0;
        qint64 notBefore = 0;
    };

    qint64 now() const;
    bool isOnTheWay(qint64 packId);
    int send(MessageBus &bus, bool waitingToo);
    bool message(qint64 packId, QVariantMap *map, QString *error);
    void schedule();
    /// What billing said about these may have been on its way when the connection went.
    void askAgain();
    void onConnected(bool connected);

    PaymentsStore &m_store;
    qint64 m_boxId = 0;
    OutboxTiming m_timing;
    QPointer<MessageBus> m_bus;
    bool m_started = false;
    QHash<qint64, Wait> m_waits;
    /// Until when an answer is expected.
    QHash<qint64, qint64> m_onTheWay;
    /// Posted in an earlier run or over an earlier connection, and not confirmed.
    QVector<qint64> m_again;
    std::optional<qint64> m_lastAsked;
    QTimer m_timer;
};
