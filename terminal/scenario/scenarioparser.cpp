#include "scenarioparser.h"

#include "scenariogrammar.h"

#include <QFile>
#include <QTextCodec>

namespace {

constexpr int longestFile = 1 << 20; // bytes

QChar closingQuote(QChar opening)
{
    return opening == QChar(0x00AB) ? QChar(0x00BB) : opening;
}

} // namespace

bool ScenarioParser::parseFile(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return fail(0, QStringLiteral("файл не открылся: %1").arg(file.errorString()));
    if (file.size() > longestFile)
        return fail(0, QStringLiteral("файл больше 1 МБ, это не сценарий"));
    return parse(file.readAll());
}

bool ScenarioParser::parse(const QByteArray &utf8)
{
    m_commands.clear();
    m_error.clear();
    m_line = 0;
    QTextCodec::ConverterState state;
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(utf8.constData(), utf8.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0)
        return fail(0, QStringLiteral("текст не в кодировке UTF-8, сохраните его в ней"));
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        ++m_line;
        if (!parseLine(line))
            return false;
    }
    m_line = 0;
    if (m_commands.isEmpty())
        return fail(0, QStringLiteral("в сценарии нет ни одного шага"));
    return true;
}

bool ScenarioParser::parseLine(const QString &line)
{
    QVector<Word> words;
    if (!split(line, words))
        return false;
    return words.isEmpty() || understand(words, line.trimmed());
}

bool ScenarioParser::split(const QString &line, QVector<Word> &words)
{
    int at = 0;
    while (at < line.size()) {
        const QChar first = line.at(at);
        if (first.isSpace() || first == QLatin1Char(':')) {
            ++at;
            continue;
        }
        if (first == QLatin1Char('#'))
            break;
        Word word;
        word.column = at + 1;
        word.quoted = first == QLatin1Char('"') || first == QChar(0x00AB);
        if (word.quoted) {
            const int end = line.indexOf(closingQuote(first), at + 1);
            if (end < 0)
                return fail(word.column, QStringLiteral("кавычка открыта и не закрыта"));
            word.text = line.mid(at + 1, end - at - 1);
            at = end + 1;
        } else {
            int end = at;
            while (end < line.size() && !line.at(end).isSpace() && line.at(end) != QLatin1Char('#'))
                ++end;
            word.text = line.mid(at, end - at);
            at = end;
            if (word.text.endsWith(QLatin1Char(':')))
                word.text.chop(1);
        }
        words.append(word);
    }
    return true;
}

bool ScenarioParser::understand(const QVector<Word> &words, const QString &line)
{
    int furthest = -1;
    QStringList parts; // what could have stood at the furthest place that was reached
    for (const ScenarioGrammar::Phrase &phrase : ScenarioGrammar::phrases()) {
        const QStringList pattern = phrase.pattern.split(QLatin1Char(' '));
        QStringList arguments = phrase.meant;
        int at = 0;
        while (
            at < pattern.size() && at < words.size()
            && ScenarioGrammar::matches(pattern.at(at), words.at(at).text, words.at(at).quoted)) {
            if (pattern.at(at).startsWith(QLatin1Char('{')))
                arguments.append(words.at(at).text);
            ++at;
        }
        if (at == pattern.size() && at == words.size()) {
            m_commands.append({m_line, line, phrase.verb, arguments});
            return true;
        }
        if (at > furthest)
            parts.clear();
        furthest = std::max(furthest, at);
        const QString expected = pattern.value(at);
        if (at == furthest && !expected.isEmpty() && !parts.contains(expected))
            parts.append(expected);
    }

    QStringList expected;
    for (const QString &part : qAsConst(parts))
        expected.append(ScenarioGrammar::describe(part));
    const QString list = expected.join(QStringLiteral(", "));
    if (furthest >= words.size())
        return fail(line.size() + 1,
                    QStringLiteral("строка не закончена; ожидалось: %1").arg(list));
    const Word &word = words.at(furthest);
    if (expected.isEmpty())
        return fail(word.column, QStringLiteral("лишнее слово «%1»").arg(word.text));
    const QString near = ScenarioGrammar::nearest(word.text, parts);
    if (!near.isEmpty())
        return fail(word.column,
                    QStringLiteral("непонятное слово «%1»; возможно, «%2»").arg(word.text, near));
    return fail(word.column,
                QStringLiteral("непонятное слово «%1»; ожидалось: %2").arg(word.text, list));
}

bool ScenarioParser::fail(int column, const QString &error)
{
    m_column = column;
    m_error = error;
    return false;
}
