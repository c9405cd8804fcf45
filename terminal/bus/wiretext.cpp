#include <bus/wiretext.h>

#include <QDate>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QJsonValue>
#include <QStringList>
#include <QTextCodec>
#include <QTime>
#include <QVariantHash>

#include <cmath>

namespace {

constexpr qint64 EXACT_IN_DOUBLE = Q_INT64_C(1) << 53;

class Encoder
{
public:
    QJsonValue value(const QVariant &data, const QString &key);
    QString error;

private:
    QJsonValue fail(const QString &key, const QString &what);
    QJsonValue text(const QString &data, const QString &key);
    QJsonValue bytes(const QByteArray &data, const QString &key);
    QJsonValue integer(qint64 number) const;
    QJsonValue map(const QVariantMap &data, const QString &key);
    QJsonValue list(const QVariantList &data, const QString &key);
};

QJsonValue Encoder::fail(const QString &key, const QString &what)
{
    if (error.isEmpty()) {
        error = QStringLiteral("Сообщение не отправлено: значение «%1» %2.")
                    .arg(key.isEmpty() ? QStringLiteral("(сообщение)") : key, what);
    }
    return QJsonValue();
}

QJsonValue Encoder::text(const QString &data, const QString &key)
{
    return data.isValidUtf16() ? QJsonValue(data)
                               : fail(key, QStringLiteral("содержит оборванный символ"));
}

QJsonValue Encoder::bytes(const QByteArray &data, const QString &key)
{
    QTextCodec::ConverterState state;
    const QString decoded =
        QTextCodec::codecForName("UTF-8")->toUnicode(data.constData(), data.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0)
        return fail(key, QStringLiteral("не является текстом в UTF-8"));
    return QJsonValue(decoded);
}

QJsonValue Encoder::integer(qint64 number) const
{
    return WireText::isExact(number) ? QJsonValue(number) : QJsonValue(QString::number(number));
}

QJsonValue Encoder::map(const QVariantMap &data, const QString &key)
{
    QJsonObject object;
    for (auto it = data.cbegin(); it != data.cend(); ++it) {
        const QString inner = key.isEmpty() ? it.key() : key + QLatin1Char('.') + it.key();
        if (!it.key().isValidUtf16())
            fail(inner, QStringLiteral("содержит оборванный символ в имени"));
        object.insert(it.key(), value(it.value(), inner));
    }
    return object;
}

QJsonValue Encoder::list(const QVariantList &data, const QString &key)
{
    QJsonArray array;
    for (int i = 0; i < data.size(); ++i)
        array.append(value(data.at(i), QStringLiteral("%1[%2]").arg(key, QString::number(i))));
    return array;
}

QJsonValue Encoder::value(const QVariant &data, const QString &key)
{
    switch (data.userType()) {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
        return QJsonValue();
    case QMetaType::Bool:
        return data.toBool();
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return integer(data.toLongLong());
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return data.toULongLong() > quint64(EXACT_IN_DOUBLE)
            ? QJsonValue(QString::number(data.toULongLong()))
            : QJsonValue(data.toLongLong());
    case QMetaType::Float:
    case QMetaType::Double:
        return std::isfinite(data.toDouble())
            ? QJsonValue(data.toDouble())
            : fail(key, QStringLiteral("не является конечным числом"));
    case QMetaType::QString:
        return text(data.toString(), key);
    case QMetaType::QByteArray:
        return bytes(data.toByteArray(), key);
    case QMetaType::QDateTime:
        return data.toDateTime().toString(Qt::ISODateWithMs);
    case QMetaType::QDate:
        return data.toDate().toString(Qt::ISODate);
    case QMetaType::QTime:
        return data.toTime().toString(Qt::ISODateWithMs);
    case QMetaType::QVariantMap:
        return map(data.toMap(), key);
    case QMetaType::QVariantHash: {
        QVariantMap sorted;
        const QVariantHash hash = data.toHash();
        for (auto it = hash.cbegin(); it != hash.cend(); ++it)
            sorted.insert(it.key(), it.value());
        return map(sorted, key);
    }
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return list(data.toList(), key);
    default:
        return fail(key,
                    QStringLiteral("имеет тип %1, который нельзя передать")
                        .arg(QLatin1String(data.typeName())));
    }
}

} // namespace

QString WireText::toText(const QByteArray &body)
{
    return QString::fromUtf8(body.constData(), body.size());
}

bool WireText::isExact(qint64 number)
{
    return number >= -EXACT_IN_DOUBLE && number <= EXACT_IN_DOUBLE;
}

std::optional<QByteArray> WireText::encode(const QVariant &data, QString *error)
{
    if (data.userType() != QMetaType::QVariantMap) {
        *error =
            QStringLiteral("Сообщение не отправлено: его содержимое не является набором полей.");
        return std::nullopt;
    }
    Encoder encoder;
    const QJsonValue value = encoder.value(data, QString());
    if (!encoder.error.isEmpty()) {
        *error = encoder.error;
        return std::nullopt;
    }
    error->clear();
    QByteArray body = QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact);
    // Qt's JSON reader drops a byte order mark that a text begins with, unless it is escaped.
    return body.replace("\xef\xbb\xbf", "\\ufeff");
}

std::optional<QVariantMap> WireText::decode(const QByteArray &body, QString *error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(body, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error = QStringLiteral("Сообщение не разобрано (байт %1): %2.")
                     .arg(QString::number(parseError.offset), parseError.errorString());
        return std::nullopt;
    }
    if (!document.isObject()) {
        *error = QStringLiteral("Сообщение не разобрано: это не набор полей.");
        return std::nullopt;
    }
    error->clear();
    return document.object().toVariantMap();
}
