#pragma once

#include <rapidcheck.h>

#include <QString>
#include <QVariantList>

#include <iosfwd>
#include <vector>

/// Texts show as "..." with what is not ASCII as \uXXXX.
void showValue(const QString &text, std::ostream &out);

namespace rc {

/// Any UTF-16, half characters included, biased to what amounts and codes are made of.
template<>
struct Arbitrary<QString>
{
    static Gen<QString> arbitrary();
};

} // namespace rc

/// What billing may send and a cashier may do, in kopecks.
namespace Generators {

/// Any raw value, biased to zero and to both ends of the range.
rc::Gen<qint64> anyRaw();
/// An amount of a bill: up to a million roubles either way, biased to zero and single kopecks.
rc::Gen<qint64> amount();
rc::Gen<qint64> amountNotBelowZero();
/// 1, 10, ... 1000000000.
rc::Gen<int> multiplier();

struct Service
{
    qint64 id = 0;
    qint64 charge = 0;
    qint64 topay = 0;
    qint64 distributed = 0;
    bool editable = true; ///< the distributed amount; the rest never is

    QVariantList descriptors() const;
};
/// Amounts of either sign; about one in eight is read-only, about one in eight a penalty.
rc::Gen<std::vector<Service>> services();
/// As a cashier may leave the page: nothing distributed is negative.
rc::Gen<std::vector<Service>> payableServices();
void showValue(const Service &service, std::ostream &out);

/// { "name": name, "paramList": [ { "paramList": descriptors }, ... ] }
QVariantMap listed(const QString &name, const QVector<QVariantList> &records);
QVariantMap listed(const QString &name, const std::vector<Service> &services);

/// "1234.56"
QString money(qint64 kopecks);

} // namespace Generators
