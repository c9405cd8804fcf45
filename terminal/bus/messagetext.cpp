#include <bus/messagetext.h>

#include <bus/wiretext.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QRegularExpression>
#include <QStringList>

#include <optional>

using Relation = BusJournalEntry::Relation;

namespace {

const QString hidden = QStringLiteral("***");
constexpr int deepest = 64; // levels; Qt's own reader gives up at 1024

const QString &credentialNames()
{
    static const QString names =
        QStringLiteral("pass(?:word|wd|phrase)?|pwd|secret|(?:access|auth|refresh)?[_-]?token|"
                       "authorization|credentials?|api[_-]?key|private[_-]?key|cookie|pin|cvv2?|"
                       "cvc2?");
    return names;
}

bool isCredential(const QString &key)
{
    static const QRegularExpression name(QStringLiteral("\\A(?:%1)\\z").arg(credentialNames()),
                                         QRegularExpression::CaseInsensitiveOption);
    return name.match(key).hasMatch();
}

/// For a text that is not JSON, such as one that was cut: a value ends where its quotation mark
/// closes, and in JSON that stands inside a text marks carry one backslash, escaped ones three.
///
/// No repetition gives back what it took: the matcher would keep a place to return to for every
/// character, and give up on a value of some ten thousand of them, which would then be shown.
QString maskedText(QString text)
{
    static const QRegularExpression pair(
        QStringLiteral(
            R"re((\\?"(?:%1)\\?"\s*+:\s*+)("(?:[^"\\]++|\\.)*+"?+|)re"
            R"re(\\"(?:[^"\\]++|\\\\(?:\\["\\]|[^"\\])|\\[^"\\])*+(?:\\")?+|[^\s,}\]"\\]++))re")
            .arg(credentialNames()),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    return text.replace(pair, QStringLiteral("\\1\"***\""));
}

std::optional<QJsonDocument> json(const QByteArray &text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        return std::nullopt;
    return document;
}

/// A JSON text of its own, as billing puts the account into the envelope.
std::optional<QJsonDocument> innerJson(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (!trimmed.startsWith(QLatin1Char('{')) && !trimmed.startsWith(QLatin1Char('[')))
        return std::nullopt;
    return json(text.toUtf8());
}

QJsonValue valueOf(const QJsonDocument &document)
{
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

QByteArray compact(const QJsonValue &value)
{
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return document.toJson(QJsonDocument::Compact);
}

bool mask(QJsonValue &value, int depth);

bool maskObject(QJsonObject &object, int depth)
{
    bool masked = false;
    for (auto it = object.begin(); it != object.end(); ++it) {
        QJsonValue inner = it.value();
        const bool credential = isCredential(it.key());
        if (credential)
            inner = hidden;
        if (credential || mask(inner, depth)) {
            it.value() = inner;
            masked = true;
        }
    }
    return masked;
}

bool maskText(QString &text, int depth)
{
    if (const auto document = innerJson(text)) {
        QJsonValue inner = valueOf(*document);
        if (!mask(inner, depth))
            return false;
        text = QString::fromUtf8(compact(inner));
        return true;
    }
    const QString clean = maskedText(text);
    const bool masked = clean != text;
    text = clean;
    return masked;
}

/// Hides the credentials in `value`; false when there are none and it is as it was.
bool mask(QJsonValue &value, int depth)
{
    if (depth > deepest) {
        value = hidden;
        return true;
    }
    bool masked = false;
    if (value.isObject()) {
        QJsonObject object = value.toObject();
        masked = maskObject(object, depth + 1);
        value = object;
    } else if (value.isArray()) {
        QJsonArray array = value.toArray();
        for (int i = 0; i < array.size(); ++i) {
            QJsonValue inner = array.at(i);
            if (mask(inner, depth + 1)) {
                array.replace(i, inner);
                masked = true;
            }
        }
        value = array;
    } else if (value.isString()) {
        QString text = value.toString();
        masked = maskText(text, depth + 1);
        value = text;
    }
    return masked;
}

/// The JSON text without credentials: as it was written when it has none, but for a byte order
/// mark, which has no place inside another text.
QByteArray cleaned(const QByteArray &text, const QJsonDocument &document)
{
    QJsonValue value = valueOf(document);
    if (mask(value, 0))
        return compact(value);
    return text.startsWith("\xef\xbb\xbf") ? text.mid(3) : text;
}

/// Lays valid JSON out over lines. Qt's own writer would sort the keys and round large numbers.
QString indented(const QByteArray &text)
{
    QByteArray result;
    int depth = 0;
    bool quoted = false;
    bool fresh = false; // a bracket or a comma stands before: the next value gets its own line
    const auto newLine = [&] { result += '\n' + QByteArray(4 * depth, ' '); };
    for (int i = 0; i < text.size(); ++i) {
        const char c = text.at(i);
        if (quoted) {
            result += c;
            if (c == '\\' && i + 1 < text.size())
                result += text.at(++i);
            quoted = c != '"';
            continue;
        }
        if (c == ' ' || c == '\t' || c == '\n' || c == '\r')
            continue;
        const bool closes = c == '}' || c == ']';
        if (closes)
            --depth;
        if (closes != fresh)
            newLine();
        const bool opens = c == '{' || c == '[';
        fresh = opens || c == ',';
        result += c;
        if (c == ':')
            result += ' ';
        if (opens)
            ++depth;
        quoted = c == '"';
    }
    return WireText::toText(result);
}

QString formatted(const QByteArray &body, const QJsonDocument &document)
{
    const QByteArray clean = cleaned(body, document);
    QString text = indented(clean);
    const QJsonObject object = QJsonDocument::fromJson(clean).object();
    for (auto it = object.begin(); it != object.end(); ++it) {
        const QString value = it.value().toString();
        if (innerJson(value))
            text += QStringLiteral("\n\n%1:\n%2").arg(it.key(), indented(value.toUtf8()));
    }
    return text;
}

QString headersText(const QVariantMap &headers)
{
    QString text;
    for (auto it = headers.cbegin(); it != headers.cend(); ++it) {
        const QString value = isCredential(it.key()) ? hidden : maskedText(it.value().toString());
        text += it.key() + QStringLiteral(": ") + value + QLatin1Char('\n');
    }
    return text;
}

QString heading(const BusJournalEntry &entry)
{
    const bool sent = entry.message.direction == BusMessage::Direction::Outgoing;
    QString text =
        QStringLiteral("№ %1, %2\n%3: %4\n%5\n")
            .arg(QString::number(entry.number),
                 entry.message.time.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss.zzz")),
                 sent ? QStringLiteral("Отправлено по адресу") : QStringLiteral("Получено, тип"),
                 entry.message.address, MessageText::relation(entry));
    const QString headers = headersText(entry.message.headers);
    if (!headers.isEmpty())
        text += QStringLiteral("\nЗаголовки\n") + headers;
    return text + QStringLiteral("\nТело, байт: %1\n").arg(entry.message.body.bytes().size());
}

QString bodyText(const QByteArray &body)
{
    const auto document = json(body);
    return document ? formatted(body, *document) : maskedText(WireText::toText(body));
}

/// Long lines end in a note, and so does a text with too many of them.
QString shortened(const QString &text)
{
    QString result;
    int from = 0;
    while (from < text.size() && result.size() < MessageText::LONGEST_SHOWN) {
        int end = text.indexOf(QLatin1Char('\n'), from);
        if (end < 0)
            end = text.size();
        const int cut = qMin(end - from, MessageText::LONGEST_LINE);
        result += text.midRef(from, cut);
        if (cut < end - from)
            result += QStringLiteral("… (ещё знаков: %1)").arg(end - from - cut);
        result += QLatin1Char('\n');
        from = end + 1;
    }
    if (from < text.size())
        result += QStringLiteral("\n… Показано не всё, осталось знаков: %1. Целиком — «Копировать» "
                                 "или «Сохранить».\n")
                      .arg(text.size() - from);
    return result;
}

} // namespace

QString MessageText::shown(const BusJournalEntry &entry)
{
    const QByteArray body = entry.message.body.bytes();
    if (body.size() <= MOST_FORMATTED)
        return shortened(heading(entry)) + shortened(bodyText(body));
    const QString beginning = maskedText(QString::fromUtf8(body.left(LONGEST_LINE)));
    return shortened(heading(entry))
        + QStringLiteral("%1…\n\nСообщение слишком велико, показано только начало. Целиком — "
                         "«Копировать» или «Сохранить».\n")
              .arg(beginning);
}

QString MessageText::whole(const BusJournalEntry &entry)
{
    return heading(entry) + bodyText(entry.message.body.bytes()) + QLatin1Char('\n');
}

QByteArray MessageText::jsonLine(const BusJournalEntry &entry)
{
    const BusMessage &message = entry.message;
    const bool sent = message.direction == BusMessage::Direction::Outgoing;
    QJsonObject headers = QJsonObject::fromVariantMap(message.headers);
    maskObject(headers, 0);
    QJsonObject line{
        {QStringLiteral("number"), entry.number},
        {QStringLiteral("time"),
         message.time.toOffsetFromUtc(message.time.offsetFromUtc()).toString(Qt::ISODateWithMs)},
        {QStringLiteral("direction"), sent ? QStringLiteral("sent") : QStringLiteral("received")},
        {sent ? QStringLiteral("destination") : QStringLiteral("type"), message.address},
        {QStringLiteral("headers"), headers}};
    const QByteArray text = message.body.bytes();
    const auto document = json(text);
    if (!document)
        line.insert(QStringLiteral("text"), maskedText(WireText::toText(text)));
    if (entry.partner > 0)
        line.insert(sent ? QStringLiteral("answer") : QStringLiteral("request"), entry.partner);
    if (entry.relation == Relation::Repeated)
        line.insert(QStringLiteral("repeated"), true);
    if (message.replayed)
        line.insert(QStringLiteral("replayed"), true);
    if (entry.roundTrip >= 0)
        line.insert(QStringLiteral("roundTripMs"), entry.roundTrip);
    if (!entry.refusal.isEmpty())
        line.insert(QStringLiteral("refusal"), entry.refusal);
    const QByteArray rest = QJsonDocument(line).toJson(QJsonDocument::Compact);
    if (!document)
        return rest;
    // A line end in valid JSON is a blank between tokens.
    QByteArray body = cleaned(text, *document);
    body.replace('\n', ' ').replace('\r', ' ');
    return "{\"body\":" + body + ',' + rest.mid(1);
}

QString MessageText::relation(const BusJournalEntry &entry)
{
    const QString partner = QString::number(entry.partner);
    if (!entry.refusal.isEmpty())
        return QStringLiteral("Не принято: %1").arg(entry.refusal);
    switch (entry.relation) {
    case Relation::Notice:
        return entry.accepted ? QStringLiteral("Принято") : QStringLiteral("Ответ не нужен");
    case Relation::Request:
        if (entry.partner > 0)
            return QStringLiteral("Ответ — № %1").arg(partner);
        return entry.accepted ? QStringLiteral("Принято, ответа ещё нет")
                              : QStringLiteral("Ответа ещё нет");
    case Relation::Answer:
        return QStringLiteral("Ответ на № %1").arg(partner);
    case Relation::Repeated:
        return entry.message.replayed
            ? QStringLiteral("Повторён вручную, ответ на № %1").arg(partner)
            : QStringLiteral("Повторный ответ на № %1").arg(partner);
    case Relation::Unmatched:
        return QStringLiteral("Такого запроса в журнале нет");
    case Relation::Unreadable:
        return QStringLiteral("Не разобрано: это не JSON");
    }
    return QString();
}
