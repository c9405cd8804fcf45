#pragma once

#include <molvacore/molvacore_global.h>

#include <QString>
#include <QVector>

/// What an emulated card terminal does with an amount, chosen by the amount's last two digits (its
/// kopecks).
///
/// | Digits | Outcome | The cashier reads |
/// |---|---|---|
/// | 05 | Decline | Отказ банка-эмитента |
/// | 20 | LostBeforeCharge | Потеряна связь с терминалом, карта не списана |
/// | 21 | LostAfterCharge | Потеряна связь с терминалом: неизвестно, списаны ли деньги |
/// | 22 | Timeout | Карта не поднесена за отведённое время, карта не списана |
/// | 23 | Decline | Операция отменена покупателем |
/// | 30 | ApproveSlowly | nothing: the charge goes through after PosActivity::slowTime() |
/// | 51 | Decline | Недостаточно средств |
/// | 54 | Decline | Срок действия карты истёк |
/// | 55 | Decline | Неверный ПИН-код |
/// | 65 | Decline | Превышен лимит операций по карте |
/// | 75 | Decline | Превышено число попыток ввода ПИН-кода |
/// | 91 | Decline | Банк-эмитент недоступен |
///
/// 00 and every other pair of digits: approved. An outcome forced by CardReaderSettings::outcome()
/// goes before the table. Every failure says that it is simulated and why.
struct MOLVACORE_EXPORT PosTestAmount
{
    enum class Outcome {
        Approve,
        ApproveSlowly,    ///< charged after a while
        Decline,          ///< refused with the text; nothing is charged
        LostBeforeCharge, ///< no link to the terminal; nothing is charged; init() is needed again
        LostAfterCharge,  ///< the card is charged, but the answer is lost; init() is needed again
        Timeout           ///< nobody presented a card; nothing is charged
    };

    int digits = 0;
    Outcome outcome = Outcome::Approve;
    /// What the cashier is told, without the hint that it is simulated; empty for an approval.
    QString text;

    /// The table above, by digits.
    static QVector<PosTestAmount> table();
    /// The row for an amount of so many kopecks; the approval with digits of the amount when the
    /// table has none.
    static PosTestAmount forKopecks(qint64 kopecks);
};
