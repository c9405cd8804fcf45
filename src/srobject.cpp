#include "srobject.h"

#include <molvacore/logvariant.h>

#include <QDebug>
#include <QLoggingCategory>

#include <cstring>
#include <iterator>

namespace {

const QString keyName = QStringLiteral("name");
const QString keyValue = QStringLiteral("value");
const QString keyTitle = QStringLiteral("title");
const QString keyIsEditable = QStringLiteral("isEditable");

/// Whether two names are the same: a few letters each, and every value that is read asks for it
/// several times.
bool isSame(const QString &name, const QString &other)
{
    const std::size_t bytes = static_cast<std::size_t>(name.size()) * sizeof(QChar);
    return name.size() == other.size()
        && std::memcmp(name.constData(), other.constData(), bytes) == 0;
}

/// The few names in a record or a descriptor differ in length: walking along them and comparing
/// lengths is several times quicker than a search that orders texts.
QVariantMap::const_iterator find(const QVariantMap &map, const QString &name)
{
    constexpr int few = 16;
    if (map.size() > few)
        return map.constFind(name);
    auto entry = map.constBegin();
    while (entry != map.constEnd() && !isSame(entry.key(), name))
        ++entry;
    return entry;
}

/// An entry of a descriptor. Descriptors are maps, and a map inside a variant is read in place.
QVariant entryOf(const QVariant &descriptor, const QString &key)
{
    if (descriptor.userType() != QMetaType::QVariantMap)
        return descriptor.toMap().value(key);
    const auto &map = *static_cast<const QVariantMap *>(descriptor.constData());
    const auto found = find(map, key);
    return found == map.constEnd() ? QVariant() : *found;
}

} // namespace

SrObject::~SrObject() = default;

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
}

QVariant SrObject::entry(const QString &field, const QString &key) const
{
    const auto found = find(m_params, field);
    return found == m_params.constEnd() ? QVariant() : entryOf(*found, key);
}

const QVariant *SrObject::valueInPlace(const QString &name) const
{
    const auto found = find(m_params, name);
    if (found == m_params.constEnd() || found->userType() != QMetaType::QVariantMap)
        return nullptr;
    const auto &descriptor = *static_cast<const QVariantMap *>(found->constData());
    if (descriptor.isEmpty())
        return nullptr;
    // Of the keys that billing sends "value" is the last one: found without a search.
    const auto last = std::prev(descriptor.constEnd());
    if (isSame(last.key(), keyValue))
        return &*last;
    const auto value = find(descriptor, keyValue);
    return value == descriptor.constEnd() ? nullptr : &*value;
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
}
