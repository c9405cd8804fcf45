#include <recovery/paymentreconciler.h>

#include <recovery/faultpoint.h>
#include <recovery/receiptorigin.h>

#include <fiscal/emulatedregister.h>
#include <fiscal/fiscaljournal.h>
#include <payments/chargejournal.h>
#include <payments/paymentsstore.h>
#include <payments/payscontroller.h>

#include <QHash>

#include <algorithm>
#include <limits>

namespace {

constexpr int PAGE = 100;
constexpr int INCOME = 1;
/// Parts of one hundredth are left out of a pack, at most one in cash and one by card.
constexpr qint64 LEFT_OUT = 2;
/// A receipt so many receipts later may be the same payment, rung up once more.
constexpr int REPETITION_RANGE = 20;

using State = PaymentCase::State;

QString money(const basix::FixNumber &sum)
{
    return QStringLiteral("%1 р.").arg(sum.toString());
}

QString shown(const QDateTime &time)
{
    return time.toLocalTime().toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
}

bool differs(qint64 receipt, const basix::FixNumber &pack)
{
    return std::abs(receipt - pack.value()) > LEFT_OUT;
}

} // namespace

PaymentReconciler::PaymentReconciler(const Sources &sources, const PackRebuilder &rebuilder,
                                     QObject *parent)
    : QObject(parent),
      m_sources(sources),
      m_rebuilder(rebuilder),
      m_matcher(sources.charges, sources.fiscal, sources.payments)
{
    connect(&m_sources.controller, &PaysController::saved, this,
            [this](qint64 packId) { m_matcher.matchPack(packId); });
}

PaymentReconciler::~PaymentReconciler() = default;

void PaymentReconciler::follow(EmulatedRegister &fiscalRegister)
{
    connect(&fiscalRegister, &EmulatedRegister::receiptRegistered, this,
            [this](qint64 number) { m_matcher.matchReceipt(number); });
}

PaymentReconciler::Report PaymentReconciler::reconcile(Scope scope, const Progress &progress)
{
    Report report;
    m_sources.charges.storeUnkept();
    readReceipts(scope, progress, &report);
    if (!report.complete || !report.error.isEmpty())
        return report;
    m_matcher.matchPacks();
    readOtherPacks(scope, &report);
    readCharges(scope, &report);
    std::stable_sort(report.cases.begin(), report.cases.end(),
                     [](const PaymentCase &a, const PaymentCase &b) { return a.time > b.time; });
    return report;
}

void PaymentReconciler::add(Scope scope, const PaymentCase &payment, Report *report)
{
    if (payment.isOpen())
        ++report->open;
    else if (payment.state == State::Refunded)
        ++report->refunded;
    else
        ++report->agreed;
    if (payment.isOpen() || scope == Scope::All)
        report->cases.append(payment);
}

void PaymentReconciler::readReceipts(Scope scope, const Progress &progress, Report *report)
{
    const QString storage = m_sources.fiscal.storageNumber();
    const int total = m_sources.fiscal.receiptCount();
    qint64 last = 0;
    int done = 0;
    for (;;) {
        if (progress && !progress(done, total)) {
            report->complete = false;
            return;
        }
        const QVector<ReceiptHead> page = m_sources.fiscal.heads(last, PAGE);
        if (!m_sources.fiscal.lastError().isEmpty()) {
            report->error = m_sources.fiscal.lastError();
            return;
        }
        const qint64 end =
            page.size() < PAGE ? std::numeric_limits<qint64>::max() : page.last().number;
        const QVector<PaymentRecord> stored =
            m_sources.payments.packsOfReceipts(storage, last + 1, end);
        if (!m_sources.payments.lastError().isEmpty()) {
            report->error = m_sources.payments.lastError();
            return;
        }
        QHash<qint64, PaymentRecord> packs;
        for (const PaymentRecord &pack : stored)
            packs.insert(pack.fiscalDocument.toLongLong(), pack);
        for (const ReceiptHead &receipt : page) {
            m_matcher.matchReceipt(receipt);
            const auto pack = packs.constFind(receipt.number);
            if (pack != packs.cend())
                add(scope, caseOf(*pack, receipt), report);
            else if (receipt.settlementSign == INCOME)
                add(scope, caseOf(receipt), report);
            packs.remove(receipt.number);
        }
        for (const PaymentRecord &pack : qAsConst(packs))
            add(scope, caseOf(pack, std::nullopt), report);
        if (page.size() < PAGE)
            break;
        last = end;
        done += page.size();
    }
    if (progress)
        progress(total, total);
}

void PaymentReconciler::readOtherPacks(Scope scope, Report *report)
{
    const QVector<PaymentRecord> packs =
        m_sources.payments.packsWithoutReceipt(m_sources.fiscal.storageNumber());
    for (const PaymentRecord &pack : packs)
        add(scope, caseOf(pack, std::nullopt), report);
}

