#include "benchrows.h"
#include "echo.h"

#include <bus/inprocessbus.h>

#include <QCoreApplication>
#include <QObject>
#include <QVariantMap>

namespace {

QVariantMap request()
{
    const QVariantList parameters{
        QVariantMap{{QStringLiteral("name"), QStringLiteral("account")},
                    {QStringLiteral("value"), QStringLiteral("4455001")}},
        QVariantMap{{QStringLiteral("name"), QStringLiteral("period")},
                    {QStringLiteral("value"), QStringLiteral("11-2026")}}};
    return {{QStringLiteral("code"), QStringLiteral("check")},
            {QStringLiteral("uid"), QStringLiteral("7300000000000000123")},
            {QStringLiteral("currencyId"), 643},
            {QStringLiteral("providerId"), 18722},
            {QStringLiteral("params"), QVariantMap{{QStringLiteral("payParamList"), parameters}}}};
}

const QString &destination()
{
    static const QString address = QStringLiteral("/app/box_plugin_check_pay");
    return address;
}

void busRoundTrip(benchmark::State &state, int)
{
    InProcessBus bus;
    InProcessBus::Answer answer;
    answer.headers = {{MessageBus::MESSAGE_TYPE, QStringLiteral("checkPayStatus")}};
    answer.body = "{\"uid\":\"7300000000000000123\",\"error\":true}";
    bus.serve(destination(), [&answer](const QVariantMap &) {
        InProcessBus::Outcome outcome;
        outcome.answer = answer;
        return outcome;
    });
    bool back = false;
    QObject::connect(&bus, &MessageBus::incomingMessage, [&back] { back = true; });
    const QVariant data = request();
    for (auto _ : state) {
        back = false;
        bus.sendMessage(destination(), data);
        while (!back)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void queuedRoundTrip(benchmark::State &state, int)
{
    Echo here;
    Echo there;
    const QVariantMap headers{{MessageBus::MESSAGE_TYPE, QStringLiteral("checkPayStatus")}};
    const QString text = QStringLiteral("{\"uid\":\"7300000000000000123\",\"error\":true}");
    QObject::connect(
        &here, &Echo::asked, &there, [&] { emit there.answered(headers, text); },
        Qt::QueuedConnection);
    bool back = false;
    QObject::connect(
        &there, &Echo::answered, &here, [&back] { back = true; }, Qt::QueuedConnection);
    const QVariant data = request();
    for (auto _ : state) {
        back = false;
        emit here.asked(destination(), data);
        while (!back)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace

QVector<BenchRow> busRows()
{
    BenchRow row;
    row.id = QStringLiteral("bus");
    row.subject = QStringLiteral("Запрос и ответ по шине внутри программы");
    row.floorText = QStringLiteral("по одному отложенному сигналу в каждую сторону");
    row.atMost = 2;
    row.sizes = {1};
    row.measured = busRoundTrip;
    row.bare = queuedRoundTrip;
    return {row};
}
