#include <molvacore/postestamount.h>

QVector<PosTestAmount> PosTestAmount::table()
{
    return {
        {5, Outcome::Decline, QStringLiteral("Отказ банка-эмитента")},
        {20, Outcome::LostBeforeCharge,
         QStringLiteral("Потеряна связь с терминалом, карта не списана")},
        {21, Outcome::LostAfterCharge,
         QStringLiteral("Потеряна связь с терминалом после отправки запроса: неизвестно, списаны "
                        "ли деньги. Не повторяйте "
                        "оплату, пока не проверите операцию по журналу терминала или в банке")},
        {22, Outcome::Timeout,
         QStringLiteral("Карта не поднесена за отведённое время, карта не списана")},
        {23, Outcome::Decline, QStringLiteral("Операция отменена покупателем")},
        {30, Outcome::ApproveSlowly, QString()},
        {51, Outcome::Decline, QStringLiteral("Недостаточно средств")},
        {54, Outcome::Decline, QStringLiteral("Срок действия карты истёк")},
        {55, Outcome::Decline, QStringLiteral("Неверный ПИН-код")},
        {65, Outcome::Decline, QStringLiteral("Превышен лимит операций по карте")},
        {75, Outcome::Decline, QStringLiteral("Превышено число попыток ввода ПИН-кода")},
        {91, Outcome::Decline, QStringLiteral("Банк-эмитент недоступен")},
    };
}

PosTestAmount PosTestAmount::forKopecks(qint64 kopecks)
{
    const int digits = static_cast<int>(kopecks % 100);
    const QVector<PosTestAmount> rows = table();
    for (const PosTestAmount &row : rows) {
        if (row.digits == digits)
            return row;
    }
    return {digits, Outcome::Approve, QString()};
}
