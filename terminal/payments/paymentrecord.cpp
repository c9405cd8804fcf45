#include <payments/paymentrecord.h>

#include <tuple>

QString packStateText(PackState state)
{
    switch (state) {
    case PackState::Saved:
        return QStringLiteral("Сохранён");
    case PackState::HandedOn:
        return QStringLiteral("Передан на отправку");
    case PackState::Posted:
        return QStringLiteral("Отправлен");
    case PackState::Acknowledged:
        return QStringLiteral("Проведён");
    }
    return QString();
}

bool PaymentFilter::lets(const PaymentRecord &record) const
{
    return (!from.isValid() || record.created >= from)
        && (!until.isValid() || record.created < until) && record.account.startsWith(account)
        && (state < 0 || int(record.state) == state);
}

bool standsAbove(const PaymentRecord &first, const PaymentRecord &second, PaymentOrder order)
{
    const PaymentRecord &lower = order == PaymentOrder::OldestFirst ? first : second;
    const PaymentRecord &higher = order == PaymentOrder::OldestFirst ? second : first;
    // Bytes of UTF-8, as the database compares texts.
    return std::make_tuple(lower.created, lower.account.toUtf8(), lower.sequence)
        < std::make_tuple(higher.created, higher.account.toUtf8(), higher.sequence);
}
