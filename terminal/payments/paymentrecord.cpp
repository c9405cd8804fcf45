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

bool standsAbove(const PaymentRecord &first, const PaymentRecord &second, const PaymentOrder &order)
{
    const PaymentRecord &lower = order.descending ? second : first;
    const PaymentRecord &higher = order.descending ? first : second;
    const auto below = [&](const auto &value) {
        return std::make_tuple(value(lower), lower.sequence)
            < std::make_tuple(value(higher), higher.sequence);
    };
    using Key = PaymentOrder::Key;
    // Texts as bytes of UTF-8, as the database compares them.
    switch (order.key) {
    case Key::Time:
        return below([](const PaymentRecord &record) {
            return std::make_pair(record.created, record.account.toUtf8());
        });
    case Key::Provider:
        return below([](const PaymentRecord &record) { return record.providerName.toUtf8(); });
    case Key::Account:
        return below([](const PaymentRecord &record) { return record.account.toUtf8(); });
    case Key::Sum:
        return below([](const PaymentRecord &record) { return record.sum.value(); });
    case Key::Cash:
        return below([](const PaymentRecord &record) { return record.cash.value(); });
    case Key::Card:
        return below([](const PaymentRecord &record) { return record.card.value(); });
    case Key::State:
        return below([](const PaymentRecord &record) { return int(record.state); });
    }
    return false;
}
