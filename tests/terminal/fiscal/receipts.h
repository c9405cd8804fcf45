#pragma once

#include <molvacore/fiscaltag.h>

#include <QString>
#include <QVariantList>
#include <QVariantMap>

/// Receipts in the form in which a register is handed them.
namespace Receipts {

inline QString key(int tag)
{
    return FiscalTag::key(tag);
}

inline QVariantMap line(const QString &name, qint64 price)
{
    return {{key(FiscalTag::ItemName), name},
            {key(FiscalTag::Price), price},
            {key(FiscalTag::Quantity), QStringLiteral("1.000")},
            {key(FiscalTag::ItemCost), price},
            {key(FiscalTag::VatRate), 6},
            {key(FiscalTag::CalculationMethod), 4},
            {key(FiscalTag::ItemType), 4}};
}

/// A line sold for a supplier by a payment agent.
inline QVariantMap agentLine(const QString &name, qint64 price)
{
    QVariantMap result = line(name, price);
    result.insert(key(FiscalTag::ItemAgentSign), 4);
    result.insert(key(FiscalTag::SupplierInn), QStringLiteral("0012003461  "));
    result.insert(
        key(FiscalTag::AgentData),
        QVariantMap{
            {key(FiscalTag::PayAgentPhone), QStringList{QStringLiteral("+78001004107")}},
            {key(FiscalTag::PayOperatorPhone), QStringList{QStringLiteral("+78001004100")}}});
    result.insert(
        key(FiscalTag::SupplierData),
        QVariantMap{{key(FiscalTag::SupplierName), QStringLiteral("АО «Селмар Ривенхолд»")},
                    {key(FiscalTag::SupplierPhone), QStringList{QStringLiteral("+78001001872")}}});
    return result;
}

inline QVariantMap withLines(const QVariantList &lines, qint64 cash, qint64 card)
{
    qint64 total = 0;
    for (const QVariant &entry : lines)
        total += entry.toMap().value(key(FiscalTag::ItemCost)).toLongLong();
    return {{key(FiscalTag::SettlementSign), 1},
            {key(FiscalTag::TaxSystem), 1},
            {key(FiscalTag::Cashier), QStringLiteral("Фёдорова Вера Ильинична")},
            {key(FiscalTag::UserInn), QStringLiteral("0012003454  ")},
            {key(FiscalTag::RegisterNumber), QStringLiteral("0004107000012345")},
            {key(FiscalTag::ClientContact), QStringLiteral("+79123456789")},
            {key(FiscalTag::UserAttribute),
             QVariantMap{{key(FiscalTag::UserAttributeName), QStringLiteral("Терминал")},
                         {key(FiscalTag::UserAttributeValue), QStringLiteral("4107")}}},
            {key(FiscalTag::Item), lines},
            {key(FiscalTag::Total), total},
            {key(FiscalTag::CashSum), cash},
            {key(FiscalTag::CashlessSum), card},
            {QStringLiteral("printable"),
             QStringList{QStringLiteral("г. Приреченск, ул. Набережная, д. 12, кв. 34"),
                         QStringLiteral("Лицевой счет\t7001000101")}},
            {QStringLiteral("electronic"), false},
            {QStringLiteral("checkType"), 1}};
}

/// Two agent lines for 1500.50, 1000.00 of it by card.
inline QVariantMap good()
{
    return withLines({agentLine(QStringLiteral("Холодное водоснабжение"), 100050),
                      agentLine(QStringLiteral("Водоотведение"), 50000)},
                     50050, 100000);
}

/// The document with the value of one tag replaced, or removed when `value` is invalid.
inline QVariantMap with(QVariantMap document, int tag, const QVariant &value)
{
    if (value.isValid())
        document.insert(key(tag), value);
    else
        document.remove(key(tag));
    return document;
}

/// The same in the first line.
inline QVariantMap withInLine(QVariantMap document, int tag, const QVariant &value)
{
    QVariantList lines = document.value(key(FiscalTag::Item)).toList();
    lines[0] = with(lines.at(0).toMap(), tag, value);
    document.insert(key(FiscalTag::Item), lines);
    return document;
}

/// The same in a structure of the first line.
inline QVariantMap inside(const QVariantMap &document, int structure, int tag,
                          const QVariant &value)
{
    const QVariantMap first = document.value(key(FiscalTag::Item)).toList().at(0).toMap();
    return withInLine(document, structure, with(first.value(key(structure)).toMap(), tag, value));
}

} // namespace Receipts
