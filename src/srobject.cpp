#include "srobject.h"

#include <molvacore/logvariant.h>

#include <QDebug>
#include <QLoggingCategory>

#include <atomic>
#include <utility>

namespace {

const QString keyName = QStringLiteral("name");
const QString keyValue = QStringLiteral("value");
const QString keyTitle = QStringLiteral("title");
const QString keyIsEditable = QStringLiteral("isEditable");

/// An entry of a descriptor. Descriptors are maps, and a map inside a variant is read in place.
QVariant entryOf(const QVariant &descriptor, const QString &key)
{
    if (descriptor.userType() == QMetaType::QVariantMap)
        return static_cast<const QVariantMap *>(descriptor.constData())->value(key);
    return descriptor.toMap().value(key);
}

} // namespace

SrObject::~SrObject() = default;

SrObject::SrObject(SrObject &&other) noexcept
    : m_params(std::move(other.m_params)), m_stamp(std::exchange(other.m_stamp, 0))
{
}

SrObject &SrObject::operator=(SrObject &&other) noexcept
{
    m_params.swap(other.m_params);
    std::swap(m_stamp, other.m_stamp);
    return *this;
}

QVariantList SrObject::toPayParamsList() const
{
    QVariantList list;
    list.reserve(m_params.size());
    for (auto field = m_params.cbegin(); field != m_params.cend(); ++field) {
        list.append(
            QVariantMap{{keyName, field.key()}, {keyValue, entryOf(field.value(), keyValue)}});
    }
    qCWarning((*QLoggingCategory::defaultCategory())) << logvariant(list);
    return list;
}

void SrObject::parseCheckList(const QVariantList &list)
{
    m_params.clear();
    for (const QVariant &descriptor : list)
        m_params.insert(entryOf(descriptor, keyName).toString(), descriptor);
    changed();
}

void SrObject::changed()
{
    static std::atomic<quint64> last{0};
    m_stamp = ++last;
}

void SrObject::setParams(const QVariantMap &params)
{
    m_params = params;
    changed();
}

QVariant SrObject::takeField(const QString &name)
{
    changed();
    return m_params.take(name);
}

QVariant SrObject::entry(const QString &field, const QString &key) const
{
    const auto found = m_params.constFind(field);
    return found == m_params.constEnd() ? QVariant() : entryOf(*found, key);
}

QVariantMap SrObject::getField(const QString &name) const
{
    return m_params.value(name).toMap();
}

bool SrObject::isEditable(const QString &name)
{
    return entry(name, keyIsEditable).toBool();
}

QString SrObject::getTitle(const QString &name) const
{
    return entry(name, keyTitle).toString();
}

QVariant SrObject::getValue(const QString &name) const
{
    return entry(name, keyValue);
}

void SrObject::setValue(const QString &name, const QVariant &value)
{
    // Looked up without write access first: a refused change must not detach a record that is
    // shared with its copies.
    const auto found = m_params.constFind(name);
    if (found == m_params.constEnd() || !entryOf(*found, keyIsEditable).toBool())
        return;
    QVariantMap descriptor = found->toMap();
    descriptor.insert(keyValue, value);
    m_params.insert(name, descriptor);
    changed();
}
