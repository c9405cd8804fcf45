#include "loadbox.h"

#include <billing/billingservice.h>
#include <bus/messagebus.h>
#include <individual/srpersonalaccount.h>
#include <payments/payscontroller.h>
#include <srrequest.h>

#include <molvacore/check.h>
#include <molvacore/fiscaltag.h>
#include <molvacore/paypack.h>

#include <QTimer>

namespace {

constexpr qint64 PER_SERVICE = 100; // hundredths
constexpr int RETRY_MS = 200;
constexpr qint64 MICROSECOND = 1000; // nanoseconds

} // namespace

LoadBox::LoadBox(std::unique_ptr<MessageBus> bus, const Host &host, qint64 boxId,
                 const QString &account, LoadFigures &figures, QObject *parent)
    : QObject(parent),
      m_bus(std::move(bus)),
      m_host(host),
      m_boxId(boxId),
      m_account(account),
      m_figures(figures)
{
    connect(m_bus.get(), &MessageBus::incomingMessage, this, &LoadBox::onAnswer);
    connect(m_bus.get(), &MessageBus::paymentStatus, this, &LoadBox::onStatus);
    connect(m_bus.get(), &MessageBus::accepted, this, &LoadBox::onAccepted);
    connect(m_bus.get(), &MessageBus::refused, this,
            [this](const QString &, const QVariant &, const QString &reason) { fail(reason); });
    connect(m_bus.get(), &MessageBus::traffic, this, [this](const BusMessage &message) {
        if (message.direction == BusMessage::Direction::Incoming) {
            if (message.address != MessageBus::PAYMENT_STATUS)
                m_figures.answerBytes = message.body.bytes().size();
        } else if (message.address == BillingService::PACK_DESTINATION) {
            m_figures.packBytes = message.body.bytes().size();
        } else {
            m_figures.requestBytes = message.body.bytes().size();
        }
    });
}

LoadBox::~LoadBox() = default;

bool LoadBox::isConnected() const
{
    return m_bus->connected();
}

void LoadBox::start()
{
    m_wanted = true;
    ask();
}

void LoadBox::next()
{
    m_busy = false;
    if (m_wanted)
        ask();
}

void LoadBox::fail(const QString &reason)
{
    ++m_figures.failures;
    m_figures.lastFailure = reason;
    m_exchange.clear();
    m_packId = 0;
    QTimer::singleShot(RETRY_MS, this, &LoadBox::next);
}

void LoadBox::ask()
{
    m_busy = true;
    const SrBillingExchange::Sender sender{m_boxId, m_host.currency.number3(),
                                           m_host.provider.workProviderId()};
    const SRRequest request = m_exchange.compose(sender, {{QStringLiteral("account"), m_account}});
    m_clock.start();
    m_bus->sendMessage(SRRequest::DESTINATION, request.toMap());
}

void LoadBox::onAnswer(const QVariantMap &headers, const QString &message)
{
    const SrAnswer answer = m_exchange.read(headers, message);
    if (!answer.matched)
        return;
    m_figures.request.add(m_clock.nsecsElapsed() / MICROSECOND);
    if (answer.outcome == SrAnswer::Outcome::Data)
        pay(answer);
    else
        fail(answer.failureText);
}

void LoadBox::pay(const SrAnswer &answer)
{
    SrPersonalAccount account;
    account.parseCheckList(answer.payParamList);
    account.setAccountNumber(m_account);
    QList<SrService> services = account.services();
    for (SrService &service : services)
        service.setDistributed(basix::FixNumber(100, PER_SERVICE));
    account.setServices(services);
    const basix::FixNumber sum = account.amount();
    if (sum <= basix::FixNumber()) {
        fail(QStringLiteral("the account has nothing to pay for"));
        return;
    }
    const auto provider = QSharedPointer<Provider>::create(m_host.provider);
    const Check check = account.createCheck(provider, m_host.kkm, basix::FixNumber(), sum, false);
    const QString number = QString::number(++m_receipts);
    const QVariantList properties{
        QVariantMap{{QStringLiteral("tag"), int(FiscalTag::QrText)},
                    {QStringLiteral("value"),
                     QStringLiteral("t=20261121T1000&s=%1&fn=%2&i=%3&fp=1&n=1")
                         .arg(sum.toString(), QString::number(m_boxId), number)}}};
    PayPack pack =
        account.createPack(*provider, properties, m_host.currency, basix::FixNumber(), sum);
    pack.setFiscProps(properties);
    pack.setFiscData({{QStringLiteral("fn"), QString::number(m_boxId)},
                      {QStringLiteral("fd"), number},
                      {QStringLiteral("fp"), QStringLiteral("1")}});
    pack.setFiscDocument(check.toDocument(false, MoneyType::Cash, true));
    QVariantMap message = PayPack::packToFullMap(pack);
    message.insert(PaysController::BOX_ID, QString::number(m_boxId));
    m_packId = pack.id();
    m_clock.start();
    m_bus->sendMessage(BillingService::PACK_DESTINATION, message);
}

void LoadBox::onAccepted(const QString &destination)
{
    if (destination == BillingService::PACK_DESTINATION && m_packId != 0)
        m_figures.confirm.add(m_clock.nsecsElapsed() / MICROSECOND);
}

void LoadBox::onStatus(const QVariant &status)
{
    const QVariantMap map = status.toMap();
    if (map.value(QStringLiteral("packId")).toString().toLongLong() != m_packId)
        return;
    m_packId = 0;
    if (map.value(QStringLiteral("error")).toBool()) {
        fail(map.value(QStringLiteral("description")).toString());
        return;
    }
    m_figures.taken.add(m_clock.nsecsElapsed() / MICROSECOND);
    ++m_figures.payments;
    next();
}
