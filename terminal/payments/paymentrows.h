#pragma once

#include <payments/paymentrecord.h>

#include <basixcore/sqliteschema.h>

#include <QString>

class SqlStatement;

/// The table of pay packs as the payments store keeps it.
namespace PaymentRows {

basix::SqliteSchema schema();
/// What a SELECT has to name for read().
QString columns();
PaymentRecord read(const SqlStatement &row);

/// UTC with milliseconds: texts sort as times do. Empty for an invalid time, and back.
QString stamp(const QDateTime &time);
/// The column that holds when a pack reached the state.
QString timeColumn(PackState state);

} // namespace PaymentRows
