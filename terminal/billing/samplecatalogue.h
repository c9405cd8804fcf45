#pragma once

#include <billing/billingrecords.h>

#include <QPair>
#include <QString>
#include <QVector>

/// What a new billing database is filled with: made-up people and firms, the same every time.
namespace SampleCatalogue {

QVector<BillingAccount> accounts();
/// Kind of record and field, in the order of sending.
QVector<QPair<QString, BillingField>> fields();

} // namespace SampleCatalogue
