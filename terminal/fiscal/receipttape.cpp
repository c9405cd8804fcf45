#include <fiscal/receipttape.h>

#include <fiscal/printertext.h>

QStringList ReceiptTape::wrapped(const QString &text, int width) const
{
    QStringList result;
    QString line;
    const QStringList words =
        PrinterText::printed(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (QString word : words) {
        if (!line.isEmpty() && line.size() + 1 + word.size() <= width) {
            line += QLatin1Char(' ') + word;
            continue;
        }
        if (!line.isEmpty())
            result.append(line);
        while (word.size() > width) {
            result.append(word.left(width));
            word.remove(0, width);
        }
        line = word;
    }
    if (!line.isEmpty())
        result.append(line);
    return result;
}

void ReceiptTape::centered(const QString &text)
{
    const QStringList parts = wrapped(text, m_width);
    for (const QString &part : parts)
        m_lines.append(QString((m_width - part.size()) / 2, QLatin1Char(' ')) + part);
}

void ReceiptTape::left(const QString &text, int indent)
{
    const QStringList parts = wrapped(text, m_width - indent);
    for (const QString &part : parts)
        m_lines.append(QString(indent, QLatin1Char(' ')) + part);
}

void ReceiptTape::columns(const QString &left, const QString &right, int indent)
{
    const QString margin(indent, QLatin1Char(' '));
    QStringList parts = wrapped(left, m_width - indent);
    const QStringList values = wrapped(right, m_width - indent);
    for (QString &part : parts)
        part.prepend(margin);
    if (values.size() == 1) {
        const QString last = parts.isEmpty() ? QString() : parts.last();
        if (last.size() + 1 + values.first().size() <= m_width) {
            if (!parts.isEmpty())
                parts.removeLast();
            m_lines += parts;
            m_lines.append(last + values.first().rightJustified(m_width - last.size()));
            return;
        }
    }
    m_lines += parts;
    for (const QString &value : values)
        m_lines.append(value.rightJustified(m_width));
}

void ReceiptTape::rule()
{
    m_lines.append(QString(m_width, QLatin1Char('-')));
}
