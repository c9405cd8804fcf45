#pragma once

#include <QString>
#include <QStringList>

/// Paper of a fixed width that lines are set on. Takes text as it is and keeps what the printer
/// makes of it.
class ReceiptTape final
{
public:
    explicit ReceiptTape(int width) : m_width(width) {}

    const QStringList &lines() const { return m_lines; }

    void centered(const QString &text);
    /// Wrapped at blanks; a word longer than the line is cut.
    void left(const QString &text, int indent = 0);
    /// Left and right on one line if they fit, else on two.
    void columns(const QString &left, const QString &right, int indent = 0);
    void rule();

private:
    QStringList wrapped(const QString &text, int width) const;

    int m_width = 0;
    QStringList m_lines;
};
