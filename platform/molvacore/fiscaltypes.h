#pragma once

#include <molvacore/fiscaltag.h>

#include <QMetaType>

/// Tag 1054, признак расчёта.
enum class PaymentType : int {
    Income = 1,        ///< приход
    IncomeReturn = 2,  ///< возврат прихода
    Expense = 3,       ///< расход
    ExpenseReturn = 4, ///< возврат расхода
};

/// Which document the register makes: numbered like PaymentType.
enum class CheckType : int {
    Sale = 1,
    SaleReturn = 2,
    Purchase = 3,
    PurchaseReturn = 4,
};

/// How a part of the total was paid: tag 1031 for cash, tag 1081 for a card.
enum class MoneyType : int {
    Cash = 1,
    Card = 2,
};

/// Tag 1055, применяемая система налогообложения: one bit in a receipt (the bits of tag 1062 of the
/// registration).
enum class FDTax : int {
    General = 1,                 ///< ОСН
    SimplifiedIncome = 2,        ///< УСН доход
    SimplifiedIncomeExpense = 4, ///< УСН доход минус расход
    ImputedIncome = 8,           ///< ЕНВД, abolished in 2021
    Agricultural = 16,           ///< ЕСХН
    Patent = 32,                 ///< ПСН
};

/// Tag 1222 of a line (1057 of the whole receipt in format 1.05): one bit, not an ordinal. A
/// register takes a bit only if it is registered as that kind of agent (law 103-FZ for payment
/// agents, 161-FZ for bank payment agents).
enum class AgentFlag : int {
    None = 0,
    BankPayAgent = 1,     ///< банковский платёжный агент
    BankPaySubagent = 2,  ///< банковский платёжный субагент
    PayAgent = 4,         ///< платёжный агент
    PaySubagent = 8,      ///< платёжный субагент
    Attorney = 16,        ///< поверенный
    CommissionAgent = 32, ///< комиссионер
    OtherAgent = 64,      ///< агент (иной)
};

/// Tag 1214, признак способа расчёта.
enum class PaymentMethod : int {
    FullPrepayment = 1,    ///< предоплата 100 %
    PartialPrepayment = 2, ///< предоплата
    Advance = 3,           ///< аванс
    FullPayment = 4,       ///< полный расчёт
    PartialPayment = 5,    ///< частичный расчёт и кредит
    Credit = 6,            ///< передача в кредит
    CreditPayment = 7,     ///< оплата кредита
};

/// Tag 1212, признак предмета расчёта.
enum class PaymentItemType : int {
    Goods = 1,                ///< товар
    ExcisableGoods = 2,       ///< подакцизный товар
    Work = 3,                 ///< работа
    Service = 4,              ///< услуга
    GamblingBet = 5,          ///< ставка азартной игры
    GamblingPrize = 6,        ///< выигрыш азартной игры
    LotteryTicket = 7,        ///< лотерейный билет
    LotteryPrize = 8,         ///< выигрыш лотереи
    IntellectualActivity = 9, ///< предоставление РИД
    Payment = 10, ///< платёж: аванс, задаток, предоплата, кредит
    AgentCommission = 11, ///< агентское вознаграждение
    Payout = 12, ///< выплата: пени, штраф, бонус (in 2017: составной предмет)
    Other = 13,              ///< иной предмет расчёта
    PropertyRight = 14,      ///< имущественное право
    NonOperatingIncome = 15, ///< внереализационный доход
    OtherContributions = 16, ///< иные платежи и взносы (earlier: страховые взносы)
    TradeFee = 17,  ///< торговый сбор
    ResortFee = 18, ///< курортный сбор, туристический налог
    Deposit = 19,   ///< залог
    Expense = 20,   ///< расход
    PensionInsuranceSelf = 21, ///< взносы на ОПС ИП
    PensionInsurance = 22,     ///< взносы на ОПС
    HealthInsuranceSelf = 23,  ///< взносы на ОМС ИП
    HealthInsurance = 24,      ///< взносы на ОМС
    SocialInsurance = 25,      ///< взносы на ОСС
    CasinoPayment = 26,        ///< платёж казино
    CashWithdrawal = 27,       ///< выдача денежных средств
    MarkedExciseNoCode = 30,   ///< АТНМ
    MarkedExciseWithCode = 31, ///< АТМ
    MarkedGoodsNoCode = 32,    ///< ТНМ
    MarkedGoodsWithCode = 33,  ///< ТМ
};

Q_DECLARE_METATYPE(PaymentType)
Q_DECLARE_METATYPE(CheckType)
Q_DECLARE_METATYPE(MoneyType)
Q_DECLARE_METATYPE(FDTax)
Q_DECLARE_METATYPE(AgentFlag)
Q_DECLARE_METATYPE(PaymentMethod)
Q_DECLARE_METATYPE(PaymentItemType)