void PaymentReconciler::readCharges(Scope scope, Report *report)
{
    const QVector<ChargeRecord> open = m_sources.charges.unexplained();
    for (const ChargeRecord &charge : open)
        add(scope, caseOf(charge), report);
    if (!m_sources.charges.lastError().isEmpty())
        report->error = m_sources.charges.lastError();
    for (int offset = 0;; offset += PAGE) {
        const QVector<ChargeRecord> page = m_sources.charges.charges(offset, PAGE);
        for (const ChargeRecord &charge : page) {
            if (charge.refunded.isValid())
                add(scope, caseOf(charge), report);
        }
        if (page.size() < PAGE)
            return;
    }
}

PaymentCase PaymentReconciler::caseOf(const ChargeRecord &charge) const
{
    PaymentCase payment;
    payment.state = charge.refunded.isValid() ? State::Refunded : State::ChargedNotFiscalised;
    payment.time = charge.time;
    payment.sum = charge.amount;
    payment.chargeId = charge.id;
    payment.packId = charge.packId;
    payment.story = QStringLiteral("С карты списано %1 (терминал %2, RRN %3, код авторизации %4).")
                        .arg(money(charge.amount), charge.terminal, charge.rrn, charge.authCode);
    if (payment.state == State::Refunded) {
        payment.story += QStringLiteral(" Деньги возвращены на карту %1, RRN возврата %2.")
                             .arg(shown(charge.refunded), charge.refundRrn);
        return payment;
    }
    payment.story += charge.answered
        ? QStringLiteral(" Чека на эту оплату нет: платёж не закончен.")
        : QStringLiteral(" Кассир видел, что исход неизвестен. Чека на эту оплату нет.");
    payment.wayOut = QStringLiteral(
        "Если платёж не состоялся, верните деньги: «Возврат по карте». Если спорите с "
        "плательщиком, сначала сверьтесь с банком по RRN.");
    return payment;
}

QString PaymentReconciler::repetitionOf(const ReceiptHead &receipt)
{
    // The document number ends with the account; it begins with the seconds, which differ.
    constexpr int secondsDigits = 10;
    const QVector<ReceiptHead> later = m_sources.fiscal.heads(receipt.number, REPETITION_RANGE);
    for (const ReceiptHead &each : later) {
        if (each.total == receipt.total && each.settlementSign == receipt.settlementSign
            && each.documentNumber.mid(secondsDigits)
                == receipt.documentNumber.mid(secondsDigits)) {
            return QStringLiteral(
                       " Внимание: позже по тому же счёту на ту же сумму пробит чек № ФД "
                       "%1. Возможно, это тот же платёж.")
                .arg(each.number);
        }
    }
    return QString();
}

PaymentCase PaymentReconciler::caseOf(const ReceiptHead &receipt)
{
    PaymentCase payment;
    payment.state = State::FiscalisedNotSaved;
    payment.time = receipt.time;
    payment.sum = basix::FixNumber(100, receipt.total);
    payment.fiscalDocument = receipt.number;
    if (const auto record = m_sources.fiscal.record(receipt.number))
        payment.account = ReceiptOrigin::of(*record).account;
    if (const auto charge =
            m_sources.charges.chargeOfReceipt(m_sources.fiscal.storageNumber(), receipt.number))
        payment.chargeId = charge->id;
    payment.story =
        QStringLiteral("Чек № ФД %1 пробит на %2 (наличными %3, картой %4), а платёж в журнале не "
                       "сохранён: %5.")
            .arg(QString::number(receipt.number), money(payment.sum),
                 money(basix::FixNumber(100, receipt.cash)),
                 money(basix::FixNumber(100, receipt.cashless)),
                 receipt.answered ? QStringLiteral("работа прервалась между кассой и журналом")
                                  : QStringLiteral("касса не ответила после печати"))
        + repetitionOf(receipt);
    payment.wayOut = QStringLiteral(
        "Если плательщик заплатил по этому чеку, нажмите «Сохранить по чеку»: платёж уйдёт в "
        "биллинг. Если деньги вернули или провели другим чеком, пробейте чек возврата.");
    return payment;
}

PackState PaymentReconciler::settled(const PaymentRecord &pack, bool *lost)
{
    *lost = false;
    if (!m_sources.billing)
        return pack.state;
    const std::optional<bool> known = m_sources.billing(pack.packId);
    if (!known)
        return pack.state;
    if (*known && pack.state < PackState::Acknowledged)
        return m_sources.controller.markAcknowledged(pack.packId) ? PackState::Acknowledged
                                                                  : pack.state;
    *lost = !*known && pack.state == PackState::Acknowledged;
    return pack.state;
}

