#pragma once

#include "exactmoney.h"
#include "fuzztarget.h"

#include "srobject.h"

#include <QVector>

#include <algorithm>

/// What holds for every record that billing describes.
namespace RecordChecks {

template<typename Record>
struct MoneyField
{
    QString name;
    basix::FixNumber (Record::*get)() const;
    void (Record::*set)(const basix::FixNumber &);
};

/// A written record keeps every field but the one that was written, and grows none.
inline void othersUnchanged(const SrObject &before, const SrObject &after, const QString &field)
{
    QVariantMap expected = before.getParams();
    QVariantMap found = after.getParams();
    FUZZ_REQUIRE(
        std::equal(expected.keyBegin(), expected.keyEnd(), found.keyBegin(), found.keyEnd()),
        QStringLiteral("a record grew or lost fields by writing \"%1\"").arg(field));
    QVariantMap expectedField = expected.take(field).toMap();
    QVariantMap foundField = found.take(field).toMap();
    FUZZ_REQUIRE(expected == found,
                 QStringLiteral("writing \"%1\" changed another field").arg(field));
    expectedField.remove(QStringLiteral("value"));
    foundField.remove(QStringLiteral("value"));
    FUZZ_REQUIRE(expectedField == foundField,
                 QStringLiteral("writing \"%1\" changed its description").arg(field));
}

template<typename Record>
void checkMoney(const Record &record, const QVector<MoneyField<Record>> &fields)
{
    for (const MoneyField<Record> &field : fields) {
        const QVariant sent = record.getValue(field.name);
        const auto written = sent.userType() == QMetaType::QString
            ? ExactMoney::canonical(sent.toString())
            : std::nullopt;
        FUZZ_REQUIRE(!written || (record.*field.get)().toString() == *written,
                     QStringLiteral("\"%1\" sent as %2 reads as %3")
                         .arg(field.name, sent.toString(), (record.*field.get)().toString()));

        const bool isNumber =
            sent.userType() == QMetaType::Double || sent.userType() == QMetaType::LongLong;
        FUZZ_REQUIRE(!isNumber || qAbs(sent.toDouble()) > 1e12
                         || (record.*field.get)() == basix::FixNumber(100, sent.toDouble()),
                     QStringLiteral("\"%1\" sent as the number %2 reads as %3")
                         .arg(field.name, sent.toString(), (record.*field.get)().toString()));

        const Record original = record;
        Record copy = record;
        const basix::FixNumber amount(100, 1234567);
        const bool editable = copy.isEditable(field.name);
        (copy.*field.set)(amount);
        FUZZ_REQUIRE(
            record == original,
            QStringLiteral("writing \"%1\" of a copy changed the original").arg(field.name));
        if (editable) {
            FUZZ_REQUIRE((copy.*field.get)() == amount,
                         QStringLiteral("\"%1\" is editable and was not written").arg(field.name));
            othersUnchanged(record, copy, field.name);
        } else {
            FUZZ_REQUIRE(copy == record,
                         QStringLiteral("\"%1\" is read-only and was written").arg(field.name));
        }
    }
}

} // namespace RecordChecks
