#include "packqueries.h"

#include <payments/paymentrows.h>

namespace {

QString records(const QString &rest)
{
    return QStringLiteral("SELECT %1 FROM packs %2").arg(PaymentRows::columns(), rest);
}

} // namespace

// Without the index named SQLite walks through all packs in the order of saving rather than sort
// the few that are waiting.
QString PackQueries::numbersInStates()
{
    return QStringLiteral("SELECT pack_id FROM packs INDEXED BY packs_by_state "
                          "WHERE state BETWEEN ? AND ? ORDER BY sequence");
}

QString PackQueries::numbersOfReceipt()
{
    return QStringLiteral("SELECT pack_id FROM packs WHERE fiscal_storage = ? AND "
                          "CAST(fiscal_document AS INTEGER) = ? ORDER BY sequence");
}

QString PackQueries::ofReceipts()
{
    return records(QStringLiteral("WHERE fiscal_storage = ? AND CAST(fiscal_document AS INTEGER) "
                                  "BETWEEN ? AND ? ORDER BY sequence"));
}

QString PackQueries::withoutReceipt()
{
    return records(QStringLiteral(
        "WHERE sequence IN (SELECT sequence FROM packs WHERE fiscal_storage = '' UNION "
        "SELECT sequence FROM packs INDEXED BY packs_by_state "
        "WHERE state BETWEEN ? AND ? AND fiscal_storage <> ?) ORDER BY sequence"));
}
