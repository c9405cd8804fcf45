#include <bus/crossedfields.h>

#include <bus/wiretext.h>

#include <QString>
#include <QVariantList>

namespace {

enum class Crossing { AsItIs, Changed, UnknownHere };

/// Far below what the reader of JSON refuses, far above what any message has.
constexpr int DEEPEST = 64;

Crossing cross(const QVariant &value, QVariant *crossed, int depth);

Crossing crossInteger(const QVariant &value, QVariant *crossed)
{
    const qint64 number = value.toLongLong();
    if (!WireText::isExact(number)) {
        *crossed = QString::number(number);
        return Crossing::Changed;
    }
    if (value.userType() == QMetaType::LongLong && !value.isNull())
        return Crossing::AsItIs;
    *crossed = number;
    return Crossing::Changed;
}

Crossing crossText(const QVariant &value, QVariant *crossed)
{
    const QString text = value.toString();
    if (text.isNull()) {
        *crossed = QString(QLatin1String(""));
        return Crossing::Changed;
    }
    return text.isValidUtf16() ? Crossing::AsItIs : Crossing::UnknownHere;
}

Crossing crossMap(const QVariantMap &map, QVariant *crossed, int depth)
{
    QVariantMap result;
    bool changed = false;
    const QString *before = nullptr;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        // A map may hold one name several times; an object of JSON may not.
        if (!it.key().isValidUtf16() || (before && *before == it.key()))
            return Crossing::UnknownHere;
        before = &it.key();
        QVariant value;
        const Crossing crossing = cross(it.value(), &value, depth);
        if (crossing == Crossing::UnknownHere)
            return crossing;
        if (crossing == Crossing::AsItIs)
            continue;
        if (!changed)
            result = map;
        changed = true;
        result.insert(it.key(), value);
    }
    if (changed)
        *crossed = result;
    return changed ? Crossing::Changed : Crossing::AsItIs;
}

Crossing crossList(const QVariantList &list, QVariant *crossed, int depth)
{
    QVariantList result;
    bool changed = false;
    for (int i = 0; i < list.size(); ++i) {
        QVariant value;
        const Crossing crossing = cross(list.at(i), &value, depth);
        if (crossing == Crossing::UnknownHere)
            return crossing;
        if (crossing == Crossing::AsItIs)
            continue;
        if (!changed)
            result = list;
        changed = true;
        result[i] = value;
    }
    if (changed)
        *crossed = result;
    return changed ? Crossing::Changed : Crossing::AsItIs;
}

/// `crossed` is set for a value that changes on its way, and only then.
Crossing cross(const QVariant &value, QVariant *crossed, int depth)
{
    if (depth > DEEPEST)
        return Crossing::UnknownHere;
    switch (value.userType()) {
    case QMetaType::Nullptr:
        return Crossing::AsItIs;
    case QMetaType::UnknownType:
        *crossed = QVariant::fromValue(nullptr);
        return Crossing::Changed;
    case QMetaType::Bool:
        if (!value.isNull())
            return Crossing::AsItIs;
        *crossed = value.toBool();
        return Crossing::Changed;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return crossInteger(value, crossed);
    case QMetaType::QString:
        return crossText(value, crossed);
    case QMetaType::QVariantMap:
        return crossMap(value.toMap(), crossed, depth + 1);
    case QMetaType::QVariantList:
        return crossList(value.toList(), crossed, depth + 1);
    default:
        return Crossing::UnknownHere;
    }
}

} // namespace

std::optional<QVariantMap> CrossedFields::of(const QVariant &data)
{
    if (data.userType() != QMetaType::QVariantMap)
        return std::nullopt;
    QVariant crossed;
    switch (cross(data, &crossed, 0)) {
    case Crossing::AsItIs:
        return data.toMap();
    case Crossing::Changed:
        return crossed.toMap();
    case Crossing::UnknownHere:
        break;
    }
    return std::nullopt;
}