PaymentCase PaymentReconciler::caseOf(const PaymentRecord &pack,
                                      const std::optional<ReceiptHead> &receipt)
{
    PaymentCase payment;
    payment.time = pack.created.toLocalTime();
    payment.account = pack.account;
    payment.sum = pack.sum;
    payment.packId = pack.packId;
    payment.fiscalDocument = pack.fiscalDocument.toLongLong();
    bool lost = false;
    const QString refusal =
        pack.lastError.isEmpty() ? QString() : QStringLiteral(" Причина: %1").arg(pack.lastError);
    switch (settled(pack, &lost)) {
    case PackState::Saved:
    case PackState::HandedOn:
        payment.state = State::SavedNotPosted;
        payment.story = QStringLiteral("Платёж сохранён и ещё не ушёл в биллинг.") + refusal;
        payment.wayOut = QStringLiteral("Программа отправит его сама, когда появится связь. Можно "
                                        "отправить сейчас: «Отправить».");
        break;
    case PackState::Posted:
        payment.state = State::PostedNotAcknowledged;
        payment.story = QStringLiteral("Платёж отправлен %1, биллинг его ещё не подтвердил.%2")
                            .arg(shown(pack.posted), refusal);
        payment.wayOut =
            QStringLiteral("Подождите или нажмите «Отправить»: дважды биллинг его не примет.");
        break;
    case PackState::Acknowledged:
        payment.state = lost ? State::Disagrees : State::Agreed;
        payment.story = lost
            ? QStringLiteral("Биллинг подтвердил платёж %1, а теперь его не знает.")
                  .arg(shown(pack.acknowledged))
            : QStringLiteral("Платёж подтверждён биллингом.");
        payment.wayOut =
            lost ? QStringLiteral("Нажмите «Отправить» и сообщите в биллинг.") : QString();
        break;
    }
    const bool ours = pack.fiscalStorage == m_sources.fiscal.storageNumber();
    if (!receipt && ours) {
        payment.state = State::Disagrees;
        payment.story +=
            QStringLiteral(" Его чека № ФД %1 в журнале кассы нет.").arg(pack.fiscalDocument);
        payment.wayOut = QStringLiteral("Сверьтесь с лентой кассы и обратитесь в поддержку.");
    } else if (receipt
               && (differs(receipt->cash, pack.cash) || differs(receipt->cashless, pack.card))) {
        payment.state = State::Disagrees;
        payment.story += QStringLiteral(" В чеке наличными %1 и картой %2, в платеже %3 и %4.")
                             .arg(money(basix::FixNumber(100, receipt->cash)),
                                  money(basix::FixNumber(100, receipt->cashless)), money(pack.cash),
                                  money(pack.card));
        payment.wayOut = QStringLiteral("Сверьтесь с лентой кассы и обратитесь в поддержку.");
    }
    if (pack.recovered)
        payment.story += QStringLiteral(" Платёж восстановлен по чеку.");
    return payment;
}

PaymentCase PaymentReconciler::again(const PaymentCase &payment)
{
    std::optional<ReceiptHead> receipt;
    if (payment.fiscalDocument > 0)
        receipt = m_sources.fiscal.head(payment.fiscalDocument);
    std::optional<PaymentRecord> pack;
    if (payment.packId > 0)
        pack = m_sources.payments.record(payment.packId);
    else if (receipt)
        pack = m_sources.payments.packOfReceipt(m_sources.fiscal.storageNumber(), receipt->number);
    if (pack)
        return caseOf(*pack, receipt);
    if (receipt)
        return caseOf(*receipt);
    const std::optional<ChargeRecord> charge = m_sources.charges.charge(payment.chargeId);
    if (!charge)
        return payment;
    PaymentCase now = caseOf(*charge);
    if (charge->fiscalDocument > 0)
        now.state = State::Agreed;
    return now;
}

bool PaymentReconciler::saveByReceipt(const PaymentCase &payment, QString *error)
{
    const auto receipt = m_sources.fiscal.record(payment.fiscalDocument);
    if (!receipt) {
        *error = QStringLiteral("Чека № ФД %1 в журнале кассы нет.").arg(payment.fiscalDocument);
        return false;
    }
    error->clear();
    if (m_sources.payments.packOfReceipt(receipt->storage, receipt->number))
        return true;
    if (!m_sources.payments.lastError().isEmpty()) {
        *error = m_sources.payments.lastError();
        return false;
    }
    const std::optional<PackRebuilder::Rebuilt> rebuilt = m_rebuilder.rebuild(*receipt, error);
    if (!rebuilt)
        return false;
    FaultPoint::pass(FaultPoint::Place::RebuiltBeforeSave);
    if (!m_sources.controller.saveRecovered(rebuilt->pack, rebuilt->note)) {
        *error = m_sources.controller.lastError();
        return false;
    }
    FaultPoint::pass(FaultPoint::Place::RebuiltAfterSave);
    return true;
}

bool PaymentReconciler::post(const PaymentCase &payment, QString *error)
{
    return m_sources.controller.outbox().postAgain(payment.packId, error);
}

bool PaymentReconciler::refund(const PaymentCase &payment, QString *error)
{
    const auto charge = m_sources.charges.charge(payment.chargeId);
    if (charge && charge->refunded.isValid()) {
        error->clear();
        return true;
    }
    if (m_sources.charges.refund(payment.chargeId, QDateTime::currentDateTime())) {
        error->clear();
        return true;
    }
    *error = m_sources.charges.lastError();
    return false;
}
