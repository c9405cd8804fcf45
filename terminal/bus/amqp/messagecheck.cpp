#include <bus/amqp/messagecheck.h>

#include <bus/wiretext.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QTextCodec>
#include <QVector>

namespace {

bool isUtf8(const QByteArray &body)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(body.constData(), body.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

/// Walks over brackets and strings only; everything else is left to the parser that comes after.
class Walker
{
public:
    explicit Walker(const QByteArray &body) : m_body(body) {}

    QString problem();

private:
    struct Level
    {
        bool map = false;
        QSet<QByteArray> keys;
    };

    bool readString(QByteArray *text);
    bool isKeyAhead() const;
    QString addKey(const QByteArray &text);

    const QByteArray &m_body;
    int m_at = 0;
    QVector<Level> m_levels;
};

/// From the opening quote to past the closing one; `text` gets what is between, escapes included.
bool Walker::readString(QByteArray *text)
{
    const int start = m_at + 1;
    for (int i = start; i < m_body.size(); ++i) {
        if (m_body.at(i) == '\\') {
            ++i;
        } else if (m_body.at(i) == '"') {
            *text = m_body.mid(start, i - start);
            m_at = i + 1;
            return true;
        }
    }
    return false;
}

bool Walker::isKeyAhead() const
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    int i = m_at;
    while (i < m_body.size() && isBlank(m_body.at(i)))
        ++i;
    return i < m_body.size() && m_body.at(i) == ':';
}

QString Walker::addKey(const QByteArray &text)
{
    QByteArray key = text;
    if (key.contains('\\')) {
        // One letter can be written in several ways.
        const QJsonDocument one = QJsonDocument::fromJson("[\"" + text + "\"]");
        key = one.array().at(0).toString().toUtf8();
    }
    QSet<QByteArray> &keys = m_levels.last().keys;
    if (keys.contains(key))
        return QStringLiteral("ключ «%1» повторяется").arg(QString::fromUtf8(key.left(40)));
    keys.insert(key);
    return QString();
}

QString Walker::problem()
{
    while (m_at < m_body.size()) {
        switch (m_body.at(m_at)) {
        case '{':
        case '[':
            m_levels.append(Level{m_body.at(m_at) == '{', {}});
            if (m_levels.size() > MessageCheck::DEEPEST_NESTING)
                return QStringLiteral("вложенность глубже %1").arg(MessageCheck::DEEPEST_NESTING);
            ++m_at;
            break;
        case '}':
        case ']':
            if (!m_levels.isEmpty())
                m_levels.removeLast();
            ++m_at;
            break;
        case '"': {
            QByteArray text;
            if (!readString(&text))
                return QStringLiteral("строка не закончена");
            if (!m_levels.isEmpty() && m_levels.constLast().map && isKeyAhead()) {
                const QString repeated = addKey(text);
                if (!repeated.isEmpty())
                    return repeated;
            }
            break;
        }
        default:
            ++m_at;
            break;
        }
    }
    return QString();
}

} // namespace

std::optional<QVariantMap> MessageCheck::read(const QByteArray &body, QString *error)
{
    const auto refuse = [error](const QString &what) {
        *error = QStringLiteral("Сообщение не разобрано: %1.").arg(what);
        return std::nullopt;
    };
    if (body.size() > LARGEST_BYTES)
        return refuse(QStringLiteral("оно больше %1 МиБ").arg(LARGEST_BYTES / 1024 / 1024));
    if (!isUtf8(body))
        return refuse(QStringLiteral("это не текст в UTF-8"));
    const QString problem = Walker(body).problem();
    if (!problem.isEmpty())
        return refuse(problem);
    return WireText::decode(body, error);
}
