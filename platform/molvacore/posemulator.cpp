#include <molvacore/posemulator.h>

#include <molvacore/cardchargelog.h>
#include <molvacore/cardreadersettings.h>
#include <molvacore/posactivity.h>
#include <molvacore/postestoutcome.h>

#include <QDateTime>
#include <QRandomGenerator>

namespace {

QString randomDigits(int count)
{
    QString digits;
    for (int i = 0; i < count; ++i)
        digits.append(QChar(u'0' + QRandomGenerator::global()->bounded(10)));
    return digits;
}

/// What may stand in the settings, for whoever mistyped it.
QString knownOutcomes()
{
    QStringList names;
    const QVector<PosTestOutcome> table = PosTestOutcome::table();
    for (const PosTestOutcome &outcome : table)
        names.append(outcome.name);
    return names.join(QStringLiteral(", "));
}

} // namespace

PosEmulator::PosEmulator(const QString &heading, const QString &terminal)
    : m_heading(heading), m_terminal(terminal)
{
}

bool PosEmulator::init(QString &error)
{
    m_ready = false;
    m_forced = CardReaderSettings().outcome();
    const std::optional<PosTestOutcome> forced = PosTestOutcome::named(m_forced);
    if (!m_forced.isEmpty() && !forced) {
        error = QStringLiteral("В настройках терминала задан неизвестный исход «%1». Допустимы: %2 "
                               "или пустое значение.")
                    .arg(m_forced, knownOutcomes());
        return false;
    }
    if (forced && !forced->initialises) {
        error = QStringLiteral(
                    "Карточный терминал не отвечает. Проверьте питание и кабель и повторите. %1")
                    .arg(hint(0));
        return false;
    }
    m_ready = true;
    return true;
}

bool PosEmulator::pay(const basix::FixNumber &amount, QString &error, QStringList &slip)
{
    slip.clear();
    if (!m_ready) {
        error = QStringLiteral("Карточный терминал не готов: связь с ним не установлена. Карта не "
                               "списана; повторите оплату.");
        return false;
    }
    const basix::FixNumber roubles = amount.rescaled(100);
    if (roubles.value() <= 0) {
        error = QStringLiteral(
            "Сумма оплаты картой должна быть больше нуля. Карта не списана; введите другую сумму.");
        return false;
    }
    const PosTestAmount row = outcomeFor(roubles.value());
    switch (row.outcome) {
    case PosTestAmount::Outcome::ApproveSlowly:
        PosActivity::wait();
        Q_FALLTHROUGH();
    case PosTestAmount::Outcome::Approve:
        error.clear();
        slip = slipOf(charge(roubles, true));
        return true;
    case PosTestAmount::Outcome::LostAfterCharge:
        charge(roubles, false);
        m_ready = false;
        break;
    case PosTestAmount::Outcome::LostBeforeCharge:
        m_ready = false;
        break;
    case PosTestAmount::Outcome::Decline:
    case PosTestAmount::Outcome::Timeout:
        break;
    }
    error = QStringLiteral("%1. %2").arg(row.text, hint(row.digits));
    return false;
}

PosTestAmount PosEmulator::outcomeFor(qint64 kopecks) const
{
    const std::optional<PosTestOutcome> forced = PosTestOutcome::named(m_forced);
    return forced ? forced->amount : PosTestAmount::forKopecks(kopecks);
}

QString PosEmulator::hint(int digits) const
{
    if (!m_forced.isEmpty())
        return QStringLiteral("(Имитация: исход «%1» задан в настройках терминала.)").arg(m_forced);
    return QStringLiteral("(Имитация: так терминал отвечает на сумму, у которой в копейках %1.)")
        .arg(digits, 2, 10, QLatin1Char('0'));
}

CardCharge PosEmulator::charge(const basix::FixNumber &amount, bool answered) const
{
    CardCharge charge;
    charge.time = QDateTime::currentDateTime();
    charge.amount = amount;
    charge.terminal = m_terminal;
    charge.rrn = randomDigits(12);
    charge.authCode = randomDigits(6);
    charge.answered = answered;
    CardChargeLog::append(charge);
    return charge;
}

QStringList PosEmulator::slipOf(const CardCharge &charge) const
{
    return {
        m_heading,
        QStringLiteral("ОПЛАТА (ИМИТАЦИЯ)"),
        QStringLiteral("Терминал: %1").arg(charge.terminal),
        QStringLiteral("Дата и время: %1")
            .arg(charge.time.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"))),
        QStringLiteral("Карта: **** **** **** 0018"),
        QStringLiteral("Сумма: %1 руб.").arg(charge.amount.toString()),
        QStringLiteral("RRN: %1").arg(charge.rrn),
        QStringLiteral("Код авторизации: %1").arg(charge.authCode),
        QStringLiteral("ОДОБРЕНО"),
    };
}
