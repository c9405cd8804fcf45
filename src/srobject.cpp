#include "srobject.h"

#include <molvacore/logvariant.h>

#include <QDebug>

namespace {

const QString keyName = QStringLiteral("name");
const QString keyValue = QStringLiteral("value");
const QString keyTitle = QStringLiteral("title");
const QString keyIsEditable = QStringLiteral("isEditable");

} // namespace

SrObject::~SrObject() = default;

QVariantList SrObject::toPayParamsList() const
{
    QVariantList list;
    list.reserve(m_params.size());
    for (auto field = m_params.cbegin(); field != m_params.cend(); ++field) {
        list.append(
            QVariantMap{{keyName, field.key()}, {keyValue, field.value().toMap().value(keyValue)}});
    }
    qWarning() << logvariant(list);
    return list;
}

void SrObject::parseCheckList(const QVariantList &list)
{
    m_params.clear();
    for (const QVariant &descriptor : list)
        m_params.insert(descriptor.toMap().value(keyName).toString(), descriptor);
}

QVariantMap SrObject::getField(const QString &name) const
{
    return m_params.value(name).toMap();
}

bool SrObject::isEditable(const QString &name)
{
    return getField(name).value(keyIsEditable).toBool();
}

QString SrObject::getTitle(const QString &name) const
{
    return getField(name).value(keyTitle).toString();
}

QVariant SrObject::getValue(const QString &name) const
{
    return getField(name).value(keyValue);
}

void SrObject::setValue(const QString &name, const QVariant &value)
{
    // Looked up without write access first: a refused change must not detach a record that is
    // shared with its copies.
    const auto found = m_params.constFind(name);
    if (found == m_params.constEnd())
        return;
    QVariantMap descriptor = found->toMap();
    if (!descriptor.value(keyIsEditable).toBool())
        return;
    descriptor.insert(keyValue, value);
    m_params.insert(name, descriptor);
}
