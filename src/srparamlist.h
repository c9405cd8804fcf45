#pragma once

#include <QList>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

/// Nested records: billing wraps a list of records, and each record of it, in a map whose
/// "paramList" holds the list.
namespace SrParamList {

/// The list in the "paramList" of `wrapper`; empty when `wrapper` is no map or carries no list.
inline QVariantList of(const QVariant &wrapper)
{
    static const QString key = QStringLiteral("paramList");
    return wrapper.toMap().value(key).toList();
}

/// { "name": name, "paramList": list }
inline QVariantMap wrapped(const QString &name, const QVariantList &list)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("paramList"), list}};
}

/// One record per wrapped element, also for an empty one, in the order of the list.
template<typename Record>
QList<Record> records(const QVariantList &wrappedRecords)
{
    QList<Record> parsed;
    parsed.reserve(wrappedRecords.size());
    for (const QVariant &wrapper : wrappedRecords) {
        parsed.append(Record());
        parsed.last().parseCheckList(of(wrapper));
    }
    return parsed;
}

} // namespace SrParamList
