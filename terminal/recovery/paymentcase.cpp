#include <recovery/paymentcase.h>

bool PaymentCase::canPost() const
{
    switch (state) {
    case State::SavedNotPosted:
    case State::PostedNotAcknowledged:
        return true;
    case State::Disagrees:
        return packId > 0;
    case State::ChargedNotFiscalised:
    case State::FiscalisedNotSaved:
    case State::Refunded:
    case State::Agreed:
        break;
    }
    return false;
}

QString PaymentCase::stateText(State state)
{
    switch (state) {
    case State::ChargedNotFiscalised:
        return QStringLiteral("Карта списана, чека нет");
    case State::FiscalisedNotSaved:
        return QStringLiteral("Чек пробит, платёж не сохранён");
    case State::SavedNotPosted:
        return QStringLiteral("Сохранён, не отправлен");
    case State::PostedNotAcknowledged:
        return QStringLiteral("Отправлен, не подтверждён");
    case State::Disagrees:
        return QStringLiteral("Данные расходятся");
    case State::Refunded:
        return QStringLiteral("Возвращён на карту");
    case State::Agreed:
        return QStringLiteral("Сошёлся");
    }
    return QString();
}
