#pragma once

#include <QString>
#include <QVariantList>
#include <QVariantMap>

/// A billing record as the service described it: one descriptor per field, keyed by the name of the
/// field.
///
/// A descriptor is a map; "name", "value", "title" and "isEditable" are read here, whatever else it
/// carries travels along untouched. The service decides what may change: a value is replaced only
/// where the descriptor says "isEditable", and a record never grows a field that the service did
/// not describe. Nothing fails or reports: unknown names give empty or invalid results, refused
/// changes are silent.
class SrObject
{
public:
    SrObject() = default;
    virtual ~SrObject();
    SrObject(const SrObject &) = default;
    SrObject(SrObject &&) noexcept = default;
    SrObject &operator=(const SrObject &) = default;
    SrObject &operator=(SrObject &&) noexcept = default;

    /// The record as it travels with a payment: a { "name", "value" } map per field in ascending
    /// order of names, editable or not, nothing converted. The list is also written to the log.
    virtual QVariantList toPayParamsList() const;
    /// Replaces the whole record by the descriptors in `list`; of several with one name the last
    /// wins. An element that is no map, or has no "name", ends up under the empty name.
    virtual void parseCheckList(const QVariantList &list);

    QVariantMap getParams() const { return m_params; }
    void setParams(const QVariantMap &params) { m_params = params; }

    /// The descriptor of a field; empty when there is none.
    QVariantMap getField(const QString &name) const;
    bool isEditable(const QString &name);
    QString getTitle(const QString &name) const;
    /// Invalid when there is no such field, or its descriptor has no "value".
    QVariant getValue(const QString &name) const;
    /// Does nothing unless the field exists and is editable.
    void setValue(const QString &name, const QVariant &value);

    bool operator==(const SrObject &other) const { return m_params == other.m_params; }
    bool operator!=(const SrObject &other) const { return !(*this == other); }

protected:
    /// Is there a descriptor under this name.
    bool hasField(const QString &name) const { return m_params.contains(name); }
    /// What `read` makes of a field's value, which is not copied for it. Tables and documents read
    /// every value of every record.
    template<typename Read>
    auto valueRead(const QString &name, Read read) const
    {
        const QVariant *value = valueInPlace(name);
        return value ? read(*value) : read(getValue(name));
    }
    /// Takes the descriptor out of the record; invalid when there is none.
    QVariant takeField(const QString &name) { return m_params.take(name); }

private:
    /// Null when it has to be made: there is no such value, or the descriptor is no map as it
    /// stands.
    const QVariant *valueInPlace(const QString &name) const;
    QVariant entry(const QString &field, const QString &key) const;

    QVariantMap m_params;
};
