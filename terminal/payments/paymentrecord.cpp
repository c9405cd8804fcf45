#include <payments/paymentrecord.h>

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
