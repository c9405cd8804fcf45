#include "rawbroker.h"

#include "rawchannel.h"

#include <bus/amqp/billingqueues.h>

#include <QElapsedTimer>
#include <QVector>

#include <thread>

namespace {

constexpr qint64 MICROSECOND = 1000; // nanoseconds
/// Names that billing's user may declare.
const QByteArray REQUESTS = QByteArrayLiteral("selmar.billing.raw.requests");
const QByteArray PACKS = QByteArrayLiteral("selmar.billing.raw.packs");

void answerRequests(RawChannel &channel, int size)
{
    const QByteArray body(size, 'a');
    for (int i = 0; i < RawBroker::ROUND_TRIPS; ++i) {
        const RawChannel::Delivery request = channel.waitForDelivery();
        if (!request.arrived || !channel.publish(request.replyTo, body, QByteArray(), false))
            return;
    }
}

bool measureRoundTrips(const BrokerAddress &address, const RawBroker::Sizes &sizes,
                       Latencies *latencies, QString *error)
{
    RawChannel worker;
    RawChannel box;
    const QByteArray replies = BillingQueues::DIRECT_REPLY.toLatin1();
    if (!worker.open(address) || !worker.makeQueue(REQUESTS) || !worker.consume(REQUESTS)
        || !box.open(address) || !box.consume(replies)) {
        *error = worker.error() + box.error();
        return false;
    }
    std::thread answering([&worker, &sizes] { answerRequests(worker, sizes.answer); });
    const QByteArray body(sizes.request, 'r');
    bool ok = true;
    for (int i = 0; ok && i < RawBroker::ROUND_TRIPS; ++i) {
        QElapsedTimer clock;
        clock.start();
        ok = box.publish(REQUESTS, body, replies, false) && box.waitForDelivery().arrived;
        latencies->add(clock.nsecsElapsed() / MICROSECOND);
    }
    answering.join();
    *error = box.error();
    return ok && box.removeQueue(REQUESTS);
}

bool measureConfirms(const BrokerAddress &address, int size, RawBroker::Figures *figures,
                     QString *error)
{
    RawChannel channel;
    const QByteArray body(size, 'p');
    bool ok = channel.open(address) && channel.makeQueue(PACKS) && channel.enableConfirms();
    quint64 sent = 0;
    for (int i = 0; ok && i < RawBroker::PUBLISHES / 4; ++i) {
        QElapsedTimer clock;
        clock.start();
        ok = channel.publish(PACKS, body, QByteArray(), true) && channel.waitForConfirm() == ++sent;
        figures->confirm.add(clock.nsecsElapsed() / MICROSECOND);
    }
    quint64 confirmed = sent;
    const quint64 last = sent + RawBroker::PUBLISHES;
    QElapsedTimer clock;
    clock.start();
    while (ok && confirmed < last) {
        for (; ok && sent < last && sent - confirmed < RawBroker::WINDOW; ++sent)
            ok = channel.publish(PACKS, body, QByteArray(), true);
        const quint64 number = ok ? channel.waitForConfirm() : 0;
        ok = number != 0;
        // Out of order they may come; the highest is near enough for a window.
        confirmed = qMax(confirmed, number);
    }
    figures->confirmsPerSecond =
        RawBroker::PUBLISHES * 1e9 / double(qMax<qint64>(1, clock.nsecsElapsed()));
    *error = channel.error();
    return ok && channel.removeQueue(PACKS);
}

} // namespace

bool RawBroker::measure(const Sizes &sizes, Figures *figures, QString *error)
{
    return measureRoundTrips(m_address, sizes, &figures->roundTrip, error)
        && measureConfirms(m_address, sizes.pack, figures, error);
}
